#include "support/helptools.h"

#include <QCoreApplication>

#include "core/exit.h"
#include "core/globals.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/shell.h"
#include "platform/web.h"
#include "runtime/fault.h"
#include "support/downloadfile.h"
#include "support/form18.h"
#include "support/startprogram.h"

namespace {

std::string quoted(const std::string& path) { return "\"" + path + "\""; }

// Hands a file or an address to the desktop's "open" verb; what cannot be opened is said
// in a box, and nothing else changes.
void openwithshell(const std::string& target)
{
    const long result = ShellExecuteA(nullptr, "open", target, "", "", SW_SHOWNORMAL);
    if (result > 32) return;
    std::string text;
    if (target.empty())
        text = "No address is set for the support web site on this PC ([web] support in platform.ini)!";
    else if (result == 2 || result == 3)
        text = "The file '" + target + "' could not be found!";
    else
        text = "There is no program on this PC to open '" + target + "' (xdg-open is missing or could not start)!";
    MsgBox(text, vbExclamation, "Unable To Open File");
}

}  // namespace

bool openmanual()
{
    const std::string manual = g().homedir + "FS49.pdf";
    if (!files::exists(manual)) {
        MsgBox("Unable to locate the help PDF in the system folder! Please contact support or use the Vexal Utility CD!",
               vbExclamation, "No Help File Found");
        return false;
    }
    form18().hide();
    returnfromhelp();
    openwithshell(manual);
    return true;
}

void openlogoffbarcodes()
{
    const std::string sheet = g().homedir + "BARCODES\\Scanner Log Off.pdf";
    if (files::exists(sheet)) {
        openwithshell(sheet);
        return;
    }
    if (MsgBox("The PDF containing the General Scan Off Barcodes was not found of this PC. Would you like to open it "
               "from the web instead?",
               vbYesNo + vbQuestion, "Open File From Web") == vbYes)
        openwithshell(web::supportaddress("/support/Tagstore/support/Scanner Log Off.pdf"));
}

void createstartupicon()
{
    const std::string program = QCoreApplication::applicationFilePath().toLocal8Bit().toStdString();
    if (!shell::createstartupentry(startupentryname, program, "startup", g().homedir + "ICONS\\Vexalauto4.ico"))
        raisefault(fault::pathfileaccess);
    MsgBox("Shortcut added to the startup folder!", vbInformation, "Startup Icon Created");
}

void startwebupdater()
{
    if (MsgBox("This will update the web updater, end the current program and open the web updater program! Do you "
               "wish to proceed?",
               vbYesNo + vbQuestion, "Start Web Update Program?") != vbYes)
        return;
    const std::string home = g().homedir;
    bool fetched = false;
    DownloadFile(web::updateaddress("/support/Tagstore/WebUpdater.exe"), home + "WebUpdate.exe", fetched);
    if (fetched) {
        try {
            files::copyfile(home + "WebUpdate.exe", home + "WebUpdater.exe");
            shell::makeprogram(home + "WebUpdater.exe");
        } catch (const std::exception&) {
            // The updater already on the PC runs instead.
        }
    }
    startprogram(quoted(home + "WebUpdater.exe") + " Internal", SW_SHOWNORMAL);
    g().savetype = 0;
    fullexit();
}

void runsupportviewer()
{
    const std::string home = g().homedir;
    const std::string viewer = home + "Support\\vexal_viewer.exe";
    bool started = false;
    try {
        if (!files::isfolder(home + "Support")) files::makefolder(home + "Support");
        bool fetched = false;
        DownloadFile(web::supportaddress("/support/misc/vexal_viewer.exe"), viewer, fetched);
        if (fetched) {
            shell::makeprogram(viewer);
            startprogram(quoted(viewer), SW_SHOWNORMAL);
            started = true;
        }
    } catch (const std::exception&) {
        started = false;
    }
    if (!started)
        MsgBox("Support viewer program could not be downloaded / run. Please advise support so that they can run the "
               "software manually.",
               vbOKOnly, "Unable To Run PC Support Client");
}
