#include "core/startup.h"

#include <QApplication>
#include <QCloseEvent>

#include "core/displaysize.h"
#include "core/exit.h"
#include "core/form22.h"
#include "core/form6.h"
#include "core/form9.h"
#include "core/globals.h"
#include "core/iconstate.h"
#include "core/logs.h"
#include "core/runtimeerror.h"
#include "core/screens.h"
#include "core/trayicon.h"
#include "delivery/checkimports.h"
#include "delivery/listfiles.h"
#include "maintenance/form19.h"
#include "pipeline/autodownload.h"
#include "pipeline/form1.h"
#include "pipeline/reseticons.h"
#include "pipeline/savejournal.h"
#include "pipeline/screens.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/instance.h"
#include "platform/paths.h"
#include "platform/tray.h"
#include "runtime/fault.h"
#include "scanner/checkscanners.h"
#include "settings/checkfitterfile.h"
#include "settings/firstrun.h"
#include "settings/form2.h"
#include "settings/settingscreate.h"
#include "settings/settingsload.h"
#include "settings/settingsread.h"
#include "settings/storecheck.h"
#include "support/frmsplash.h"

namespace {

// The main screen's unload arms Timer4, so a second start can bring it back.
class MainScreenWatch : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Close) setinterval(form9().Timer4, 1000);
        return QObject::eventFilter(watched, event);
    }
};

void doevents() { QCoreApplication::processEvents(); }

}  // namespace


void connectmonitor()
{
    static bool done = false;
    if (done) return;
    done = true;
    Form9& f = form9();
    QObject::connect(&f.Timer1, &QTimer::timeout, &f, guard(timer1tick));
    QObject::connect(&f.Timer2, &QTimer::timeout, &f, guard(timer2tick));
    QObject::connect(&f.Timer3, &QTimer::timeout, &f, guard(timer3tick));
    QObject::connect(&f.Timer4, &QTimer::timeout, &f, guard(timer4tick));
    QObject::connect(&f.ImportCheckTimer, &QTimer::timeout, &f, guard(checkimports));
    connecttraymenu();
    QObject::connect(&form1().Close, &PictureBox::clicked, &f, guard([] {
        form1().hide();
        form22().show();
    }));
    form1().installEventFilter(new MainScreenWatch(&f));
    QObject::connect(&form2(), &Form2::exitprogram, &f, guard([] { fullexit(); }));
}

void timer4tick()
{
    const std::string flag = "c:\\tarnbc\\max.txt";
    if (files::Dir(flag).empty()) return;
    files::removefile(flag);
    setinterval(form9().Timer4, 0);
    doevents();
    listfiles();
    reseticons();
    form1().show();
}

void form9load(const std::string& commandline)
{
    Globals& s = g();
    Form9& f = form9();
    int line = 0;
    try {
        // 1: a clean start
        line = 1;
        s.commandline = commandline;
        s.testmode = 0;
        s.oplportstate = 0;
        s.progcount = 0;
        s.datecheck = Format(platform::clock::now(), "DDMMYYYY");

        // 2, 3: a second copy signals the running one and ends here
        line = 2;
        s.progcount = instance::countcopies();
        if (s.progcount > 1) {
            line = 3;
            files::writeall("c:\\tarnbc\\max.txt", "Do It\r\n");
            doevents();
            endprocess();
        }

        // 4: the install folder
        line = 4;
        s.homedir = platform::installfolder;
        if (s.homedir.back() != '\\') s.homedir += "\\";

        // 5, 6: the form's icon and the tray
        line = 5;
        f.seticon("icons\\vexalgrey.ico");
        line = 6;
        connectmonitor();
        addtrayicon();
        f.hide();
        f.iconm1 = "0";
        f.iconm2 = "0";

        // 7: the splash screen and its update check
        line = 7;
        f.splashdone = "0";
        frmsplash().show();
        frmsplash().load();
        while (f.splashdone != "1") QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);

        // 8: the operation state
        line = 8;
        s.runmode = 0;
        for (int i = 1; i <= 3; ++i) s.scannerused[i] = 0;
        s.OPN2001waiting = 0;
        s.symwaiting = 0;
        s.symbolpollstep = 0;
        s.batcheckcount = 0;
        s.lastscannerid = "000";
        s.lastbatterycheck = 999;

        // 9, 10: the working folder and the first settings file
        line = 9;
        if (!files::isfolder("C:\\TARNBC")) files::makefolder("C:\\TARNBC");
        line = 10;
        createsettingsfile();

        // 11, 12: the day's logs, the first-run mark
        line = 11;
        checklogfiles();
        // Said once, now that the day's log is open.
        if (!tray::available()) addtologfile("Form9/Load: No system tray on this desktop; the program runs without its icon");
        // A save the last run did not finish is put back before anything else is saved.
        savejournal::replay();
        line = 12;
        {
            SettingsReader reader;
            reader.read("FIRST", "RUN");
            s.firstrun = reader.code();
        }

        // 13: a first run goes through the company and setup screens
        if (s.firstrun == 0) {
            line = 81;
            addtologfile("Form9/Load: First run - company information requested");
            startfirstrun();
            line = 82;
            return;
        }

        // 14: the settings, or the stand-alone software update
        line = 13;
        doevents();
        settingsfromfile();
        if (Left(commandline, 8) == "swupdate") {
            line = 14;
            Form19& update = form19();
            update.show();
            update.repaint();
            doevents();
            update.specialrun();
            return;
        }

        // 15: the store location and the engineer list
        line = 15;
        checkstorelocation();
        checkfittersource();

        // 16: the ports, the tray's transfer entry, the display size
        line = 16;
        checkscanners();
        if (s.savetype == 0) f.mnuTransfer.setEnabled(false);
        changedisplaysize();

        // 17: a failed server store asks whether to go to the setup screen
        if (commandline != "startup" && s.testmode == 0 && s.storestate != 0 && s.savetype == 1) {
            int answer = MsgBox("There is a problem with the remote store folder located on '" + s.serverip
                                    + "'! Data Will Temporarily Be Held Locally! Would You Like To Enter The Setup Screen?",
                                vbYesNo + vbExclamation, "Remote Store Location Not Responding");
            if (answer == vbYes) {
                setinterval(f.Timer1, 1000);
                s.callerof[2] = 1;
                form2().show();
                return;
            }
        }

        // 18, 19: the outstanding files and automatic download
        listfiles();
        s.automaticactive = 0;
        s.autoscannerwait = 0;
        reseticons();
        if (s.scannerauto[1] == 1 || s.scannerauto[2] == 1 || s.scannerauto[3] == 1) {
            setinterval(f.Timer2, 1000);
            form6().resetballs();
            s.automaticactive = 1;
        }
        reseticons();

        // 20: the main screen, unless started into the tray
        if (commandline != "startup" && s.testmode == 0 && s.filesoutstanding == 0) form1().show();

        // 21: the monitor timers
        f.iconm1 = "1";
        if (!f.Timer1.isActive()) setinterval(f.Timer1, 1000);
        checkimports();
        setinterval(f.ImportCheckTimer, 20000);
    } catch (const std::exception& e) {
        Fault fault = Fault::from(e);
        if (fault.number == 0) throw;   // the test seam of endprocess
        const std::string detail = std::to_string(fault.number) + " " + fault.description + " at line " + std::to_string(line);
        MsgBox("Unexpected Error Will Attempting To Start Up Program! Error : " + detail, vbExclamation, "Form9: Load");
        addtologfile("Form9/Load: Unexpected error. Error : " + detail);
    }
}
