// The classic string, number and array helpers the routines are written in. Strings are
// single-byte text (std::string); positions count from 1 as the routines expect.
#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>
#include <string>
#include <string_view>

#include "runtime/fault.h"

class QDateTime;

// ---- strings -------------------------------------------------------------------------
std::string Left(std::string_view s, long n);   // n < 0 raises 5
std::string Right(std::string_view s, long n);  // n < 0 raises 5
std::string Mid(std::string_view s, long start, long n = -1);  // start < 1 raises 5
// 1-based position of `find` in `s` from `start`, 0 when absent; an empty `find` gives start.
long InStr(long start, std::string_view s, std::string_view find);
inline long InStr(std::string_view s, std::string_view find) { return InStr(1, s, find); }
long Len(std::string_view s);
std::string UCase(std::string_view s);
std::string LCase(std::string_view s);
std::string Trim(std::string_view s);
std::string LTrim(std::string_view s);
std::string RTrim(std::string_view s);
// Trim of blanks, tabs and line ends (configuration and answers files).
std::string trimblanks(std::string_view s);
std::string Space(long n);
std::string String(long n, char c);
std::string Chr(int code);          // code outside 0..255 raises 5
int Asc(std::string_view s);        // empty text raises 5
// Wild-card match of the `Like` operator: * any run, ? one character, # one digit.
bool Like(std::string_view text, std::string_view pattern);

// ---- numbers -------------------------------------------------------------------------
// Val: the leading number of a text (blanks skipped, &H hex, stops at the first other
// character), 0 when none.
double Val(std::string_view s);
// Whether the text reads whole as a number (IsNumeric).
bool IsNumeric(std::string_view s);
// Checked conversions: a text that is not a number raises 13; a value outside the type
// raises 6. Halves round to even. IsNumeric and the conversions read a text up to its first
// NUL, as the system's conversion calls do: "15\0#" is 15.
int16_t CInt(std::string_view s);
int16_t CInt(double v);
int32_t CLng(std::string_view s);
int32_t CLng(double v);
double CDbl(std::string_view s);
// Str of a number without the leading blank of a positive value (CStr).
std::string CStr(long long v);
std::string CStr(double v);
// Str with the leading blank for positive values.
std::string Str(long long v);

// Format of a number by a digit pattern: "000" zero-pads to three digits, "00", "000000";
// "0" and "" leave it as it is.
std::string Format(long long n, std::string_view pattern);
// Format of a date and time by a pattern of DD, MM, YYYY, YY, HH (or hh), NN (or nn),
// SS (or ss) and any other characters copied as they stand: "DD/MM/YYYY", "HHMM",
// "DDMMYY", "DDMMYYYY", "YYYYMMDD", "hh:nn:ss". Case of the letters does not matter except
// that "MM" after "HH" or "hh" is minutes, as in the classic runtime.
std::string Format(const QDateTime& t, std::string_view pattern);

// ---- 16-bit and 32-bit integers ------------------------------------------------------
// A whole number whose every assignment is range-checked, so arithmetic that leaves the
// range raises 6 as the classic Integer and Long did.
template <typename T>
class Checked {
public:
    constexpr Checked() = default;
    Checked(long long v) : v_(check(v)) {}
    Checked& operator=(long long v) { v_ = check(v); return *this; }
    operator T() const { return v_; }
    T value() const { return v_; }
    Checked& operator+=(long long d) { return *this = (long long)v_ + d; }
    Checked& operator-=(long long d) { return *this = (long long)v_ - d; }
    Checked& operator++() { return *this += 1; }
    Checked& operator--() { return *this -= 1; }
    Checked operator++(int) { Checked old = *this; *this += 1; return old; }
    Checked operator--(int) { Checked old = *this; *this -= 1; return old; }

private:
    static T check(long long v)
    {
        if (v < (long long)std::numeric_limits<T>::min() || v > (long long)std::numeric_limits<T>::max())
            raisefault(fault::overflow);
        return (T)v;
    }
    T v_ = 0;
};
using Int16 = Checked<int16_t>;
using Int32 = Checked<int32_t>;

// ---- fixed arrays --------------------------------------------------------------------
// An array dimensioned Lo To Hi whose index check raises 9.
template <typename T, long Lo, long Hi>
class FixedArray {
public:
    FixedArray()
    {
        if constexpr (std::is_scalar_v<T>)
            for (auto& x : items_) x = T{};
    }
    T& operator[](long i) { check(i); return items_[i - Lo]; }
    const T& operator[](long i) const { check(i); return items_[i - Lo]; }
    static constexpr long lbound() { return Lo; }
    static constexpr long ubound() { return Hi; }
    void clear() { for (auto& x : items_) x = T{}; }

private:
    static void check(long i) { if (i < Lo || i > Hi) raisefault(fault::subscript); }
    T items_[Hi - Lo + 1];
};
