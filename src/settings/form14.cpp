#include "settings/form14.h"

#include "core/globals.h"
#include "core/imagelists.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "platform/dialogs.h"
#include "settings/englines.h"
#include "core/runtimeerror.h"

namespace {
constexpr int addpicture = 11;
constexpr int boxtop = 6240;   // the box's place under the list; without the list it moves up to 240
}

Form14::Form14(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form14");
    setWindowTitle("Select New Scanner ID");
    resize(twips(4800), twips(listheight));
    place(Label2, this, "Label2", 120, 120, 4560, 280);
    Label2.setcaption("Select Engineer");
    place(List1, this, "List1", 120, 420, 4560, 5640);
    place(Label1, this, "Label1", 120, boxtop + 40, 1560, 280);
    place(FitterID, this, "FitterID", 1680, boxtop, 1200, 315);
    place(Add, this, "Add", 3240, boxtop - 80, 720, 720);
    Add.setpicture(ColorIcons(), addpicture);
    place(AddLabel, this, "AddLabel", 2760, boxtop + 700, 1680, 280);
    AddLabel.setcaption("Update ID");
    AddLabel.setAlignment(Qt::AlignCenter);

    connect(&Add, &PictureBox::clicked, this, guard(std::bind_front(&Form14::addfunc, this)));
    connect(&AddLabel, &Caption::clicked, this, guard(std::bind_front(&Form14::addfunc, this)));
    connect(&List1, &ListBox::doubleclicked, this, guard([this] {
        if (List1.listindex() >= 0) chooserow(List1.listindex());
    }));
}

void Form14::setuplist()
{
    fillenglist(List1, [](const EngRecord& r, const std::string& number) { return number + " " + r.name; });
    const bool rows = List1.listcount() > 0;
    List1.setVisible(rows);
    Label2.setVisible(rows);
    Label1.setcaption(rows ? "Or Enter ID" : "Enter ID");
    const int top = rows ? boxtop : 240;
    Label1.move(Label1.x(), twips(top + 40));
    FitterID.move(FitterID.x(), twips(top));
    Add.move(Add.x(), twips(top - 80));
    AddLabel.move(AddLabel.x(), twips(top + 700));
    resize(width(), twips(rows ? listheight : boxheight));
    FitterID.settext("");
}

void Form14::addfunc()
{
    const std::string id = FitterID.value();
    const char* refusal = nullptr;
    const char* title = "Invalid ID";
    bool digits = true;
    for (char c : id) digits = digits && c >= '0' && c <= '9';
    if (id.empty()) {
        refusal = "You need to provide a scanner ID in order to be able to update the scanner!";
        title = "No Engineer ID";
    } else if (!digits) {
        refusal = "The engineer ID provided contains invalid characters! The ID may only be numeric!";
    } else if (engnumber(id) > 999 || Left(id, 3) == "000") {
        refusal = "The engineer ID provided is outside of the currently allowed range! The ID may only be between 0 "
                  "and 999!";
    }
    if (refusal) {
        MsgBox(refusal, vbExclamation, title);
        FitterID.setFocus();
        return;
    }
    finish();
}

void Form14::chooserow(int index)
{
    FitterID.settext(Left(List1.list(index), 6));
    finish();
}

void Form14::finish()
{
    hide();
    if (g().callerof[14] == 1) form1().repaint();
    emit idchosen();
}

Form14& form14()
{
    static Form14* screen = new Form14;
    return *screen;
}
