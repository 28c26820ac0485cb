#include "settings/setuptypes.h"

#include "core/globals.h"
#include "core/logs.h"
#include "runtime/vb.h"
#include "settings/checkfitterfile.h"
#include "settings/form2.h"
#include "settings/form3.h"
#include "settings/setupboxes.h"
#include "settings/setupdisplay.h"
#include "settings/storecheck.h"

namespace {

// The end of both switches: the engineer list is checked where it can be reached.
void finish()
{
    checkfittersource();
    form2().changingtype = 0;
}

// Direct, Batch Update and Email in turn; Email only with the OPL 972x in use.
void cyclesubmode()
{
    Globals& s = g();
    Form2& f = form2();
    if (s.savetype == 1) s.savetype = 2;
    else if (s.savetype == 2 && s.scannerused[1] == 1) s.savetype = 3;
    else s.savetype = 1;
    showsavetype();
    f.ServerIP.settext(s.savetype == 3 ? form3().HOEmail.value() : s.serverip);
}

// The first three octets of the PC's own address, with their dots.
std::string ownnetwork()
{
    const std::string own = form2().Winsock1.LocalIP();
    long dot = 0;
    for (int n = 1; n <= 3; ++n) {
        dot = InStr(dot + 1, own, ".");
        if (dot == 0) raisefault(fault::invalidcall);
    }
    return Left(own, dot);
}

enum class Guess { ended, goon };

// An empty box on the way to Server: the server is taken to be number 200 of the PC's own
// network. Ends the switch when that server turned out usable, or when the guess failed.
Guess guessserver()
{
    Globals& s = g();
    Form2& f = form2();
    try {
        const std::string network = ownnetwork();
        const std::string guess = network + "200";
        f.ServerIP.settext(guess);
        s.serverip = guess;
        int32_t roundtrip = 0;
        if (pingaddress(guess, 100, roundtrip) != 0) {
            f.ServerIP.settext(network + "???");
            paint(f.Shape1[7], boxfault);
            return Guess::goon;
        }
        checkserverip();
        if (s.storestate == 0) {
            f.TarnTNO.setFocus();
            f.changingtype = 0;
            return Guess::ended;
        }
        return Guess::goon;
    } catch (const std::exception& e) {
        const Fault fault = Fault::from(e);
        addtologfile("setsavetype: Unexpected error. Error: " + CStr((long long)fault.number) + " " + fault.description);
        f.ServerIP.settext("0.0.0.0");
        f.changingtype = 0;
        return Guess::ended;
    }
}

}  // namespace

void setsavetype(int index)
{
    Globals& s = g();
    Form2& f = form2();
    if (f.changingtype == 1) return;
    f.changingtype = 1;
    if ((index == 2 && s.savetype > 0) || (index == 1 && s.savetype == 0)) {
        f.changingtype = 0;
        return;
    }
    s.lastgoodip = "0";

    if (index == 1) {
        s.savetype = 0;
        s.fittertype = 0;
        showsavetype();
        showfittertype();
        finish();
        return;
    }
    if (index == 3 && s.savetype > 0) {
        cyclesubmode();
        f.changingtype = 0;
        return;
    }

    s.savetype = 1;
    s.fittertype = 1;
    showsavetype();
    showfittertype();
    f.repaint();

    if (s.savetype == 3) {
        checkemailbox();
    } else if (f.ServerIP.value().empty() || f.ServerIP.value() == "0.0.0.0") {
        if (guessserver() == Guess::ended) return;
    } else {
        checkserverip();
    }
    f.ServerIP.setFocus();
    finish();
}

void setfittertype(int index)
{
    Globals& s = g();
    Form2& f = form2();
    if (s.savetype == 0 || f.changingtype == 1) return;
    f.changingtype = 1;
    try {
        if (index == 1) s.fittertype = 0;
        else if (index == 2) s.fittertype = 1;
        else if (index == 3) s.fittertype = s.fittertype == 1 ? 2 : 1;
        showfittertype();
        finish();
    } catch (const std::exception& e) {
        const Fault fault = Fault::from(e);
        addtologfile("setfittertype: Unexpected error. Error: " + CStr((long long)fault.number) + " " +
                     fault.description);
        f.changingtype = 0;
    }
}
