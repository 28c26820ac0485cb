// The update check of the splash screen against a real web host on loopback: the reminder
// and its wording by age (clock set through the clock interface), the countdown of NAG, the
// quiet failures (no host, a 404, a silent host, a bcver without "#"), a date that is not
// one, the Yes path that fetches and starts the web updater, and the faults.
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLocale>
#include <QTcpServer>
#include <QThread>
#include <gtest/gtest.h>

#include "core/exit.h"
#include "core/globals.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "runtime/fault.h"
#include "support/frmsplash.h"
#include "support/issuedate.h"
#include "support/tempinstall.h"
#include "support/webhost.h"

namespace {

const char* bcverpath = "support/Tagstore/support/bcver";

class UpdateCheck : public ::testing::Test {
protected:
    void SetUp() override
    {
        resetglobals();
        g().homedir = platform::installfolder;
        g().savetype = 1;
        files::makefolder(g().homedir + "LOGS");
        files::makefolder(g().homedir + "OS");
        settings("NAG=0#");
        dialogs::reset();
        dialogs::setunattended(true);
        dialogs::cleartranscript();
        setprocessend([this] { ++ended; });
        platform::clock::set(QDateTime(QDate(2011, 6, 1), QTime(9, 0)));
    }
    void TearDown() override
    {
        frmsplash().Timer1.stop();
        setprocessend(nullptr);
        platform::clock::reset();
    }
    // TAGSTORE.INI with `update` as the lines of its UPDATE section.
    void settings(const std::string& update)
    {
        files::writeall(g().homedir + "TAGSTORE.INI", "[SAVE]\r\nTYPE=1\r\n[UPDATE]\r\n" + update + "\r\n");
    }
    std::string nag() const
    {
        const std::string ini = TempInstall::readfile(install.host(g().homedir + "TAGSTORE.INI"));
        const size_t at = ini.find("NAG=");
        return at == std::string::npos ? "<none>" : ini.substr(at + 4, ini.find('\r', at) - at - 4);
    }
    // Serves `bcver` and points the update host at it.
    void serve(const std::string& bcver)
    {
        web.put(bcverpath, bcver);
        if (!web.running()) {
            ASSERT_TRUE(web.start()) << web.error();
        }
        install.configure("[web]\nupdate=" + web.base() + "\n");
    }
    // Runs the load; true when it ended the process.
    bool load()
    {
        try {
            frmsplash().load();
        } catch (const Fault& f) {
            if (f.number == 0) return true;
            throw;
        }
        return false;
    }
    static std::string shortdate(const QDate& d)
    {
        return QLocale::system().toString(d, QLocale::ShortFormat).toStdString();
    }
    bool timerrunning() const { return frmsplash().Timer1.isActive() && frmsplash().Timer1.interval() == 1000; }

