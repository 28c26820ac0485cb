// readdata's parts for the OPL 972x: the first read through the main screen's control, and
// the download into the raw file.
#include <QCoreApplication>

#include "core/globals.h"
#include "core/logs.h"
#include "core/readdelay.h"
#include "maintenance/form24.h"
#include "maintenance/scannertests.h"
#include "maintenance/screens.h"
#include "pipeline/form1.h"
#include "pipeline/formats.h"
#include "pipeline/mainopl.h"
#include "pipeline/readsteps.h"
#include "pipeline/reseticons.h"
#include "pipeline/screens.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/opl.h"

namespace {

void settle()
{
    QCoreApplication::processEvents();
    waitreaddelay();
}

// An ID that cannot be used: the read ends here, with the buttons back.
void refuseid()
{
    endreadsession();
    g().pressedop = 0;
    g().runmode = 0;
    reseticons();
    form1().repaint();
}

// The judgement of the ID as read; false when the read must stop.
bool acceptid()
{
    Globals& s = g();
    const std::string id = s.scannerid;
    switch ((int)s.idstatus) {
    case 1:
        MsgBox("The scanner ID of '" + id +
                   "' is not valid! Scanner ID's must be all numbers! Please go to the 'Check Scanner' screen and set "
                   "the scanner with an ID before downloading this data.",
               vbExclamation, "Unconfigured Scanner ID");
        refuseid();
        return false;
    case 2:
        if (MsgBox("The scanner ID has read as " + id +
                       ", but scanner ID's are normally only 3 digits. This may have just have been an error when "
                       "reading the scanner ID. If the scanner ID should be '" +
                       Right(id, 3) +
                       "' and you would like to proceed with that then click 'OK' otherwise click 'CANCEL' in order "
                       "to go and fix the ID from the 'Check Scanner' screen before processing the data.",
                   vbOKCancel + vbInformation, "Scanner ID Incorrect length") == vbOK) {
            s.idstatus = 4;
            s.scannerid = Right(id, 3);
            return true;
        }
        refuseid();
        return false;
    case 3:
        MsgBox("The scanner ID of '" + id +
                   "' is not valid! This ID indicates an unprogrammed scanner! Please go to the 'Check Scanner' "
                   "screen and set the scanner with an ID before downloading this data.",
               vbExclamation, "Unconfigured Scanner ID");
        refuseid();
        return false;
    default:
        return true;
    }
}

}  // namespace

bool oplfirstread(Int16& linemark)
{
    Globals& s = g();
    opl::Control& opl = openmainopl();
    const std::string clock = opl.readclock();
    linemark = 1;
    settle();
    if (clock.empty() || s.oplerror == 1) throw ConnectionLost();
    s.scannerclock = clock;
    testthedate();
    linemark = 2;

    const int16_t id = opl.readid();
    settle();
    if (s.oplerror == 1) throw ConnectionLost();
    s.scannerid = Format((long long)id, "000");
    s.lastscannerid = s.scannerid;
    linemark = 3;
    testtheID();
    if (!acceptid()) return false;

    linemark = 31;
    form24().checkbattery(0);
    linemark = 32;
    QCoreApplication::processEvents();
    linemark = 33;
    s.scancount = opl.readlinecount();
    settle();
    linemark = 34;
    if (s.oplerror == 1) throw ConnectionLost();

    // With no lines the port is left as the state says (opened here); the release below
    // closes it all the same, and the clean-up at the end finds no control to close.
    if (s.scancount > 0 && s.oplportstate == 1) {
        opl.closeport();
        s.oplportstate = 0;
    }
    mainopl().reset();

    linemark = 4;
    if (s.batterylevel < 50)
        MsgBox("The battery level on this scanner is currently on " + CStr((long long)s.batterylevel) +
                   "%. Unless it is being allowed to drop to maintain the battery it is recommended that you "
                   "recharge this scanner shortly!",
               vbInformation, "Low Battery Level");
    return true;
}

void opldownload(Int16& linemark)
{
    Globals& s = g();
    linemark = 13;
    const std::string number = formats::idnumber(s.scannerid);
    const std::string target = formats::rawfile(s.scannerid);
    // The download replaces the file; only the log says so.
    if (UCase(files::Dir(target)) == UCase("temp_" + number + ".txt"))
        addtologfile("Killing existing temp file c:\\tarnbc\\temp_" + number + ".txt");

    opl::Control& opl = openmainopl();
    opl.settarget(target);
    s.opldone = 0;
    opl.startdownload();
    settle();
    // Only the complete event ends the wait; a download that fails keeps the program here.
    while (s.opldone != 1) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    closemainopl();

    if (!files::isfolder(formats::backupfolder)) files::makefolder(formats::backupfolder);
    const std::string backup = formats::backupfile(s.scannerid, platform::clock::now());
    files::copyfile(target, backup);
    // On the disk before anything can clear the scanner.
    files::flush(backup, true);
}
