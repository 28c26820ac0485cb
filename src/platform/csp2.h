// The csp2 calls that the program makes to the OPN 2001 and the CS 1504, with their names,
// arguments and results, speaking the CSP link over the mapped serial port.
//
// One session at a time for the whole process: csp2Init binds it to a port, csp2Restore ends
// it and returns the library to its defaults. Calls block for their exchange with the
// scanner. Results are 32-bit: 0 or a count of bytes or packets on success, one of the
// negative codes below on failure. A call that needs the scanner before a successful
// csp2Init gives `nocomms`.
#pragma once

#include <cstdint>

#include "platform/csp2_constants.h"

namespace csp2 {
constexpr int32_t ok = 0;
constexpr int32_t nocomms = -1;      // nobody answered, the line broke, or no port is bound
constexpr int32_t badparam = -2;     // an argument the call cannot take
constexpr int32_t setuperror = -3;   // the port is not mapped, missing or held by another
// The scanner's error statuses come back each as its own code: status 5 as unsupported,
// 7 as crcerror, 8 as charerror, 9 as generalerror. The driver gives the last three too when
// it finds the fault itself (a reply with a bad CRC, bytes that make no reply, a reply that
// does not match the request).
constexpr int32_t unsupported = -4;  // status 5: the scanner does not know the command
constexpr int32_t crcerror = -7;     // status 7, or a reply came with a bad CRC
constexpr int32_t charerror = -8;    // status 8, or bytes came that make no reply
constexpr int32_t generalerror = -9; // status 9, or the scanner did not do what was asked

// The quirks in force: the defaults of csp2_constants.h, with [csp2] of platform.ini over
// them, read at each csp2Init: replyhead=status|echo, extendedlength=1|0, wakedtr=1|0,
// dtrlowms=N, dtrsettlems=N, awakems=N, wakeupbytes=N, wakeupdelayms=N.
csp::Quirks quirks();
}  // namespace csp2

// Binds the library to COM(port + 1) and wakes the scanner (unless it answered less than
// awakems ago). 0, or setuperror.
int32_t csp2Init(int32_t port);
// Ends the session: frees the port, drops the data read, retry count back to its default.
int32_t csp2Restore();
// Tries per command from now on (1 to 9); 0, or badparam.
int32_t csp2SetRetryCount(int32_t count);
// 0 when a scanner answers, nocomms when none does, another negative code when the answer
// was bad. Keeps the scanner's software version for csp2GetSwVersion. A system status
// other than OK (22, low battery) is still an answer; a change of it goes to the day's log.
int32_t csp2Interrogate();
// Fetches the whole memory of the scanner into the library: the number of packets, or -1.
int32_t csp2ReadData();
// The scanner's ASCII mode parameter (1 text, 0 binary), or a negative code.
int32_t csp2GetASCIIMode();
// Copies packet `index` (from 0) into buffer, at most maxlen bytes, starting with the
// record's length byte: the count copied, or badparam for an index with no packet.
int32_t csp2GetPacket(char* buffer, int32_t index, int32_t maxlen);
// The scanner's clock, 6 bytes: second, minute, hour, day, month, year. 6, or a code.
int32_t csp2GetTime(char* buffer);
// Sets the clock from 6 bytes in that order. 0, or a code; generalerror when the scanner
// did not take the time.
int32_t csp2SetTime(const char* buffer);
// Copies at most maxlen bytes of parameter `param`: the count copied, or a code.
int32_t csp2GetParam(int32_t param, char* buffer, int32_t maxlen);
// Writes `length` bytes (at most 249; 30 under short lengths) to parameter `param`. 0, or a code; generalerror when
// the scanner kept its old value.
int32_t csp2SetParam(int32_t param, const char* buffer, int32_t length);
// The software version text (8 characters and a NUL where maxlen allows), from the last
// interrogation of this session or a new one: the count copied, or a code.
int32_t csp2GetSwVersion(char* buffer, int32_t maxlen);
// Erases the scanner's memory. 0, or a code.
int32_t csp2ClearData();
// Turns the scanner off; it answers no more until it is woken by hand. 0, or a code.
int32_t csp2PowerDown();
