// Constants of the CSP link of the OPN 2001 and the CS 1504, shared by the csp2 driver and
// the scanner emulator. The protocol comes from public reverse engineering and has not been
// checked against every device, so what is not certain is kept here as a setting of its own
// ("known unknowns") instead of being spread over the code.
#pragma once

#include <cstddef>
#include <cstdint>

namespace csp {

// ---- line ----------------------------------------------------------------------------
constexpr int baud = 9600;
constexpr int bitsperbyte = 11;  // start, 8 data bits, odd parity, stop

// ---- frame ---------------------------------------------------------------------------
// request  [command] [STX] [strings] [0x00] [CRC hi] [CRC lo]
// reply    [status]  [STX] [fixed data] [strings] [0x00] [CRC hi] [CRC lo]
// A string is a length byte (1 to 250) and that many bytes; the zero byte closes the list.
constexpr uint8_t stx = 0x02;
constexpr int maxstring = 250;
constexpr int shortstring = 31;   // the most a length byte counts when only its low 5 bits do
constexpr std::size_t maxframe = 4096; // a reply longer than this is garbage (the upload excepted)

// ---- commands ------------------------------------------------------------------------
constexpr uint8_t cmdinterrogate = 0x01;
constexpr uint8_t cmdcleardata = 0x02;
constexpr uint8_t cmdsetparam = 0x03;
constexpr uint8_t cmdsetdefaults = 0x04;
constexpr uint8_t cmdpowerdown = 0x05;
constexpr uint8_t cmdupload = 0x07;
constexpr uint8_t cmdgetparam = 0x08;
constexpr uint8_t cmdsettime = 0x09;
constexpr uint8_t cmdgettime = 0x0A;

// ---- status bytes, the first byte of a reply ----------------------------------------
constexpr uint8_t statusok = 0x06;
constexpr uint8_t statusunsupported = 0x05;
constexpr uint8_t statuscrc = 0x07;
constexpr uint8_t statuscharacter = 0x08;
constexpr uint8_t statusgeneral = 0x09;

// ---- system status, in the interrogate reply ------------------------------------------
constexpr uint8_t systemok = 0x00;
constexpr uint8_t systemlowbattery = 0x16;   // 22: a good answer; the battery wants charging

// ---- payloads ------------------------------------------------------------------------
constexpr int serialsize = 8;        // device serial in the interrogate and upload replies
constexpr int versionsize = 8;       // software version text in the interrogate reply
// Fixed data of the interrogate reply: protocol version, system status, serial, version.
constexpr int identitysize = 2 + serialsize + versionsize;
constexpr uint8_t protocolversion = 0x01;   // what the emulator reports; the driver reads any
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
// Whether the first byte of a reply is a status byte (the published shape) or repeats the
// command code (a fallback for firmware that may do so).
enum class ReplyHead { echo, status };

struct Quirks {
    ReplyHead replyhead = ReplyHead::status;
    // A string's length byte counts all 8 bits (the published shape). Off: only its low 5
    // bits count, so that a string holds at most 31 bytes and the 32-byte scratch pad comes
    // cut to 30 value bytes.
    bool extendedlength = true;
    // Waking a sleeping scanner, which drops the bytes that reach it asleep: DTR lowered for
    // dtrlowms, raised, dtrsettlems of quiet, then the command. Done at the start of a
    // session on a port that has not answered for awakems, and before each retry.
    bool wakedtr = true;
    int dtrlowms = 175;
    int dtrsettlems = 100;
    int awakems = 5000;
    // A second measure: this many NUL bytes and a pause of wakeupdelayms after the DTR edge.
    int wakeupbytes = 1;
    int wakeupdelayms = 30;
};

constexpr Quirks defaultquirks{};

}  // namespace csp
