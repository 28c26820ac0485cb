#include "opldevice.h"

#include <cstdio>
#include <thread>

#include "srecord.h"

namespace {

const char* commandname(uint8_t c)
{
    switch (c) {
    case opl::cmdreadclock: return "readclock";
    case opl::cmdwriteclock: return "writeclock";
    case opl::cmdreadid: return "readid";
    case opl::cmdwriteid: return "writeid";
    case opl::cmdlinecount: return "count";
    case opl::cmdbattery: return "battery";
    case opl::cmddownload: return "download";
    case opl::cmdclear: return "clear";
    case opl::cmdversions: return "versions";
    case opl::cmderase: return "erase";
    case opl::cmdloadbegin:
    case opl::cmdloadchunk:
    case opl::cmdloadgo: return "load";
    default: return "";
    }
}

// Flash work of an erase or a load: 2 s at the link's own rate, shorter when --baud is faster.
constexpr int operationms = 2000;
constexpr long maximage = 8 * 1024 * 1024;

}  // namespace

OplDevice::OplDevice(Line& line, Memory& memory, const Options& options) : Device(line, memory, options) {}

void OplDevice::received(const uint8_t* p, size_t n)
{
    if (o_.noanswer) return;
    // Bytes of one frame follow each other within 100 ms: a part frame older than that was
    // broken off (or was never ours, such as a CSP command on a port scan) and goes.
    auto now = Line::clock::now();
    if (now - lastinput_ > std::chrono::milliseconds(opl::bytetimeoutms)) framer_.reset();
    lastinput_ = now;
    framer_.feed(p, n);
    opl::Frame f;
    while (framer_.next(f)) {
        line_.awaitinput();
        handle(f);
        if (line_.gone()) return;
    }
    if (framer_.badframes() != badframes_) {
        badframes_ = framer_.badframes();
        line_.awaitinput();
        line_.write(opl::encode(opl::frmnak, opl::reply(opl::resbadframe)));
    }
}

void OplDevice::reply(uint8_t command, const opl::Bytes& payload, const char* name)
{
    if (names(o_.garbage, name)) {
        line_.write(garbage());
        return;
    }
    opl::Bytes f = opl::encode(command | opl::replybit, payload);
    if (names(o_.badcrc, name)) f.back() ^= 0xFF;
    line_.write(f);
}

