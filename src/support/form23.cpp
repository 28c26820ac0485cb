#include "support/form23.h"

#include <QCloseEvent>
#include <QCoreApplication>

#include "core/globals.h"
#include "core/imagelists.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/shell.h"
#include "platform/web.h"
#include "settings/form2.h"
#include "support/downloadfile.h"
#include "support/startprogram.h"
#include "core/runtimeerror.h"

namespace {

std::string faulttail(const std::exception& e)
{
    const Fault f = Fault::from(e);
    return CStr((long long)f.number) + " Desc: " + f.description + ")";
}

std::string quoted(const std::string& path) { return "\"" + path + "\""; }

// The driver package: fetched to WebUpdate.exe in the install folder, then copied into
// DRIVERS. A WebUpdate.exe left by an earlier fetch goes first, so a fetch that fails is
// the copy's fault.
void fetchpackage()
{
    const std::string home = g().homedir;
    if (!files::isfolder(home + "DRIVERS")) files::makefolder(home + "DRIVERS");
    const std::string landing = home + "WebUpdate.exe";
    if (files::exists(landing)) files::removefile(landing);
    bool fetched = false;
    DownloadFile(web::updateaddress("/support/Tagstore/support/VexalBCDrivers.exe"), landing, fetched);
    files::copyfile(landing, Form23::packagefile());
}

void runpackage() { startprogram(quoted(Form23::packagefile()), SW_SHOWNORMAL); }

}  // namespace

Form23::Form23(QWidget* parent) : QWidget(parent)
{
    setObjectName("Form23");
    setWindowTitle("Driver Installation");
    setFixedSize(twips(5400), twips(3720));

    place(Label1, this, "Label1", 240, 120, 4920, 300);
    Label1.setcaption("Install The USB Drivers For:");
    const char* entries[] = {"", "Opticon OPL 972x Cradle", "Opticon OPN 2001", "Symbol CS 1504"};
    for (int i = 1; i <= 3; ++i) {
        const int top = 540 + (i - 1) * 720;
        place(HelpIcon[i], this, "HelpIcon", i, 240, top, 600, 600);
        HelpIcon[i].setpicture(FormIcons(), i);
        place(HelpLabel[i], this, "HelpLabel", i, 960, top + 150, 4200, 300);
        HelpLabel[i].setcaption(entries[i]);
        connect(&HelpIcon[i], &PictureBox::clicked, this, guard([this, i] { helptype(i); }));
        connect(&HelpLabel[i], &Caption::clicked, this, guard([this, i] { helptype(i); }));
    }
    place(Cancel, this, "Cancel", 2340, 2700, 720, 480);
    Cancel.setpicture(ColorIcons(), 3);
    place(Label4, this, "Label4", 1740, 3240, 1920, 280);
    Label4.setcaption("Cancel");
    Label4.setAlignment(Qt::AlignCenter);
    connect(&Cancel, &PictureBox::clicked, this, guard(std::bind_front(&Form23::cancel, this)));
    connect(&Label4, &Caption::clicked, this, guard(std::bind_front(&Form23::cancel, this)));
}

std::string Form23::packagefile() { return g().homedir + "DRIVERS\\VexalBCDrivers.exe"; }

void Form23::setbusy(bool busy)
{
    installing = busy;
    for (int i = 1; i <= 3; ++i) {
        HelpIcon[i].setEnabled(!busy);
        HelpLabel[i].setEnabled(!busy);
    }
    QCoreApplication::processEvents();
}

void Form23::helptype(int index)
{
    const bool hasfolder = files::isfolder(driverfolder);
    if (!hasfolder && !files::exists(packagefile())) {
        if (MsgBox("The Vexal Driver Directory Does Not Exist, And No Driver Install Program Exists! Would You Like "
                   "To Attempt To Download And Then Run The Driver File? (NB: This Can Also Be Found On The Vexal "
                   "Utility CD)",
                   vbYesNo + vbQuestion, "No Drivers Directory Or File") != vbYes)
            return;
        setbusy(true);
        try {
            fetchpackage();
        } catch (const std::exception& e) {
            setbusy(false);
            MsgBox("An Error Occurured While Attempting To Download The Driver Updates. Please Contact Support! (Err:" +
                       faulttail(e),
                   vbExclamation, "Error Downloading Drivers");
            return;
        }
        setbusy(false);
    } else if (!hasfolder) {
        if (MsgBox("The Vexal Barcode Driver Directory Does Not Exist! Would You Like To Run The Install Program Now?",
                   vbYesNo + vbQuestion, "No Drivers Directory") != vbYes)
            return;
    }

    if (!hasfolder) {
        try {
            runpackage();
        } catch (const std::exception& e) {
            MsgBox("An Error Occurured While Attempting To Run The Driver Updates. Please Contact Support! (Err:" +
                       faulttail(e),
                   vbExclamation, "Error Downloading Drivers");
        }
        return;
    }

    try {
        std::string installer, text;
        switch (index) {
        case 3:
            installer = "C:\\Vexal BC Drivers\\CS1504-002\\PL-2303 Driver Installer.exe";
            text = "Please Allow The Installation Program To Complete, And Then You May Connect An Symbol CS 1504 "
                   "Scanner To A Spare USB Port. If Prompted For A Driver Location Please Browse To 'C:\\Vexal BC "
                   "Drivers\\CS1504-001'";
            break;
        case 2:
            installer = "C:\\Vexal BC Drivers\\USB Drivers Installer.exe";
            text = "Please Allow The Installation Program To Complete, And Then You May Connect An Opticon OPN 2001 "
                   "Scanner To A Spare USB Port.";
            break;
        case 1:
            installer = "C:\\Vexal BC Drivers\\USB Drivers Installer.exe";
            text = "Please Allow The Installation Program To Complete, And Then You May Connect The Scanner Cradle To "
                   "A Spare USB Port.";
            break;
        default: return;
        }
        startprogram(quoted(installer), SW_SHOWNORMAL);
        MsgBox(text, vbInformation, "Running Installation Software");
    } catch (const std::exception& e) {
        MsgBox("An Error Occurured While Attempting To Setup The Drivers. Please Contact Support BEFORE Connecting Any "
               "Scanners! (Err:" +
                   faulttail(e),
               vbExclamation, "Error Installing Drivers");
    }
}

void Form23::cancel()
{
    hide();
    const Int16 driverreturn = g().callerof[23];
    if (driverreturn == 1) form2().show();
    else if (driverreturn == 2) emit backtohelp();
}

void Form23::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (!installing) cancel();
}

Form23& form23()
{
    static Form23* screen = new Form23;
    return *screen;
}
