// The settings screens as a user sees them: each is filled as its routines fill it, drawn
// offscreen, and written to <build>/screens/<name>.png (docs/screens/ keeps a copy). A
// drawing must have the screen's size and more than a blank face.
#include "settingsfixture.h"

#include "platform/icmp.h"
#include "settings/firstrun.h"
#include "settings/form14.h"
#include "settings/form2.h"
#include "settings/form3.h"
#include "settings/form4.h"
#include "settings/form5.h"
#include "settings/settingscreate.h"
#include "settings/settingsload.h"
#include "settings/setupports.h"
#include "settings/setuptypes.h"
#include "support/screenshot.h"

namespace {

class SettingsScreens : public SettingsTest {
protected:
    void SetUp() override
    {
        SettingsTest::SetUp();
        install.configure("[ports]\nCOM3=" + com3.name() + "\nCOM5=" + com5.name() + "\n");
        TempInstall::writefile(local("ENGLST.TXT"),
                               "VEXAL engineer list\r\n000003,000003,Ann Lee\r\n000005,000005,Bob Smith\r\n"
                               " 6,6,Lead Blank\r\n000012,000012,Cy Young\r\n");
    }

    Pty com3, com5;
};

TEST_F(SettingsScreens, SetupScreenAfterALoad)
{
    // The OPL 972x on COM3 on automatic, the CS 1504 on a port that is not there; Batch
    // Update to a share that works; a PC Copy of the engineer list.
    install.addshare("\\\\127.0.0.1\\tagstore");
    probefile();
    TempInstall::writefile(install.host("\\\\127.0.0.1\\tagstore\\ENGLST.TXT"), "1,1,Ann\r\n");
    writeini("[9725]\r\nUSED=1\r\nPORT=3#\r\nAUTO=1\r\nAUTOTIME=2\r\n[1234]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\n"
             "[1504]\r\nUSED=1\r\nPORT=9#\r\nAUTO=0\r\nAUTOTIME=1\r\n[SAVE]\r\nTYPE=2\r\nIP=127.0.0.1#\r\nTNO=7#\r\n"
             "[FITTER]\r\nTYPE=2\r\n[COMPANY]\r\nNAME=Acme Motors#\r\nUSER=Robert#\r\nTEL=01234 567#\r\n"
             "[MISC]\r\nCHKROGUE=1\r\n[FIRST]\r\nRUN=1\r\n");
    g().commandline = "startup";
    settingsfromfile();
    ASSERT_EQ(boxes(), Rows{});
    Form2& f = form2();
    f.setWindowTitle("Setup");
    EXPECT_GT(drawscreen(f, "Form2"), 8);
}

TEST_F(SettingsScreens, SetupScreenOnAFirstRunWithAServerThatDoesNotAnswer)
{
    // A first run: Undo hidden; the OPL 972x chosen on COM3, then Server, guessed from the
    // PC's own address where nothing answers.
    createsettingsfile();
    probefile();
    g().commandline = "startup";
    settingsfromfile();   // stops at the company name of a new file; the screen is as loaded
    dialogs::cleartranscript();
    startfirstrun();
    form3().hide();
    Form2& f = form2();
    f.changingtype = 0;
    f.SPorts[1].settext("COM3");
    showandhide(1, 0);
    f.ServerIP.settext("");
    f.Winsock1.setaddress("127.0.0.33");
    g().storestate = 3;
    icmp::inject::noreply(true);
    setsavetype(2);
    icmp::inject::reset();
    f.Winsock1.setaddress("");
    f.setWindowTitle("Setup");
    EXPECT_EQ(f.ServerIP.value(), "127.0.0.???");
    EXPECT_GT(drawscreen(f, "Form2-firstrun"), 8);
}

TEST_F(SettingsScreens, CompanyScreenOnAFirstStart)
{
    createsettingsfile();
    Form3& f = form3();
    f.loadsettings();
    f.setheight(Form3::tallheight);
    f.Label6.show();
    EXPECT_GT(drawscreen(f, "Form3"), 4);
    f.Label6.hide();
    f.setheight(Form3::normalheight);
}

TEST_F(SettingsScreens, EngineerListAndDetails)
{
    form4().setuplist();
    EXPECT_GT(drawscreen(form4(), "Form4"), 4);
    form4().changeengineer(1);
    EXPECT_GT(drawscreen(form5(), "Form5"), 4);
}

TEST_F(SettingsScreens, SelectNewScannerIdInBothLayouts)
{
    Form14& f = form14();
    f.setuplist();
    EXPECT_GT(drawscreen(f, "Form14"), 4);
    files::removefile("c:\\tarnbc\\ENGLST.TXT");
    f.setuplist();
    EXPECT_GT(drawscreen(f, "Form14-noentries"), 4);
}

}  // namespace
