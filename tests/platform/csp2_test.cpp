// The csp2 calls against an emulated OPN 2001 or CS 1504 on a pseudo-terminal.
#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <unistd.h>

#include "platform/csp2.h"
#include "platform/paths.h"
#include "platform/serial.h"
#include "support/emulator.h"
#include "support/tempinstall.h"

namespace {

const char* records =
    "00112345678,1,2024-03-25 14:30:05\n"
    "00254321,3,2024-12-31 23:59:59\n"
    "hex:0A 03 30 30 32 31 32 FF FF FF FF\n";

class Csp2 : public ::testing::Test {
protected:
    void TearDown() override { csp2Restore(); }

    // Starts the emulator on COM3 with the records above.
    void dock(const std::string& type, std::vector<std::string> args = {}, const std::string& extra = "")
    {
        std::string file = Emulator::writefile(inst.root() + "/records.txt", records);
        std::remove((inst.root() + "/state.txt").c_str());  // a fresh scanner each time
        args.insert(args.end(), {"--records", file, "--id", "123", "--state", inst.root() + "/state.txt"});
        emu = std::make_unique<Emulator>(type, args);
        ASSERT_TRUE(emu->ready()) << emu->output();
        inst.configure(emu->portsection(3) + extra);
    }
    std::string state() { return TempInstall::readfile(inst.root() + "/state.txt"); }

    static QDateTime clockof(const char* b)
    {
        return QDateTime(QDate(2000 + b[5], b[4], b[3]), QTime(b[2], b[1], b[0]));
    }

