#include "pipeline/autodownload.h"

#include <QCoreApplication>
#include <memory>

#include "core/form16.h"
#include "core/form6.h"
#include "core/form9.h"
#include "core/globals.h"
#include "core/iconstate.h"
#include "core/imagelists.h"
#include "core/screens.h"
#include "core/trayicon.h"
#include "maintenance/form24.h"
#include "maintenance/screens.h"
#include "pipeline/form1.h"
#include "pipeline/mainactions.h"
#include "pipeline/reseticons.h"
#include "pipeline/screens.h"
#include "pipeline/transferdata.h"
#include "platform/csp2.h"
#include "platform/dialogs.h"
#include "platform/opl.h"
#include "platform/serial.h"
#include "settings/form11.h"
#include "core/runtimeerror.h"

namespace {

void events() { QCoreApplication::processEvents(); }

// A download is under way: the status screen stands in for a hidden main screen, and the
// tray shows the store symbol.
void announce()
{
    Form1& main = form1();
    if (!main.isVisible()) {
        Form16& status = form16();
        status.setupstatus();
        status.show();
        status.repaint();
    } else {
        main.Status.setpicture(MiscIcons(), 3);
        reseticons();
        main.Status.repaint();
    }
    form9().seticon("icons\\store.ico");
    updateicon();
}

// The line count of a docked OPL 972x through the monitor's own control, whose error event
// only sets oplerror.
Int32 countopllines()
{
    Globals& s = g();
    s.oplerror = 0;
    auto opl = std::make_unique<opl::Control>();
    QObject::connect(opl.get(), &opl::Control::Error, opl.get(), guard([] { g().oplerror = 1; }));
    opl->setport(s.scannerport[1]);
    if (s.oplportstate == 0) {
        opl->openport();
        s.oplportstate = 1;
    } else {
        s.oplportstate = 2;
    }
    const Int32 count = opl->readlinecount();
    events();
    if (s.oplportstate == 1) {
        opl->closeport();
        s.oplportstate = 0;
    }
    return count;
}

// The OPL 972x. True when the tick ends here because a download ran.
bool polloplscanner(bool wasok)
{
    Globals& s = g();
    s.scancount = countopllines();
    if (s.oplerror != 0) return false;
    const bool due = s.lastscannerid == "000" || s.scancount > 0 || !wasok;
    if (!due) {
        form24().checkbattery(0);
        return false;
    }

    s.runmode = 1;
    if (s.savetype > 0 && s.storedown == 0 && !lockcleared()) {
        MsgBox("Please remove the scanner from the cradle or cable and then click on 'OK' (Note: No data has been "
               "downloaded from the scanner). The scanner can be reconnected once the Tarn processing is complete.",
               vbExclamation, "Please remove scanner");
        s.runmode = 0;
        s.automaticactive = 1;
        return false;
    }
    announce();
    s.scannertype = 1;
    transferdata();
    s.autoscannerwait = 10;
    return true;
}

// An OPN 2001 (type 2) or CS 1504 (type 3): downloaded once per docking, marked in `waiting`
// until it stops answering or its port goes. True when a download ran.
bool pollcspscanner(int type, Int16& waiting)
{
    Globals& s = g();
    const int port = s.scannerport[type];
    if (!serial::portexists(port)) {
        waiting = 0;
        return false;
    }
    csp2Restore();
    csp2Init(port - 1);
    csp2SetRetryCount(1);
    const int32_t answer = csp2Interrogate();
    if (answer == 0 && waiting == 0) {
        csp2Restore();
        waiting = 1;
        s.runmode = 1;
        announce();
        s.scannertype = type;
        transferdata();
        return true;
    }
    if (answer == -1) waiting = 0;
    csp2Restore();
    return false;
}

}  // namespace

void timer2tick()
{
    Globals& s = g();
    if (s.autoscannerwait > 0) {
        s.autoscannerwait -= 1;
        return;
    }
    if (closedfornewday()) return;
    if (!(s.runmode == 0 && s.pressedop == 0 && s.automaticactive == 1)) return;

    form6().hide();
    form11().hide();
    form16().hide();
    events();
    const bool wasok = s.oplerror != 1;

    if (s.scannerauto[1] == 1 && serial::portexists(s.scannerport[1]) && polloplscanner(wasok)) return;
    if (s.scannerauto[2] == 1 && pollcspscanner(2, s.OPN2001waiting)) return;
    if (s.scannerauto[3] == 1 && s.symbolpollstep == 0 && pollcspscanner(3, s.symwaiting)) return;
    if (s.scannerauto[3] == 1) {
        s.symbolpollstep += 1;
        if (s.symbolpollstep > 3) s.symbolpollstep = 0;
    }
}

void timer3tick()
{
    if (g().runmode == 0 && g().pressedop == 0) form24().checkbattery(0);
}

void statusclick()
{
    Globals& s = g();
    events();
    if (s.runmode == 1 || s.runmode == 2) return;
    if (s.automaticactive == 1) s.automaticactive = 0;
    else if (anyusedauto()) s.automaticactive = 1;
    reseticons();
}

void startstopauto()
{
    Globals& s = g();
    Form1& f = form1();
    const auto buttons = [&f](bool on) {
        enablebutton(f.Transfer, f.TransferLabel, 3, on);
        enablebutton(f.Read, f.ReadLabel, 4, on);
        enablebutton(f.Delete, f.DeleteLabel, 1, on);
    };
    if (s.automaticactive == 0) {
        bool allauto = true;
        for (int i = 1; i <= 3; ++i)
            if (s.scannerused[i] == 1 && s.scannerauto[i] != 1) allauto = false;
        if (allauto) buttons(false);
        setinterval(form9().Timer1, 1000);
        form6().resetballs();
        if (s.scannerauto[3] == 1) {
            csp2Restore();
            csp2Init(s.scannerport[3] - 1);
            setinterval(form9().Timer2, 10000);
        }
    } else {
        s.automaticactive = 0;
        setinterval(form9().Timer2, 0);
        buttons(true);
    }
}
