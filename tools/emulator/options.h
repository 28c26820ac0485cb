// The emulator's command line.
#pragma once

#include <string>

struct Options {
    enum Type { opl, opn, cs1504 };
    Type type = opn;
    std::string link;             // where the port's path is linked
    long id = 1;
    bool idgiven = false;
    double clockoffset = 0;       // minutes, scanner clock minus the PC's
    int battery = 100;
    std::string records;          // file of stored records
    long baud = 0;                // 0: the device's own line rate
    std::string state;            // file that keeps the scanner's memory
    std::string swversion;        // CSP software version (8 characters)
    std::string osversion = "OS1.20";   // OPL versions
    std::string appversion = "VX2.05";
    std::string replyhead = "status";   // CSP: status or echo
    bool extendedlength = true;   // CSP: string lengths count all 8 bits; off: the low 5
    long sleepafter = 0;          // CSP: ms idle before the scanner sleeps; 0 never
    std::string wake = "dtr";     // CSP: what wakes it: the DTR edge, or any bytes (lost)
    int systemstatus = 0;         // CSP: the system status of the interrogate reply

    // Faults.
    bool noanswer = false;
    long vanishrecords = -1;      // disappear after this many records of a download
    long vanishbytes = -1;        // disappear after this many bytes sent
    bool refuseclock = false;
    bool refuseid = false;
    bool refuseload = false;      // opl: a software load is refused at its start
    std::string garbage;          // command name (or "all") answered with garbage
    std::string badcrc;           // command name (or "all") answered with a bad CRC
    std::string batterytext;      // opl: the battery answer as it stands, instead of the level
    std::string refuse;           // CSP: command name (or "all") answered with refusestatus
    int refusestatus = 0;
};

// Reads the command line. On --help prints the text and exits 0; on a bad option prints the
// reason and exits 2.
Options parseoptions(int argc, char** argv);

// Names of the commands for --garbage and --bad-crc, by device type.
const char* commandnames(Options::Type type);
