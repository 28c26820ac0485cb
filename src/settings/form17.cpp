#include "settings/form17.h"

#include <QCloseEvent>

#include "core/colorbox.h"
#include "core/globals.h"
#include "core/imagelists.h"
#include "delivery/listfiles.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "scanner/checkscanners.h"
#include "settings/checkfitterfile.h"
#include "settings/form2.h"
#include "settings/lights.h"
#include "settings/storecheck.h"
#include "core/runtimeerror.h"

Form17::Form17(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form17");
    setWindowTitle("System Check");
    setFixedSize(twips(6360), twips(4560));

    place(Status[0], this, "Status", 0, 120, 120, 480, 480);
    place(Label1, this, "Label1", 720, 120, 2400, 300);
    Label1.setcaption("Store Location");
    place(StoreStatus, this, "StoreStatus", 720, 420, 5400, 300);

    place(Status[1], this, "Status", 1, 120, 960, 480, 480);
    place(Label3, this, "Label3", 720, 960, 2400, 300);
    Label3.setcaption("Scanner Ports");
    const char* names[] = {"", "Opticon OPL 972x", "Opticon OPN 2001", "Symbol CS 1504"};
    for (int i = 1; i <= 3; ++i) {
        const int top = 1260 + (i - 1) * 300;
        place(Scanner[i], this, "Scanner", i, 720, top, 1920, 300);
        Scanner[i].setcaption(names[i]);
        place(ScanPort[i], this, "ScanPort", i, 2700, top, 720, 300);
        place(ScanStatus[i], this, "ScanStatus", i, 3480, top, 2760, 300);
    }

    place(Status[2], this, "Status", 2, 120, 2340, 480, 480);
    place(Label5, this, "Label5", 720, 2340, 2400, 300);
    Label5.setcaption("Engineer Data");
    place(FitterStatus, this, "FitterStatus", 720, 2640, 5400, 300);
    for (int i = 0; i <= 2; ++i) showlight(Status[i], Light::waiting);

    place(Undo, this, "Undo", 3600, 3240, 720, 720);
    Undo.setpicture(ColorIcons(), 2);
    place(UndoLabel, this, "UndoLabel", 3480, 3990, 960, 300);
    UndoLabel.setcaption("Retest");
    UndoLabel.setAlignment(Qt::AlignCenter);
    place(Cancel, this, "Cancel", 5040, 3240, 720, 720);
    Cancel.setpicture(ColorIcons(), 1);
    place(CancelLabel, this, "CancelLabel", 4920, 3990, 960, 300);
    CancelLabel.setcaption("Close");
    CancelLabel.setAlignment(Qt::AlignCenter);

    connect(&Undo, &PictureBox::clicked, this, guard(std::bind_front(&Form17::runtests, this)));
    connect(&UndoLabel, &Caption::clicked, this, guard(std::bind_front(&Form17::runtests, this)));
    connect(&Cancel, &PictureBox::clicked, this, guard(std::bind_front(&Form17::closescreen, this)));
    connect(&CancelLabel, &Caption::clicked, this, guard(std::bind_front(&Form17::closescreen, this)));
}

void Form17::runtests()
{
    // Each check fills in its own rows of the screen.
    checkstorelocation();
    checkscanners();
    checkfitterfile();
}

void Form17::showstore(bool good, const std::string& text)
{
    StoreStatus.setcaption(text);
    showlight(Status[0], good ? Light::good : Light::fault);
    Label1.setforecolor(colorbox(good ? 4 : 2));
}

void Form17::closescreen()
{
    hide();
    if (g().callerof[17] == 1) {
        listfiles();
        g().pressedop = 0;
        form1().show();
    } else if (g().callerof[17] == 2) {
        form2().show();
    }
}

void Form17::closeEvent(QCloseEvent* event)
{
    event->ignore();
    closescreen();
}

Form17& form17()
{
    static Form17* screen = new Form17;
    return *screen;
}