void OplDevice::handle(const opl::Frame& f)
{
    const char* name = commandname(f.command);
    auto answer = [&](uint8_t result, const opl::Bytes& data = {}) { reply(f.command, opl::reply(result, data), name); };
    switch (f.command) {
    case opl::cmdreadclock: {
        std::tm t = mem_.now();
        char text[80];
        std::snprintf(text, sizeof text, "%02d/%02d/%04d %02d:%02d:%02d", t.tm_mday, t.tm_mon + 1, t.tm_year + 1900,
                      t.tm_hour, t.tm_min, t.tm_sec);
        answer(opl::resok, opl::textbytes(text));
        break;
    }
    case opl::cmdwriteclock: {
        std::string text = opl::bytestext(f.payload);
        if (!opl::validclock(text)) return answer(opl::resbadarg);
        if (o_.refuseclock) return answer(opl::resrefused);
        std::tm t{};
        std::sscanf(text.c_str(), "%d/%d/%d %d:%d:%d", &t.tm_mday, &t.tm_mon, &t.tm_year, &t.tm_hour, &t.tm_min, &t.tm_sec);
        t.tm_mon -= 1;
        t.tm_year -= 1900;
        mem_.setclock(t);
        save();
        answer(opl::resok);
        break;
    }
    case opl::cmdreadid:
        answer(opl::resok, opl::be16(mem_.id));
        break;
    case opl::cmdwriteid:
        if (f.payload.size() != 2) return answer(opl::resbadarg);
        if (o_.refuseid) return answer(opl::resrefused);
        mem_.id = opl::getbe16(f.payload, 0);
        save();
        answer(opl::resok);
        break;
    case opl::cmdlinecount:
        answer(opl::resok, opl::be32((uint32_t)mem_.lines.size()));
        break;
    case opl::cmdbattery:
        answer(opl::resok, opl::textbytes(o_.batterytext.empty() ? opl::batterytext(mem_.battery) : o_.batterytext));
        break;
    case opl::cmddownload:
        download();
        break;
    case opl::cmdclear:
        mem_.lines.clear();
        save();
        answer(opl::resok);
        break;
    case opl::cmdversions:
        answer(opl::resok, opl::versionsdata(mem_.osversion, mem_.appversion));
        break;
    case opl::cmderase:
        answer(opl::resok);
        if (!operate(opl::phaseerase)) return;
        mem_.appversion.clear();
        mem_.lines.clear();
        save();
        line_.write(opl::encode(opl::frmfinished, opl::reply(opl::resok)));
        break;
    case opl::cmdloadbegin: {
        long size = (long)opl::getbe32(f.payload, 0);
        if (f.payload.size() != 4 || size <= 0 || size > maximage) return answer(opl::resbadarg);
        if (o_.refuseload) return answer(opl::resrefused);
        image_.clear();
        expected_ = size;
        answer(opl::resok);
        break;
    }
    case opl::cmdloadchunk:
        if (expected_ < 0 || f.payload.size() < 4 || opl::getbe32(f.payload, 0) != image_.size() ||
            (long)(image_.size() + f.payload.size() - 4) > expected_)
            return answer(opl::resbadarg);
        image_.insert(image_.end(), f.payload.begin() + 4, f.payload.end());
        answer(opl::resok);
        break;
    case opl::cmdloadgo:
        program();
        break;
    default:
        answer(opl::resunknown);
    }
}

void OplDevice::download()
{
    const auto& lines = mem_.lines;
    uint32_t count = (uint32_t)lines.size();
    if (names(o_.garbage, "download")) {
        line_.write(garbage());
        return;
    }
    bool corrupt = names(o_.badcrc, "download");
    opl::Bytes head = opl::encode(opl::cmddownload | opl::replybit, opl::reply(opl::resok, opl::be32(count)));
    if (corrupt && lines.empty()) head.back() ^= 0xFF;
    if (!line_.write(head)) return;
    for (uint32_t i = 0; i < count; ++i) {
        if ((long)i == o_.vanishrecords) return line_.vanish();
        opl::Bytes payload = opl::be32(i);
        for (char c : lines[i]) payload.push_back((uint8_t)c);
        opl::Bytes f = opl::encode(opl::frmrecord, payload);
        if (corrupt && i == 0) f.back() ^= 0xFF;
        if (!line_.write(f)) return;
    }
    if ((long)count == o_.vanishrecords) return line_.vanish();
    line_.write(opl::encode(opl::frmend, opl::be32(count)));
}

bool OplDevice::operate(uint8_t phase)
{
    long baud = o_.baud > 0 ? o_.baud : opl::baud;
    auto total = std::chrono::milliseconds((long)operationms * opl::baud / baud);
    for (int percent = 0; percent <= 100; percent += 10) {
        if (stoprequested) return false;
        std::this_thread::sleep_for(total / 10);
        if (!line_.write(opl::encode(opl::frmprogress, {phase, (uint8_t)percent}))) return false;
    }
    return true;
}

void OplDevice::program()
{
    auto answer = [&](uint8_t result) { reply(opl::cmdloadgo, opl::reply(result), "load"); };
    if (expected_ < 0 || (long)image_.size() != expected_) return answer(opl::resbadarg);
    expected_ = -1;
    Image img = checkimage(image_);
    if (!img.sound) return answer(opl::resbadimage);
    answer(opl::resok);
    if (!operate(opl::phaseprogram)) return;
    if (img.os) mem_.osversion = img.version;
    else mem_.appversion = img.version;
    mem_.lines.clear();  // a load loses everything on the scanner
    save();
    line_.write(opl::encode(opl::frmfinished, opl::reply(opl::resok)));
}
