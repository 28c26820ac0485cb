// The setup screen's own checks: the terminal number box, the port boxes and their
// frames, the port lists, showing and hiding a scanner row; and the company screen.
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
    }
    Pty com3, com5;
};

TEST_F(SetupScreen, ChecktnoColoursTheTerminalFrame)
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
        checktno();
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
    for (QWidget* w : {(QWidget*)&f.SPorts[2], (QWidget*)&f.ScanLabel[2], (QWidget*)&f.TestResult[2],
                       (QWidget*)&f.LAuto[2], (QWidget*)&f.TimeUpdateLabel[2]})
        EXPECT_TRUE(w->isHidden()) << w->objectName().toStdString();
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

class CompanyScreen : public SettingsTest {};

TEST_F(CompanyScreen, LoadsettingsShowsNaForValuesWithoutTheirMark)
{
    createsettingsfile();
    Form3& f = form3();
    f.HOEmail.settext("old@example.com");
    f.loadsettings();
    EXPECT_EQ(f.Company.value(), "N/A");
    EXPECT_EQ(f.User.value(), "N/A");
    EXPECT_EQ(f.Telephone.value(), "N/A");
    EXPECT_EQ(f.HOEmail.value(), "N/A");   // missing: the path has no "#" either
    EXPECT_TRUE(dialogs::transcript().empty());

    writeini("[COMPANY]\r\nNAME=Acme Motors#\r\nUSER=Robert#\r\nTEL=N/A\r\nHOEMAIL=ho@acme.example#\r\n");
    f.loadsettings();
    EXPECT_EQ(f.Company.value(), "Acme Motors");
    EXPECT_EQ(f.User.value(), "Robert");
    // "N/A" lands over "Robert#" in the buffer, whose "#" is still there after the
    // terminator; the box shows the text up to the terminator.
    EXPECT_EQ(f.Telephone.value(), "N/A");
    EXPECT_EQ(f.HOEmail.value(), "ho@acme.example");
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
