// The real program in a real install (cmake --install of this build): first start, second
// start, and a start from the start-up group.
#include <csignal>

#include "processfixture.h"

namespace {

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
    waituntil([&] { return read("transcript.txt").find("Remote Store Location Not Responding") != std::string::npos; });
    EXPECT_NE(read("transcript.txt").find("There is a problem with the remote store folder located on '"), std::string::npos)
        << read("transcript.txt");
}

}  // namespace
