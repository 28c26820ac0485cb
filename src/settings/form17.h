// Form17: the system check screen, which shows the result of the store check, the port
// check of each scanner and the engineer list check, with a light for each.
#pragma once

#include <QWidget>
#include <string>

#include "core/controls.h"
#include "runtime/vb.h"

// Made on first use; from then on the port check shows its rows here and on the setup
// screen.
class Form17 : public QWidget {
    Q_OBJECT
public:
    explicit Form17(QWidget* parent = nullptr);

    // Runs the store check and the port check in a row; each writes its own result into
    // the screen.
    void runtests();
    // The store check's result: StoreStatus, the picture Status(0), and Label1 in ColorBox
    // 4 when good or 2 when not.
    void showstore(bool good, const std::string& text);
    // Hides the screen and returns by callerof[17]: 1 to the main screen (with a fresh file
    // list and the button state cleared), 2 to the setup screen.
    void closescreen();

    // ---- store ----
    Caption Label1;                         // "Store Location"
    Caption StoreStatus;
    // ---- scanners, 1 OPL 972x, 2 OPN 2001, 3 CS 1504 ----
    Caption Label3;                         // "Scanner Ports"
    FixedArray<Caption, 1, 3> Scanner;
    FixedArray<Caption, 1, 3> ScanPort;
    FixedArray<Caption, 1, 3> ScanStatus;
    // ---- engineer list ----
    Caption Label5;                         // "Engineer Data"
    Caption FitterStatus;
    // Lights: 0 store, 1 scanners, 2 engineer list.
    FixedArray<PictureBox, 0, 2> Status;
    // ---- buttons ----
    PictureBox Undo, Cancel;
    Caption UndoLabel, CancelLabel;         // "Retest", "Close"

protected:
    void closeEvent(class QCloseEvent* event) override;
};

Form17& form17();
