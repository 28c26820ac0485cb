// The software loader against an emulated OPL 972x: versions, erase, load, status events.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <unistd.h>

#include "platform/loaddll.h"
#include "platform/opl.h"
#include "support/emulator.h"
#include "support/tempinstall.h"

namespace {

struct Event {
    int progress, code;
    std::string text;
};

// Every Status event of a loader, and the wait for the one that ends an operation.
struct Events {
    explicit Events(loaddll::LoadDll& l)
    {
        QObject::connect(&l, &loaddll::LoadDll::Status, [this](int p, int c, const QString& t) {
            list.push_back({p, c, t.toStdString()});
        });
    }
    // Lets events run until a code of 1 to 999 or `code` arrives; that event.
    Event await(int code, int ms = 10000)
    {
        QElapsedTimer t;
        t.start();
        while (t.elapsed() < ms) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            for (const auto& e : list)
                if (e.code == code || (e.code >= 1 && e.code <= 999)) return e;
            usleep(1000);
        }
        return {0, 0, "timed out"};
    }
    std::vector<Event> list;
};

// A sound S-record image whose header names it; `copies` data records make it span chunks.
std::string image(const std::string& header, int copies)
{
    std::string s = header + "\r\n";
    for (int i = 0; i < copies; ++i) s += "S31500001000000102030405060708090A0B0C0D0E0F62\r\n";
    return s + "S70500001000EA\r\n";
}
const char* osheader = "S00C00004F53204F53322E3030CF";     // "OS OS2.00"
const char* appheader = "S00D0000415050205658332E303181";  // "APP VX3.01"

class LoadDllTest : public ::testing::Test {
protected:
    void dock(std::vector<std::string> args = {})
    {
        std::string file = Emulator::writefile(inst.root() + "/lines.txt", "0112345678,251224,0830\n");
        args.insert(args.end(), {"--records", file, "--state", inst.root() + "/state.txt"});
        emu = std::make_unique<Emulator>("opl", args);
        ASSERT_TRUE(emu->ready()) << emu->output();
        inst.configure(emu->portsection(1));
        QDir().mkpath(QString::fromStdString(inst.host("C:\\Program Files\\VexalBCv4\\OS")));
        TempInstall::writefile(inst.host("C:\\Program Files\\VexalBCv4\\OS\\vexalOS.S32"), image(osheader, 60));
        TempInstall::writefile(inst.host("C:\\Program Files\\VexalBCv4\\OS\\vexal.S32"), image(appheader, 60));
    }
    // One operation of a fresh loader on COM`port`: every event, the last the one that ended it.
    std::vector<Event> run(void (loaddll::LoadDll::*op)(), int endcode, const std::string& file = "", int step = 0,
                           int port = 1)
    {
        loaddll::LoadDll l;
        Events ev(l);
        l.setport(port);
        l.setfile(file);
        l.setstep(step);
        (l.*op)();
        ev.list.push_back(ev.await(endcode));
        return ev.list;
    }
    std::string versions() { return run(&loaddll::LoadDll::readversions, loaddll::versionsread).back().text; }

    TempInstall inst;
    std::unique_ptr<Emulator> emu;
};

TEST_F(LoadDllTest, ReadsVersions)
{
    dock();
    loaddll::LoadDll l;
    Events ev(l);
    l.setport(1);
    l.readversions();
    EXPECT_TRUE(ev.list.empty()) << "events come only while events run";
    Event e = ev.await(loaddll::versionsread);
    EXPECT_EQ(e.code, loaddll::versionsread);
    EXPECT_EQ(e.progress, 100);
    EXPECT_EQ(e.text, "OS version: OS1.20 APP version: VX2.05");
    EXPECT_FALSE(l.running());
}

