// The scanner rows' tests on the setup screen against an emulated CS 1504: a row's test, the
// test of all rows, and the port scan that fills the row's port and tests it.
#include "settingsfixture.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include "maintenance/form10.h"
#include "maintenance/screens.h"
#include "scanner/form7.h"
#include "settings/form2.h"
#include "settings/setupdisplay.h"
#include "support/emulator.h"

namespace {

class SetupTests : public SettingsTest {
protected:
    void SetUp() override
    {
        SettingsTest::SetUp();
        platform::clock::reset();   // the emulated scanner keeps the PC's own time
        emu = std::make_unique<Emulator>("cs1504", std::vector<std::string>{"--id", "5"});
        ASSERT_TRUE(emu->ready());
        install.configure(emu->portsection(6));
        TempInstall::writefile(local("ENGLST.TXT"), "000005,000005,Fred Bloggs\r\n");
        g().timemargin = 5;
        g().scannerautotime[3] = 0;
        form10().Timer1.stop();
        form10().Text2.settext("0");
        Form2& f = form2();
        for (int i = 1; i <= 3; ++i) {
            g().scannerused[i] = 0;
            f.SPorts[i].settext("");
            f.TestResult[i].setcaption("old");
        }
    }
    void TearDown() override
    {
        form7().Timer1->stop();
        form7().Timer2->stop();
        form7().hide();
        form10().Timer1.stop();
        SettingsTest::TearDown();
    }

    std::unique_ptr<Emulator> emu;
};

TEST_F(SetupTests, TestAllReportsEveryRow)
{
    Form2& f = form2();
    g().scannerused[2] = 1;   // used, but no port chosen
    g().scannerused[3] = 1;
    f.SPorts[3].settext("COM6");
    emit f.Label3.clicked();
    EXPECT_EQ(f.TestResult[1].caption(), "N/A");
    EXPECT_EQ(f.ResultBox[1].fillcolor(), colorbox(boxneutral));
    EXPECT_EQ(f.TestResult[2].caption(), "INVALID PORT");
    EXPECT_EQ(f.ResultBox[2].fillcolor(), colorbox(boxfault));
    EXPECT_EQ(f.TestResult[3].caption(), "005 " + g().scannertime + " " + g().scannerdate);
    // The port answered; the six-character ID of a CS 1504 is judged too long, so the
    // result is a fault.
    EXPECT_EQ(f.PortBox[3].fillcolor(), colorbox(boxgood));
    EXPECT_EQ(f.ResultBox[3].fillcolor(), colorbox(boxfault));
    EXPECT_EQ(g().portlasttested[3], 6);
    EXPECT_EQ(g().scannertested[3], 0);
    EXPECT_TRUE(form10().isHidden());
    EXPECT_FALSE(form10().Timer1.isActive());

    // An unused row's own test only says so.
    f.TestResult[1].setcaption("old");
    emit f.TestLabel[1].clicked();
    EXPECT_EQ(f.TestResult[1].caption(), "N/A");
}

TEST_F(SetupTests, AScanFindsThePortFillsTheRowAndTestsIt)
{
    Form2& f = form2();
    g().scannerused[3] = 1;
    emit f.ScanLabel[3].clicked();
    EXPECT_EQ(g().pressedop, 1);
    EXPECT_EQ(g().scannertype, 3);
    ASSERT_TRUE(form7().isVisible());
    QElapsedTimer t;
    t.start();
    while (form7().isVisible() && t.elapsed() < 15000) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
        QThread::msleep(10);
    }
    ASSERT_FALSE(form7().isVisible());
    EXPECT_EQ(f.SPorts[3].text(), "COM6");
    EXPECT_EQ(g().scannerport[3], 6);
    EXPECT_EQ(f.TestResult[3].caption(), "005 " + g().scannertime + " " + g().scannerdate);
    EXPECT_EQ(f.PortBox[3].fillcolor(), colorbox(boxgood));
    EXPECT_EQ(g().portlasttested[3], 6);
}

TEST_F(SetupTests, ATestResultOpensTheScannerInformationWhichComesBackHere)
{
    Form2& f = form2();
    g().scannerused[3] = 1;
    f.SPorts[3].settext("COM6");
    f.show();
    emit f.TestResult[3].clicked();
    Form10& info = form10();
    EXPECT_TRUE(f.isHidden());
    EXPECT_TRUE(info.isVisible());
    EXPECT_EQ(g().callerof[10], 2);
    EXPECT_EQ(info.STypeL.caption(), "Symbol CS1504");
    EXPECT_EQ(info.IDLabel[1].caption(), "005") << "the scanner was read";
    emit info.Label4[1].clicked();
    EXPECT_TRUE(info.isHidden());
    EXPECT_TRUE(f.isVisible());
    f.hide();
}

}  // namespace
