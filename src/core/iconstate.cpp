#include "core/iconstate.h"

#include "core/exit.h"
#include "core/form9.h"
#include "core/globals.h"
#include "core/imagelists.h"
#include "core/trayicon.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "platform/clock.h"

namespace {

bool usedauto(int i) { return g().scannerused[i] == 1 && g().scannerauto[i] == 1; }

// One picture for the tray and one Balls image for Status. False when a download started
// while the pictures were loading and the tick must leave them as the download set them.
bool show(const char* icon, int ball)
{
    if (g().runmode != 0) return false;
    form9().seticon(std::string("icons\\") + icon);
    if (g().runmode != 0) return false;
    form1().Status.setpicture(Balls(), ball);
    return true;
}

std::string text(int n) { return std::to_string(n); }

// The rows while the store is usable. False when the tick ends before updateicon.
bool storeup(Form9& f)
{
    Globals& s = g();
    if (s.automaticactive == 1) {
        // Step 0 grey, then the seven steps of the animation.
        const int step = (int)Val(f.iconm1);
        const std::string icon = step == 0 ? "vexalgrey.ico" : "vexalauto" + text(step) + ".ico";
        if (!show(icon.c_str(), step == 0 ? 13 : 5 + step)) return false;
        f.iconm1 = text(step >= 7 ? 0 : step + 1);
    } else if (anyauto()) {
        const bool blue = Val(f.iconm2) == 0;
        if (!show(blue ? "vexalblue.ico" : "vexalgrey.ico", blue ? 16 : 13)) return false;
        f.iconm2 = blue ? "1" : "0";
    } else {
        if (!show("vexalyellow.ico", 14)) return false;
    }
    return true;
}

// The rows while the store is down: red on every other tick at most, and on every tick
// when the red is forced.
bool storedown(Form9& f)
{
    Globals& s = g();
    if (f.iconm1 == "1") {
        if (!show("vexalred.ico", 17)) return false;
        f.iconm1 = "2";
        return true;
    }
    bool shown;
    if (s.pressedop != 0) shown = show("vexalyellow.ico", 14);
    else if (s.automaticactive == 1) shown = show("vexalauto4.ico", 9);
    else if (anyauto()) shown = show("vexalblue.ico", 16);
    else shown = show("vexalblue.ico", 13);
    if (!shown) return false;
    f.iconm1 = "1";
    return true;
}

}  // namespace

bool anyauto()
{
    for (int i = 1; i <= 3; ++i)
        if (g().scannerauto[i] == 1) return true;
    return false;
}

bool anyusedauto()
{
    for (int i = 1; i <= 3; ++i)
        if (usedauto(i)) return true;
    return false;
}

bool closedfornewday()
{
    if (Format(platform::clock::now(), "DDMMYYYY") == g().datecheck || anyauto()) return false;
    closeforms();
    return true;
}

void timer1tick()
{
    Globals& s = g();
    Form9& f = form9();
    if (closedfornewday()) return;
    if (s.runmode != 0) return;

    if (s.storestate == 0 && s.pressedop != 0) {
        if (show("vexalyellow.ico", 14)) updateicon();
        return;
    }
    if (s.storestate != 0 && !usedauto(1) && (!usedauto(2) || !usedauto(3))) f.iconm1 = "1";
    if (!(s.storestate == 0 ? storeup(f) : storedown(f))) return;
    updateicon();
    if (!anyusedauto() && s.runmode == 0) setinterval(f.Timer1, 0);
}
