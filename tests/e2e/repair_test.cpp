// The corrupt data screen against an emulated OPL 972x whose clock is wrong: the repair is
// taken at the date question of a transfer, the lines are shifted on the screen and then
// accepted (saved, cleared, clock set) or cancelled (nothing touched).
#include "downloadfixture.h"
#include "pipeline/form12.h"
#include "pipeline/screens.h"

namespace {

std::vector<std::string> review(long n)
{
    std::vector<std::string> out;
    for (long i = 1; i <= n; ++i) out.push_back(g().reviewlines[i]);
    return out;
}

}  // namespace

class RepairEndToEnd : public DownloadTest {
protected:
    void SetUp() override
    {
        DownloadTest::SetUp();
        g().savetype = 0;
        form12().hide();
        form12().List1.clear();
    }
    // A transfer of `recordtext` from a scanner whose clock is `minutes` ahead, with Yes to
    // the repair question and `more` answers queued for what follows; `options` go to the emulator besides.
    void transferwithrepair(const std::string& recordtext, double minutes, std::vector<int> more = {},
                            std::vector<std::string> options = {})
    {
        std::vector<std::string> args = {"--id", "123", "--battery", "85", "--clock-offset", clockoffset(minutes),
                                         "--records", records(recordtext)};
        args.insert(args.end(), options.begin(), options.end());
        dock(1, args);
        reseticons();
        dialogs::queueanswer(vbYes);
        for (int a : more) dialogs::queueanswer(a);
        emit form1().Transfer.clicked();
    }
};

TEST_F(RepairEndToEnd, DaysAheadShiftsOnlyFarLinesThenAcceptSavesClearsAndSetsTheClock)
{
    // The scanner is 10 days ahead: 15 April is 37 days on, 19 March only 10.
    transferwithrepair("0001123456780,150407,0830\n0002876543210,190307,1000\n", 10 * 1440);

    Form12& repair = form12();
    EXPECT_TRUE(repair.isVisible());
    EXPECT_EQ(g().runmode, 4);
    EXPECT_EQ(repair.Label2.caption(), "Corrupt Data List - Scanner 123");
    EXPECT_EQ(repair.daysshift(), 10);
    EXPECT_EQ((long)repair.minuteshift(), 0);
    EXPECT_EQ(repair.shiftsign(), 1);
    EXPECT_EQ(review(2), (std::vector<std::string>{"0112345678200704050830", "0287654321200703191000"}));
    EXPECT_EQ(items(repair.List1), (std::vector<std::string>{"01 12 345678 At 08:30 05-Apr-07 Thu",
                                                              "02 87 654321 At 10:00 19-Mar-07 Mon"}));
    EXPECT_TRUE(boxes("Select Invalid Data").empty()) << "a line was shifted";
    EXPECT_EQ(held(6), 2) << "nothing is cleared before the accept";

    emit repair.Delete.clicked();

    EXPECT_FALSE(repair.isVisible());
    EXPECT_TRUE(boxes("Confirm Data Acceptance").empty());
    EXPECT_EQ(get("c:\\tarnbc\\BAR001.INI"),
              barbytes("123", "00220070309", {"0112345678200704050830", "0287654321200703191000"}));
    EXPECT_EQ(held(6), 0);
    EXPECT_TRUE(hasline("Scanner Update Successful!"));
    EXPECT_EQ(g().datestatus, 0);
    EXPECT_EQ(g().timestatus, 0);
    EXPECT_EQ(g().runmode, 0);
}

TEST_F(RepairEndToEnd, HoursApartShiftFromTheChosenLineTwiceThenCancelTouchesNothing)
{
    // Two hours ahead: no line is 30 days out, so the user is asked to choose.
    transferwithrepair("0001123456780,090307,0900\n0002876543210,090307,1000\n0001123456780,090307,1100\n", 120,
                       {vbOK});
    Form12& repair = form12();
    EXPECT_EQ(repair.daysshift(), 0);
    EXPECT_EQ((long)repair.minuteshift(), 120);
    EXPECT_EQ(repair.shiftsign(), 1);
    EXPECT_EQ(boxes("Select Invalid Data").size(), 1u);
    const std::vector<std::string> before = {"0112345678200703090900", "0287654321200703091000",
                                             "0112345678200703091100"};
    EXPECT_EQ(review(3), before);
    const long outcount = g().outcount;

    repair.List1.setlistindex(1);
    emit repair.List1.doubleclicked();
    EXPECT_EQ(review(3), (std::vector<std::string>{before[0], "0287654321200703090800", "0112345678200703090900"}));
    EXPECT_EQ(repair.List1.list(1), "02 87 654321 At 08:00 09-Mar-07 Fri");
    EXPECT_EQ(repair.List1.listcount(), 3);

    repair.List1.setlistindex(2);
    emit repair.List1.doubleclicked();
    EXPECT_EQ(review(3)[2], "0112345678200703090700") << "a second shift moves the line again";

    emit repair.Cancel.clicked();
    EXPECT_FALSE(repair.isVisible());
    EXPECT_EQ(g().runmode, 0);
    EXPECT_EQ(held(6), 3);
    EXPECT_EQ(g().outcount, outcount);
    EXPECT_FALSE(has("c:\\tarnbc\\BAR001.INI"));
    EXPECT_FALSE(hasline("Correcting Scanner Date / Time!"));
}

