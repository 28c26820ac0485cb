// The one shared block of settings and state that every screen and routine works on.
// TAGSTORE.INI is the truth; the settings here are working copies of it.
#pragma once

#include <string>

#include "runtime/vb.h"

struct Globals {
    // ---- set at start ----------------------------------------------------------------
    std::string homedir;        // install folder, with a trailing backslash
    std::string commandline;    // the program's command line ("startup", "swupdate...")
    std::string datecheck;      // date of this start, "DDMMYYYY"
    Int16 progcount;

    // ---- settings block (TAGSTORE.INI) -----------------------------------------------
    // Scanner index 1 OPL 972x (section 9725), 2 OPN 2001 (1234), 3 CS 1504 (1504).
    FixedArray<Int16, 1, 3> scannerused;
    FixedArray<Int16, 1, 3> scannerport;
    FixedArray<Int16, 1, 3> scannerauto;
    FixedArray<Int16, 1, 3> scannerautotime;
    Int16 savetype;      // 0 Local, 1 Direct, 2 Batch Update, 3 Email
    Int16 fittertype;    // 0 Local, 1 Direct, 2 PC Copy
    std::string serverip;
    std::string terminalno;
    std::string chkrogue;   // "1": look for rogue files; kept as the text stored
    Int16 timemargin;
    Int16 firstrun;
    Int16 displaytype;
    Int16 readdelay;

    // ---- operation state --------------------------------------------------------------
    Int16 runmode;          // 0 idle, 1 transfer, 2 read or delete, 4/5 under repair
    Int16 pressedop;        // 0 none, 1 tool screen, 2 check scanner screen, 3 action
    Int16 automaticactive;
    Int16 oplportstate;     // 0 closed, 1 opened by the running routine, 2 found open
    FixedArray<Int16, 0, 30> callerof;
    Int16 scannertype;
    Int16 OPN2001waiting;
    Int16 symwaiting;
    Int16 batcheckcount;
    Int16 lastbatterycheck;
    Int16 autoscannerwait;
    Int16 symbolpollstep;
    Int16 testmode;

    // ---- store and engineer state -----------------------------------------------------
    Int16 storestate;       // 0 usable, 1..6 failure kinds
    Int16 storedown;
    std::string lastgoodip;
    Int16 fitterstatus;
    Int16 englinestatus;

    // ---- line tables: the hand-over between reading, processing and saving ---------------
    FixedArray<std::string, 0, 1000> scanlines;
    FixedArray<std::string, 0, 1000> outlines;     // element 0 is the scanner ID
    FixedArray<std::string, 0, 1000> reviewlines;
    Int32 scancount;        // count from the scanner (-1 or 0: none)
    Int16 outcount;         // count of valid lines
    std::string scannerid;
    std::string lastscannerid;

    // ---- scan data pipeline: line processing -----------------------------------------
    Int16 badcount;         // invalid and test lines of the last processdata or processdata2 run

    // ---- scanner access: port status and the OPL 972x session marks -----------------------
    FixedArray<Int16, 0, 3> portstatus;  // [i] 1: port of scanner i missing; [0] overall result
    Int16 oplerror;         // 1 after an error event of the OPL 972x
    Int16 opldone;          // 1 after the download complete event

    // ---- store location checks: the address validation ----------------------------------
    Int16 iperror;          // 0 valid; 1 "0.0.0.0", 2 empty, 3 a dot out of place, 4 a bad octet
    std::string ipnormal;   // the address with its octets as plain integers

    // ---- settings file and engineer list: the scanner test's marks -----------------------
    // Reset at each settings load; the port check of the setup screen keeps the last test's
    // result while the port is unchanged.
    FixedArray<Int16, 1, 3> portlasttested;  // port the scanner was last tested on, 0 none
    FixedArray<Int16, 1, 3> scannertested;   // 1 when that test found the scanner

    // ---- scanner maintenance: the scanner's clock, ID and battery as last read ----------
    std::string scannerclock;                      // OPL 972x clock, "dd/mm/yyyy hh:nn:ss"
    std::string scannerrawclock = std::string(6, '\0');  // CSP2 clock: second, minute, hour,
                                                   // day, month, year, a byte each
    std::string scannerdate;                       // "DDMMYY" as read
    std::string scannertime;                       // "HHMM" as read
    Int16 datestatus;        // 0 good, 1 fault, 2 not yet judged
    Int16 timestatus;        // the same for the time
    Int16 idstatus;          // 0 good, 1 not all digits, 2 too long, 3 unprogrammed,
                             // 4 taken as its last three digits by the user
    Int16 batterylevel;      // OPL 972x battery percent

    // ---- download orchestration: reading, clearing and the main screen's actions ------------
    Int16 deleteallowed;     // 1 when the scanner may be cleared after the save
    std::string corruptid;   // the ID of the scanner whose lines are being saved or repaired

    // ---- data delivery: mailed-in files ------------------------------------------------
    Int16 importbusy;        // 1 while the import or its check runs
    Int16 filesoutstanding;  // read by the start-up before it shows the main screen; nothing
                             // sets it, so it stays 0
};

// The program's shared block.
Globals& g();
// Back to a fresh block (tests).
void resetglobals();
