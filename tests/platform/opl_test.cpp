// The opl control against an emulated OPL 972x on a pseudo-terminal: every role and event.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QThread>
#include <unistd.h>

#include "platform/opl.h"
#include "platform/serial.h"
#include "support/emulator.h"
#include "support/tempinstall.h"

namespace {

// Lets events run until `done` holds or the time is up.
template <typename F>
bool pumpuntil(F done, int ms = 5000)
{
    QElapsedTimer t;
    t.start();
    while (!done()) {
        if (t.elapsed() > ms) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        usleep(1000);
    }
    return true;
}

// The Error texts a control has given, and its download events (each checked to arrive on
// the main thread).
struct ErrorLog {
    explicit ErrorLog(opl::Control& c)
    {
        QObject::connect(&c, &opl::Control::Error, [this](const QString& t) { texts.push_back(t.toStdString()); });
        QObject::connect(&c, &opl::Control::DownloadProgress, [this](int p) {
            EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
            positions.push_back(p);
        });
        QObject::connect(&c, &opl::Control::DownloadComplete, [this] { ++done; });
    }
    int count() const { return (int)texts.size(); }
    std::vector<std::string> texts;
    std::vector<int> positions;
    int done = 0;
};

const char* lines =
    "0112345678,251224,0830\n"
    "0212345678,251224,0835\n"
    "1800123456,261224,1200\n"
    "0112345679,261224,1201\n"
    "0512345670,271224,0700\n";

class Opl : public ::testing::Test {
protected:
    void dock(std::vector<std::string> args = {}, const char* records = lines)
    {
        std::remove(statefile().c_str());
        std::string file = Emulator::writefile(inst.root() + "/lines.txt", records);
        args.insert(args.end(), {"--records", file, "--id", "123", "--battery", "85", "--state", statefile()});
        emu = std::make_unique<Emulator>("opl", args);
        ASSERT_TRUE(emu->ready()) << emu->output();
        inst.configure(emu->portsection(1));
        QDir().mkpath(QString::fromStdString(inst.drivec() + "/tarnbc"));
    }
    std::string statefile() const { return inst.root() + "/state.txt"; }
    std::string state() const { return TempInstall::readfile(statefile()); }

