#include "settings/checkfitterfile.h"

#include "core/colorbox.h"
#include "core/globals.h"
#include "core/logs.h"
#include "platform/files.h"
#include "settings/englines.h"
#include "settings/form2.h"
#include "settings/form17.h"
#include "settings/lights.h"
#include "settings/setupdisplay.h"

namespace {

void report(const std::string& status, int frame, bool good)
{
    paint(form2().Shape1[10], frame);
    form17().FitterStatus.setcaption(status);
    showlight(form17().Status[2], good ? Light::good : Light::fault);
}

// The list was proved: try the file where it lives, and for PC Copy take the server's
// file as the local copy.
bool provefile()
{
    Globals& s = g();
    if (s.fittertype > 0 && s.storestate != 0) return false;
    try {
        files::TextReader probe(s.fittertype == 0 ? englocalfile() : engserverfile());
        if (s.fittertype == 2) files::copyfile(engserverfile(), englocalfile());
        return true;
    } catch (const Fault&) {
        return false;
    }
}

}  // namespace

void checkfitterfile()
{
    Globals& s = g();
    s.fitterstatus = 0;
    if (provefile()) {
        report("No problems detected", boxgood, true);
        form17().Label5.setforecolor(colorbox(4));
        return;
    }

    if (s.fittertype == 2) s.fitterstatus = files::exists(englocalfile()) ? 1 : 2;
    if (s.fittertype == 0 || s.fitterstatus == 2) {
        try {
            files::TextWriter empty(englocalfile(), files::TextWriter::output);
        } catch (const Fault& f) {
            addtologfile("checkfitterfile: " + englocalfile() + ": " + f.description);
        }
    } else {
        s.fitterstatus = 1;
    }

    std::string status = "No problems detected";
    if (s.fitterstatus == 1) {
        status = s.fittertype == 1 && s.storestate != 0 ? "Problem with server IP address / share"
                                                           : "Unable to locate engineer data file on server";
    } else if (s.fitterstatus == 2) {
        status = "Problem with server file, and no local file";
    }
    addtologfile("checkfitterfile: " + status);
    if (s.fitterstatus == 0) report(status, boxidle, true);
    else report(status, boxfault, false);
}

void checkfittersource()
{
    if (g().fittertype == 0 || g().storestate == 0) checkfitterfile();
    else paint(form2().Shape1[10], boxfault);
}
