// The parts of readdata that differ by scanner type, and what they share with it. Each part
// sets the line mark it has reached, which the failure messages quote.
#pragma once

#include <exception>

#include "runtime/vb.h"

// Thrown by a part that finds the scanner not answering: readdata ends in its connection
// failure.
struct ConnectionLost : std::exception {
    const char* what() const noexcept override { return "connection lost"; }
};

// OPL 972x: the clock, the ID (refused here when it is not usable), the battery and the
// line count. False when the ID was refused and the read is over.
bool oplfirstread(Int16& linemark);
// OPL 972x: the lines into c:\tarnbc\temp_NNN.txt and its dated backup.
void opldownload(Int16& linemark);
// OPN 2001 and CS 1504: the whole memory into the library, the clock and the ID.
void cspfirstread(Int16& linemark);
// OPN 2001 and CS 1504: the records from the library into scanlines.
void cspdownload(Int16& linemark);

// The session's end by type: the main screen's opl control, or csp2Restore.
void endreadsession();
