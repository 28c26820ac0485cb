// The automatic download, one Timer2 tick at a time, against emulated scanners that are
// docked, lifted and docked again: what is taken when, the marks that keep a docked scanner
// from being taken twice, the status screen and icon of a download. The lock question is
// tested with the real program (automatic_process_test).
#include "support/testdirs.h"
#include <QLabel>
#include <csignal>

#include "core/form16.h"
#include "core/form9.h"
#include "core/screens.h"
#include "downloadfixture.h"
#include "pipeline/autodownload.h"
#include "scanner/form7.h"
#include "support/asuser.h"

class AutomaticDownload : public DownloadTest {
protected:
    void SetUp() override
    {
        DownloadTest::SetUp();
        QDir().mkpath(QString::fromStdString(install.root() + "/icons"));
        for (const char* name : {"store.ico", "vexalgrey.ico"})
            QFile::copy(QString(VEXAL_SOURCE_DIR) + "/resources/icons/" + name,
                        QString::fromStdString(install.root() + "/icons/" + name));
        form9().seticon("icons\\vexalgrey.ico");
        g().datecheck = Format(platform::clock::now(), "DDMMYYYY");
        g().savetype = 0;
        g().automaticactive = 1;
    }
    // Docks a scanner of `type` on COM6 with AUTO on.
    Emulator& autodock(int type, const std::string& recordtext, bool keepstate = false)
    {
        Emulator& e = dock(type, {"--id", "123", "--battery", "85", "--baud", "115200", "--records", records(recordtext)},
                           6, "", keepstate);
        g().scannerauto[type] = 1;
        return e;
    }
    // Ticks of Timer2; how many downloads began in them.
    int ticks(int n)
    {
        int downloads = 0;
        ListBox::setobserver([&downloads](const ListBox& list, const std::string& text) {
            if (&list == &form1().List2 && text == "Reading Data From Scanner 123") ++downloads;
        });
        for (int i = 0; i < n; ++i) timer2tick();
        ListBox::setobserver(nullptr);
        return downloads;
    }
};

TEST_F(AutomaticDownload, OplTakenOnFirstSightAfterReturnAndWithLinesButNotWhenEmpty)
{
    Emulator& opl = autodock(1, "");
    form1().hide();

    // The first scanner after the start is taken even when empty.
    EXPECT_EQ(ticks(1), 1);
    EXPECT_TRUE(hasline("Aborted due to no records!"));
    EXPECT_EQ(g().lastscannerid, "123");
    EXPECT_EQ(g().autoscannerwait, 10);
    EXPECT_EQ(g().runmode, 0);
    EXPECT_TRUE(form16().isVisible()) << "the status screen stands in for the hidden main screen";
    EXPECT_EQ(form9().iconpath(), "icons\\store.ico");

    // Ten ticks of pause, then an empty scanner is only counted (and its battery read).
    EXPECT_EQ(ticks(10), 0);
    EXPECT_EQ(g().autoscannerwait, 0);
    EXPECT_EQ(ticks(2), 0);
    EXPECT_TRUE(form16().isHidden()) << "each tick puts the download screens away";
    EXPECT_EQ(g().oplerror, 0);

    // Lifted from the cradle (the port stays, nobody answers): an error, no message.
    opl.signal(SIGSTOP);
    EXPECT_EQ(ticks(1), 0);
    EXPECT_EQ(g().oplerror, 1);
    EXPECT_TRUE(dialogs::transcript().empty());
    // Back in the cradle: taken again although empty, which checks its ID and clock.
    opl.signal(SIGCONT);
    EXPECT_EQ(ticks(1), 1);
    EXPECT_EQ(ticks(11), 0);
}

TEST_F(AutomaticDownload, OplWithLinesIsSavedClearedAndPausedThenAutomaticOffOrABusyProgramStopsIt)
{
    autodock(1, oplrecords());
    g().lastscannerid = "123";
    EXPECT_EQ(ticks(1), 1);
    EXPECT_EQ(get("c:\\tarnbc\\BAR001.INI"), barbytes("123", "00220070309", goodlines()));
    EXPECT_EQ(held(6), 0);
    EXPECT_TRUE(hasline("Data Cleared From The Scanner"));

    // Nothing is polled while automatic is off, an operation runs or a tool screen is open.
    freshstart();
    autodock(1, oplrecords());
    for (auto [automatic, runmode, pressedop] : {std::tuple{0, 0, 0}, {1, 2, 0}, {1, 0, 1}}) {
        g().automaticactive = automatic;
        g().runmode = runmode;
        g().pressedop = pressedop;
        EXPECT_EQ(ticks(3), 0);
        EXPECT_EQ(held(6), 3);
    }
}

