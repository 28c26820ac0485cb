#include "cspdevice.h"

#include <algorithm>

namespace {

const char* commandname(uint8_t c)
{
    switch (c) {
    case csp::cmdinterrogate: return "interrogate";
    case csp::cmdcleardata: return "clear";
    case csp::cmdsetparam: return "setparam";
    case csp::cmdsetdefaults: return "setdefaults";
    case csp::cmdpowerdown: return "powerdown";
    case csp::cmdupload: return "upload";
    case csp::cmdgetparam: return "getparam";
    case csp::cmdsettime: return "settime";
    case csp::cmdgettime: return "gettime";
    default: return "";
    }
}

const csp::Bytes serialnumber{0x00, 0x00, 0x00, 0x00, 0x10, 0x02, 0x03, 0x04};

}  // namespace

CspDevice::CspDevice(Line& line, Memory& memory, const Options& options)
    : Device(line, memory, options), asleep_(options.sleepafter > 0)
{
    q_ = csp::defaultquirks;
    q_.replyhead = options.replyhead == "echo" ? csp::ReplyHead::echo : csp::ReplyHead::status;
    q_.extendedlength = options.extendedlength;
    lastactive_ = Line::clock::now();
}

void CspDevice::wake()
{
    mem_.poweredoff = false;
    asleep_ = false;
    lastactive_ = Line::clock::now();
    save();
}

bool CspDevice::sleeping(Line::clock::time_point now)
{
    if (o_.sleepafter > 0 && now - lastactive_ >= std::chrono::milliseconds(o_.sleepafter)) asleep_ = true;
    return asleep_;
}

void CspDevice::tick()
{
    // DTR lowered and raised again wakes a sleeping scanner (--wake dtr).
    bool dtr = line_.dtr();
    if (dtr && !dtr_ && o_.wake == "dtr" && sleeping(Line::clock::now())) {
        asleep_ = false;
        lastactive_ = Line::clock::now();
        buf_.clear();
    }
    dtr_ = dtr;
}

void CspDevice::received(const uint8_t* p, size_t n)
{
    if (o_.noanswer || mem_.poweredoff) return;
    auto now = Line::clock::now();
    if (!dtr_ || sleeping(now)) {
        // Lost: a scanner held in reset by DTR, or asleep. Bytes wake it under --wake bytes.
        if (dtr_ && o_.wake == "bytes") {
            asleep_ = false;
            lastactive_ = now;
        }
        buf_.clear();
        return;
    }
    lastactive_ = now;
    buf_.insert(buf_.end(), p, p + n);
    for (;;) {
        csp::Scan s = csp::scanrequest(buf_.data(), buf_.size(), q_);
        if (s.state == csp::Scan::needmore) {
            buf_.erase(buf_.begin(), buf_.begin() + (long)s.skipped);
            return;
        }
        buf_.erase(buf_.begin(), buf_.begin() + (long)s.used);
        if (s.state == csp::Scan::complete) {
            line_.awaitinput();
            handle(s.head, s.strings);
        } else if (q_.replyhead == csp::ReplyHead::status) {
            line_.awaitinput();
            line_.write(csp::frame(s.state == csp::Scan::badcrc ? csp::statuscrc : csp::statuscharacter, {}));
        }
        lastactive_ = Line::clock::now();
        if (mem_.poweredoff || line_.gone()) {
            buf_.clear();
            return;
        }
    }
}

void CspDevice::reply(uint8_t command, const csp::Bytes& fixed, const std::vector<csp::Bytes>& strings)
{
    if (names(o_.garbage, commandname(command))) {
        line_.write(garbage());
        return;
    }
    csp::Bytes f = csp::frame(csp::replyhead(command, q_), fixed, strings);
    if (names(o_.badcrc, commandname(command))) f.back() ^= 0xFF;
    line_.write(f);
}

csp::Bytes CspDevice::clockbytes() const
{
    std::tm t = mem_.now();
    return {(uint8_t)t.tm_sec, (uint8_t)t.tm_min, (uint8_t)t.tm_hour,
            (uint8_t)t.tm_mday, (uint8_t)(t.tm_mon + 1), (uint8_t)(t.tm_year % 100)};
}