    TempInstall inst;
    std::unique_ptr<Emulator> emu;
};

TEST_F(Opl, SessionReadsAndWritesClockIdCountBattery)
{
    dock({"--clock-offset", "30"});
    opl::Control c;
    ErrorLog errors(c);
    c.setport(1);
    ASSERT_EQ(c.openport(), opl::statusok);
    std::string clock = c.readclock();
    QDateTime read = QDateTime::fromString(QString::fromLatin1(clock.c_str()), "dd/MM/yyyy HH:mm:ss");
    ASSERT_TRUE(read.isValid()) << clock;
    EXPECT_LE(std::abs(read.secsTo(QDateTime::currentDateTime().addSecs(30 * 60))), 2);
    EXPECT_EQ(c.readid(), 123);
    EXPECT_EQ(c.readlinecount(), 5);
    EXPECT_EQ(c.readbattery(), "085%");

    EXPECT_EQ(c.writeclock("24/12/2023 18:30:00"), opl::statusok);
    EXPECT_EQ(c.readclock().substr(0, 16), "24/12/2023 18:30");
    EXPECT_EQ(c.writeid(456), opl::statusok);
    EXPECT_EQ(c.readid(), 456);
    EXPECT_NE(state().find("id=456"), std::string::npos);
    EXPECT_EQ(c.closeport(), opl::statusok);
    EXPECT_EQ(errors.count(), 0);
}

TEST_F(Opl, FailuresRaiseErrorBeforeTheCallReturns)
{
    dock({"--no-answer"});
    opl::Control c;
    ErrorLog errors(c);
    c.setport(1);
    c.openport();
    EXPECT_EQ(c.readclock(), "");
    ASSERT_EQ(errors.count(), 1) << "delivered inside the call";
    EXPECT_EQ(errors.texts[0], "No response from scanner on COM1");
    EXPECT_EQ(c.readid(), 0);
    EXPECT_EQ(c.readlinecount(), 0);
    EXPECT_EQ(c.readbattery(), "");
    EXPECT_EQ(errors.count(), 4);

    opl::Control unmapped;
    ErrorLog spy(unmapped);
    unmapped.setport(9);
    EXPECT_EQ(unmapped.openport(), opl::statusnoport);
    EXPECT_EQ(unmapped.readlinecount(), 0);
    EXPECT_EQ(spy.count(), 2);
}

TEST_F(Opl, RefusedAndBrokenAnswers)
{
    dock({"--refuse-clock", "--refuse-id", "--bad-crc", "readid", "--garbage", "count"});
    opl::Control c;
    ErrorLog errors(c);
    c.setport(1);
    EXPECT_EQ(c.writeclock("24/12/2023 18:30:00"), opl::statusrefused);
    EXPECT_EQ(c.writeid(7), opl::statusrefused);
    EXPECT_EQ(c.readid(), 0);
    EXPECT_EQ(c.readlinecount(), 0);
    EXPECT_EQ(c.writeclock("24/13/2023 18:30:00"), opl::statusrefused) << "not a clock text";
    ASSERT_EQ(errors.count(), 5);
    EXPECT_EQ(errors.texts[0], "The scanner refused to set its clock");
    EXPECT_EQ(errors.texts[2], "Communication error on COM1");
    EXPECT_EQ(errors.texts[3], "Communication error on COM1");
    EXPECT_EQ(c.readbattery(), "085%") << "the link is sound for the rest";
}

TEST_F(Opl, NestedControlsShareTheOpenPort)
{
    dock();
    auto outer = std::make_unique<opl::Control>();
    outer->setport(1);
    ASSERT_EQ(outer->openport(), opl::statusok);
    const auto held = [] { return !serial::Port().open(1); };
    EXPECT_TRUE(held());
    {
        opl::Control inner;  // finds the port open and leaves it so
        inner.setport(1);
        EXPECT_EQ(inner.readid(), 123);
    }
    EXPECT_TRUE(held()) << "the inner control did not close the outer one's port";
    EXPECT_EQ(outer->readlinecount(), 5);
    outer.reset();
    EXPECT_FALSE(held()) << "releasing the control that opened the port closes it";

    opl::Control once;  // never opened: each call opens the port for itself
    once.setport(1);
    EXPECT_EQ(once.readbattery(), "085%");
    EXPECT_FALSE(held());
}

TEST_F(Opl, DownloadDeliversEventsOnTheMainThreadWhileEventsRun)
{
    dock();
    opl::Control c;
    ErrorLog events(c);
    c.setport(1);
    c.openport();
    c.settarget("c:\\tarnbc\\temp_123.txt");
    ASSERT_TRUE(c.startdownload());
    usleep(200 * 1000);
    EXPECT_TRUE(events.positions.empty()) << "nothing arrives until events run";
    ASSERT_TRUE(pumpuntil([&] { return events.done == 1; }));
    EXPECT_EQ(events.positions, (std::vector<int>{0, 1, 2, 3, 4}));
    EXPECT_EQ(events.count(), 0);
    std::string want = lines;
    for (size_t at = 0; (at = want.find('\n', at)) != std::string::npos; at += 2) want.insert(at, "\r");
    EXPECT_EQ(TempInstall::readfile(inst.host("c:\\tarnbc\\temp_123.txt")), want);
    EXPECT_EQ(c.readlinecount(), 5) << "a download leaves the lines on the scanner";
}

TEST_F(Opl, EmptyScannerDownloadsAnEmptyFile)
{
    dock({}, "");
    opl::Control c;
    ErrorLog events(c);
    c.setport(1);
    TempInstall::writefile(inst.host("c:\\tarnbc\\temp_123.txt"), "old");
    c.settarget("c:\\tarnbc\\temp_123.txt");
    ASSERT_TRUE(c.startdownload());
    ASSERT_TRUE(pumpuntil([&] { return events.done == 1; }));
    EXPECT_EQ(TempInstall::readfile(inst.host("c:\\tarnbc\\temp_123.txt")), "");
}

TEST_F(Opl, ScannerPulledOutDuringDownload)
{
    dock({"--vanish-after-records", "2"});
    opl::Control c;
    ErrorLog events(c);
    c.setport(1);
    c.openport();
    c.settarget("c:\\tarnbc\\temp_123.txt");
    ASSERT_TRUE(c.startdownload());
    ASSERT_TRUE(pumpuntil([&] { return events.count() > 0; }));
    pumpuntil([] { return false; }, 300);
    EXPECT_EQ(events.done, 0);
    EXPECT_EQ(events.texts, std::vector<std::string>{"Connection to the scanner was lost during the download"});
    // The lines sent before the pull: their bytes may still be lost on the way.
    ASSERT_LE(events.positions.size(), 2u);
    for (size_t i = 0; i < events.positions.size(); ++i) EXPECT_EQ(events.positions[i], (int)i);
}

TEST_F(Opl, DamagedLineDuringDownloadIsAnError)
{
    dock({"--bad-crc", "download"});
    opl::Control c;
    ErrorLog events(c);
    c.setport(1);
    c.settarget("c:\\tarnbc\\temp_123.txt");
    ASSERT_TRUE(c.startdownload());
    ASSERT_TRUE(pumpuntil([&] { return events.count() > 0; }));
    EXPECT_EQ(events.texts[0], "Download incomplete: 4 of 5 lines received");
    EXPECT_EQ(events.done, 0);
}

TEST_F(Opl, ClearEmptiesTheScanner)
{
    dock();
    opl::Control c;
    c.setport(1);
    EXPECT_NE(state().find("line="), std::string::npos);
    EXPECT_EQ(c.cleardata(), opl::statusok);
    EXPECT_EQ(c.readlinecount(), 0);
    EXPECT_EQ(state().find("line="), std::string::npos);
}

}  // namespace
