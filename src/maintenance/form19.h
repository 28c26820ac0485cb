// Form19: the scanner software update screen ("Scanner Software Update"): reads the versions
// of a docked OPL 972x, compares them with OS\osver.ini, and through the LoadDll control
// loads the operating system, erases the application and loads the new one, showing each
// stage in two rows of nine tiles. All data on the scanner is lost. Reached from the Check
// Scanner screen, or on its own by a "swupdate" start (specialrun), scanner after scanner.
#pragma once

#include <QTimer>
#include <QWidget>
#include <string>

#include "core/controls.h"
#include "platform/loaddll.h"
#include "runtime/vb.h"

class ImageList;

// The tiles of the two progress rows: 1 empty, 3 running, 5 done (2 and 4 are spare
// shades between them).
const ImageList& Tiles();

class Form19 : public QWidget {
    Q_OBJECT
public:
    explicit Form19(QWidget* parent = nullptr);

    // ---- controls ----
    Caption Label1;                      // the notice, "DO NOT REMOVE SCANNER!" in red
    Caption Label3;                      // the caption "Operation Status"
    Caption Label4;                      // the status text
    Caption OSLabel, AppLabel;           // "Scanner OS : ", "Software Ver : " and the versions
    Caption OSOpp, AppOp;                // percent texts of the two rows
    FixedArray<PictureBox, 1, 9> Image1; // operating system tiles
    FixedArray<PictureBox, 1, 9> Image2; // application tiles
    QTimer Timer1;                       // counts tickcount for pause
    loaddll::LoadDll LoadDll1;

    // ---- screen state ----
    Int16 stage;             // 0 versions, 1 operating system load, 2 application load, 3 erase
    Int16 secondpass;        // 1 once the operating system load writes into the scanner
    Int16 statuscode, progress;
    std::string statustext;  // as the last LoadDll1 event gave them
    Int16 laststatus, lastprogress;
    std::string lasttext;    // what was last shown
    FixedArray<Int16, 1, 9> tiles;
    Int16 loados, loadapp;   // 1: that part is to be loaded
    Int16 tickcount;
    Int16 filesmissing;      // specialrun: 0 first run, 1 key files missing, 2 dealt with
    bool standalone = false; // set by specialrun: every way out leaves the program
    int tickinterval = 1000; // Timer1's interval in ms (tests shorten it)

    // ---- routines ----
    // Clears the stage, the status and the tiles, puts the notice back, every tile empty.
    void setupscreen();
    // The whole update of the docked scanner, from its versions to "Upload Complete".
    void uploadsoftware();
    // The stand-alone run of a "swupdate" start: fresh files from the web if wanted, then
    // scanner after scanner until Cancel, which ends the program.
    void specialrun();
    // The three operations on the scanner at the port of the OPL 972x.
    void loadOS();
    void eraseApp();
    void loadApp();
    // Lets events run until the status code is a failure (1 to 999) or `code`, showing what
    // changes. No time limit: the loader ends a silent scanner's operation with a failure.
    void await(int code);
    // About three seconds of Timer1 ticks, events running.
    void pause();
    // Shows the latest status: text, percent and tiles.
    void updatedetails();
    // LoadDll1's event: only keeps what it is given.
    void LoadDll1_Status(int progressvalue, int code, const QString& text);

protected:
    // The screen offers no way out while it works: closing the window does nothing.
    void closeEvent(class QCloseEvent* event) override;

private:
    void runloaddll(const char* file);
    void cleartiles();
    // Waits until tickcount passes `ticks`.
    void waitticks(int ticks);
    // The ways back: to the Check Scanner screen (with or without its firstcall), or in a
    // stand-alone run out of the program.
    void leave(bool firstcall);
    void quit();
    void faulted(int line, const std::exception& e);
    bool again = false;      // a stand-alone run goes on with the next scanner
};

Form19& form19();
