// Constants of the CSP link of the OPN 2001 and the CS 1504, shared by the csp2 driver and
// the scanner emulator. The protocol comes from public reverse engineering and has not been
// checked against every device, so what is not certain is kept here as a setting of its own
// ("known unknowns") instead of being spread over the code.
#pragma once

#include <cstdint>

namespace csp {

// ---- line ----------------------------------------------------------------------------
constexpr int baud = 9600;
constexpr int bitsperbyte = 11;  // start, 8 data bits, odd parity, stop

// ---- frame ---------------------------------------------------------------------------
// [command or status] [STX] [length] [payload] [pad 0x00 when length > 0] [CRC hi] [CRC lo]
constexpr uint8_t stx = 0x02;
constexpr int maxrequestpayload = 31;   // the top 3 bits of a request's length are 0

// ---- commands ------------------------------------------------------------------------
constexpr uint8_t cmdinterrogate = 0x01;
constexpr uint8_t cmdcleardata = 0x02;
constexpr uint8_t cmdsetparam = 0x03;
constexpr uint8_t cmdpowerdown = 0x05;
constexpr uint8_t cmdupload = 0x07;
constexpr uint8_t cmdgetparam = 0x08;
constexpr uint8_t cmdsettime = 0x09;
constexpr uint8_t cmdgettime = 0x0A;

// ---- status bytes, when a reply starts with one -------------------------------------
constexpr uint8_t statusok = 0x06;
constexpr uint8_t statusunsupported = 0x05;
constexpr uint8_t statuscrc = 0x07;
constexpr uint8_t statuscharacter = 0x08;
constexpr uint8_t statusgeneral = 0x09;

// ---- payloads ------------------------------------------------------------------------
constexpr int serialsize = 8;        // device serial in the interrogate and upload replies
constexpr int versionsize = 8;       // software version text in the interrogate reply
constexpr int clocksize = 6;         // second, minute, hour, day, month, year (two digits)
constexpr int stampsize = 4;         // packed time stamp at the end of a record
constexpr int recordoverhead = 5;    // code type + stamp, counted by a record's length byte
constexpr uint8_t paramid = 38;      // the scratch pad; the scanner ID, right-aligned in 6
constexpr int paramidsize = 32;
// The ASCII mode parameter: 1 when the scanner sends barcodes as text. An assumption of this
// driver; nothing in the program depends on its value.
constexpr uint8_t paramasciimode = 0x4F;

// ---- timings (driver) ----------------------------------------------------------------
constexpr int firstbytetimeoutms = 500;  // from the end of a request to the reply's first byte
constexpr int bytetimeoutms = 200;       // between two bytes of one reply
constexpr int defaultretries = 3;        // tries per command until csp2SetRetryCount

// ---- known unknowns --------------------------------------------------------------------
// Whether the first byte of a reply repeats the command code or is a status byte.
enum class ReplyHead { echo, status };

struct Quirks {
    ReplyHead replyhead = ReplyHead::echo;
    // Replies whose payload exceeds 31 bytes (a 32-byte parameter) count the top 3 bits of the
    // length byte as multiples of 32. Off: such a value is cut to what 31 bytes carry.
    bool extendedlength = true;
    // A scanner asleep drops what wakes it: the driver sends this many NUL bytes and waits
    // before the first command of a session and before each retry.
    int wakeupbytes = 1;
    int wakeupdelayms = 30;
};

constexpr Quirks defaultquirks{};

}  // namespace csp
