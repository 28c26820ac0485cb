#include "core/exit.h"

#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>

#include "core/globals.h"
#include "core/logs.h"
#include "core/trayicon.h"
#include "delivery/form20.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/instance.h"
#include "platform/profile.h"
#include "runtime/vb.h"

namespace {

std::function<void()>& processend()
{
    static std::function<void()> end;
    return end;
}

// The count of files that BARCODE.INI in c:\tarnbc holds, 0 when it is not there.
int localfilecount()
{
    const std::string master = "c:\\tarnbc\\BARCODE.INI";
    if (!files::exists(master)) return 0;
    std::string buffer(50, '\0');
    uint32_t n = GetPrivateProfileStringA("FILES", "FILES", master, buffer, 50, master);
    return (int)Val(Left(buffer.substr(0, n), 3));
}

}  // namespace

void closeforms()
{
    int count = g().savetype > 0 ? localfilecount() : 0;
    if (count > 0) {
        int answer = MsgBox("There appears to be locally held data! Would you like to transfer this to the server before closing?",
                            vbYesNo + vbQuestion, "Transfer Local Data");
        if (answer == vbYes) {
            g().callerof[20] = 99;
            opentransferscreen();
            return;
        }
    }
    removetrayicon();
    endprocess();
}

void fullexit() { closeforms(); }

void endprocess()
{
    if (processend()) {
        processend()();
        throw Fault(0, "the process ended");   // the seam's caller unwinds from here
    }
    instance::release();
    std::fflush(nullptr);
    std::_Exit(0);
}

void setprocessend(std::function<void()> end) { processend() = std::move(end); }
