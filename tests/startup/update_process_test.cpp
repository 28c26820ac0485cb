// The real program against a web host on loopback and emulated OPL 972x scanners: the
// update check at start answered each way, and a "swupdate" start updating scanner after
// scanner.
#include <memory>

#include "processfixture.h"
#include "support/emulator.h"
#include "support/webhost.h"

namespace {

class UpdateProcess : public ProcessTest {
protected:
    // A first start writes the settings; then the program is set up, saving locally.
    void SetUp() override
    {
        ProcessTest::SetUp();
        QProcess* first = start();
        ASSERT_TRUE(waitforlog("First run")) << log();
        first->kill();
        first->waitForFinished(5000);
        setupdone("0");
    }
    void configure(const std::string& web, const std::string& answers, const std::string& more = "")
    {
        write("platform.ini", "[dialogs]\nanswers=answers.txt\ntranscript=transcript.txt\n[web]\nupdate=" + web +
                                  "\ntimeout=2\n" + more);
        write("answers.txt", answers);
        write("transcript.txt", "");
    }
    void setnag(const std::string& value)
    {
        std::string ini = read("TAGSTORE.INI");
        const size_t at = ini.find("[UPDATE]");
        if (at != std::string::npos) ini.erase(at, ini.find("\r\n", ini.find("NAG=", at)) + 2 - at);
        write("TAGSTORE.INI", ini + "[UPDATE]\r\nNAG=" + value + "\r\n");
    }
    std::string nag() const
    {
        const std::string ini = read("TAGSTORE.INI");
        const size_t at = ini.find("NAG=");
        return at == std::string::npos ? "<none>" : ini.substr(at + 4, ini.find('\r', at) - at - 4);
    }
    // How often the start-up has gone past the splash (the line it writes once the logs are open).
    int pastsplash() const
    {
        int n = 0;
        const std::string text = log();
        for (size_t at = text.find("No system tray"); at != std::string::npos; at = text.find("No system tray", at + 1)) ++n;
        return n;
    }
    // The issue date `days` before the program's today, as bcver gives it.
    std::string issued(int days) const
    {
        return programnow().date().addDays(-days).toString("ddMMyyyy").toStdString() + "#\r\n";
    }
    void stop(QProcess* p)
    {
        p->kill();
        p->waitForFinished(5000);
    }

