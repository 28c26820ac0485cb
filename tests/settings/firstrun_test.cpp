// A first run from an empty install folder: the company screen with its welcome text, the
// driver question, the setup screen without Undo and with its exit question, and the save
// that ends the first run.
#include "settingsfixture.h"

#include "core/form9.h"
#include "settings/firstrun.h"
#include "settings/form2.h"
#include "settings/form3.h"
#include "settings/settingscreate.h"
#include "settings/setupdisplay.h"
#include "support/form23.h"

namespace {

class FirstRun : public SettingsTest {
protected:
    void SetUp() override
    {
        SettingsTest::SetUp();
        install.configure("[ports]\nCOM3=" + com3.name() + "\n");
        // The start-up's part: the file of a first start, FIRST RUN read as 0. The program's
        // probe file comes with the install.
        createsettingsfile();
        probefile();
        g().firstrun = 0;
        g().commandline = "startup";
        Form2& f = form2();
        f.changingtype = 0;
        for (int i = 1; i <= 3; ++i) f.SPorts[i].settext("");
        for (QWidget* w : {(QWidget*)&f, (QWidget*)&form3(), (QWidget*)&form23(), (QWidget*)&form1()}) w->hide();
    }
    void TearDown() override
    {
        for (QWidget* w : {(QWidget*)&form2(), (QWidget*)&form3(), (QWidget*)&form23(), (QWidget*)&form1()}) w->hide();
        SettingsTest::TearDown();
    }

    Pty com3;
};

TEST_F(FirstRun, FromAnEmptyInstallToASavedSetup)
{
    Form2& f = form2();
    Form3& company = form3();
    startfirstrun();
    EXPECT_FALSE(company.isHidden());
    EXPECT_FALSE(company.Label6.isHidden());
    EXPECT_EQ(company.height(), twips(Form3::tallheight));
    EXPECT_EQ(company.Company.value(), "N/A");
    EXPECT_TRUE(f.UndoLabel[0].isHidden());
    EXPECT_FALSE(f.Undo[0].isEnabled());
    EXPECT_EQ(g().callerof[3], 2);
    EXPECT_EQ(f.SPorts[3].listcount(), 1) << "the port lists are filled";

    company.Company.settext("Acme Motors");
    company.User.settext("Robert");
    dialogs::queueanswer(vbNo);
    emit company.OKLabel.clicked();
    EXPECT_TRUE(company.isHidden());
    EXPECT_EQ(company.height(), twips(Form3::normalheight));
    ASSERT_EQ(dialogs::transcript().size(), 1u);
    const dialogs::Entry question = dialogs::transcript()[0];
    EXPECT_EQ(question.title, "Run Driver Installation?");
    EXPECT_EQ(question.text, "Would You Like To Run Driver Installation Before Proceeding To The Initial Setup Screen?");
    EXPECT_EQ(question.flags & 7, vbYesNo);
    EXPECT_FALSE(f.isHidden());
    EXPECT_TRUE(form23().isHidden());

    // Undo does nothing yet, and Cancel asks before it lets the program go.
    g().savetype = 2;
    emit f.UndoLabel[0].clicked();
    EXPECT_EQ(g().savetype, 2);
    g().savetype = 0;
    dialogs::queueanswer(vbNo);
    emit f.Cancel[0].clicked();
    EXPECT_FALSE(f.isHidden());

    // The CS 1504 on COM3, typed in lower case; then Update.
    emit f.STypeL[3].clicked();
    f.SPorts[3].setEditText("com3");
    emit f.UpdateLabel[0].clicked();

    EXPECT_EQ(titles(), (Rows{"Run Driver Installation?", "Confirm Exit"}));
    EXPECT_TRUE(f.isHidden());
    EXPECT_FALSE(form1().isHidden());
    EXPECT_EQ(g().firstrun, 1);
    EXPECT_FALSE(f.UndoLabel[0].isHidden());
    EXPECT_TRUE(f.Undo[0].isEnabled());
    EXPECT_EQ(ini(),
              "[9725]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\n[1234]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\n"
              "[1504]\r\nUSED=1\r\nPORT=3#\r\nAUTO=0\r\n[SAVE]\r\nTYPE=0\r\nIP=0.0.0.0#\r\nTNO=999#\r\n"
              "[FITTER]\r\nTYPE=0\r\n[COMPANY]\r\nNAME=Acme Motors#\r\nUSER=Robert#\r\nTEL=N/A#\r\nHOEMAIL=N/A#\r\n"
              "[MISC]\r\nCHKROGUE=1\r\n[FIRST]\r\nRUN=1\r\n");
    EXPECT_TRUE(form9().Timer1.isActive());
}

// The setup screen of a first run shows the settings just written, not the state an earlier
// use of the screen (or its construction) left: Local lit, the server's controls hidden,
// every scanner row unused. Local is then already chosen and Server is one click away.
TEST_F(FirstRun, TheSetupScreenShowsTheNewSettings)
{
    Form2& f = form2();
    light(f.FileDown[1], false);
    light(f.FileDown[2], false);
    for (QWidget* w : {(QWidget*)&f.ServerIP, (QWidget*)&f.TarnTNO, (QWidget*)&f.Label1, (QWidget*)&f.ScanLabel[2]})
        w->show();
    light(f.SType[2], true);
    startfirstrun();

    EXPECT_TRUE(islit(f.FileDown[1]));
    EXPECT_FALSE(islit(f.FileDown[2]));
    EXPECT_TRUE(islit(f.FitterInfo[1]));
    EXPECT_FALSE(islit(f.FitterInfo[2]));
    for (QWidget* w : {(QWidget*)&f.ServerIP, (QWidget*)&f.TarnTNO, (QWidget*)&f.Label1, (QWidget*)&f.Label2,
                       (QWidget*)&f.FileDownLabel[3], (QWidget*)&f.FitterInfoLabel[3]})
        EXPECT_TRUE(w->isHidden()) << w->objectName().toStdString();
    for (int i = 1; i <= 3; ++i) {
        EXPECT_FALSE(islit(f.SType[i])) << i;
        EXPECT_TRUE(f.ScanLabel[i].isHidden()) << i;
        EXPECT_TRUE(f.SPorts[i].isHidden()) << i;
        EXPECT_EQ(f.TimeUpdateLabel[i].caption(), "Time Adj : Off") << i;
    }
    EXPECT_EQ(g().savetype, 0);
    emit f.FileDownLabel[1].clicked();
    EXPECT_EQ(g().savetype, 0);
    EXPECT_TRUE(islit(f.FileDown[1]));
    EXPECT_EQ(f.changingtype, 0);
}

TEST_F(FirstRun, YesToTheDriversOpensTheDriverScreenWhichLeadsBackToSetup)
{
    startfirstrun();
    dialogs::queueanswer(vbYes);
    emit form3().OK.clicked();
    EXPECT_EQ(g().callerof[23], 1);
    EXPECT_FALSE(form23().isHidden());
    EXPECT_TRUE(form2().isHidden());
    emit form23().Label4.clicked();
    EXPECT_TRUE(form23().isHidden());
    EXPECT_FALSE(form2().isHidden());
}

TEST_F(FirstRun, TheCompanyScreenOpenedForAnythingElseAsksNothing)
{
    g().callerof[3] = 5;
    form3().updatedata();
    EXPECT_EQ(dialogs::transcript().size(), 0u);
    EXPECT_TRUE(form2().isHidden());
}

}  // namespace
