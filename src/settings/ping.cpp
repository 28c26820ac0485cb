// One ICMP echo to the server: the payload "P", a 278-byte reply buffer and a one-second
// time-out, with the time-to-live the caller gives.
#include "platform/icmp.h"
#include "settings/storecheck.h"

namespace {

constexpr uint32_t replybuffersize = 278;
constexpr uint32_t timeoutms = 1000;

// The reply record with room behind it for the echoed data, 278 bytes in all.
struct ReplyBuffer {
    ICMP_ECHO_REPLY reply;
    unsigned char room[replybuffersize - sizeof(ICMP_ECHO_REPLY)] = {};
};
static_assert(sizeof(ICMP_ECHO_REPLY) + 1 + 8 <= replybuffersize);

}  // namespace

int32_t pingaddress(const std::string& address, int16_t ttl, int32_t& roundtrip)
{
    unsigned char wsadata[400] = {};
    WSAStartup(0x101, wsadata);
    const uint32_t target = (uint32_t)ipstringtolong(address);
    IcmpHandle handle = IcmpCreateFile();

    IP_OPTION_INFORMATION options{};
    options.Ttl = (uint8_t)ttl;

    ReplyBuffer buffer;
    const char payload[] = "P";
    int32_t result = 0;
    if (IcmpSendEcho(handle, target, payload, 1, &options, &buffer.reply, replybuffersize, timeoutms) == 0) {
        roundtrip = -1;
        result = (int32_t)buffer.reply.Status;
    } else if (buffer.reply.Status != IP_SUCCESS) {
        roundtrip = -1;
        result = (int32_t)buffer.reply.Status;
    } else {
        roundtrip = (int32_t)buffer.reply.RoundTripTime;
        result = 0;
    }

    IcmpCloseHandle(handle);
    WSACleanup();
    return result;
}
