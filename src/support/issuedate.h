// The issue date of a release, as bcver gives it: "DDMMYYYY".
#pragma once

#include <QDate>
#include <string>

// The runtime's date zero, 30 December 1899: what a date holds before anything is put in it.
QDate zerodate();
// The date of a "DDMMYYYY" text, built as the runtime's DateSerial builds it: a day or month
// past its end runs on into the next (31022011 is 3 March 2011, day 00 the last of the month
// before), and a year below 100 is 1930 to 2029. Parts that are not numbers raise 13; a
// year outside 100 to 9999 after that raises 5.
QDate issuedate(const std::string& text);
