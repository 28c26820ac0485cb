#include "pipeline/mainactions.h"

#include <QCoreApplication>

#include "core/colorbox.h"
#include "core/form9.h"
#include "core/globals.h"
#include "core/imagelists.h"
#include "core/logs.h"
#include "core/runtimeerror.h"
#include "delivery/outstanding.h"
#include "delivery/processemails.h"
#include "maintenance/form10.h"
#include "maintenance/form24.h"
#include "maintenance/screens.h"
#include "pipeline/autodownload.h"
#include "pipeline/deletedata.h"
#include "pipeline/form1.h"
#include "pipeline/form13.h"
#include "pipeline/formats.h"
#include "pipeline/mainopl.h"
#include "pipeline/readdata.h"
#include "pipeline/reseticons.h"
#include "pipeline/screens.h"
#include "pipeline/transferdata.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "scanner/checkscanners.h"
#include "settings/checkfitterfile.h"
#include "settings/form2.h"
#include "settings/storecheck.h"
#include "support/form18.h"
#include "support/helptools.h"

namespace {

void events() { QCoreApplication::processEvents(); }

std::string error(const std::exception& e)
{
    const Fault f = Fault::from(e);
    return CStr((long long)f.number) + " " + f.description;
}

// The handlers of runread, rundelete and runsetup share their wording.
void reportfault(const char* routine, const std::exception& e)
{
    const std::string text = error(e);
    MsgBox("An unexpected error has occured attempting to run a system function! Error: " + text, vbExclamation,
           std::string("Error In Function ") + routine + "()");
    addtologfile(std::string("Function ") + routine + "() : " + text);
}

void reportstep(const char* routine, Int16 step, const std::string& text)
{
    MsgBox("An unexpected error has occured attempting to run a system function at line " + CStr((long long)step) +
               "! Error: " + text,
           vbExclamation, std::string("Error In Function ") + routine + "()");
}

// No scanner in use: the action ends before it starts.
bool noscanners(int n)
{
    if (n != 0) return false;
    form1().List2.additem("No scanners configured for use!");
    g().runmode = 0;
    reseticons();
    return true;
}

// Read and Delete: one scanner goes at once, several through the select scanner type screen.
void readordelete(bool reading)
{
    Globals& s = g();
    if (s.runmode > 0) return;
    s.oplerror = 0;
    s.runmode = 2;
    setinterval(form9().Timer1, 1000);
    events();
    const int n = countscanners();
    reseticons();
    if (noscanners(n)) return;
    s.pressedop = 3;
    Form1& f = form1();
    if (n > 1) s.scannertype = 0;
    if (reading) {
        f.Read.setpicture(ColorIcons(), 4);
        f.Shape1[2].setfillcolor(colorbox(1));
    } else {
        f.Delete.setpicture(ColorIcons(), 1);
        f.Shape1[3].setfillcolor(colorbox(12));
    }
    if (n == 1) {
        f.repaint();
        if (reading) readdata();
        else deletedata(0);
    } else {
        form13().Text1.settext(reading ? "4" : "2");
        form13().show();
    }
    if (!reading) return;
    // With several scanners this runs before the user has chosen, on the last read's values.
    ListBox& list = f.List2;
    if (s.idstatus == 1 || s.timestatus == 1) list.additem("Aborted due to error on scanner!");
    else if (s.scancount > 0 && list.listcount() > 0 && s.runmode < 4) list.additem("Data has been read only!");
}

}  // namespace

bool lockcleared()
{
    const std::string name = "BARLCK." + g().terminalno;
    if (UCase(files::Dir(formats::lockfile())) != UCase(name)) return true;
    if (MsgBox("There is a lock file in place that indicates you are currently loading data into Tarn! You should not "
               "download from additional scanners until this is complete! Would you like to remove the lock file?",
               vbYesNo + vbCritical + vbDefaultButton2, "Data Upload In Progress") != vbYes)
        return false;
    files::removefile(formats::lockfile());
    return true;
}

int countscanners()
{
    Globals& s = g();
    Form13& select = form13();
    int n = 0;
    for (int i = 1; i <= 3; ++i) {
        const bool used = s.scannerused[i] == 1;
        if (used) {
            ++n;
            s.scannertype = i;
        }
        select.STypeL[i].setEnabled(used);
        select.STypeB[i].setfillcolor(colorbox(used ? 0 : 5));
    }
    return n;
}

