// The help menu: the way in from the main and setup screens and the way back, each entry,
// and the tools behind them (the desktop's opener, the start-up entry, the web updater
// and the support viewer), with the web host and the opener that this PC really has.
#include "support/testdirs.h"
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>

#include "core/exit.h"
#include "core/globals.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/shell.h"
#include "recovery/form26.h"
#include "settings/form17.h"
#include "settings/form2.h"
#include "settings/form3.h"
#include "support/form18.h"
#include "support/form21.h"
#include "support/form23.h"
#include "support/helptools.h"
#include "support/tempinstall.h"
#include "support/webhost.h"

namespace {

// Sets an environment variable for the life of the object.
class Env {
public:
    Env(const char* name, const QByteArray& value) : name_(name), saved_(qgetenv(name)) { qputenv(name, value); }
    ~Env()
    {
        if (saved_.isNull()) qunsetenv(name_);
        else qputenv(name_, saved_);
    }

private:
    const char* name_;
    QByteArray saved_;
};

bool waitfor(const QString& path)
{
    QElapsedTimer t;
    t.start();
    while (!QFile::exists(path) && t.elapsed() < 5000) QThread::msleep(20);
    QThread::msleep(50);
    return QFile::exists(path);
}

void allscreenshidden()
{
    for (QWidget* w : std::initializer_list<QWidget*>{&form18(), &form1(), &form2(), &form3(), &form17(), &form21(),
                                                      &form23(), &form26()})
        w->hide();
}

}  // namespace

class HelpMenu : public ::testing::Test {
protected:
    void SetUp() override
    {
        resetglobals();
        g().homedir = platform::installfolder;
        dialogs::reset();
        dialogs::setunattended(true);
        dialogs::cleartranscript();
        allscreenshidden();
        // The desktop's opener: a program on PATH that notes its arguments.
        QDir().mkpath(bin.path());
        writeprogram(bin.path().toStdString() + "/xdg-open",
                     "#!/bin/sh\nfor a in \"$@\"; do printf '%s\\n' \"$a\"; done > '" + opened() + ".part'\nmv '" +
                         opened() + ".part' '" + opened() + "'\n");
    }
    void TearDown() override
    {
        host.stop();
        allscreenshidden();
        setprocessend(nullptr);
    }

    static void writeprogram(const std::string& hostpath, const std::string& text)
    {
        QDir().mkpath(QFileInfo(QString::fromStdString(hostpath)).path());
        TempInstall::writefile(hostpath, text);
        QFile::setPermissions(QString::fromStdString(hostpath),
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    }
    std::string opened() const { return install.root() + "/opened.txt"; }
    // What the opener was given, one argument a line ("" when it did not run).
    std::string openedwith() const
    {
        return waitfor(QString::fromStdString(opened())) ? TempInstall::readfile(opened()) : "";
    }
    // The web hosts, serving `files` (path, bytes); a shell script served as a program
    // leaves `marker` with its arguments in the install folder when it runs.
    void webhosts(const std::vector<std::pair<std::string, std::string>>& files)
    {
        for (const auto& [path, bytes] : files) host.put(path, bytes);
        ASSERT_TRUE(host.start()) << host.error();
        install.configure("[web]\nupdate=" + host.base() + "\nsupport=" + host.base() + "\n");
    }
    std::string script(const std::string& marker) const
    {
        return "#!/bin/sh\necho \"$*\" > '" + install.root() + "/" + marker + "'\n";
    }
    std::string lastbox() const
    {
        const auto& t = dialogs::transcript();
        return t.empty() ? "" : t.back().title + ": " + t.back().text;
    }

    TempInstall install;
    QTemporaryDir bin;
    Env path{"PATH", (bin.path() + ":" + qgetenv("PATH")).toLocal8Bit()};
    WebHost host;
};

TEST_F(HelpMenu, OpenedFromTheMainAndSetupScreensAndBackByHelpreturn)
{
    Form18& menu = form18();
    form1().show();
    emit form1().HelpLabel.clicked();
    EXPECT_TRUE(menu.isVisible());
    EXPECT_TRUE(form1().isHidden());
    EXPECT_EQ(helpreturn(), 1);
    g().pressedop = 1;   // a tool screen opened from the menu
    emit menu.Label4.clicked();
    EXPECT_TRUE(menu.isHidden());
    EXPECT_TRUE(form1().isVisible());
    EXPECT_EQ(g().pressedop, 0);

    form1().hide();
    form2().show();
    emit form2().Help[0].clicked();
    EXPECT_TRUE(form2().isHidden());
    EXPECT_EQ(helpreturn(), 2);
    menu.close();
    EXPECT_TRUE(menu.isHidden());
    EXPECT_TRUE(form2().isVisible());
    EXPECT_TRUE(form1().isHidden());
}

TEST_F(HelpMenu, TheMainScreensHelpAsksFirstWhileAnOperationRuns)
{
    form1().show();
    g().runmode = 1;
    dialogs::queueanswer(vbYes);
    emit form1().Help.clicked();
    EXPECT_EQ(dialogs::transcript().back().title, "Confirm Transfer Status");
    EXPECT_TRUE(form18().isHidden());
    EXPECT_EQ(g().runmode, 1);
    dialogs::queueanswer(vbNo);
    emit form1().Help.clicked();
    EXPECT_TRUE(form18().isVisible());
    EXPECT_EQ(g().runmode, 0);
}

TEST_F(HelpMenu, ScreenEntriesHideTheMenuAndComeBackToIt)
{
    Form18& menu = form18();
    helpreturn() = 2;
    const struct {
        int index;
        QWidget* screen;
        int caller;   // the callerof slot the entry sets, and to what
        int value;
        std::function<void()> back;
    } table[] = {
        {0, &form26(), 0, 0, [] { form26().leave(); }},
        {2, &form17(), 17, 2, [] { form17().closescreen(); }},
        {5, &form3(), 3, 18, [] { form3().updatedata(); }},
        {8, &form23(), 23, 2, [] { form23().cancel(); }},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.index);
        allscreenshidden();
        menu.show();
        emit menu.HelpLabel[row.index].clicked();
        EXPECT_TRUE(menu.isHidden());
        EXPECT_TRUE(row.screen->isVisible());
        if (row.caller) {
            EXPECT_EQ(g().callerof[row.caller], row.value);
        }
        row.back();
        EXPECT_TRUE(row.screen->isHidden());
        // The status screen goes back by helpreturn itself; the others come to the menu.
        EXPECT_EQ(menu.isVisible(), row.index != 2);
        EXPECT_EQ(form2().isVisible(), row.index == 2);
    }
    EXPECT_EQ(form26().List2.list(0), "please select day") << "the data log screen was set up";
}

