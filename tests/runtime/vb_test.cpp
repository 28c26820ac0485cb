#include <QDateTime>
#include <functional>
#include <gtest/gtest.h>

#include "runtime/vb.h"

namespace {

int faultof(const std::function<void()>& f)
{
    try {
        f();
    } catch (const Fault& e) {
        return e.number;
    }
    return 0;
}

TEST(Strings, PositionsCountFromOneAndClampAtTheEnds)
{
    EXPECT_EQ(Mid("ABCDEF", 3, 2), "CD");
    EXPECT_EQ(Mid("ABCDEF", 5), "EF");
    EXPECT_EQ(Mid("ABC", 7, 2), "");
    EXPECT_EQ(Left("ABC", 9), "ABC");
    EXPECT_EQ(Right("ABC", 2), "BC");
    EXPECT_EQ(InStr("C:\\X#12#", "#"), 5);
    EXPECT_EQ(InStr(6, "C:\\X#12#", "#"), 8);
    EXPECT_EQ(InStr("abc", "#"), 0);
    EXPECT_EQ(faultof([] { Mid("ABC", 0, 1); }), 5);
    EXPECT_EQ(faultof([] { Left("ABC", -1); }), 5);
    EXPECT_EQ(faultof([] { Asc(""); }), 5);
}

TEST(Strings, LikeMatchesTheClassicWildCards)
{
    EXPECT_TRUE(Like("Form1 - VexalTag", "*VexalTag*"));
    EXPECT_TRUE(Like("ThunderRT6Main", "Thunder*"));
    EXPECT_FALSE(Like("thunder", "Thunder*"));
    EXPECT_TRUE(Like("BAR007.INI", "BAR###.INI"));
    EXPECT_FALSE(Like("BAR0A7.INI", "BAR###.INI"));
    EXPECT_TRUE(Like("ab", "a?"));
}

TEST(Numbers, ValReadsTheLeadingNumberOnly)
{
    EXPECT_EQ(Val("12abc"), 12);
    EXPECT_EQ(Val(" 1 2 3"), 123);
    EXPECT_EQ(Val("C:\\Program"), 0);
    EXPECT_EQ(Val("&HFF"), 255);
    EXPECT_EQ(Val("-3.5x"), -3.5);
    EXPECT_EQ(Val(""), 0);
}

TEST(Numbers, CheckedConversionsRaiseTypeMismatchAndOverflow)
{
    EXPECT_EQ(CInt("42"), 42);
    EXPECT_EQ(CInt(" 7 "), 7);
    EXPECT_EQ(CInt(2.5), 2);   // halves go to even
    EXPECT_EQ(CInt(3.5), 4);
    EXPECT_EQ(faultof([] { CInt("C"); }), 13);
    EXPECT_EQ(faultof([] { CInt(""); }), 13);
    EXPECT_EQ(faultof([] { CInt("40000"); }), 6);
    EXPECT_EQ(CLng("40000"), 40000);
    EXPECT_TRUE(IsNumeric(" 12 "));
    EXPECT_FALSE(IsNumeric("12a"));
    // A fixed buffer's text ends at its NUL, whatever stands after it.
    EXPECT_EQ(CInt(std::string("15\0#x", 5)), 15);
    EXPECT_TRUE(IsNumeric(std::string("7\0.0.0", 6)));
    EXPECT_EQ(faultof([] { CInt(std::string("\0" "12", 3)); }), 13);
}

TEST(Numbers, SixteenBitArithmeticOverflowsWithSix)
{
    Int16 n = 32766;
    ++n;
    EXPECT_EQ(n, 32767);
    EXPECT_EQ(faultof([&] { ++n; }), 6);
    EXPECT_EQ(n, 32767);  // the failed step leaves the value
    Int16 m;
    EXPECT_EQ(faultof([&] { m = n * 2; }), 6);
    Int32 big = 2000000000;
    EXPECT_EQ(faultof([&] { big += 2000000000; }), 6);
}

TEST(Arrays, IndexOutsideTheBoundsRaisesSubscript)
{
    FixedArray<std::string, 0, 1000> lines;
    lines[1000] = "last";
    EXPECT_EQ(lines[1000], "last");
    EXPECT_EQ(faultof([&] { lines[1001] = "x"; }), 9);
    EXPECT_EQ(faultof([&] { (void)lines[-1]; }), 9);
    FixedArray<int, 1, 3> used;
    EXPECT_EQ(faultof([&] { used[0] = 1; }), 9);
}

TEST(Format, NumbersAndDatesByPattern)
{
    EXPECT_EQ(Format(7, "000"), "007");
    EXPECT_EQ(Format(1234, "000"), "1234");
    EXPECT_EQ(Format(5, "00"), "05");
    EXPECT_EQ(Format(42, "000000"), "000042");
    QDateTime t(QDate(2007, 3, 9), QTime(14, 5, 7));
    EXPECT_EQ(Format(t, "DD/MM/YYYY"), "09/03/2007");
    EXPECT_EQ(Format(t, "HHMM"), "1405");
    EXPECT_EQ(Format(t, "DDMMYY"), "090307");
    EXPECT_EQ(Format(t, "DDMMYYYY"), "09032007");
    EXPECT_EQ(Format(t, "YYYYMMDD"), "20070309");
    EXPECT_EQ(Format(t, "hh:nn:ss"), "14:05:07");
}

TEST(Faults, CarryTheClassicDescriptions)
{
    EXPECT_EQ(Fault::of(53).description, "File not found");
    EXPECT_EQ(Fault::of(76).description, "Path not found");
    EXPECT_EQ(Fault::of(62).description, "Input past end of file");
    EXPECT_EQ(Fault::of(9).description, "Subscript out of range");
}

}  // namespace
