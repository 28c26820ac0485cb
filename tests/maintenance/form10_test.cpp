// The Check Scanner screen against emulated scanners of the three types: presence probe,
// reading and verdicts, the clock corrections (with a scanner that refuses the write), the
// ID repair through the select new scanner ID screen, the software update hand-over checks
// and the way back to the caller.
#include "core/colorbox.h"
#include "maintenance/form19.h"
#include "maintenance/scannertests.h"
#include "maintenancefixture.h"
#include "settings/form14.h"
#include "settings/form2.h"
#include "support/emulator.h"

#include <cstdio>

namespace {

class CheckScreen : public MaintenanceTest {
protected:
    // A scanner of `type` (1 opl, 2 opn, 3 cs1504) on COM6, with the emulator's options.
    void dock(int type, std::vector<std::string> args)
    {
        static const char* names[] = {"", "opl", "opn", "cs1504"};
        std::remove(state.c_str());
        args.insert(args.end(), {"--state", state});
        emu = std::make_unique<Emulator>(names[type], std::move(args));
        ASSERT_TRUE(emu->ready());
        install.configure(emu->portsection(6));
        g().scannertype = type;
        g().scannerused[type] = 1;
        g().scannerport[type] = 6;
        g().timemargin = 5;
    }
    // A line of the emulator's state file ("id=", "clockoffset=", "scratchpad=").
    std::string statevalue(const std::string& key)
    {
        const std::string text = "\n" + TempInstall::readfile(state);
        size_t at = text.find("\n" + key + "=");
        if (at == std::string::npos) return "";
        at += key.size() + 2;
        return text.substr(at, text.find('\n', at) - at);
    }
    bool verdictsshown() const { return !f.DateBox.isHidden() && !f.TimeLabel.isHidden() && !f.FitterLabel[1].isHidden(); }

