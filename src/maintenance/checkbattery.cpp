// checkbattery of the battery timer screen, with its charge and boost stages.
#include <QCoreApplication>

#include "core/colorbox.h"
#include "core/form16.h"
#include "core/globals.h"
#include "core/readdelay.h"
#include "core/screens.h"
#include "maintenance/bars.h"
#include "maintenance/chargecurve.h"
#include "maintenance/form10.h"
#include "maintenance/form24.h"
#include "maintenance/scannerclock.h"
#include "maintenance/screens.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "platform/clock.h"
#include "platform/opl.h"
#include "core/runtimeerror.h"

namespace {

bool alldigits(const std::string& s)
{
    for (char c : s)
        if (c < '0' || c > '9') return false;
    return true;
}

// The ColorBox index of the level bars for a level.
int levelcolour(int level)
{
    if (level > 70) return 1;
    if (level > 60) return 14;
    if (level > 50) return 16;
    return 15;
}

}  // namespace

void Form24::checkbattery(Int16 whichtype)
{
    Globals& s = g();
    auto opl = std::make_unique<opl::Control>();
    connect(opl.get(), &opl::Control::Error, this, guard(std::bind_front(&Form24::opl_Error, this)));
    opl->setport(s.scannerport[1]);
    s.oplerror = 0;
    try {
        if (whichtype == 1 && pollcount == 0) {
            bool bad = false;
            readidentity(*opl, bad);
            if (s.oplerror == 1) return batteryfailed(opl);
        }

        const std::string battery = opl->readbattery();
        waitreaddelay();
        if (s.oplerror == 1 || Mid(battery, 4, 1) != "%") return batteryfailed(opl);
        s.batterylevel = CInt(Left(battery, 3));

        if (!(whichtype != 0 && s.batterylevel == lastlevel)) showlevel();
        if (whichtype == 1 && s.batterylevel < 100) chargestage();
        else if (whichtype == 1 && s.batterylevel == 100) booststage();

        lastlevel = s.batterylevel;
        if (whichtype == 1) {
            ++pollcount;
            if (pollcount > 60) pollcount = 0;
        }
        opl.reset();
    } catch (const Fault&) {
        // A level that is no number counts as no scanner.
        batteryfailed(opl);
    }
}

// The scanner's clock and ID, on the first poll of every 61. Leaves oplerror at 1 when a
// read failed.
void Form24::readidentity(opl::Control& opl, bool& bad)
{
    Globals& s = g();
    const std::string clock = opl.readclock();
    waitreaddelay();
    if (s.oplerror == 1) return;
    s.scannerclock = clock;
    setscannerdatetime(oplstamp(clock));
    if (clocklooksbad(s.scannerdate, s.scannertime, platform::clock::now())) bad = true;
    Label4[6].setcaption(timedisplay(s.scannertime) + " " + datedisplay(s.scannerdate));
    Label4[6].setforecolor(colorbox(bad ? 2 : 13));

    const int16_t id = opl.readid();
    waitreaddelay();
    if (s.oplerror == 1) return;
    s.scannerid = Format(id, "000");
    s.lastscannerid = s.scannerid;
    const std::string last3 = Right(s.scannerid, 3);
    if (!alldigits(s.scannerid) || last3 == "000" || last3 == "999") bad = true;
    Label4[4].setcaption(IsNumeric(last3) ? Format((long long)Val(last3), "000") : last3);
    Label4[4].setforecolor(colorbox(bad ? 2 : 13));
}

void Form24::showlevel()
{
    const int level = g().batterylevel;
    Form10& check = form10();
    Form1& main = form1();
    Shape& status = form16().BatteryLevel[0];

    lastbattime = platform::clock::now().time();
    Label2.setcaption(Format(level, "000") + "%");
    check.BatLabel[0].setcaption("Batt: " + Format(level, "000") + "%");
    setbarwidth(BatteryLevel[1], level / 100.0 * barfull);
    setbarwidth(main.BatteryLevel, level / 100.0 * mainbarfull);
    setbarwidth(check.BatteryLevel, level / 100.0 * checkbarfull);
    setbarwidth(status, level / 100.0 * statusbarfull);
    check.BatteryLevel.show();
    check.BatLabel[0].show();
    status.show();
    check.STypeB.setfillcolor(colorbox(6));
    for (Shape* bar : {&BatteryLevel[1], &main.BatteryLevel, &check.BatteryLevel, &status})
        bar->setfillcolor(colorbox(levelcolour(level)));
}

// Shape1(0) and Shape1(6) share the bar by the charge time and the boost time.
void Form24::drawstages()
{
    const double total = timecounter + boostcounter;
    setbarwidth(Shape1[0], timecounter / total * barfull);
    setbarleft(Shape1[6], barleft(Shape1[0]) + barwidth(Shape1[0]));
    setbarwidth(Shape1[6], boostcounter / total * barfull);
}

void Form24::chargestage()
{
    doingboost = 0;
    timecounter = chargeminutes(g().batterylevel);
    if (origtimecounter == 0) {
        origtimecounter = timecounter;
    } else if (origtimecounter < timecounter) {
        // The level fell: a fresh charge.
        timeincounter = 0;
        origtimecounter = timecounter;
    }
    boostcounter = 20;
    boostincounter = 0;

    long minutes = (long)(timecounter + boostcounter), hours = 0;
    while (minutes >= 60) {
        minutes -= 60;
        ++hours;
    }

    if (timecounter != lasttimecounter) {
        Label4[2].setcaption(Format(hours, "00") + ":" + Format(minutes, "00"));
        Label4[2].setforecolor(colorbox(10));
        drawstages();
        setbarwidth(Shape1[5], timeincounter / timecounter * barwidth(Shape1[0]));
        Shape1[5].setfillcolor(colorbox(8));
        setbarleft(Shape1[7], barleft(Shape1[6]));
        Shape1[7].setfillcolor(colorbox(6));
    }
    if (!Timer2.isActive()) Timer2.start(60000);
    lasttimecounter = (long long)timecounter;
}

void Form24::booststage()
{
    doingboost = 1;
    if (boostcounter == 0) {
        // Docked full: the boost stage is all there is.
        lastboostincounter = 999;
        boostcounter = 20;
    }
    const long minutes = boostcounter - boostincounter;

    if (boostincounter != lastboostincounter) {
        Label4[2].setcaption("00:" + Format(minutes, "00"));
        Label4[2].setforecolor(colorbox(10));
        if (timecounter > 0) {
            drawstages();
            setbarwidth(Shape1[5], barwidth(Shape1[0]));
            Shape1[5].setfillcolor(colorbox(8));
            setbarleft(Shape1[7], barleft(Shape1[6]));
        } else {
            Shape1[0].hide();
            Shape1[5].hide();
            setbarleft(Shape1[6], barleft(Shape1[0]));
            setbarleft(Shape1[7], barleft(Shape1[0]));
            setbarwidth(Shape1[6], (double)boostcounter / (timecounter + boostcounter) * barfull);
        }
        setbarwidth(Shape1[7], (double)boostincounter / boostcounter * barwidth(Shape1[6]));
        Shape1[7].setfillcolor(colorbox(1));
    }
    if (!Timer2.isActive()) Timer2.start(60000);
    lastboostincounter = boostincounter;
}

// No scanner: the display and the counters go back to the start, without a message.
void Form24::batteryfailed(std::unique_ptr<opl::Control>& opl)
{
    if (g().oplportstate == 1) {
        opl->closeport();
        g().oplportstate = 0;
    }
    opl.reset();
    Timer2.stop();
    QCoreApplication::processEvents();
    setupscreen();
}
