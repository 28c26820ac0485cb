// The Check Scanner screen's ID repair: through the select new scanner ID screen, and the
// write of the chosen ID.
#include "core/globals.h"
#include "maintenance/form10.h"
#include "maintenance/scannertests.h"
#include "platform/csp2.h"
#include "platform/opl.h"
#include "settings/form14.h"

void Form10::UpdateID_Click()
{
    if (g().oplerror == 1) return;
    Timer1.stop();
    g().callerof[14] = 10;
    hide();
    form14().setuplist();
    form14().show();
}

// The select new scanner ID screen has hidden with the new ID in its FitterID box.
void Form10::idchosen()
{
    if (g().callerof[14] == 10) show();
    updatescannerID();
}

void Form10::updatescannerID()
{
    Globals& s = g();
    const std::string fitterid = form14().FitterID.value();
    if (s.scannertype == 1) {
        auto opl = openopl();
        opl->writeid(CInt(fitterid));
        const int16_t id = opl->readid();
        s.scannerid = CStr((long long)id);
        testtheID();
        closeopl(opl);
        return;
    }
    const int32_t port = s.scannerport[s.scannertype] - 1;
    csp2Restore();
    csp2Init(port);
    // The ID goes as six digits in a ten-byte field.
    char id[10] = {};
    const std::string text = IsNumeric(fitterid) ? Format((long long)Val(fitterid), "000000") : fitterid;
    std::copy_n(text.begin(), std::min(text.size(), sizeof id), id);
    csp2SetParam(38, id, sizeof id);
    csp2Restore();
    csp2Init(port);
    csp2ReadData();
    csp2GetASCIIMode();
    char unused[6] = {};
    csp2GetTime(unused);
    std::string readback(10, ' ');
    csp2GetParam(38, readback.data(), (int32_t)readback.size());
    s.scannerid = Left(readback, 6);
    csp2Restore();
    testtheID();
}
