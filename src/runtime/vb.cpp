#include "runtime/vb.h"

#include <QDateTime>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>

std::string Left(std::string_view s, long n)
{
    if (n < 0) raisefault(fault::invalidcall);
    return std::string(s.substr(0, std::min<size_t>(n, s.size())));
}

std::string Right(std::string_view s, long n)
{
    if (n < 0) raisefault(fault::invalidcall);
    size_t k = std::min<size_t>(n, s.size());
    return std::string(s.substr(s.size() - k));
}

std::string Mid(std::string_view s, long start, long n)
{
    if (start < 1) raisefault(fault::invalidcall);
    if ((size_t)start > s.size()) return {};
    auto rest = s.substr(start - 1);
    if (n < 0) return std::string(rest);
    return std::string(rest.substr(0, std::min<size_t>(n, rest.size())));
}

long InStr(long start, std::string_view s, std::string_view find)
{
    if (start < 1) raisefault(fault::invalidcall);
    if ((size_t)start > s.size()) return find.empty() && (size_t)start == s.size() + 1 ? 0 : 0;
    if (find.empty()) return start;
    auto p = s.find(find, start - 1);
    return p == std::string_view::npos ? 0 : (long)p + 1;
}

long Len(std::string_view s) { return (long)s.size(); }

std::string UCase(std::string_view s)
{
    std::string r(s);
    for (auto& c : r) c = (char)std::toupper((unsigned char)c);
    return r;
}

std::string LCase(std::string_view s)
{
    std::string r(s);
    for (auto& c : r) c = (char)std::tolower((unsigned char)c);
    return r;
}

std::string LTrim(std::string_view s)
{
    size_t i = 0;
    while (i < s.size() && s[i] == ' ') ++i;
    return std::string(s.substr(i));
}

std::string RTrim(std::string_view s)
{
    size_t n = s.size();
    while (n > 0 && s[n - 1] == ' ') --n;
    return std::string(s.substr(0, n));
}

std::string Trim(std::string_view s) { return LTrim(RTrim(s)); }

std::string trimblanks(std::string_view s)
{
    size_t b = s.find_first_not_of(" \t\r\n");
    if (b == std::string_view::npos) return {};
    return std::string(s.substr(b, s.find_last_not_of(" \t\r\n") - b + 1));
}

std::string Space(long n)
{
    if (n < 0) raisefault(fault::invalidcall);
    return std::string(n, ' ');
}

std::string String(long n, char c)
{
    if (n < 0) raisefault(fault::invalidcall);
    return std::string(n, c);
}

std::string Chr(int code)
{
    if (code < 0 || code > 255) raisefault(fault::invalidcall);
    return std::string(1, (char)(unsigned char)code);
}

int Asc(std::string_view s)
{
    if (s.empty()) raisefault(fault::invalidcall);
    return (unsigned char)s[0];
}

static bool likeat(std::string_view t, std::string_view p)
{
    while (!p.empty()) {
        char c = p[0];
        if (c == '*') {
            while (!p.empty() && p[0] == '*') p.remove_prefix(1);
            if (p.empty()) return true;
            for (size_t i = 0; i <= t.size(); ++i)
                if (likeat(t.substr(i), p)) return true;
            return false;
        }
        if (t.empty()) return false;
        if (c == '?' || (c == '#' && std::isdigit((unsigned char)t[0])) || c == t[0]) {
            t.remove_prefix(1);
            p.remove_prefix(1);
            continue;
        }
        return false;
    }
    return t.empty();
}

bool Like(std::string_view text, std::string_view pattern) { return likeat(text, pattern); }

// ---- numbers -------------------------------------------------------------------------

