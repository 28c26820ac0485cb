#include "settings/setupsave.h"

#include "core/form9.h"
#include "core/globals.h"
#include "core/logs.h"
#include "delivery/listfiles.h"
#include "platform/dialogs.h"
#include "runtime/vb.h"
#include "scanner/checkscanners.h"
#include "settings/checkfitterfile.h"
#include "settings/form2.h"
#include "settings/settingssave.h"
#include "settings/setuptimers.h"
#include "settings/setuptypes.h"
#include "settings/storecheck.h"

namespace {

// A question of the save: true when the user wants the save cancelled.
bool cancelsave(const std::string& title, const std::string& text)
{
    return MsgBox(text, vbYesNo + vbExclamation, title) == vbYes;
}

bool portsgood()
{
    for (int i = 0; i <= 3; ++i)
        if (g().portstatus[i] != 0) return false;
    return true;
}

bool anyscannerused()
{
    for (int i = 1; i <= 3; ++i)
        if (g().scannerused[i] != 0) return true;
    return false;
}

}  // namespace

void updatedata()
{
    Globals& s = g();
    Form2& f = form2();
    try {
        checkscanners();
        if (!portsgood()) {
            const bool cancel =
                anyscannerused()
                    ? cancelsave("Scanner Port Problem",
                                 "There appears to be a problem with a port used by one of the scanners! Would you "
                                 "like to cancel the save so that you can fix the problem?")
                    : cancelsave("No Scanners Selected",
                                 "There are no active scanners selected! Would you like to cancel the save so that "
                                 "you can fix the problem?");
            if (cancel) return;
        }

        if (s.savetype != 3) {
            checkstorelocation();
            if (s.storestate != 0 &&
                cancelsave("Data Location Problem",
                           "There appears to be a problem with the data store location! Would you like to cancel "
                           "the save so that you can fix the problem?")) {
                f.ServerIP.setFocus();
                return;
            }
        } else if (s.fittertype > 0) {
            MsgBox("For emailed data setup the fitter information MUST be set to local. This will now be corrected.",
                   vbExclamation, "Fitter Store Location Invalid");
            setfittertype(1);
        }

        if (s.savetype == 1 || s.savetype == 2) {
            if (s.savetype == 2) form9().mnuTransfer.setEnabled(true);
            const std::string tno = f.TarnTNO.value();
            if ((tno.empty() || tno == "000") &&
                cancelsave("Tarn Terminal Number Problem",
                           "There appears to be a problem with the Tarn terminal number used remote file saving! "
                           "Would you like to cancel the save so that you can fix the problem?")) {
                f.TarnTNO.setFocus();
                return;
            }
            if (tno == "999" &&
                cancelsave("Tarn Terminal Number Problem",
                           "The Tarn terminal number should only be set to 999 in special circumstances! Would you "
                           "like to cancel the save so that you can fix the problem?")) {
                f.TarnTNO.setFocus();
                return;
            }
        } else {
            form9().mnuTransfer.setEnabled(false);
        }

        checkfitterfile();
        if (s.fitterstatus != 0 &&
            cancelsave("Engineer Data Problem",
                       "There appears to be a problem with the Engineer Data store file! Would you like to cancel "
                       "the save so that you can fix the problem?"))
            return;

        savesettings();
        f.changingtype = 0;
        f.hide();
        listfiles();
        setuptimers();
    } catch (const std::exception& e) {
        const Fault fault = Fault::from(e);
        const std::string error = CStr((long long)fault.number) + " " + fault.description;
        MsgBox("An error occured while attempting to save the data! Error: " + error, vbExclamation,
               "Error While Saving");
        addtologfile("Form2, Update, Click: Unexpected error. Error : " + error);
    }
}
