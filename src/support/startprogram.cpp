#include "support/startprogram.h"

#include "platform/shell.h"
#include "runtime/fault.h"

void startprogram(const std::string& commandline, int show)
{
    const long result = WinExec(commandline, show);
    if (result > 31) return;
    if (result == 2) raisefault(fault::filenotfound);
    if (result == 3) raisefault(fault::pathnotfound);
    raisefault(fault::invalidcall);
}
