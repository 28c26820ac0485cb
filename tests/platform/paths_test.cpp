#include <QDir>
#include <gtest/gtest.h>

#include "platform/paths.h"
#include "support/tempinstall.h"

namespace {

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

}  // namespace
