// The driver installation screen: the installer of each scanner type when the drivers are
// unpacked, the package when they are not, the package fetched from the update web host
// when it is missing too, and the way back.
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>
#include <QTimer>
#include <gtest/gtest.h>

#include "core/globals.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "settings/form2.h"
#include "support/form23.h"
#include "support/tempinstall.h"
#include "support/webhost.h"

namespace {

const std::string cannotrun = "Error Downloading Drivers: An Error Occurured While Attempting To Run The Driver "
                              "Updates. Please Contact Support! (Err:5 Desc: Invalid procedure call or argument)";

class DriverScreen : public ::testing::Test {
protected:
    void SetUp() override
    {
        resetglobals();
        g().homedir = platform::installfolder;
        dialogs::reset();
        dialogs::setunattended(true);
        dialogs::cleartranscript();
        form23().hide();
        form2().hide();
    }
    void TearDown() override
    {
        host.stop();
        form23().hide();
        form2().hide();
    }

    // A program at a Windows path that leaves `marker` in the install folder when it runs.
    void program(const std::string& winpath, const std::string& marker)
    {
        const std::string host = install.host(winpath);
        QDir().mkpath(QFileInfo(QString::fromStdString(host)).path());
        TempInstall::writefile(host, "#!/bin/sh\necho ran > '" + install.root() + "/" + marker + "'\n");
        QFile::setPermissions(QString::fromStdString(host), QFile::permissions(QString::fromStdString(host)) |
                                                                QFileDevice::ExeOwner);
    }
    // Whether the program that leaves `marker` ran (it runs on its own: wait a while).
    bool ran(const std::string& marker) const
    {
        const QString path = QString::fromStdString(install.root() + "/" + marker);
        QElapsedTimer t;
        t.start();
        while (!QFile::exists(path) && t.elapsed() < 5000) QThread::msleep(20);
        return QFile::exists(path);
    }
    void drivers() { QDir().mkpath(QString::fromStdString(install.drivec() + "/Vexal BC Drivers")); }

    // The update web host, serving `package` as the driver package.
    void webhost(const std::string& package)
    {
        host.put("support/Tagstore/support/VexalBCDrivers.exe", package);
        ASSERT_TRUE(host.start()) << host.error();
        install.configure("[web]\nupdate=" + host.base() + "\n");
    }

    static std::vector<std::string> boxes()
    {
        std::vector<std::string> out;
        for (const auto& e : dialogs::transcript()) out.push_back(e.title + ": " + e.text);
        return out;
    }