TEST_F(HelpMenu, TheManualGoesToTheDesktopsOpener)
{
    Form18& menu = form18();
    helpreturn() = 1;
    menu.show();
    menu.helptype(1);
    EXPECT_EQ(lastbox(), "No Help File Found: Unable to locate the help PDF in the system folder! Please contact "
                         "support or use the Vexal Utility CD!");
    EXPECT_TRUE(menu.isVisible());

    TempInstall::writefile(install.root() + "/FS49.pdf", "%PDF-1.4");
    emit menu.HelpIcon[1].clicked();
    EXPECT_TRUE(menu.isHidden());
    EXPECT_TRUE(form1().isVisible());
    EXPECT_EQ(openedwith(), install.root() + "/FS49.pdf\n") << "one argument, the file itself";
}

TEST_F(HelpMenu, TheScanOffSheetFromThePcOrTheWeb)
{
    webhosts({});
    Form18& menu = form18();
    menu.show();
    dialogs::queueanswer(vbNo);
    menu.helptype(3);
    EXPECT_EQ(lastbox(), "Open File From Web: The PDF containing the General Scan Off Barcodes was not found of this "
                         "PC. Would you like to open it from the web instead?");
    EXPECT_EQ(dialogs::transcript().back().flags, vbYesNo + vbQuestion);
    EXPECT_FALSE(waitfor(QString::fromStdString(opened())));

    dialogs::queueanswer(vbYes);
    menu.helptype(3);
    EXPECT_EQ(openedwith(), host.base() + "/support/Tagstore/support/Scanner%20Log%20Off.pdf\n");
    QFile::remove(QString::fromStdString(opened()));

    QDir().mkpath(QString::fromStdString(install.root() + "/BARCODES"));
    TempInstall::writefile(install.root() + "/BARCODES/Scanner Log Off.pdf", "%PDF-1.4");
    menu.helptype(3);
    EXPECT_EQ(openedwith(), install.root() + "/BARCODES/Scanner Log Off.pdf\n");
    EXPECT_TRUE(menu.isVisible()) << "the menu stays";
}

TEST_F(HelpMenu, NoOpenerOnThePcIsSaidPlainly)
{
    Env nopath("PATH", QByteArray("/nonexistent"));
    TempInstall::writefile(install.root() + "/FS49.pdf", "%PDF-1.4");
    helpreturn() = 1;
    form18().helptype(1);
    EXPECT_EQ(lastbox(), "Unable To Open File: There is no program on this PC to open '" + g().homedir +
                             "FS49.pdf' (xdg-open is missing or could not start)!");
    form18().show();
    dialogs::queueanswer(vbYes);
    form18().helptype(3);
    EXPECT_EQ(lastbox(), "Unable To Open File: No address is set for the support web site on this PC ([web] support "
                         "in platform.ini)!");
}

