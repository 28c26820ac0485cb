#include "settings/setuptests.h"

#include "core/globals.h"
#include "core/runtimeerror.h"
#include "maintenance/form10.h"
#include "maintenance/screens.h"
#include "scanner/form7.h"
#include "settings/form2.h"
#include "settings/setupdisplay.h"
#include "settings/setupports.h"

void runtests(int i)
{
    Form2& f = form2();
    Globals& s = g();
    if (s.scannerused[i] == 0) {
        f.TestResult[i].setcaption("N/A");
        paint(f.ResultBox[i], boxneutral);
        return;
    }
    if (f.SPorts[i].text().empty()) {
        f.TestResult[i].setcaption("INVALID PORT");
        paint(f.ResultBox[i], boxfault);
        return;
    }
    s.scannertype = i;
    form10().Text2.settext("1");
    form10().gettingscannerdata();
}

void testall()
{
    Form2& f = form2();
    for (int i = 1; i <= 3; ++i) {
        paint(f.PortBox[i], boxneutral);
        paint(f.ResultBox[i], boxneutral);
        f.TestResult[i].setcaption("N/A");
    }
    f.repaint();
    for (int i = 1; i <= 3; ++i)
        if (g().scannerused[i] == 1) runtests(i);
}

void scanforport(int i)
{
    Globals& s = g();
    s.scannertype = i;
    getcoms();
    Form7& scan = form7();
    scan.setup.setsports = [](int type, const std::string& text) { form2().SPorts[type].settext(text); };
    scan.setup.clearbport = [] { form2().BPort[g().scannertype].settext("0"); };
    scan.setup.runtests = [](int type) { guarded([type] { runtests(type); }); };
    s.pressedop = 1;
    scan.startscan();
}

void showscannerinfo(int i)
{
    Globals& s = g();
    s.scannertype = i;
    s.callerof[10] = 2;
    form2().hide();
    Form10& info = form10();
    info.setupscreen();
    info.show();
    info.firstcall();
}
