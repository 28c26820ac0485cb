// The battery timer against an emulated OPL 972x: the identity read every 61st poll, the
// level bars of the four screens, the charge and boost stages and their redraws, a scanner
// lifted during a poll, and the screen's opening and closing.
#include <QTimer>

#include "core/colorbox.h"
#include "core/form16.h"
#include "core/screens.h"
#include "maintenance/bars.h"
#include "maintenance/chargecurve.h"
#include "maintenance/scannerclock.h"
#include "maintenancefixture.h"
#include "support/emulator.h"

namespace {

class BatteryTimer : public MaintenanceTest {
protected:
    // An OPL 972x on COM5 with these options.
    void dock(std::vector<std::string> args)
    {
        emu = std::make_unique<Emulator>("opl", std::move(args), link);
        ASSERT_TRUE(emu->ready());
        install.configure("[ports]\nCOM5=" + link + "\n");
        g().scannerport[1] = 5;
    }
    void lift() { emu.reset(); }

    std::string link = install.root() + "/opl-port";
    std::unique_ptr<Emulator> emu;
    Form24& t = form24();
};

TEST_F(BatteryTimer, FirstPollReadsTheIdentityAndStartsTheCharge)
{
    dock({"--battery", "85", "--id", "5"});
    t.checkbattery(1);
    EXPECT_EQ(g().batterylevel, 85);
    EXPECT_EQ(t.Label2.caption(), "085%");
    EXPECT_EQ(form10().BatLabel[0].caption(), "Batt: 085%");
    EXPECT_EQ(t.Label4[4].caption(), "005");
    EXPECT_EQ(t.Label4[4].forecolor(), colorbox(13));
    EXPECT_EQ(t.Label4[6].forecolor(), colorbox(13));
    EXPECT_EQ(g().scannerdate, Format(platform::clock::now(), "DDMMYY"));
    EXPECT_EQ(t.Label4[6].caption(), timedisplay(g().scannertime) + " " + datedisplay(g().scannerdate));
    EXPECT_EQ(g().scannerid, "005");
    EXPECT_EQ(g().lastscannerid, "005");

    // The four level bars: 85% of their own full widths, light green.
    struct Bar { QWidget* bar; double full; } bars[] = {
        {&t.BatteryLevel[1], 4335}, {&form1().BatteryLevel, 3100}, {&form10().BatteryLevel, 2175},
        {&form16().BatteryLevel[0], 4785},
    };
    for (const auto& b : bars) EXPECT_DOUBLE_EQ(barwidth(*b.bar), 0.85 * b.full) << b.bar->objectName().toStdString();
    EXPECT_EQ(t.BatteryLevel[1].fillcolor(), colorbox(1));
    EXPECT_EQ(form16().BatteryLevel[0].fillcolor(), colorbox(1));
    EXPECT_FALSE(form10().BatteryLevel.isHidden());
    EXPECT_EQ(form10().STypeB.fillcolor(), colorbox(6));

    // The charge stage: 86 minutes to 100% and 20 of boost, 1:46 in all.
    EXPECT_EQ(t.timecounter, 86);
    EXPECT_EQ(t.Label4[2].caption(), "01:46");
    EXPECT_EQ(t.Label4[2].forecolor(), colorbox(10));
    EXPECT_DOUBLE_EQ(barwidth(t.Shape1[0]), 86.0 / 106 * 4335);
    EXPECT_DOUBLE_EQ(barwidth(t.Shape1[6]), 20.0 / 106 * 4335);
    EXPECT_DOUBLE_EQ(barleft(t.Shape1[6]), Form24::progressleft + 86.0 / 106 * 4335);
    EXPECT_DOUBLE_EQ(barleft(t.Shape1[7]), barleft(t.Shape1[6]));
    EXPECT_DOUBLE_EQ(barwidth(t.Shape1[5]), 0);
    EXPECT_EQ(t.Shape1[5].fillcolor(), colorbox(8));
    EXPECT_TRUE(t.Timer2.isActive());
    EXPECT_EQ(t.Timer2.interval(), 60000);
    EXPECT_EQ(t.pollcount, 1);
    EXPECT_EQ(t.lastlevel, 85);
    EXPECT_TRUE(dialogs::transcript().empty()) << "no message boxes";
}

TEST_F(BatteryTimer, IdentityReadComesBackEvery61stPoll)
{
    dock({"--battery", "50", "--id", "7"});
    t.checkbattery(1);
    EXPECT_EQ(t.Label4[4].caption(), "007");
    t.Label4[4].setcaption("seen");
    t.pollcount = 60;
    t.checkbattery(1);
    EXPECT_EQ(t.Label4[4].caption(), "seen") << "no identity read at poll 60";
    EXPECT_EQ(t.pollcount, 0) << "past 60 it starts again";
    t.checkbattery(1);
    EXPECT_EQ(t.Label4[4].caption(), "007");
    EXPECT_EQ(t.pollcount, 1);
    // A level refresh never reads the identity nor counts.
    t.pollcount = 0;
    t.Label4[4].setcaption("seen");
    t.checkbattery(0);
    EXPECT_EQ(t.Label4[4].caption(), "seen");
    EXPECT_EQ(t.pollcount, 0);
}

TEST_F(BatteryTimer, UnprogrammedIdAndWrongClockShowRed)
{
    dock({"--battery", "50", "--id", "999", "--clock-offset", "-1440"});
    t.checkbattery(1);
    EXPECT_EQ(t.Label4[4].caption(), "999");
    EXPECT_EQ(t.Label4[4].forecolor(), colorbox(2));
    EXPECT_EQ(t.Label4[6].forecolor(), colorbox(2));

    lift();
    dock({"--battery", "50", "--id", "12", "--clock-offset", "-1440"});
    t.setupscreen();
    t.checkbattery(1);
    EXPECT_EQ(t.Label4[4].caption(), "012");
    EXPECT_EQ(t.Label4[4].forecolor(), colorbox(2)) << "a bad clock paints the ID red too";
}

TEST_F(BatteryTimer, LevelColoursAndALevelOver100)
{
    struct Row { int level, colour; } rows[] = {{71, 1}, {70, 14}, {61, 14}, {60, 16}, {51, 16}, {50, 15}, {0, 15}};
    for (const auto& r : rows) {
        SCOPED_TRACE(r.level);
        dock({"--battery", std::to_string(r.level)});
        t.checkbattery(0);
        for (Shape* bar : {&t.BatteryLevel[1], &form1().BatteryLevel, &form10().BatteryLevel, &form16().BatteryLevel[0]})
            EXPECT_EQ(bar->fillcolor(), colorbox(r.colour));
        EXPECT_FALSE(t.Timer2.isActive()) << "a refresh runs no stage";
        lift();
    }
    dock({"--battery", "105"});
    t.checkbattery(1);
    EXPECT_DOUBLE_EQ(barwidth(form1().BatteryLevel), 1.05 * 3100);
    EXPECT_EQ(t.Label4[2].caption(), "HH:MM") << "over 100 takes neither stage";
    EXPECT_FALSE(t.Timer2.isActive());
}

TEST_F(BatteryTimer, RedrawsOnlyWhenTheEstimateChanges)
{
    dock({"--battery", "99"});
    t.checkbattery(1);
    EXPECT_EQ(t.Label4[2].caption(), "00:24");
    t.Timer2_Timer();
    t.Timer2_Timer();
    EXPECT_EQ(t.timeincounter, 2);
    t.checkbattery(1);
    EXPECT_EQ(t.Label4[2].caption(), "00:24") << "the estimate does not fall inside a level";
    EXPECT_DOUBLE_EQ(barwidth(t.Shape1[5]), 0) << "time passed shows at the next redraw only";

    lift();
    dock({"--battery", "97"});
    t.checkbattery(1);
    EXPECT_EQ(t.timecounter, 12);
    EXPECT_EQ(t.timeincounter, 0) << "a lower level is a fresh charge";
    EXPECT_EQ(t.origtimecounter, 12);
    EXPECT_EQ(t.Label4[2].caption(), "00:32");

    lift();
    dock({"--battery", "98"});
    t.Timer2_Timer();
    t.checkbattery(1);
    EXPECT_EQ(t.timeincounter, 1);
    EXPECT_DOUBLE_EQ(barwidth(t.Shape1[5]), 1.0 / 8 * barwidth(t.Shape1[0]));
}

TEST_F(BatteryTimer, BoostStage)
{
    dock({"--battery", "100"});
    t.checkbattery(1);
    EXPECT_EQ(t.Label4[2].caption(), "00:20") << "docked full";
    EXPECT_TRUE(t.Shape1[0].isHidden());
    EXPECT_TRUE(t.Shape1[5].isHidden());
    EXPECT_DOUBLE_EQ(barleft(t.Shape1[6]), Form24::progressleft);
    EXPECT_DOUBLE_EQ(barwidth(t.Shape1[6]), 4335) << "the boost bar alone";
    EXPECT_DOUBLE_EQ(barwidth(t.Shape1[7]), 0);
    EXPECT_EQ(t.Shape1[7].fillcolor(), colorbox(1));
    EXPECT_EQ(t.doingboost, 1);

    for (int i = 0; i < 5; ++i) t.Timer2_Timer();
    EXPECT_EQ(t.boostincounter, 5);
    t.checkbattery(1);
    EXPECT_EQ(t.Label4[2].caption(), "00:15");
    EXPECT_DOUBLE_EQ(barwidth(t.Shape1[7]), 5.0 / 20 * 4335);

    t.boostincounter = 21;
    t.checkbattery(1);
    EXPECT_EQ(t.Label4[2].caption(), "00:-01") << "nothing stops the count after the boost";

    // Coming from a charge: both parts of the bar, the charge part full.
    lift();
    dock({"--battery", "99"});
    t.setupscreen();
    t.checkbattery(1);
    lift();
    dock({"--battery", "100"});
    t.checkbattery(1);
    EXPECT_EQ(t.Label4[2].caption(), "00:20");
    t.Timer2_Timer();
    t.checkbattery(1);
    EXPECT_EQ(t.Label4[2].caption(), "00:19");
    EXPECT_FALSE(t.Shape1[0].isHidden());
    EXPECT_DOUBLE_EQ(barwidth(t.Shape1[0]), 4.0 / 24 * 4335);
    EXPECT_DOUBLE_EQ(barwidth(t.Shape1[5]), barwidth(t.Shape1[0]));
    EXPECT_DOUBLE_EQ(barleft(t.Shape1[7]), Form24::progressleft + 4.0 / 24 * 4335);
    EXPECT_DOUBLE_EQ(barwidth(t.Shape1[7]), 1.0 / 20 * barwidth(t.Shape1[6]));
}

TEST_F(BatteryTimer, ALiftedScannerResetsWithoutAMessage)
{
    dock({"--battery", "80"});
    t.checkbattery(1);
    ASSERT_EQ(t.Label2.caption(), "080%");
    ASSERT_TRUE(t.Timer2.isActive());
    g().readdelay = 1;

    // Lifted during the identity read of the next round: the ID read fails.
    t.pollcount = 0;
    QTimer::singleShot(300, [this] { lift(); });
    t.checkbattery(1);
    EXPECT_EQ(g().oplerror, 1);
    EXPECT_EQ(t.Label2.caption(), "---%");
    EXPECT_EQ(form10().BatLabel[0].caption(), "Batt: ---%");
    EXPECT_EQ(t.Label4[2].caption(), "HH:MM");
    EXPECT_EQ(t.Label4[4].caption(), "000");
    EXPECT_EQ(t.Label4[6].caption(), "HH:MM DD/MM/YY");
    EXPECT_EQ(t.Label4[2].forecolor(), colorbox(2));
    EXPECT_EQ(t.lastlevel, 999);
    EXPECT_EQ(t.pollcount, 0);
    EXPECT_EQ(t.timecounter, 0);
    EXPECT_FALSE(t.Timer2.isActive());
    EXPECT_TRUE(form10().BatteryLevel.isHidden());
    EXPECT_TRUE(form16().BatteryLevel[0].isHidden());
    EXPECT_DOUBLE_EQ(barwidth(form1().BatteryLevel), 3100);
    EXPECT_EQ(form1().BatteryLevel.fillcolor(), colorbox(6));
    EXPECT_EQ(t.boostcounter, 20) << "the reset keeps the boost length";
    EXPECT_EQ(g().oplportstate, 0);
    EXPECT_TRUE(dialogs::transcript().empty());
}

TEST_F(BatteryTimer, ABatteryTextWithoutPercentIsNoScanner)
{
    dock({"--battery-text", "85%"});
    t.checkbattery(0);
    EXPECT_EQ(t.Label2.caption(), "---%");
    EXPECT_EQ(t.lastlevel, 999);
    lift();
    dock({"--battery-text", "ab%"});
    t.checkbattery(0);
    EXPECT_EQ(t.Label2.caption(), "---%") << "a level that is no number";
    EXPECT_TRUE(dialogs::transcript().empty());
}

TEST_F(BatteryTimer, OpeningPollsAndClosingGoesBackToTheMainScreen)
{
    dock({"--battery", "90"});
    form1().show();
    t.opentimer();
    EXPECT_EQ(g().pressedop, 1);
    EXPECT_TRUE(form1().isHidden());
    EXPECT_TRUE(t.isVisible());
    EXPECT_EQ(t.Timer1.interval(), 1000);
    QElapsedTimer clock;
    clock.start();
    while (t.Label2.caption() != "090%" && clock.elapsed() < 5000) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(t.Label2.caption(), "090%") << "the first poll after a second";
    EXPECT_EQ(t.Timer1.interval(), 5000);

    emit t.Label4[1].clicked();
    EXPECT_FALSE(t.Timer1.isActive());
    EXPECT_FALSE(t.Timer2.isActive());
    EXPECT_TRUE(t.isHidden());
    EXPECT_TRUE(form1().isVisible());
    EXPECT_EQ(g().pressedop, 0);
    form1().hide();
}

}  // namespace
