// The raw line forms: kinds, the character and length rules, the date repair, and what the
// forms processdata_test does not run become as a canonical line, a text and a review entry.
#include <gtest/gtest.h>

#include "pipeline/linetexts.h"
#include "pipeline/scanlines.h"
#include "runtime/fault.h"

namespace {

struct OplRow {
    const char* legend;
    std::string line;
    int kind;
    bool bad;
    bool test;
    const char* canonical;
    const char* text;
    const char* review;
};

const OplRow oplrows[] = {
    {"plain test, 99 at 5-6", "0001993456780,120307,1430", 0, false, true, "0199345678200703121430",
     "01 99 345678 At 14:30 12-Mar-07", "0199345678200703121430"},
    {"plain with 99 as its type is no test", "0099123456780,120307,1430", 0, false, false,
     "9912345678200703121430", "99 12 345678 At 14:30 12-Mar-07", "9912345678200703121430"},
    {"long test: 99 at 3-4 is the type's second digit and the field's first",
     "10991234567456,251207,0905", 1, false, true, "0991234567200712250905456",
     "09 91 234567 456  At 09:05 25-Dec-07", "0991234567 456 200712250905"},
    {"long with 99 at the field's start is no test", "10299345678456,120307,1430", 1, false, false,
     "0299345678200703121430456", "02 99 345678 456  At 14:30 12-Mar-07", "0299345678 456 200703121430"},
    {"FR of any length", "0134567", 2, false, false, "0107720034", "01 07 7 At : -- FR - 34", "0107720034"},
    {"month outside 1 to 12 gives nothing between the hyphens", "0001123456780,121307,1430", 0, false, false,
     "0112345678200713121430", "01 12 345678 At 14:30 12--07", "0112345678200713121430"},
    {"plain one short", "0001123456780,120307,143", 0, true, false, "", "", ""},
    {"long one long", "10212345678456,120307,14300", 1, true, false, "", "", ""},
    {"short at 26 is bad", "18012345678000,120307,1430", 1, true, false, "", "", ""},
    {"empty line, kind 0", "", 0, true, false, "", "", ""},
};

TEST(OplLines, FormsCanonicalLinesTextsAndReviews)
{
    for (const auto& r : oplrows) {
        SCOPED_TRACE(r.legend);
        if (!r.line.empty()) { EXPECT_EQ(linekindof(r.line), r.kind); }
        EXPECT_EQ(badlength(r.line, r.kind), r.bad);
        if (r.bad) continue;
        EXPECT_EQ(istestline(r.line, r.kind), r.test);
        EXPECT_EQ(oplcanonical(r.line, r.kind), r.canonical);
        EXPECT_EQ(opltext(r.line, r.kind), r.text);
        EXPECT_EQ(oplreview(r.line, r.kind), r.review);
    }
}

TEST(OplLines, ShortLinesAreMadeLong)
{
    const std::string shortline = "18012345678,120307,1430";
    EXPECT_EQ(linekindof(shortline), 1);
    EXPECT_TRUE(isshortline(shortline));
    EXPECT_FALSE(badlength(shortline, 1));
    EXPECT_EQ(makelong(shortline), "18012345678000,120307,1430");
    EXPECT_TRUE(isshortline("19012345678,120307,1430"));
    EXPECT_FALSE(isshortline("17012345678,120307,1430"));
}

TEST(OplLines, CommasAreAcceptedOnlyWhereTheFormHasThem)
{
    struct Row { const char* legend; std::string line; int kind; long pos; char c; bool ok; } rows[] = {
        {"plain comma 14", "0001123456780,120307,1430", 0, 14, ',', true},
        {"plain comma 21", "0001123456780,120307,1430", 0, 21, ',', true},
        {"plain comma 15", "0001123456780,120307,1430", 0, 15, ',', false},
        {"plain blank 14", "0001123456780,120307,1430", 0, 14, ' ', false},
        {"FR comma 14", "0134567890123,120307,1430", 2, 14, ',', true},
        {"long comma 15", "10212345678456,120307,1430", 1, 15, ',', true},
        {"long comma 22", "10212345678456,120307,1430", 1, 22, ',', true},
        {"long comma 12", "10212345678456,120307,1430", 1, 12, ',', false},
        {"short comma 12", "18012345678,120307,1430", 1, 12, ',', true},
        {"short comma 19", "18012345678,120307,1430", 1, 19, ',', true},
        {"short keeps the long places too", "18012345678,120307,1430", 1, 22, ',', true},
        {"short slash 12", "18012345678,120307,1430", 1, 12, '/', false},
    };
    for (const auto& r : rows) EXPECT_EQ(oplcharok(r.line, r.kind, r.pos, r.c), r.ok) << r.legend;
    for (long pos : {1, 2, 15, 16, 40}) EXPECT_TRUE(recordcharok(pos)) << pos;
    for (long pos : {3, 8, 14}) EXPECT_FALSE(recordcharok(pos)) << pos;
}

TEST(Correction, TheDateOfACodeTwoFiftyFiveLineGoesBackToThePlainForm)
{
    struct Row { const char* legend; std::string in; const char* out; bool corrected; } rows[] = {
        {"slashes, century and colon", "0001123456780,12/03/2007,14:30\xff", "0001123456780,120307,1430", true},
        {"the marker anywhere", "00011\xff" "23456780,12/03/2007,14:30", "0001123456780,120307,1430", true},
        {"only the first marker goes", "0001123456780,120307,1430\xff\xff", "0001123456780,120307,1430\xff", true},
        {"a line without the marker is left alone", "0001123456780,12/03/2007,14:30", "0001123456780,12/03/2007,14:30",
         false},
        {"a year not in the twenties keeps its century", "0001123456780,12/03/1999,14:30\xff",
         "0001123456780,12031999,14:30", true},
        {"a record: the byte goes, later bytes move up", std::string("\x14\x01") + "001123456789" + "\xff" + "ABCD",
         "\x14\x01" "001123456789ABCD", true},
    };
    for (const auto& r : rows) {
        std::string line = r.in;
        EXPECT_EQ(correctline(line), r.corrected) << r.legend;
        EXPECT_EQ(line, r.out) << r.legend;
    }
}

TEST(Records, TypesBeyondTheKnownSixAreZero)
{
    for (auto [code, type] : std::initializer_list<std::pair<const char*, const char*>>{
             {"001x", "01"}, {"006x", "06"}, {"007x", "00"}, {"000x", "00"}, {"080x", "00"}, {"01", "00"}})
        EXPECT_EQ(recordtype(code), type) << code;
}

TEST(Records, ShortBarcodesAndLengthsBelowFive)
{
    EXPECT_FALSE(shortfield("00112345678"));   // 11 characters: field 4-11 is whole
    EXPECT_TRUE(shortfield("0011234567"));
    EXPECT_TRUE(shortfield(""));
    EXPECT_THROW(recordbarcode(std::string("\x04\x01" "ab", 4)), Fault);
    EXPECT_THROW(recordbarcode(""), Fault);
    EXPECT_EQ(recordbarcode(std::string("\x05\x01" "abcd", 6)), "");
}

TEST(LineTexts, MonthNamesAndTheFixedPlaceText)
{
    EXPECT_EQ(monthname("01"), "Jan");
    EXPECT_EQ(monthname("12"), "Dec");
    EXPECT_EQ(monthname("00"), "");
    EXPECT_EQ(monthname("13"), "");
    EXPECT_EQ(monthname(""), "");
    EXPECT_EQ(canonicaltext("0112345678200703121430"), "01 12 345678 At 14:30 12-Mar-07");
    // A long line's review text read at the same places gives wrong digits; so it stands.
    EXPECT_EQ(canonicaltext("0212345678 456 200703121430"), "02 12 345678 At 70:31 00-Feb-56");
    EXPECT_EQ(canonicaltext(""), "   At : --");
}

}  // namespace
