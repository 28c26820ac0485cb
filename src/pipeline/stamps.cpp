#include "pipeline/stamps.h"

void getbin(Int16& value, std::string& result)
{
    result.clear();
    int divisor = 128;
    for (int i = 0; i < 8; ++i) {
        if (value < divisor) {
            result += "0";
        } else {
            result += "1";
            value -= divisor;
        }
        divisor /= 2;
    }
}

namespace {

// A run of "0" and "1" as a number, first character most significant.
long binaryvalue(const std::string& bits)
{
    long n = 0;
    for (char c : bits) n = n * 2 + (c == '1' ? 1 : 0);
    return n;
}

}  // namespace

void bintodate(const std::string& bits, std::string& result)
{
    result.clear();
    result += Format(binaryvalue(Mid(bits, 1, 6)), "00");    // seconds
    result += Format(binaryvalue(Mid(bits, 7, 6)), "00");    // minutes
    result += Format(binaryvalue(Mid(bits, 13, 5)), "00");   // hours
    result += Format(binaryvalue(Mid(bits, 18, 5)), "00");   // day
    result += Format(binaryvalue(Mid(bits, 23, 4)), "00");   // month
    result += Format(binaryvalue(Right(bits, 6)), "00");     // year
}