    TempInstall install;
    WebHost web;
    int ended = 0;
};

TEST_F(UpdateCheck, ReminderByAge)
{
    const QDate issued(2011, 5, 2);
    const std::string head =
        "There is a new issue of the tagstore interface program available, issued " + shortdate(issued) + ". ";
    const struct {
        int age;
        const char* title;
        std::string text;
    } rows[] = {
        {29, "Update Program", head + "Would you like to download this from the web? (NB: You have 1 day left before you "
                                      "MUST load this update!)"},
        {30, "Update Program", head + "Would you like to download this from the web? (NB: You have 0 days left before "
                                      "you MUST load this update!)"},
        {-3, "Update Program", head + "Would you like to download this from the web? (NB: You have 33 days left before "
                                      "you MUST load this update!)"},
        {31, "Update Of Program Required",
         head + "This MUST now be updated before the software can be used again! "},
    };
    serve("02052011#anything after the mark\r\nsecond line\r\n");
    for (const auto& r : rows) {
        SCOPED_TRACE(r.age);
        settings("NAG=0#");
        dialogs::cleartranscript();
        platform::clock::set(QDateTime(issued.addDays(r.age), QTime(9, 0)));
        dialogs::queueanswer(r.age > 30 ? vbOK : vbNo);
        EXPECT_FALSE(load());
        ASSERT_EQ(dialogs::transcript().size(), 1u);
        const auto& box = dialogs::transcript()[0];
        EXPECT_EQ(box.title, r.title);
        EXPECT_EQ(box.text, r.text);
        EXPECT_EQ(box.flags, r.age > 30 ? vbOKCancel + vbCritical : vbYesNo + vbQuestion);
        EXPECT_EQ(nag(), "5#") << "a refusal, and the stronger message's OK, put it off for five starts";
        EXPECT_TRUE(timerrunning());
        EXPECT_EQ(ended, 0);
    }
    // An issue older than the program's own counts as new, with a large age.
    settings("NAG=3#");
    dialogs::cleartranscript();
    serve("01012010#\r\n");
    EXPECT_FALSE(load());
    ASSERT_EQ(dialogs::transcript().size(), 1u);
    EXPECT_EQ(dialogs::transcript()[0].title, "Update Of Program Required") << "whatever NAG says";

    // Cancel on it ends the program on the spot.
    dialogs::queueanswer(vbCancel);
    EXPECT_TRUE(load());
    EXPECT_EQ(ended, 1);
}

TEST_F(UpdateCheck, NagCountsDownAndTheMatchingIssueResetsIt)
{
    serve("22052011#\r\n");   // 10 days old
    settings("NAG=3#");
    load();
    EXPECT_EQ(nag(), "2#");
    EXPECT_TRUE(dialogs::transcript().empty());

    // A missing key is written as 0, before any fetch, and nothing holds the reminder back.
    settings("OTHER=1");
    web.stop();
    load();
    EXPECT_EQ(nag(), "0#");
    settings("OTHER=1");
    serve("22052011#\r\n");
    dialogs::queueanswer(vbNo);
    load();
    EXPECT_EQ(dialogs::transcript().size(), 1u);
    EXPECT_EQ(nag(), "5#");

    dialogs::cleartranscript();
    serve(std::string(programissue) + "#\r\n");
    settings("NAG=4#");
    load();
    EXPECT_EQ(nag(), "0#");
    EXPECT_TRUE(dialogs::transcript().empty());
    EXPECT_TRUE(timerrunning());
}

TEST_F(UpdateCheck, QuietFailuresLeaveStartUpGoing)
{
    QTcpServer silent;   // takes the connection and never answers
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    const std::string silentbase = "http://127.0.0.1:" + std::to_string(silent.serverPort());
    const struct {
        const char* legend;
        std::function<void()> arrange;
    } rows[] = {
        {"no update host set", [&] { install.configure(""); }},
        {"host unreachable", [&] { serve("01012010#"); web.stop(); }},
        {"404", [&] { serve("01012010#"); QFile::remove(QString::fromStdString(web.folder() + "/" + bcverpath)); }},
        {"silent host", [&] { install.configure("[web]\nupdate=" + silentbase + "\ntimeout=1\n"); }},
        {"bcver without #", [&] { serve("01012010\r\n"); }},
        {"empty bcver", [&] { serve(""); }},
    };
    for (const auto& r : rows) {
        SCOPED_TRACE(r.legend);
        files::writeall(g().homedir + "OS\\bcver", "old");
        settings("NAG=3#");
        r.arrange();
        QElapsedTimer t;
        t.start();
        EXPECT_FALSE(load());
        EXPECT_LT(t.elapsed(), 5000);
        EXPECT_TRUE(dialogs::transcript().empty());
        EXPECT_EQ(nag(), "3#");
        EXPECT_TRUE(timerrunning());
    }
}

TEST_F(UpdateCheck, DateThatIsNotADateGoesOnAsTheOldestIssue)
{
    serve("ab052011#\r\n");
    load();
    ASSERT_EQ(dialogs::transcript().size(), 1u);
    EXPECT_EQ(dialogs::transcript()[0].title, "Update Of Program Required");
    EXPECT_NE(dialogs::transcript()[0].text.find("issued " + shortdate(zerodate()) + "."), std::string::npos);
    EXPECT_EQ(nag(), "5#");
}

TEST_F(UpdateCheck, YesFetchesAndStartsTheWebUpdaterAndEnds)
{
    const std::string marker = install.root() + "/updater-ran.txt";
    // The updater in place from the install, and the new one on the host.
    const QString updater = QString::fromStdString(install.root() + "/WebUpdater.exe");
    TempInstall::writefile(updater.toStdString(), "#!/bin/sh\necho old \"$@\" > '" + marker + "'\n");
    QFile::setPermissions(updater, QFile::permissions(updater) | QFileDevice::ExeOwner);
    const std::string fresh = "#!/bin/sh\necho new \"$@\" > '" + marker + "'\n";
    web.put("support/Tagstore/WebUpdater.exe", fresh);
    serve("22052011#\r\n");
    dialogs::queueanswer(vbYes);
    EXPECT_TRUE(load());
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(g().savetype, 0);
    EXPECT_EQ(nag(), "0#");
    EXPECT_EQ(TempInstall::readfile(install.root() + "/WebUpdate.exe"), fresh);
    QElapsedTimer t;
    t.start();
    while (!QFile::exists(QString::fromStdString(marker)) && t.elapsed() < 5000) QThread::msleep(20);
    EXPECT_EQ(TempInstall::readfile(marker), "new Internal\n");
    EXPECT_FALSE(frmsplash().Timer1.isActive()) << "the splash does not go on";

    // With no settings file the program ends without starting the updater.
    QFile::remove(QString::fromStdString(marker));
    QFile::remove(QString::fromStdString(install.root() + "/TAGSTORE.INI"));
    dialogs::queueanswer(vbYes);
    EXPECT_TRUE(load());
    EXPECT_EQ(ended, 2);
    QThread::msleep(300);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(marker)));
}

TEST_F(UpdateCheck, FaultIsShownAndTheSplashStillEnds)
{
    settings("NAG=x#");
    load();
    ASSERT_EQ(dialogs::transcript().size(), 1u);
    const auto& box = dialogs::transcript()[0];
    EXPECT_EQ(box.title, "frmSplash: Load");
    EXPECT_EQ(box.text, "Unexpected Error Will Attempting To Start Up Program! Error : 13 Type mismatch at line 0");
    EXPECT_EQ(box.flags, vbExclamation);
    const std::string day = Format(platform::clock::now(), "DD");
    EXPECT_NE(TempInstall::readfile(install.host(g().homedir + "LOGS\\" + day + "_LOG.TXT"))
                  .find("frmSplash/Load: Unexpected error. Error : 13 Type mismatch"),
              std::string::npos);
    EXPECT_TRUE(timerrunning());
}

TEST(IssueDate, BuiltAsTheRuntimeBuildsDates)
{
    EXPECT_EQ(issuedate("21022011"), QDate(2011, 2, 21));
    EXPECT_EQ(issuedate("31022011"), QDate(2011, 3, 3));
    EXPECT_EQ(issuedate("00032011"), QDate(2011, 2, 28));
    EXPECT_EQ(issuedate("01132011"), QDate(2012, 1, 1));
    EXPECT_EQ(issuedate("01000011"), QDate(2010, 12, 1));
    for (const char* bad : {"ab022011", "", "0102"}) {
        SCOPED_TRACE(bad);
        EXPECT_THROW(issuedate(bad), Fault);
    }
}

}  // namespace
