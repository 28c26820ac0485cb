// CSP framing: one table of byte strings seen on the line, each with its legend.
#include <gtest/gtest.h>

#include <sstream>

#include "platform/crc16.h"
#include "platform/csp2_protocol.h"
#include "support/hex.h"

namespace {

using csp::Bytes;

const char* interrogaterep = "01 02 11 00 00 00 00 00 10 02 03 04 52 42 42 56 30 31 30 34 00 A1 AB";
const char* gettimerep = "0A 02 06 05 1E 0E 19 03 18 00 B1 F4";
const char* getparamrep =
    "08 02 21 26 30 30 30 31 32 33 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 00 9B 8D";

struct ReplyCase {
    const char* legend;
    std::string hex;
    uint8_t command;
    csp::ReplyHead head;
    csp::Scan::State state;
    const char* payload;  // hex of the payload when complete
    size_t skipped;
};

const ReplyCase replies[] = {
    {"interrogate: status, serial, version", interrogaterep, 0x01, csp::ReplyHead::echo, csp::Scan::complete,
     "00 00 00 00 00 10 02 03 04 52 42 42 56 30 31 30 34", 0},
    {"clear data: zero-length payload, no pad", "02 02 00 9F 2E", 0x02, csp::ReplyHead::echo, csp::Scan::complete, "", 0},
    {"power down: zero-length payload, no pad", "05 02 00 5E 9F", 0x05, csp::ReplyHead::echo, csp::Scan::complete, "", 0},
    {"set parameter 38: echo of number and value",
     "03 02 0B 26 30 30 30 31 32 33 20 20 20 20 00 94 81", 0x03, csp::ReplyHead::echo, csp::Scan::complete,
     "26 30 30 30 31 32 33 20 20 20 20", 0},
    {"get parameter 38: 33 bytes by extended length 0x21", getparamrep, 0x08, csp::ReplyHead::echo, csp::Scan::complete,
     "26 30 30 30 31 32 33 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20", 0},
    {"set time: the clock bytes back", "09 02 06 05 1E 0E 19 03 18 00 BE 04", 0x09, csp::ReplyHead::echo,
     csp::Scan::complete, "05 1E 0E 19 03 18", 0},
    {"get time", gettimerep, 0x0A, csp::ReplyHead::echo, csp::Scan::complete, "05 1E 0E 19 03 18", 0},
    {"leading garbage, one byte the command without STX", std::string("FF 0A 55 ") + gettimerep, 0x0A,
     csp::ReplyHead::echo, csp::Scan::complete, "05 1E 0E 19 03 18", 3},
    {"leading wake-up NULs", std::string("00 00 ") + gettimerep, 0x0A, csp::ReplyHead::echo, csp::Scan::complete,
     "05 1E 0E 19 03 18", 2},
    {"bad CRC", "0A 02 06 05 1E 0E 19 03 18 00 B1 F5", 0x0A, csp::ReplyHead::echo, csp::Scan::badcrc, "", 0},
    {"zero-length payload with a stray pad byte", "02 02 00 00 9F 2E", 0x02, csp::ReplyHead::echo, csp::Scan::badcrc,
     "", 0},
    {"truncated before the CRC", "0A 02 06 05 1E 0E 19 03 18 00", 0x0A, csp::ReplyHead::echo, csp::Scan::needmore, "",
     0},
    {"truncated inside the header", "0A 02", 0x0A, csp::ReplyHead::echo, csp::Scan::needmore, "", 0},
    {"a reply to another command is not taken", interrogaterep, 0x0A, csp::ReplyHead::echo, csp::Scan::needmore, "",
     23},
    {"status head: OK", "06 02 06 05 1E 0E 19 03 18 00 8E 34", 0x0A, csp::ReplyHead::status, csp::Scan::complete,
     "05 1E 0E 19 03 18", 0},
    {"status head: unsupported", "05 02 00 5E 9F", 0x0A, csp::ReplyHead::status, csp::Scan::refused, "", 0},
    {"status head: an echo is garbage", gettimerep, 0x0A, csp::ReplyHead::status, csp::Scan::needmore, "", 12},
};

TEST(CspFramer, Replies)
{
    for (const auto& c : replies) {
        SCOPED_TRACE(c.legend);
        Bytes b = hexbytes(c.hex);
        csp::Quirks q;
        q.replyhead = c.head;
        csp::Scan s = csp::scanreply(b.data(), b.size(), c.command, q);
        EXPECT_EQ(s.state, c.state);
        EXPECT_EQ(s.skipped, c.skipped);
        if (c.state == csp::Scan::complete) {
            EXPECT_EQ(hexof(s.payload), c.payload);
            EXPECT_EQ(s.used, b.size());
        }
        if (c.state == csp::Scan::needmore) {
            EXPECT_GT(s.need, 0u);
        }
    }
}

TEST(CspFramer, TruncatedReplyAsksForTheRest)
{
    Bytes b = hexbytes(gettimerep);
    csp::Scan s = csp::scanreply(b.data(), 2, 0x0A);
    EXPECT_EQ(s.need, 1u);  // the length byte
    s = csp::scanreply(b.data(), 9, 0x0A);
    EXPECT_EQ(s.need, 3u);  // pad and CRC
}

struct RequestCase {
    const char* legend;
    const char* hex;
    csp::Scan::State state;
    uint8_t command;
    size_t skipped;
};

const RequestCase requests[] = {
    {"interrogate", "01 02 00 9F DE", csp::Scan::complete, 0x01, 0},
    {"clear data", "02 02 00 9F 2E", csp::Scan::complete, 0x02, 0},
    {"set parameter", "03 02 0B 26 30 30 30 31 32 33 20 20 20 20 00 94 81", csp::Scan::complete, 0x03, 0},
    {"power down", "05 02 00 5E 9F", csp::Scan::complete, 0x05, 0},
    {"upload", "07 02 00 9E 3E", csp::Scan::complete, 0x07, 0},
    {"get parameter", "08 02 01 26 00 26 70", csp::Scan::complete, 0x08, 0},
    {"set time", "09 02 06 05 1E 0E 19 03 18 00 BE 04", csp::Scan::complete, 0x09, 0},
    {"get time", "0A 02 00 5D AF", csp::Scan::complete, 0x0A, 0},
    {"wake-up NUL before the command", "00 0A 02 00 5D AF", csp::Scan::complete, 0x0A, 1},
    {"unknown command byte skipped", "04 02 0A 02 00 5D AF", csp::Scan::complete, 0x0A, 2},
    {"length with top bits set in a request", "08 02 21 26", csp::Scan::badframe, 0x08, 0},
    {"bad CRC", "0A 02 00 5D AE", csp::Scan::badcrc, 0x0A, 0},
};

TEST(CspFramer, Requests)
{
    for (const auto& c : requests) {
        SCOPED_TRACE(c.legend);
        Bytes b = hexbytes(c.hex);
        csp::Scan s = csp::scanrequest(b.data(), b.size());
        EXPECT_EQ(s.state, c.state);
        EXPECT_EQ(s.skipped, c.skipped);
        if (c.state == csp::Scan::complete) {
            EXPECT_EQ(s.head, c.command);
        }
    }
}

TEST(CspFramer, FramesBuiltMatchTheLine)
{
    EXPECT_EQ(hexof(csp::frame(0x0A, {})), "0A 02 00 5D AF");
    EXPECT_EQ(hexof(csp::frame(0x09, {5, 30, 14, 25, 3, 24})), "09 02 06 05 1E 0E 19 03 18 00 BE 04");
    Bytes pad{0x26, '0', '0', '0', '1', '2', '3'};
    pad.resize(33, ' ');
    EXPECT_EQ(hexof(csp::frame(0x08, pad)), getparamrep);
    uint8_t check[] = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(crc16(check, 9), 0xB4C8);
}

struct UploadCase {
    const char* legend;
    std::string hex;
    csp::ReplyHead head;
    csp::UploadReader::State state;
    std::vector<std::string> records;
};

const char* uploadtwo =
    "07 02 00 00 00 00 10 02 03 04 10 01 30 30 31 31 32 33 34 35 36 37 38 15 E7 64 C8 "
    "0A 03 30 30 32 31 32 FF FF FF FF 00 A7 B8";

const UploadCase uploads[] = {
    {"two records, the second with stamp bytes of 0xFF", uploadtwo, csp::ReplyHead::echo, csp::UploadReader::done,
     {"10 01 30 30 31 31 32 33 34 35 36 37 38 15 E7 64 C8", "0A 03 30 30 32 31 32 FF FF FF FF"}},
    {"no records", "07 02 00 00 00 00 10 02 03 04 00 1E 70", csp::ReplyHead::echo, csp::UploadReader::done, {}},
    {"leading garbage", std::string("55 07 00 ") + uploadtwo, csp::ReplyHead::echo, csp::UploadReader::done,
     {"10 01 30 30 31 31 32 33 34 35 36 37 38 15 E7 64 C8", "0A 03 30 30 32 31 32 FF FF FF FF"}},
    {"status head", "06 02 00 00 00 00 10 02 03 04 10 01 30 30 31 31 32 33 34 35 36 37 38 15 E7 64 C8 00 3C AD",
     csp::ReplyHead::status, csp::UploadReader::done, {"10 01 30 30 31 31 32 33 34 35 36 37 38 15 E7 64 C8"}},
    {"status head: refused", "09 02 00", csp::ReplyHead::status, csp::UploadReader::refused, {}},
    {"bad CRC", "07 02 00 00 00 00 10 02 03 04 00 1E 71", csp::ReplyHead::echo, csp::UploadReader::badcrc, {}},
    {"record shorter than its stamp", "07 02 00 00 00 00 10 02 03 04 04 01 00 00 00", csp::ReplyHead::echo,
     csp::UploadReader::badframe, {}},
    {"truncated in a record", "07 02 00 00 00 00 10 02 03 04 10 01 30 30", csp::ReplyHead::echo,
     csp::UploadReader::reading, {}},
};

TEST(CspFramer, UploadReplies)
{
    for (const auto& c : uploads) {
        SCOPED_TRACE(c.legend);
        Bytes b = hexbytes(c.hex);
        csp::Quirks q;
        q.replyhead = c.head;
        // Fed as a reader on a line does: exactly what it asks for, while it asks.
        csp::UploadReader r(q);
        size_t at = 0;
        while (r.state() == csp::UploadReader::reading && at < b.size()) {
            size_t n = std::min(r.need(), b.size() - at);
            ASSERT_GT(n, 0u);
            r.feed(b.data() + at, n);
            at += n;
        }
        EXPECT_EQ(r.state(), c.state);
        if (c.state == csp::UploadReader::done) {
            EXPECT_EQ(at, b.size()) << "took bytes past the reply";
            ASSERT_EQ(r.records().size(), c.records.size());
            for (size_t i = 0; i < c.records.size(); ++i) EXPECT_EQ(hexof(r.records()[i]), c.records[i]);
            EXPECT_EQ(hexof(r.serial()), "00 00 00 00 10 02 03 04");
        }
        if (c.state == csp::UploadReader::reading) {
            EXPECT_GT(r.need(), 0u);
        }
    }
}

TEST(CspFramer, UploadReplyBuiltMatchesTheLine)
{
    Bytes serial{0, 0, 0, 0, 0x10, 2, 3, 4};
    Bytes r1 = csp::makerecord(0x01, "00112345678", {5, 30, 14, 25, 3, 8});
    Bytes r2 = hexbytes("0A 03 30 30 32 31 32 FF FF FF FF");
    EXPECT_EQ(hexof(csp::uploadreply(serial, {r1, r2})), uploadtwo);
}

TEST(CspStamp, PacksFieldsFromTheTop)
{
    // 14:30:05 on 25 March of year 08.
    EXPECT_EQ(hexof(csp::packstamp({5, 30, 14, 25, 3, 8})), "15 E7 64 C8");
    EXPECT_EQ(hexof(csp::packstamp({63, 63, 31, 31, 15, 63})), "FF FF FF FF");
    EXPECT_EQ(hexof(csp::packstamp({0, 0, 0, 0, 0, 0})), "00 00 00 00");
}

}  // namespace
