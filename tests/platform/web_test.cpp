#include <QDir>
#include <gtest/gtest.h>

#include "platform/files.h"
#include "platform/web.h"
#include "support/loopback.h"
#include "support/webhost.h"
#include "support/tempinstall.h"

namespace {

// The web host serving a folder of support files.
struct Web : ::testing::Test {
    WebHost host;

    void SetUp() override
    {
        host.put("support/Tagstore/support/bcver", "01032024#\r\n");
        host.put("support/Tagstore/support/Scanner Log Off.pdf", "%PDF-1.4");
        ASSERT_TRUE(host.start()) << host.error();
    }
    std::string base() const { return host.base(); }
};

TEST_F(Web, FetchesIntoTheInstallFolderOrFailsLeavingTheFileAlone)
{
    TempInstall t("[web]\nupdate=" + base() + "/\nsupport=" + base() + "\n");
    QDir(QString::fromStdString(t.root())).mkpath("OS");
    const std::string target = "C:\\Program Files\\VexalBCv4\\OS\\bcver";

    std::string url = web::updateaddress("/support/Tagstore/support/bcver");
    EXPECT_EQ(url, base() + "/support/Tagstore/support/bcver");
    EXPECT_EQ(URLDownloadToFileA(nullptr, url, target), 0);
    EXPECT_EQ(TempInstall::readfile(t.root() + "/OS/bcver"), "01032024#\r\n");

    // Blanks in the path are escaped; the file arrives under the name given.
    url = web::supportaddress("/support/Tagstore/support/Scanner Log Off.pdf");
    EXPECT_EQ(url, base() + "/support/Tagstore/support/Scanner%20Log%20Off.pdf");
    EXPECT_EQ(URLDownloadToFileA(nullptr, url, "C:\\Program Files\\VexalBCv4\\OS\\log off.pdf"), 0);
    EXPECT_EQ(TempInstall::readfile(t.root() + "/OS/log off.pdf"), "%PDF-1.4");

    // A missing file is a failure, and the old copy stays as it was.
    EXPECT_EQ(URLDownloadToFileA(nullptr, web::updateaddress("/support/Tagstore/support/osver.ini"), target), 404);
    EXPECT_EQ(TempInstall::readfile(t.root() + "/OS/bcver"), "01032024#\r\n");

    // A folder that does not exist cannot take the file, nor can a full disk.
    EXPECT_NE(URLDownloadToFileA(nullptr, url, "C:\\Program Files\\VexalBCv4\\Support\\x.pdf"), 0);
    files::inject::failwriteafter(0);
    EXPECT_NE(URLDownloadToFileA(nullptr, web::supportaddress("/support/Tagstore/support/Scanner Log Off.pdf"), target), 0);
    files::inject::reset();
    EXPECT_EQ(TempInstall::readfile(t.root() + "/OS/bcver"), "01032024#\r\n");
    EXPECT_EQ(QDir(QString::fromStdString(t.root() + "/OS")).entryList(QDir::Files).join(","), "bcver,log off.pdf");
}

TEST_F(Web, RefusedConnectionAndUnsetHostFail)
{
    TempInstall t;
    QDir(QString::fromStdString(t.drivec())).mkpath("tarnbc");
    int closed = freeport();
    EXPECT_EQ(URLDownloadToFileA(nullptr, "http://127.0.0.1:" + std::to_string(closed) + "/bcver", "c:\\tarnbc\\bcver"), 7);

    // No [web] section: no address, and fetching it fails without a word.
    EXPECT_EQ(web::updateaddress("/support/Tagstore/support/bcver"), "");
    EXPECT_EQ(web::supportaddress("/support/misc/vexal_viewer.exe"), "");
    EXPECT_NE(URLDownloadToFileA(nullptr, web::updateaddress("/x"), "c:\\tarnbc\\bcver"), 0);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(t.drivec() + "/tarnbc/bcver")));
}

}  // namespace
