// The scanner's clock as the program judges it. Both clock forms become one twelve-digit
// stamp, two digits each of second, minute, hour, day, month and year ("SSNNHHDDMMYY"),
// from which the scanner's date "DDMMYY" and time "HHMM" are taken.
#pragma once

#include <QDate>
#include <QDateTime>
#include <string>

// From the OPL 972x clock text "dd/mm/yyyy hh:nn:ss".
std::string oplstamp(const std::string& clock);
// From the six CSP2 clock bytes. A year of 64 or more stands for the year less 64.
std::string cspstamp(const std::string& raw);
// The stamp of the clock that scanner type `type` fills: scannerclock for the OPL 972x (1),
// scannerrawclock for the others.
std::string scannerstamp(int type);
// scannerdate is stamp characters 7-12, scannertime characters 5-6 then 3-4.
void setscannerdatetime(const std::string& stamp);

// "DD/MM/YY" and "HH:MM" for the screens.
std::string datedisplay(const std::string& ddmmyy);
std::string timedisplay(const std::string& hhmm);

// Minutes between the scanner's "HHMM" and the PC's hour and minute, both taken as today:
// seconds play no part and midnight does not wrap (2359 against 00:01 is 1438). A time
// that is not digits raises 13.
long minutesapart(const std::string& hhmm, const QTime& pc);

// The battery timer's quick look at a scanner's clock: wrong when the date is not today's,
// or when the two times taken as plain numbers HHMM differ by more than 5 (so 10:59 against
// 11:00 is 41 apart and wrong).
bool clocklooksbad(const std::string& ddmmyy, const std::string& hhmm, const QDateTime& now);

// Today falls in a clock-change window: 26 March to 6 April, or 26 October to 6 November.
// The dates are fixed, whatever the year's changeover Sunday.
bool inclockchangewindow(const QDate& today);

// What the clock judgement does with a difference of `diff` minutes.
enum class TimeVerdict {
    good,        // timestatus 0, TimeBox light grey
    correct,     // updatethetime, "Scanner corrected for <diff> minutes difference", then good
    fault,       // timestatus 1, TimeBox red
    keep,        // nothing: timestatus and TimeBox stay as they were
    correctdst,  // updatethetime, "... minutes difference (DST Adj)"; its own judgement stands
};
// `autotime` is the scanner type's AUTOTIME: 0 off, 1 "Adv" (small and clock-change
// corrections), 2 "On" (small corrections only); any other value acts as 0.
TimeVerdict judgetime(long diff, int margin, int autotime, int datestatus, bool inwindow);
