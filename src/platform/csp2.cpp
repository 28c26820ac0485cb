// The csp2 calls over a serial port. Framing and parsing live in csp2_protocol; this file
// holds the session and the exchanges.
#include "platform/csp2.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "core/logs.h"
#include "platform/csp2_protocol.h"
#include "platform/paths.h"
#include "platform/serial.h"

namespace csp2 {

namespace {

void number(const char* key, int& value, int lo, int hi)
{
    std::string v = platform::setting("csp2", key);
    if (!v.empty()) value = std::clamp(std::atoi(v.c_str()), lo, hi);
}

void flag(const char* key, bool& value)
{
    std::string v = platform::setting("csp2", key);
    if (!v.empty()) value = v != "0";
}

}  // namespace

csp::Quirks quirks()
{
    csp::Quirks q = csp::defaultquirks;
    std::string head = platform::setting("csp2", "replyhead");
    if (head == "status") q.replyhead = csp::ReplyHead::status;
    if (head == "echo") q.replyhead = csp::ReplyHead::echo;
    flag("extendedlength", q.extendedlength);
    flag("wakedtr", q.wakedtr);
    number("dtrlowms", q.dtrlowms, 0, 2000);
    number("dtrsettlems", q.dtrsettlems, 0, 2000);
    number("awakems", q.awakems, 0, 3600000);
    number("wakeupbytes", q.wakeupbytes, 0, 16);
    number("wakeupdelayms", q.wakeupdelayms, 0, 2000);
    return q;
}

}  // namespace csp2

namespace {

using csp::Bytes;

constexpr int32_t gone = -100;  // inside this file: the device went away, do not retry

using steady = std::chrono::steady_clock;

struct Session {
    serial::Port port;
    std::string device;
    bool bound = false;
    int retries = csp::defaultretries;
    csp::Quirks q = csp::defaultquirks;
    std::vector<Bytes> packets;
    std::string version;
    bool haveversion = false;
};

Session& session()
{
    static Session s;
    return s;
}

// When each device last answered, and the system status it last reported.
struct Seen {
    steady::time_point answered{};
    int systemstatus = -1;
};

Seen& seen(const std::string& device)
{
    static std::map<std::string, Seen> devices;
    return devices[device];
}

// Wakes a sleeping scanner: the DTR edge (unless `dtr` is false), then the NUL bytes. Bytes
// that reach a sleeping scanner are lost, so this comes before the command, never instead of it.
void wake(Session& s, bool dtr = true)
{
    if (dtr && s.q.wakedtr && s.port.setdtr(false)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(s.q.dtrlowms));
        s.port.setdtr(true);
        std::this_thread::sleep_for(std::chrono::milliseconds(s.q.dtrsettlems));
    }
    if (s.q.wakeupbytes > 0) {
        Bytes nul((size_t)s.q.wakeupbytes, 0);
        s.port.write(nul.data(), (int)nul.size());
        std::this_thread::sleep_for(std::chrono::milliseconds(s.q.wakeupdelayms));
    }
    s.port.flushinput();
}

int32_t statuscode(uint8_t status)
{
    switch (status) {
    case csp::statusunsupported: return csp2::unsupported;
    case csp::statuscrc: return csp2::crcerror;
    case csp::statuscharacter: return csp2::charerror;
    default: return csp2::generalerror;
    }
}

// Reads `want` bytes into buf; false (with `code`) when the line stays quiet or breaks.
bool readmore(Session& s, Bytes& buf, size_t want, bool first, int32_t& code)
{
    size_t at = buf.size();
    buf.resize(at + want);
    int r = s.port.read(buf.data() + at, (int)want, first ? csp::firstbytetimeoutms : csp::bytetimeoutms);
    if (r < 0) {
        buf.resize(at);
        code = gone;
        return false;
    }
    buf.resize(at + (size_t)r);
    if ((size_t)r < want) {
        code = buf.empty() ? csp2::nocomms : csp2::charerror;
        return false;
    }
    return true;
}

