// The real program in a real install (cmake --install of this build): first start, second
// start, and a start from the start-up group.
#include <QDate>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>
#include <csignal>
#include <map>
#include <string>

namespace {

class ProcessTest : public ::testing::Test {
protected:
    QTemporaryDir dir;
    std::string root;
    std::vector<QProcess*> running;

    void SetUp() override
    {
        root = dir.path().toStdString();
        QProcess install;
        install.start("cmake", {"--install", VEXAL_BINARY_DIR, "--prefix", QString::fromStdString(root)});
        ASSERT_TRUE(install.waitForFinished(60000));
        ASSERT_EQ(install.exitCode(), 0) << install.readAllStandardError().toStdString();
        write("platform.ini", "[dialogs]\nanswers=answers.txt\ntranscript=transcript.txt\n");
        write("answers.txt", "Remote Store Location Not Responding => No\n");
    }
    void TearDown() override
    {
        for (QProcess* p : running) {
            p->kill();
            p->waitForFinished(5000);
            delete p;
        }
    }

    void write(const std::string& name, const std::string& bytes)
    {
        QFile f(QString::fromStdString(root + "/" + name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(bytes.data(), (qint64)bytes.size());
    }
    std::string read(const std::string& name) const
    {
        QFile f(QString::fromStdString(root + "/" + name));
        return f.open(QIODevice::ReadOnly) ? f.readAll().toStdString() : std::string();
    }
    std::string log() const { return read("LOGS/" + QDate::currentDate().toString("dd").toStdString() + "_LOG.TXT"); }

    QProcess* start(const QStringList& args = {})
    {
        auto* p = new QProcess;
        auto env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "offscreen");
        p->setProcessEnvironment(env);
        p->setWorkingDirectory(QString::fromStdString(root));
        p->start(QString::fromStdString(root + "/vexalbc"), args);
        running.push_back(p);
        return p;
    }
    // Waits (events running) until the log holds `text`.
    bool waitforlog(const std::string& text, int ms = 15000)
    {
        QElapsedTimer t;
        t.start();
        while (t.elapsed() < ms) {
            if (log().find(text) != std::string::npos) return true;
            QThread::msleep(100);
        }
        return false;
    }
    // Every file of the install with its bytes.
    std::map<std::string, std::string> snapshot() const
    {
        std::map<std::string, std::string> all;
        QDirIterator it(QString::fromStdString(root), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QString path = it.next();
            QFile f(path);
            f.open(QIODevice::ReadOnly);
            all[path.toStdString()] = f.readAll().toStdString();
        }
        return all;
    }
    // Ends the first run's wait by marking the settings as set up (as the setup screen's
    // save does), so the next start takes the normal path.
    void setupdone(const std::string& savetype = "0")
    {
        std::string ini = read("TAGSTORE.INI");
        auto mark = [&](const std::string& from, const std::string& to) {
            size_t at = ini.find(from);
            ASSERT_NE(at, std::string::npos) << from;
            ini.replace(at, from.size(), to);
        };
        mark("RUN=0", "RUN=1");
        size_t save = ini.find("[SAVE]");
        ASSERT_NE(save, std::string::npos);
        size_t type = ini.find("TYPE=", save);
        ini.replace(type + 5, 1, savetype);
        write("TAGSTORE.INI", ini);
    }
};

TEST_F(ProcessTest, FirstStartWritesSettingsWorkingFolderAndLogsAndOpensTheCompanyScreen)
{
    QProcess* p = start();
    ASSERT_TRUE(waitforlog("First run - company information requested")) << log();
    EXPECT_NE(read("TAGSTORE.INI").find("[FIRST]"), std::string::npos);
    EXPECT_TRUE(QDir(QString::fromStdString(root + "/drive_c/TARNBC")).exists());
    EXPECT_NE(log().find("Program Started"), std::string::npos);
    EXPECT_EQ(log().find("Form9/Load: Unexpected error"), std::string::npos);
    EXPECT_EQ(::kill((pid_t)p->processId(), 0), 0);   // still there, waiting for the company details
}

TEST_F(ProcessTest, SecondStartLeavesDoItAndChangesNothingElse)
{
    start();
    ASSERT_TRUE(waitforlog("First run - company information requested")) << log();
    auto before = snapshot();

    QProcess* second = start();
    ASSERT_TRUE(second->waitForFinished(10000));
    EXPECT_EQ(second->exitCode(), 0);
    auto after = snapshot();
    const std::string flag = root + "/drive_c/TARNBC/max.txt";
    ASSERT_EQ(after.count(flag), 1u);
    EXPECT_EQ(after[flag], "Do It\r\n");
    after.erase(flag);
    EXPECT_EQ(before, after);   // no log line, no settings, no transcript entry
}

TEST_F(ProcessTest, StartupWordAsksNoStoreQuestionAndAFailedServerStoreAsksWithoutIt)
{
    QProcess* first = start();
    ASSERT_TRUE(waitforlog("First run")) << log();
    first->kill();
    first->waitForFinished(5000);
    setupdone("1");   // Direct to a server at 0.0.0.0, which cannot answer

    QProcess* tray = start({"startup"});
    ASSERT_TRUE(waitforlog("Form9/Load: No system tray")) << log();
    QThread::msleep(4000);   // past the splash and the store check
    EXPECT_EQ(read("transcript.txt").find("Remote Store Location Not Responding"), std::string::npos);
    tray->kill();
    tray->waitForFinished(5000);

    start();
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < 15000 && read("transcript.txt").find("Remote Store Location Not Responding") == std::string::npos)
        QThread::msleep(100);
    EXPECT_NE(read("transcript.txt").find("There is a problem with the remote store folder located on '"), std::string::npos)
        << read("transcript.txt");
}

}  // namespace
