#include "maintenance/scannerclock.h"

#include <cstdlib>

#include "core/globals.h"
#include "runtime/vb.h"

std::string oplstamp(const std::string& clock)
{
    return Right(clock, 2) + Mid(clock, 15, 2) + Mid(clock, 12, 2) + Mid(clock, 1, 2) + Mid(clock, 4, 2) +
           Mid(clock, 9, 2);
}

std::string cspstamp(const std::string& raw)
{
    // A fixed six-byte field: bytes short of six read as 0.
    std::string stamp;
    for (size_t k = 0; k < 6; ++k) {
        const int code = k < raw.size() ? (unsigned char)raw[k] : 0;
        std::string field = Right(Format(code, "00"), 2);
        if (k == 5 && Val(field) > 63) field = Format((long long)Val(field) - 64, "00");
        stamp += field;
    }
    return stamp;
}

std::string scannerstamp(int type) { return type == 1 ? oplstamp(g().scannerclock) : cspstamp(g().scannerrawclock); }

void setscannerdatetime(const std::string& stamp)
{
    g().scannerdate = Mid(stamp, 7, 6);
    g().scannertime = Mid(stamp, 5, 2) + Mid(stamp, 3, 2);
}

std::string datedisplay(const std::string& d) { return Left(d, 2) + "/" + Mid(d, 3, 2) + "/" + Right(d, 2); }

std::string timedisplay(const std::string& t) { return Left(t, 2) + ":" + Right(t, 2); }

long minutesapart(const std::string& hhmm, const QTime& pc)
{
    const long scanner = (long)CInt(Left(hhmm, 2)) * 60 + CInt(Right(hhmm, 2));
    return std::labs(scanner - (pc.hour() * 60L + pc.minute()));
}

bool clocklooksbad(const std::string& ddmmyy, const std::string& hhmm, const QDateTime& now)
{
    return ddmmyy != Format(now, "DDMMYY") || std::labs((long)Val(Format(now, "HHMM")) - (long)Val(hhmm)) > 5;
}

bool inclockchangewindow(const QDate& d)
{
    const QDate spring0(d.year(), 3, 25), spring1(d.year(), 4, 7);
    const QDate autumn0(d.year(), 10, 25), autumn1(d.year(), 11, 7);
    return (d > spring0 && d < spring1) || (d > autumn0 && d < autumn1);
}

TimeVerdict judgetime(long diff, int margin, int autotime, int datestatus, bool inwindow)
{
    const bool correcting = autotime == 1 || autotime == 2;
    if (diff == 0) return TimeVerdict::good;
    if (diff <= margin) {
        if (!correcting || datestatus == 1) return TimeVerdict::good;
        return TimeVerdict::correct;
    }
    if (autotime != 1 || !inwindow || std::labs(diff - 60) >= margin) return TimeVerdict::fault;
    return datestatus == 1 ? TimeVerdict::keep : TimeVerdict::correctdst;
}
