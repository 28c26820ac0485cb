// The setup screen's own checks: the terminal number and address boxes as they lose the
// focus, the port boxes and their frames, the port lists, showing and hiding a scanner row,
// the automatic download and clock adjustment switches; and the company screen.
#include "settingsfixture.h"

#include "core/imagelists.h"
#include "settings/form2.h"
#include "settings/form3.h"
#include "settings/settingscreate.h"
#include "settings/setupboxes.h"
#include "settings/setupdisplay.h"
#include "settings/setupports.h"

namespace {

class SetupScreen : public SettingsTest {
protected:
    // COM3 and COM5 exist; COM7 is mapped to a device that is gone.
    void SetUp() override
    {
        SettingsTest::SetUp();
        install.configure("[ports]\nCOM3=" + com3.name() + "\nCOM5=" + com5.name() + "\nCOM7=/dev/vexal-none\n");
        for (int i = 1; i <= 3; ++i) form2().SPorts[i].settext("");
        form2().changingtype = 0;
    }
    Pty com3, com5;
};

TEST_F(SetupScreen, TheTerminalNumberIsCheckedWhenItLosesTheFocus)
{
    struct Row { const char* typed; const char* after; int colour; } rows[] = {
        {"7", "007", boxgood},      {"007", "007", boxgood},   {"998", "998", boxgood},  {"999", "999", boxneutral},
        {"000", "000", boxfault},   {"", "", boxfault},        {"1000", "1000", boxfault}, {"0", "0", boxfault},
        {"-5", "-5", boxfault},     {"7.5", "7.5", boxfault},  {"abc", "abc", boxfault}, {"12a", "12a", boxfault},
    };
    Form2& f = form2();
    for (const auto& r : rows) {
        f.TarnTNO.settext(r.typed);
        f.Shape1[1].setfillcolor(Qt::magenta);
        emit f.TarnTNO.lostfocus();
        EXPECT_EQ(f.TarnTNO.value(), r.after) << r.typed;
        EXPECT_EQ(f.Shape1[1].fillcolor(), colorbox(r.colour)) << r.typed;
    }
}

TEST_F(SetupScreen, CheckcomportAcceptsPortsThatExistAndRewritesThem)
{
    struct Row { const char* typed; const char* after; int port; } rows[] = {
        {"com3", "COM3", 3}, {"3", "COM3", 3}, {"COM5", "COM5", 5}, {"Com5", "COM5", 5},
    };
    Form2& f = form2();
    for (const auto& r : rows) {
        g().scannerport[2] = 0;
        f.portfault[2] = 1;
        f.TestResult[2].setcaption("Found");
        f.SPorts[2].settext(r.typed);
        checkcomport(2);
        EXPECT_EQ(f.SPorts[2].text(), r.after) << r.typed;
        EXPECT_EQ(g().scannerport[2], r.port) << r.typed;
        EXPECT_EQ(f.portfault[2], 0) << r.typed;
        EXPECT_EQ(f.ScanBox[2].fillcolor(), colorbox(boxidle)) << r.typed;
        EXPECT_EQ(f.PortBox[2].fillcolor(), colorbox(boxneutral)) << r.typed;
        EXPECT_EQ(f.TestResult[2].caption(), "N/A") << r.typed;
    }
}

TEST_F(SetupScreen, CheckcomportRefusesBadPortsAndPortsThatAreAbsentOrHeld)
{
    com5.hold();
    Form2& f = form2();
    for (const char* typed : {"", "17", "COM17", "COM0", "0", "COM", "LPT1", "COM1", "COM7", "COM5", "5", "COMX", "3.5"}) {
        g().scannerport[1] = 9;
        f.portfault[1] = 0;
        f.SPorts[1].settext(typed);
        checkcomport(1);
        EXPECT_EQ(f.portfault[1], 1) << typed;
        EXPECT_EQ(f.ScanBox[1].fillcolor(), colorbox(boxfault)) << typed;
        EXPECT_EQ(f.PortBox[1].fillcolor(), colorbox(boxfault)) << typed;
        EXPECT_EQ(g().scannerport[1], 9) << typed;
    }
}

TEST_F(SetupScreen, ThePortLastTestedKeepsItsTestResult)
{
    Form2& f = form2();
    g().portlasttested[3] = 3;
    g().scannertested[3] = 1;
    f.TestResult[3].setcaption("ID 000123");
    f.SPorts[3].settext("COM3");
    checkcomport(3);
    EXPECT_EQ(f.PortBox[3].fillcolor(), colorbox(boxgood));
    EXPECT_EQ(f.ResultBox[3].fillcolor(), colorbox(boxgood));
    EXPECT_EQ(f.TestResult[3].caption(), "ID 000123");

    g().scannertested[3] = 0;
    checkcomport(3);
    EXPECT_EQ(f.ResultBox[3].fillcolor(), colorbox(boxfault));

    f.SPorts[3].settext("COM5");   // another port: the last test no longer counts
    checkcomport(3);
    EXPECT_EQ(g().portlasttested[3], 0);
    EXPECT_EQ(f.ResultBox[3].fillcolor(), colorbox(boxneutral));
    EXPECT_EQ(f.TestResult[3].caption(), "N/A");
}

TEST_F(SetupScreen, GetcomsListsThePortsThatExistAndKeepsTheTexts)
{
    Form2& f = form2();
    f.SPorts[1].settext("com3");
    f.SPorts[2].settext("COM9");
    getcoms();
    for (int i = 1; i <= 3; ++i) {
        ASSERT_EQ(f.SPorts[i].listcount(), 2) << i;
        EXPECT_EQ(f.SPorts[i].list(0), "COM3");
        EXPECT_EQ(f.SPorts[i].list(1), "COM5");
    }
    EXPECT_EQ(f.SPorts[1].text(), "COM3");   // the text is checked again as it returns
    EXPECT_EQ(f.SPorts[2].text(), "COM9");
    EXPECT_EQ(f.portfault[2], 1);
    EXPECT_EQ(f.SPorts[3].text(), "");

    com5.hold();
    getcoms();
    EXPECT_EQ(f.SPorts[1].listcount(), 1);
}

TEST_F(SetupScreen, ShowandhideFlipsARowOnAClickAndFollowsTheValueOtherwise)
{
    Form2& f = form2();
    f.SPorts[2].settext("COM3");
    g().scannerused[2] = 0;
    g().scannerauto[2] = 1;
    showandhide(2, 0);
    EXPECT_EQ(g().scannerused[2], 1);
    EXPECT_FALSE(f.SPorts[2].isHidden());
    EXPECT_FALSE(f.TimeUpdateLabel[2].isHidden());
    EXPECT_TRUE(islit(f.SType[2]));
    EXPECT_EQ(g().scannerauto[2], 0);
    EXPECT_EQ(f.LAuto[2].caption(), "No");
    EXPECT_EQ(g().scannerautotime[2], 1);
    EXPECT_EQ(f.TimeUpdateLabel[2].caption(), "Time Adj : Adv");
    EXPECT_EQ(g().scannerport[2], 3);   // the port was checked

    showandhide(2, 0);
    EXPECT_EQ(g().scannerused[2], 0);
    expecthidden({&f.SPorts[2], &f.ScanLabel[2], &f.TestResult[2], &f.LAuto[2], &f.TimeUpdateLabel[2]});
    EXPECT_FALSE(islit(f.SType[2]));
    EXPECT_EQ(g().scannerautotime[2], 0);
    EXPECT_EQ(f.TimeUpdateLabel[2].caption(), "Time Adj : Off");

    g().scannerused[2] = 2;   // neither used nor unused: the row is hidden, the value stays
    showandhide(2, 1);
    EXPECT_EQ(g().scannerused[2], 2);
    EXPECT_TRUE(f.SPorts[2].isHidden());
}

TEST_F(SetupScreen, ABoxTakesTextUpToItsFirstNul)
{
    Form2& f = form2();
    f.ServerIP.settext(std::string("N/A\0rt", 6));
    EXPECT_EQ(f.ServerIP.value(), "N/A");
    f.SPorts[1].settext(std::string("COM3\0#", 6));
    EXPECT_EQ(f.SPorts[1].text(), "COM3");
}

TEST_F(SetupScreen, AutomaticDownloadFlipsAndTheClockAdjustmentGoesRound)
{
    Form2& f = form2();
    g().scannerauto[2] = 0;
    emit f.LAuto[2].clicked();
    EXPECT_EQ(g().scannerauto[2], 1);
    EXPECT_EQ(f.LAuto[2].caption(), "Yes");
    emit f.SAuto[2].clicked();
    EXPECT_EQ(g().scannerauto[2], 0);
    EXPECT_EQ(f.LAuto[2].caption(), "No");
    EXPECT_FALSE(islit(f.SAuto[2]));

    g().scannerautotime[2] = 0;
    const std::pair<int, const char*> round[] = {{1, "Time Adj : Adv"}, {2, "Time Adj : On"}, {0, "Time Adj : Off"}};
    for (const auto& [mode, caption] : round) {
        emit f.TimeUpdateLabel[2].clicked();
        EXPECT_EQ(g().scannerautotime[2], mode);
        EXPECT_EQ(f.TimeUpdateLabel[2].caption(), caption);
    }
    g().scannerautotime[2] = 7;   // a value the file may hold reads Off and goes on to Off
    emit f.TimeUpdateLabel[2].clicked();
    EXPECT_EQ(g().scannerautotime[2], 0);
}

TEST_F(SetupScreen, TheAddressBoxTakesAnEmailAddressOrAServer)
{
    Form2& f = form2();
    Form3& c = form3();
    g().savetype = 3;
    g().serverip = "10.1.1.5";
    c.HOEmail.settext("old@acme.example");
    f.ServerIP.settext("nobody");
    emit f.ServerIP.lostfocus();
    EXPECT_EQ(f.Shape1[7].fillcolor(), colorbox(boxfault));
    EXPECT_EQ(c.HOEmail.value(), "old@acme.example");
    f.ServerIP.settext("ho@acme.example");
    emit f.ServerIP.lostfocus();
    EXPECT_EQ(f.Shape1[7].fillcolor(), colorbox(boxgood));
    EXPECT_EQ(c.HOEmail.value(), "ho@acme.example");
    EXPECT_EQ(g().serverip, "10.1.1.5");

    // Direct: the text is the server; an address that is not one fails the store check
    // before any echo is sent.
    g().savetype = 1;
    g().commandline = "startup";
    f.ServerIP.settext("300.1.1.1");
    emit f.ServerIP.lostfocus();
    EXPECT_EQ(g().serverip, "300.1.1.1");
    EXPECT_EQ(g().storestate, 6);
    EXPECT_EQ(f.Shape1[7].fillcolor(), colorbox(boxfault));
}

class CompanyScreen : public SettingsTest {};

TEST_F(CompanyScreen, LoadsettingsShowsNaForValuesWithoutTheirMark)
{
    createsettingsfile();
    Form3& f = form3();
    f.HOEmail.settext("old@example.com");
    f.loadsettings();
    EXPECT_EQ(company(), (Rows{"N/A", "N/A", "N/A", "N/A"}));   // HOEMAIL missing: the path has no "#" either
    EXPECT_TRUE(dialogs::transcript().empty());

    writeini("[COMPANY]\r\nNAME=Acme Motors#\r\nUSER=Robert#\r\nTEL=N/A\r\nHOEMAIL=ho@acme.example#\r\n");
    f.loadsettings();
    // "N/A" lands over "Robert#" in the buffer, whose "#" is still there after the
    // terminator; the box shows the text up to the terminator.
    EXPECT_EQ(company(), (Rows{"Acme Motors", "Robert", "N/A", "ho@acme.example"}));
}

TEST_F(CompanyScreen, UpdatedataWritesTheFilledBoxesAndTheTelephoneAsHeadOfficeAddress)
{
    createsettingsfile();
    Form3& f = form3();
    bool ledon = false;
    auto c = QObject::connect(&f, &Form3::leadon, [&] { ledon = true; });
    f.setheight(Form3::tallheight);
    f.Label6.show();
    f.show();
    f.Company.settext("Acme Motors");
    f.User.settext("");
    f.Telephone.settext("01234");
    f.HOEmail.settext("ho@acme.example");
    f.updatedata();
    QObject::disconnect(c);
    EXPECT_EQ(ini(),
              "[9725]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\n[1234]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\n"
              "[1504]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\n[SAVE]\r\nTYPE=0\r\nIP=0.0.0.0#\r\nTNO=999#\r\n"
              "[FITTER]\r\nTYPE=0\r\n[COMPANY]\r\nNAME=Acme Motors#\r\nUSER=N/A\r\nTEL=01234#\r\nHOEMAIL=01234#\r\n"
              "[MISC]\r\nCHKROGUE=1\r\n[FIRST]\r\nRUN=0\r\n");
    EXPECT_TRUE(f.isHidden());
    EXPECT_TRUE(f.Label6.isHidden());
    EXPECT_EQ(f.height(), twips(Form3::normalheight));
    EXPECT_TRUE(ledon);

    f.HOEmail.settext("");
    f.Telephone.settext("");
    f.Company.settext("");
    f.User.settext("Bob");
    f.updatedata();
    EXPECT_NE(ini().find("NAME=Acme Motors#\r\nUSER=Bob#\r\nTEL=01234#\r\nHOEMAIL=01234#\r\n"), std::string::npos);
}

}  // namespace
