#include "pipeline/repairdates.h"

#include <QDate>

#include "pipeline/linetexts.h"
#include "runtime/vb.h"

namespace repairdates {

namespace {

// A date from two-digit year, month and day as the platform's date function builds it: a
// month or day past its range runs on into the next, and years 30-99 are the 1900s.
QDate dateserial(int yy, int month, int day)
{
    const int year = yy < 30 ? 2000 + yy : 1900 + yy;
    return QDate(year, 1, 1).addMonths(month - 1).addDays(day - 1);
}

int number(const std::string& text) { return CInt(std::string_view(text)); }

long minutes(const QDate& date, int hhmm_minutes, const QDate& pcdate, int pcminutes)
{
    return (long)pcdate.daysTo(date) * 1440 + (hhmm_minutes - pcminutes);
}

struct Clock {
    QDate date;
    int minute;
};

// "HHMM DDMMYY".
Clock readclock(const std::string& text)
{
    const QDate d = dateserial(number(Mid(text, 10, 2)), number(Mid(text, 8, 2)), number(Mid(text, 6, 2)));
    return {d, number(Mid(text, 1, 2)) * 60 + number(Mid(text, 3, 2))};
}

Clock readline(const std::string& line)
{
    const QDate d = dateserial(number(Mid(line, 13, 2)), number(Mid(line, 15, 2)), number(Mid(line, 17, 2)));
    return {d, number(Mid(line, 19, 2)) * 60 + number(Mid(line, 21, 2))};
}

std::string twodigits(int n) { return Format((long long)n, "00"); }

}  // namespace

long clockapart(const std::string& other, const std::string& pc)
{
    const Clock a = readclock(other), b = readclock(pc);
    return minutes(a.date, a.minute, b.date, b.minute);
}

long lineapart(const std::string& line, const std::string& pc)
{
    const Clock a = readline(line), b = readclock(pc);
    return minutes(a.date, a.minute, b.date, b.minute);
}

int wholedays(long minutes) { return CInt((double)minutes / 1440.0); }

std::string shiftline(const std::string& line, long days, long minutes)
{
    const QDate d = dateserial(number(Mid(line, 13, 2)), number(Mid(line, 15, 2)), number(Mid(line, 17, 2)) + (int)days);
    long t = (number(Mid(line, 19, 2)) * 60 + number(Mid(line, 21, 2)) + minutes) % 1440;
    if (t < 0) t += 1440;
    return Mid(line, 1, 12) + twodigits(d.year() % 100) + twodigits(d.month()) + twodigits(d.day()) +
           twodigits((int)(t / 60)) + twodigits((int)(t % 60));
}

std::string displayline(const std::string& line)
{
    static const char* const days[] = {"", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
    const QDate d = readline(line).date;
    return canonicaltext(line) + " " + days[d.dayOfWeek()];
}

}  // namespace repairdates
