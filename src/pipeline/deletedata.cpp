#include "pipeline/deletedata.h"

#include "core/colorbox.h"
#include "core/globals.h"
#include "core/logs.h"
#include "core/readdelay.h"
#include "maintenance/form24.h"
#include "maintenance/scannertests.h"
#include "maintenance/screens.h"
#include "pipeline/form1.h"
#include "pipeline/mainopl.h"
#include "pipeline/reseticons.h"
#include "pipeline/resumenext.h"
#include "pipeline/screens.h"
#include "platform/csp2.h"
#include "platform/dialogs.h"
#include "platform/opl.h"

namespace {

void report(const std::string& text)
{
    form1().List2.additem(text);
    addtologfile(text);
}

void release()
{
    g().runmode = 0;
    g().pressedop = 0;
    reseticons();
}

// Empties the scanner.
void clearscanner()
{
    Globals& s = g();
    if (s.scannertype == 1) {
        openmainopl().cleardata();
        waitreaddelay();
        closemainopl();
        return;
    }
    csp2Init(s.scannerport[s.scannertype] - 1);
    csp2ClearData();
    csp2Restore();
}

// The OPL 972x read before a clear: clock, ID, and the line count into `count`. False when
// the delete must stop: a control error (`aborted` stays false) or, after a save, a
// different scanner in the cradle (`aborted` set).
bool readopl(Int16 deltype, long& count, bool& aborted)
{
    Globals& s = g();
    opl::Control& opl = openmainopl();
    const std::string clock = opl.readclock();
    waitreaddelay();
    if (s.oplerror == 1) {
        closemainopl();
        return false;
    }
    s.scannerclock = clock;
    testthedate();

    const int16_t id = opl.readid();
    waitreaddelay();
    if (s.oplerror == 1) {
        closemainopl();
        return false;
    }
    s.scannerid = Format((long long)id, "000");
    testtheID();

    if (deltype == 1 && s.corruptid != s.scannerid) {
        MsgBox("ERROR: The delete command was intended for scanner '" + s.corruptid +
                   "', but the scanner currently in the cradle is '" + s.scannerid +
                   "'! The delete has been aborted to protect your data. If you think that this might have been "
                   "stopped in error then please delete the data from the scanner manually!",
               vbExclamation, "Mismatch Of Scanner IDs");
        closemainopl();
        release();
        form1().repaint();
        aborted = true;
        return false;
    }
    if (deltype == 0) form24().checkbattery(0);

    count = mainopl()->readlinecount();
    waitreaddelay();
    if (s.oplerror == 1) {
        closemainopl();
        return false;
    }
    closemainopl();
    if (deltype == 0 && s.batterylevel < 50)
        MsgBox("The battery level on this scanner is currently on " + CStr((long long)s.batterylevel) +
                   "%. Unless it is being allowed to drop to maintain the battery it is recommended that you "
                   "recharge this scanner shortly!",
               vbInformation, "Low Battery Level");
    return true;
}

// The OPN 2001 and CS 1504 read before a clear: the count, the clock and the ID as it
// stands in its first six characters. No check of the ID against the saved one.
long readcsp(std::string& idtext)
{
    Globals& s = g();
    csp2Restore();
    csp2Init(s.scannerport[s.scannertype] - 1);
    const long count = csp2ReadData();
    csp2GetASCIIMode();
    readcspclock();
    testthedate();
    std::string id(32, ' ');
    csp2GetParam(38, id.data(), (int32_t)id.size());
    idtext = Left(id, 6);
    s.scannerid = idtext;
    testtheID();
    csp2Restore();
    return count;
}

// The user's delete after the read: the counts, the question and the clear.
void userdelete(long count, const std::string& idtext)
{
    report("Reading Data From Scanner " + idtext);
    const std::string counttext = CStr((long long)count) + (count == 1 ? " Line" : " Lines");
    if (count == 0 || count == -1) {
        report("The Scanner Contains No History To Delete!");
        return;
    }
    report("The Scanner Contains " + counttext);
    if (MsgBox("Are You SURE That You Want To Clear The " + counttext +
                   " Of Data From The Device Currently Connected?",
               vbYesNo + vbQuestion, "Confirm Clearing Of Data") == vbNo)
        return;
    clearscanner();
    report(counttext + " Cleared From The Device");
}

}  // namespace

void deletedata(Int16 deltype)
{
    Globals& s = g();
    try {
        addtologfile("Delete type " + CStr((long long)deltype) + " selected");
        if (!(deltype == 1 && s.scannertype == 1)) {
            clearlist(2);
            form24().setupscreen();
        }

        // The ID text the OPN 2001 or CS 1504 read; the OPL 972x leaves it blank.
        std::string idtext;
        long count = 0;
        bool readok = true;
        if (s.scannertype == 1) {
            bool aborted = false;
            readok = readopl(deltype, count, aborted);
            if (aborted) return;
        } else {
            count = readcsp(idtext);
        }

        if (readok) {
            const bool fault = s.datestatus == 1 || s.timestatus == 1 || s.idstatus == 1;
            form1().Label3.setforecolor(colorbox(fault ? 2 : 13));
            if (deltype == 0) {
                userdelete(count, idtext);
            } else if (deltype == 1) {
                clearscanner();
                report("Data Cleared From The Scanner");
            }
        }

        if (s.scannertype > 1) csp2Restore();
        if (s.runmode != 1) release();
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        resumenext(closepipelinesession);
        release();
        form1().repaint();
        const std::string tail = CStr((long long)f.number) + " " + f.description;
        MsgBox("An unexpected error had occured while attempting to delete the data from the scanner! Error : " + tail,
               vbExclamation, "Error While Deleting Data");
        addtologfile("deletedata: Unexpected error. Error : " + tail);
    }
}
