// checkscanners: the port check of every scanner in use, run at start-up and before the
// setup screen. Its verdict goes to portstatus[0..3] of the shared block and to the screens
// that show it.
#pragma once

#include <functional>
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

// Where the verdict is shown. The screens that carry these controls fill in their parts when
// they are made (the "System Check" busy box Form11, the system check screen Form17, the
// setup screen Form2, the main screen Form1); a part left empty is not shown.
struct CheckScannersDisplay {
    // Form11: Label1 caption and the MiscIcons image of its picture; show, refresh.
    std::function<void(const std::string& caption, int image)> showbusy;
    std::function<void()> hidebusy;
    // Form17 ScanPort(i), ScanStatus(i), Scanner(i); Form2 ScanBox(i), PortBox(i).
    std::function<void(int i, const ScannerRow& row)> showrow;
    // Form1: the Check picture (ColorIcons 6, or GreyIcons 6 when `enabled` is false),
    // Check and CheckLabel enabled, CheckSubLabel shown when not.
    std::function<void(bool enabled)> checkbutton;
    // Form17: Status(1) image of ColorIcons (1 fault, 2 good) and Label3's ColorBox index.
    std::function<void(int image, int label3colour)> statuslight;
};
CheckScannersDisplay& checkscannersdisplay();

void checkscanners();
