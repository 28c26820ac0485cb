// Update, Cancel and Undo on the setup screen, and the arming of the timers afterwards: the
// questions of the save in their order, each Yes keeping the file as it was; a setup known
// to be bad saved when every answer is No; the Email correction of the engineer source.
#include "settingsfixture.h"

#include "core/form6.h"
#include "core/form9.h"
#include "core/imagelists.h"
#include "platform/icmp.h"
#include "settings/form2.h"
#include "settings/form3.h"
#include "settings/settingscreate.h"
#include "settings/setupdisplay.h"
#include "settings/setupleave.h"
#include "settings/setupsave.h"
#include "settings/setuptimers.h"

namespace {

class SetupSave : public SettingsTest {
protected:
    void SetUp() override
    {
        SettingsTest::SetUp();
        install.configure("[ports]\nCOM3=" + com3.name() + "\n");
        g().commandline = "startup";
        g().firstrun = 1;
        createsettingsfile();
        Form2& f = form2();
        f.changingtype = 0;
        for (int i = 1; i <= 3; ++i) {
            g().scannerused[i] = 0;
            f.SPorts[i].settext("");
        }
        Form9& m = form9();
        for (QTimer* t : {&m.Timer1, &m.Timer2, &m.Timer3}) t->stop();
        form1().hide();
        f.show();
    }
    void TearDown() override
    {
        form2().hide();
        form1().hide();
        SettingsTest::TearDown();
    }

    // A setup with something wrong at every question: the OPL 972x on a port that is not
    // there, Batch Update with no probe file for the write test, terminal 999 and the
    // engineer list on a store that failed.
    void badsetup()
    {
        Form2& f = form2();
        g().scannerused[1] = 1;
        f.SPorts[1].settext("COM9");
        g().scannerport[1] = 9;
        g().savetype = 2;
        g().fittertype = 1;
        showsavetype();
        showfittertype();
        f.ServerIP.settext("127.0.0.1");
        f.TarnTNO.settext("999");
    }

