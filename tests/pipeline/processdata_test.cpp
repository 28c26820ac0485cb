// processdata over OPL 972x lines and CS 1504 / OPN 2001 records, in normal and in repair
// running: the texts in the lists and the log, the lines made, the counts and the repair
// table.
#include "pipelinefixture.h"

#include "pipeline/formats.h"
#include "core/colorbox.h"
#include "pipeline/processdata.h"
#include "pipeline/session.h"

#include <functional>

namespace {

class ProcessData : public PipelineTest {
protected:
    // Writes `lines` as the raw download file of scanner 123 and runs the OPL processing;
    // `count` is what the scanner said (the number of lines when -1).
    void runopl(const std::vector<std::string>& lines, bool repair, long count = -1)
    {
        std::string bytes;
        for (const auto& l : lines) bytes += l + "\r\n";
        files::writeall(formats::rawfile("123"), bytes);
        g().scannertype = 1;
        run(repair, count < 0 ? (long)lines.size() : count);
    }

    void runrecords(const std::vector<std::string>& records, bool repair, int type = 3, long count = -1)
    {
        for (size_t i = 0; i < records.size(); ++i) g().scanlines[(long)i + 1] = records[i];
        g().scannertype = type;
        run(repair, count < 0 ? (long)records.size() : count);
    }

    void run(bool repair, long count)
    {
        g().scannerid = "123";
        g().scancount = count;
        g().runmode = repair ? 4 : 1;
        seen.clear();
        ListBox::setobserver([this](const ListBox& list, const std::string& text) {
            seen.push_back((&list == &form12().List1 ? "R: " : "M: ") + text);
        });
        processdata();
        ListBox::setobserver(nullptr);
    }

    std::vector<std::string> outlines() const
    {
        std::vector<std::string> out;
        for (long i = 1; i <= g().outcount; ++i) out.push_back(g().outlines[i]);
        return out;
    }

    std::vector<std::string> review(long upto) const
    {
        std::vector<std::string> out;
        for (long i = 0; i <= upto; ++i) out.push_back(g().reviewlines[i]);
        return out;
    }

