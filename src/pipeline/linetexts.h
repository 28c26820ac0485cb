// The human texts of scan lines, as the activity list and the log show them.
#pragma once

#include <string>

// "Jan" to "Dec" for a month text of 1 to 12; nothing for any other.
std::string monthname(const std::string& month);
// " At HH:MM DD-Mon-YY" from a time HHMM and the day, month and two-digit year texts.
std::string attext(const std::string& time, const std::string& day, const std::string& month,
                   const std::string& year);
// A line's text from type, field and the date parts: type, field 1-2, field 3-8 and, when
// `tail` is given, the tail followed by a blank (so two blanks stand before "At").
std::string scantext(const std::string& type, const std::string& field, const std::string* tail,
                     const std::string& time, const std::string& day, const std::string& month,
                     const std::string& year);
// The text of a canonical line read at fixed places: 1-2, 3-4, 5-10, then time 19-22,
// day 17-18, month 15-16, year 13-14.
std::string canonicaltext(const std::string& line);
// "Invalid Line (" + what + ")".
std::string invalidtext(const std::string& what);
