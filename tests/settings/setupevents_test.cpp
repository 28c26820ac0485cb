// The setup screen's controls as a user works them: the automatic download and clock
// adjustment switches, and the terminal number and address boxes when they lose the focus.
#include "settingsfixture.h"

#include "settings/form2.h"
#include "settings/form3.h"
#include "settings/setupdisplay.h"

namespace {

class SetupEvents : public SettingsTest {
protected:
    void SetUp() override
    {
        SettingsTest::SetUp();
        form2().changingtype = 0;
    }
};

TEST_F(SetupEvents, AutomaticDownloadFlipsAndTheClockAdjustmentGoesRound)
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

TEST_F(SetupEvents, TheTerminalNumberIsCheckedWhenItLosesTheFocus)
{
    Form2& f = form2();
    struct Row { const char* typed; const char* after; int colour; } rows[] = {
        {"7", "007", boxgood}, {"999", "999", boxneutral}, {"1000", "1000", boxfault}};
    for (const auto& r : rows) {
        f.TarnTNO.settext(r.typed);
        emit f.TarnTNO.lostfocus();
        EXPECT_EQ(f.TarnTNO.value(), r.after);
        EXPECT_EQ(f.Shape1[1].fillcolor(), colorbox(r.colour)) << r.typed;
    }
}

TEST_F(SetupEvents, TheAddressBoxTakesAnEmailAddressOrAServer)
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

}  // namespace