    Pty com3;
};

const Rows badquestions = {"Scanner Port Problem", "Data Location Problem", "Tarn Terminal Number Problem",
                           "Engineer Data Problem"};

TEST_F(SetupSave, EveryNoSavesASetupKnownToBeBad)
{
    badsetup();
    for (int i = 0; i < 4; ++i) dialogs::queueanswer(vbNo);
    updatedata();
    ASSERT_EQ(titles(), badquestions);
    for (const auto& e : dialogs::transcript()) EXPECT_EQ(e.flags, vbYesNo + vbExclamation) << e.title;
    EXPECT_EQ(dialogs::transcript()[2].text,
              "The Tarn terminal number should only be set to 999 in special circumstances! Would you like to "
              "cancel the save so that you can fix the problem?");

    const std::string file = ini();
    for (const char* key : {"[9725]\r\nUSED=1\r\nPORT=9#\r\nAUTO=0\r\n", "[SAVE]\r\nTYPE=2\r\nIP=127.0.0.1#\r\nTNO=999#\r\n",
                            "[FITTER]\r\nTYPE=1\r\n", "[FIRST]\r\nRUN=1\r\n"})
        EXPECT_NE(file.find(key), std::string::npos) << key;
    EXPECT_TRUE(form2().isHidden());
    EXPECT_TRUE(form9().mnuTransfer.isEnabled());
    EXPECT_TRUE(form9().Timer1.isActive());
    EXPECT_EQ(g().pressedop, 0);
}

TEST_F(SetupSave, EachYesCancelsTheSaveWhereItStands)
{
    const std::string before = ini();
    for (size_t yes = 0; yes < badquestions.size(); ++yes) {
        SCOPED_TRACE(badquestions[yes]);
        badsetup();
        form2().show();
        form2().ServerIP.clearFocus();
        form2().TarnTNO.clearFocus();
        dialogs::cleartranscript();
        for (size_t i = 0; i < yes; ++i) dialogs::queueanswer(vbNo);
        dialogs::queueanswer(vbYes);
        updatedata();
        EXPECT_EQ(titles(), Rows(badquestions.begin(), badquestions.begin() + yes + 1));
        EXPECT_EQ(ini(), before);
        EXPECT_FALSE(form2().isHidden());
        if (yes == 1) {
            EXPECT_EQ(form2().focusWidget(), &form2().ServerIP);
        } else if (yes == 2) {
            EXPECT_EQ(form2().focusWidget(), &form2().TarnTNO);
        }
    }
}

TEST_F(SetupSave, NoScannerAndAnEmptyTerminalNumberAskTheirOwnQuestions)
{
    probefile();
    Form2& f = form2();
    g().savetype = 1;
    g().fittertype = 0;
    g().serverip = "127.0.0.1";
    f.ServerIP.settext("127.0.0.1");
    showsavetype();
    icmp::inject::noreply(true);   // the store fails; Direct holds data on the PC
    for (const char* tno : {"", "000"}) {
        dialogs::cleartranscript();
        f.TarnTNO.settext(tno);
        for (int i = 0; i < 4; ++i) dialogs::queueanswer(vbNo);
        updatedata();
        ASSERT_EQ(boxes().size(), 3u) << tno;
        EXPECT_EQ(boxes()[0],
                  "No Scanners Selected: There are no active scanners selected! Would you like to cancel the save so "
                  "that you can fix the problem?");
        EXPECT_EQ(boxes()[2],
                  "Tarn Terminal Number Problem: There appears to be a problem with the Tarn terminal number used "
                  "remote file saving! Would you like to cancel the save so that you can fix the problem?");
        EXPECT_NE(ini().find("[SAVE]\r\nTYPE=1\r\nIP=127.0.0.1#\r\nTNO=" + std::string(tno) + "#\r\n"), std::string::npos);
        f.show();
    }
    icmp::inject::reset();
}

TEST_F(SetupSave, EmailWithAServerEngineerListIsCorrectedToLocal)
{
    probefile();
    Form2& f = form2();
    g().scannerused[1] = 1;
    f.SPorts[1].settext("COM3");
    g().savetype = 3;
    g().fittertype = 2;
    showsavetype();
    showfittertype();
    f.ServerIP.settext("ho@acme.example");
    form9().mnuTransfer.setEnabled(true);
    updatedata();
    EXPECT_EQ(boxes(), Rows{"Fitter Store Location Invalid: For emailed data setup the fitter information MUST be set "
                            "to local. This will now be corrected."});
    EXPECT_EQ(dialogs::transcript()[0].flags, vbExclamation);
    EXPECT_EQ(g().fittertype, 0);
    EXPECT_TRUE(islit(f.FitterInfo[1]));
    const std::string file = ini();
    EXPECT_NE(file.find("[FITTER]\r\nTYPE=0\r\n"), std::string::npos);
    EXPECT_NE(file.find("[SAVE]\r\nTYPE=3\r\n"), std::string::npos);
    EXPECT_NE(file.find("HOEMAIL=ho@acme.example#"), std::string::npos);
    EXPECT_FALSE(form9().mnuTransfer.isEnabled());
    EXPECT_TRUE(f.isHidden());
}

TEST_F(SetupSave, SetuptimersArmsAutomaticDownloadAndTheButtonsForScannersUsedByHand)
{
    Globals& s = g();
    Form9& m = form9();
    Form1& main = form1();
    form2().UndoLabel[0].hide();
    form2().Undo[0].setpicture(GreyIcons(), 2);
    form6().Image1[4].setpicture(Balls(), 3);
    s.scannerused[1] = 1;   // the OPL 972x by hand, the CS 1504 on automatic
    s.scannerused[3] = 1;
    s.scannerauto[3] = 1;
    s.runmode = 2;
    s.pressedop = 1;
    m.Timer1.start(5000);
    m.Timer3.start(1000);
    s.callerof[2] = 9;
    setuptimers();
    EXPECT_FALSE(form2().UndoLabel[0].isHidden());
    EXPECT_EQ(form2().Undo[0].picturelist(), ColorIcons().name());
    EXPECT_EQ(s.runmode, 0);
    EXPECT_EQ(s.pressedop, 0);
    EXPECT_EQ(s.automaticactive, 1);
    EXPECT_TRUE(m.Timer2.isActive());
    EXPECT_EQ(m.Timer2.interval(), 1000);
    EXPECT_EQ(form6().Image1[4].pictureindex(), 1);
    EXPECT_TRUE(m.Timer3.isActive()) << "the OPL 972x is used by hand";
    EXPECT_EQ(m.Timer1.interval(), 5000) << "a running Timer1 is left alone";
    EXPECT_TRUE(main.Transfer.isEnabled());
    EXPECT_EQ(main.Read.picturelist(), ColorIcons().name());
    EXPECT_TRUE(main.isHidden()) << "opened from the tray";

    // Only scanners on automatic: no buttons, and the OPL watch stops.
    s.scannerused[1] = 0;
    m.Timer1.stop();
    s.callerof[2] = 1;
    setuptimers();
    EXPECT_FALSE(main.Transfer.isEnabled());
    EXPECT_FALSE(main.DeleteLabel.isEnabled());
    EXPECT_EQ(main.Delete.picturelist(), GreyIcons().name());
    EXPECT_FALSE(m.Timer3.isActive());
    EXPECT_TRUE(m.Timer1.isActive());
    EXPECT_EQ(m.Timer1.interval(), 1000);
    EXPECT_FALSE(main.isHidden()) << "opened from the main screen";

    main.hide();
    s.firstrun = 0;
    s.callerof[2] = 9;
    setuptimers();
    EXPECT_EQ(s.firstrun, 1);
    EXPECT_FALSE(main.isHidden()) << "the end of a first run";
}

TEST_F(SetupSave, CancelAndUndoTakeTheFileBack)
{
    writeini("[9725]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\n[1234]\r\nUSED=0\r\nPORT=0#\r\nAUTO=0\r\n"
             "[1504]\r\nUSED=1\r\nPORT=3#\r\nAUTO=0\r\nAUTOTIME=1\r\n[SAVE]\r\nTYPE=0\r\nIP=0.0.0.0#\r\nTNO=999#\r\n"
             "[FITTER]\r\nTYPE=0\r\n[COMPANY]\r\nNAME=Acme#\r\nUSER=Bob#\r\nTEL=1#\r\n"
             "[MISC]\r\nCHKROGUE=1#\r\n[FIRST]\r\nRUN=1\r\n");
    probefile();
    Globals& s = g();
    Form2& f = form2();
    s.savetype = 2;
    s.scannerused[3] = 0;
    f.changingtype = 1;
    undosetup();
    EXPECT_EQ(s.savetype, 0);
    EXPECT_EQ(s.scannerused[3], 1);
    EXPECT_EQ(f.changingtype, 0);
    EXPECT_FALSE(f.isHidden());

    s.savetype = 2;
    s.pressedop = 1;
    f.changingtype = 1;
    cancelsetup();
    EXPECT_EQ(s.savetype, 0);
    EXPECT_EQ(s.storestate, 0);
    EXPECT_EQ(s.portstatus[0], 0);
    EXPECT_EQ(f.changingtype, 0);
    EXPECT_EQ(s.pressedop, 0);
    EXPECT_TRUE(f.isHidden());
    EXPECT_EQ(boxes(), Rows{});

    // During the first run Undo does nothing.
    s.firstrun = 0;
    s.savetype = 2;
    undosetup();
    EXPECT_EQ(s.savetype, 2);
}

TEST_F(SetupSave, CancelDuringTheFirstRunAsksBeforeLeavingTheProgram)
{
    Form2& f = form2();
    g().firstrun = 0;
    int exits = 0;
    auto c = QObject::connect(&f, &Form2::exitprogram, [&] { ++exits; });
    dialogs::queueanswer(vbNo);
    f.close();   // the window's close button runs the same flow
    EXPECT_FALSE(f.isHidden());
    EXPECT_EQ(exits, 0);
    dialogs::queueanswer(vbYes);
    emit f.CancelLabel[0].clicked();
    EXPECT_EQ(exits, 1);
    QObject::disconnect(c);
    ASSERT_EQ(dialogs::transcript().size(), 2u);
    for (const auto& e : dialogs::transcript()) {
        EXPECT_EQ(e.title, "Confirm Exit");
        EXPECT_EQ(e.text, "The program cannot be run until the initial setup has been completed and saved! Are you "
                          "sure you want to exit now?");
        EXPECT_EQ(e.flags & 7, vbYesNo);
    }
}

}  // namespace
