// The restore after a failed copy back. By then the local files are gone and the merged
// set lies only in C:\TARNBC\INITEMP\, with the originals in its BACKUPS: the screen keeps
// offering the copy until the server takes it or the user insists on stopping, and deletes
// nothing either way, so support finds everything where it was.
#include "core/globals.h"
#include "core/logs.h"
#include "delivery/fileoperation.h"
#include "delivery/form20.h"
#include "delivery/transferplaces.h"
#include "pipeline/formats.h"
#include "platform/dialogs.h"
#include "settings/storecheck.h"

namespace {

const char* const advice =
    " Please leave this program as it is and check your connection to the head office (if applicable) and the "
    "status of the main server. If you have to cancel you will need support to assist you in restoring the backup "
    "files";

void restorelog(const std::string& text) { addtologfile("form20, runtransfer: Restoring Backups To Server. " + text); }

// The question behind every Cancel; true on Yes.
bool cancelconfirmed()
{
    return MsgBox("Are you SURE you want to cancel the restore?", vbYesNo + vbCritical + vbDefaultButton2,
                  "Confirm Cancel") == vbYes;
}

// Asks about an attempt that did not reach the server; true when the user cancelled and
// confirmed it.
bool cancelled(long attempt, const std::string& what)
{
    return MsgBox("Restore attempt : " + CStr((long long)attempt) + " " + what + advice, vbOKCancel + vbExclamation,
                  "Error With Connection To Server") == vbCancel &&
           cancelconfirmed();
}

}  // namespace

void Form20::restoredata(const Fault& failure)
{
    const std::string error = CStr((long long)failure.number) + " " + failure.description;
    MsgBox("An unexpected error occured while trying to transfer the data to the server! As a precaution the program "
           "will now attempt to restore the data file to prevent data loss. Error: " + error,
           vbExclamation, "Error Transfering Data");
    addtologfile("form20, runtransfer: Transfering Data To Server. Unexpected error. Error: " + error);

    enum { pending = 0, restored = 1, ended = 2 };
    Int32 attempt = 0;
    int outcome = pending;
    while (outcome == pending) {
        attempt = attempt + 1;
        checkstorelocation();
        if (g().storestate != 0) {
            if (cancelled(attempt, "The server is showing as unavailable.")) {
                outcome = ended;
                restorelog("Server Unavailable And User Cancelled Restore.");
            }
            continue;
        }
        // Five tries; a failed one marks the restore as failed for good, and the tries go on.
        for (int t = 1; t <= 5; ++t) {
            const FileOperation op = copyfiles(transferplaces::workpattern(), formats::storefolder(g().serverip));
            if (op.failed) {
                if (op.error != 0 && op.error != 6) restorelog("Dll Error: " + CStr((long long)op.error));
                else restorelog("Operation Error: " + CStr((long long)op.aborted));
                outcome = ended;
            } else if (outcome == pending) {
                break;
            }
        }
        if (outcome == ended) {
            if (cancelled(attempt, "The restore to the server failed."))
                restorelog("Restore Failed And User Cancelled Restore.");
        } else {
            outcome = restored;
            restorelog("Restore Succedded.");
        }
    }
}
