// OPL link framing: one table of byte strings seen on the line, each with its legend.
#include <gtest/gtest.h>

#include <sstream>

#include "platform/opl_protocol.h"
#include "support/hex.h"

namespace {

using opl::Bytes;

const std::string readclockreq = "01 63 00 00 39 0E";
const std::string readclockrep = "01 E3 00 14 00 33 31 2F 31 32 2F 32 30 32 34 20 32 33 3A 35 39 3A 35 38 F7 35";
const std::string record0 =
    "01 F2 00 1A 00 00 00 00 30 31 31 32 33 34 35 36 37 38 2C 32 35 31 32 32 34 2C 30 38 33 30 21 34";
const std::string endframe = "01 FA 00 04 00 00 00 02 36 54";

struct Case {
    const char* legend;
    std::string hex;
    std::vector<std::pair<uint8_t, std::string>> frames;  // command, payload hex
    size_t garbage;
    size_t badframes;
};

const Case cases[] = {
    {"read clock request: no payload", readclockreq, {{'c', ""}}, 0, 0},
    {"read clock reply",
     readclockrep,
     {{0xE3, "00 33 31 2F 31 32 2F 32 30 32 34 20 32 33 3A 35 39 3A 35 38"}},
     0,
     0},
    {"write clock request", "01 43 00 13 30 31 2F 30 32 2F 32 30 32 35 20 30 38 3A 30 30 3A 30 30 CD C3",
     {{'C', "30 31 2F 30 32 2F 32 30 32 35 20 30 38 3A 30 30 3A 30 30"}}, 0, 0},
    {"write clock refused", "01 C3 00 01 04 28 DA", {{0xC3, "04"}}, 0, 0},
    {"read ID request and reply (123)", "01 69 00 00 3B 2E 01 E9 00 03 00 00 7B A1 A2",
     {{'i', ""}, {0xE9, "00 00 7B"}}, 0, 0},
    {"write ID request (456)", "01 49 00 02 01 C8 3D 82", {{'I', "01 C8"}}, 0, 0},
    {"line count reply (2)", "01 EE 00 05 00 00 00 00 02 CF F6", {{0xEE, "00 00 00 00 02"}}, 0, 0},
    {"battery reply (85%)", "01 E2 00 05 00 30 38 35 25 1D 2F", {{0xE2, "00 30 38 35 25"}}, 0, 0},
    {"download: reply, a line, the end",
     "01 E4 00 05 00 00 00 00 02 B0 76 " + record0 + " " + endframe,
     {{0xE4, "00 00 00 00 02"},
      {0xF2, "00 00 00 00 30 31 31 32 33 34 35 36 37 38 2C 32 35 31 32 32 34 2C 30 38 33 30"},
      {0xFA, "00 00 00 02"}},
     0,
     0},
    {"clear request", "01 78 00 00 3E 7E", {{'x', ""}}, 0, 0},
    {"versions reply", "01 F6 00 0E 00 4F 53 31 2E 32 30 00 56 58 32 2E 30 35 31 9A",
     {{0xF6, "00 4F 53 31 2E 32 30 00 56 58 32 2E 30 35"}}, 0, 0},
    {"progress and finish of a long operation", "01 F0 00 02 02 32 55 9F 01 E6 00 01 00 E7 D0",
     {{0xF0, "02 32"}, {0xE6, "00"}}, 0, 0},
    {"NAK", "01 FF 00 01 01 7B 16", {{0xFF, "01"}}, 0, 0},
    {"leading garbage", "55 AA 00 " + readclockreq, {{'c', ""}}, 3, 0},
    {"bad CRC, then a good frame", "01 63 00 00 39 0F " + readclockreq, {{'c', ""}}, 5, 1},
    {"an SOH in garbage with an impossible length", "01 63 FF FF " + readclockreq, {{'c', ""}}, 3, 1},
    {"truncated", "01 E3 00 14 00 33 31", {}, 0, 0},
};

TEST(OplFramer, Table)
{
    for (const auto& c : cases) {
        SCOPED_TRACE(c.legend);
        Bytes b = hexbytes(c.hex);
        // Whole, and one byte at a time: the same frames either way.
        for (bool bytewise : {false, true}) {
            opl::Framer fr;
            std::vector<opl::Frame> got;
            opl::Frame f;
            if (bytewise) {
                for (uint8_t x : b) {
                    fr.feed(&x, 1);
                    while (fr.next(f)) got.push_back(f);
                }
            } else {
                fr.feed(b.data(), b.size());
                while (fr.next(f)) got.push_back(f);
            }
            ASSERT_EQ(got.size(), c.frames.size());
            for (size_t i = 0; i < got.size(); ++i) {
                EXPECT_EQ(got[i].command, c.frames[i].first);
                EXPECT_EQ(hexof(got[i].payload), c.frames[i].second);
            }
            EXPECT_EQ(fr.garbage(), c.garbage);
            EXPECT_EQ(fr.badframes(), c.badframes);
        }
    }
}

TEST(OplFramer, NeedCountsTheRestOfTheFrame)
{
    Bytes b = hexbytes(readclockrep);
    opl::Framer fr;
    EXPECT_EQ(fr.need(), 4u);
    fr.feed(b.data(), 2);
    EXPECT_EQ(fr.need(), 2u);
    fr.feed(b.data() + 2, 2);
    EXPECT_EQ(fr.need(), b.size() - 4);
    fr.reset();
    EXPECT_EQ(fr.garbage(), 4u) << "a part-frame dropped counts as stray bytes";
}

TEST(OplFramer, EncodeMatchesTheLine)
{
    EXPECT_EQ(hexof(opl::encode('c')), readclockreq);
    EXPECT_EQ(hexof(opl::encode(0xE3, opl::reply(opl::resok, opl::textbytes("31/12/2024 23:59:58")))), readclockrep);
    EXPECT_EQ(hexof(opl::encode(opl::frmend, opl::be32(2))), endframe);
}

TEST(OplPayloads, ClockBatteryVersions)
{
    EXPECT_TRUE(opl::validclock("31/12/2024 23:59:58"));
    EXPECT_TRUE(opl::validclock("01/01/2000 00:00:00"));
    EXPECT_FALSE(opl::validclock("32/12/2024 23:59:58"));
    EXPECT_FALSE(opl::validclock("31/13/2024 23:59:58"));
    EXPECT_FALSE(opl::validclock("31/12/2024 24:00:00"));
    EXPECT_FALSE(opl::validclock("31-12-2024 23:59:58"));
    EXPECT_FALSE(opl::validclock("31/12/24 23:59:58"));
    EXPECT_FALSE(opl::validclock(""));
    EXPECT_EQ(opl::batterytext(5), "005%");
    EXPECT_EQ(opl::batterytext(100), "100%");
    EXPECT_EQ(opl::getbe16(opl::be16(-2), 0), -2);
    std::string os, app;
    ASSERT_TRUE(opl::parseversions(opl::versionsdata("OS1.20", ""), os, app));
    EXPECT_EQ(os, "OS1.20");
    EXPECT_EQ(app, "") << "an erased application";
    EXPECT_FALSE(opl::parseversions(opl::textbytes("OS1.20"), os, app));
}

}  // namespace
