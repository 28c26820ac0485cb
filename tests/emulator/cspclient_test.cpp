// A CSP client of its own, written from the published description of the link and sharing
// nothing with the driver (no csp2_protocol, no crc16, no serial::Port), talks to the
// emulator on its defaults: what a public reader of the CS 1504 would see.
#include <gtest/gtest.h>

#include <QDateTime>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include "support/emulator.h"
#include "support/tempinstall.h"

namespace {

using Bytes = std::vector<uint8_t>;

// CRC-16: polynomial 0x8005 reflected, start 0xFFFF, result inverted.
uint16_t checksum(const Bytes& b)
{
    uint16_t c = 0xFFFF;
    for (uint8_t byte : b) {
        c ^= byte;
        for (int i = 0; i < 8; ++i) c = (c & 1) ? (uint16_t)((c >> 1) ^ 0xA001) : (uint16_t)(c >> 1);
    }
    return (uint16_t)~c;
}

struct Reply {
    std::string error;  // empty when a whole reply with a sound CRC came
    uint8_t status = 0;
    Bytes fixed;
    std::vector<Bytes> strings;
};

class Client {
public:
    explicit Client(const std::string& device)
    {
        fd_ = ::open(device.c_str(), O_RDWR | O_NOCTTY);
        termios t{};
        ::tcgetattr(fd_, &t);
        cfmakeraw(&t);
        t.c_cflag |= PARENB | PARODD | CLOCAL | CREAD;
        cfsetspeed(&t, B9600);
        ::tcsetattr(fd_, TCSANOW, &t);
    }
    ~Client() { ::close(fd_); }
    bool isopen() const { return fd_ >= 0; }

