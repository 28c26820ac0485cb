// checkscanners and the port listing, with ports on emulated scanners.
#include <gtest/gtest.h>

#include <QDir>

#include "core/globals.h"
#include "platform/clock.h"
#include "scanner/checkscanners.h"
#include "scanner/scannertable.h"
#include "support/emulator.h"
#include "support/tempinstall.h"

namespace {

// What checkscanners showed.
struct Shown {
    std::vector<std::string> calls;
    ScannerRow rows[4];
    int light = 0, label3 = 0;
    bool check = false;
};

class CheckScanners : public ::testing::Test {
protected:
    void SetUp() override
    {
        resetglobals();
        auto& d = checkscannersdisplay();
        d.showbusy = [this](const std::string& text, int image) { shown.calls.push_back("busy " + text + " " + std::to_string(image)); };
        d.hidebusy = [this] { shown.calls.push_back("hide"); };
        d.showrow = [this](int i, const ScannerRow& r) { shown.rows[i] = r; };
        d.checkbutton = [this](bool on) { shown.check = on; };
        d.statuslight = [this](int image, int colour) {
            shown.light = image;
            shown.label3 = colour;
        };
    }
    void TearDown() override { checkscannersdisplay() = {}; }

    Shown shown;
};

TEST_F(CheckScanners, NoScannerUsed)
{
    TempInstall inst;
    checkscanners();
    EXPECT_EQ(g().portstatus[0], 1);
    EXPECT_FALSE(shown.check) << "the Check button goes grey";
    EXPECT_EQ(shown.light, 1);
    EXPECT_EQ(shown.label3, 2);
    for (int i = 1; i <= 3; ++i) {
        EXPECT_EQ(shown.rows[i].port, "N/A");
        EXPECT_EQ(shown.rows[i].status, "Scanner not in use");
        EXPECT_EQ(shown.rows[i].captioncolour, 6);
        EXPECT_EQ(shown.rows[i].scanbox, 2);
        EXPECT_EQ(shown.rows[i].portbox, 2);
        EXPECT_EQ(g().portstatus[i], 0);
    }
    ASSERT_FALSE(shown.calls.empty());
    EXPECT_EQ(shown.calls.front(), "busy Checking Scanner Ports 2");
    EXPECT_EQ(shown.calls.back(), "hide");
}

TEST_F(CheckScanners, UsedScannersWithPresentAndMissingPorts)
{
    Emulator emu("cs1504");
    ASSERT_TRUE(emu.ready());
    TempInstall inst(emu.portsection(4));
    g().scannerused[1] = 1;
    g().scannerport[1] = 0;  // COM0 does not exist
    g().scannerused[3] = 1;
    g().scannerport[3] = 4;
    g().commandline = "startup";
    checkscanners();
    EXPECT_EQ(g().portstatus[0], 0);
    EXPECT_EQ(g().portstatus[1], 1);
    EXPECT_EQ(g().portstatus[2], 0);
    EXPECT_EQ(g().portstatus[3], 0);
    EXPECT_EQ(shown.rows[1].port, "COM0");
    EXPECT_EQ(shown.rows[1].status, "Scanner COM Port Does Not Exist");
    EXPECT_EQ(shown.rows[1].captioncolour, 2);
    EXPECT_EQ(shown.rows[1].portbox, 2);
    EXPECT_EQ(shown.rows[3].port, "COM4");
    EXPECT_EQ(shown.rows[3].status, "Scanner COM Port OK");
    EXPECT_EQ(shown.rows[3].captioncolour, 10);
    EXPECT_EQ(shown.rows[3].scanbox, 6);
    EXPECT_EQ(shown.rows[3].portbox, 1);
    EXPECT_TRUE(shown.check);
    EXPECT_EQ(shown.light, 1) << "a used scanner has a missing port";
    EXPECT_EQ(std::count(shown.calls.begin(), shown.calls.end(), "busy Checking Scanner Ports 2"), 0)
        << "no busy box at a start from the startup shortcut";

    g().scannerused[1] = 0;
    checkscanners();
    EXPECT_EQ(g().portstatus[1], 0);
    EXPECT_EQ(shown.light, 2);
    EXPECT_EQ(shown.label3, 4);
}

TEST_F(CheckScanners, FaultIsLoggedAndReported)
{
    TempInstall inst;
    QDir().mkpath(QString::fromStdString(inst.root() + "/LOGS"));
    g().homedir = "C:\\Program Files\\VexalBCv4\\";
    platform::clock::set(QDateTime(QDate(2026, 3, 7), QTime(9, 0)));
    g().scannerused[2] = 1;
    checkscannersdisplay().showrow = [](int, const ScannerRow&) { raisefault(fault::subscript); };
    checkscanners();
    platform::clock::reset();
    EXPECT_EQ(g().portstatus[0], 2);
    EXPECT_EQ(shown.calls.back(), "hide");
    EXPECT_NE(TempInstall::readfile(inst.root() + "/LOGS/07_LOG.TXT")
                  .find("checkscanners: Unexpected error. Error: 9 Subscript out of range"),
              std::string::npos);
}

TEST(ScannerTable, ModelsAndPortList)
{
    EXPECT_STREQ(scannermodel(1).section, "9725");
    EXPECT_STREQ(scannermodel(2).versiontest, "NBR");
    EXPECT_STREQ(scannermodel(3).versiontest, "RBB");
    EXPECT_STREQ(scannermodel(3).name, "Symbol 1504");
    EXPECT_THROW(scannermodel(0), Fault);

    Emulator a("opn"), b("opl");
    ASSERT_TRUE(a.ready() && b.ready());
    TempInstall inst("[ports]\nCOM16=" + a.link() + "\nCOM2=" + b.link() + "\nCOM3=/nonexistent/tty\n");
    EXPECT_EQ(listcoms(), (std::vector<std::string>{"COM2", "COM16"}));
}

}  // namespace