void CspDevice::handle(uint8_t command, const std::vector<csp::Bytes>& strings)
{
    if (names(o_.refuse, commandname(command))) {
        line_.write(csp::frame((uint8_t)o_.refusestatus, {}));
        return;
    }
    csp::Bytes first = strings.empty() ? csp::Bytes{} : strings.front();
    switch (command) {
    case csp::cmdinterrogate: {
        csp::Identity id{csp::protocolversion, (uint8_t)o_.systemstatus, serialnumber, mem_.version};
        reply(command, csp::identitypayload(id));
        break;
    }
    case csp::cmdcleardata:
        mem_.records.clear();
        save();
        reply(command, {});
        break;
    case csp::cmdsetparam: {
        // One string per parameter: its number, then the value. Only the scratch pad is kept.
        std::vector<csp::Bytes> set;
        for (const auto& str : strings) {
            csp::Bytes value(str.begin() + 1, str.end());
            if (str[0] == csp::paramid) {
                auto& pad = mem_.scratchpad;
                size_t n = std::min(value.size(), pad.size());
                if (o_.refuseid) {
                    value.assign(pad.begin(), pad.begin() + (long)n);  // answers with what it kept
                } else {
                    std::copy(value.begin(), value.begin() + (long)n, pad.begin());
                    save();
                }
            }
            csp::Bytes r{str[0]};
            r.insert(r.end(), value.begin(), value.end());
            set.push_back(r);
        }
        reply(command, {}, set);
        break;
    }
    case csp::cmdsetdefaults:
        reply(command, {});
        break;
    case csp::cmdpowerdown:
        reply(command, {});
        mem_.poweredoff = true;
        save();
        break;
    case csp::cmdupload:
        upload();
        break;
    case csp::cmdgetparam: {
        // One string per parameter asked: its number, then the value.
        std::vector<csp::Bytes> values;
        for (const auto& str : strings) {
            csp::Bytes r{str[0]};
            if (str[0] == csp::paramid) {
                r.insert(r.end(), mem_.scratchpad.begin(), mem_.scratchpad.end());
            } else if (str[0] == csp::paramasciimode) {
                r.push_back(1);
            }
            if (!q_.extendedlength && r.size() > (size_t)csp::shortstring) r.resize(csp::shortstring);
            values.push_back(r);
        }
        reply(command, {}, values);
        break;
    }
    case csp::cmdsettime: {
        if (first.size() != csp::clocksize) {
            if (q_.replyhead == csp::ReplyHead::status) line_.write(csp::frame(csp::statusgeneral, {}));
            return;
        }
        if (o_.refuseclock) {
            reply(command, {}, {clockbytes()});
            break;
        }
        std::tm t{};
        t.tm_sec = first[0];
        t.tm_min = first[1];
        t.tm_hour = first[2];
        t.tm_mday = first[3];
        t.tm_mon = first[4] - 1;
        t.tm_year = 100 + (first[5] % 100);
        mem_.setclock(t);
        save();
        reply(command, {}, {first});
        break;
    }
    case csp::cmdgettime:
        reply(command, {}, {clockbytes()});
        break;
    }
}

void CspDevice::upload()
{
    if (names(o_.garbage, "upload")) {
        line_.write(garbage());
        return;
    }
    csp::Bytes whole = csp::uploadreply(serialnumber, mem_.records, q_);
    if (names(o_.badcrc, "upload")) whole.back() ^= 0xFF;
    if (o_.vanishrecords < 0 || o_.vanishrecords >= (long)mem_.records.size()) {
        line_.write(whole);
        return;
    }
    // Sent piece by piece, so that the scanner can be pulled out after N records.
    size_t at = 2 + csp::serialsize;
    if (!line_.write(csp::Bytes(whole.begin(), whole.begin() + (long)at))) return;
    for (long i = 0; i < o_.vanishrecords; ++i) {
        const auto& r = mem_.records[(size_t)i];
        if (!line_.write(r)) return;
    }
    line_.vanish();
}
