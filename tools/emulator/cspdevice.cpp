#include "cspdevice.h"

#include <algorithm>

namespace {

const char* commandname(uint8_t c)
{
    switch (c) {
    case csp::cmdinterrogate: return "interrogate";
    case csp::cmdcleardata: return "clear";
    case csp::cmdsetparam: return "setparam";
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
    q_.replyhead = options.replyhead == "status" ? csp::ReplyHead::status : csp::ReplyHead::echo;
    lastinput_ = Line::clock::now();
}

void CspDevice::received(const uint8_t* p, size_t n)
{
    if (o_.noanswer || poweredoff_) return;
    auto now = Line::clock::now();
    if (o_.sleepafter > 0 && (asleep_ || now - lastinput_ >= std::chrono::milliseconds(o_.sleepafter))) {
        // Asleep: these bytes only wake the scanner.
        asleep_ = false;
        lastinput_ = now;
        buf_.clear();
        return;
    }
    lastinput_ = now;
    buf_.insert(buf_.end(), p, p + n);
    for (;;) {
        csp::Scan s = csp::scanrequest(buf_.data(), buf_.size());
        if (s.state == csp::Scan::needmore) {
            buf_.erase(buf_.begin(), buf_.begin() + (long)s.skipped);
            return;
        }
        buf_.erase(buf_.begin(), buf_.begin() + (long)s.used);
        if (s.state == csp::Scan::complete) {
            line_.awaitinput();
            handle(s.head, s.payload);
        } else if (q_.replyhead == csp::ReplyHead::status) {
            line_.awaitinput();
            line_.write(csp::frame(s.state == csp::Scan::badcrc ? csp::statuscrc : csp::statuscharacter, {}));
        }
        if (poweredoff_ || line_.gone()) {
            buf_.clear();
            return;
        }
    }
}

void CspDevice::reply(uint8_t command, const csp::Bytes& payload)
{
    if (names(o_.garbage, commandname(command))) {
        line_.write(garbage());
        return;
    }
    csp::Bytes f = csp::frame(csp::replyhead(command, q_), payload);
    if (names(o_.badcrc, commandname(command))) f.back() ^= 0xFF;
    line_.write(f);
}

csp::Bytes CspDevice::clockbytes() const
{
    std::tm t = mem_.now();
    return {(uint8_t)t.tm_sec, (uint8_t)t.tm_min, (uint8_t)t.tm_hour,
            (uint8_t)t.tm_mday, (uint8_t)(t.tm_mon + 1), (uint8_t)(t.tm_year % 100)};
}

void CspDevice::handle(uint8_t command, const csp::Bytes& payload)
{
    switch (command) {
    case csp::cmdinterrogate: {
        csp::Identity id{0, serialnumber, mem_.version};
        reply(command, csp::identitypayload(id));
        break;
    }
    case csp::cmdcleardata:
        mem_.records.clear();
        save();
        reply(command, {});
        break;
    case csp::cmdsetparam: {
        if (payload.empty()) return;
        csp::Bytes value(payload.begin() + 1, payload.end());
        if (payload[0] == csp::paramid) {
            auto& pad = mem_.scratchpad;
            size_t n = std::min(value.size(), pad.size());
            if (o_.refuseid) {
                value.assign(pad.begin(), pad.begin() + (long)n);  // answers with what it kept
            } else {
                std::copy(value.begin(), value.begin() + (long)n, pad.begin());
                save();
            }
        }
        csp::Bytes r{payload[0]};
        r.insert(r.end(), value.begin(), value.end());
        reply(command, r);
        break;
    }
    case csp::cmdpowerdown:
        reply(command, {});
        poweredoff_ = true;
        break;
    case csp::cmdupload:
        upload();
        break;
    case csp::cmdgetparam: {
        if (payload.empty()) return;
        csp::Bytes r{payload[0]};
        if (payload[0] == csp::paramid) {
            r.insert(r.end(), mem_.scratchpad.begin(), mem_.scratchpad.end());
            if (!q_.extendedlength && r.size() > 31) r.resize(31);
        } else if (payload[0] == csp::paramasciimode) {
            r.push_back(1);
        }
        reply(command, r);
        break;
    }
    case csp::cmdsettime: {
        if (payload.size() != csp::clocksize) return;
        if (o_.refuseclock) {
            reply(command, clockbytes());
            break;
        }
        std::tm t{};
        t.tm_sec = payload[0];
        t.tm_min = payload[1];
        t.tm_hour = payload[2];
        t.tm_mday = payload[3];
        t.tm_mon = payload[4] - 1;
        t.tm_year = 100 + (payload[5] % 100);
        mem_.setclock(t);
        save();
        reply(command, payload);
        break;
    }
    case csp::cmdgettime:
        reply(command, clockbytes());
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
