// checkscanners and the port listing, with ports on emulated scanners.
#include <gtest/gtest.h>

#include <QDir>

#include "core/globals.h"
#include "core/colorbox.h"
#include "core/imagelists.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "scanner/checkscanners.h"
#include "settings/form11.h"
#include "settings/form17.h"
#include "settings/form2.h"
#include "scanner/scannertable.h"
#include "support/emulator.h"
#include "support/tempinstall.h"

namespace {

// What checkscanners showed, read off the screens.
struct Shown {
    static std::string port(int i) { return form17().ScanPort[i].caption(); }
    static std::string status(int i) { return form17().ScanStatus[i].caption(); }
    static QColor caption(int i) { return form17().ScanPort[i].forecolor(); }
    static QColor scanbox(int i) { return form2().ScanBox[i].fillcolor(); }
    static QColor portbox(int i) { return form2().PortBox[i].fillcolor(); }
    static bool check() { return form1().Check.isEnabled() && form1().CheckSubLabel.isHidden(); }
    static int light() { return form17().Status[1].pictureindex(); }
    static QColor label3() { return form17().Label3.forecolor(); }
};

class CheckScanners : public ::testing::Test {
protected:
    void SetUp() override { resetglobals(); }
};

TEST_F(CheckScanners, NoScannerUsed)
{
    TempInstall inst;
    checkscanners();
    EXPECT_EQ(g().portstatus[0], 1);
    EXPECT_FALSE(Shown::check()) << "the Check button goes grey";
    EXPECT_EQ(form1().Check.picturelist(), GreyIcons().name());
    EXPECT_EQ(Shown::light(), 1);
    EXPECT_EQ(Shown::label3(), colorbox(2));
    for (int i = 1; i <= 3; ++i) {
        EXPECT_EQ(Shown::port(i), "N/A");
        EXPECT_EQ(Shown::status(i), "Scanner not in use");
        EXPECT_EQ(Shown::caption(i), colorbox(6));
        EXPECT_EQ(Shown::scanbox(i), colorbox(2));
        EXPECT_EQ(Shown::portbox(i), colorbox(2));
        EXPECT_EQ(g().portstatus[i], 0);
    }
    EXPECT_EQ(form11().Label1.caption(), "Checking Scanner Ports");
    EXPECT_TRUE(form11().isHidden()) << "the busy box is gone at the end";
}

TEST_F(CheckScanners, UsedScannersWithPresentAndMissingPorts)
{
    Emulator emu("cs1504");
    ASSERT_TRUE(emu.ready());
    TempInstall inst(emu.portsection(4));
    form11().Label1.setcaption("");
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
    EXPECT_EQ(Shown::port(1), "COM0");
    EXPECT_EQ(Shown::status(1), "Scanner COM Port Does Not Exist");
    EXPECT_EQ(Shown::caption(1), colorbox(2));
    EXPECT_EQ(Shown::portbox(1), colorbox(2));
    EXPECT_EQ(Shown::port(3), "COM4");
    EXPECT_EQ(Shown::status(3), "Scanner COM Port OK");
    EXPECT_EQ(Shown::caption(3), colorbox(10));
    EXPECT_EQ(Shown::scanbox(3), colorbox(6));
    EXPECT_EQ(Shown::portbox(3), colorbox(1));
    EXPECT_TRUE(Shown::check());
    EXPECT_EQ(form1().Check.picturelist(), ColorIcons().name());
    EXPECT_EQ(Shown::light(), 1) << "a used scanner has a missing port";
    EXPECT_EQ(form11().Label1.caption(), "") << "no busy box at a start from the startup shortcut";

    g().scannerused[1] = 0;
    checkscanners();
    EXPECT_EQ(g().portstatus[1], 0);
    EXPECT_EQ(Shown::light(), 2);
    EXPECT_EQ(Shown::label3(), colorbox(4));
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
