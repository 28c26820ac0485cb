// testtheID: the ID rules in their order, what the screens show, and the engineer look-up.
#include "core/colorbox.h"
#include "maintenance/scannertests.h"
#include "maintenancefixture.h"
#include "settings/form2.h"

namespace {

class TestTheId : public MaintenanceTest {
protected:
    void judge(int type, const std::string& id)
    {
        g().scannertype = type;
        g().scannerid = id;
        form2().TestResult[type].setcaption("1402 090307");
        form1().Label3.setcaption("ID: 000 Date: 1402 090307");
        testtheID();
    }
    void englist(const std::string& text) { files::writeall("c:\\tarnbc\\ENGLST.TXT", text); }
};

TEST_F(TestTheId, RulesRunInOrderAndTheLastThatMatchesStands)
{
    englist("");
    struct Row { const char* id; int type, status; const char* shown; const char* last3; } rows[] = {
        {"5", 1, 0, "005", "005"},
        {"42", 1, 0, "042", "042"},
        {"0", 1, 3, "000", "000"},
        {"999", 1, 3, "999", "999"},
        {"1234", 1, 2, "1234", "234"},
        {"1999", 1, 3, "1999", "999"},
        {"12a", 1, 1, "12a", "12a"},
        {"-5", 1, 1, "-005", "-005"},
        {"12345a", 1, 2, "12345a", "45a"},
        {"000123", 2, 2, "123", "123"},
        {"000999", 3, 3, "999", "999"},
        {"000000", 3, 3, "000", "000"},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.id);
        judge(r.type, r.id);
        EXPECT_EQ(g().idstatus, r.status);
        EXPECT_EQ(form10().IDLabel[1].caption(), r.shown);
        EXPECT_EQ(form10().IDBox.fillcolor(), colorbox(r.status ? 2 : 5));
        const std::string blanks = r.status ? " " : "  ";
        EXPECT_EQ(form2().TestResult[r.type].caption(), r.last3 + blanks + "1402 090307");
        EXPECT_EQ(form1().Label3.caption(), std::string("ID: ") + r.last3 + " Date: 1402 090307");
        if (r.status) {
            EXPECT_EQ(form10().FitterLabel[1].caption(), "N/A");
        }
    }
}

TEST_F(TestTheId, LooksUpTheEngineer)
{
    englist("Unit,Number,Name\r\n"
            "VEXAL 000005,000005,Header\r\n"
            " 000005,000005,Leading Blank\r\n"
            "0000x5,000005,Letter\r\n"
            "000007,000007,Fred Bloggs   \r\n"
            "5,000002,Jane Doe, Senior  \r\n");
    g().datestatus = 0;
    g().timestatus = 0;
    struct Row { const char* id; const char* name; } rows[] = {
        {"5", "Jane Doe, Senior"}, {"7", "Fred Bloggs"}, {"8", "Unknown"},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.id);
        form2().ResultBox[1].setfillcolor(colorbox(14));
        judge(1, r.id);
        EXPECT_EQ(form10().FitterLabel[1].caption(), r.name);
        EXPECT_EQ(form2().ResultBox[1].fillcolor(), colorbox(1));
    }
    g().timestatus = 1;
    judge(1, "7");
    EXPECT_EQ(form2().ResultBox[1].fillcolor(), colorbox(2)) << "a bad clock makes the result red";
}

TEST_F(TestTheId, NoEngineerListLeavesTheResultAsTheClockSetIt)
{
    g().fittertype = 1;
    g().serverip = "192.0.2.1";
    g().storestate = 3;
    form2().ResultBox[1].setfillcolor(colorbox(14));
    form10().FitterBox.setfillcolor(colorbox(5));
    judge(1, "5");
    EXPECT_EQ(g().fitterstatus, 1);
    EXPECT_EQ(form10().FitterLabel[1].caption(), "N/A");
    EXPECT_EQ(form10().FitterBox.fillcolor(), colorbox(2));
    EXPECT_EQ(form2().ResultBox[1].fillcolor(), colorbox(14));
    EXPECT_EQ(form2().TestResult[1].caption(), "005  1402 090307");
}

}  // namespace
