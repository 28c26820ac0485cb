// CSP framing and parsing as pure functions over byte buffers: no I/O here.
// docs/csp-link.md describes the link as this driver speaks it.
//
// Frames as seen on the line (hex), request then reply, with the status head (ReplyHead::status):
//   interrogate   01 02 00 9F DE            06 02 <proto status serial*8 version*8> 00 <crc>
//   get time      0A 02 00 5D AF            06 02 06 ss mm hh DD MM YY 00 <crc>
//   get parameter 08 02 01 26 00 <crc>      06 02 21 26 <32 bytes> 00 <crc>   (one string of 33)
//   set parameter 03 02 0B 26 <10 bytes> 00 <crc>     06 02 0B 26 <10 bytes> 00 <crc>
//   upload        07 02 00 9E 3E            06 02 <serial*8> {L type barcode*(L-5) stamp*4}... 00 <crc>
//   refused       any                       05|07|08|09 02 00 <crc>
// With ReplyHead::echo the first byte of a reply is the command instead of 06. Fixed data
// stands only in the interrogate reply (18 bytes) and the upload reply (8 bytes of serial).
// Before a command the driver may send NUL bytes to wake a sleeping scanner; the scanner's
// request scanner skips them as bytes that cannot start a frame.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/csp2_constants.h"

namespace csp {

using Bytes = std::vector<uint8_t>;

// A whole frame: head (command, or the status of a reply), STX, fixed data, each string with
// its full length byte, the closing zero, CRC. Strings longer than 250 bytes are cut.
Bytes frame(uint8_t head, const Bytes& fixed, const std::vector<Bytes>& strings);
// A frame with no fixed data and one string (none when `string` is empty).
Bytes frame(uint8_t head, const Bytes& string);

// The result of looking at the front of a receive buffer.
struct Scan {
    enum State { needmore, complete, badcrc, badframe, refused };
    State state = needmore;
    size_t need = 0;      // needmore: at least this many more bytes are wanted
    size_t skipped = 0;   // leading bytes that cannot start the frame
    size_t used = 0;      // complete, badcrc, badframe, refused: bytes up to the end of the frame
    uint8_t head = 0;     // first byte of the frame (command or status)
    Bytes fixed;
    std::vector<Bytes> strings;
    // The first string, or nothing.
    Bytes first() const { return strings.empty() ? Bytes{} : strings.front(); }
};

// Fixed data that a reply to `command` carries before its strings.
size_t fixedsize(uint8_t command);
// A reply to `command`: skips leading bytes that cannot start it. `refused` is a frame whose
// head is a status other than OK (status-head replies only; it carries no fixed data).
Scan scanreply(const uint8_t* buf, size_t n, uint8_t command, const Quirks& q = defaultquirks);
// A request with any known command (the scanner's side). Under short lengths a length byte
// with its top bits set is a bad frame.
Scan scanrequest(const uint8_t* buf, size_t n, const Quirks& q = defaultquirks);
bool knowncommand(uint8_t code);
bool statusbyte(uint8_t b);

// The reply head for a command under the quirks: the command itself, or statusok.
uint8_t replyhead(uint8_t command, const Quirks& q);

// ---- the upload reply ----------------------------------------------------------------
// Reads the upload reply as it arrives. need() says how many bytes to feed next, so that a
// reader on a line takes exactly the bytes of the reply and no more.
class UploadReader {
public:
    enum State { reading, done, badcrc, badframe, refused };
    explicit UploadReader(const Quirks& q = defaultquirks);
    size_t need() const;
    void feed(const uint8_t* p, size_t n);
    State state() const { return state_; }
    size_t skipped() const { return skipped_; }
    const Bytes& serial() const { return serial_; }
    // Each record as kept: its length byte first.
    const std::vector<Bytes>& records() const { return records_; }

private:
    void take(uint8_t b);
    enum Step { head, serialno, length, body, crc };
    Quirks q_;
    State state_ = reading;
    Step step_ = head;
    Bytes frame_;       // every byte of the reply from its head, for the CRC
    Bytes current_;
    size_t skipped_ = 0;
    size_t want_ = 0;
    Bytes serial_;
    std::vector<Bytes> records_;
};

// The upload reply for these records (records with their length byte first).
Bytes uploadreply(const Bytes& serial, const std::vector<Bytes>& records, const Quirks& q = defaultquirks);

// ---- payloads ------------------------------------------------------------------------
// The interrogate reply's fixed data.
struct Identity {
    uint8_t protocol = protocolversion;
    uint8_t status = systemok;  // system status: 0 OK, 22 low battery
    Bytes serial;               // 8 bytes
    std::string version;        // 8 characters
};
Bytes identitypayload(const Identity& id);
bool parseidentity(const Bytes& fixed, Identity& id);

// Packed time stamp: 32 bits, first byte most significant; from the top seconds 6 bits,
// minutes 6, hours 5, day 5, month 4, year within the century 6.
struct Stamp {
    int second = 0, minute = 0, hour = 0, day = 0, month = 0, year = 0;
};
Bytes packstamp(const Stamp& s);
// A record as kept: length, code type, barcode, stamp.
Bytes makerecord(uint8_t codetype, const std::string& barcode, const Stamp& s);

}  // namespace csp