int32_t receive(Session& s, uint8_t command, csp::Scan& reply)
{
    Bytes buf;
    for (;;) {
        csp::Scan sc = csp::scanreply(buf.data(), buf.size(), command, s.q);
        switch (sc.state) {
        case csp::Scan::complete: reply = std::move(sc); return csp2::ok;
        case csp::Scan::badcrc: return csp2::crcerror;
        case csp::Scan::badframe: return csp2::charerror;
        case csp::Scan::refused: return statuscode(sc.head);
        case csp::Scan::needmore: break;
        }
        if (buf.size() > csp::maxframe) return csp2::charerror;
        int32_t code = csp2::ok;
        if (!readmore(s, buf, sc.need, buf.empty(), code)) return code;
    }
}

void answered(Session& s) { seen(s.device).answered = steady::now(); }

// One command with its request strings; the reply's fixed data and strings in `reply`.
int32_t exchange(uint8_t command, const std::vector<Bytes>& request, csp::Scan& reply)
{
    Session& s = session();
    if (!s.bound) return csp2::nocomms;
    int32_t last = csp2::nocomms;
    for (int t = 0; t < s.retries; ++t) {
        if (t > 0) wake(s);
        s.port.flushinput();
        Bytes f = csp::frame(command, {}, request);
        if (!s.port.write(f.data(), (int)f.size())) return csp2::nocomms;
        int32_t r = receive(s, command, reply);
        if (r != csp2::nocomms && r != gone) answered(s);
        if (r == csp2::ok) return r;
        if (r == gone) return csp2::nocomms;
        last = r;
    }
    return last;
}

// The system status of an interrogate reply: 22 (low battery) and any other value is a good
// answer; a change to a status other than OK goes to the day's log once.
void notesystemstatus(Session& s, uint8_t status)
{
    Seen& d = seen(s.device);
    if (d.systemstatus == status) return;
    d.systemstatus = status;
    if (status == csp::systemlowbattery)
        addtologfile("Scanner on " + s.device + " reports a low battery (system status 22)");
    else if (status != csp::systemok)
        addtologfile("Scanner on " + s.device + " reports system status " + std::to_string(status));
}

int32_t upload(Session& s, std::vector<Bytes>& records)
{
    Bytes f = csp::frame(csp::cmdupload, {});
    s.port.flushinput();
    if (!s.port.write(f.data(), (int)f.size())) return gone;
    csp::UploadReader reader(s.q);
    uint8_t buf[256];
    bool first = true;
    while (reader.state() == csp::UploadReader::reading) {
        size_t want = std::min(reader.need(), sizeof buf);
        int r = s.port.read(buf, (int)want, first ? csp::firstbytetimeoutms : csp::bytetimeoutms);
        if (r < 0) return gone;
        reader.feed(buf, (size_t)r);
        if ((size_t)r < want) return first && r == 0 ? csp2::nocomms : csp2::charerror;
        first = false;
    }
    answered(s);
    if (reader.state() == csp::UploadReader::refused) return csp2::generalerror;
    if (reader.state() != csp::UploadReader::done) return csp2::generalerror;
    records = reader.records();
    return csp2::ok;
}

int32_t copyout(const Bytes& from, size_t start, char* buffer, int32_t maxlen)
{
    if (!buffer || maxlen < 0) return csp2::badparam;
    size_t n = from.size() > start ? std::min(from.size() - start, (size_t)maxlen) : 0;
    if (n) std::memcpy(buffer, from.data() + start, n);
    return (int32_t)n;
}

}  // namespace

int32_t csp2Init(int32_t port)
{
    Session& s = session();
    s.port.close();
    s.bound = false;
    s.packets.clear();
    s.haveversion = false;
    s.q = csp2::quirks();
    if (port < 0 || port > 254) return csp2::setuperror;
    if (!s.port.open(port + 1, csp::baud, serial::Port::odd)) return csp2::setuperror;
    s.device = serial::devicepath(port + 1);
    s.bound = true;
    // A scanner that answered a moment ago is awake: the DTR edge would only cost time; the
    // NUL bytes go all the same.
    auto last = seen(s.device).answered;
    bool awake = last != steady::time_point{} && steady::now() - last < std::chrono::milliseconds(s.q.awakems);
    wake(s, !awake);
    return csp2::ok;
}

int32_t csp2Restore()
{
    Session& s = session();
    s.port.close();
    s.bound = false;
    s.packets.clear();
    s.version.clear();
    s.haveversion = false;
    s.retries = csp::defaultretries;
    return csp2::ok;
}

int32_t csp2SetRetryCount(int32_t count)
{
    if (count < 1 || count > 9) return csp2::badparam;
    session().retries = count;
    return csp2::ok;
}

