#include "settings/form4.h"

#include "core/globals.h"
#include "core/imagelists.h"
#include "settings/checkfitterfile.h"
#include "settings/englines.h"
#include "settings/form2.h"
#include "settings/form5.h"
#include "core/runtimeerror.h"

namespace {
constexpr int addpicture = 10, cancelpicture = 3;
}

Form4::Form4(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form4");
    setWindowTitle("Engineer IDs");
    resize(twips(5400), twips(6600));
    place(Label1, this, "Label1", 120, 120, 5160, 280);
    Label1.setcaption("Engineers");
    place(List1, this, "List1", 120, 420, 5160, 4560);
    place(Add[1], this, "Add", 1, 720, 5160, 720, 720);
    Add[1].setpicture(ColorIcons(), addpicture);
    place(Label4[0], this, "Label4", 0, 240, 5940, 1680, 280);
    Label4[0].setcaption("Add Engineer");
    Label4[0].setAlignment(Qt::AlignCenter);
    place(Cancel, this, "Cancel", 3960, 5160, 720, 720);
    Cancel.setpicture(ColorIcons(), cancelpicture);
    place(Label4[1], this, "Label4", 1, 3480, 5940, 1680, 280);
    Label4[1].setcaption("Cancel");
    Label4[1].setAlignment(Qt::AlignCenter);

    connect(&Add[1], &PictureBox::clicked, this, guard(std::bind_front(&Form4::addengineer, this)));
    connect(&Label4[0], &Caption::clicked, this, guard(std::bind_front(&Form4::addengineer, this)));
    connect(&Cancel, &PictureBox::clicked, this, guard(std::bind_front(&Form4::cancel, this)));
    connect(&Label4[1], &Caption::clicked, this, guard(std::bind_front(&Form4::cancel, this)));
    connect(&List1, &ListBox::doubleclicked, this, guard([this] {
        if (List1.listindex() >= 0) changeengineer(List1.listindex());
    }));
}

void Form4::setuplist()
{
    const int type = g().fittertype;
    const bool canadd = type != 1;
    Label4[0].setVisible(canadd);
    Add[1].setpicture(canadd ? ColorIcons() : GreyIcons(), addpicture);
    Add[1].setEnabled(canadd);
    fillenglist(List1, [type](const EngRecord& r, const std::string& number) {
        return type == 0 ? number + " " + r.name : number + r.name + " (" + r.field2 + ")";
    });
}

void Form4::addengineer()
{
    if (g().fittertype == 1) return;
    Form5& f = form5();
    for (TextBox* box : {&f.FitterID, &f.FitterName, &f.Text1, &f.Text2}) box->settext("");
    f.showdelete(false);
    f.show();
    f.FitterID.setFocus();
}

void Form4::changeengineer(int index)
{
    if (g().fittertype != 0) return;
    int row = -1;
    for (const std::string& line : readenglines(englocalfile())) {
        doenglinetest(line);
        if (g().englinestatus == 2) continue;
        if (++row < index) continue;
        if (g().englinestatus == 1) return;
        const EngRecord r = engrecord(line);
        Form5& f = form5();
        f.FitterID.settext(r.field1);
        f.FitterName.settext(r.name);
        f.Text1.settext(r.field1);
        f.Text2.settext(r.name);
        f.showdelete(true);
        f.show();
        return;
    }
}

void Form4::cancel()
{
    hide();
    if (g().callerof[4] == 2) form2().show();
    else if (g().callerof[4] == 10) emit backtoscanner();
}

Form4& form4()
{
    static Form4* screen = new Form4;
    return *screen;
}

void openengineerlist()
{
    Globals& s = g();
    if (s.fittertype == 1 && s.storestate != 0) return;
    checkfitterfile();
    if (s.fitterstatus == 1) return;
    s.callerof[4] = 2;
    form4().setuplist();
    form2().hide();
    form4().show();
}
