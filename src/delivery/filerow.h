// The row a BAR file gets in the lists of outstanding files: "BAR001   Scanner 123   012
// Lines", its number, the scanner from its first line and the count of key 000 of the
// section that line names.
#pragma once

#include <string>

// `file` is BAR file number `i`; `lines` receives the count. A first line that cannot be
// read, or a count that is not a number, raises its fault.
std::string filerow(long i, const std::string& file, long& lines);
