// The software update's run: uploadsoftware with its decisions and ways out, and the
// stand-alone specialrun of a "swupdate" start.
#include <QCoreApplication>

#include "core/colorbox.h"
#include "core/exit.h"
#include "core/globals.h"
#include "core/logs.h"
#include "maintenance/form10.h"
#include "maintenance/form19.h"
#include "maintenance/screens.h"
#include "maintenance/softwareversions.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/profile.h"
#include "platform/web.h"
#include "support/downloadfile.h"

namespace {

// A value of OS\osver.ini's Versions section: the text before its first "#". A value
// without one (a missing key reads as the file's path) raises 5.
std::string newversion(const std::string& file, const char* key)
{
    std::string buffer(50, '\0');
    uint32_t n = GetPrivateProfileStringA("Versions", key, file, buffer, 50, file);
    const std::string value = buffer.substr(0, n);
    return Left(value, InStr(value, "#") - 1);
}

const char* tail = "! Please close the program and then re-try the upload, if the problem persists please contact "
                   "support for assistance!";

}  // namespace

void Form19::leave(bool firstcall)
{
    pause();
    hide();
    if (standalone) return quit();
    form10().show();
    if (firstcall) form10().firstcall();
}

void Form19::quit()
{
    hide();
    g().savetype = 0;
    fullexit();
}

void Form19::faulted(int line, const std::exception& e)
{
    const Fault f = Fault::from(e);
    if (f.number == 0) throw;   // the process is ending
    const std::string detail = CStr((long long)f.number) + " Desc " + f.description;
    Label1.setcaption("Error In Upload");
    MsgBox("An error has occured during the software updating routine at Line " + CStr((long long)line) + ". Error " +
               detail + tail,
           vbExclamation, "Error In function: uploadsoftware");
    addtologfile("Function: uploadsoftware - Line " + CStr((long long)line) + ". Error " + detail);
    waitticks(4);
    hide();
    if (standalone) return quit();
    form10().show();
}

