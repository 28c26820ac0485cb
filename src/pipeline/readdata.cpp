#include "pipeline/readdata.h"

#include <QCoreApplication>

#include "core/colorbox.h"
#include "core/form16.h"
#include "core/form6.h"
#include "core/globals.h"
#include "core/logs.h"
#include "core/screens.h"
#include "maintenance/form10.h"
#include "maintenance/form24.h"
#include "maintenance/scannertests.h"
#include "maintenance/screens.h"
#include "pipeline/form1.h"
#include "pipeline/form12.h"
#include "pipeline/formats.h"
#include "pipeline/mainopl.h"
#include "pipeline/processdata.h"
#include "pipeline/readowner.h"
#include "pipeline/readsteps.h"
#include "pipeline/reseticons.h"
#include "pipeline/resumenext.h"
#include "pipeline/screens.h"
#include "platform/clock.h"
#include "platform/csp2.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "settings/form14.h"

void endreadsession()
{
    if (g().scannertype == 1) closemainopl();
    else csp2Restore();
}

namespace {

// The main screen's Label3, and the status screen's ScanData with it when `both`: red when
// the clock, the date or the ID is at fault.
void colourverdict(bool both)
{
    const Globals& s = g();
    const bool fault = s.datestatus == 1 || s.timestatus == 1 || s.idstatus == 1;
    form1().Label3.setforecolor(colorbox(fault ? 2 : 13));
    if (both) form16().ScanData.setforecolor(colorbox(fault ? 2 : 11));
}

void report(const std::string& text)
{
    form1().List2.additem(text);
    addtologfile(text);
}

// The select new scanner ID screen, run until it has gone: a choice writes the new ID to
// the scanner and judges it again on the way.
void runnewid()
{
    g().callerof[14] = 1;
    Form14& screen = form14();
    screen.setuplist();
    screen.repaint();
    screen.show();
    while (screen.isVisible()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

// Steps 12: an ID that is not all digits, repaired by the user or not. False when it stays
// unrepaired and the read ends in the no-data tail.
bool repairid()
{
    Globals& s = g();
    const std::string oldid = s.scannerid;
    const std::string caption = form10().IDLabel[1].caption();
    addtologfile("Error with scanner ID (" + caption + ")");
    if (MsgBox("There is a problem with the ID on the scanner (" + caption +
                   ")! This MUST be corrected in order to continue. Do you wish to update now?",
               vbYesNo + vbQuestion, "ID Problem Detected") == vbNo)
        return false;
    addtologfile("Running ID Correction");
    runnewid();
    if (s.idstatus == 1) return false;
    if (s.scannertype == 1) {
        files::copyfile(formats::rawfile(oldid), formats::rawfile(s.scannerid));
        s.lastscannerid = formatid(s.scannerid);
    }
    report("ID updated from " + formatid(oldid) + " to " + formatid(s.scannerid));
    return true;
}

// The end of a read that has nothing to process: from its start when the scanner holds
// nothing, from the date check after an ID left unrepaired. Faults here are ignored.
void nodatatail(bool fromstart)
{
    Globals& s = g();
    if (fromstart) {
        resumenext([&] {
            if (s.idstatus != 1) return;
            const std::string caption = form10().IDLabel[1].caption();
            if (MsgBox("There is a problem with the ID on the scanner (" + caption +
                           ")! Would you like to update the ID now?",
                       vbYesNo + vbQuestion, "ID Problem Detected") == vbYes) {
                addtologfile("Correcting Scanner ID");
                runnewid();
            }
        });
    }
    resumenext([&] {
        if (s.datestatus != 1 && s.timestatus != 1) return;
        const std::string clock = s.scannertime + " " + s.scannerdate;
        addtologfile("Error with the date / time on the scanner (" + clock + ")");
        if (MsgBox("There is a problem with the date / time on the scanner (" + clock +
                       ")! Would you like to update the date and time?",
                   vbYesNo + vbQuestion, "Date / Time Problem Detected") == vbYes) {
            addtologfile("Correcting Data And Time");
            form10().updatethetime();
        }
    });
    resumenext([] { colourverdict(true); });
    resumenext([&] {
        if (s.runmode == 1) return;
        s.pressedop = 0;
        s.runmode = 0;
        reseticons();
    });
    resumenext(endreadsession);
}

// Step 13 and 14: a clock at fault, offered for repair on the corrupt data screen. True when
// that screen has taken over.
bool offerdaterepair()
{
    Globals& s = g();
    if (s.datestatus != 1 && s.timestatus != 1) return false;
    const QDateTime now = platform::clock::now();
    const std::string clocks = "Scanner: " + s.scannertime + " " + s.scannerdate + " - PC: " + Format(now, "HH:MM") +
                               " " + Format(now, "DD/MM/YY");
    addtologfile("Error with the date / time on the scanner (" + clocks + ")");
    if (MsgBox("There is a problem with the date / time on the scanner (" + clocks +
                   ")! Would you like to attempt to repair the data from the scanner?",
               vbYesNo + vbQuestion, "Date / Time Problem Detected") != vbYes)
        return false;
    addtologfile("Running Date / Data Correction");
    s.runmode = s.runmode == 1 ? 4 : 5;
    s.corruptid = s.scannerid;
    Form12& repair = form12();
    repair.Label2.setcaption("Corrupt Data List - Scanner " + s.scannerid);
    repair.show();
    repair.repaint();
    repair.setupscreen();
    return true;
}

void showreading()
{
    const Globals& s = g();
    Form16& status = form16();
    if (!status.isVisible()) return;
    const std::string fitter = form10().FitterLabel[1].caption();
    if (fitter == "N/A" || UCase(fitter) == "UNKNOWN") status.ScanData.setcaption(s.scannerid);
    else status.ScanData.setcaption(fitter + " " + s.scannerid);
    status.showstage(status.DownLabel, status.DownData, "000 / " + Format(s.scancount, "000"));
}

}  // namespace

void readdata()
{
    Globals& s = g();
    Int16 linemark;
    try {
        s.scancount = 0;
        clearlist(2);
        form24().setupscreen();

        if (s.scannertype == 1) {
            if (!oplfirstread(linemark)) return;
        } else {
            cspfirstread(linemark);
        }

        colourverdict(true);
        showreading();
        form1().List2.additem("Reading Data From Scanner " + s.scannerid);
        addtologfile("Reading: " + form1().Label3.caption() + " (Type:" + CStr((long long)s.scannertype) + ")");

        const std::string owner = scannerowner(s.scannerid);
        form1().List2.additem("Scanner Belongs To : " + owner);
        addtologfile("Scanner From : " + owner);

        s.outlines[0] = s.scannerid;
        form1().repaint();
        Form6& progress = form6();
        progress.resetballs();
        progress.ScanSource.settext("2");
        progress.TimeCount.settext("0");

        const long count = s.scancount;
        if (count == -1 || count == 0) {
            report("No Items On Scanner");
            nodatatail(true);
            return;
        }
        form1().List2.additem("The Scanner Contains " + CStr((long long)count) + (count == 1 ? " Line" : " Lines"));
        addtologfile("Scanner Lines: " + CStr((long long)count));
        if (count > 1) progress.show();

        if (s.scannertype == 1) opldownload(linemark);
        else cspdownload(linemark);

        QCoreApplication::processEvents();
        progress.hide();
        if (s.runmode < 4) {
            if (s.idstatus == 1 && !repairid()) {
                nodatatail(false);
                return;
            }
            if (offerdaterepair()) return;
        }

        s.deleteallowed = 1;
        colourverdict(false);
        form1().repaint();
        processdata();
    } catch (const ConnectionLost&) {
        resumenext(endreadsession);
        s.pressedop = 0;
        s.runmode = 0;
        reseticons();
        form1().repaint();
        QCoreApplication::processEvents();
        // The messages were meant to name the scanner, but the index into the names is never
        // given a value: the name is always empty.
        static const char* const names[] = {"", "Opticon 972x", "Opticon 2001", "Symbol 1504"};
        Int16 nameindex;
        const std::string name = names[nameindex];
        const std::string at = " scanner, @ line " + CStr((long long)linemark);
        addtologfile("Problem connecting to the " + name + at);
        MsgBox("There is a problem connecting to the " + name + at +
                   "! Please ensure that the scanner is connected, check the cables and try again!",
               vbExclamation, "Problem with Scanner");
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        resumenext(endreadsession);
        s.pressedop = 0;
        s.runmode = 0;
        reseticons();
        form1().repaint();
        QCoreApplication::processEvents();
        const std::string tail =
            CStr((long long)f.number) + " " + f.description + " @ line " + CStr((long long)linemark);
        addtologfile("readdata: Unexpected error! Error : " + tail);
        MsgBox("An unexpected error has occured while attempting to read the data from the scanner! Error : " + tail,
               vbExclamation, "Error While Reading Data");
    }
}
