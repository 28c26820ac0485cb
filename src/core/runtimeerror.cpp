#include "core/runtimeerror.h"

#include "platform/dialogs.h"
#include "runtime/fault.h"
#include "runtime/vb.h"

void runtimeerror(const std::exception& e)
{
    const Fault f = Fault::from(e);
    if (f.number == 0) return;   // the process is ending (the tests' seam of endprocess)
    MsgBox("Run-time error '" + CStr((long long)f.number) + "':\r\n\r\n" + f.description, vbCritical,
           "VEXAL Scanner Interface");
}
