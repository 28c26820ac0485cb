// The data location and engineer list switches of the setup screen: the sub-mode cycle,
// clicks on the side already chosen, the guard against re-entry, and the guess of the
// server from the PC's own address.
#include "settingsfixture.h"

#include <QTimer>

#include "platform/icmp.h"
#include "settings/form2.h"
#include "settings/form3.h"
#include "settings/setupdisplay.h"
#include "settings/setuptypes.h"

namespace {

class SetupTypes : public SettingsTest {
protected:
    void SetUp() override
    {
        SettingsTest::SetUp();
        icmp::inject::reset();
        Form2& f = form2();
        f.changingtype = 0;
        f.Winsock1.setaddress("");
        f.Shape1[7].setfillcolor(Qt::magenta);
        f.Shape1[10].setfillcolor(Qt::magenta);
    }
    void TearDown() override
    {
        icmp::inject::reset();
        form2().Winsock1.setaddress("");
        form2().hide();
        SettingsTest::TearDown();
    }

    // The screen in a server mode, as a load leaves it.
    static void servermode(int savetype, int fittertype)
    {
        g().savetype = savetype;
        g().fittertype = fittertype;
        showsavetype();
        showfittertype();
    }
    static std::string submode() { return form2().FileDownLabel[3].caption(); }
    static QColor submodecolour() { return form2().FileDownLabel[3].forecolor(); }
};

TEST_F(SetupTypes, TheSubModeCyclesThroughEmailOnlyWithTheOpl972xInUse)
{
    Form2& f = form2();
    g().serverip = "10.1.1.5";
    form3().HOEmail.settext("ho@acme.example");
    g().lastgoodip = "10.1.1.5";
    servermode(1, 1);

    g().scannerused[1] = 0;
    const char* without[] = {"Batch Update", "Direct", "Batch Update"};
    for (const char* expected : without) {
        setsavetype(3);
        EXPECT_EQ(submode(), expected);
        EXPECT_EQ(f.ServerIP.value(), "10.1.1.5");
        EXPECT_FALSE(f.TarnTNO.isHidden());
        EXPECT_EQ(f.changingtype, 0);
    }
    EXPECT_EQ(g().savetype, 2);
    EXPECT_EQ(submodecolour(), colorbox(14));

    g().scannerused[1] = 1;
    setsavetype(3);
    EXPECT_EQ(g().savetype, 3);
    EXPECT_EQ(submode(), "Email");
    EXPECT_EQ(submodecolour(), colorbox(10));
    EXPECT_EQ(f.Label2.caption(), "Email");
    EXPECT_EQ(f.ServerIP.value(), "ho@acme.example");
    EXPECT_TRUE(f.TarnTNO.isHidden());
    EXPECT_TRUE(f.Label1.isHidden());

    setsavetype(3);
    EXPECT_EQ(g().savetype, 1);
    EXPECT_EQ(submode(), "Direct");
    EXPECT_EQ(submodecolour(), colorbox(13));
    EXPECT_EQ(f.Label2.caption(), "Server");
    EXPECT_EQ(f.ServerIP.value(), "10.1.1.5");
    EXPECT_FALSE(f.TarnTNO.isHidden());

    // The cycle runs no check: the frames stay as they were.
    EXPECT_EQ(f.Shape1[7].fillcolor(), QColor(Qt::magenta));
    EXPECT_EQ(f.Shape1[10].fillcolor(), QColor(Qt::magenta));
    EXPECT_EQ(g().fittertype, 1);
}

TEST_F(SetupTypes, ClickingTheSideAlreadyChosenChangesNothing)
{
    Form2& f = form2();
    servermode(2, 2);
    g().lastgoodip = "10.1.1.5";
    setsavetype(2);
    EXPECT_EQ(g().savetype, 2);
    EXPECT_EQ(g().fittertype, 2);
    EXPECT_EQ(g().lastgoodip, "10.1.1.5");
    EXPECT_EQ(f.changingtype, 0);

    servermode(0, 0);
    setsavetype(1);
    EXPECT_EQ(g().savetype, 0);
    EXPECT_EQ(g().lastgoodip, "10.1.1.5");
    EXPECT_EQ(f.Shape1[10].fillcolor(), QColor(Qt::magenta));
}

TEST_F(SetupTypes, LocalHidesTheServerHalfAndChecksTheLocalList)
{
    Form2& f = form2();
    servermode(2, 2);
    f.show();
    setsavetype(1);
    EXPECT_EQ(g().savetype, 0);
    EXPECT_EQ(g().fittertype, 0);
    EXPECT_EQ(g().lastgoodip, "0");
    EXPECT_TRUE(islit(f.FileDown[1]));
    EXPECT_TRUE(islit(f.FitterInfo[1]));
    expecthidden({&f.ServerIP, &f.TarnTNO, &f.FileDownLabel[3], &f.FitterInfo[2], &f.FitterInfoLabel[3]});
    // The local list was checked: a missing one is made, empty.
    EXPECT_EQ(f.Shape1[10].fillcolor(), colorbox(boxidle));
    EXPECT_TRUE(files::exists("c:\\tarnbc\\ENGLST.TXT"));
    EXPECT_EQ(f.changingtype, 0);
}

TEST_F(SetupTypes, ASwitchThatIsAtWorkRefusesBothSwitches)
{
    Form2& f = form2();
    servermode(0, 0);
    f.changingtype = 1;
    setsavetype(2);
    EXPECT_EQ(g().savetype, 0);
    servermode(1, 1);
    setfittertype(3);
    EXPECT_EQ(g().fittertype, 1);
    EXPECT_EQ(f.changingtype, 1);

    // Clicks that arrive while the store check of the switch to Server lets events run
    // (its busy box) are refused.
    f.changingtype = 0;
    servermode(0, 0);
    g().commandline = "";
    f.ServerIP.settext("300.1.1.1");
    g().serverip = "300.1.1.1";
    int ran = 0;
    QTimer::singleShot(0, [&] { ++ran; setsavetype(1); });
    QTimer::singleShot(0, [&] { ++ran; setfittertype(3); });
    setsavetype(2);
    EXPECT_EQ(ran, 2);
    EXPECT_EQ(g().storestate, 6);
    EXPECT_EQ(g().savetype, 1);
    EXPECT_EQ(g().fittertype, 1);
    EXPECT_EQ(f.changingtype, 0);
}

TEST_F(SetupTypes, AGuessThatNobodyAnswersEndsInQuestionMarks)
{
    Form2& f = form2();
    servermode(0, 0);
    f.show();
    // A PC numbered .33 on a network where nothing answers (the loopback network with the
    // echo silenced, so nothing leaves this machine).
    icmp::inject::noreply(true);
    f.Winsock1.setaddress("127.0.0.33");
    for (const char* box : {"", "0.0.0.0"}) {
        servermode(0, 0);
        f.ServerIP.settext(box);
        f.Shape1[7].setfillcolor(Qt::magenta);
        setsavetype(2);
        EXPECT_EQ(f.ServerIP.value(), "127.0.0.???") << box;
        EXPECT_EQ(g().serverip, "127.0.0.200") << box;
        EXPECT_EQ(f.Shape1[7].fillcolor(), colorbox(boxfault)) << box;
        EXPECT_EQ(g().savetype, 1);
        EXPECT_EQ(g().fittertype, 1);
        EXPECT_EQ(submode(), "Direct");
        EXPECT_EQ(f.focusWidget(), &f.ServerIP) << box;
        // The engineer list is looked for on the guessed server, which has no share.
        EXPECT_EQ(f.Shape1[10].fillcolor(), colorbox(boxfault)) << box;
        EXPECT_EQ(f.changingtype, 0);
    }
}

TEST_F(SetupTypes, AGuessThatFindsAWorkingStoreMovesOnToTheTerminalNumber)
{
    if (!canecho()) GTEST_SKIP() << "no ICMP socket can be opened here";
    Form2& f = form2();
    install.addshare("\\\\127.0.0.200\\tagstore");
    probefile();
    TempInstall::writefile(install.host("\\\\127.0.0.200\\tagstore\\ENGLST.TXT"), "1,1,Ann\r\n");
    g().commandline = "startup";
    servermode(0, 0);
    f.show();
    f.ServerIP.settext("");
    f.Winsock1.setaddress("127.0.0.33");
    setsavetype(2);
    EXPECT_EQ(f.ServerIP.value(), "127.0.0.200");
    EXPECT_EQ(g().serverip, "127.0.0.200");
    EXPECT_EQ(g().storestate, 0);
    EXPECT_EQ(g().lastgoodip, "127.0.0.200");
    EXPECT_EQ(f.Shape1[7].fillcolor(), colorbox(boxgood));
    EXPECT_EQ(f.focusWidget(), &f.TarnTNO);
    EXPECT_EQ(f.Shape1[10].fillcolor(), colorbox(boxgood));
    EXPECT_EQ(f.changingtype, 0);
}

TEST_F(SetupTypes, AnAddressThatCannotBeGuessedFromLeavesZeros)
{
    Form2& f = form2();
    servermode(0, 0);
    f.ServerIP.settext("");
    f.Winsock1.setaddress("localhost");
    setsavetype(2);
    EXPECT_EQ(f.ServerIP.value(), "0.0.0.0");
    EXPECT_EQ(g().savetype, 1);
    EXPECT_EQ(f.Shape1[7].fillcolor(), QColor(Qt::magenta));
    EXPECT_EQ(f.changingtype, 0);
}

TEST_F(SetupTypes, TheEngineerSwitchWorksOnlyWithAServerAndChecksWhereTheListLives)
{
    Form2& f = form2();
    servermode(0, 0);
    setfittertype(2);
    EXPECT_EQ(g().fittertype, 0);

    servermode(1, 0);
    g().storestate = 3;
    setfittertype(2);
    EXPECT_EQ(g().fittertype, 1);
    EXPECT_EQ(f.FitterInfoLabel[3].caption(), "Direct");
    EXPECT_EQ(f.FitterInfoLabel[3].forecolor(), colorbox(13));
    EXPECT_TRUE(islit(f.FitterInfo[2]));
    EXPECT_EQ(f.Shape1[10].fillcolor(), colorbox(boxfault));
    setfittertype(3);
    EXPECT_EQ(g().fittertype, 2);
    EXPECT_EQ(f.FitterInfoLabel[3].caption(), "PC Copy");
    EXPECT_EQ(f.FitterInfoLabel[3].forecolor(), colorbox(14));
    setfittertype(3);
    EXPECT_EQ(g().fittertype, 1);

    f.Shape1[10].setfillcolor(Qt::magenta);
    setfittertype(1);
    EXPECT_EQ(g().fittertype, 0);
    EXPECT_TRUE(f.FitterInfoLabel[3].isHidden());
    EXPECT_TRUE(islit(f.FitterInfo[1]));
    EXPECT_EQ(f.Shape1[10].fillcolor(), colorbox(boxidle));   // the local list, made empty
    EXPECT_EQ(f.changingtype, 0);

    setfittertype(3);   // the sub-mode from Local goes to Direct
    EXPECT_EQ(g().fittertype, 1);
}

}  // namespace