    TempInstall inst;
    std::unique_ptr<Emulator> emu;
};

TEST_F(Csp2, ReadSessionBringsRecordsClockAndId)
{
    dock("opn", {"--clock-offset", "-90"});
    ASSERT_EQ(csp2Restore(), csp2::ok);
    ASSERT_EQ(csp2Init(2), csp2::ok);
    ASSERT_EQ(csp2ReadData(), 3);
    EXPECT_EQ(csp2GetASCIIMode(), 1);

    char clock[6];
    ASSERT_EQ(csp2GetTime(clock), 6);
    qint64 drift = QDateTime::currentDateTime().addSecs(-90 * 60).secsTo(clockof(clock));
    EXPECT_LE(std::abs(drift), 2);

    std::string id(256, '\0');
    ASSERT_EQ(csp2GetParam(38, id.data(), 32), 32);
    EXPECT_EQ(id.substr(0, 6), "000123");

    std::string packet(256, '\0');
    ASSERT_EQ(csp2GetPacket(packet.data(), 0, 63), 17);
    EXPECT_EQ(packet.substr(0, 13), std::string("\x10\x01" "00112345678"));
    EXPECT_EQ(packet.substr(13, 4), "\x15\xE7\x64\xD8");  // 14:30:05 on 25 March 24
    ASSERT_EQ(csp2GetPacket(packet.data(), 2, 63), 11);
    EXPECT_EQ(packet.substr(7, 4), "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(csp2GetPacket(packet.data(), 1, 4), 4) << "copies no more than asked";
    EXPECT_EQ(csp2GetPacket(packet.data(), 3, 63), csp2::badparam);
    EXPECT_EQ(csp2Restore(), csp2::ok);
    EXPECT_EQ(csp2GetPacket(packet.data(), 0, 63), csp2::badparam) << "restore drops the data";
}

TEST_F(Csp2, InterrogateAndVersionNameTheModel)
{
    dock("cs1504");
    csp2Restore();
    csp2SetRetryCount(1);
    ASSERT_EQ(csp2Init(2), csp2::ok);
    EXPECT_EQ(csp2Interrogate(), 0);
    char version[16];
    std::memset(version, 'x', sizeof version);
    ASSERT_EQ(csp2GetSwVersion(version, 9), 9);
    EXPECT_STREQ(version, "RBBV0104");

    csp2Restore();
    ASSERT_EQ(csp2Init(2), csp2::ok);
    ASSERT_EQ(csp2GetSwVersion(version, 9), 9) << "asks the scanner when no interrogation came first";
    EXPECT_EQ(std::string(version, 3), "RBB");
}

TEST_F(Csp2, SessionHoldsThePortUntilRestore)
{
    dock("opn");
    serial::Port other;
    ASSERT_EQ(csp2Init(2), csp2::ok);
    EXPECT_FALSE(other.open(3)) << "the session holds the port for itself";
    EXPECT_TRUE(serial::portexists(3)) << "a port held by this program is still there";
    csp2Restore();
    EXPECT_TRUE(other.open(3));
}

TEST_F(Csp2, NoPortMeansNoAnswer)
{
    dock("opn");
    EXPECT_EQ(csp2Init(-1), csp2::setuperror) << "port number 0 gives -1, COM0";
    EXPECT_EQ(csp2Interrogate(), csp2::nocomms);
    EXPECT_EQ(csp2ReadData(), -1);
    EXPECT_EQ(csp2Init(6), csp2::setuperror) << "COM7 is not mapped";
    char clock[6];
    EXPECT_EQ(csp2GetTime(clock), csp2::nocomms);
}

TEST_F(Csp2, SilentScannerCostsOneTryPerRetry)
{
    dock("opn", {"--no-answer"});
    csp2SetRetryCount(1);
    ASSERT_EQ(csp2Init(2), csp2::ok);
    QElapsedTimer t;
    t.start();
    EXPECT_EQ(csp2Interrogate(), -1);
    qint64 one = t.elapsed();
    EXPECT_LT(one, 900);
    csp2Restore();  // back to the default tries
    ASSERT_EQ(csp2Init(2), csp2::ok);
    t.restart();
    EXPECT_EQ(csp2Interrogate(), -1);
    EXPECT_GT(t.elapsed(), 2 * one);
    EXPECT_EQ(csp2SetRetryCount(0), csp2::badparam);
}

TEST_F(Csp2, BadAnswersAreNeitherZeroNorMinusOne)
{
    for (const char* fault : {"--garbage", "--bad-crc"}) {
        SCOPED_TRACE(fault);
        dock("opn", {fault, "interrogate"});
        csp2Restore();
        csp2SetRetryCount(1);
        ASSERT_EQ(csp2Init(2), csp2::ok);
        EXPECT_EQ(csp2Interrogate(), std::string(fault) == "--bad-crc" ? csp2::crcerror : csp2::charerror);
        EXPECT_EQ(csp2ReadData(), 3) << "other commands still answer";
        csp2Restore();
    }
    dock("opn", {"--bad-crc", "upload"});
    ASSERT_EQ(csp2Init(2), csp2::ok);
    EXPECT_EQ(csp2ReadData(), -1);
}

TEST_F(Csp2, ScannerPulledOutDuringReadData)
{
    dock("cs1504", {"--vanish-after-records", "2"});
    ASSERT_EQ(csp2Init(2), csp2::ok);
    QElapsedTimer t;
    t.start();
    EXPECT_EQ(csp2ReadData(), -1);
    EXPECT_LT(t.elapsed(), 1500) << "a broken line ends the read at once";
    EXPECT_TRUE(emu->waitfor("vanished"));
    char packet[64];
    EXPECT_EQ(csp2GetPacket(packet, 0, 63), csp2::badparam) << "no half download is kept";
    EXPECT_FALSE(serial::portexists(3));
}

TEST_F(Csp2, ClockWrites)
{
    dock("opn");
    ASSERT_EQ(csp2Init(2), csp2::ok);
    QDateTime set = QDateTime::currentDateTime().addDays(-3).addSecs(-3600);
    char clock[6] = {(char)set.time().second(), (char)set.time().minute(), (char)set.time().hour(),
                     (char)set.date().day(), (char)set.date().month(), (char)(set.date().year() % 100)};
    EXPECT_EQ(csp2SetTime(clock), csp2::ok);
    char back[6];
    ASSERT_EQ(csp2GetTime(back), 6);
    EXPECT_LE(std::abs(set.secsTo(clockof(back))), 2);
    csp2Restore();

    dock("opn", {"--refuse-clock"});
    ASSERT_EQ(csp2Init(2), csp2::ok);
    EXPECT_EQ(csp2SetTime(clock), csp2::generalerror);
    ASSERT_EQ(csp2GetTime(back), 6);
    EXPECT_LE(std::abs(QDateTime::currentDateTime().secsTo(clockof(back))), 2) << "the clock kept its time";
}

TEST_F(Csp2, IdWrites)
{
    dock("opn");
    ASSERT_EQ(csp2Init(2), csp2::ok);
    EXPECT_EQ(csp2SetParam(38, "000456    ", 10), csp2::ok);
    char id[32];
    ASSERT_EQ(csp2GetParam(38, id, 10), 10);
    EXPECT_EQ(std::string(id, 6), "000456");
    EXPECT_NE(state().find("scratchpad=303030343536"), std::string::npos) << state();
    std::string big(250, ' ');
    EXPECT_EQ(csp2SetParam(38, big.data(), 250), csp2::badparam) << "a string carries 249 value bytes at most";
    csp2Restore();

    // Firmware with 5-bit lengths: 30 value bytes at most, and the scratch pad comes cut.
    inst.configure(emu->portsection(3) + "[csp2]\nextendedlength=0\n");
    emu.reset();
    dock("opn", {"--extended-length", "0"}, "[csp2]\nextendedlength=0\n");
    ASSERT_EQ(csp2Init(2), csp2::ok);
    EXPECT_EQ(csp2SetParam(38, big.data(), 31), csp2::badparam);
    ASSERT_EQ(csp2GetParam(38, big.data(), 250), 30);
    EXPECT_EQ(big.substr(0, 6), "000123");
    csp2Restore();

    dock("opn", {"--refuse-id"});
    ASSERT_EQ(csp2Init(2), csp2::ok);
    EXPECT_EQ(csp2SetParam(38, "000789    ", 10), csp2::generalerror);
    ASSERT_EQ(csp2GetParam(38, id, 10), 10);
    EXPECT_EQ(std::string(id, 6), "000123");
}

TEST_F(Csp2, ClearDataEmptiesTheScanner)
{
    dock("cs1504");
    ASSERT_EQ(csp2Init(2), csp2::ok);
    ASSERT_EQ(csp2ReadData(), 3);
    EXPECT_NE(state().find("record="), std::string::npos);
    EXPECT_EQ(csp2ClearData(), csp2::ok);
    EXPECT_EQ(state().find("record="), std::string::npos);
    EXPECT_EQ(csp2ReadData(), 0);
}

TEST_F(Csp2, PowerDownSilencesTheScannerUntilWoken)
{
    dock("cs1504");
    csp2SetRetryCount(1);
    ASSERT_EQ(csp2Init(2), csp2::ok);
    EXPECT_EQ(csp2PowerDown(), csp2::ok);
    EXPECT_EQ(csp2Interrogate(), -1);
    emu->signal(SIGUSR1);
    QElapsedTimer t;
    t.start();
    int32_t r = -1;
    while (r != 0 && t.elapsed() < 3000) r = csp2Interrogate();
    EXPECT_EQ(r, 0);
}

TEST_F(Csp2, ReplyHeadIsAQuirkOfBothSides)
{
    // Every other test runs both sides on their defaults: status heads.
    dock("opn", {"--reply-head", "echo"}, "[csp2]\nreplyhead=echo\n");
    ASSERT_EQ(csp2Init(2), csp2::ok);
    EXPECT_EQ(csp2Interrogate(), 0);
    EXPECT_EQ(csp2ReadData(), 3);
    char clock[6];
    EXPECT_EQ(csp2GetTime(clock), 6);
    csp2Restore();

    inst.configure(emu->portsection(3));  // the driver back to status heads
    csp2SetRetryCount(1);
    ASSERT_EQ(csp2Init(2), csp2::ok);
    EXPECT_EQ(csp2Interrogate(), csp2::charerror) << "an echo is no reply to a status-head driver";
}

TEST_F(Csp2, ErrorStatusesAreToldApart)
{
    const std::pair<const char*, int32_t> statuses[] = {
        {"5", csp2::unsupported}, {"7", csp2::crcerror}, {"8", csp2::charerror}, {"9", csp2::generalerror}};
    for (auto [status, code] : statuses) {
        SCOPED_TRACE(status);
        dock("cs1504", {"--refuse", std::string("gettime:") + status});
        csp2SetRetryCount(1);
        ASSERT_EQ(csp2Init(2), csp2::ok);
        char clock[6];
        EXPECT_EQ(csp2GetTime(clock), code);
        EXPECT_EQ(csp2Interrogate(), 0) << "other commands still answer";
        csp2Restore();
    }
    dock("cs1504", {"--refuse", "upload:9"});
    ASSERT_EQ(csp2Init(2), csp2::ok);
    EXPECT_EQ(csp2ReadData(), -1);
}

TEST_F(Csp2, LowBatteryIsAnAnswerAndLogged)
{
    dock("cs1504", {"--system-status", "22"});
    const std::string logs = std::string(platform::installfolder) + "LOGS";
    QDir().mkpath(QString::fromStdString(inst.host(logs)));
    csp2SetRetryCount(1);
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(csp2Init(2), csp2::ok);
        EXPECT_EQ(csp2Interrogate(), 0);
        csp2Restore();
    }
    std::string log = TempInstall::readfile(
        inst.host(logs + "\\" + QDate::currentDate().toString("dd").toStdString() + "_LOG.TXT"));
    size_t at = log.find("reports a low battery (system status 22)");
    EXPECT_NE(at, std::string::npos) << log;
    EXPECT_EQ(log.find("reports a low battery", at + 1), std::string::npos) << "logged once, not at every poll";
}

TEST_F(Csp2, DtrWakesASleepingScanner)
{
    // Asleep after 600 ms without input: longer than one try waits for an answer. A session
    // on a port that has not answered begins with the DTR edge.
    dock("cs1504", {"--sleep-after", "600", "--wake", "dtr"});
    usleep(700 * 1000);
    csp2SetRetryCount(1);
    ASSERT_EQ(csp2Init(2), csp2::ok);
    EXPECT_EQ(csp2Interrogate(), 0);
    csp2Restore();

    // It answered a moment ago: the next session sends the command at once, so a scanner
    // that fell asleep meanwhile misses it, and the retry's DTR edge wakes it.
    usleep(700 * 1000);
    ASSERT_EQ(csp2Init(2), csp2::ok);
    csp2SetRetryCount(1);
    EXPECT_EQ(csp2Interrogate(), -1);
    csp2SetRetryCount(2);
    EXPECT_EQ(csp2Interrogate(), 0);
    csp2Restore();

    // Without the DTR edge the NUL bytes do not wake this scanner.
    inst.configure(emu->portsection(3) + "[csp2]\nwakedtr=0\nawakems=0\n");
    usleep(700 * 1000);
    csp2SetRetryCount(3);
    ASSERT_EQ(csp2Init(2), csp2::ok);
    EXPECT_EQ(csp2Interrogate(), -1);
}

TEST_F(Csp2, BytesWakeAScannerThatWakesOnInput)
{
    dock("opn", {"--sleep-after", "600", "--wake", "bytes"}, "[csp2]\nwakedtr=0\nwakeupbytes=0\nawakems=0\n");
    usleep(700 * 1000);
    csp2SetRetryCount(1);
    ASSERT_EQ(csp2Init(2), csp2::ok);
    EXPECT_EQ(csp2Interrogate(), -1) << "the first command only wakes it";
    EXPECT_EQ(csp2Interrogate(), 0);
    csp2Restore();

    inst.configure(emu->portsection(3) + "[csp2]\nwakedtr=0\nawakems=0\n");
    usleep(700 * 1000);
    ASSERT_EQ(csp2Init(2), csp2::ok);
    EXPECT_EQ(csp2Interrogate(), 0) << "the NUL byte woke it";
}

}  // namespace
