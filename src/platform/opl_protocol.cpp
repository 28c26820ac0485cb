#include "platform/opl_protocol.h"

#include <algorithm>
#include <cstdio>

#include "platform/crc16.h"

namespace opl {

Bytes encode(uint8_t command, const Bytes& payload)
{
    Bytes b{soh, command, (uint8_t)(payload.size() >> 8), (uint8_t)(payload.size() & 0xFF)};
    b.insert(b.end(), payload.begin(), payload.end());
    uint16_t c = crc16(b.data(), b.size());
    b.push_back((uint8_t)(c >> 8));
    b.push_back((uint8_t)(c & 0xFF));
    return b;
}

void Framer::feed(const uint8_t* p, size_t n) { buf_.insert(buf_.end(), p, p + n); }

void Framer::reset()
{
    garbage_ += buf_.size();  // a frame broken off counts as stray bytes
    buf_.clear();
}

bool Framer::next(Frame& f)
{
    for (;;) {
        auto start = std::find(buf_.begin(), buf_.end(), soh);
        garbage_ += (size_t)(start - buf_.begin());
        buf_.erase(buf_.begin(), start);
        if (buf_.size() < 4) return false;
        size_t len = ((size_t)buf_[2] << 8) | buf_[3];
        if (len > maxpayload) {
            ++badframes_;
            buf_.erase(buf_.begin());
            continue;
        }
        size_t total = 4 + len + 2;
        if (buf_.size() < total) return false;
        uint16_t c = crc16(buf_.data(), total - 2);
        if (buf_[total - 2] != (uint8_t)(c >> 8) || buf_[total - 1] != (uint8_t)(c & 0xFF)) {
            ++badframes_;
            buf_.erase(buf_.begin());
            continue;
        }
        f.command = buf_[1];
        f.payload.assign(buf_.begin() + 4, buf_.begin() + (long)(4 + len));
        buf_.erase(buf_.begin(), buf_.begin() + (long)total);
        return true;
    }
}

size_t Framer::need() const
{
    if (buf_.empty() || buf_[0] != soh) return 4;
    if (buf_.size() < 4) return 4 - buf_.size();
    size_t len = ((size_t)buf_[2] << 8) | buf_[3];
    size_t total = 4 + std::min(len, maxpayload) + 2;
    return total > buf_.size() ? total - buf_.size() : 1;
}

Bytes be16(int v) { return Bytes{(uint8_t)((v >> 8) & 0xFF), (uint8_t)(v & 0xFF)}; }

Bytes be32(uint32_t v)
{
    return Bytes{(uint8_t)(v >> 24), (uint8_t)(v >> 16), (uint8_t)(v >> 8), (uint8_t)v};
}

int getbe16(const Bytes& b, size_t at)
{
    if (b.size() < at + 2) return 0;
    return (int16_t)(uint16_t)((b[at] << 8) | b[at + 1]);
}

uint32_t getbe32(const Bytes& b, size_t at)
{
    if (b.size() < at + 4) return 0;
    return ((uint32_t)b[at] << 24) | ((uint32_t)b[at + 1] << 16) | ((uint32_t)b[at + 2] << 8) | b[at + 3];
}

Bytes textbytes(const std::string& s) { return Bytes(s.begin(), s.end()); }

std::string bytestext(const Bytes& b, size_t from)
{
    return from < b.size() ? std::string(b.begin() + (long)from, b.end()) : std::string();
}

Bytes reply(uint8_t result, const Bytes& data)
{
    Bytes b{result};
    b.insert(b.end(), data.begin(), data.end());
    return b;
}

bool validclock(const std::string& t)
{
    if (t.size() != 19) return false;
    static const char* shape = "99/99/9999 99:99:99";
    for (size_t i = 0; i < 19; ++i) {
        if (shape[i] == '9' ? (t[i] < '0' || t[i] > '9') : t[i] != shape[i]) return false;
    }
    auto num = [&](size_t at, size_t n) { return std::stoi(t.substr(at, n)); };
    int day = num(0, 2), month = num(3, 2), hour = num(11, 2), minute = num(14, 2), second = num(17, 2);
    return day >= 1 && day <= 31 && month >= 1 && month <= 12 && hour <= 23 && minute <= 59 && second <= 59;
}

std::string batterytext(int percent)
{
    char b[16];
    std::snprintf(b, sizeof b, "%03d%%", std::clamp(percent, 0, 999));
    return b;
}

Bytes versionsdata(const std::string& os, const std::string& app)
{
    Bytes b = textbytes(os);
    b.push_back(0);
    Bytes a = textbytes(app);
    b.insert(b.end(), a.begin(), a.end());
    return b;
}

bool parseversions(const Bytes& data, std::string& os, std::string& app)
{
    auto nul = std::find(data.begin(), data.end(), (uint8_t)0);
    if (nul == data.end()) return false;
    os.assign(data.begin(), nul);
    app.assign(nul + 1, data.end());
    return true;
}

}  // namespace opl
