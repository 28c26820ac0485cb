// The scanner emulator as scripts use it: its command line, its link and its state file.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QProcess>
#include <sys/stat.h>

#include "platform/csp2.h"
#include "platform/opl.h"
#include "support/emulator.h"
#include "support/tempinstall.h"

namespace {

struct Outcome {
    int code;
    std::string output;
};

Outcome runemulator(const QStringList& args)
{
    QProcess p;
    p.setProcessChannelMode(QProcess::MergedChannels);
    p.start(QString::fromStdString(Emulator::program()), args);
    p.waitForFinished(5000);
    return {p.exitCode(), p.readAll().toStdString()};
}

bool islink(const std::string& path)
{
    struct stat st {};
    return lstat(path.c_str(), &st) == 0 && S_ISLNK(st.st_mode);
}

TEST(EmulatorCommandLine, HelpAndBadInput)
{
    Outcome help = runemulator({"--help"});
    EXPECT_EQ(help.code, 0);
    EXPECT_NE(help.output.find("--vanish-after-records"), std::string::npos);
    EXPECT_NE(help.output.find("barcode,code type,YYYY-MM-DD HH:MM:SS"), std::string::npos);

    struct Case {
        const char* legend;
        QStringList args;
        const char* message;
    };
    TempInstall inst;
    std::string bad = Emulator::writefile(inst.root() + "/bad.txt", "00112345678,1,2024-03-25 14:30:05\n0011,x,2024\n");
    std::string link = inst.root() + "/port";
    const Case cases[] = {
        {"unknown type", {"--type", "opx", "--link", "/tmp/x"}, "--type must be opl, opn or cs1504"},
        {"no link", {"--type", "opl"}, "--link PATH is needed"},
        {"ID out of range", {"--type", "opl", "--link", "/tmp/x", "--id", "40000"}, "--id wants a whole number"},
        {"fault on a command of the other link", {"--type", "opl", "--link", "/tmp/x", "--garbage", "upload"},
         "unknown command name 'upload'"},
        {"bad record line", {"--type", "cs1504", "--link", QString::fromStdString(link), "--records", QString::fromStdString(bad)},
         "record '0011,x,2024': the code type must be a number from 0 to 255"},
        {"refusal with a status the link has not", {"--type", "cs1504", "--link", "/tmp/x", "--refuse", "upload:6"},
         "--refuse wants COMMAND:STATUS with a status of 5, 7, 8 or 9"},
        {"refusal of a command the link has not", {"--type", "cs1504", "--link", "/tmp/x", "--refuse", "readid:9"},
         "unknown command name 'readid'"},
        {"wake-up of another kind", {"--type", "opn", "--link", "/tmp/x", "--wake", "key"}, "--wake must be dtr or bytes"},
        {"missing records file", {"--type", "opn", "--link", QString::fromStdString(link), "--records", "/nonexistent"},
         "cannot read the records file /nonexistent"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.legend);
        Outcome r = runemulator(c.args);
        EXPECT_EQ(r.code, 2);
        EXPECT_NE(r.output.find(c.message), std::string::npos) << r.output;
    }
    EXPECT_FALSE(islink(link)) << "no port is made for bad input";
}

TEST(EmulatorLifecycle, SigtermRemovesTheLinkAndStateOutlivesTheProcess)
{
    TempInstall inst;
    std::string link = inst.root() + "/port", state = inst.root() + "/state.txt";
    {
        Emulator emu("opl", {"--id", "42", "--state", state}, link);
        ASSERT_TRUE(emu.ready());
        EXPECT_TRUE(islink(link));
        inst.configure(emu.portsection(1));
        opl::Control c;
        c.setport(1);
        EXPECT_EQ(c.writeid(77), opl::statusok);
        EXPECT_EQ(emu.stop(), 0);
        EXPECT_FALSE(islink(link));
    }
    Emulator again("opl", {"--id", "42", "--state", state}, link);
    ASSERT_TRUE(again.ready());
    opl::Control c;
    c.setport(1);
    EXPECT_EQ(c.readid(), 77) << "the memory came back from the state file, over --id";
}

TEST(EmulatorLifecycle, PacesAtTheLineRate)
{
    // 40 records of 18 bytes at 9600 baud: about 0.85 s on the line.
    TempInstall inst;
    std::string records;
    for (int i = 0; i < 40; ++i) records += "001234567890,1,2024-03-25 14:30:05\n";
    Emulator emu("cs1504", {"--baud", "9600", "--records", Emulator::writefile(inst.root() + "/r.txt", records)});
    ASSERT_TRUE(emu.ready());
    inst.configure(emu.portsection(1));
    ASSERT_EQ(csp2Init(0), csp2::ok);
    QElapsedTimer t;
    t.start();
    EXPECT_EQ(csp2ReadData(), 40);
    double line = (5.0 + 2 + 8 + 40 * 18 + 1 + 2) * 11 / 9600;
    EXPECT_GT(t.elapsed(), line * 1000 * 0.95);
    EXPECT_LT(t.elapsed(), line * 1000 * 1.5);
    csp2Restore();
}

}  // namespace