TEST_F(AutomaticDownload, OpnTakenOncePerDocking)
{
    form1().show();
    autodock(2, csprecords());
    EXPECT_EQ(ticks(1), 1);
    EXPECT_EQ(g().OPN2001waiting, 1);
    EXPECT_EQ(held(6), 0);
    EXPECT_EQ(get("c:\\tarnbc\\BAR001.INI"), barbytes("123", "00220070309", goodlines()));
    EXPECT_TRUE(hasline("Please Remove Scanner"));
    EXPECT_TRUE(form16().isHidden()) << "the main screen is open: its Status shows the download";
    EXPECT_EQ(form9().iconpath(), "icons\\store.ico");

    // Still docked and answering: left alone.
    EXPECT_EQ(ticks(3), 0);
    EXPECT_EQ(g().OPN2001waiting, 1);
    // Not answering for a tick (its port kept), then back: taken again, empty now.
    scanners[6]->signal(SIGSTOP);
    EXPECT_EQ(ticks(1), 0);
    EXPECT_EQ(g().OPN2001waiting, 0);
    scanners[6]->signal(SIGCONT);
    EXPECT_EQ(ticks(1), 1);
    // Gone (its port with it), then back: taken again.
    scanners[6]->stop();
    EXPECT_EQ(ticks(1), 0);
    EXPECT_EQ(g().OPN2001waiting, 0);
    autodock(2, "", true);
    EXPECT_EQ(ticks(1), 1);
    form1().hide();
}

TEST_F(AutomaticDownload, Cs1504PolledEveryFourthTickTurnedOffAndTakenAgainOnlyAfterWaking)
{
    Emulator& cs = autodock(3, csprecords());
    EXPECT_EQ(ticks(1), 1);
    EXPECT_EQ(g().symwaiting, 1);
    EXPECT_EQ(held(6), 0);
    EXPECT_EQ(g().symbolpollstep, 0) << "the download's tick ends before the step";

    // Turned off: the next poll finds no answer and drops the mark; the three ticks after it
    // do not poll.
    EXPECT_EQ(ticks(1), 0);
    EXPECT_EQ(g().symwaiting, 0);
    EXPECT_EQ(g().symbolpollstep, 1);
    cs.signal(SIGUSR1);   // woken by a key press while the poll sleeps
    EXPECT_EQ(ticks(3), 0);
    EXPECT_EQ(g().symbolpollstep, 0);
    EXPECT_EQ(ticks(1), 1);
    EXPECT_EQ(g().symwaiting, 1);
}

// The setup screen's port scan for a CS 1504 sends its interrogate to the OPL 972x on the
// first port before it finds the CS 1504 behind it; the automatic poll that follows still
// reads the OPL 972x.
TEST_F(AutomaticDownload, OplPolledRightAfterAPortScanWalkedOverIt)
{
    dock(1, {"--id", "123", "--battery", "85", "--baud", "115200", "--records", records(oplrecords())}, 1);
    g().scannerauto[1] = 1;
    dock(3, {"--id", "124", "--baud", "115200"}, 6);
    g().scannerport[1] = 1;
    Form7 scan;
    g().scannertype = 3;
    g().runmode = 2;
    scan.startscan();
    for (int i = 0; i < 4; ++i) scan.Timer2_Timer();
    EXPECT_EQ(scan.Label1->text(), "Found!");
    EXPECT_EQ(g().scannerport[3], 6);
    EXPECT_EQ(g().runmode, 0);
    EXPECT_EQ(ticks(1), 1) << "the OPL 972x answered its poll";
    EXPECT_EQ(held(1), 0);
}

// A workshop PC runs the program as an ordinary user: the same downloads as nobody, with
// scanner ports, install folder and store the user owns.
TEST(AutomaticDownloadAsUser, SameDownloadsAsAnOrdinaryUser)
{
    if (innerrun()) GTEST_SKIP() << "already the inner run";
    if (!canrunasuser()) GTEST_SKIP() << "cannot run this test program as an ordinary user (setpriv, folder access)";
    UserRun r = rerunasuser("AutomaticDownload.*");
    EXPECT_EQ(r.exitcode, 0) << r.output;
    EXPECT_NE(r.output.find("[  PASSED  ]"), std::string::npos) << r.output;
    EXPECT_EQ(r.output.find("SKIPPED"), std::string::npos) << r.output;
}
