// The OPL link between this program and an OPL 972x: framing, commands and payloads as pure
// functions over byte buffers (no I/O). docs/opl-link.md describes the link in full.
//
//   frame   01 <command> <length hi> <length lo> <payload> <CRC hi> <CRC lo>
//   CRC     crc16 (platform/crc16.h) of every byte before it, SOH included
//   reply   the request's command with the top bit set; payload: result byte, then data
//
// Examples (hex, CRC shown as cc cc):
//   read clock    01 63 00 00 cc cc      reply 01 E3 00 14 00 "31/12/2024 23:59:58" cc cc
//   read ID       01 69 00 00 cc cc      reply 01 E9 00 03 00 00 7B cc cc          (ID 123)
//   download      01 64 00 00 cc cc      reply 01 E4 00 05 00 00 00 00 02 cc cc    (2 lines)
//                                        then 01 F2 <len> 00 00 00 00 <line 0> cc cc
//                                             01 F2 <len> 00 00 00 01 <line 1> cc cc
//                                             01 FA 00 04 00 00 00 02 cc cc          (end)
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace opl {

using Bytes = std::vector<uint8_t>;

// ---- line ----------------------------------------------------------------------------
constexpr int baud = 19200;
constexpr int bitsperbyte = 10;  // start, 8 data bits, no parity, stop

// ---- frame ---------------------------------------------------------------------------
constexpr uint8_t soh = 0x01;
constexpr uint8_t replybit = 0x80;
constexpr size_t maxpayload = 2048;
constexpr size_t chunksize = 1024;   // image bytes per load chunk

// ---- commands (PC to scanner; the reply carries the top bit) -------------------------
constexpr uint8_t cmdreadclock = 'c';
constexpr uint8_t cmdwriteclock = 'C';
constexpr uint8_t cmdreadid = 'i';
constexpr uint8_t cmdwriteid = 'I';
constexpr uint8_t cmdlinecount = 'n';
constexpr uint8_t cmdbattery = 'b';
constexpr uint8_t cmddownload = 'd';
constexpr uint8_t cmdclear = 'x';
constexpr uint8_t cmdversions = 'v';
constexpr uint8_t cmderase = 'e';
constexpr uint8_t cmdloadbegin = 'l';
constexpr uint8_t cmdloadchunk = 'k';
constexpr uint8_t cmdloadgo = 'g';
// Frames the scanner sends on its own during a download or a long operation.
constexpr uint8_t frmrecord = 'r' | replybit;     // one line: index (4), text
constexpr uint8_t frmend = 'z' | replybit;        // end of the download: line count (4)
constexpr uint8_t frmprogress = 'p' | replybit;   // phase (1), percent (1)
constexpr uint8_t frmfinished = 'f' | replybit;   // long operation over: result (1)
constexpr uint8_t frmnak = 0xFF;                  // a frame arrived broken: result badframe

// ---- results (first payload byte of a reply) -----------------------------------------
constexpr uint8_t resok = 0;
constexpr uint8_t resbadframe = 1;   // the request arrived with a bad CRC
constexpr uint8_t resunknown = 2;    // no such command
constexpr uint8_t resbadarg = 3;     // the payload does not fit the command
constexpr uint8_t resrefused = 4;    // the scanner will not do it (write-protected clock/ID)
constexpr uint8_t resbusy = 5;       // an operation is running
constexpr uint8_t resbadimage = 6;   // a software image that does not check out

// Image kinds of a load, and phases of progress frames.
constexpr uint8_t imageos = 0;
constexpr uint8_t imageapp = 1;
constexpr uint8_t phaseerase = 1;
constexpr uint8_t phaseprogram = 2;

// ---- timings -------------------------------------------------------------------------
constexpr int replytimeoutms = 250;     // request sent to the first byte of the reply
constexpr int bytetimeoutms = 100;      // between two bytes of one frame
constexpr int streamtimeoutms = 1000;   // between two frames of a download
constexpr int operationtimeoutms = 3000;  // between progress frames of a long operation

// ---- frames --------------------------------------------------------------------------
struct Frame {
    uint8_t command = 0;
    Bytes payload;
};

Bytes encode(uint8_t command, const Bytes& payload = {});
inline Bytes encode(const Frame& f) { return encode(f.command, f.payload); }

// Collects frames out of a byte stream. Bytes before an SOH are garbage; a frame with a bad
// CRC or an impossible length is dropped and the search goes on after its SOH.
class Framer {
public:
    void feed(const uint8_t* p, size_t n);
    // The next whole frame, if one is in.
    bool next(Frame& f);
    // Bytes still needed to finish the frame under way (at least 1).
    size_t need() const;
    // Drops what is in; a part-frame dropped counts as garbage.
    void reset();
    size_t garbage() const { return garbage_; }
    size_t badframes() const { return badframes_; }

private:
    Bytes buf_;
    size_t garbage_ = 0;
    size_t badframes_ = 0;
};

// ---- payloads ------------------------------------------------------------------------
Bytes be16(int v);
Bytes be32(uint32_t v);
int getbe16(const Bytes& b, size_t at);       // signed 16-bit
uint32_t getbe32(const Bytes& b, size_t at);
Bytes textbytes(const std::string& s);
std::string bytestext(const Bytes& b, size_t from = 0);
// A reply payload: the result byte and the data.
Bytes reply(uint8_t result, const Bytes& data = {});

// The clock text "dd/mm/yyyy hh:nn:ss" with fields in range.
bool validclock(const std::string& text);
// The battery text: three digits of percent and "%".
std::string batterytext(int percent);

// The version reply: operating system version, NUL, application version.
Bytes versionsdata(const std::string& os, const std::string& app);
bool parseversions(const Bytes& data, std::string& os, std::string& app);

}  // namespace opl