void Form19::uploadsoftware()
{
    Globals& s = g();
    int line = 0;
    // A failed operation: the notice, the box and the log line, then back without firstcall.
    auto failed = [&](const char* where, const char* title, const char* what, const char* logpart) {
        const std::string code = CStr((long long)statuscode);
        Label1.setcaption("Error " + code + where);
        MsgBox(std::string("An error has occured while attemping to ") + what + tail, vbCritical, title);
        addtologfile(std::string("Function: uploadsoftware. ") + logpart + ". Error Code " + code);
        leave(false);
    };
    try {
        statuscode = 0;
        progress = 0;
        statustext.clear();

        // The versions on offer
        line = 3;
        std::string newos, newapp;
        const std::string versionfile = s.homedir + "OS\\osver.ini";
        if (!files::exists(versionfile)) {
            if (MsgBox("Unable to determine the versions of the new OS & Application! You should only proceed on the "
                       "advice of support, otherwise please update from the internet, or contact support! Would you "
                       "like to proceed with install?",
                       vbYesNo + vbExclamation + vbDefaultButton2, "No Version File") != vbYes) {
                // Back without showing the Check Scanner screen: only its firstcall runs.
                pause();
                hide();
                if (standalone) return quit();
                form10().firstcall();
                return;
            }
            newos = "999";
            newapp = "999";
        } else {
            newos = newversion(versionfile, "OS");
            newapp = newversion(versionfile, "APP");
        }

        // The versions on the scanner
        line = 4;
        stage = 0;
        LoadDll1.setport(s.scannerport[1]);
        LoadDll1.setstep(0);
        LoadDll1.readversions();
        await(loaddll::versionsread);
        if (statuscode < 1000)
            return failed(" In Software Check", "Error Checking Software", "check the software versions on the scanner",
                          "Reading Software Versions");
        line = 5;
        std::string scanneros, scannerapp;
        scannerversions(statustext, scanneros, scannerapp);

        line = 6;
        loados = scanneros == newos ? 0 : 1;
        loadapp = scannerapp == newapp ? 0 : 1;
        OSLabel.setcaption("Scanner OS : " + scanneros);
        OSLabel.setforecolor(colorbox(loados == 1 ? 2 : 13));
        AppLabel.setcaption("Software Ver : " + scannerapp);
        AppLabel.setforecolor(colorbox(loadapp == 1 ? 2 : 13));

        line = 7;
        if (loados == 0 && loadapp == 0) {
            if (MsgBox("The Operating and Application software versions on the scanner match those currently available "
                       "to install! You should only proceed with the update on specific advice of support! Do you wish "
                       "to proceed with a reinstall of the scanners operating system?",
                       vbYesNo + vbInformation + vbDefaultButton2, "OS And APP Match") != vbYes)
                return leave(true);
            loados = 1;
            loadapp = 1;
        } else if (loados == 0) {
            const int answer =
                MsgBox("The Operating version on the scanner matches that currently available to install! Do you wish "
                       "to update this as well? Note: This should only be on the specific advice of support! (Cancel "
                       "if you are unsure and would like to resume later)",
                       vbYesNoCancel + vbInformation + vbDefaultButton2, "Operating System Matches");
            if (answer == vbYes) loados = 1;
            else if (answer != vbNo) return leave(true);
        }

        line = 9;
        if (loados == 1) {
            pause();
            cleartiles();
            loadOS();
            await(loaddll::loadfinished);
            if (statuscode < 1000)
                return failed(" In OS Upload", "Error Uploading Operating System",
                              "load the new operating system to the scanner", "Loading Operating System");
        }

        line = 11;
        if (loados == 1 || loadapp == 1) {
            pause();
            cleartiles();
            eraseApp();
            await(loaddll::erasefinished);
            if (statuscode < 1000)
                return failed(" In Erase", "Error Erasing Application", "erase the old application to the scanner",
                              "Erasing Application");
            for (int i = 1; i <= 9; ++i) Image1[i].setpicture(Tiles(), 5);
            pause();
            cleartiles();
            loadApp();
            await(loaddll::loadfinished);
            if (statuscode < 1000)
                return failed(" In Upload", "Error Uploading Application", "load the new application to the scanner",
                              "Uploading Application");
        }

        Label1.setcaption("Upload Complete");
        Label1.setforecolor(colorbox(13));
        Label4.setcaption("Upload Complete");
        OSLabel.setcaption("Scanner OS : " + newos);
        OSLabel.setforecolor(colorbox(13));
        AppLabel.setcaption("Software Ver : " + newapp);
        AppLabel.setforecolor(colorbox(13));
        pause();
        hide();
        if (standalone) {
            again = true;   // the next scanner
            return;
        }
        form10().show();
        form10().firstcall();
    } catch (const std::exception& e) {
        faulted(line, e);
    }
}

void Form19::specialrun()
{
    Globals& s = g();
    standalone = true;
    do {
        again = false;
        setupscreen();
        if (filesmissing != 2) {
            const std::string os = s.homedir + "OS\\";
            for (const char* name : {"vexal.S32", "vexalOS.S32", "osver.ini"})
                if (!files::exists(os + name)) filesmissing = 1;
            const int answer =
                MsgBox(filesmissing == 1 ? "Key files are missing from the software installation folder! Would you "
                                           "like to download these in order to proceed?"
                                         : "Would you like to update the scanner system and application files from "
                                           "the web before proceeding?",
                       vbYesNo + vbQuestion, "Update Files");
            if (answer == vbYes) {
                Label1.setcaption("Web Update In Progress");
                Label1.repaint();
                for (const char* name : {"vexal.S32", "vexalOS.S32", "osver.ini"}) {
                    bool fetched = false;
                    DownloadFile(web::updateaddress(std::string("/support/Tagstore/support/") + name), os + name,
                                 fetched);
                }
                Label1.setcaption("DO NOT REMOVE SCANNER!");
            } else if (filesmissing == 1) {
                pause();
                return quit();
            }
        }
        filesmissing = 2;
        if (MsgBox("Please insert a scanner to be checked / updated into the data cradle and click 'OK' to proceed! "
                   "Otherwise click 'Cancel' to exit this screen. NOTE: ALL data on a scanner you update WILL be lost!",
                   vbOKCancel + vbCritical, "Insert Scanner In Cradle") != vbOK) {
            pause();
            return quit();
        }
        uploadsoftware();
    } while (again);
}
