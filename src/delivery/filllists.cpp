// The transfer screen's two file lists: the local set, backed up first, and the store's set,
// copied down into the work folder and backed up there before it is listed.
#include "core/colorbox.h"
#include "core/globals.h"
#include "core/logs.h"
#include "delivery/checkbarcodeini.h"
#include "delivery/fileoperation.h"
#include "delivery/filerow.h"
#include "delivery/form20.h"
#include "delivery/transferplaces.h"
#include "pipeline/formats.h"
#include "platform/dialogs.h"
#include "settings/storecheck.h"

namespace {

using formats::Place;
using namespace transferplaces;

// Which failure text a fault gets: the stage the lists were at.
enum class stage { lists, backup, copydown };

struct StageFault {
    stage where;
    Fault fault;
};

// The store's files into the work folder. Up to five tries: a failed try marks the copy as
// failed for good, and then the tries go on to the fifth; a first try that works ends them.
void copydown()
{
    FileOperation failed;
    for (int attempt = 1; attempt <= 5; ++attempt) {
        const FileOperation op = copyfiles(storepattern(), workfolder);
        if (op.failed) failed = op;
        else if (!failed.failed) break;
    }
    if (failed.failed) throw StageFault{stage::copydown, failed.fault()};
}

// Copies `from` into the backup folder; a failure is a backup failure.
void backup(const std::string& from)
{
    const FileOperation op = copyfiles(from, backupfolder);
    if (op.failed) throw StageFault{stage::backup, op.fault()};
}

void report(stage where, int n, const Fault& f)
{
    const std::string line = CStr((long long)n);
    const std::string error = CStr((long long)f.number) + " " + f.description;
    switch (where) {
    case stage::backup:
        MsgBox("An unexpected error occured while trying to create backup files of the data! This has not damaged the "
               "current data and you should exit and retry. Line: " + line + " Error: " + error,
               vbExclamation, "Error Creating Backups");
        addtologfile("form20, filllists: Error While Backing Up Date. Line " + line + " Unexpected error. Error: " + error);
        break;
    case stage::copydown:
        MsgBox("An unexpected error occured while trying copy the server data to the PC for work to be done! This has "
               "not damaged the current data and you should exit and retry. Line: " + line + " Error: " + error,
               vbExclamation, "Error Transfering Data");
        addtologfile("form20, filllists: Error While Copying Server Data To PC. Line " + line +
                     " Unexpected error. Error: " + error);
        break;
    case stage::lists:
        MsgBox("An unexpected error occured while trying to build the files lists! Section: " + line + " - Error: " + error,
               vbExclamation, "Error Transfering Data");
        addtologfile("form20, filllists: Line " + line + " Unexpected error. Error: " + error);
        break;
    }
}

}  // namespace

void Form20::filllists(int16_t mode)
{
    using namespace transfercolours;
    Globals& s = g();
    int n = 1;   // position marker, for the failure texts
    try {
        List1.clear();
        List2.clear();
        localready = 0;
        serverready = 0;
        checkbarcodeini(1);
        addstep("Adding data to file lists");

        const long local = formats::masterfilecount(formats::masterfile(Place::local));
        bool localdata = false;
        if (local > 0) {
            if (mode == 1) {
                n = 2;
                addstep("Backing up local files");
                try {
                    makeworkfolders();
                } catch (const std::exception& e) {
                    throw StageFault{stage::backup, Fault::from(e)};
                }
                backup(std::string(formats::localfolder) + "*.INI");
            }
            n = 3;
            ListFileBox[0].setfillcolor(colorbox(good));
            for (long i = 1; i <= local; ++i) {
                n = 4;
                long lines = 0;
                List1.additem(filerow(i, formats::barfile(Place::local, i), lines));
                if (lines > 0) localready = 1;
            }
            localdata = true;
        } else {
            n = 5;
            ListFileBox[0].setfillcolor(colorbox(transfercolours::fault));
            List1.additem("No Outstanding Data Files");
        }

        n = 6;
        checkstorelocation();
        const bool reachable = s.storestate == 0;
        if (!reachable) {
            n = 14;
            List2.additem("Error connecting to server!");
            ListFileBox[1].setfillcolor(colorbox(transfercolours::fault));
        } else {
            n = 7;
            checkbarcodeini(3);
            if (mode == 1) {
                n = 8;
                try {
                    makeworkfolders();
                } catch (const std::exception& e) {
                    throw StageFault{stage::copydown, Fault::from(e)};
                }
                addstep("Copying server files to PC");
                copydown();
                addstep("Backing up server files");
                backup(workpattern());
            }
            n = 9;
            const long server = formats::masterfilecount(workmaster());
            if (server > 0) {
                n = 10;
                ListFileBox[1].setfillcolor(colorbox(good));
                for (long j = 1; j <= server; ++j) {
                    n = 11;
                    long lines = 0;
                    List2.additem(filerow(j, workbar(j), lines));
                }
            } else {
                n = 12;
                List2.additem("No data currently on server");
                ListFileBox[1].setfillcolor(colorbox(empty));
            }
            n = 13;
            serverready = 1;
        }

        n = 15;
        // While a transfer runs its own refreshes leave the button off.
        settransfer(localdata && reachable && !busy_);
    } catch (const StageFault& f) {
        report(f.where, n, f.fault);
    } catch (const std::exception& e) {
        report(stage::lists, n, Fault::from(e));
    }
}
