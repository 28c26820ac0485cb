// A transfer test's world: Batch Update mode, the store \\127.0.0.1\tagstore either as a
// mounted folder ([shares]) or served by a real smbd on loopback, terminal 007, and the
// transfer screen's helpers: open it as the outstanding list does, run the transfer, read
// its lists.
#pragma once

#include <sys/stat.h>

#include <memory>

#include "core/exit.h"
#include "core/startup.h"
#include "delivery/form20.h"
#include "setfiles.h"
#include "support/smbserver.h"

inline std::string workbar(int n) { return "C:\\TARNBC\\INITEMP\\BAR" + Format(n, "000") + ".007"; }
inline const char* const workmaster = "C:\\TARNBC\\INITEMP\\BARCODE.007";

enum class sharekind { folder, smb };

inline std::string sharename(const testing::TestParamInfo<sharekind>& info)
{
    return info.param == sharekind::folder ? "MountedFolder" : "Smbd";
}

class TransferTest : public StoreTest, public testing::WithParamInterface<sharekind> {
protected:
    void SetUp() override
    {
        StoreTest::SetUp();
        if (GetParam() == sharekind::smb) {
            server = std::make_unique<SmbServer>();
            if (!server->running()) GTEST_SKIP() << server->whynot();
            // The share is no longer mapped to a folder: it is reached over SMB.
            TempInstall::writefile(install.root() + "/platform.ini",
                                   "[drives]\nC=" + install.drivec() + "\n" + server->settings());
            platform::initplatform(install.root());
            share = server->folder();
        }
        g().savetype = 2;
        g().commandline = "startup";   // no busy box in front of the screens
        setprocessend([this] { ++ended; });
        connectmonitor();   // the tray menu's entries
        form20().hide();
        form1().hide();
    }
    void TearDown() override
    {
        ListBox::setobserver(nullptr);
        dialogs::setwhileopen(nullptr);
        setprocessend(nullptr);
        form20().hide();
        StoreTest::TearDown();
    }

    // The outstanding list's way in: pressedop 1, callerof[20] 1.
    void openscreen(int caller = 1)
    {
        g().pressedop = 1;
        g().callerof[20] = caller;
        opentransferscreen();
    }
    // Runs `act` when `row` is added to any list for the `nth` time (the step the transfer
    // has reached).
    void atrow(const std::string& row, std::function<void()> act, int nth = 1)
    {
        auto seen = std::make_shared<int>(0);
        ListBox::setobserver([row, act, nth, seen](const ListBox&, const std::string& text) {
            if (text == row && ++*seen == nth) act();
        });
    }

    std::vector<std::string> steps() const { return items(form20().List3); }
    std::string storefile(const std::string& name) const { return TempInstall::readfile(share + "/" + name); }
    // A file of the store as Tarn left it; the share's guest may rewrite it.
    void putstore(const std::string& name, const std::string& bytes)
    {
        TempInstall::writefile(share + "/" + name, bytes);
        ::chmod((share + "/" + name).c_str(), 0666);
    }

    std::unique_ptr<SmbServer> server;
    int ended = 0;
};
