#include "pipeline/transferdata.h"

#include <QCoreApplication>

#include "core/globals.h"
#include "core/logs.h"
#include "delivery/emaildatafiles.h"
#include "pipeline/deletedata.h"
#include "pipeline/form1.h"
#include "pipeline/formats.h"
#include "pipeline/readdata.h"
#include "pipeline/reseticons.h"
#include "pipeline/savetoinifile.h"
#include "pipeline/screens.h"
#include "platform/clock.h"
#include "platform/csp2.h"
#include "platform/dialogs.h"
#include "platform/files.h"

namespace {

void say(const std::string& text) { form1().List2.additem(text); }

// Email mode: the raw download file becomes an export file, and the question to mail it
// follows. The copy is made beside the folder and then put in, so the folder never holds a
// part of a file that a mail could carry off.
void exportforemail()
{
    Globals& s = g();
    if (!files::isfolder(formats::exportfolder)) files::makefolder(formats::exportfolder);
    const std::string target = formats::exportfile(s.scannerid, platform::clock::now());
    const std::string partial = std::string(formats::localfolder) + "export.part";
    files::copyfile(formats::rawfile(s.scannerid), partial);
    if (files::exists(target)) files::removefile(target);
    files::renamefile(partial, target);
    emaildatafiles();
}

// Steps 3 to 9: what the read left is judged, saved and cleared. Returns early on an abort.
void savethenclear(Int16& step)
{
    Globals& s = g();
    step = 3;
    if (s.scancount == 0 && s.idstatus == 0) return say("Aborted due to no records!");
    step = 4;
    const bool iderror = s.idstatus >= 1 && s.idstatus <= 3;
    if (iderror) return say("Aborted due to scanner ID error!");
    step = 5;
    if (s.idstatus == 4) {
        const std::string text = "Scanner ID adjusted to '" + s.scannerid + "'!";
        say(text);
        addtologfile(text);
    }
    // The date alone stops nothing here: the read has dealt with it.
    step = 6;
    if (s.timestatus == 1 || iderror) return say("Aborted due to error on scanner!");

    step = 7;
    s.corruptid = s.scannerid;
    // A processing run that failed leaves its lines in outlines but no longer allows the
    // clear: those lines are not saved either.
    if (s.outcount > 0 && s.deleteallowed == 1) {
        if (s.savetype == 3) exportforemail();
        else savetoinifile();
    }
    step = 8;
    if (s.scancount > 0 && s.deleteallowed == 1) {
        deletedata(1);
    } else if (s.deleteallowed == 0) {
        step = 9;
        say("Data NOT deleted from scanner due to possible error!");
        addtologfile("Function transferdata() : Data NOT deleted from scanner due to possible error!");
    }
}

}  // namespace

void transferdata()
{
    Globals& s = g();
    Int16 step = 1;
    try {
        s.deleteallowed = 0;
        // Lines count for this transfer only once this read has processed them.
        s.outcount = 0;
        readdata();
        step = 2;
        if (s.runmode > 3) return;

        savethenclear(step);

        step = 10;
        QCoreApplication::processEvents();
        const int type = s.scannertype;
        if (type == 2 || type == 3) {
            if (type == 2 && s.scannerauto[2] == 1) csp2Restore();
            if (type == 3 && s.scannerauto[3] == 1) {
                // The Symbol scanner is turned off so that it stops answering the poll.
                csp2Restore();
                csp2Init(s.scannerport[3] - 1);
                csp2PowerDown();
            }
            say("Please Remove Scanner");
        }
        step = 11;
        s.runmode = 0;
        s.pressedop = 0;
        reseticons();
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        const std::string error = CStr((long long)f.number) + " " + f.description;
        MsgBox("An unexpected error has occured attempting to run a system function at line " +
                   CStr((long long)step) + "! Error: " + error,
               vbExclamation, "Error In Function transferdata()");
        addtologfile("Function transferdata() : " + error);
    }
}
