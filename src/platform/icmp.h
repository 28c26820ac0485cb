// One ICMP echo, by the names of the classic calls (icmp.dll and wsock32).
#pragma once

#include <cstdint>

struct IP_OPTION_INFORMATION {
    uint8_t Ttl = 0;
    uint8_t Tos = 0;
    uint8_t Flags = 0;
    uint8_t OptionsSize = 0;
    uint8_t* OptionsData = nullptr;
};

struct ICMP_ECHO_REPLY {
    uint32_t Address = 0;
    uint32_t Status = 0;
    uint32_t RoundTripTime = 0;
    uint16_t DataSize = 0;
    uint16_t Reserved = 0;
    void* Data = nullptr;
    IP_OPTION_INFORMATION Options;
};

constexpr uint32_t IP_SUCCESS = 0;
constexpr uint32_t IP_BUF_TOO_SMALL = 11001;
constexpr uint32_t IP_DEST_NET_UNREACHABLE = 11002;
constexpr uint32_t IP_DEST_HOST_UNREACHABLE = 11003;
constexpr uint32_t IP_DEST_PORT_UNREACHABLE = 11005;
constexpr uint32_t IP_REQ_TIMED_OUT = 11010;
constexpr uint32_t IP_TTL_EXPIRED_TRANSIT = 11013;
constexpr uint32_t IP_GENERAL_FAILURE = 11050;

using IcmpHandle = void*;
constexpr IcmpHandle INVALID_ICMP_HANDLE = nullptr;

int WSAStartup(uint16_t version, void* data);
int WSACleanup();
IcmpHandle IcmpCreateFile();
// Sends one echo to `address` (first octet in the lowest byte) and waits up to `timeoutms`.
// Returns the number of replies (0 or 1); reply->Status tells the outcome either way.
uint32_t IcmpSendEcho(IcmpHandle handle, uint32_t address, const void* data, uint16_t size,
                      const IP_OPTION_INFORMATION* options, ICMP_ECHO_REPLY* reply,
                      uint32_t replysize, uint32_t timeoutms);
int IcmpCloseHandle(IcmpHandle handle);

namespace icmp::inject {
// Every echo from now on times out (IP_REQ_TIMED_OUT), as a dead server would.
void noreply(bool on);
// Handles made from now on use the system's ping program even where a socket would do.
void useprogram(bool on);
void reset();
}  // namespace icmp::inject