    std::vector<std::string> seen;   // "M: " main screen's List2, "R: " repair screen's List1
};

// A record of a CS 1504 / OPN 2001: length byte, type byte, barcode, stamp.
std::string record(const std::string& barcode, const std::string& stamp = "\x15\xE7\x64\xC8")
{
    return std::string(1, (char)(barcode.size() + 5)) + "\x01" + barcode + stamp;
}

const std::string plain = "0001123456780,120307,1430";
const std::string plaintest = "0001993456780,120307,1431";
const std::string longline = "10212345678456,120307,1432";
const std::string shortline = "18012345678,120307,1433";
const std::string frline = "0134567890123,120307,1434";

// One line, each running: what it shows, what it makes, and where the repair table gets it.
// The repair screen shows the same text without the TEST mark.
struct OneLine {
    const char* legend;
    std::string line;
    std::string text;      // as List2 shows it in normal running
    const char* outline;   // "" when no line is made
    long reviewindex;
    const char* review;
};

const OneLine onelines[] = {
    {"plain", plain, "01 12 345678 At 14:30 12-Mar-07", "0112345678200703121430", 1, "0112345678200703121430"},
    {"plain test", plaintest, "01 99 345678 At 14:31 12-Mar-07 TEST", "", 1, "0199345678200703121431"},
    {"long", longline, "02 12 345678 456  At 14:32 12-Mar-07", "0212345678200703121432456", 1,
     "0212345678 456 200703121432"},
    {"short made long", shortline, "80 12 345678 000  At 14:33 12-Mar-07", "8012345678200703121433000", 1,
     "8012345678 000 200703121433"},
    {"FR", frline, "01 07 789012 At 14:34 12-Mar-07 FR - 34", "0107789012200703121434034", 1,
     "0107789012200703121434034"},
    {"FR starting 99 is never a test", "0199997890123,120307,1434", "01 07 789012 At 14:34 12-Mar-07 FR - 99",
     "0107789012200703121434099", 1, "0107789012200703121434099"},
    {"letter in the field", "00011234a6780,120307,1430", "Invalid Line (00011234a6780,120307,1430)", "", 1,
     "Invalid Line (00011234a6780,120307,1430)"},
    {"comma out of place", "0001123456780,12030,71430", "Invalid Line (0001123456780,12030,71430)", "", 1,
     "Invalid Line (0001123456780,12030,71430)"},
    // Bad length: stored before counting, one place low.
    {"plain too short", "0001123456780,120307,143", "Invalid Line (0001123456780,120307,143)", "", 0,
     "Invalid Line (0001123456780,120307,143)"},
    {"short too long", "18012345678,120307,14330", "Invalid Line (18012345678,120307,14330)", "", 0,
     "Invalid Line (18012345678,120307,14330)"},
};

TEST_F(ProcessData, EachOplFormInBothRunnings)
{
    for (const auto& r : onelines) {
        SCOPED_TRACE(r.legend);
        const bool valid = *r.outline != 0;

        g().reviewlines.clear();
        runopl({r.line}, false);
        ASSERT_GE(seen.size(), 2u);
        EXPECT_EQ(seen[0], "M: Processing Data");
        EXPECT_EQ(seen[1], "M: " + r.text);
        EXPECT_EQ(g().outcount, valid ? 1 : 0);
        EXPECT_EQ(g().badcount, valid ? 0 : 1);
        if (valid) { EXPECT_EQ(g().outlines[1], r.outline); }
        EXPECT_EQ(g().reviewlines[r.reviewindex], "") << "normal running leaves the repair table alone";

        runopl({r.line}, true);
        const std::string shown = r.text.ends_with(" TEST") ? r.text.substr(0, r.text.size() - 5) : r.text;
        EXPECT_EQ(seen, (std::vector<std::string>{"M: Processing Data", "R: " + shown}));
        EXPECT_EQ(g().reviewlines[r.reviewindex], r.review);
        EXPECT_EQ(g().runmode, 4);
    }
}

TEST_F(ProcessData, ClosingTextsAndTheLog)
{
    // A duplicate is kept.
    runopl({plain, plaintest, "bad", longline, plain}, false);
    EXPECT_EQ(seen, (std::vector<std::string>{
                        "M: Processing Data", "M: 01 12 345678 At 14:30 12-Mar-07",
                        "M: 01 99 345678 At 14:31 12-Mar-07 TEST", "M: Invalid Line (bad)",
                        "M: 02 12 345678 456  At 14:32 12-Mar-07", "M: 01 12 345678 At 14:30 12-Mar-07",
                        "M: 2 Invalid/Test Lines Have Been Ignored", "M: 3 Valid Lines Available For Export"}));
    EXPECT_EQ(items(form1().List2).back(), "3 Valid Lines Available For Export");
    EXPECT_EQ(form1().List2.listindex(), form1().List2.listcount() - 1);
    // Neither "Processing Data" nor the count of ignored lines is logged.
    EXPECT_EQ(loglines(), (std::vector<std::string>{"01 12 345678 At 14:30 12-Mar-07",
                                                    "01 99 345678 At 14:31 12-Mar-07 TEST", "Invalid Line (bad)",
                                                    "02 12 345678 456  At 14:32 12-Mar-07",
                                                    "01 12 345678 At 14:30 12-Mar-07",
                                                    "3 Valid Lines Available For Export"}));
    EXPECT_EQ(outlines(), (std::vector<std::string>{"0112345678200703121430", "0212345678200703121432456",
                                                    "0112345678200703121430"}));
}

TEST_F(ProcessData, ClosingTextsByCount)
{
    struct Row { std::vector<std::string> lines; std::vector<std::string> closing; std::string status; int colour; } rows[] = {
        {{plain}, {"1 Valid Line Available For Export"}, "", 11},
        {{plain, plain}, {"2 Valid Lines Available For Export"}, "", 11},
        {{plain, "x"}, {"1 Invalid/Test Line Has Been Ignored", "1 Valid Line Available For Export"},
         "002 / 002 1 Invalid Line", 0},
        {{"x", "y", plain}, {"2 Invalid/Test Lines Have Been Ignored", "1 Valid Line Available For Export"},
         "003 / 003 2 Invalid Line", 0},
        {{"x"}, {"None of the entries are valid!"}, "001 / 001 All invalid", 2},
        {{plaintest, plaintest}, {"None of the entries are valid!"}, "002 / 002 All invalid", 2},
    };
    for (const auto& r : rows) {
        form16().ProcData.setcaption("before");
        runopl(r.lines, false);
        std::vector<std::string> tail(seen.end() - (long)r.closing.size(), seen.end());
        for (auto& t : tail) t = t.substr(3);
        EXPECT_EQ(tail, r.closing);
        EXPECT_EQ(form16().ProcData.caption(), r.status.empty() ? "before" : r.status);
        EXPECT_EQ(form16().ProcData.forecolor(), colorbox(r.colour)) << r.status;
    }
}

TEST_F(ProcessData, RunmodeAfterTheRunAndNoSummaryInRepair)
{
    runopl({plain, "x"}, true);
    EXPECT_EQ(seen.back(), "R: Invalid Line (x)");
    EXPECT_EQ(form1().List2.listcount(), 1);   // "Processing Data" only
    EXPECT_EQ(g().runmode, 4);
    runopl({plain}, false);
    EXPECT_EQ(g().runmode, 1) << "a transfer goes on to the save";
    g().scancount = 1;
    g().runmode = 2;
    g().pressedop = 3;
    processdata();
    EXPECT_EQ(g().runmode, 0);
    EXPECT_EQ(g().pressedop, 0);
}

TEST_F(ProcessData, TheBadLengthOffByOneInRepairRunning)
{
    // Valid, bad length, valid: the bad line overwrites the first line's entry and leaves
    // its own empty.
    const std::string letter = "00011234a6780,120307,1430";
    runopl({plain, "0001123456780,120307,143", longline, letter, plaintest}, true);
    EXPECT_EQ(review(6), (std::vector<std::string>{"", "Invalid Line (0001123456780,120307,143)", "",
                                                   "0212345678 456 200703121432", "Invalid Line (" + letter + ")",
                                                   "0199345678200703121431", ""}));
    EXPECT_EQ(g().outcount, 2);
    EXPECT_EQ(g().badcount, 3);
}

TEST_F(ProcessData, CodeTwoFiftyFiveLinesAreCorrectedAndTheRawFileRewritten)
{
    const std::string damaged = "0001123456780,12/03/2007,14:30\xff";
    for (bool repair : {false, true}) {
        SCOPED_TRACE(repair ? "repair" : "normal");
        runopl({plain, damaged, shortline}, repair);
        const char* who = repair ? "R: " : "M: ";
        EXPECT_EQ(seen[2], who + std::string("01 12 345678 At 14:30 12-Mar-07"));
        EXPECT_EQ(seen[3], "M: Corrected (" + damaged + ")");
        EXPECT_EQ(g().outcount, 3);
        EXPECT_EQ(g().outlines[2], "0112345678200703121430");
        // Rewritten with the lines as they then stood: the short line not yet made long.
        EXPECT_EQ(TempInstall::readfile(install.host(formats::rawfile("123"))),
                  plain + "\r\n0001123456780,120307,1430\r\n" + shortline + "\r\n");
    }
    EXPECT_EQ(loglines()[1], "01 12 345678 At 14:30 12-Mar-07");
    EXPECT_EQ(loglines()[2], "Corrected (" + damaged + ")");
}

TEST_F(ProcessData, ACorrectedLineOfBadLengthGetsNoCorrectedReport)
{
    runopl({"0001123456780,12/03/2007,14:3\xff"}, false);
    EXPECT_EQ(seen[1], "M: Invalid Line (0001123456780,120307,143)");
    EXPECT_EQ(seen.size(), 3u);   // then "None of the entries are valid!"
    EXPECT_EQ(TempInstall::readfile(install.host(formats::rawfile("123"))), "0001123456780,12/03/2007,14:3\xff\r\n");
}

TEST_F(ProcessData, AnEmptyLineTakesTheKindOfTheLineBefore)
{
    // After an FR line an empty line has no length check and is taken as a line.
    runopl({frline, ""}, false);
    EXPECT_EQ(g().outcount, 2);
    EXPECT_EQ(g().outlines[2], "010200");
    // After a plain one it fails the length check.
    runopl({plain, ""}, false);
    EXPECT_EQ(g().outcount, 1);
    EXPECT_EQ(seen[2], "M: Invalid Line ()");
}

TEST_F(ProcessData, AFileShorterThanTheCountLeavesEmptyEntries)
{
    runopl({plain}, false, 3);
    EXPECT_EQ(seen, (std::vector<std::string>{"M: Processing Data", "M: 01 12 345678 At 14:30 12-Mar-07",
                                              "M: Invalid Line ()", "M: Invalid Line ()",
                                              "M: 2 Invalid/Test Lines Have Been Ignored",
                                              "M: 1 Valid Line Available For Export"}));
}

TEST_F(ProcessData, TheStatusScreenFollowsTheRun)
{
    form16().setupstatus();
    form16().show();
    runopl({plain, plain, "x"}, false);
    EXPECT_TRUE(form16().ProcLabel.bold());
    EXPECT_FALSE(form16().ScanLabel.bold());
    EXPECT_TRUE(form16().ProcData.isVisible());
    EXPECT_EQ(form16().ProcData.caption(), "003 / 003 1 Invalid Line");
    form16().hide();
}

// ---- failures -------------------------------------------------------------------------

TEST_F(ProcessData, FaultsReachTheHandlerWhichClosesTheSession)
{
    struct Row {
        const char* legend;
        std::function<void()> run;
        const char* error;
        long outcount;   // lines made before the fault stay
    } rows[] = {
        {"missing raw file",
         [this] {
             g().scannertype = 1;
             run(false, 1);
         },
         "53 File not found @ line 2", 0},
        {"index past the table", [this] { runopl(std::vector<std::string>(1000, plain), false, 1001); },
         "9 Subscript out of range @ line 4", 1000},
        {"raw file longer than the table", [this] { runopl(std::vector<std::string>(1001, plain), false, 2); },
         "9 Subscript out of range @ line 2", 0},
        {"records past the table",
         [this] { runrecords(std::vector<std::string>(1000, record("001123456789")), false, 3, 1001); },
         "9 Subscript out of range @ line 4", 1000},
        {"empty record", [this] { runrecords({""}, false); }, "5 Invalid procedure call or argument @ line 12", 0},
    };
    int closed = 0;
    setsessioncloser([&] { ++closed; });
    for (const auto& r : rows) {
        SCOPED_TRACE(r.legend);
        dialogs::cleartranscript();
        g().pressedop = 3;
        r.run();
        ASSERT_EQ(dialogs::transcript().size(), 1u);
        const auto& box = dialogs::transcript()[0];
        EXPECT_EQ(box.title, "Error While Processing Data");
        EXPECT_EQ(box.text, std::string("An unexpected error had occured while attempting to process the data from the "
                                        "scanner! Error : ") + r.error);
        EXPECT_EQ(box.flags, vbExclamation);
        EXPECT_EQ(loglines().back(), std::string("processdata: Unexpected error. Error : ") + r.error);
        EXPECT_EQ(g().runmode, 0);
        EXPECT_EQ(g().pressedop, 0);
        EXPECT_EQ(g().outcount, r.outcount);
    }
    setsessioncloser(nullptr);
    EXPECT_EQ(closed, (int)std::size(rows));
}

// ---- records ---------------------------------------------------------------------------

struct OneRecord {
    const char* legend;
    std::string record;
    const char* normaltext;
    const char* outline;
};

const OneRecord onerecords[] = {
    {"valid", record("003123456789XYZ"), "03 12 345678 At 14:30 25-Mar-08", "0312345678200803251430"},
    {"test: 99 at barcode 4-5", record("001993456789"), "01 99 345678 At 14:30 25-Mar-08 TEST", ""},
    {"type 80 is not known here", record("080123456789"), "00 12 345678 At 14:30 25-Mar-08", "0012345678200803251430"},
    {"letter among the first twelve", record("0011234A6789"), "Invalid Line (0011234A6789)", ""},
    {"any byte past position 14", record("001123456789-/ "), "01 12 345678 At 14:30 25-Mar-08",
     "0112345678200803251430"},
    // Eleven characters: the field is whole, but position 14 is a stamp byte.
    {"eleven characters, stamp byte not a digit", record("00112345678"), "Invalid Line (00112345678)", ""},
    {"eleven characters, stamp byte a digit", record("00112345678", "1\xE7\x64\xC8"), "01 12 345678 At 14:30 25-Mar-08",
     "0112345678200803251430"},
    {"field short of eight", record("0011234567", "1111"), "Invalid Line (0011234567)", ""},
    {"all-zero stamp", record("001123456789", std::string(4, '\0')), "01 12 345678 At 00:00 00--00",
     "0112345678200000000000"},
};

TEST_F(ProcessData, EachRecordForm)
{
    for (const auto& r : onerecords) {
        SCOPED_TRACE(r.legend);
        runrecords({r.record}, false);
        ASSERT_GE(seen.size(), 2u);
        EXPECT_EQ(seen[1], std::string("M: ") + r.normaltext);
        EXPECT_EQ(g().outcount, *r.outline ? 1 : 0);
        if (*r.outline) { EXPECT_EQ(g().outlines[1], r.outline); }
    }
}

TEST_F(ProcessData, RecordsInRepairRunning)
{
    g().reviewlines.clear();
    runrecords({record("003123456789"), record("001993456789"), record("00A")}, true, 2);
    EXPECT_EQ(seen, (std::vector<std::string>{"M: Processing Data", "R: 03 12 345678 At 14:30 25-Mar-08",
                                              "R: 01 99 345678 At 14:30 25-Mar-08", "R: Invalid Line (00A)"}));
    EXPECT_EQ(review(3), (std::vector<std::string>{"", "0312345678200803251430", "0199345678200803251430",
                                                   "Invalid Line (00A)"}));
}

TEST_F(ProcessData, ACodeTwoFiftyFiveByteInAStampIsDeletedWithoutAReport)
{
    // The byte goes, the later ones move up: the stamp is read one byte further on.
    std::string r = record("001123456789", "\x15\xE7\xFF\x64") + "\xC8";
    runrecords({r}, false);
    EXPECT_EQ(seen[1], "M: 01 12 345678 At 14:30 25-Mar-08");
    EXPECT_EQ(seen.size(), 3u);
    EXPECT_EQ(dialogs::transcript().size(), 0u);
}

}  // namespace
