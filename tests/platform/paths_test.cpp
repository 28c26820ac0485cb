#include <QDir>
#include <QFile>
#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>

#include "platform/files.h"
#include "platform/paths.h"
#include "support/tempinstall.h"

namespace {

// Sets an environment variable (unsets it for nullopt) for the life of the object.
class EnvSet {
public:
    EnvSet(const char* name, std::optional<std::string> value) : name_(name)
    {
        if (const char* old = std::getenv(name)) old_ = old;
        if (value) ::setenv(name, value->c_str(), 1);
        else ::unsetenv(name);
    }
    ~EnvSet()
    {
        if (old_) ::setenv(name_, old_->c_str(), 1);
        else ::unsetenv(name_);
    }

private:
    const char* name_;
    std::optional<std::string> old_;
};

TEST(Paths, InstallFolderDriveCAndCaseFoldedLookUp)
{
    TempInstall t;
    QDir(QString::fromStdString(t.drivec())).mkpath("TARNBC/Exports");
    TempInstall::writefile(t.drivec() + "/TARNBC/BARCODE.INI", "x");

    auto p = platform::resolve("c:\\tarnbc\\barcode.ini");
    EXPECT_EQ(p.kind, platform::HostPath::local);
    EXPECT_EQ(p.path, t.drivec() + "/TARNBC/BARCODE.INI");
    // A missing file keeps the case written, below the folder that was found.
    EXPECT_EQ(platform::resolve("C:\\TarnBC\\exports\\New.TXT").path, t.drivec() + "/TARNBC/Exports/New.TXT");
    // The install folder is the real folder of the program, whatever drive C is.
    EXPECT_EQ(platform::resolve("C:\\Program Files\\VexalBCv4\\TAGSTORE.INI").path, t.root() + "/TAGSTORE.INI");
    EXPECT_EQ(platform::resolve("c:\\program files\\vexalbcv4\\LOGS\\01_LOG.TXT").path, t.root() + "/LOGS/01_LOG.TXT");
}

TEST(Paths, SharesMappedToFoldersOrReachedOverSmb)
{
    TempInstall t;
    std::string folder = t.addshare("\\\\10.0.0.200\\tagstore");
    auto mapped = platform::resolve("\\\\10.0.0.200\\TAGSTORE\\BAR001.007");
    EXPECT_EQ(mapped.kind, platform::HostPath::local);
    EXPECT_EQ(mapped.path, folder + "/BAR001.007");
    auto other = platform::resolve("\\\\10.0.0.201\\tagstore\\BARCODE.007");
    EXPECT_EQ(other.kind, platform::HostPath::smb);
    EXPECT_EQ(other.path, "smb://10.0.0.201/tagstore/BARCODE.007");
}

TEST(Paths, DriveWithoutMappingIsNowhere)
{
    TempInstall t;
    EXPECT_EQ(platform::resolve("D:\\DATA\\X.TXT").kind, platform::HostPath::none);
    EXPECT_EQ(platform::resolve("relative.txt").kind, platform::HostPath::none);
    t.configure("[drives]\nD=" + t.root() + "/d\n");
    EXPECT_EQ(platform::resolve("D:\\X.TXT").path, t.root() + "/d/X.TXT");
}

TEST(Paths, ValuesExpandHomeAndEnvironment)
{
    EnvSet home("HOME", "/home/fitter");
    EnvSet site("VEXAL_SITE", "/srv/site");
    struct Case {
        std::optional<std::string> xdg;
        std::string value, expanded;
    } cases[] = {
        {std::nullopt, "~/vexal", "/home/fitter/vexal"},
        {std::nullopt, "~", "/home/fitter"},
        {std::nullopt, "a~/b", "a~/b"},
        {std::nullopt, "$XDG_DATA_HOME/vexalbc", "/home/fitter/.local/share/vexalbc"},
        {"", "${XDG_DATA_HOME}/vexalbc", "/home/fitter/.local/share/vexalbc"},
        {"relative/data", "$XDG_DATA_HOME/vexalbc", "/home/fitter/.local/share/vexalbc"},  // not absolute: ignored
        {"/data", "$XDG_DATA_HOME/vexalbc", "/data/vexalbc"},
        {std::nullopt, "${VEXAL_SITE}x/$VEXAL_SITE", "/srv/sitex//srv/site"},
        {std::nullopt, "$VEXAL_UNSET_NAME/x", "/x"},
        {std::nullopt, "cost$ 5$", "cost$ 5$"},
        {std::nullopt, "${VEXAL_SITE", "${VEXAL_SITE"},
    };
    for (const auto& c : cases) {
        EnvSet xdg("XDG_DATA_HOME", c.xdg);
        EXPECT_EQ(platform::expand(c.value), c.expanded) << c.value;
    }
}

// A packaged install: the program's folder is read-only, home= names a per-user folder that
// takes everything the program writes, and the install folder still shows through it.
TEST(Paths, HomeFolderLaidOverTheInstallFolder)
{
    QTemporaryDir user;
    EnvSet home("HOME", user.path().toStdString());
    EnvSet xdg("XDG_DATA_HOME", std::nullopt);
    TempInstall t;
    QDir(QString::fromStdString(t.root())).mkpath("icons");
    QDir(QString::fromStdString(t.root())).mkpath("OS");
    TempInstall::writefile(t.root() + "/icons/vexalgrey.ico", "ico");
    TempInstall::writefile(t.root() + "/BAR999.INI", "[BAR]");
    TempInstall::writefile(t.root() + "/FS49.pdf", "install");
    TempInstall::writefile(t.root() + "/platform.ini", "[drives]\nhome=$XDG_DATA_HOME/vexalbc\n");
    platform::initplatform(t.root());

    const std::string data = user.path().toStdString() + "/.local/share/vexalbc";
    EXPECT_EQ(platform::hosthomedir(), data);
    EXPECT_TRUE(QDir(QString::fromStdString(data)).exists()) << "made at start";
    EXPECT_EQ(platform::hostinstalldir(), t.root());

    // What the program writes lands in the home folder; drive C defaults to drive_c there.
    EXPECT_EQ(platform::resolve("C:\\Program Files\\VexalBCv4\\TAGSTORE.INI").path, data + "/TAGSTORE.INI");
    EXPECT_EQ(platform::resolve("c:\\tarnbc\\BARCODE.INI").path, data + "/drive_c/tarnbc/BARCODE.INI");
    // What only the install holds is found there, in any case.
    EXPECT_EQ(platform::resolve("C:\\Program Files\\VexalBCv4\\ICONS\\VEXALGREY.ICO").path,
              t.root() + "/icons/vexalgrey.ico");
    // A new file in a folder of the install gets that folder in the home folder.
    EXPECT_EQ(platform::resolve("C:\\Program Files\\VexalBCv4\\os\\vexal.S32").path, data + "/OS/vexal.S32");
    EXPECT_TRUE(QDir(QString::fromStdString(data + "/OS")).exists());
    // A new folder of its own, and a file in a folder nobody has, keep the case written.
    EXPECT_EQ(platform::resolve("C:\\Program Files\\VexalBCv4\\LOGS").path, data + "/LOGS");
    EXPECT_EQ(platform::resolve("C:\\Program Files\\VexalBCv4\\Support\\v.exe").path, data + "/Support/v.exe");
    EXPECT_FALSE(QDir(QString::fromStdString(data + "/Support")).exists());

    // A name in the home folder hides the install's (in any case); listings merge both.
    files::writeall("C:\\Program Files\\VexalBCv4\\TAGSTORE.INI", "[FIRST]\r\n");
    EXPECT_TRUE(QFile::exists(QString::fromStdString(data + "/TAGSTORE.INI")));
    TempInstall::writefile(data + "/fs49.PDF", "user");
    EXPECT_EQ(platform::resolve("C:\\Program Files\\VexalBCv4\\FS49.pdf").path, data + "/fs49.PDF");
    EXPECT_EQ(files::readall("C:\\Program Files\\VexalBCv4\\FS49.PDF"), "user");
    EXPECT_EQ(files::list("C:\\Program Files\\VexalBCv4\\*.*"),
              (std::vector<std::string>{"BAR999.INI", "fs49.PDF", "platform.ini", "TAGSTORE.INI"}));
    std::vector<std::string> folders;
    for (const auto& name : files::list("C:\\Program Files\\VexalBCv4\\*", true))
        if (files::isfolder(platform::winjoin(platform::installfolder, name))) folders.push_back(name);
    EXPECT_EQ(folders, (std::vector<std::string>{"drive_c", "icons", "OS"}));
}

// A site file named by the install's platform.ini wins over it: here it sends every user to
// one shared folder and maps a port for the whole machine. A missing site file changes nothing.
TEST(Paths, SiteFileOverridesTheInstallSettings)
{
    TempInstall t;
    QTemporaryDir etc;
    const std::string sitefile = etc.path().toStdString() + "/platform.ini";
    const std::string shared = etc.path().toStdString() + "/srv/vexalbc";
    TempInstall::writefile(t.root() + "/platform.ini",
                           "[platform]\nsite=" + sitefile + "\n[drives]\nhome=home\n[ports]\nCOM3=/dev/a\nCOM4=/dev/b\n");
    platform::initplatform(t.root());
    EXPECT_EQ(platform::hosthomedir(), t.root() + "/home") << "relative to the install folder";
    EXPECT_EQ(platform::setting("ports", "COM3"), "/dev/a");

    TempInstall::writefile(sitefile, "[Drives]\nHOME=" + shared + "\nC=/srv/c\n[ports]\ncom3=/dev/ttyUSB0\n");
    platform::initplatform(t.root());
    EXPECT_EQ(platform::hosthomedir(), shared);
    EXPECT_EQ(platform::hostdrivec(), "/srv/c");
    EXPECT_EQ(platform::setting("ports", "COM3"), "/dev/ttyUSB0");
    EXPECT_EQ(platform::setting("ports", "COM4"), "/dev/b") << "keys the site leaves alone stand";
    EXPECT_EQ(platform::resolve("C:\\Program Files\\VexalBCv4\\TAGSTORE.INI").path, shared + "/TAGSTORE.INI");
}

}  // namespace
