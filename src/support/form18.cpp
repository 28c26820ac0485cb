#include "support/form18.h"

#include <QCloseEvent>

#include "core/globals.h"
#include "core/imagelists.h"
#include "core/runtimeerror.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "platform/dialogs.h"
#include "recovery/form26.h"
#include "settings/form17.h"
#include "settings/form2.h"
#include "settings/form3.h"
#include "support/form21.h"
#include "support/form23.h"
#include "support/helptools.h"

namespace {

struct Entry {
    const char* caption;
    const ImageList& (*list)();
    int picture;
};

const Entry entries[10] = {
    {"View Scan Logs", ColorIcons, 5},         {"View PDF Manual", ColorIcons, 4},
    {"Show Status Screen", ColorIcons, 17},    {"Print End Barcodes", ColorIcons, 11},
    {"Email Files To Support", ColorIcons, 7}, {"Company Information", ColorIcons, 20},
    {"Create Startup Icon", ColorIcons, 14},   {"Update From Web", ColorIcons, 13},
    {"Driver Install", ColorIcons, 8},         {"PC Support Client", MiscIcons, 5},
};

}  // namespace

Form18::Form18(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form18");
    setWindowTitle("Select Help Required");
    setFixedSize(twips(7200), twips(4920));

    // Two columns of five: 0 to 4 on the left, 5 to 9 on the right.
    for (int i = 0; i <= 9; ++i) {
        const int left = i < 5 ? 240 : 3720;
        const int top = 180 + (i % 5) * 720;
        place(HelpIcon[i], this, "HelpIcon", i, left, top, 600, 600);
        HelpIcon[i].setpicture(entries[i].list(), entries[i].picture);
        place(HelpLabel[i], this, "HelpLabel", i, left + 720, top + 150, 2640, 300);
        HelpLabel[i].setcaption(entries[i].caption);
        connect(&HelpIcon[i], &PictureBox::clicked, this, guard([this, i] { helptype(i); }));
        connect(&HelpLabel[i], &Caption::clicked, this, guard([this, i] { helptype(i); }));
    }
    place(Cancel, this, "Cancel", 3240, 3840, 720, 540);
    Cancel.setpicture(ColorIcons(), 1);
    place(Label4, this, "Label4", 2640, 4410, 1920, 300);
    Label4.setcaption("Cancel");
    Label4.setAlignment(Qt::AlignCenter);
    connect(&Cancel, &PictureBox::clicked, this, guard([this] { cancel(); }));
    connect(&Label4, &Caption::clicked, this, guard([this] { cancel(); }));
    // The driver screen opened from here comes back here.
    connect(&form23(), &Form23::backtohelp, this, guard([this] { show(); }));
}

void Form18::helptype(int index)
{
    try {
        switch (index) {
        case 0:
            form26().setupscreen();
            hide();
            form26().show();
            break;
        case 1: openmanual(); break;
        case 2:
            hide();
            g().callerof[17] = helpreturn();
            form17().show();
            form17().runtests();
            break;
        case 3: openlogoffbarcodes(); break;
        case 4:
            form21().preparemail();
            mailreturn() = helpreturn();
            hide();
            form21().show();
            break;
        case 5:
            hide();
            g().callerof[3] = 18;
            form3().show();
            break;
        case 6: createstartupicon(); break;
        case 7: startwebupdater(); break;
        case 8:
            hide();
            g().callerof[23] = 2;
            form23().show();
            break;
        case 9: runsupportviewer(); break;
        default: break;
        }
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        MsgBox("An unexpected error had occured within section " + CStr((long long)index) +
                   " of the help system! Error : " + CStr((long long)f.number) + " " + f.description,
               vbExclamation, "Error While Saving Data");
    }
}

void Form18::cancel()
{
    hide();
    returnfromhelp();
}

void Form18::closeEvent(QCloseEvent* event)
{
    event->ignore();
    guarded([this] { cancel(); });
}

Form18& form18()
{
    static Form18* screen = new Form18;
    return *screen;
}

Int16& helpreturn() { return g().callerof[18]; }

void openhelpmenu(int from)
{
    helpreturn() = from;
    if (from == 1) form1().hide();
    else form2().hide();
    form18().show();
}

void returnfromhelp()
{
    if (helpreturn() == 1) {
        g().pressedop = 0;
        form1().show();
    } else if (helpreturn() == 2) {
        form2().show();
    }
}