TEST_F(HelpMenu, TheStartupEntryStartsThisProgramInTheTrayAtLogIn)
{
    QTemporaryDir config, data;
    Env c("XDG_CONFIG_HOME", config.path().toLocal8Bit()), d("XDG_DATA_HOME", data.path().toLocal8Bit());
    QDir().mkpath(QString::fromStdString(install.root() + "/icons"));
    QFile::copy(QString(VEXAL_SOURCE_DIR) + "/resources/icons/vexalauto4.ico",
                QString::fromStdString(install.root() + "/icons/vexalauto4.ico"));
    for (int time = 0; time < 2; ++time) {   // a second time replaces the entry
        emit form18().HelpLabel[6].clicked();
        EXPECT_EQ(lastbox(), "Startup Icon Created: Shortcut added to the startup folder!");
        EXPECT_EQ(dialogs::transcript().back().flags, vbInformation);
    }
    const QString entry = config.path() + "/autostart/Vexal Tag.desktop";
    const QString icon = data.path() + "/vexalbc/icons/vexalauto4.png";
    EXPECT_EQ(TempInstall::readfile(entry.toStdString()),
              "[Desktop Entry]\nType=Application\nName=Vexal Tag\nExec=\"" +
                  QCoreApplication::applicationFilePath().toStdString() + "\" \"startup\"\nTerminal=false\nIcon=" +
                  icon.toStdString() + "\nX-GNOME-Autostart-enabled=true\n");
    EXPECT_FALSE(QImage(icon).isNull());
    EXPECT_EQ(QDir(config.path() + "/autostart").entryList(QDir::Files).size(), 1);

    QProcess validate;
    validate.start("desktop-file-validate", {entry});
    ASSERT_TRUE(validate.waitForFinished(10000)) << "desktop-file-validate (desktop-file-utils) is needed";
    EXPECT_EQ(validate.exitCode(), 0) << validate.readAllStandardOutput().toStdString();
    EXPECT_EQ(validate.readAllStandardOutput().toStdString(), "");

    // An autostart folder that cannot be made is reported, not claimed.
    TempInstall::writefile(data.path().toStdString() + "/file", "");
    Env bad("XDG_CONFIG_HOME", (data.path() + "/file").toLocal8Bit());
    form18().helptype(6);
    EXPECT_EQ(lastbox(), "Error While Saving Data: An unexpected error had occured within section 6 of the help "
                         "system! Error : 75 Path/File access error");
}

TEST_F(HelpMenu, TheWebUpdaterIsFetchedStartedAndThisProgramEnds)
{
    int ended = 0;
    setprocessend([&] { ++ended; });
    g().savetype = 2;
    dialogs::queueanswer(vbNo);
    form18().helptype(7);
    EXPECT_EQ(lastbox(), "Start Web Update Program?: This will update the web updater, end the current program and "
                         "open the web updater program! Do you wish to proceed?");
    EXPECT_EQ(g().savetype, 2);

    // No web host and no updater on the PC: nothing to start, and the program goes on.
    dialogs::queueanswer(vbYes);
    form18().helptype(7);
    EXPECT_EQ(lastbox(), "Error While Saving Data: An unexpected error had occured within section 7 of the help "
                         "system! Error : 53 File not found");
    EXPECT_EQ(ended, 0);
    EXPECT_EQ(g().savetype, 2);

    webhosts({{"support/Tagstore/WebUpdater.exe", script("updater")}});
    dialogs::queueanswer(vbYes);
    form18().helptype(7);
    EXPECT_TRUE(waitfor(QString::fromStdString(install.root() + "/updater")));
    EXPECT_EQ(TempInstall::readfile(install.root() + "/updater"), "Internal\n");
    EXPECT_EQ(TempInstall::readfile(install.root() + "/WebUpdate.exe"), script("updater"));
    EXPECT_EQ(g().savetype, 0);
    EXPECT_EQ(ended, 1);
}

TEST_F(HelpMenu, TheSupportViewerFromTheMenuAndTheMainScreen)
{
    const std::string cannot = "Unable To Run PC Support Client: Support viewer program could not be downloaded / run. "
                               "Please advise support so that they can run the software manually.";
    form18().helptype(9);
    EXPECT_EQ(lastbox(), cannot) << "no web host";
    EXPECT_TRUE(files::isfolder(g().homedir + "Support"));

    webhosts({{"support/misc/vexal_viewer.exe", script("viewer")}});
    emit form1().Support.clicked();
    EXPECT_TRUE(waitfor(QString::fromStdString(install.root() + "/viewer")));
    EXPECT_EQ(dialogs::transcript().size(), 1u);

    // A fetched file that is no program for this PC.
    host.put("support/misc/vexal_viewer.exe", "MZ a Windows program");
    form18().helptype(9);
    EXPECT_EQ(lastbox(), cannot);
}
