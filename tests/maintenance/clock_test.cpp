// The scanner's clock: stamps from both clock forms, the minute difference, the clock-change
// windows, the judgement table at its borders, and testthedate's reports with a set clock.
#include "maintenance/scannerclock.h"
#include "maintenance/scannertests.h"
#include "maintenancefixture.h"
#include "core/colorbox.h"
#include "pipeline/form12.h"
#include "settings/form2.h"

namespace {

std::string raw(int s, int m, int h, int d, int mo, int y)
{
    return {(char)s, (char)m, (char)h, (char)d, (char)mo, (char)y};
}

TEST(ScannerClock, StampsFromTheOplTextAndTheCspBytes)
{
    EXPECT_EQ(oplstamp("09/03/2007 14:05:07"), "070514090307");
    EXPECT_EQ(oplstamp(""), "");
    EXPECT_EQ(cspstamp(raw(7, 5, 14, 9, 3, 7)), "070514090307");
    struct Year { int byte; const char* field; } years[] = {
        {24, "24"}, {63, "63"}, {64, "00"}, {88, "24"}, {99, "35"},
    };
    for (const auto& y : years) EXPECT_EQ(cspstamp(raw(0, 0, 0, 1, 1, y.byte)).substr(10), y.field) << y.byte;
    EXPECT_EQ(cspstamp(raw(0, 0, 0, 1, 1, 200)).substr(10), "00") << "only the right two digits of 200 count";
    EXPECT_EQ(cspstamp("\x07"), "070000000000") << "a short buffer reads as zero bytes";

    setscannerdatetime("070514090307");
    EXPECT_EQ(g().scannerdate, "090307");
    EXPECT_EQ(g().scannertime, "1405");
    EXPECT_EQ(datedisplay("090307"), "09/03/07");
    EXPECT_EQ(timedisplay("1405"), "14:05");
}

TEST(ScannerClock, MinutesApartIgnoreSecondsAndDoNotWrapAtMidnight)
{
    EXPECT_EQ(minutesapart("2359", QTime(0, 1)), 1438);
    EXPECT_EQ(minutesapart("0001", QTime(23, 59, 59)), 1438);
    EXPECT_EQ(minutesapart("1405", QTime(14, 5, 59)), 0);
    EXPECT_EQ(minutesapart("1300", QTime(14, 1)), 61);
    EXPECT_THROW(minutesapart("", QTime(14, 1)), Fault);
    EXPECT_THROW(minutesapart("ab12", QTime(14, 1)), Fault);
}

TEST(ScannerClock, ClockChangeWindowsAreFixedDates)
{
    struct Day { int y, m, d; bool in; } days[] = {
        {2026, 3, 25, false}, {2026, 3, 26, true}, {2026, 4, 6, true}, {2026, 4, 7, false},
        {2026, 10, 25, false}, {2026, 10, 26, true}, {2026, 11, 6, true}, {2026, 11, 7, false},
        {2024, 3, 31, true}, {2024, 1, 1, false}, {2024, 7, 1, false}, {2025, 12, 31, false},
    };
    for (const auto& d : days) EXPECT_EQ(inclockchangewindow(QDate(d.y, d.m, d.d)), d.in) << d.y << "-" << d.m << "-" << d.d;
}

TEST(ScannerClock, JudgementTableAtItsBorders)
{
    using V = TimeVerdict;
    struct Row { const char* legend; long diff; int margin, autotime, datestatus; bool window; V verdict; } rows[] = {
        {"no difference, any setting", 0, 5, 1, 1, true, V::good},
        {"no difference, margin 0", 0, 0, 0, 0, false, V::good},
        {"exactly margin, off", 5, 5, 0, 0, false, V::good},
        {"exactly margin, Adv", 5, 5, 1, 0, false, V::correct},
        {"exactly margin, On", 5, 5, 2, 0, false, V::correct},
        {"one minute, On, wrong date", 1, 5, 2, 1, false, V::good},
        {"one minute, unknown setting acts as off", 1, 5, 7, 0, false, V::good},
        {"margin + 1, off", 6, 5, 0, 0, true, V::fault},
        {"margin + 1, On", 6, 5, 2, 0, true, V::fault},
        {"margin + 1, Adv, outside the window", 6, 5, 1, 0, false, V::fault},
        {"61, On, in the window", 61, 5, 2, 0, true, V::fault},
        {"61, Adv, outside the window", 61, 5, 1, 0, false, V::fault},
        {"55, Adv, in the window: 60 - 55 is not below 5", 55, 5, 1, 0, true, V::fault},
        {"56, Adv, in the window", 56, 5, 1, 0, true, V::correctdst},
        {"60, Adv, in the window", 60, 5, 1, 0, true, V::correctdst},
        {"64, Adv, in the window", 64, 5, 1, 0, true, V::correctdst},
        {"65, Adv, in the window", 65, 5, 1, 0, true, V::fault},
        {"61, Adv, in the window, wrong date", 61, 5, 1, 1, true, V::keep},
        {"61, Adv, not yet judged date", 61, 5, 1, 2, true, V::correctdst},
        {"120, Adv, in the window", 120, 5, 1, 0, true, V::fault},
    };
    for (const auto& r : rows)
        EXPECT_EQ(judgetime(r.diff, r.margin, r.autotime, r.datestatus, r.window), r.verdict) << r.legend;
}

TEST(ScannerClock, TheBatteryTimersQuickLookComparesHhmmNumbers)
{
    const QDateTime eleven(QDate(2026, 5, 4), QTime(11, 0, 30));
    EXPECT_TRUE(clocklooksbad("040526", "1059", eleven)) << "1100 - 1059 is 41";
    EXPECT_TRUE(clocklooksbad("040526", "1055", eleven)) << "five minutes, but 45 apart as numbers";
    EXPECT_FALSE(clocklooksbad("040526", "1105", eleven));
    EXPECT_TRUE(clocklooksbad("040526", "1106", eleven));
    EXPECT_TRUE(clocklooksbad("050526", "1100", eleven)) << "another day";
}

// testthedate with the PC's clock set, on clocks it judges without writing to the scanner.
class TestTheDate : public MaintenanceTest {
protected:
    void judge(int type, const QDateTime& pc, const QDateTime& scanner)
    {
        platform::clock::set(pc);
        g().scannertype = type;
        if (type == 1) {
            g().scannerclock = Format(scanner, "DD/MM/YYYY hh:nn:ss");
        } else {
            const QDate d = scanner.date();
            const QTime t = scanner.time();
            g().scannerrawclock = raw(t.second(), t.minute(), t.hour(), d.day(), d.month(), d.year() % 100);
        }
        testthedate();
    }
};

TEST_F(TestTheDate, ReportsToEveryScreen)
{
    g().timemargin = 5;
    g().scannerport[2] = 4;
    form2().TestResult[2].setcaption("N/A");
    form12().Label3.setcaption("old");
    form1().Label3.setcaption("ID: 123 Date: HHMM DDMMYY");
    const QDateTime pc(QDate(2007, 3, 9), QTime(14, 5, 7));
    judge(2, pc, pc.addSecs(-3 * 60));
    EXPECT_EQ(form10().DateLabel.caption(), "09/03/07");
    EXPECT_EQ(form10().TimeLabel.caption(), "14:02");
    EXPECT_EQ(form2().TestResult[2].caption(), "1402 090307");
    EXPECT_EQ(form12().Label3.caption(), "1402 090307");
    EXPECT_EQ(form1().Label3.caption(), "ID: 123 Date: 1402 090307");
    EXPECT_EQ(g().datestatus, 0);
    EXPECT_EQ(g().timestatus, 0);
    EXPECT_EQ(form10().DateBox.fillcolor(), colorbox(5));
    EXPECT_EQ(form10().TimeBox.fillcolor(), colorbox(5));
    EXPECT_EQ(form2().ResultBox[2].fillcolor(), colorbox(1));
    EXPECT_EQ(g().scannertested[2], 1);
    EXPECT_EQ(g().portlasttested[2], 4);
    EXPECT_TRUE(rows(form1().List2).empty()) << "AUTOTIME 0 corrects nothing";
}

TEST_F(TestTheDate, MarginBordersAndTheWindowWithoutCorrection)
{
    struct Row {
        const char* legend;
        int type, autotime, scannerminutes, scannerdays;
        QDate today;
        int timestatus, datestatus;
    } cases[] = {
        {"exactly margin", 1, 0, -5, 0, QDate(2007, 3, 9), 0, 0},
        {"margin + 1", 1, 0, 6, 0, QDate(2007, 3, 9), 1, 0},
        {"margin + 1, CSP", 3, 0, -6, 0, QDate(2007, 3, 9), 1, 0},
        {"wrong date within margin, On", 2, 2, 3, -1, QDate(2007, 3, 9), 0, 1},
        {"61 on 25 March, Adv", 1, 1, 61, 0, QDate(2007, 3, 25), 1, 0},
        {"61 on 7 April, Adv", 1, 1, 61, 0, QDate(2007, 4, 7), 1, 0},
        {"61 on 25 October, Adv", 2, 1, -61, 0, QDate(2007, 10, 25), 1, 0},
        {"61 on 7 November, Adv", 2, 1, -61, 0, QDate(2007, 11, 7), 1, 0},
        {"61 on 1 April, On", 1, 2, 61, 0, QDate(2007, 4, 1), 1, 0},
        {"55 on 1 April, Adv", 1, 1, -55, 0, QDate(2007, 4, 1), 1, 0},
        {"65 on 1 November, Adv", 3, 1, 65, 0, QDate(2007, 11, 1), 1, 0},
    };
    g().timemargin = 5;
    for (const auto& r : cases) {
        SCOPED_TRACE(r.legend);
        g().scannerautotime[r.type] = r.autotime;
        const QDateTime pc(r.today, QTime(12, 0, 40));
        judge(r.type, pc, pc.addSecs(r.scannerminutes * 60).addDays(r.scannerdays));
        EXPECT_EQ(g().timestatus, r.timestatus);
        EXPECT_EQ(g().datestatus, r.datestatus);
        EXPECT_EQ(form10().TimeBox.fillcolor(), colorbox(r.timestatus ? 2 : 5));
        EXPECT_EQ(form10().DateBox.fillcolor(), colorbox(r.datestatus ? 2 : 5));
        EXPECT_EQ(form2().ResultBox[r.type].fillcolor(), colorbox(r.timestatus || r.datestatus ? 2 : 1));
    }
    EXPECT_TRUE(rows(form1().List2).empty());
}

TEST_F(TestTheDate, WindowWithWrongDateLeavesTheTimeAsItWas)
{
    g().timemargin = 5;
    g().scannerautotime[1] = 1;
    g().timestatus = 2;
    form10().TimeBox.setfillcolor(colorbox(14));
    const QDateTime pc(QDate(2007, 4, 2), QTime(9, 30));
    judge(1, pc, pc.addDays(-1).addSecs(61 * 60));
    EXPECT_EQ(g().datestatus, 1);
    EXPECT_EQ(g().timestatus, 2) << "nothing changes";
    EXPECT_EQ(form10().TimeBox.fillcolor(), colorbox(14));
    EXPECT_EQ(form2().ResultBox[1].fillcolor(), colorbox(2));
    EXPECT_TRUE(rows(form1().List2).empty());
}

TEST_F(TestTheDate, AClockThatIsNoClockIsReported)
{
    platform::clock::set(QDateTime(QDate(2007, 3, 9), QTime(14, 5)));
    g().scannertype = 1;
    g().scannerclock = "garbage";
    testthedate();
    const auto shown = boxes("Error In Function: testthedate");
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "An error occurred test the date / time on the scanner! Please try again. Error: 13 Type mismatch");
    EXPECT_EQ(shown[0].flags, vbExclamation);
    EXPECT_TRUE(logged("testthedate: Unexpected error. Error: 13 Type mismatch"));
    EXPECT_EQ(g().datestatus, 1) << "the date was judged before the time failed";
}

}  // namespace
