#include <QElapsedTimer>
#include <cstring>
#include <gtest/gtest.h>

#include "platform/icmp.h"
#include "support/asuser.h"

namespace {

// Addresses as the program builds them: the first octet in the lowest byte. Only loopback.
constexpr uint32_t loopback1 = 0x0100007F;  // 127.0.0.1
constexpr uint32_t loopback2 = 0x0200007F;  // 127.0.0.2

struct Echo : ::testing::Test {
    IcmpHandle handle = INVALID_ICMP_HANDLE;
    IP_OPTION_INFORMATION options;
    ICMP_ECHO_REPLY reply;

    void SetUp() override
    {
        ASSERT_EQ(WSAStartup(0x101, nullptr), 0);
        handle = IcmpCreateFile();
        if (handle == INVALID_ICMP_HANDLE) GTEST_SKIP() << "no ping socket, no raw ICMP socket and no ping program here";
        options.Ttl = 100;
    }
    void TearDown() override
    {
        icmp::inject::reset();
        if (handle != INVALID_ICMP_HANDLE) IcmpCloseHandle(handle);
        WSACleanup();
    }
    uint32_t ping(uint32_t address, uint32_t replysize = 278)
    {
        return IcmpSendEcho(handle, address, "P", 1, &options, &reply, replysize, 1000);
    }
};

TEST_F(Echo, LoopbackAnswersWithOurPayload)
{
    for (uint32_t address : {loopback1, loopback2, loopback1}) {
        SCOPED_TRACE(address);
        ASSERT_EQ(ping(address), 1u);
        EXPECT_EQ(reply.Status, IP_SUCCESS);
        EXPECT_EQ(reply.Address, address);
        EXPECT_LT(reply.RoundTripTime, 1000u);
        ASSERT_EQ(reply.DataSize, 1);
        EXPECT_EQ(std::memcmp(reply.Data, "P", 1), 0);
    }
}

TEST_F(Echo, InjectedSilenceAndSmallBufferFail)
{
    icmp::inject::noreply(true);
    QElapsedTimer took;
    took.start();
    EXPECT_EQ(ping(loopback1), 0u);
    EXPECT_EQ(reply.Status, IP_REQ_TIMED_OUT);
    EXPECT_LT(took.elapsed(), 500);
    icmp::inject::reset();
    EXPECT_EQ(ping(loopback1, 8), 0u);
    EXPECT_EQ(reply.Status, IP_BUF_TOO_SMALL);
    EXPECT_EQ(ping(loopback1), 1u);
}

TEST_F(Echo, ThroughThePingProgram)
{
    IcmpCloseHandle(handle);
    icmp::inject::useprogram(true);
    handle = IcmpCreateFile();
    ASSERT_NE(handle, INVALID_ICMP_HANDLE) << "no ping program on this machine (iputils-ping)";
    for (uint32_t address : {loopback2, loopback1}) {
        SCOPED_TRACE(address);
        ASSERT_EQ(ping(address), 1u);
        EXPECT_EQ(reply.Status, IP_SUCCESS);
        EXPECT_EQ(reply.Address, address);
        EXPECT_LT(reply.RoundTripTime, 1000u);
        ASSERT_EQ(reply.DataSize, 1);
        EXPECT_EQ(std::memcmp(reply.Data, "P", 1), 0);
    }
    EXPECT_EQ(ping(loopback1, 8), 0u);
    EXPECT_EQ(reply.Status, IP_BUF_TOO_SMALL);
}

// An ordinary user on a stock system has neither a ping socket nor a raw one: the echoes go
// through the ping program, and the loopback answers all the same.
TEST(EchoAsUser, OrdinaryUserGetsAnAnswer)
{
    if (innerrun()) GTEST_SKIP() << "already the inner run";
    if (!canrunasuser()) GTEST_SKIP() << "cannot run this test program as an ordinary user (setpriv, folder access)";
    UserRun r = rerunasuser("Echo.LoopbackAnswersWithOurPayload");
    EXPECT_EQ(r.exitcode, 0) << r.output;
    EXPECT_NE(r.output.find("[  PASSED  ] 1 test"), std::string::npos) << r.output;
    EXPECT_EQ(r.output.find("SKIPPED"), std::string::npos) << r.output;
}

}  // namespace
