// The port scan screen against emulated scanners: ticks are driven by hand, one try each.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTimer>

#include "core/globals.h"
#include "platform/opl.h"
#include "platform/serial.h"
#include "scanner/form7.h"
#include "support/emulator.h"
#include "support/tempinstall.h"

namespace {

class PortScan : public ::testing::Test {
protected:
    void SetUp() override
    {
        resetglobals();
        screen.setup.setsports = [this](int type, const std::string& text) {
            calls.push_back("SPorts(" + std::to_string(type) + ")=" + text);
        };
        screen.setup.clearbport = [this] { calls.push_back("BPort=0"); };
        screen.setup.runtests = [this](int type) { calls.push_back("runtests(" + std::to_string(type) + ")"); };
    }
    // Starts the scan for a type, as the setup screen does.
    void scanfor(int type)
    {
        g().scannertype = type;
        g().runmode = 2;
        screen.startscan();
    }
    // One Timer2 tick; the port under test afterwards.
    int tick()
    {
        screen.Timer2_Timer();
        return screen.Text1->text().toInt();
    }

    Form7 screen;
    std::vector<std::string> calls;
    QTemporaryDir inst0;
};

TEST_F(PortScan, FoundOnTheRightPortSkippingMissingPortsAndTheOtherModel)
{
    Emulator cs1504("cs1504"), opn("opn");
    ASSERT_TRUE(cs1504.ready() && opn.ready());
    TempInstall inst("[ports]\nCOM2=" + cs1504.link() + "\nCOM4=/nonexistent/tty\nCOM5=" + opn.link() + "\n");
    scanfor(2);
    EXPECT_EQ(screen.windowTitle(), "Scanning For Scanner Port");
    EXPECT_EQ(screen.ballimage(1), 1) << "COM2 exists";
    EXPECT_EQ(screen.ballimage(3), 2) << "COM4 does not";
    EXPECT_TRUE(screen.Timer1->isActive());
    EXPECT_EQ(screen.Timer2->interval(), 1000);

    EXPECT_EQ(tick(), 2) << "the first tick only steps to the first port that exists";
    EXPECT_EQ(screen.Timer2->interval(), 2500);
    EXPECT_EQ(screen.Text3->text(), "0");
    EXPECT_EQ(tick(), 5) << "a CS 1504 is no OPN 2001; COM3 and COM4 are skipped";
    EXPECT_EQ(screen.ballimage(1), 5);
    EXPECT_NE(screen.Text2->text(), "1000");
    EXPECT_EQ(tick(), 5);
    EXPECT_EQ(screen.Text2->text(), "1000");
    EXPECT_EQ(screen.ballimage(4), 3);
    EXPECT_EQ(screen.Label1->text(), "Found!");
    EXPECT_EQ(screen.label1colour(), 11);
    EXPECT_FALSE(screen.Timer1->isActive());
    EXPECT_TRUE(serial::portexists(5)) << "the session was restored";

    tick();
    EXPECT_EQ(calls, (std::vector<std::string>{"SPorts(2)=COM5", "runtests(2)"}));
    EXPECT_EQ(g().scannerport[2], 5);
    EXPECT_EQ(g().runmode, 0);
    EXPECT_FALSE(screen.isVisible());
    EXPECT_FALSE(screen.Timer2->isActive());
}

TEST_F(PortScan, PortSixteenIsTheLastThenFailed)
{
    Emulator opn("opn");
    ASSERT_TRUE(opn.ready());
    TempInstall inst("[ports]\nCOM16=" + opn.link() + "\n");
    g().scannerport[3] = 7;
    scanfor(3);
    EXPECT_EQ(tick(), 16);
    EXPECT_EQ(tick(), 16) << "an OPN 2001 while scanning for a CS 1504";
    EXPECT_EQ(screen.ballimage(15), 5);
    EXPECT_EQ(screen.Label1->text(), "Failed!");
    EXPECT_EQ(screen.label1colour(), 2);
    EXPECT_FALSE(screen.Timer1->isActive());
    EXPECT_EQ(screen.found, 0);

    tick();
    EXPECT_EQ(calls, (std::vector<std::string>{"BPort=0", "SPorts(3)="}));
    EXPECT_EQ(g().scannerport[3], 0);
    EXPECT_EQ(g().runmode, 0);
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(PortScan, OplFoundByCountAndIdAndNotByACspScanner)
{
    Emulator opl("opl"), opn("opn");
    ASSERT_TRUE(opl.ready() && opn.ready());
    TempInstall inst("[ports]\nCOM1=" + opn.link() + "\nCOM3=" + opl.link() + "\n");
    scanfor(1);
    EXPECT_EQ(tick(), 1);
    EXPECT_EQ(tick(), 3) << "no OPL 972x answers on the OPN 2001's port";
    EXPECT_EQ(screen.error, 1);
    tick();
    EXPECT_EQ(screen.error, 0);
    EXPECT_EQ(screen.Text2->text(), "1000");
    EXPECT_EQ(screen.Label1->text(), "Found!");
    EXPECT_EQ(g().oplportstate, 0);
    EXPECT_FALSE(screen.opl) << "the control was released";
    EXPECT_TRUE(serial::portexists(3));
}

// A CSP interrogate that reaches an OPL 972x is a part frame to it, dropped after 100 ms of
// quiet: the scan goes on to the CS 1504 behind it, and the OPL 972x still answers at once.
TEST_F(PortScan, Cs1504FoundBehindAnOplThatStillAnswersAfterwards)
{
    Emulator opl("opl", {"--id", "77", "--records", Emulator::writefile(inst0.path().toStdString() + "/lines.txt", "0112345678,251224,0830\n")});
    Emulator cs1504("cs1504");
    ASSERT_TRUE(opl.ready() && cs1504.ready());
    TempInstall inst("[ports]\nCOM1=" + opl.link() + "\nCOM2=" + cs1504.link() + "\n");
    scanfor(3);
    EXPECT_EQ(tick(), 1);
    EXPECT_EQ(tick(), 2) << "no CS 1504 on the OPL 972x's port";
    EXPECT_EQ(screen.ballimage(0), 5);
    tick();
    EXPECT_EQ(screen.Label1->text(), "Found!");
    tick();
    EXPECT_EQ(g().scannerport[3], 2);

    // What the automatic poll asks an OPL 972x first, right after the scan.
    opl::Control control;
    QString error;
    QObject::connect(&control, &opl::Control::Error, [&](const QString& text) { error = text; });
    control.setport(1);
    control.openport();
    EXPECT_EQ(control.readlinecount(), 1);
    EXPECT_EQ(control.readid(), 77);
    control.closeport();
    EXPECT_TRUE(error.isEmpty()) << error.toStdString();
}

TEST_F(PortScan, CancelDuringAnOplExchange)
{
    Emulator opl("opl");
    ASSERT_TRUE(opl.ready());
    TempInstall inst("[ports]\nCOM3=" + opl.link() + "\n");
    scanfor(1);
    // The click is waiting among the events that the try lets run.
    QTimer::singleShot(0, &screen, [this] { screen.Cancel_Click(); });
    screen.runportscan(3);
    EXPECT_FALSE(screen.opl);
    EXPECT_NE(screen.Text2->text(), "1000");
    EXPECT_EQ(g().oplportstate, 0);
    EXPECT_EQ(g().runmode, 0);
    EXPECT_FALSE(screen.isVisible());
    EXPECT_TRUE(serial::portexists(3)) << "the port was closed";
}

TEST_F(PortScan, OplPortFoundOpenIsLeftToItsOwner)
{
    Emulator opl("opl");
    ASSERT_TRUE(opl.ready());
    TempInstall inst("[ports]\nCOM3=" + opl.link() + "\n");
    g().scannertype = 1;
    g().oplportstate = 1;  // another routine has its port open
    screen.runportscan(3);
    EXPECT_EQ(screen.Text2->text(), "1000");
    EXPECT_EQ(g().oplportstate, 2);
}

TEST_F(PortScan, BallBlinksOnThePortUnderTest)
{
    TempInstall inst;
    g().scannertype = 2;
    screen.Text1->setText("0");
    screen.Timer1_Timer();
    EXPECT_EQ(screen.Text3->text(), "0") << "no port under test yet";
    screen.Text1->setText("6");
    screen.Text3->setText("0");
    screen.Timer1_Timer();
    EXPECT_EQ(screen.ballimage(5), 4);
    EXPECT_EQ(screen.Text3->text(), "1");
    screen.Timer1_Timer();
    EXPECT_EQ(screen.ballimage(5), 1);
    EXPECT_EQ(screen.Text3->text(), "0");
    screen.Text3->setText("2");
    screen.Timer1_Timer();
    EXPECT_EQ(screen.ballimage(5), 1) << "no blinking while a try runs";

    // The timer drives the same blink by itself.
    screen.Text3->setText("0");
    screen.Timer1->start(200);
    QElapsedTimer t;
    t.start();
    while (screen.ballimage(5) != 4 && t.elapsed() < 2000) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ(screen.ballimage(5), 4);
    screen.Timer1->stop();
}

TEST_F(PortScan, CancelStopsAndFreesThePort)
{
    Emulator opn("opn");
    ASSERT_TRUE(opn.ready());
    TempInstall inst("[ports]\nCOM2=" + opn.link() + "\n");
    scanfor(3);
    tick();
    screen.Label4_Click();
    EXPECT_FALSE(screen.Timer1->isActive());
    EXPECT_FALSE(screen.Timer2->isActive());
    EXPECT_EQ(g().runmode, 0);
    EXPECT_FALSE(screen.isVisible());
    EXPECT_TRUE(serial::portexists(2));
    EXPECT_TRUE(calls.empty()) << "a cancel leaves the setup screen's port as it was";
}

}  // namespace
