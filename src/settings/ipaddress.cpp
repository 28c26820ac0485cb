// The server address as typed on the setup screen: its validation into iperror and
// ipnormal, and its 32-bit form for the echo call.
#include <cmath>
#include <vector>

#include "core/globals.h"
#include "runtime/vb.h"
#include "settings/storecheck.h"

namespace {

bool digitsonly(const std::string& s)
{
    if (s.empty()) return false;
    for (char c : s)
        if (c < '0' || c > '9') return false;
    return true;
}

// An octet is digits only and at most 255. Long runs of digits are over 255 whatever they
// say, so they never reach a conversion that could overflow.
bool goodoctet(const std::string& s)
{
    if (!digitsonly(s)) return false;
    std::string t = s;
    while (t.size() > 1 && t[0] == '0') t.erase(0, 1);
    return t.size() <= 3 && std::stoi(t) <= 255;
}

std::string plain(const std::string& octet)
{
    std::string t = octet;
    while (t.size() > 1 && t[0] == '0') t.erase(0, 1);
    return t;
}

// Blanks, line ends and NULs that a typed or read address can carry at its end.
std::string withoutstray(const std::string& s)
{
    std::string out;
    for (char c : s)
        if (c != ' ' && c != '\t' && c != '\r' && c != '\n' && c != '\0') out += c;
    return out;
}

}  // namespace

void validateip(const std::string& address)
{
    Globals& s = g();
    s.iperror = 0;
    s.ipnormal = "";
    if (address.empty()) {
        s.ipnormal = "0.0.0.0";
        s.iperror = 2;
        return;
    }
    if (Left(address, 7) == "0.0.0.0") {
        s.ipnormal = "0.0.0.0";
        s.iperror = 1;
        return;
    }
    std::string rest = address;
    for (int octet = 1; octet <= 3; ++octet) {
        long dot = InStr(rest, ".");
        if (dot < 2) {
            s.ipnormal = address;
            s.iperror = 3;
            return;
        }
        std::string part = Left(rest, dot - 1);
        if (!goodoctet(part)) {
            s.iperror = 4;
            return;
        }
        s.ipnormal = s.ipnormal + plain(part) + ".";
        rest = Mid(rest, dot + 1);
    }
    std::string last = withoutstray(rest);
    if (InStr(last, ".") > 0 || last.empty()) {
        s.iperror = 3;
        return;
    }
    if (!goodoctet(last)) {
        s.iperror = 4;
        return;
    }
    s.ipnormal = s.ipnormal + plain(last);
}

int32_t ipstringtolong(const std::string& address)
{
    std::vector<std::string> parts;
    std::string part;
    for (char c : address) {
        if (c == '.') {
            parts.push_back(part);
            part.clear();
        } else {
            part += c;
        }
    }
    parts.push_back(part);
    if (parts.size() != 4) return 0;

    static const char digits[] = "0123456789ABCDEF";
    std::string hex = "&H";
    for (int i = 3; i >= 0; --i) {
        // Each octet as two hexadecimal digits: the low byte of its value.
        const double d = Val(parts[i]);
        const long v = std::fabs(d) < 1e9 ? (long)d : 0;
        hex += digits[(v >> 4) & 15];
        hex += digits[v & 15];
    }
    return CLng(Val(hex));
}