    WebHost web;
};

TEST_F(UpdateProcess, StartAgainstTheWebHostWithANewerIssue)
{
    const std::string marker = root + "/updater-ran.txt";
    write("WebUpdater.exe", "#!/bin/sh\necho old \"$@\" > '" + marker + "'\n");
    QFile::setPermissions(QString::fromStdString(root + "/WebUpdater.exe"),
                          QFile::permissions(QString::fromStdString(root + "/WebUpdater.exe")) | QFileDevice::ExeOwner);
    web.put("support/Tagstore/WebUpdater.exe", "#!/bin/sh\necho new \"$@\" > '" + marker + "'\n");
    web.put("support/Tagstore/support/bcver", issued(10));
    ASSERT_TRUE(web.start()) << web.error();

    // No: put off for five starts, and the program starts.
    configure(web.base(), "Update Program => No\n");
    setnag("0#");
    int before = pastsplash();
    QProcess* p = start();
    ASSERT_TRUE(waituntil([&] { return pastsplash() > before; })) << read("transcript.txt");
    EXPECT_NE(read("transcript.txt").find("Update Program"), std::string::npos);
    EXPECT_NE(read("transcript.txt").find("(NB: You have 20 days left before you MUST load this update!)"),
              std::string::npos)
        << read("transcript.txt");
    EXPECT_EQ(nag(), "5#");
    stop(p);

    // The next start counts down without a word.
    write("transcript.txt", "");
    before = pastsplash();
    p = start();
    ASSERT_TRUE(waituntil([&] { return pastsplash() > before; }));
    EXPECT_EQ(nag(), "4#");
    EXPECT_EQ(read("transcript.txt").find("Update Program"), std::string::npos);
    stop(p);

    // Past 30 days: the stronger message; OK lets the program start, Cancel ends it at once.
    web.put("support/Tagstore/support/bcver", issued(45));
    configure(web.base(), "Update Of Program Required => OK\n");
    before = pastsplash();
    p = start();
    ASSERT_TRUE(waituntil([&] { return pastsplash() > before; }));
    EXPECT_NE(read("transcript.txt").find("This MUST now be updated before the software can be used again!"),
              std::string::npos);
    EXPECT_EQ(nag(), "5#");
    stop(p);

    configure(web.base(), "Update Of Program Required => Cancel\n");
    before = pastsplash();
    p = start();
    ASSERT_TRUE(p->waitForFinished(15000));
    EXPECT_EQ(pastsplash(), before);

    // Yes: the web updater is fetched, started with "Internal", and the program ends.
    web.put("support/Tagstore/support/bcver", issued(10));
    configure(web.base(), "Update Program => Yes\n");
    setnag("0#");
    p = start();
    ASSERT_TRUE(p->waitForFinished(15000));
    EXPECT_EQ(pastsplash(), before);
    ASSERT_TRUE(waituntil([&] { return !read("updater-ran.txt").empty(); }, 5000));
    EXPECT_EQ(read("updater-ran.txt"), "new Internal\n");
    EXPECT_EQ(nag(), "0#");
}

TEST_F(UpdateProcess, SwupdateUpdatesScannerAfterScanner)
{
    // The OPL 972x on COM6, a port that one scanner after another is docked on.
    std::string ini = read("TAGSTORE.INI");
    auto set = [&](const char* section, const char* key, const std::string& value) {
        const size_t at = ini.find(std::string(key) + "=", ini.find(std::string("[") + section + "]"));
        ini.replace(at, ini.find("\r\n", at) - at, std::string(key) + "=" + value);
    };
    set("9725", "USED", "1");
    set("9725", "PORT", "6#");
    for (const char* key : {"NAME", "USER", "TEL"}) set("COMPANY", key, "N/A#");
    write("TAGSTORE.INI", ini);
    const std::string link = root + "/opl-port";
    configure("", "Update Files => No\nInsert Scanner In Cradle => OK\nOS And APP Match => No\n",
              "[ports]\nCOM6=" + link + "\n");
    auto dock = [&](const std::string& name, const char* os, const char* app) {
        write(name + ".txt", "0112345678,251224,0830\n");
        auto emu = std::make_unique<Emulator>(
            "opl",
            std::vector<std::string>{"--os-version", os, "--app-version", app, "--state", root + "/" + name + ".state",
                                     "--records", root + "/" + name + ".txt"},
            link);
        EXPECT_TRUE(emu->ready()) << emu->output();
        return emu;
    };
    auto updated = [&](const std::string& name) {
        return waituntil([&] { return read(name + ".state").find("appversion=VX3.01") != std::string::npos; }, 30000);
    };

    auto scanner = dock("first", "OS1.20", "VX2.05");
    QProcess* p = start({"swupdate"});
    ASSERT_TRUE(updated("first")) << read("transcript.txt") << log();
    // The next scanner goes in while the screen shows "Upload Complete".
    scanner.reset();
    scanner = dock("second", "OS1.10", "VX1.00");
    ASSERT_TRUE(updated("second")) << read("transcript.txt") << log();
    EXPECT_NE(read("second.state").find("osversion=OS2.00"), std::string::npos);
    EXPECT_EQ(read("second.state").find("line="), std::string::npos) << "All data on the scanner is lost";
    // A scanner that is up to date, and No: the run ends, and so does the program.
    scanner.reset();
    scanner = dock("third", "OS2.00", "VX3.01");
    ASSERT_TRUE(p->waitForFinished(30000)) << read("transcript.txt");
    EXPECT_EQ(p->exitCode(), 0);
    const std::string transcript = read("transcript.txt");
    int cradle = 0;
    for (size_t at = transcript.find("Insert Scanner In Cradle"); at != std::string::npos;
         at = transcript.find("Insert Scanner In Cradle", at + 1))
        ++cradle;
    EXPECT_EQ(cradle, 3) << transcript;
    EXPECT_NE(transcript.find("OS And APP Match"), std::string::npos);
    EXPECT_NE(read("third.state").find("line="), std::string::npos) << "the third scanner was left alone";
    EXPECT_EQ(transcript.find("Error"), std::string::npos) << transcript;
}

}  // namespace