    std::string state = install.root() + "/scanner.state";
    std::unique_ptr<Emulator> emu;
    Form10& f = form10();
};

TEST_F(CheckScreen, OplReadAndJudged)
{
    files::writeall("c:\\tarnbc\\ENGLST.TXT", "000005,000005,Fred Bloggs\r\n");
    dock(1, {"--id", "5", "--battery", "85"});
    f.setupscreen();
    EXPECT_EQ(f.STypeL.caption(), "Opticon OPL 972x");
    EXPECT_FALSE(verdictsshown());
    EXPECT_FALSE(f.UpdateTime.isEnabled());
    EXPECT_EQ(f.BatLabel[0].caption(), "Batt: 085%") << "the battery shows at once";
    EXPECT_FALSE(f.BatteryLevel.isHidden());
    EXPECT_EQ(f.UploadBox.fillcolor(), colorbox(15));

    f.firstcall();
    EXPECT_EQ(g().oplerror, 0);
    EXPECT_TRUE(verdictsshown());
    EXPECT_TRUE(f.UpdateTime.isEnabled() && f.IDUpdate.isEnabled() && f.UploadSW.isEnabled());
    EXPECT_EQ(f.UploadBox.fillcolor(), colorbox(0));
    EXPECT_EQ(g().scannerid, "5");
    EXPECT_EQ(f.IDLabel[1].caption(), "005");
    EXPECT_EQ(f.FitterLabel[1].caption(), "Fred Bloggs");
    EXPECT_EQ(g().datestatus, 0);
    EXPECT_EQ(g().timestatus, 0);
    EXPECT_EQ(g().idstatus, 0);
    EXPECT_EQ(f.DateBox.fillcolor(), colorbox(5));
    EXPECT_EQ(form2().PortBox[1].fillcolor(), colorbox(1));
    EXPECT_EQ(form2().ResultBox[1].fillcolor(), colorbox(1));
    EXPECT_EQ(g().scannertested[1], 1);
    EXPECT_EQ(g().portlasttested[1], 6);
    EXPECT_EQ(g().oplportstate, 0) << "the port is closed again";
    EXPECT_TRUE(f.Timer1.isActive());
    EXPECT_EQ(f.Timer1.interval(), 1000);
    EXPECT_TRUE(dialogs::transcript().empty());
}

TEST_F(CheckScreen, NoOplInTheCradleLeavesTheScreenBlank)
{
    dock(1, {"--no-answer"});
    f.setupscreen();
    f.firstcall();
    EXPECT_EQ(g().oplerror, 1);
    EXPECT_FALSE(verdictsshown());
    EXPECT_FALSE(f.Timer1.isActive()) << "nothing more happens";
    EXPECT_EQ(f.BatLabel[0].caption(), "Batt: ---%");
    EXPECT_TRUE(dialogs::transcript().empty());

    // A click on the battery caption probes twice when no scanner answers.
    emit f.BatLabel[1].clicked();
    EXPECT_EQ(g().oplerror, 1);
    EXPECT_FALSE(verdictsshown());
}

TEST_F(CheckScreen, OplThatRefusesTheClockWrite)
{
    dock(1, {"--id", "5", "--refuse-clock", "--clock-offset", "30"});
    f.setupscreen();
    f.firstcall();
    EXPECT_EQ(g().timestatus, 1);
    EXPECT_EQ(f.TimeBox.fillcolor(), colorbox(2));

    // By hand: the refusal's error event blanks the screen, the clock stays out.
    emit f.TimeUpdate.clicked();
    EXPECT_FALSE(f.updaterunning);
    EXPECT_EQ(g().timestatus, 1);
    EXPECT_FALSE(verdictsshown()) << "the error event ran setupscreen";
    EXPECT_NEAR(std::stod(statevalue("clockoffset")), 1800, 5);
    EXPECT_TRUE(rows(form1().List2).empty());
}

TEST_F(CheckScreen, OpnReadAndJudged)
{
    dock(2, {"--id", "123"});
    f.setupscreen();
    EXPECT_EQ(f.STypeL.caption(), "Opticon OPN 2001");
    EXPECT_FALSE(f.UploadSW.isEnabled());
    EXPECT_EQ(f.UploadBox.fillcolor(), colorbox(5));
    EXPECT_EQ(f.STypeB.fillcolor(), colorbox(2));
    f.firstcall();
    EXPECT_TRUE(verdictsshown());
    EXPECT_EQ(f.STypeB.fillcolor(), colorbox(0));
    EXPECT_EQ(g().datestatus, 0);
    EXPECT_EQ(g().timestatus, 0);
    // The six-character ID is too long on this screen.
    EXPECT_EQ(g().scannerid, "000123");
    EXPECT_EQ(g().idstatus, 2);
    EXPECT_EQ(f.IDLabel[1].caption(), "123");
    EXPECT_EQ(f.IDBox.fillcolor(), colorbox(2));
    EXPECT_EQ(f.FitterLabel[1].caption(), "N/A");
    EXPECT_EQ(form2().PortBox[2].fillcolor(), colorbox(1));
    EXPECT_EQ(form2().ResultBox[2].fillcolor(), colorbox(2));
    EXPECT_EQ(g().scannertested[2], 0);
    EXPECT_EQ(g().portlasttested[2], 6);
    EXPECT_EQ(form2().TestResult[2].caption(), "123 " + g().scannertime + " " + g().scannerdate);
    EXPECT_EQ(f.Timer1.interval(), 1000);
}

TEST_F(CheckScreen, OpnSmallDifferenceIsCorrected)
{
    dock(2, {"--id", "123", "--clock-offset", "3"});
    g().scannerautotime[2] = 2;
    f.setupscreen();
    f.firstcall();
    EXPECT_EQ(rows(form1().List2), std::vector<std::string>{"Scanner corrected for 3 minutes difference"});
    EXPECT_TRUE(logged("Scanner corrected for 3 minutes difference"));
    EXPECT_NEAR(std::stod(statevalue("clockoffset")), 0, 5) << "the scanner now keeps the PC's time";
    EXPECT_EQ(g().timestatus, 0);
    EXPECT_EQ(g().datestatus, 0);
    // The clock write ended the session, so the ID read that follows finds no scanner and
    // the ID stays blank; the outer judgement puts its time in front of the inner one's.
    EXPECT_EQ(g().scannerid, "      ");
    EXPECT_EQ(g().idstatus, 2);
    const std::string hhmm = g().scannertime, ddmmyy = g().scannerdate;
    EXPECT_EQ(form2().TestResult[2].caption(), "    " + hhmm + " " + hhmm + " " + ddmmyy);
}

// A refused write is judged again, and corrected again, until the stack runs out once; the
// outermost judgement then sets the time good while the scanner keeps its clock.
TEST_F(CheckScreen, AClockThatRefusesTheWriteIsCorrectedUntilTheStackRunsOut)
{
    struct Case { int type, autotime, offset, limit; } cases[] = {{1, 2, 3, 2}, {3, 1, -4, 4}};
    for (const auto& r : cases) {
        SCOPED_TRACE(r.type);
        form1().List2.clear();
        dialogs::cleartranscript();
        f.Timer1.stop();
        dock(r.type, {"--id", "5", "--refuse-clock", "--clock-offset", std::to_string(r.offset)});
        g().scannerautotime[r.type] = r.autotime;
        StackLevel::setlimit(r.limit);
        f.setupscreen();
        f.firstcall();
        const std::string line = "Scanner corrected for " + std::to_string(std::abs(r.offset)) + " minutes difference";
        EXPECT_EQ(rows(form1().List2), std::vector<std::string>(r.limit, line));
        const auto shown = boxes("Error In Function: testthedate");
        ASSERT_EQ(shown.size(), 1u);
        EXPECT_EQ(shown[0].text, "An error occurred test the date / time on the scanner! Please try again. Error: 28 "
                                 "Out of stack space");
        EXPECT_EQ(g().timestatus, 0);
        EXPECT_NEAR(std::stod(statevalue("clockoffset")), r.offset * 60, 5);
        if (r.type == 3) {
            EXPECT_EQ(f.Timer1.interval(), 10000);
        }
        emu.reset();
    }
}

TEST_F(CheckScreen, ClockChangeCorrectionOnlyWithAdv)
{
    // The PC on 1 April at the real time of day; the scanner an hour and a minute ahead.
    const QDateTime real = QDateTime::currentDateTime();
    if (real.time() > QTime(22, 50)) GTEST_SKIP() << "too near midnight";
    const QDate april(real.date().year(), 4, 1);
    const long long ahead = real.date().daysTo(april) * 1440 + 61;
    for (int autotime : {2, 1}) {
        SCOPED_TRACE(autotime);
        form1().List2.clear();
        dock(2, {"--id", "5", "--clock-offset", std::to_string(ahead)});
        platform::clock::set(QDateTime(april, real.time()));
        g().scannerautotime[2] = autotime;
        f.setupscreen();
        f.firstcall();
        if (autotime == 2) {
            EXPECT_EQ(g().timestatus, 1);
            EXPECT_TRUE(rows(form1().List2).empty());
        } else {
            EXPECT_EQ(rows(form1().List2),
                      std::vector<std::string>{"Scanner corrected for 61 minutes difference (DST Adj)"});
            EXPECT_TRUE(logged("Scanner corrected for 61 minutes difference (DST Adj)"));
            EXPECT_EQ(g().timestatus, 0) << "the judgement after the write stands";
            EXPECT_EQ(g().scannerdate, Format(platform::clock::now(), "DDMMYY"));
        }
        emu.reset();
        platform::clock::reset();
    }
}

TEST_F(CheckScreen, WrongDateBlocksTheCorrectionButNotTheManualUpdate)
{
    dock(2, {"--id", "5", "--clock-offset", std::to_string(-1440 + 3)});
    g().scannerautotime[2] = 2;
    f.setupscreen();
    f.firstcall();
    EXPECT_EQ(g().datestatus, 1);
    EXPECT_EQ(g().timestatus, 0);
    EXPECT_EQ(f.DateBox.fillcolor(), colorbox(2));
    EXPECT_TRUE(rows(form1().List2).empty());

    emit f.UpdateTime.clicked();
    EXPECT_EQ(g().datestatus, 0);
    EXPECT_EQ(g().timestatus, 0);
    EXPECT_EQ(f.DateBox.fillcolor(), colorbox(5));
    EXPECT_NEAR(std::stod(statevalue("clockoffset")), 0, 5);
    EXPECT_TRUE(rows(form1().List2).empty()) << "a repair by hand is not a correction";
}

TEST_F(CheckScreen, NewIdThroughTheSelectScreen)
{
    files::writeall("c:\\tarnbc\\ENGLST.TXT", "000042,000042,Jane Doe\r\n");
    dock(1, {"--id", "999"});
    f.setupscreen();
    f.show();
    f.firstcall();
    EXPECT_EQ(g().idstatus, 3);

    emit f.IDUpdate.clicked();
    EXPECT_EQ(g().callerof[14], 10);
    EXPECT_TRUE(f.isHidden());
    EXPECT_TRUE(form14().isVisible());
    EXPECT_EQ(form14().List1.list(0), "000042 Jane Doe");
    form14().FitterID.settext("42");
    form14().addfunc();
    EXPECT_TRUE(form14().isHidden());
    EXPECT_TRUE(f.isVisible()) << "back on this screen";
    EXPECT_EQ(statevalue("id"), "42");
    EXPECT_EQ(g().idstatus, 0);
    EXPECT_EQ(f.IDLabel[1].caption(), "042");
    EXPECT_EQ(f.FitterLabel[1].caption(), "Jane Doe");
    f.hide();
}

TEST_F(CheckScreen, NewIdOnACspScannerIsStillSixCharacters)
{
    dock(2, {"--id", "0"});
    f.firstcall();
    form14().FitterID.settext("7");
    g().callerof[14] = 10;
    f.updatescannerID();
    EXPECT_EQ(g().scannerid, "000007");
    EXPECT_EQ(g().idstatus, 2);
    EXPECT_EQ(f.IDLabel[1].caption(), "007");
}

TEST_F(CheckScreen, ARefusedIdStays)
{
    dock(1, {"--id", "5", "--refuse-id"});
    f.firstcall();
    form14().FitterID.settext("42");
    f.updatescannerID();
    EXPECT_EQ(statevalue("id"), "5");
    EXPECT_EQ(g().scannerid, "5");
    EXPECT_FALSE(verdictsshown()) << "the refusal's error event ran setupscreen";
}

TEST_F(CheckScreen, NoScannerLocksTheIdRepair)
{
    dock(1, {"--no-answer"});
    f.firstcall();
    ASSERT_EQ(g().oplerror, 1);
    f.show();
    emit f.UpdateID.clicked();
    EXPECT_TRUE(form14().isHidden());
    EXPECT_TRUE(f.isVisible());
    f.hide();
}

TEST_F(CheckScreen, UploadHandOverChecks)
{
    form19().tickinterval = 10;
    g().scannertype = 1;
    f.show();
    f.Timer1.start(1000);
    emit f.UploadSW.clicked();
    auto shown = boxes("No Scanner OS Available");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "There is no OS available to upload! Please contact Vexal for assistance!");
    EXPECT_EQ(shown[0].flags, vbCritical);
    EXPECT_TRUE(form19().isHidden());

