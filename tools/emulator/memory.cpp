#include "memory.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "platform/csp2_protocol.h"

namespace {

std::string chomp(std::string s)
{
    while (!s.empty() && (s.back() == '\r' || s.back() == '\n')) s.pop_back();
    return s;
}

const char* typename_(Options::Type t)
{
    return t == Options::opl ? "opl" : t == Options::opn ? "opn" : "cs1504";
}

std::vector<uint8_t> idscratchpad(long id)
{
    char text[16];
    std::snprintf(text, sizeof text, "%06ld", id);
    std::vector<uint8_t> pad(text, text + 6);
    pad.resize(csp::paramidsize, ' ');
    return pad;
}

}  // namespace

std::string hex(const std::vector<uint8_t>& b)
{
    static const char* digits = "0123456789ABCDEF";
    std::string s;
    for (uint8_t c : b) {
        s += digits[c >> 4];
        s += digits[c & 15];
    }
    return s;
}

std::vector<uint8_t> unhex(const std::string& text)
{
    std::vector<uint8_t> out;
    int high = -1;
    for (char c : text) {
        if (c == ' ' || c == '\t') continue;
        int v = c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
        if (v < 0) throw std::runtime_error("'" + text + "' is not hexadecimal");
        if (high < 0) {
            high = v;
        } else {
            out.push_back((uint8_t)(high * 16 + v));
            high = -1;
        }
    }
    if (high >= 0) throw std::runtime_error("'" + text + "' has an odd number of hex digits");
    return out;
}

std::vector<uint8_t> parserecord(const std::string& line)
{
    if (line.rfind("hex:", 0) == 0) {
        auto r = unhex(line.substr(4));
        // Whatever a damaged scanner may hold, a length byte below 5 included; only a record
        // that could not be framed at all is refused.
        if (r.size() < 2 || r[0] != r.size() - 1)
            throw std::runtime_error("record '" + line + "': the length byte must count the bytes after it (at least 1)");
        return r;
    }
    auto last = line.rfind(',');
    auto middle = last == std::string::npos || last == 0 ? std::string::npos : line.rfind(',', last - 1);
    if (middle == std::string::npos || middle == 0)
        throw std::runtime_error("record '" + line + "': wanted barcode,code type,YYYY-MM-DD HH:MM:SS");
    std::string barcode = line.substr(0, middle);
    std::string type = line.substr(middle + 1, last - middle - 1);
    int code = -1, consumed = 0;
    if (std::sscanf(type.c_str(), "%d%n", &code, &consumed) != 1 || consumed != (int)type.size() || code < 0 || code > 255)
        throw std::runtime_error("record '" + line + "': the code type must be a number from 0 to 255");
    if (barcode.size() > 250) throw std::runtime_error("record '" + line + "': barcode longer than 250 characters");
    csp::Stamp s;
    int year = 0;
    if (std::sscanf(line.c_str() + last + 1, "%d-%d-%d %d:%d:%d%n", &year, &s.month, &s.day, &s.hour, &s.minute,
                    &s.second, &consumed) != 6 ||
        s.month < 1 || s.month > 12 || s.day < 1 || s.day > 31 || s.hour > 23 || s.minute > 59 || s.second > 59)
        throw std::runtime_error("record '" + line + "': the scan time must read YYYY-MM-DD HH:MM:SS");
    s.year = year % 100;
    if (s.year > 63) throw std::runtime_error("record '" + line + "': the stamp holds years 00 to 63 of a century");
    return csp::makerecord((uint8_t)code, barcode, s);
}

Memory Memory::start(const Options& o)
{
    Memory m;
    m.type = o.type;
    if (!o.state.empty()) {
        std::ifstream in(o.state);
        if (in) {
            std::string line;
            bool typeseen = false;
            while (std::getline(in, line)) {
                line = chomp(line);
                auto eq = line.find('=');
                if (eq == std::string::npos) continue;
                std::string key = line.substr(0, eq), value = line.substr(eq + 1);
                if (key == "type") {
                    if (value != typename_(o.type)) throw std::runtime_error(o.state + " holds a scanner of type " + value);
                    typeseen = true;
                }
                else if (key == "id") m.id = std::stoi(value);
                else if (key == "scratchpad") m.scratchpad = unhex(value);
                else if (key == "clockoffset") m.clockoffset = std::llround(std::stod(value));
                else if (key == "poweredoff") m.poweredoff = value == "1";
                else if (key == "battery") m.battery = std::stoi(value);
                else if (key == "version") m.version = value;
                else if (key == "osversion") m.osversion = value;
                else if (key == "appversion") m.appversion = value;
                else if (key == "line") m.lines.push_back(value);
                else if (key == "record") m.records.push_back(unhex(value));
            }
            if (!typeseen) throw std::runtime_error(o.state + " is not a state file of this emulator");
            m.scratchpad.resize(csp::paramidsize, ' ');
            return m;
        }
    }
    m.id = (int)o.id;
    m.scratchpad = idscratchpad(o.id);
    m.clockoffset = std::llround(o.clockoffset * 60.0);
    m.battery = o.battery;
    m.version = o.swversion;
    m.osversion = o.osversion;
    m.appversion = o.appversion;
    if (!o.records.empty()) {
        std::ifstream in(o.records, std::ios::binary);
        if (!in) throw std::runtime_error("cannot read the records file " + o.records);
        std::string line;
        while (std::getline(in, line)) {
            line = chomp(line);
            if (o.type == Options::opl) {
                m.lines.push_back(line);
            } else if (!line.empty()) {
                m.records.push_back(parserecord(line));
            }
        }
    }
    return m;
}

void Memory::save(const std::string& statefile) const
{
    if (statefile.empty()) return;
    std::string tmp = statefile + ".new";
    {
        std::ofstream out(tmp, std::ios::binary | std::ios::trunc);
        out << "type=" << typename_(type) << "\n";
        out << "clockoffset=" << clockoffset << "\n";
        // An OPN 2001 comes back on when it is docked again; a CS 1504 stays off.
        if (type == Options::cs1504 && poweredoff) out << "poweredoff=1\n";
        if (type == Options::opl) {
            out << "id=" << id << "\nbattery=" << battery << "\nosversion=" << osversion << "\nappversion=" << appversion << "\n";
            for (const auto& l : lines) out << "line=" << l << "\n";
        } else {
            out << "scratchpad=" << hex(scratchpad) << "\nversion=" << version << "\n";
            for (const auto& r : records) out << "record=" << hex(r) << "\n";
        }
        if (!out) throw std::runtime_error("cannot write the state file " + statefile);
    }
    std::rename(tmp.c_str(), statefile.c_str());
}

std::tm Memory::now() const
{
    std::time_t t = std::time(nullptr) + (std::time_t)clockoffset;
    std::tm tm{};
    localtime_r(&t, &tm);
    return tm;
}

void Memory::setclock(const std::tm& t)
{
    std::tm copy = t;
    copy.tm_isdst = -1;
    clockoffset = (long long)(std::mktime(&copy) - std::time(nullptr));
}
