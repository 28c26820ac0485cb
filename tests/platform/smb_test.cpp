#include <QDir>
#include <gtest/gtest.h>

#include "platform/files.h"
#include "platform/profile.h"
#include "runtime/fault.h"
#include "support/smbserver.h"
#include "support/tempinstall.h"

namespace {

// An unmapped share reached over SMB: whole-file reads and writes, appends, listings, the
// profile calls, a wild-card copy both ways, and a server that stops.
TEST(Smb, ShareOnARealServer)
{
#ifndef VEXAL_HAVE_SMBCLIENT
    GTEST_SKIP() << "built without libsmbclient";
#endif
    auto server = std::make_unique<SmbServer>();
    if (!server->running()) GTEST_SKIP() << server->whynot();
    TempInstall t(server->settings());
    files::inject::reset();
    const std::string share = "\\\\127.0.0.1\\tagstore\\";

    EXPECT_TRUE(files::PathFileExistsA(share));
    EXPECT_EQ(files::GetDriveTypeA(share), 4u);
    files::writeall(share + "BAR001.007", "[S]\r\nA=1\r\n");
    EXPECT_EQ(files::readall(share + "bar001.007"), "[S]\r\nA=1\r\n");
    files::writeall(share + "BARLCK.007", "lock");
    files::appendbytes(share + "BARLCK.007", "+1");
    files::appendbytes(share + "BARLCK.007", "+2");
    EXPECT_EQ(TempInstall::readfile(server->folder() + "/BARLCK.007"), "lock+1+2");
    EXPECT_EQ(files::list(share + "bar*.007"), (std::vector<std::string>{"BAR001.007", "BARLCK.007"}));
    files::makefolder(share + "SUB");
    EXPECT_TRUE(files::isfolder(share + "sub"));
    try {
        files::readall(share + "NONE.007");
        ADD_FAILURE() << "no fault";
    } catch (const Fault& f) {
        EXPECT_EQ(f.number, 53);
    }

    EXPECT_FALSE(files::PathFileExistsA("\\\\127.0.0.1\\nosuch\\BAR001.007"));
    EXPECT_EQ(files::GetLastError(), 53u);
    EXPECT_FALSE(files::PathFileExistsA(share + "NOFOLDER\\BAR001.007"));
    EXPECT_EQ(files::GetLastError(), 3u);

    EXPECT_EQ(WritePrivateProfileStringA("S", "B", "2", share + "BAR001.007"), 1);
    std::string buffer(50, '\0');
    EXPECT_EQ(GetPrivateProfileStringA("S", "B", "d", buffer, 50, share + "BAR001.007"), 1u);
    EXPECT_EQ(TempInstall::readfile(server->folder() + "/BAR001.007"), "[S]\r\nA=1\r\nB=2\r\n");

    files::SHFILEOPSTRUCTA down;
    down.wFunc = files::FO_COPY;
    down.pFrom = share + "BAR*.007" + std::string(2, '\0');
    down.pTo = "C:\\TARNBC\\INITEMP\\" + std::string(2, '\0');
    EXPECT_EQ(files::SHFileOperationA(down), 0);
    EXPECT_EQ(files::list("C:\\TARNBC\\INITEMP\\*").size(), 2u);
    files::writeall("C:\\TARNBC\\INITEMP\\BAR002.007", "new");
    files::SHFILEOPSTRUCTA up = down;
    up.pFrom = "C:\\TARNBC\\INITEMP\\BAR*.007" + std::string(2, '\0');
    up.pTo = share + std::string(2, '\0');
    EXPECT_EQ(files::SHFileOperationA(up), 0);
    EXPECT_EQ(TempInstall::readfile(server->folder() + "/BAR002.007"), "new");

    std::string folder = server->folder();
    server.reset();  // the server stops
    EXPECT_FALSE(files::PathFileExistsA(share));
    EXPECT_EQ(files::GetLastError(), 53u);
    EXPECT_NE(files::SHFileOperationA(up), 0);
    EXPECT_EQ(files::GetLastError(), 53u);
}

}  // namespace
