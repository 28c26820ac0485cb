// Form20: transfer of local data to the server ("Transfer Local Data To Server").
//
// BAR files held on the PC (Batch Update mode, or Direct mode during an outage) are merged
// into the store's set without losing a line: both sides are backed up into
// C:\TARNBC\INITEMP\BACKUPS, the store's BAR*.<TNO> files are copied down into
// C:\TARNBC\INITEMP, the local lines are merged into them there key by key, and the result
// goes back to the share in one copy. When that copy fails the screen keeps asking until the
// server takes the data; only a clean copy lets the work folder go.
#pragma once

#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <string>

#include "core/controls.h"
#include "runtime/fault.h"
#include "runtime/vb.h"

class Form20 : public QWidget {
    Q_OBJECT
public:
    explicit Form20(QWidget* parent = nullptr);

    // Captions by the save mode and terminal number; both file lists emptied, Transfer dim.
    void setupscreen();
    // The store check, then the lists with their backups and the copy down.
    void startup();
    // mode 1 backs up and copies the store's files down before listing; mode 0 only lists
    // what is in place.
    void filllists(int16_t mode);
    // The button Transfer and its caption: the merge, the copy back, and the restore or the
    // tidy-up after it.
    void runtransfer();
    // CloseScreen, its caption and the window's close: back to whoever opened the screen.
    void closescreen();
    // One step of the arrow animation.
    void Timer1_Timer();

    ListBox List1;                          // local files
    ListBox List2;                          // server files
    ListBox List3;                          // the running operation
    Caption Label1;                         // caption of List2: "Server Files For <TNO>"
    Caption Label2;                         // caption of List1
    PictureBox Transfer, Setup, CloseScreen;
    Caption Label3, Label4, Label5;         // "Transfer Data", "Goto Setup", "Exit Screen"
    QTimer Timer1;
    FixedArray<Shape, 0, 9> Tran;           // the arrows from the local to the server frame
    FixedArray<Shape, 0, 1> ListFileBox;    // frames: 0 local, 1 server

    // Module state.
    Int16 localready;    // 1 once the local list shows a file with lines
    Int16 serverready;   // 1 once the server side was copied and listed
    Int16 animstep;      // position of the animation

    // True from the start of a transfer until it has ended (completed, failed or restored).
    bool transferring() const { return busy_; }

protected:
    void closeEvent(class QCloseEvent* event) override;

private:
    void addstep(const std::string& text);   // a row of List3, selected
    void setbuttons(bool on);                // Setup and CloseScreen with their captions
    void settransfer(bool on);               // Transfer lit and its caption, or dim and hidden
    void animate();                          // the arrows for one file, paced by Timer1
    void mergefile(long i, long& servercount);
    bool copyback();
    void restoredata(const Fault& failure);
    bool busy_ = false;
    int marker_ = 0;   // position marker of runtransfer, for its failure texts
};

Form20& form20();

// The opening of the transfer screen shared by the outstanding list's double click, the
// tray's Transfer Batch and the exit with data held locally (callerof[20] set by the
// caller): List3 cleared, setupscreen, events run, the main screen hidden, the transfer
// screen shown and refreshed, its startup. While a transfer runs it only brings the screen
// forward.
void opentransferscreen();
