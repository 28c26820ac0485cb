#include "settings/setupleave.h"

#include "core/globals.h"
#include "platform/dialogs.h"
#include "scanner/checkscanners.h"
#include "settings/checkfitterfile.h"
#include "settings/form2.h"
#include "settings/settingsload.h"
#include "settings/setuptimers.h"
#include "settings/storecheck.h"

void cancelsetup()
{
    Globals& s = g();
    Form2& f = form2();
    if (s.firstrun == 0) {
        if (MsgBox("The program cannot be run until the initial setup has been completed and saved! Are you sure "
                   "you want to exit now?",
                   vbYesNo + vbQuestion, "Confirm Exit") == vbYes)
            emit f.exitprogram();
        return;
    }
    settingsfromfile();
    checkstorelocation();
    checkfittersource();
    f.changingtype = 0;
    checkscanners();
    f.hide();
    s.pressedop = 0;
    setuptimers();
}

void undosetup()
{
    if (g().firstrun == 0) return;
    form2().changingtype = 0;
    settingsfromfile();
}
