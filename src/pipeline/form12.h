// Form12: the corrupt data screen, where the lines of a scanner whose clock was wrong are
// shown and shifted before they are saved.
//
// The screen measures how far the scanner's clock is from the PC's in whole days and left-
// over minutes, shifts the review lines that lie more than 30 days ahead of today, and lets
// the user double click the line where the bad stretch begins to shift it and every line
// below it. The shifts act on reviewlines in place; there is no undo, and a second shift
// of a line moves it again.
#pragma once

#include <QTimer>
#include <QWidget>

#include "core/controls.h"
#include "runtime/vb.h"

class Form12 : public QWidget {
    Q_OBJECT
public:
    explicit Form12(QWidget* parent = nullptr);

    ListBox List1;       // the lines under repair
    Caption Label2;      // "Corrupt Data List - Scanner " and the ID
    Caption Label1;      // "Scan Date / Time"
    Caption Label3;      // the scanner's clock, "HHMM DDMMYY"
    Caption Label6;      // "Real Date / Time"
    Caption Label5;      // the PC's clock, "HHMM DDMMYY"
    PictureBox Delete;   // accept
    Caption Label4;      // "Accept"
    PictureBox Cancel;
    Caption Label7;      // "Cancel"
    QTimer Timer1;       // counts ticks for the pauses that show the work

    // Reads the scanner again for the review lines, measures the shift and runs the
    // automatic pass.
    void setupscreen();
    // List1 from reviewlines[1..scancount]; an entry whose text cannot be built (every
    // "Invalid" one) is left out, so the list can be shorter than scancount.
    void refillist();
    // Shifts the lines from `start` (an index from 1) to the line total; 0 is the automatic
    // pass, which shifts only lines more than 30 days ahead of the PC's date.
    void runconv(Int16& start);
    // Accept: the shifted lines are processed, saved, cleared from the scanner, and the
    // scanner's clock is set. Refused while setupscreen is still reading the scanner.
    void selectaccept();
    // Cancel or the window's close: nothing is saved and the scanner keeps its data.
    void Cancel_Click();
    void List1_DblClick();

    // The module values, readable for the status of a repair.
    Int16 daysshift() const { return daysshift_; }
    Int32 minuteshift() const { return minuteshift_; }
    Int16 shiftsign() const { return shiftsign_; }
    Int16 linetotal() const { return linetotal_; }

protected:
    void closeEvent(class QCloseEvent* event) override;

private:
    // readdata with Accept greyed until it returns.
    void readscanner();
    // Lets the interface run until Timer1 has ticked more than `ticks` times.
    void pause(int ticks);

    Int16 daysshift_;
    Int32 minuteshift_;
    Int16 shiftsign_;
    Int16 linetotal_;
    Int16 tickcount_;
    Int16 autohit_;
    Int16 conversionrun_;
    // The screen's own read of the scanner is under way: Accept is greyed and refused, since
    // the clear it leads to would take the scanner's control from under the read's wait.
    bool reading_ = false;
};
