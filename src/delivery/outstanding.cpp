#include "delivery/outstanding.h"

#include "core/globals.h"
#include "core/logs.h"
#include "delivery/emaildatafiles.h"
#include "delivery/form20.h"
#include "pipeline/formats.h"
#include "pipeline/mainactions.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "runtime/vb.h"

void outstandingdblclick()
{
    Globals& s = g();
    try {
        if (operationrunning()) return;

        // Email mode mails the files waiting in c:\tarnbc\exports instead.
        if (emailfromlist()) return;

        if (s.savetype == 0) return;
        const std::string master = formats::masterfile(formats::Place::local);
        if (files::Dir(master).empty()) return;
        if (formats::masterfilecount(master) <= 0) return;

        // The lock test compares the lock file's name with "BARLOCK.", a letter apart, so
        // its question never comes; the test stays as it always was.
        if (UCase(files::Dir(formats::lockfile())) == UCase("BARLOCK." + s.terminalno)) {
            if (MsgBox("There is a lock file in place that indicates you are currently loading data into Tarn! You "
                       "should not download from additional scanners until this is complete! Would you like to "
                       "remove the lock file?",
                       vbYesNo + vbCritical + vbDefaultButton2, "Data Upload In Progress") != vbYes) {
                s.runmode = 0;
                s.automaticactive = 0;
                return;
            }
            files::removefile(formats::lockfile());
        }

        s.pressedop = 1;
        s.callerof[20] = 1;
        opentransferscreen();
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        const std::string error = CStr((long long)f.number) + " " + f.description;
        MsgBox("An unexpected error has occured attempting to run a system function! Error: " + error, vbExclamation,
               "Error In Function List1: Dblclick()");
        addtologfile("List1, dblclick : " + error);
    }
}
