// The packed stamp, byte by byte into bit strings and the bit string into the datecode.
#include <gtest/gtest.h>

#include "pipeline/stamps.h"

namespace {

std::string decode(std::initializer_list<int> bytes)
{
    std::string bits, result;
    for (int b : bytes) {
        Int16 v = b;
        getbin(v, result);
        bits += result;
    }
    bintodate(bits, result);
    return result;
}

TEST(Stamps, GetbinWritesEightBitsAndUsesUpTheValue)
{
    struct Row { int value; const char* bits; int left; } rows[] = {
        {0, "00000000", 0}, {1, "00000001", 0}, {0x15, "00010101", 0}, {0xE7, "11100111", 0},
        {128, "10000000", 0}, {255, "11111111", 0},
        // Above 255 is not expected: the bits saturate and the rest stays in the value.
        {300, "11111111", 45},
    };
    for (const auto& r : rows) {
        Int16 v = r.value;
        std::string result = "stale";
        getbin(v, result);
        EXPECT_EQ(result, r.bits) << r.value;
        EXPECT_EQ(v, r.left) << r.value;
    }
}

TEST(Stamps, BintodateCutsTheSixFields)
{
    struct Row { std::initializer_list<int> bytes; const char* datecode; const char* legend; } rows[] = {
        {{0x15, 0xE7, 0x64, 0xC8}, "053014250308", "14:30:05 on 25 March of year 08"},
        {{0, 0, 0, 0}, "000000000000", "day 0 and month 0 pass"},
        {{255, 255, 255, 255}, "636331311563", "every field at its top"},
        {{0, 0, 3, 0x40}, "000000001300", "month 13 is not checked"},
    };
    for (const auto& r : rows) EXPECT_EQ(decode(r.bytes), r.datecode) << r.legend;
}

TEST(Stamps, TheLastFieldIsTheRightmostSixCharacters)
{
    std::string result;
    // A longer text: the year still comes from its last six characters.
    bintodate(std::string(32, '0') + "000001", result);
    EXPECT_EQ(result.substr(10), "01");
}

}  // namespace
