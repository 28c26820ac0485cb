#include "settings/setupports.h"

#include <cmath>

#include "core/globals.h"
#include "platform/serial.h"
#include "runtime/vb.h"
#include "settings/form2.h"
#include "settings/setupdisplay.h"

namespace {

// The port number of a text that should be one, 0 when it is not a whole number 1..16.
int portnumber(const std::string& text)
{
    if (!IsNumeric(text)) return 0;
    const double n = CDbl(text);
    if (!(n >= 1 && n <= 16) || n != std::floor(n)) return 0;
    return (int)n;
}

}  // namespace

void getcoms()
{
    Form2& f = form2();
    std::string kept[4];
    for (int i = 1; i <= 3; ++i) {
        kept[i] = f.SPorts[i].text();
        f.SPorts[i].clearlist();
    }
    for (int n = 1; n <= 16; ++n) {
        if (!serial::portexists(n)) continue;
        for (int i = 1; i <= 3; ++i) f.SPorts[i].additem("COM" + CStr((long long)n));
    }
    for (int i = 1; i <= 3; ++i) f.SPorts[i].settext(kept[i]);
}

void checkcomport(int i)
{
    Form2& f = form2();
    Globals& s = g();
    std::string text = f.SPorts[i].text();
    int port = 0;
    if (Len(text) > 3) {
        if (UCase(Left(text, 3)) == "COM") port = portnumber(Mid(text, 4));
    } else if (!text.empty()) {
        port = portnumber(text);
        if (port) {
            text = "COM" + CStr((long long)port);
            f.SPorts[i].settext(text);
        }
    }
    if (port && !serial::portexists(port)) port = 0;

    if (!port) {
        paint(f.ScanBox[i], boxfault);
        paint(f.PortBox[i], boxfault);
        f.portfault[i] = 1;
        return;
    }
    f.SPorts[i].settext(UCase(text));
    paint(f.ScanBox[i], boxidle);
    if (s.portlasttested[i] == port) {
        paint(f.PortBox[i], boxgood);
        paint(f.ResultBox[i], s.scannertested[i] == 1 ? boxgood : boxfault);
    } else {
        paint(f.PortBox[i], boxneutral);
        paint(f.ResultBox[i], boxneutral);
        f.TestResult[i].setcaption("N/A");
        s.portlasttested[i] = 0;
    }
    s.scannerport[i] = port;
    f.portfault[i] = 0;
}

void showandhide(int i, int mode)
{
    Form2& f = form2();
    Globals& s = g();
    const bool show = mode == 0 ? s.scannerused[i] == 0 : s.scannerused[i] == 1;
    if (mode == 0) s.scannerused[i] = show ? 1 : 0;
    QWidget* row[] = {&f.ScanLabel[i], &f.ScanBox[i], &f.Port[i], &f.PortBox[i], &f.TestLabel[i], &f.TestBox[i],
                      &f.TestResult[i], &f.ResultBox[i], &f.SPorts[i], &f.LAuto[i], &f.SAuto[i], &f.BAuto[i],
                      &f.TimeUpdateBox[i], &f.TimeUpdateLabel[i]};
    for (QWidget* w : row) w->setVisible(show);
    if (show) checkcomport(i);
    light(f.SType[i], show);
    s.scannerauto[i] = 0;
    showauto(i);
    s.scannerautotime[i] = show ? 1 : 0;
    showautotime(i);
}