    files::makefolder(g().homedir + "OS");
    files::writeall(g().homedir + "OS\\vexal.S32", "S0");
    dialogs::queueanswer(vbCancel);
    emit f.SWUpload.clicked();
    shown = boxes("Place Scanner In Craddle");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "Please insert the scanner to be updated to the craddle! NOTE: This WILL erase ALL "
                             "outstanding data on the scanner! Click CANCEL to abort!");
    EXPECT_EQ(shown[0].flags, vbCritical + vbOKCancel);
    EXPECT_TRUE(boxes("No Version File").empty());
    EXPECT_TRUE(f.isVisible());

    // The update screen takes over; with no version file and a No it is gone again at once,
    // and only the check's firstcall runs (the screen itself stays hidden).
    dialogs::queueanswer(vbOK);
    emit f.UploadSW.clicked();
    EXPECT_EQ(boxes("No Version File").size(), 1u);
    EXPECT_TRUE(form19().isHidden());
    EXPECT_TRUE(f.isHidden());
    EXPECT_FALSE(f.Timer1.isActive());
}

TEST_F(CheckScreen, CancelCloseReturnsToItsCaller)
{
    dock(3, {"--id", "5"});
    struct Row { int caller; int timestatus; QWidget* back; int colour; } rows[] = {
        {1, 0, &form1(), 13}, {2, 1, &form2(), 2}, {0, 0, &form1(), 13},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.caller);
        form1().hide();
        form2().hide();
        g().callerof[10] = r.caller;
        g().pressedop = 2;
        g().runmode = 1;
        g().timestatus = r.timestatus;
        g().datestatus = 2;
        g().idstatus = 2;
        f.show();
        f.Timer1.start(10000);
        emit f.Image2.clicked();
        EXPECT_TRUE(f.isHidden());
        EXPECT_FALSE(f.Timer1.isActive());
        EXPECT_TRUE(r.back->isVisible());
        EXPECT_EQ(g().pressedop, 0);
        EXPECT_EQ(g().runmode, 0);
        EXPECT_EQ(form1().Label3.forecolor(), colorbox(r.colour)) << "only a status of exactly 1 is red";
    }
    // Marked closing: the probe does nothing until firstcall clears the mark.
    g().oplerror = 7;
    f.startfunction();
    EXPECT_EQ(g().oplerror, 7);
    f.firstcall();
    EXPECT_EQ(g().oplerror, 0);
    form1().hide();
    form2().hide();
}

TEST_F(CheckScreen, TheSetupScreensTestReadsWithTheScreenHidden)
{
    dock(3, {"--id", "5"});
    f.Text2.settext("1");
    f.gettingscannerdata();
    EXPECT_TRUE(f.isHidden());
    EXPECT_EQ(f.Text2.value(), "0");
    EXPECT_FALSE(f.Timer1.isActive()) << "no timer for the setup screen's test";
    const std::string text = form2().TestResult[3].caption();
    EXPECT_EQ(text, "005 " + g().scannertime + " " + g().scannerdate);

    emu.reset();
    dock(2, {"--no-answer"});
    form2().TestResult[2].setcaption("N/A");
    f.Text2.settext("1");
    f.gettingscannerdata();
    EXPECT_EQ(form2().TestResult[2].caption(), "No Scanner");
    EXPECT_EQ(form2().ResultBox[2].fillcolor(), colorbox(2));
    EXPECT_EQ(f.Text2.value(), "1") << "the reading stopped at once";
}

}  // namespace