    TempInstall install;
    WebHost host;
};

TEST_F(DriverScreen, EachTypeRunsItsInstallerWhenTheDriversAreUnpacked)
{
    drivers();
    program("C:\\Vexal BC Drivers\\USB Drivers Installer.exe", "usb");
    program("C:\\Vexal BC Drivers\\CS1504-002\\PL-2303 Driver Installer.exe", "pl2303");
    const char* texts[] = {
        "",
        "Please Allow The Installation Program To Complete, And Then You May Connect The Scanner Cradle To A Spare "
        "USB Port.",
        "Please Allow The Installation Program To Complete, And Then You May Connect An Opticon OPN 2001 Scanner To A "
        "Spare USB Port.",
        "Please Allow The Installation Program To Complete, And Then You May Connect An Symbol CS 1504 Scanner To A "
        "Spare USB Port. If Prompted For A Driver Location Please Browse To 'C:\\Vexal BC Drivers\\CS1504-001'"};
    for (int index = 1; index <= 3; ++index) {
        dialogs::cleartranscript();
        emit form23().HelpLabel[index].clicked();
        EXPECT_EQ(boxes(), std::vector<std::string>{std::string("Running Installation Software: ") + texts[index]});
    }
    EXPECT_TRUE(ran("usb"));
    EXPECT_TRUE(ran("pl2303"));
    EXPECT_FALSE(files::exists(g().homedir + "DRIVERS"));
}

TEST_F(DriverScreen, AnInstallerThatCannotStartIsReportedBeforeAnyScannerIsConnected)
{
    drivers();
    const std::string head = "Error Installing Drivers: An Error Occurured While Attempting To Setup The Drivers. Please "
                             "Contact Support BEFORE Connecting Any Scanners! (Err:";
    form23().helptype(3);
    form23().helptype(2);
    TempInstall::writefile(install.drivec() + "/Vexal BC Drivers/USB Drivers Installer.exe", "MZ");
    emit form23().HelpIcon[1].clicked();
    EXPECT_EQ(boxes(), (std::vector<std::string>{head + "76 Desc: Path not found)", head + "53 Desc: File not found)",
                                                 head + "5 Desc: Invalid procedure call or argument)"}));
    for (const auto& e : dialogs::transcript()) EXPECT_EQ(e.flags, vbExclamation);
}

TEST_F(DriverScreen, ThePackageRunsWhenTheDriversWereNeverUnpacked)
{
    program("C:\\Program Files\\VexalBCv4\\DRIVERS\\VexalBCDrivers.exe", "package");
    const std::string question = "No Drivers Directory: The Vexal Barcode Driver Directory Does Not Exist! Would You "
                                 "Like To Run The Install Program Now?";
    dialogs::queueanswer(vbNo);
    form23().helptype(2);
    EXPECT_EQ(boxes(), std::vector<std::string>{question});
    EXPECT_EQ(dialogs::transcript()[0].flags, vbYesNo + vbQuestion);
    dialogs::queueanswer(vbYes);
    form23().helptype(2);
    EXPECT_TRUE(ran("package"));
    EXPECT_EQ(boxes().size(), 2u) << "no message after the package started";

    TempInstall::writefile(install.root() + "/DRIVERS/VexalBCDrivers.exe", "MZ not a program here");
    QFile::setPermissions(QString::fromStdString(install.root() + "/DRIVERS/VexalBCDrivers.exe"), QFileDevice::ReadOwner);
    dialogs::queueanswer(vbYes);
    form23().helptype(1);
    EXPECT_EQ(boxes().back(), cannotrun);
}

TEST_F(DriverScreen, WithNothingOnThePcThePackageIsFetchedFromTheUpdateHost)
{
    webhost("MZ driver package");
    const std::string question =
        "No Drivers Directory Or File: The Vexal Driver Directory Does Not Exist, And No Driver Install Program "
        "Exists! Would You Like To Attempt To Download And Then Run The Driver File? (NB: This Can Also Be Found On "
        "The Vexal Utility CD)";
    dialogs::queueanswer(vbNo);
    form23().helptype(3);
    EXPECT_EQ(boxes(), std::vector<std::string>{question});
    EXPECT_FALSE(files::exists(g().homedir + "DRIVERS"));

    // While the package is on its way the entries are off and the screen cannot close.
    Form23& f = form23();
    f.show();
    bool busy = false, entries = true, closed = true;
    QTimer::singleShot(0, [&] {
        busy = f.installing;
        entries = f.HelpLabel[2].isEnabled() || f.HelpIcon[2].isEnabled();
        f.close();
        closed = f.isHidden();
    });
    dialogs::queueanswer(vbYes);
    f.helptype(3);
    EXPECT_TRUE(busy);
    EXPECT_FALSE(entries);
    EXPECT_FALSE(closed);
    EXPECT_FALSE(f.installing);
    EXPECT_TRUE(f.HelpLabel[2].isEnabled());
    EXPECT_EQ(TempInstall::readfile(install.root() + "/DRIVERS/VexalBCDrivers.exe"), "MZ driver package");
    EXPECT_EQ(TempInstall::readfile(install.root() + "/WebUpdate.exe"), "MZ driver package");
    // A fetched program is a Windows program: this PC cannot start it, and says so.
    EXPECT_EQ(boxes().back(), cannotrun);
}

TEST_F(DriverScreen, AFetchThatFailsIsReportedAndAnOldDownloadIsNotTakenForThePackage)
{
    TempInstall::writefile(install.root() + "/WebUpdate.exe", "an older download of something else");
    dialogs::queueanswer(vbYes);
    form23().helptype(1);
    EXPECT_EQ(boxes().back(),
              "Error Downloading Drivers: An Error Occurured While Attempting To Download The Driver Updates. Please "
              "Contact Support! (Err:53 Desc: File not found)");
    EXPECT_EQ(dialogs::transcript().back().flags, vbExclamation);
    EXPECT_TRUE(files::isfolder(g().homedir + "DRIVERS"));
    EXPECT_FALSE(files::exists(g().homedir + "DRIVERS\\VexalBCDrivers.exe"));
    EXPECT_FALSE(form23().installing);
    EXPECT_TRUE(form23().HelpIcon[1].isEnabled());
}

TEST_F(DriverScreen, CancelGoesBackToWhoeverOpenedTheScreen)
{
    Form23& f = form23();
    int tohelp = 0;
    auto c = QObject::connect(&f, &Form23::backtohelp, [&] { ++tohelp; });
    g().callerof[23] = 2;
    f.show();
    emit f.Cancel.clicked();
    EXPECT_TRUE(f.isHidden());
    EXPECT_EQ(tohelp, 1);
    EXPECT_TRUE(form2().isHidden());

    g().callerof[23] = 1;
    f.show();
    f.close();
    EXPECT_TRUE(f.isHidden());
    EXPECT_FALSE(form2().isHidden());
    EXPECT_EQ(tohelp, 1);
    QObject::disconnect(c);
}

}  // namespace
