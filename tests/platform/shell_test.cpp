#include <QDesktopServices>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <QUrl>
#include <gtest/gtest.h>

#include "platform/shell.h"
#include "support/tempinstall.h"

namespace {

// Catches what would go to the desktop's "open".
class Opened : public QObject {
    Q_OBJECT
public:
    std::vector<QUrl> urls;
public slots:
    void open(const QUrl& url) { urls.push_back(url); }
};

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

TEST(Shell, OpenHandsFilesAndAddressesToTheDesktop)
{
    TempInstall t;
    Opened opened;
    QDesktopServices::setUrlHandler("file", &opened, "open");
    QDesktopServices::setUrlHandler("http", &opened, "open");
    TempInstall::writefile(t.root() + "/Manual.pdf", "%PDF");

    EXPECT_GT(ShellExecuteA(nullptr, "open", "C:\\Program Files\\VexalBCv4\\manual.PDF", "", "", SW_SHOWNORMAL), 32);
    EXPECT_GT(ShellExecuteA(nullptr, "open", "http://127.0.0.1/support/Scanner%20Log%20Off.pdf", "", "", 1), 32);
    EXPECT_EQ(ShellExecuteA(nullptr, "open", "C:\\Program Files\\VexalBCv4\\Missing.pdf", "", "", 1), 2);
    QDesktopServices::unsetUrlHandler("file");
    QDesktopServices::unsetUrlHandler("http");

    ASSERT_EQ(opened.urls.size(), 2u);
    EXPECT_EQ(opened.urls[0], QUrl::fromLocalFile(QString::fromStdString(t.root() + "/Manual.pdf")));
    EXPECT_EQ(opened.urls[1].path(), "/support/Scanner Log Off.pdf");
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

#include "shell_test.moc"
