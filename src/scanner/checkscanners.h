// checkscanners: the port check of every scanner in use, run at start-up and before the
// setup screen. Its verdict goes to portstatus[0..3] of the shared block and to the screens
// that show it.
#pragma once

#include <string>

// One scanner's row of the verdict.
struct ScannerRow {
    bool used = false;
    bool missing = false;      // used, and its port does not exist
    std::string port;          // ScanPort(i) caption: "COM" + port, or "N/A"
    std::string status;        // ScanStatus(i) caption
    int captioncolour = 6;     // ColorBox index of the ScanPort(i) and Scanner(i) captions
    int scanbox = 2;           // ColorBox index of the setup screen's ScanBox(i)
    int portbox = 2;           // and of its PortBox(i)
};

// The verdict for scanners 1 to 3 (element 0 unused), testing each used scanner's port.
struct ScannerCheck {
    ScannerRow rows[4];
    bool anyused = false;
    bool anymissing = false;
};
ScannerCheck judgescanners();

// Runs the check and shows it: the "System Check" busy box, the rows of the system check
// screen, the port boxes of the setup screen and the main screen's Check button.
void checkscanners();
