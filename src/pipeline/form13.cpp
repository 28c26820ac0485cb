#include "pipeline/form13.h"

#include <QCloseEvent>

#include "core/globals.h"
#include "core/imagelists.h"
#include "maintenance/form10.h"
#include "maintenance/screens.h"
#include "pipeline/deletedata.h"
#include "pipeline/form1.h"
#include "pipeline/readdata.h"
#include "pipeline/reseticons.h"
#include "pipeline/screens.h"
#include "pipeline/transferdata.h"
#include "core/runtimeerror.h"

Form13::Form13(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form13");
    setWindowTitle("Select Scanner Type");
    setFixedSize(twips(4320), twips(2760));
    const char* names[] = {"", "Opticon OPL 972x", "Opticon OPN 2001", "Symbol CS 1504"};
    for (int i = 1; i <= 3; ++i) {
        const int top = 120 + (i - 1) * 480;
        place(STypeB[i], this, "STypeB", i, 120, top, 360, 360);
        place(STypeL[i], this, "STypeL", i, 600, top + 30, 3480, 300);
        STypeL[i].setcaption(names[i]);
        connect(&STypeL[i], &Caption::clicked, this, guard([this, i] { STypeL_Click(i); }));
    }
    place(Cancel, this, "Cancel", 1800, 1560, 720, 720);
    Cancel.setpicture(MiscIcons(), 6);
    place(Label4, this, "Label4", 1560, 2300, 1200, 300);
    Label4.setcaption("Cancel");
    Label4.setAlignment(Qt::AlignCenter);
    adopt(Text1, this, "Text1");
    Text1.hide();
    connect(&Cancel, &PictureBox::clicked, this, guard(std::bind_front(&Form13::Cancel_Click, this)));
    connect(&Label4, &Caption::clicked, this, guard(std::bind_front(&Form13::Cancel_Click, this)));
}

void Form13::STypeL_Click(int index)
{
    g().scannertype = index;
    hide();
    form1().repaint();
    const std::string action = Text1.value();
    if (action == "1") {
        Form10& check = form10();
        check.setupscreen();
        check.show();
        check.firstcall();
    } else if (action == "2") {
        deletedata(0);
    } else if (action == "3") {
        transferdata();
    } else {
        readdata();
    }
}

void Form13::Cancel_Click()
{
    g().runmode = 0;
    g().pressedop = 0;
    hide();
    reseticons();
}

void Form13::closeEvent(QCloseEvent* event)
{
    Cancel_Click();
    event->accept();
}

Form13& form13()
{
    static Form13* screen = new Form13;
    return *screen;
}