TEST_F(RepairEndToEnd, ReadOnlyUnderRepairOfACs1504KeepsItsLinesButSetsItsClock)
{
    // Ten days ahead: the scan of 18 April is 40 days on and comes back to 8 April.
    dock(3, {"--id", "123", "--clock-offset", clockoffset(10 * 1440), "--records",
             records("001123456789,1,2007-04-18 08:30:05\n002876543210,1,2007-03-19 10:00:00\n")});
    reseticons();
    dialogs::queueanswer(vbYes);
    emit form1().Read.clicked();

    Form12& repair = form12();
    ASSERT_TRUE(repair.isVisible());
    EXPECT_EQ(g().runmode, 5);
    EXPECT_EQ(repair.daysshift(), 10);
    EXPECT_EQ(review(2), (std::vector<std::string>{"0112345678200704080830", "0287654321200703191000"}));
    // Automatic download still switches while the repair waits.
    g().automaticactive = 0;
    g().scannerauto[3] = 1;
    emit form1().Status.clicked();
    EXPECT_EQ(g().automaticactive, 1);

    emit repair.Delete.clicked();
    EXPECT_FALSE(repair.isVisible());
    // The amended run has already set a read's runmode back to 0, so the accept never says
    // that the data was only read.
    EXPECT_FALSE(hasline("Data has been read only!"));
    EXPECT_TRUE(hasline("2 Valid Lines Available For Export"));
    EXPECT_FALSE(has("c:\\tarnbc\\BAR001.INI"));
    EXPECT_EQ(held(6), 2) << "a read keeps the lines on the scanner";
    EXPECT_TRUE(hasline("Scanner Update Successful!"));
    EXPECT_EQ(activity().back(), "Please Remove Scanner");
    EXPECT_EQ(g().runmode, 0);

    // Read again, its clock now agrees with the PC's: no repair question this time.
    dialogs::cleartranscript();
    emit form1().Read.clicked();
    EXPECT_FALSE(repair.isVisible());
    EXPECT_TRUE(dialogs::transcript().empty()) << dialogs::describe(dialogs::transcript().front());
}

// The screen is shown while its own read of the scanner is still waiting for the download:
// an Accept then would clear the scanner and take the control from under that wait. It is
// greyed and refused until the read is over, and works as usual afterwards.
TEST_F(RepairEndToEnd, AcceptWaitsForTheScreensOwnRead)
{
    bool tried = false, refused = false;
    whilewaiting([&] {
        Form12& repair = form12();
        if (!(repair.isVisible() && g().runmode == 4 && g().opldone == 0)) return false;
        tried = true;
        refused = !repair.Delete.isEnabled() && !repair.Label4.isEnabled();
        emit repair.Delete.clicked();
        emit repair.Label4.clicked();
        refused = refused && repair.isVisible() && g().runmode == 4 && boxes("Confirm Data Acceptance").empty();
        return true;
    });
    // A slow link keeps the download going long enough to be seen.
    transferwithrepair("0001123456780,150407,0830\n0002876543210,190307,1000\n", 10 * 1440, {}, {"--baud", "1200"});
    EXPECT_TRUE(tried) << "the read was not seen waiting";
    EXPECT_TRUE(refused);
    Form12& repair = form12();
    ASSERT_TRUE(repair.isVisible());
    EXPECT_TRUE(repair.Delete.isEnabled());
    EXPECT_EQ(held(6), 2);

    emit repair.Label4.clicked();
    EXPECT_FALSE(repair.isVisible());
    EXPECT_EQ(held(6), 0);
    EXPECT_EQ(get("c:\\tarnbc\\BAR001.INI"),
              barbytes("123", "00220070309", {"0112345678200704050830", "0287654321200703191000"}));
}
