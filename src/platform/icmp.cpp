#include "platform/icmp.h"

#include <arpa/inet.h>
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

// Echoes go through a kernel ping socket (SOCK_DGRAM, IPPROTO_ICMP) where the system allows
// it for this user (net.ipv4.ping_group_range), otherwise through a raw ICMP socket (root or
// CAP_NET_RAW), otherwise through the system's ping program, which holds the privilege an
// ordinary user lacks. The kernel sets the id of a ping socket's echoes and hands it only its
// own replies, without the IP header; a raw socket sees every ICMP packet, the IP header
// first, our own request on loopback among them, so its replies are matched by type, id and
// sequence. The ping program is started with an argument vector (no shell) and judged by its
// exit status: 0 a reply came, 1 none came, anything else a failure.

namespace {

// ICMP message types and codes (the system's own header names a struct icmp, which would
// clash with the namespace of the same name).
constexpr uint8_t ICMP_ECHOREPLY = 0, ICMP_DEST_UNREACH = 3, ICMP_ECHO = 8, ICMP_TIME_EXCEEDED = 11;
constexpr uint8_t ICMP_NET_UNREACH = 0, ICMP_PORT_UNREACH = 3;

struct Handle {
    int fd = -1;               // -1: echoes go through the ping program
    bool raw = false;
    uint16_t id = 0;
    uint16_t sequence = 0;
    std::vector<uint8_t> data;  // the last reply's payload; reply->Data points here
};

bool& noreplyflag()
{
    static bool on = false;
    return on;
}

bool& programflag()
{
    static bool on = false;
    return on;
}

// The system's ping program: the first executable `ping` on PATH, or in the usual folders.
std::string pingprogram()
{
    std::vector<std::string> folders;
    const char* path = std::getenv("PATH");
    std::string p = path ? path : "";
    for (size_t at = 0; at <= p.size();) {
        size_t end = p.find(':', at);
        if (end == std::string::npos) end = p.size();
        if (end > at) folders.push_back(p.substr(at, end - at));
        at = end + 1;
    }
    folders.insert(folders.end(), {"/usr/bin", "/bin", "/usr/sbin", "/sbin"});
    for (const auto& f : folders) {
        std::string candidate = f + "/ping";
        if (::access(candidate.c_str(), X_OK) == 0) return candidate;
    }
    return "";
}

uint16_t checksum(const uint8_t* p, size_t n)
{
    uint32_t sum = 0;
    for (size_t i = 0; i + 1 < n; i += 2) sum += (uint32_t)(p[i] << 8 | p[i + 1]);
    if (n & 1) sum += (uint32_t)(p[n - 1] << 8);
    while (sum >> 16) sum = (sum & 0xffff) + (sum >> 16);
    return (uint16_t)~sum;
}

// The classic address (first octet in the lowest byte) as a socket address and back.
in_addr toinaddr(uint32_t address)
{
    uint8_t octets[4] = {(uint8_t)address, (uint8_t)(address >> 8), (uint8_t)(address >> 16), (uint8_t)(address >> 24)};
    in_addr a;
    std::memcpy(&a.s_addr, octets, 4);
    return a;
}

uint32_t fromin(in_addr a)
{
    uint8_t o[4];
    std::memcpy(o, &a.s_addr, 4);
    return (uint32_t)o[0] | (uint32_t)o[1] << 8 | (uint32_t)o[2] << 16 | (uint32_t)o[3] << 24;
}

// The status of an ICMP error about one of our echoes.
uint32_t errorstatus(uint8_t type, uint8_t code)
{
    if (type == ICMP_TIME_EXCEEDED) return IP_TTL_EXPIRED_TRANSIT;
    if (type == ICMP_DEST_UNREACH) {
        switch (code) {
        case ICMP_NET_UNREACH: return IP_DEST_NET_UNREACHABLE;
        case ICMP_PORT_UNREACH: return IP_DEST_PORT_UNREACHABLE;
        default: return IP_DEST_HOST_UNREACHABLE;
        }
    }
    return IP_GENERAL_FAILURE;
}

struct Match {
    enum Kind { none, reply, error } kind = none;
    uint32_t status = IP_SUCCESS;
    const uint8_t* data = nullptr;
    size_t size = 0;
};

// Judges one received packet (the ICMP message, IP header already taken off).
Match judge(const Handle& h, const uint8_t* p, size_t n)
{
    Match m;
    if (n < 8) return m;
    uint16_t id = (uint16_t)(p[4] << 8 | p[5]), seq = (uint16_t)(p[6] << 8 | p[7]);
    if (p[0] == ICMP_ECHOREPLY) {
        if ((h.raw && id != h.id) || seq != h.sequence) return m;
        return {Match::reply, IP_SUCCESS, p + 8, n - 8};
    }
    if (h.raw && (p[0] == ICMP_DEST_UNREACH || p[0] == ICMP_TIME_EXCEEDED) && n >= 8 + 20 + 8) {
        // The error quotes our request: its IP header, then the first 8 bytes of the echo.
        const uint8_t* inner = p + 8;
        size_t ihl = (size_t)(inner[0] & 0x0f) * 4;
        if (n < 8 + ihl + 8) return m;
        const uint8_t* echo = inner + ihl;
        uint16_t eid = (uint16_t)(echo[4] << 8 | echo[5]), eseq = (uint16_t)(echo[6] << 8 | echo[7]);
        if (echo[0] == ICMP_ECHO && eid == h.id && eseq == h.sequence)
            return {Match::error, errorstatus(p[0], p[1]), nullptr, 0};
    }
    return m;
}

uint32_t fail(ICMP_ECHO_REPLY* reply, uint32_t status)
{
    if (reply) reply->Status = status;
    return 0;
}

// One echo through the ping program. Its output names an ICMP error when one came back.
uint32_t programecho(uint32_t address, const void* data, uint16_t size, int ttl, uint32_t timeoutms,
                     ICMP_ECHO_REPLY* reply, std::vector<uint8_t>& kept)
{
    std::string program = pingprogram();
    if (program.empty()) return fail(reply, IP_GENERAL_FAILURE);
    char dotted[INET_ADDRSTRLEN] = {};
    in_addr a = toinaddr(address);
    ::inet_ntop(AF_INET, &a, dotted, sizeof dotted);
    char wait[32];
    std::snprintf(wait, sizeof wait, "%.3f", std::max<uint32_t>(timeoutms, 1) / 1000.0);
    std::string pattern;
    static const char* digits = "0123456789abcdef";
    for (uint16_t i = 0; i < size && i < 16; ++i) {
        uint8_t b = static_cast<const uint8_t*>(data)[i];
        pattern += digits[b >> 4];
        pattern += digits[b & 15];
    }
    std::vector<std::string> args{program, "-n", "-c", "1", "-W", wait, "-t", std::to_string(ttl), "-s",
                                  std::to_string(size)};
    if (!pattern.empty()) args.insert(args.end(), {"-p", pattern});
    args.push_back(dotted);
    std::vector<char*> argv;
    for (auto& arg : args) argv.push_back(arg.data());
    argv.push_back(nullptr);

    int out[2];
    if (::pipe2(out, O_CLOEXEC) != 0) return fail(reply, IP_GENERAL_FAILURE);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, out[1], 1);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    // The C locale, so that the output reads the same everywhere.
    std::vector<std::string> env{"LC_ALL=C", "PATH=/usr/bin:/bin:/usr/sbin:/sbin"};
    std::vector<char*> envp;
    for (auto& e : env) envp.push_back(e.data());
    envp.push_back(nullptr);
    auto start = std::chrono::steady_clock::now();
    pid_t pid = 0;
    int spawned = posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    ::close(out[1]);
    if (spawned != 0) {
        ::close(out[0]);
        return fail(reply, IP_GENERAL_FAILURE);
    }
    // Its output until it ends; a program that hangs past the time-out and a grace is stopped.
    std::string text;
    auto deadline = start + std::chrono::milliseconds(timeoutms + 3000);
    char chunk[512];
    for (;;) {
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now()).count();
        if (left <= 0) {
            ::kill(pid, SIGKILL);
            break;
        }
        pollfd p{out[0], POLLIN, 0};
        int ready = ::poll(&p, 1, (int)left);
        if (ready < 0 && errno == EINTR) continue;
        if (ready <= 0) continue;
        ssize_t n = ::read(out[0], chunk, sizeof chunk);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        text.append(chunk, (size_t)n);
    }
    ::close(out[0]);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    int code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    if (code == 1) {
        if (text.find("Time to live exceeded") != std::string::npos) return fail(reply, IP_TTL_EXPIRED_TRANSIT);
        if (text.find("Destination Net Unreachable") != std::string::npos) return fail(reply, IP_DEST_NET_UNREACHABLE);
        if (text.find("Destination Port Unreachable") != std::string::npos) return fail(reply, IP_DEST_PORT_UNREACHABLE);
        if (text.find("Unreachable") != std::string::npos) return fail(reply, IP_DEST_HOST_UNREACHABLE);
        return fail(reply, IP_REQ_TIMED_OUT);
    }
    if (code != 0) return fail(reply, IP_GENERAL_FAILURE);
    // "time=0.061 ms" when the payload was big enough to carry a time stamp; else the wait.
    uint32_t roundtrip = (uint32_t)elapsed.count();
    size_t at = text.find("time=");
    if (at != std::string::npos) roundtrip = (uint32_t)std::atof(text.c_str() + at + 5);
    size_t ttlat = text.find("ttl=");
    if (ttlat != std::string::npos) reply->Options.Ttl = (uint8_t)std::atoi(text.c_str() + ttlat + 4);
    reply->Address = address;
    reply->Status = IP_SUCCESS;
    reply->RoundTripTime = roundtrip;
    // The program compares the echoed bytes with what it sent and says so when they differ.
    kept.assign(static_cast<const uint8_t*>(data), static_cast<const uint8_t*>(data) + size);
    reply->DataSize = size;
    reply->Data = kept.data();
    return 1;
}

}  // namespace

