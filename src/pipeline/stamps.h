// The packed time stamp of a CS 1504 or OPN 2001 record, decoded through text: each of the
// four bytes becomes eight "0"/"1" characters, the four are joined, and the date parts are
// cut out of the joined text.
//
// Bit fields from the top of the 32 bits: seconds 6, minutes 6, hours 5, day 5, month 4,
// year within the century 6. Nothing is checked against a calendar: month 13 gives "13".
#pragma once

#include <string>

#include "runtime/vb.h"

// The eight-character bit string of `value`, most significant bit first, into `result`.
// The caller's value is used up by the call: it ends as what remains of it (0 for 0..255).
void getbin(Int16& value, std::string& result);

// The 12-digit datecode SSmmHHDDMMYY of a 32-character bit string, into `result`.
void bintodate(const std::string& bits, std::string& result);
