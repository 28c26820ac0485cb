#include "pipeline/linerun.h"

#include <QCoreApplication>

#include "core/colorbox.h"
#include "core/form16.h"
#include "core/globals.h"
#include "core/logs.h"
#include "core/screens.h"
#include "pipeline/form1.h"
#include "pipeline/form12.h"
#include "pipeline/reseticons.h"
#include "pipeline/screens.h"
#include "pipeline/session.h"

bool repairrunning() { return g().runmode == 4 || g().runmode == 5; }

void reportline(const std::string& text)
{
    if (repairrunning()) form12().List1.additem(text);
    else form1().List2.additem(text);
    addtologfile(text);
}

void announce(const std::string& text)
{
    form1().List2.additem(text);
    addtologfile(text);
}

namespace {

bool statusshown() { return form16().isVisible() && g().runmode < 4; }

std::string twice(long n) { return Format(n, "000") + " / " + Format(n, "000"); }

void setstatus(const std::string& counter, int colour)
{
    if (!counter.empty()) form16().ProcData.setcaption(counter);
    form16().ProcData.setforecolor(colorbox(colour));
}

std::string validtext(long n)
{
    if (n == 1) return "1 Valid Line Available For Export";
    return CStr((long long)n) + " Valid Lines Available For Export";
}

}  // namespace

void showprocessing()
{
    if (!statusshown()) return;
    Form16& s = form16();
    s.showstage(s.ProcLabel, s.ProcData, "000 / " + Format(g().scancount, "000"));
}

void showprogress(long index)
{
    if (!statusshown()) return;
    form16().ProcData.setcaption(Format(index, "000") + " / " + Format(g().scancount, "000"));
    form16().ProcData.repaint();
    QCoreApplication::processEvents();
}

void finishrun(bool logignored)
{
    Globals& s = g();
    ListBox& list = form1().List2;
    const long bad = s.badcount;
    const long count = s.scancount;
    if (bad == count) {
        announce("None of the entries are valid!");
        setstatus(twice(count) + " All invalid", 2);
    } else if (bad > 0) {
        std::string ignored, counter;
        if (bad == 1) {
            ignored = "1 Invalid/Test Line Has Been Ignored";
            counter = twice(count) + " 1 Invalid Line";
        } else {
            ignored = CStr((long long)bad) + " Invalid/Test Lines Have Been Ignored";
            counter = twice(count) + " " + CStr((long long)bad) + " Invalid Line";
        }
        list.additem(ignored);
        if (logignored) addtologfile(ignored);
        setstatus(counter, 0);
        announce(validtext(count - bad));
    } else {
        announce(validtext(count));
        setstatus("", 11);
    }
    if (s.runmode != 1) {
        s.runmode = 0;
        s.pressedop = 0;
        reseticons();
    }
}

void abandonrun()
{
    closesession();
    g().runmode = 0;
    g().pressedop = 0;
    reseticons();
}
