#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>

#include "platform/shell.h"
#include "runtime/fault.h"
#include "support/tempinstall.h"

namespace {

std::string waitforfile(const std::string& path)
{
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < 5000) {
        std::string s = TempInstall::readfile(path);
        if (!s.empty() && s.back() == '\n') return s;
        QThread::msleep(20);
    }
    return TempInstall::readfile(path);
}

TEST(Shell, WinExecStartsAProgramByItsWindowsPath)
{
    TempInstall t;
    QDir(QString::fromStdString(t.drivec())).mkpath("My Tools");
    std::string script = t.drivec() + "/My Tools/Record.sh";
    TempInstall::writefile(script, "#!/bin/sh\necho \"$# $*\" > \"$(dirname \"$0\")/out.txt\"\n");
    QFile::setPermissions(QString::fromStdString(script), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    EXPECT_GT(WinExec("\"c:\\my tools\\record.sh\" Internal \"two words\"", SW_SHOWNORMAL), 31);
    EXPECT_EQ(waitforfile(t.drivec() + "/My Tools/out.txt"), "2 Internal two words\n");

    EXPECT_EQ(WinExec("c:\\my tools\\nothing.exe", SW_SHOWNORMAL), 2);
    EXPECT_EQ(WinExec("c:\\nowhere\\nothing.exe Internal", SW_SHOWNORMAL), 3);
}

TEST(Shell, OpenHandsFilesAndAddressesToXdgOpenAsOneArgument)
{
    TempInstall t;
    QTemporaryDir bin;
    const std::string out = t.root() + "/opened.txt";
    const std::string opener = bin.path().toStdString() + "/xdg-open";
    TempInstall::writefile(opener, "#!/bin/sh\necho \"$# $1\" >> '" + out + "'\n");
    QFile::setPermissions(QString::fromStdString(opener), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", bin.path().toLocal8Bit() + ":" + path);
    TempInstall::writefile(t.root() + "/Manual.pdf", "%PDF");

    EXPECT_GT(ShellExecuteA(nullptr, "open", "C:\\Program Files\\VexalBCv4\\manual.PDF", "", "", SW_SHOWNORMAL), 32);
    EXPECT_EQ(waitforfile(out), "1 " + t.root() + "/Manual.pdf\n");
    QFile::remove(QString::fromStdString(out));
    EXPECT_GT(ShellExecuteA(nullptr, "open", "http://127.0.0.1/support/Scanner%20Log%20Off.pdf; rm -rf x", "", "", 1), 32);
    EXPECT_EQ(waitforfile(out), "1 http://127.0.0.1/support/Scanner%20Log%20Off.pdf; rm -rf x\n") << "no shell between";
    EXPECT_EQ(ShellExecuteA(nullptr, "open", "C:\\Program Files\\VexalBCv4\\Missing.pdf", "", "", 1), 2);
    EXPECT_EQ(ShellExecuteA(nullptr, "open", "C:\\Nowhere\\Missing.pdf", "", "", 1), 3);

    qputenv("PATH", "/nonexistent");
    EXPECT_EQ(ShellExecuteA(nullptr, "open", "C:\\Program Files\\VexalBCv4\\manual.PDF", "", "", 1), 31);
    qputenv("PATH", path);
}

TEST(Shell, AFetchedFileIsMadeAProgram)
{
    TempInstall t;
    TempInstall::writefile(t.root() + "/Fetched.exe", "#!/bin/sh\n");
    QFile::setPermissions(QString::fromStdString(t.root() + "/Fetched.exe"), QFile::ReadOwner | QFile::WriteOwner);
    EXPECT_EQ(WinExec("\"C:\\Program Files\\VexalBCv4\\Fetched.exe\"", 1), 11);
    shell::makeprogram("C:\\Program Files\\VexalBCv4\\fetched.exe");
    EXPECT_TRUE(QFileInfo(QString::fromStdString(t.root() + "/Fetched.exe")).isExecutable());
    EXPECT_GT(WinExec("\"C:\\Program Files\\VexalBCv4\\Fetched.exe\"", 1), 31);
    for (const char* missing : {"C:\\Program Files\\VexalBCv4\\Nothing.exe", "C:\\Program Files\\VexalBCv4"}) {
        try {
            shell::makeprogram(missing);
            ADD_FAILURE() << missing;
        } catch (const Fault& f) {
            EXPECT_EQ(f.number, 53) << missing;
        }
    }
}

TEST(Shell, StartupEntryInTheAutostartFolder)
{
    QTemporaryDir config;
    QByteArray saved = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", config.path().toLocal8Bit());
    TempInstall t;

    EXPECT_EQ(shell::startupfolder(), config.path().toStdString() + "/autostart");
    EXPECT_FALSE(shell::startupentryexists("Vexal Tag"));
    ASSERT_TRUE(shell::createstartupentry("Vexal Tag", "C:\\Program Files\\VexalBCv4\\VexalBCv4.0.exe", "startup"));
    EXPECT_TRUE(shell::startupentryexists("Vexal Tag"));
    std::string entry = TempInstall::readfile(config.path().toStdString() + "/autostart/Vexal Tag.desktop");
    EXPECT_NE(entry.find("[Desktop Entry]\n"), std::string::npos);
    EXPECT_NE(entry.find("\nExec=\"" + t.root() + "/VexalBCv4.0.exe\" \"startup\"\n"), std::string::npos) << entry;
    // Creating again replaces the entry.
    ASSERT_TRUE(shell::createstartupentry("Vexal Tag", "/opt/vexal/vexalbc", "startup"));
    EXPECT_NE(TempInstall::readfile(config.path().toStdString() + "/autostart/Vexal Tag.desktop")
                  .find("Exec=\"/opt/vexal/vexalbc\" \"startup\""),
              std::string::npos);

    EXPECT_TRUE(shell::removestartupentry("Vexal Tag"));
    EXPECT_FALSE(shell::startupentryexists("Vexal Tag"));
    EXPECT_FALSE(shell::removestartupentry("Vexal Tag"));

    if (saved.isNull()) qunsetenv("XDG_CONFIG_HOME");
    else qputenv("XDG_CONFIG_HOME", saved);
}

}  // namespace