namespace {

// Parses a number at the start of `s` (no blanks inside). Returns the characters used, 0
// when there is no number.
size_t parsenumber(std::string_view s, double& out)
{
    size_t i = 0;
    if (s.size() >= 2 && s[0] == '&' && (s[1] == 'H' || s[1] == 'h' || s[1] == 'O' || s[1] == 'o')) {
        int base = (s[1] == 'H' || s[1] == 'h') ? 16 : 8;
        i = 2;
        long long v = 0;
        size_t first = i;
        while (i < s.size()) {
            int d;
            char c = s[i];
            if (c >= '0' && c <= '9') d = c - '0';
            else if (base == 16 && c >= 'a' && c <= 'f') d = c - 'a' + 10;
            else if (base == 16 && c >= 'A' && c <= 'F') d = c - 'A' + 10;
            else break;
            if (d >= base) break;
            v = v * base + d;
            ++i;
        }
        if (i == first) return 0;
        // Hex constants of up to four digits are 16-bit, up to eight 32-bit, as written.
        if (base == 16 && i - first <= 4 && v > 0x7FFF) v -= 0x10000;
        else if (base == 16 && i - first <= 8 && v > 0x7FFFFFFF) v -= 0x100000000LL;
        out = (double)v;
        return i;
    }
    size_t start = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
    size_t digits = 0;
    while (i < s.size() && std::isdigit((unsigned char)s[i])) { ++i; ++digits; }
    if (i < s.size() && s[i] == '.') {
        ++i;
        while (i < s.size() && std::isdigit((unsigned char)s[i])) { ++i; ++digits; }
    }
    if (digits == 0) return 0;
    if (i < s.size() && (s[i] == 'E' || s[i] == 'e' || s[i] == 'D' || s[i] == 'd')) {
        size_t j = i + 1;
        if (j < s.size() && (s[j] == '+' || s[j] == '-')) ++j;
        size_t ed = 0;
        while (j < s.size() && std::isdigit((unsigned char)s[j])) { ++j; ++ed; }
        if (ed > 0) i = j;
    }
    std::string text(s.substr(start, i - start));
    for (auto& c : text) if (c == 'D' || c == 'd') c = 'E';
    out = std::strtod(text.c_str(), nullptr);
    return i;
}

double tonearest(double v) { return std::nearbyint(v); }  // halves go to even

}  // namespace

double Val(std::string_view s)
{
    std::string packed;
    for (char c : s)
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r') packed += c;
    double v = 0;
    return parsenumber(packed, v) ? v : 0.0;
}

// The conversions read a text as the system's conversion calls do: up to its first NUL.
namespace {
std::string_view uptonul(std::string_view s) { return s.substr(0, s.find('\0')); }
}  // namespace

bool IsNumeric(std::string_view s)
{
    std::string t = Trim(uptonul(s));
    while (!t.empty() && (t.back() == '\t')) t.pop_back();
    if (t.empty()) return false;
    double v = 0;
    return parsenumber(t, v) == t.size();
}

double CDbl(std::string_view s)
{
    std::string t = Trim(uptonul(s));
    double v = 0;
    if (t.empty() || parsenumber(t, v) != t.size()) raisefault(fault::typemismatch);
    return v;
}

int16_t CInt(double v)
{
    double r = tonearest(v);
    if (!(r >= -32768.0 && r <= 32767.0)) raisefault(fault::overflow);
    return (int16_t)r;
}

int16_t CInt(std::string_view s) { return CInt(CDbl(s)); }

int32_t CLng(double v)
{
    double r = tonearest(v);
    if (!(r >= -2147483648.0 && r <= 2147483647.0)) raisefault(fault::overflow);
    return (int32_t)r;
}

int32_t CLng(std::string_view s) { return CLng(CDbl(s)); }

std::string CStr(long long v) { return std::to_string(v); }

std::string CStr(double v)
{
    if (v == std::floor(v) && std::fabs(v) < 1e15) return std::to_string((long long)v);
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.15g", v);
    return buf;
}

std::string Str(long long v) { return v >= 0 ? " " + std::to_string(v) : std::to_string(v); }

std::string Format(long long n, std::string_view pattern)
{
    size_t width = 0;
    for (char c : pattern)
        if (c == '0') ++width;
    std::string digits = std::to_string(n < 0 ? -n : n);
    if (digits.size() < width) digits = std::string(width - digits.size(), '0') + digits;
    return n < 0 ? "-" + digits : digits;
}

std::string Format(const QDateTime& t, std::string_view pattern)
{
    auto two = [](int v) { return Format(v, "00"); };
    std::string out;
    bool afterhour = false;
    size_t i = 0;
    auto at = [&](std::string_view tok) {
        if (i + tok.size() > pattern.size()) return false;
        for (size_t k = 0; k < tok.size(); ++k)
            if (std::toupper((unsigned char)pattern[i + k]) != tok[k]) return false;
        return true;
    };
    const QDate d = t.date();
    const QTime tm = t.time();
    while (i < pattern.size()) {
        if (at("YYYY")) { out += Format(d.year(), "0000"); i += 4; }
        else if (at("YY")) { out += two(d.year() % 100); i += 2; }
        else if (at("DD")) { out += two(d.day()); i += 2; }
        else if (at("MM")) { out += afterhour ? two(tm.minute()) : two(d.month()); afterhour = false; i += 2; }
        else if (at("HH")) { out += two(tm.hour()); afterhour = true; i += 2; }
        else if (at("NN")) { out += two(tm.minute()); afterhour = false; i += 2; }
        else if (at("SS")) { out += two(tm.second()); i += 2; }
        else { out += pattern[i]; ++i; }
    }
    return out;
}
