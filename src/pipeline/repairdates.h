// The date arithmetic of the corrupt data screen: clocks and canonical lines as minutes
// apart, the shift of a line, and the line's text with its day of week.
#pragma once

#include <string>

namespace repairdates {

// Minutes from the clock text "HHMM DDMMYY" `pc` to `other`: the dates' difference in days
// times 1440, plus the times' difference. A field that is not a number raises 13.
long clockapart(const std::string& other, const std::string& pc);
// The same for a canonical line's date (13-18, YYMMDD) and time (19-22).
long lineapart(const std::string& line, const std::string& pc);
// Minutes to whole days, to the nearest, ties to even.
int wholedays(long minutes);
// The canonical line with its day moved by `days` and its minute by `minutes`: positions
// 1-12, the new date YYMMDD, the new time HHMM. A tail after 22 is dropped, and a time
// that wraps past midnight leaves the date alone.
std::string shiftline(const std::string& line, long days, long minutes);
// The line's text as the screen lists it: the text of the activity list, a blank and the
// day of week "Sun" to "Sat". A date that is not numbers raises 13.
std::string displayline(const std::string& line);

}  // namespace repairdates