void runtransfer()
{
    Globals& s = g();
    Int16 step = 1;
    try {
        for (long i = 1; i <= 1000; ++i) {
            s.outlines[i].clear();
            s.scanlines[i].clear();
            s.reviewlines[i].clear();
        }
        s.scancount = 0;
        events();
        s.oplerror = 0;
        step = 2;
        if (s.runmode > 0) return;

        step = 3;
        s.runmode = 1;
        setinterval(form9().Timer1, 1000);
        events();
        const int n = countscanners();
        step = 4;
        if (noscanners(n)) return;

        step = 5;
        if (s.savetype == 1 && s.storedown == 0) {
            checkstorelocation();
            if (s.storestate > 0) {
                if (MsgBox("There is a problem with the store location, it appears to be unavailable at the moment! "
                           "Would you like to store files locally on the PC until it is available again?",
                           vbYesNo + vbExclamation, "Store Location Unavailable") == vbYes) {
                    s.storedown = 1;
                } else {
                    form1().List2.additem("Transfer aborted due to server being unavailable!");
                    s.runmode = 0;
                    reseticons();
                    return;
                }
            }
        }

        step = 6;
        if ((s.savetype == 1 || s.savetype == 2) && s.storedown == 0 && !lockcleared()) {
            // The buttons stay as they are.
            s.runmode = 0;
            s.automaticactive = 0;
            return;
        }

        step = 7;
        reseticons();
        Form1& f = form1();
        s.pressedop = 3;
        f.Shape1[1].setfillcolor(colorbox(1));
        if (n == 1) {
            step = 8;
            f.Transfer.setpicture(MiscIcons(), 3);
            f.repaint();
            events();
            clearlist(2);
            transferdata();
            events();
        } else {
            step = 9;
            s.scannertype = 0;
            f.Transfer.setpicture(ColorIcons(), 3);
            form13().Text1.settext("3");
            form13().show();
            events();
        }
    } catch (const std::exception& e) {
        const std::string text = error(e);
        reportstep("runtransfer", step, text);
        addtologfile("Function runtransfer() : Line " + CStr((long long)step) + " " + text);
    }
}

void runread()
{
    try {
        readordelete(true);
    } catch (const std::exception& e) {
        reportfault("runread", e);
    }
}

void rundelete()
{
    try {
        readordelete(false);
    } catch (const std::exception& e) {
        reportfault("rundelete", e);
    }
}

void runcheck()
{
    Globals& s = g();
    Int16 step = 1;
    try {
        events();
        s.oplerror = 0;
        if (s.runmode > 0) return;
        step = 2;
        s.callerof[10] = 1;
        form1().hide();
        const int n = countscanners();
        // With no scanner in use the main screen stays hidden.
        if (n == 0) return;
        step = 3;
        s.pressedop = 2;
        s.callerof[10] = 1;
        if (n == 1) {
            Form10& check = form10();
            check.setupscreen();
            check.show();
            check.firstcall();
        } else {
            s.scannertype = 0;
            form13().Text1.settext("1");
            form13().show();
        }
    } catch (const std::exception& e) {
        const std::string text = error(e);
        reportstep("runcheck", step, text);
        addtologfile("Function runcheck() : " + text);
    }
}

void runsetup()
{
    Globals& s = g();
    try {
        s.pressedop = 1;
        s.oplerror = 0;
        events();
        s.callerof[2] = 1;
        form1().hide();
        form1().repaint();
        events();
        checkstorelocation();
        if (s.fittertype > 0 && s.storestate != 0) form2().Shape1[10].setfillcolor(colorbox(2));
        else checkfitterfile();
        checkscanners();
        form2().show();
    } catch (const std::exception& e) {
        reportfault("runsetup", e);
    }
}

bool operationrunning()
{
    Globals& s = g();
    if (s.runmode == 0 && s.pressedop == 0) return false;
    if (MsgBox("The appears to be a data transfer or operation in progress, which means that additional operations "
               "should wait! Is this the case?",
               vbYesNo + vbQuestion, "Confirm Transfer Status") == vbYes)
        return true;
    s.runmode = 0;
    s.pressedop = 0;
    return false;
}

void wireform1(Form1& f)
{
    installsessioncloser();
    const auto both = [&f](PictureBox& picture, Caption& caption, void (*routine)()) {
        QObject::connect(&picture, &PictureBox::clicked, &f, guard(routine));
        QObject::connect(&caption, &Caption::clicked, &f, guard(routine));
    };
    both(f.Check, f.CheckLabel, &runcheck);
    both(f.Transfer, f.TransferLabel, &runtransfer);
    both(f.Read, f.ReadLabel, &runread);
    both(f.Delete, f.DeleteLabel, &rundelete);
    both(f.Settings, f.SettingsLabel, &runsetup);
    QObject::connect(&f.Status, &PictureBox::clicked, &f, guard(&statusclick));
    QObject::connect(&f.Label1, &Caption::clicked, &f, guard([] { form24().opentimer(); }));
    QObject::connect(&f.ImportIcon[0], &PictureBox::clicked, &f, guard(importclick));
    QObject::connect(&f.Label2, &Caption::clicked, &f, guard(importclick));
    // Help and the outstanding list's double click ask the guard question once, then go on.
    QObject::connect(&f.Help, &PictureBox::clicked, &f, guard(&helpclick));
    QObject::connect(&f.HelpLabel, &Caption::clicked, &f, guard(&helpclick));
    QObject::connect(&f.List1, &ListBox::doubleclicked, &f, guard(&outstandingdblclick));
    QObject::connect(&f.Support, &PictureBox::clicked, &f, guard(runsupportviewer));
}

void helpclick()
{
    if (operationrunning()) return;
    openhelpmenu(1);
}
