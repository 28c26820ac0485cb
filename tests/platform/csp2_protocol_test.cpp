// CSP framing: one table of byte strings seen on the line, each with its legend.
#include <gtest/gtest.h>

#include <sstream>

#include "platform/crc16.h"
#include "platform/csp2_protocol.h"
#include "support/hex.h"

namespace {

using csp::Bytes;

// Replies in the published shape: a status byte, STX, fixed data, length-prefixed strings.
const char* interrogaterep = "06 02 01 00 00 00 00 00 10 02 03 04 52 42 42 56 30 31 30 34 00 D5 19";
const char* gettimerep = "06 02 06 05 1E 0E 19 03 18 00 8E 34";
const char* getparamrep =
    "06 02 21 26 30 30 30 31 32 33 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 00 FB 2F";
const char* padvalue = "26 30 30 30 31 32 33 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20";

struct ReplyCase {
    const char* legend;
    std::string hex;
    uint8_t command;
    csp::ReplyHead head;
    csp::Scan::State state;
    const char* fixed;    // hex of the fixed data when complete
    const char* strings;  // hex of each string, " | " between them
    size_t skipped;
    bool shortlengths = false;
};

const auto S = csp::ReplyHead::status;
const auto E = csp::ReplyHead::echo;

const ReplyCase replies[] = {
    {"interrogate: protocol, system status, serial, version as fixed data", interrogaterep, 0x01, S,
     csp::Scan::complete, "01 00 00 00 00 00 10 02 03 04 52 42 42 56 30 31 30 34", "", 0},
    {"interrogate: low battery is still an answer",
     "06 02 01 16 00 00 00 00 10 02 03 04 52 42 42 56 30 31 30 34 00 99 FD", 0x01, S, csp::Scan::complete,
     "01 16 00 00 00 00 10 02 03 04 52 42 42 56 30 31 30 34", "", 0},
    {"interrogate with the command echoed",
     "01 02 01 00 00 00 00 00 10 02 03 04 52 42 42 56 30 31 30 34 00 62 6F", 0x01, E, csp::Scan::complete,
     "01 00 00 00 00 00 10 02 03 04 52 42 42 56 30 31 30 34", "", 0},
    {"clear data: no strings", "06 02 00 5E 6F", 0x02, S, csp::Scan::complete, "", "", 0},
    {"get parameter 38: one full-byte string of 33", getparamrep, 0x08, S, csp::Scan::complete, "", padvalue, 0},
    {"two parameters, two strings", "06 02 02 4F 01 03 26 41 42 00 B7 67", 0x08, S, csp::Scan::complete, "",
     "4F 01 | 26 41 42", 0},
    {"set parameter 38: number and value back", "06 02 0B 26 30 30 30 31 32 33 20 20 20 20 00 97 44", 0x03, S,
     csp::Scan::complete, "", "26 30 30 30 31 32 33 20 20 20 20", 0},
    {"get time", gettimerep, 0x0A, S, csp::Scan::complete, "", "05 1E 0E 19 03 18", 0},
    {"leading garbage, one byte a status without STX", std::string("FF 06 55 ") + gettimerep, 0x0A, S,
     csp::Scan::complete, "", "05 1E 0E 19 03 18", 3},
    {"leading wake-up NULs", std::string("00 00 ") + gettimerep, 0x0A, S, csp::Scan::complete, "",
     "05 1E 0E 19 03 18", 2},
    {"bad CRC", "06 02 06 05 1E 0E 19 03 18 00 8E 35", 0x0A, S, csp::Scan::badcrc, "", "", 0},
    {"truncated before the CRC", "06 02 06 05 1E 0E 19 03 18 00", 0x0A, S, csp::Scan::needmore, "", "", 0},
    {"truncated inside the fixed data", "06 02 01 00 00", 0x01, S, csp::Scan::needmore, "", "", 0},
    {"status 5: unsupported", "05 02 00 5E 9F", 0x0A, S, csp::Scan::refused, "", "", 0},
    {"status 9 to an interrogate carries no fixed data", "09 02 00 5D 5F", 0x01, S, csp::Scan::refused, "", "", 0},
    {"status 7 with a bad CRC", "07 02 00 9E 3F", 0x0A, S, csp::Scan::badcrc, "", "", 0},
    {"under echo heads a status byte is garbage", "06 02 00 5E 6F", 0x02, E, csp::Scan::needmore, "", "", 5},
    {"under echo heads a reply to another command is garbage", "0A 02 06 05 1E 0E 19 03 18 00 B1 F4", 0x09, E,
     csp::Scan::needmore, "", "", 12},
    {"short lengths: the scratch pad cut to 31 bytes",
     "06 02 1F 26 30 30 30 31 32 33 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 00 20 56",
     0x08, S, csp::Scan::complete, "", "26 30 30 30 31 32 33 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20 20",
     0, true},
};

TEST(CspFramer, Replies)
{
    for (const auto& c : replies) {
        SCOPED_TRACE(c.legend);
        Bytes b = hexbytes(c.hex);
        csp::Quirks q;
        q.replyhead = c.head;
        q.extendedlength = !c.shortlengths;
        csp::Scan s = csp::scanreply(b.data(), b.size(), c.command, q);
        EXPECT_EQ(s.state, c.state);
        EXPECT_EQ(s.skipped, c.skipped);
        if (c.state == csp::Scan::complete) {
            EXPECT_EQ(hexof(s.fixed), c.fixed);
            std::string strings;
            for (const auto& str : s.strings) strings += (strings.empty() ? "" : " | ") + hexof(str);
            EXPECT_EQ(strings, c.strings);
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
    EXPECT_EQ(s.need, 1u);  // the first length byte
    s = csp::scanreply(b.data(), 9, 0x0A);
    EXPECT_EQ(s.need, 1u);  // the closing zero
    s = csp::scanreply(b.data(), 10, 0x0A);
    EXPECT_EQ(s.need, 2u);  // the CRC
    b = hexbytes(interrogaterep);
    s = csp::scanreply(b.data(), 2, 0x01);
    EXPECT_EQ(s.need, 19u) << "the fixed data and the closing zero";
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
    {"unknown command byte skipped", "0B 02 0A 02 00 5D AF", csp::Scan::complete, 0x0A, 2},
    {"two strings", "03 02 02 26 41 02 4F 00 00 80 48", csp::Scan::complete, 0x03, 0},
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

TEST(CspFramer, ShortLengthsInARequest)
{
    csp::Quirks q;
    q.extendedlength = false;
    Bytes b = hexbytes("08 02 21 26");
    EXPECT_EQ(csp::scanrequest(b.data(), b.size(), q).state, csp::Scan::badframe) << "top bits set";
    b = hexbytes("03 02 0B 26 30 30 30 31 32 33 20 20 20 20 00 94 81");
    EXPECT_EQ(csp::scanrequest(b.data(), b.size(), q).state, csp::Scan::complete);
}

TEST(CspFramer, FramesBuiltMatchTheLine)
{
    EXPECT_EQ(hexof(csp::frame(0x01, {})), "01 02 00 9F DE");
    EXPECT_EQ(hexof(csp::frame(0x09, {5, 30, 14, 25, 3, 24})), "09 02 06 05 1E 0E 19 03 18 00 BE 04");
    EXPECT_EQ(hexof(csp::frame(0x03, {}, {{0x26, 'A'}, {0x4F, 0}})), "03 02 02 26 41 02 4F 00 00 80 48");
    Bytes pad{0x26, '0', '0', '0', '1', '2', '3'};
    pad.resize(33, ' ');
    EXPECT_EQ(hexof(csp::frame(0x06, pad)), getparamrep);
    csp::Identity id{1, 0, {0, 0, 0, 0, 0x10, 2, 3, 4}, "RBBV0104"};
    EXPECT_EQ(hexof(csp::frame(0x06, csp::identitypayload(id), {})), interrogaterep);
    uint8_t check[] = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(crc16(check, 9), 0xB4C8);
}

csp::Quirks echohead()
{
    csp::Quirks q;
    q.replyhead = csp::ReplyHead::echo;
    return q;
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
    // The link carries it as it came; the processing refuses its line and the scanner keeps it.
    {"record shorter than its stamp",
     hexof(csp::uploadreply(hexbytes("00 00 00 00 10 02 03 04"), {hexbytes("04 01 00 00 00")}, echohead())),
     csp::ReplyHead::echo, csp::UploadReader::done, {"04 01 00 00 00"}},
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
    csp::Quirks echo;
    echo.replyhead = csp::ReplyHead::echo;
    EXPECT_EQ(hexof(csp::uploadreply(serial, {r1, r2}, echo)), uploadtwo);
    EXPECT_EQ(hexof(csp::uploadreply(serial, {r1, r2})),
              "06 02 00 00 00 00 10 02 03 04 10 01 30 30 31 31 32 33 34 35 36 37 38 15 E7 64 C8 "
              "0A 03 30 30 32 31 32 FF FF FF FF 00 0B B0");
}

TEST(CspStamp, PacksFieldsFromTheTop)
{
    // 14:30:05 on 25 March of year 08.
    EXPECT_EQ(hexof(csp::packstamp({5, 30, 14, 25, 3, 8})), "15 E7 64 C8");
    EXPECT_EQ(hexof(csp::packstamp({63, 63, 31, 31, 15, 63})), "FF FF FF FF");
    EXPECT_EQ(hexof(csp::packstamp({0, 0, 0, 0, 0, 0})), "00 00 00 00");
}

}  // namespace