int WSAStartup(uint16_t, void*) { return 0; }
int WSACleanup() { return 0; }

IcmpHandle IcmpCreateFile()
{
    int fd = -1;
    bool raw = false;
    if (!programflag()) {
        fd = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, IPPROTO_ICMP);
        if (fd < 0) {
            fd = ::socket(AF_INET, SOCK_RAW | SOCK_CLOEXEC, IPPROTO_ICMP);
            raw = true;
        }
    }
    if (fd < 0 && pingprogram().empty()) return INVALID_ICMP_HANDLE;
    static uint16_t serial = 0;
    auto* h = new Handle;
    h->fd = fd;
    h->raw = raw;
    h->id = (uint16_t)(::getpid() * 31 + ++serial);
    return h;
}

int IcmpCloseHandle(IcmpHandle handle)
{
    auto* h = static_cast<Handle*>(handle);
    if (!h) return 0;
    if (h->fd >= 0) ::close(h->fd);
    delete h;
    return 1;
}

uint32_t IcmpSendEcho(IcmpHandle handle, uint32_t address, const void* data, uint16_t size,
                      const IP_OPTION_INFORMATION* options, ICMP_ECHO_REPLY* reply,
                      uint32_t replysize, uint32_t timeoutms)
{
    auto* h = static_cast<Handle*>(handle);
    if (!reply || !h) return fail(reply, IP_GENERAL_FAILURE);
    *reply = ICMP_ECHO_REPLY{};
    // The reply buffer must hold a reply record, the echoed data and an ICMP error's 8 bytes.
    if (replysize < sizeof(ICMP_ECHO_REPLY) + size + 8) return fail(reply, IP_BUF_TOO_SMALL);
    if (noreplyflag()) return fail(reply, IP_REQ_TIMED_OUT);

    int ttl = options && options->Ttl ? options->Ttl : 128;
    if (h->fd < 0) return programecho(address, data, size, ttl, timeoutms, reply, h->data);
    ::setsockopt(h->fd, IPPROTO_IP, IP_TTL, &ttl, sizeof ttl);

    std::vector<uint8_t> packet(8 + size);
    packet[0] = ICMP_ECHO;
    ++h->sequence;
    packet[4] = (uint8_t)(h->id >> 8);
    packet[5] = (uint8_t)h->id;
    packet[6] = (uint8_t)(h->sequence >> 8);
    packet[7] = (uint8_t)h->sequence;
    if (size) std::memcpy(packet.data() + 8, data, size);
    uint16_t sum = checksum(packet.data(), packet.size());
    packet[2] = (uint8_t)(sum >> 8);
    packet[3] = (uint8_t)sum;

    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_addr = toinaddr(address);
    auto start = std::chrono::steady_clock::now();
    if (::sendto(h->fd, packet.data(), packet.size(), 0, (sockaddr*)&to, sizeof to) < 0)
        return fail(reply, errno == ENETUNREACH || errno == EHOSTUNREACH ? IP_DEST_HOST_UNREACHABLE : IP_GENERAL_FAILURE);

    auto deadline = start + std::chrono::milliseconds(timeoutms);
    std::vector<uint8_t> buffer(65536);
    for (;;) {
        auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now()).count();
        left = std::clamp<long long>(left, 0, 60 * 60 * 1000);
        pollfd p{h->fd, POLLIN, 0};
        int ready = ::poll(&p, 1, (int)left);
        if (ready < 0 && errno == EINTR) continue;
        if (ready <= 0) return fail(reply, IP_REQ_TIMED_OUT);
        sockaddr_in from{};
        socklen_t fromlen = sizeof from;
        ssize_t n = ::recvfrom(h->fd, buffer.data(), buffer.size(), 0, (sockaddr*)&from, &fromlen);
        if (n <= 0) continue;
        const uint8_t* icmp = buffer.data();
        size_t len = (size_t)n;
        if (h->raw) {
            size_t ihl = (size_t)(buffer[0] & 0x0f) * 4;
            if (len < ihl) continue;
            icmp += ihl;
            len -= ihl;
        }
        Match m = judge(*h, icmp, len);
        if (m.kind == Match::none) continue;
        if (m.kind == Match::reply && from.sin_addr.s_addr != to.sin_addr.s_addr) continue;
        auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
        reply->Address = fromin(from.sin_addr);
        reply->Status = m.status;
        reply->RoundTripTime = (uint32_t)elapsed.count();
        if (h->raw) reply->Options.Ttl = buffer[8];  // the reply's own time-to-live
        if (m.kind == Match::error) return 0;
        h->data.assign(m.data, m.data + m.size);
        reply->DataSize = (uint16_t)m.size;
        reply->Data = h->data.data();
        return 1;
    }
}

namespace icmp::inject {
void noreply(bool on) { noreplyflag() = on; }
void useprogram(bool on) { programflag() = on; }
void reset()
{
    noreplyflag() = false;
    programflag() = false;
}
}  // namespace icmp::inject
