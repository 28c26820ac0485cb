#include "platform/csp2_protocol.h"

#include <algorithm>
#include <utility>

#include "platform/crc16.h"

namespace csp {
namespace {

void appendcrc(Bytes& b)
{
    uint16_t c = crc16(b.data(), b.size());
    b.push_back((uint8_t)(c >> 8));
    b.push_back((uint8_t)(c & 0xFF));
}

bool crcok(const uint8_t* p, size_t n)
{
    uint16_t c = crc16(p, n - 2);
    return p[n - 2] == (uint8_t)(c >> 8) && p[n - 1] == (uint8_t)(c & 0xFF);
}

// Scans [head][STX][fixed][strings][0][CRC] at the front of buf. `fixedof` gives the fixed
// data for a head; `mask` the bits of a length byte that count; `strict` makes a length byte
// with other bits set a bad frame.
template <typename HeadTest, typename Fixed>
Scan scanframe(const uint8_t* buf, size_t n, uint8_t mask, bool strict, HeadTest goodhead, Fixed fixedof)
{
    Scan s;
    size_t i = 0;
    // Skip to the first place where a head is followed by STX (or could be, at the end).
    while (i < n) {
        if (goodhead(buf[i]) && (i + 1 >= n || buf[i + 1] == stx)) break;
        ++i;
    }
    s.skipped = i;
    const uint8_t* f = buf + i;
    size_t have = n - i;
    if (have < 2) {
        s.need = 2 - have;
        return s;
    }
    s.head = f[0];
    size_t fixed = fixedof(f[0]);
    size_t at = 2 + fixed;
    std::vector<std::pair<size_t, size_t>> spans;  // each string's start and length
    for (;;) {
        if (at >= have) {
            s.need = at + 1 - have;
            return s;
        }
        uint8_t lb = f[at];
        if (lb == 0) break;
        if ((strict && (lb & ~mask)) || at > maxframe) {
            s.state = Scan::badframe;
            s.used = i + at + 1;
            return s;
        }
        size_t len = lb & mask;
        spans.emplace_back(at + 1, len);
        at += 1 + len;
    }
    size_t total = at + 1 + 2;
    if (have < total) {
        s.need = total - have;
        return s;
    }
    s.used = i + total;
    if (!crcok(f, total)) {
        s.state = Scan::badcrc;
        return s;
    }
    s.fixed.assign(f + 2, f + 2 + fixed);
    for (auto [from, len] : spans) s.strings.emplace_back(f + from, f + from + len);
    s.state = Scan::complete;
    return s;
}

}  // namespace

bool statusbyte(uint8_t b)
{
    return b == statusok || b == statusunsupported || b == statuscrc || b == statuscharacter ||
           b == statusgeneral;
}

bool knowncommand(uint8_t c)
{
    return c == cmdinterrogate || c == cmdcleardata || c == cmdsetparam || c == cmdsetdefaults ||
           c == cmdpowerdown || c == cmdupload || c == cmdgetparam || c == cmdsettime || c == cmdgettime;
}

uint8_t replyhead(uint8_t command, const Quirks& q)
{
    return q.replyhead == ReplyHead::echo ? command : statusok;
}

size_t fixedsize(uint8_t command)
{
    return command == cmdinterrogate ? (size_t)identitysize : command == cmdupload ? (size_t)serialsize : 0;
}

Bytes frame(uint8_t head, const Bytes& fixed, const std::vector<Bytes>& strings)
{
    Bytes b{head, stx};
    b.insert(b.end(), fixed.begin(), fixed.end());
    for (const auto& str : strings) {
        size_t len = std::min(str.size(), (size_t)maxstring);
        if (len == 0) continue;
        b.push_back((uint8_t)len);
        b.insert(b.end(), str.begin(), str.begin() + (long)len);
    }
    b.push_back(0x00);
    appendcrc(b);
    return b;
}

Bytes frame(uint8_t head, const Bytes& string)
{
    return string.empty() ? frame(head, {}, {}) : frame(head, {}, {string});
}

Scan scanreply(const uint8_t* buf, size_t n, uint8_t command, const Quirks& q)
{
    bool echo = q.replyhead == ReplyHead::echo;
    uint8_t mask = q.extendedlength ? 0xFF : 0x1F;
    Scan s = scanframe(
        buf, n, mask, false, [&](uint8_t b) { return echo ? b == command : statusbyte(b); },
        [&](uint8_t head) { return echo || head == statusok ? fixedsize(command) : 0; });
    if (s.state == Scan::complete && !echo && s.head != statusok) s.state = Scan::refused;
    return s;
}

Scan scanrequest(const uint8_t* buf, size_t n, const Quirks& q)
{
    uint8_t mask = q.extendedlength ? 0xFF : 0x1F;
    return scanframe(
        buf, n, mask, !q.extendedlength, [](uint8_t b) { return knowncommand(b); }, [](uint8_t) { return size_t{0}; });
}

// ---- upload reply --------------------------------------------------------------------

UploadReader::UploadReader(const Quirks& q) : q_(q) { want_ = 2; }

size_t UploadReader::need() const
{
    if (state_ != reading) return 0;
    return want_ - current_.size();
}

void UploadReader::feed(const uint8_t* p, size_t n)
{
    for (size_t i = 0; i < n && state_ == reading; ++i) take(p[i]);
}

void UploadReader::take(uint8_t b)
{
    current_.push_back(b);
    if (current_.size() < want_) return;
    switch (step_) {
    case head: {
        bool echo = q_.replyhead == ReplyHead::echo;
        bool good = echo ? current_[0] == cmdupload : statusbyte(current_[0]);
        if (!good || current_[1] != stx) {
            current_.erase(current_.begin());  // leading garbage: slide by one
            ++skipped_;
            return;
        }
        if (!echo && current_[0] != statusok) {
            state_ = refused;
            return;
        }
        frame_ = current_;
        step_ = serialno;
        want_ = serialsize;
        break;
    }
    case serialno:
        serial_ = current_;
        frame_.insert(frame_.end(), current_.begin(), current_.end());
        step_ = length;
        want_ = 1;
        break;
    case length:
        frame_.push_back(b);
        if (b == 0) {
            step_ = crc;
            want_ = 2;
        } else {
            // A record too short for its code type and stamp is still a record: the
            // program judges it, the link only carries it.
            step_ = body;
            want_ = b;
            records_.push_back(Bytes{b});
        }
        break;
    case body:
        frame_.insert(frame_.end(), current_.begin(), current_.end());
        records_.back().insert(records_.back().end(), current_.begin(), current_.end());
        step_ = length;
        want_ = 1;
        break;
    case crc: {
        uint16_t c = crc16(frame_.data(), frame_.size());
        state_ = (current_[0] == (uint8_t)(c >> 8) && current_[1] == (uint8_t)(c & 0xFF)) ? done : badcrc;
        break;
    }
    }
    current_.clear();
}

Bytes uploadreply(const Bytes& serial, const std::vector<Bytes>& records, const Quirks& q)
{
    Bytes b{replyhead(cmdupload, q), stx};
    Bytes sn = serial;
    sn.resize(serialsize, 0);
    b.insert(b.end(), sn.begin(), sn.end());
    for (const auto& r : records) b.insert(b.end(), r.begin(), r.end());
    b.push_back(0x00);
    appendcrc(b);
    return b;
}

// ---- payloads ------------------------------------------------------------------------

Bytes identitypayload(const Identity& id)
{
    Bytes b{id.protocol, id.status};
    Bytes sn = id.serial;
    sn.resize(serialsize, 0);
    b.insert(b.end(), sn.begin(), sn.end());
    std::string v = id.version;
    v.resize(versionsize, ' ');
    b.insert(b.end(), v.begin(), v.end());
    return b;
}

bool parseidentity(const Bytes& p, Identity& id)
{
    if (p.size() != (size_t)identitysize) return false;
    id.protocol = p[0];
    id.status = p[1];
    id.serial.assign(p.begin() + 2, p.begin() + 2 + serialsize);
    id.version.assign(p.begin() + 2 + serialsize, p.end());
    return true;
}

Bytes packstamp(const Stamp& s)
{
    uint32_t v = ((uint32_t)(s.second & 63) << 26) | ((uint32_t)(s.minute & 63) << 20) |
                 ((uint32_t)(s.hour & 31) << 15) | ((uint32_t)(s.day & 31) << 10) |
                 ((uint32_t)(s.month & 15) << 6) | (uint32_t)(s.year & 63);
    return Bytes{(uint8_t)(v >> 24), (uint8_t)(v >> 16), (uint8_t)(v >> 8), (uint8_t)v};
}

Bytes makerecord(uint8_t codetype, const std::string& barcode, const Stamp& s)
{
    Bytes r;
    r.reserve(barcode.size() + recordoverhead + 1);
    r.push_back((uint8_t)(barcode.size() + recordoverhead));
    r.push_back(codetype);
    for (char c : barcode) r.push_back((uint8_t)c);
    for (uint8_t b : packstamp(s)) r.push_back(b);
    return r;
}

}  // namespace csp
