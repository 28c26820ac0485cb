// A recorded download made ready for the line processing, as the program has it after a
// read: the support tool vexal-decode and the fuzz targets run processdata on one.
#pragma once

#include <string>

namespace recorded {

// A throw-away drive C under `root` (a folder of this machine) with the install folder in
// it, so that a run writes its raw file and its logs there. False when it cannot be made.
bool makeworkplace(const std::string& root);
// An OPL 972x download: the bytes become the raw download file of the scanner in
// scannerid. Returns its number of lines.
long loadopl(const std::string& bytes);
// CS 1504 / OPN 2001 records one after another, each its length byte N and N more bytes
// (a safety copy of a read): into scanlines from 1. The table holds 1000; the count goes
// on, so a longer dump reaches the table's end in the run. Returns the count.
long loadcsp(const std::string& bytes);

}  // namespace recorded
