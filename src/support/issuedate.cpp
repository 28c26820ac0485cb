#include "support/issuedate.h"

#include "runtime/vb.h"

QDate zerodate() { return QDate(1899, 12, 30); }

QDate issuedate(const std::string& text)
{
    int day = CInt(Mid(text, 1, 2));
    int month = CInt(Mid(text, 3, 2));
    int year = CInt(Mid(text, 5, 4));
    if (year >= 0 && year < 30) year += 2000;
    else if (year >= 30 && year < 100) year += 1900;
    // Months first, so that a month of 0 or 13 moves the year before the days are added.
    year += (month - 1 >= 0 ? (month - 1) / 12 : -((12 - month) / 12));
    month = ((month - 1) % 12 + 12) % 12 + 1;
    if (year < 100 || year > 9999) raisefault(fault::invalidcall);
    return QDate(year, month, 1).addDays(day - 1);
}
