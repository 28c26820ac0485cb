#include <QDir>
#include <gtest/gtest.h>

#include "core/globals.h"
#include "core/logs.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "support/tempinstall.h"

namespace {

class Logs : public ::testing::Test {
protected:
    void SetUp() override
    {
        resetglobals();
        g().homedir = "C:\\Program Files\\VexalBCv4\\";
        dialogs::reset();
        dialogs::setunattended(true);
        dialogs::cleartranscript();
        files::inject::reset();
    }
    void TearDown() override
    {
        platform::clock::reset();
        files::inject::reset();
    }
    std::string log(const std::string& name) { return TempInstall::readfile(t.root() + "/LOGS/" + name); }

    TempInstall t;
};

TEST_F(Logs, SecondStartOnTheSameDayAddsAStartLine)
{
    platform::clock::set(QDateTime(QDate(2026, 11, 15), QTime(8, 5, 0)));
    checklogfiles();
    platform::clock::set(QDateTime(QDate(2026, 11, 15), QTime(13, 40, 0)));
    checklogfiles();
    addtologfile("runread: Started");
    const std::string expected =
        "15/11/2026\r\nProgram Started : 0805 151126\r\nProgram Started : 1340 151126\r\n";
    EXPECT_EQ(log("15_LOG.TXT"), expected + "runread: Started\r\n");
    EXPECT_EQ(log("15_DAT.TXT"), expected);
    EXPECT_TRUE(dialogs::transcript().empty());
}

TEST_F(Logs, LastMonthsFileIsReplacedAndWeekdayFilesRemoved)
{
    QDir().mkpath(QString::fromStdString(t.root() + "/LOGS"));
    TempInstall::writefile(t.root() + "/LOGS/15_LOG.TXT", "\r\n15/10/2026\r\nProgram Started : 0700 151026\r\nold\r\n");
    // The data log still carries today's date, but follows the program's log.
    TempInstall::writefile(t.root() + "/LOGS/15_DAT.TXT", "15/11/2026\r\nkept?\r\n");
    TempInstall::writefile(t.root() + "/LOGS/SUN_LOG.TXT", "x");
    TempInstall::writefile(t.root() + "/LOGS/SUN_DAT.TXT", "x");
    TempInstall::writefile(t.root() + "/LOGS/MON_LOG.TXT", "x");
    platform::clock::set(QDateTime(QDate(2026, 11, 15), QTime(9, 0, 0)));  // a Sunday
    checklogfiles();
    EXPECT_EQ(log("15_LOG.TXT"), "15/11/2026\r\nProgram Started : 0900 151126\r\n");
    EXPECT_EQ(log("15_DAT.TXT"), "15/11/2026\r\nProgram Started : 0900 151126\r\n");
    EXPECT_FALSE(QFile::exists(QString::fromStdString(t.root() + "/LOGS/SUN_LOG.TXT")));
    EXPECT_FALSE(QFile::exists(QString::fromStdString(t.root() + "/LOGS/SUN_DAT.TXT")));
    EXPECT_TRUE(QFile::exists(QString::fromStdString(t.root() + "/LOGS/MON_LOG.TXT")));  // only today's weekday
}

TEST_F(Logs, LinesAfterMidnightGoToTheNextDaysFileWithoutADateLine)
{
    platform::clock::set(QDateTime(QDate(2026, 11, 15), QTime(23, 59, 59)));
    checklogfiles();
    platform::clock::set(QDateTime(QDate(2026, 11, 16), QTime(0, 0, 5)));
    addtodatfile("0010012345");
    EXPECT_EQ(log("16_DAT.TXT"), "0010012345\r\n");
}

TEST_F(Logs, FailingWritesCostAMessageBoxEach)
{
    platform::clock::set(QDateTime(QDate(2026, 11, 15), QTime(9, 0, 0)));
    addtologfile("no LOGS folder yet");
    addtodatfile("no LOGS folder yet");
    ASSERT_EQ(dialogs::transcript().size(), 2u);
    EXPECT_EQ(dialogs::transcript()[0].title, "Error Writing Log");
    EXPECT_EQ(dialogs::transcript()[0].text, "An error occured attempting to write to today's log file!");
    EXPECT_EQ(dialogs::transcript()[0].flags, vbExclamation);
    EXPECT_EQ(dialogs::transcript()[1].text, "An error occured attempting to write to today's data log!");

    files::inject::failwriteafter(0);
    checklogfiles();
    ASSERT_EQ(dialogs::transcript().size(), 3u);
    EXPECT_EQ(dialogs::transcript()[2].title, "Error Checking Log");
    EXPECT_EQ(dialogs::transcript()[2].text, "An error occured attempting to check today's log and data files!");
}

}  // namespace
