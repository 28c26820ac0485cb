// CSP framing and parsing as pure functions over byte buffers: no I/O here.
//
// Frames as seen on the line (hex), request then reply, with the reply head repeating the
// command (ReplyHead::echo):
//   interrogate   01 02 00 <crc>            01 02 11 <status serial*8 version*8> 00 <crc>
//   get time      0A 02 00 <crc>            0A 02 06 ss mm hh DD MM YY 00 <crc>
//   get parameter 08 02 01 26 00 <crc>      08 02 21 26 <32 bytes> 00 <crc>   (length 0x21:
//                                           1 + 32 = 33 = 0x01 + 1 * 32, extended length)
//   upload        07 02 00 <crc>            07 02 <serial*8> {L type barcode*(L-5) stamp*4}... 00 <crc>
// A frame with no payload has no pad byte: 02 02 00 <crc>. The upload reply carries no
// length: its records run up to a zero length byte, and the CRC covers everything before it.
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

// A whole frame: head (command, or status for a status-head reply), STX, length, payload,
// pad, CRC. Payloads above 31 bytes take the extended length (replies only).
Bytes frame(uint8_t head, const Bytes& payload);

// The result of looking at the front of a receive buffer.
struct Scan {
    enum State { needmore, complete, badcrc, badframe, refused };
    State state = needmore;
    size_t need = 0;      // needmore: at least this many more bytes are wanted
    size_t skipped = 0;   // leading bytes that cannot start the frame
    size_t used = 0;      // complete, badcrc, refused: bytes up to the end of the frame
    uint8_t head = 0;     // first byte of the frame (command or status)
    Bytes payload;
};

// A reply to `command`: skips leading bytes that cannot start it. `refused` is a sound frame
// whose head is a status other than OK (status-head replies only).
Scan scanreply(const uint8_t* buf, size_t n, uint8_t command, const Quirks& q = defaultquirks);
// A request with any known command (the scanner's side). A length with its top bits set is
// a bad frame.
Scan scanrequest(const uint8_t* buf, size_t n);
bool knowncommand(uint8_t code);

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
struct Identity {
    uint8_t status = 0;
    Bytes serial;           // 8 bytes
    std::string version;    // 8 characters
};
Bytes identitypayload(const Identity& id);
bool parseidentity(const Bytes& payload, Identity& id);

// Packed time stamp: 32 bits, first byte most significant; from the top seconds 6 bits,
// minutes 6, hours 5, day 5, month 4, year within the century 6.
struct Stamp {
    int second = 0, minute = 0, hour = 0, day = 0, month = 0, year = 0;
};
Bytes packstamp(const Stamp& s);
// A record as kept: length, code type, barcode, stamp.
Bytes makerecord(uint8_t codetype, const std::string& barcode, const Stamp& s);

}  // namespace csp
