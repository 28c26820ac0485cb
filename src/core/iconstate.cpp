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

// One picture for the tray and one Balls image for Status.
void show(const char* icon, int ball)
{
    form9().seticon(std::string("icons\\") + icon);
    form1().Status.setpicture(Balls(), ball);
}

// The same for a step of the animation, which looks at runmode again before each picture:
// loading one can let events in. False when a download started meanwhile and the tick must
// leave the pictures as the download set them.
bool showstep(const std::string& icon, int ball)
{
    if (g().runmode != 0) return false;
    form9().seticon("icons\\" + icon);
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
        if (!showstep(icon, step == 0 ? 13 : 5 + step)) return false;
        f.iconm1 = text(step >= 7 ? 0 : step + 1);
    } else if (anyauto()) {
        const bool blue = Val(f.iconm2) == 0;
        show(blue ? "vexalblue.ico" : "vexalgrey.ico", blue ? 16 : 13);
        f.iconm2 = blue ? "1" : "0";
    } else {
        show("vexalyellow.ico", 14);
    }
    return true;
}

// The rows while the store is down: red on every other tick at most, and on every tick
// when the red is forced.
void storedown(Form9& f)
{
    Globals& s = g();
    if (f.iconm1 == "1") {
        show("vexalred.ico", 17);
        f.iconm1 = "2";
        return;
    }
    if (s.pressedop != 0) show("vexalyellow.ico", 14);
    else if (s.automaticactive == 1) show("vexalauto4.ico", 9);
    else if (anyauto()) show("vexalblue.ico", 16);
    else show("vexalblue.ico", 13);
    f.iconm1 = "1";
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
        show("vexalyellow.ico", 14);
        updateicon();
        return;
    }
    if (s.storestate != 0 && !usedauto(1) && (!usedauto(2) || !usedauto(3))) f.iconm1 = "1";
    if (s.storestate == 0) {
        if (!storeup(f)) return;
    } else {
        storedown(f);
    }
    updateicon();
    if (!anyusedauto() && s.runmode == 0) setinterval(f.Timer1, 0);
}