int32_t csp2Interrogate()
{
    csp::Scan reply;
    int32_t r = exchange(csp::cmdinterrogate, {}, reply);
    if (r != csp2::ok) return r;
    csp::Identity id;
    if (!csp::parseidentity(reply.fixed, id)) return csp2::charerror;
    Session& s = session();
    notesystemstatus(s, id.status);
    s.version = id.version;
    s.haveversion = true;
    return csp2::ok;
}

int32_t csp2ReadData()
{
    Session& s = session();
    s.packets.clear();
    if (!s.bound) return -1;
    int32_t r = csp2::nocomms;
    for (int t = 0; t < s.retries; ++t) {
        if (t > 0) wake(s);
        std::vector<Bytes> records;
        r = upload(s, records);
        if (r == csp2::ok) {
            s.packets = std::move(records);
            return (int32_t)s.packets.size();
        }
        if (r == gone) break;
    }
    return -1;
}

int32_t csp2GetASCIIMode()
{
    csp::Scan scan;
    int32_t r = exchange(csp::cmdgetparam, {{csp::paramasciimode}}, scan);
    if (r != csp2::ok) return r;
    Bytes reply = scan.first();
    if (reply.size() < 2 || reply[0] != csp::paramasciimode) return csp2::generalerror;
    return reply[1];
}

int32_t csp2GetPacket(char* buffer, int32_t index, int32_t maxlen)
{
    const auto& p = session().packets;
    if (index < 0 || (size_t)index >= p.size()) return csp2::badparam;
    return copyout(p[(size_t)index], 0, buffer, maxlen);
}

int32_t csp2GetTime(char* buffer)
{
    if (!buffer) return csp2::badparam;
    csp::Scan scan;
    int32_t r = exchange(csp::cmdgettime, {}, scan);
    if (r != csp2::ok) return r;
    Bytes reply = scan.first();
    if (reply.size() != csp::clocksize) return csp2::generalerror;
    return copyout(reply, 0, buffer, csp::clocksize);
}

int32_t csp2SetTime(const char* buffer)
{
    if (!buffer) return csp2::badparam;
    Bytes clock(buffer, buffer + csp::clocksize);
    csp::Scan scan;
    int32_t r = exchange(csp::cmdsettime, {clock}, scan);
    if (r != csp2::ok) return r;
    return scan.first() == clock ? csp2::ok : csp2::generalerror;
}

int32_t csp2GetParam(int32_t param, char* buffer, int32_t maxlen)
{
    if (param < 0 || param > 255) return csp2::badparam;
    csp::Scan scan;
    int32_t r = exchange(csp::cmdgetparam, {{(uint8_t)param}}, scan);
    if (r != csp2::ok) return r;
    Bytes reply = scan.first();
    if (reply.empty() || reply[0] != (uint8_t)param) return csp2::generalerror;
    return copyout(reply, 1, buffer, maxlen);
}

int32_t csp2SetParam(int32_t param, const char* buffer, int32_t length)
{
    int32_t most = (session().bound ? session().q : csp2::quirks()).extendedlength ? csp::maxstring : csp::shortstring;
    if (param < 0 || param > 255 || length < 0 || length > most - 1 || (length > 0 && !buffer))
        return csp2::badparam;
    Bytes request(1 + (size_t)length);
    request[0] = (uint8_t)param;
    for (int32_t i = 0; i < length; ++i) request[1 + (size_t)i] = (uint8_t)buffer[i];
    csp::Scan scan;
    int32_t r = exchange(csp::cmdsetparam, {request}, scan);
    if (r != csp2::ok) return r;
    return scan.first() == request ? csp2::ok : csp2::generalerror;
}

int32_t csp2GetSwVersion(char* buffer, int32_t maxlen)
{
    if (!buffer || maxlen < 0) return csp2::badparam;
    Session& s = session();
    if (!s.haveversion) {
        int32_t r = csp2Interrogate();
        if (r != csp2::ok) return r;
    }
    Bytes text(s.version.begin(), s.version.end());
    text.push_back(0);
    return copyout(text, 0, buffer, maxlen);
}

int32_t csp2ClearData()
{
    csp::Scan reply;
    return exchange(csp::cmdcleardata, {}, reply);
}

int32_t csp2PowerDown()
{
    csp::Scan reply;
    return exchange(csp::cmdpowerdown, {}, reply);
}