TEST_F(LoadDllTest, LoadsOperatingSystemThenErasesAndLoadsApplication)
{
    dock();
    const std::string os = "C:\\Program Files\\VexalBCv4\\OS\\vexalOS.S32";
    std::vector<Event> events = run(&loaddll::LoadDll::load, loaddll::loadfinished, os);
    ASSERT_EQ(events.back().code, loaddll::loadfinished) << events.back().text;
    // The image crosses the line first, then the scanner writes it.
    std::vector<int> codes;
    for (const auto& x : events) {
        if (codes.empty() || codes.back() != x.code) codes.push_back(x.code);
        if (x.code == loaddll::progressfirst) {
            EXPECT_EQ(x.text, "Programming " + std::to_string(x.progress) + "%");
        }
    }
    EXPECT_EQ(codes, (std::vector<int>{loaddll::progresssecond, loaddll::progressfirst, loaddll::loadfinished}));
    EXPECT_EQ(versions(), "OS version: OS2.00 APP version: VX2.05");
    EXPECT_EQ(TempInstall::readfile(inst.root() + "/state.txt").find("line="), std::string::npos)
        << "a load loses the scanner's data";

    ASSERT_EQ(run(&loaddll::LoadDll::erase, loaddll::erasefinished).back().code, loaddll::erasefinished);
    EXPECT_EQ(versions(), "OS version: OS2.00 APP version: ");

    events = run(&loaddll::LoadDll::load, loaddll::loadfinished, "C:\\Program Files\\VexalBCv4\\OS\\vexal.S32", 50);
    ASSERT_EQ(events.back().code, loaddll::loadfinished);
    int programming = 0;
    for (const auto& x : events) programming += x.code == loaddll::progressfirst;
    EXPECT_EQ(programming, 3) << "a step of 50 shows 0, 50 and 100";
    EXPECT_EQ(versions(), "OS version: OS2.00 APP version: VX3.01");
}

TEST_F(LoadDllTest, Failures)
{
    dock();
    TempInstall::writefile(inst.host("C:\\Program Files\\VexalBCv4\\OS\\bad.S32"),
                           image(osheader, 3) + "S3150000103000000000000000000000000000000000FF\r\n");
    const struct {
        const char* legend;
        const char* file;
        int code;
    } cases[] = {
        {"missing image file", "C:\\Program Files\\VexalBCv4\\OS\\none.S32", loaddll::errnofile},
        {"record with a bad checksum", "C:\\Program Files\\VexalBCv4\\OS\\bad.S32", loaddll::errbadimage},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.legend);
        Event e = run(&loaddll::LoadDll::load, loaddll::loadfinished, c.file).back();
        EXPECT_EQ(e.code, c.code) << e.text;
        EXPECT_EQ(e.progress, 0);
    }
    EXPECT_EQ(versions(), "OS version: OS1.20 APP version: VX2.05") << "nothing was loaded";
    EXPECT_EQ(run(&loaddll::LoadDll::readversions, loaddll::versionsread, "", 0, 5).back().code, loaddll::errnoport);
}

TEST_F(LoadDllTest, SilentOrVanishingScanner)
{
    dock({"--no-answer"});
    EXPECT_EQ(run(&loaddll::LoadDll::readversions, loaddll::versionsread).back().code, loaddll::errnoanswer);
    // Gone after 40 bytes of answers: the acknowledgements of the load, then part of the
    // programming progress.
    dock({"--vanish-after-bytes", "40"});
    Event e = run(&loaddll::LoadDll::load, loaddll::loadfinished, "C:\\Program Files\\VexalBCv4\\OS\\vexalOS.S32").back();
    EXPECT_EQ(e.code, loaddll::errlinklost) << e.text;
    EXPECT_EQ(e.text, "Connection to the scanner on COM1 was lost");
}

TEST_F(LoadDllTest, ControlLoadsSoftwareWithItsDownloadEvents)
{
    dock();
    opl::Control c;
    std::vector<int> percents;
    int done = 0;
    std::string error;
    QObject::connect(&c, &opl::Control::DownloadProgress, [&](int p) { percents.push_back(p); });
    QObject::connect(&c, &opl::Control::DownloadComplete, [&] { done = 1; });
    QObject::connect(&c, &opl::Control::Error, [&](const QString& t) { error = t.toStdString(); });
    c.setport(1);
    ASSERT_TRUE(c.loadsoftware("C:\\Program Files\\VexalBCv4\\OS\\vexal.S32"));
    QElapsedTimer t;
    t.start();
    while (!done && error.empty() && t.elapsed() < 10000) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ(done, 1) << error;
    ASSERT_FALSE(percents.empty());
    EXPECT_EQ(percents.back(), 100);
    EXPECT_EQ(versions(), "OS version: OS1.20 APP version: VX3.01");
}

}  // namespace