    // Sends [code][02][strings][00][CRC] and reads [status][02][fixed][strings][00][CRC].
    Reply ask(uint8_t code, const std::vector<Bytes>& args = {}, size_t fixed = 0, bool spoilcrc = false)
    {
        Bytes f{code, 0x02};
        for (const auto& a : args) {
            f.push_back((uint8_t)a.size());
            f.insert(f.end(), a.begin(), a.end());
        }
        f.push_back(0);
        uint16_t c = checksum(f);
        f.push_back((uint8_t)(c >> 8));
        f.push_back((uint8_t)((c & 0xFF) ^ (spoilcrc ? 1 : 0)));
        ::tcflush(fd_, TCIFLUSH);
        if (::write(fd_, f.data(), f.size()) != (ssize_t)f.size()) return {"write failed"};

        Reply r;
        Bytes all;
        auto take = [&](size_t n) {
            Bytes b = read(n);
            all.insert(all.end(), b.begin(), b.end());
            return b.size() == n ? b : Bytes{};
        };
        Bytes head = take(2);
        if (head.empty()) return {"no answer"};
        if (head[1] != 0x02) return {"no STX"};
        r.status = head[0];
        if (r.status == 0x06 && fixed) r.fixed = take(fixed);
        for (;;) {
            Bytes len = take(1);
            if (len.empty()) return {"cut short"};
            if (len[0] == 0) break;
            r.strings.push_back(take(len[0]));
        }
        uint16_t expect = checksum(all);
        Bytes crc = read(2);
        if (crc.size() != 2 || crc[0] != (expect >> 8) || crc[1] != (expect & 0xFF)) return {"bad CRC"};
        return r;
    }

private:
    Bytes read(size_t n)
    {
        Bytes b;
        while (b.size() < n) {
            pollfd p{fd_, POLLIN, 0};
            if (::poll(&p, 1, 1000) <= 0) break;
            uint8_t c;
            if (::read(fd_, &c, 1) != 1) break;
            b.push_back(c);
        }
        return b;
    }
    int fd_ = -1;
};

std::string text(const Bytes& b, size_t from = 0) { return std::string(b.begin() + (long)from, b.end()); }

TEST(IndependentClient, ReadsTheEmulatorOnItsDefaults)
{
    TempInstall inst;
    std::string records = Emulator::writefile(inst.root() + "/records.txt",
                                              "00112345678,1,2024-03-25 14:30:05\n00254321,3,2024-12-31 23:59:59\n");
    std::string state = inst.root() + "/state.txt";
    Emulator emu("cs1504", {"--id", "123", "--records", records, "--state", state, "--clock-offset", "-90"});
    ASSERT_TRUE(emu.ready());
    Client client(emu.link());
    ASSERT_TRUE(client.isopen());

    Reply id = client.ask(0x01, {}, 18);
    ASSERT_EQ(id.error, "");
    EXPECT_EQ(id.status, 0x06);
    ASSERT_EQ(id.fixed.size(), 18u);
    EXPECT_EQ(id.fixed[1], 0x00) << "system status OK";
    EXPECT_EQ(text(id.fixed, 10), "RBBV0104");
    EXPECT_TRUE(id.strings.empty());

    Reply time = client.ask(0x0A);
    ASSERT_EQ(time.error, "");
    ASSERT_EQ(time.strings.size(), 1u);
    const Bytes& t = time.strings[0];
    ASSERT_EQ(t.size(), 6u);
    QDateTime clock(QDate(2000 + t[5], t[4], t[3]), QTime(t[2], t[1], t[0]));
    EXPECT_LE(std::abs(QDateTime::currentDateTime().addSecs(-90 * 60).secsTo(clock)), 2);

    Reply pad = client.ask(0x08, {{0x26}});
    ASSERT_EQ(pad.error, "");
    ASSERT_EQ(pad.strings.size(), 1u);
    ASSERT_EQ(pad.strings[0].size(), 33u) << "parameter number and 32 bytes, in one full-byte length";
    EXPECT_EQ(text(pad.strings[0], 1).substr(0, 6), "000123");

    Bytes newid{0x26, '0', '0', '0', '4', '5', '6'};
    Reply set = client.ask(0x03, {newid});
    ASSERT_EQ(set.error, "");
    ASSERT_EQ(set.strings.size(), 1u);
    EXPECT_EQ(set.strings[0], newid);
    EXPECT_EQ(text(client.ask(0x08, {{0x26}}).strings.at(0), 1).substr(0, 6), "000456");

    Reply up = client.ask(0x07, {}, 8);
    ASSERT_EQ(up.error, "");
    EXPECT_EQ(up.fixed.size(), 8u);
    ASSERT_EQ(up.strings.size(), 2u);
    EXPECT_EQ(up.strings[0].size(), 1u + 11 + 4) << "code type, barcode, stamp";
    EXPECT_EQ(text(up.strings[0]).substr(1, 11), "00112345678");
    EXPECT_EQ(up.strings[1][0], 3) << "code type";

    Reply bad = client.ask(0x0A, {}, 0, true);
    ASSERT_EQ(bad.error, "");
    EXPECT_EQ(bad.status, 0x07) << "a request with a bad CRC";

    EXPECT_EQ(client.ask(0x02).status, 0x06);
    EXPECT_TRUE(client.ask(0x07, {}, 8).strings.empty()) << "cleared";

    EXPECT_EQ(client.ask(0x05).status, 0x06);
    EXPECT_EQ(client.ask(0x01, {}, 18).error, "no answer") << "powered down";
    EXPECT_NE(TempInstall::readfile(state).find("poweredoff=1"), std::string::npos);
}

TEST(IndependentClient, StatusesTheEmulatorCanPlay)
{
    Emulator low("cs1504", {"--system-status", "22"});
    ASSERT_TRUE(low.ready());
    Reply id = Client(low.link()).ask(0x01, {}, 18);
    ASSERT_EQ(id.error, "");
    EXPECT_EQ(id.fixed[1], 22);

    Emulator refusing("opn", {"--refuse", "upload:9"});
    ASSERT_TRUE(refusing.ready());
    Reply up = Client(refusing.link()).ask(0x07, {}, 8);
    ASSERT_EQ(up.error, "");
    EXPECT_EQ(up.status, 0x09);
    EXPECT_TRUE(up.fixed.empty());
}

// The state file keeps what a restarted scanner must still have: the clock offset to the
// second, and a CS 1504's power-down (an OPN 2001 comes back on when it is docked again).
TEST(EmulatorState, ClockOffsetExactAndPowerDownKept)
{
    TempInstall inst;
    std::string state = inst.root() + "/state.txt";
    {
        Emulator emu("cs1504", {"--state", state, "--clock-offset", "1000001"});
        ASSERT_TRUE(emu.ready());
        EXPECT_EQ(Client(emu.link()).ask(0x05).status, 0x06);
        emu.stop();
    }
    std::string kept = TempInstall::readfile(state);
    EXPECT_NE(kept.find("clockoffset=60000060\n"), std::string::npos) << kept;
    EXPECT_NE(kept.find("poweredoff=1"), std::string::npos) << kept;

    Emulator again("cs1504", {"--state", state});
    ASSERT_TRUE(again.ready());
    Client client(again.link());
    EXPECT_EQ(client.ask(0x01, {}, 18).error, "no answer") << "still off after the restart";
    again.signal(SIGUSR1);  // a key press
    Reply id;
    for (int i = 0; i < 20 && (id = client.ask(0x01, {}, 18)).error != ""; ++i) {
    }
    EXPECT_EQ(id.error, "");
    Reply time = client.ask(0x0A);
    ASSERT_EQ(time.strings.size(), 1u);
    const Bytes& t = time.strings[0];
    QDateTime clock(QDate(2000 + t[5], t[4], t[3]), QTime(t[2], t[1], t[0]));
    EXPECT_LE(std::abs(QDateTime::currentDateTime().addSecs(60000060).secsTo(clock)), 2);
    again.stop();
    EXPECT_EQ(TempInstall::readfile(state).find("poweredoff=1"), std::string::npos);
}

}  // namespace
