#include "core/runtimeerror.h"

#include "core/logs.h"
#include "platform/dialogs.h"
#include "runtime/fault.h"
#include "runtime/vb.h"

void runtimeerror(const std::exception& e)
{
    const Fault f = Fault::from(e);
    if (f.number == 0) return;   // the process is ending (the tests' seam of endprocess)
    const std::string text = "Run-time error '" + CStr((long long)f.number) + "':\r\n\r\n" + f.description;
    // A timer whose tick keeps failing would stack one box on another while the first waits
    // for its OK: the later ones only go to the log.
    static bool showing = false;
    if (showing) {
        addtologfile("Run-time error '" + CStr((long long)f.number) + "': " + f.description);
        return;
    }
    showing = true;
    MsgBox(text, vbCritical, "VEXAL Scanner Interface");
    showing = false;
}
