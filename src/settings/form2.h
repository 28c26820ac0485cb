// Form2: the setup screen, where scanners, the data destination and the engineer list
// source are chosen; its controls are the working copy of the settings file.
#pragma once

#include <QGroupBox>
#include <QWidget>
#include <string>

#include "core/controls.h"
#include "runtime/vb.h"

// The PC's own IPv4 address, which the setup screen's server guess starts from.
struct LocalAddress {
    // The first non-loopback IPv4 address of this machine, "127.0.0.1" when there is none.
    std::string LocalIP() const;
    // Test seam: LocalIP() answers `address` from now on; "" goes back to the machine's own.
    void setaddress(const std::string& address) { fixed = address; }

private:
    std::string fixed;
};

class Form2 : public QWidget {
    Q_OBJECT
public:
    explicit Form2(QWidget* parent = nullptr);

    // ---- scanners, one row each: 1 OPL 972x, 2 OPN 2001, 3 CS 1504 ----
    FixedArray<PictureBox, 1, 3> SType;        // use this type
    FixedArray<Caption, 1, 3> STypeL;
    FixedArray<Shape, 1, 3> STypeB;
    FixedArray<ComboBox, 1, 3> SPorts;         // port list
    FixedArray<Caption, 1, 3> Port;
    FixedArray<Shape, 1, 3> PortBox;           // port status
    FixedArray<Caption, 1, 3> ScanLabel;       // "Scan For Port"
    FixedArray<Shape, 1, 3> ScanBox;
    FixedArray<Caption, 1, 3> TestLabel;       // "Test"
    FixedArray<Shape, 1, 3> TestBox;
    FixedArray<Caption, 1, 3> TestResult;      // the test's result; opens the scanner screen
    FixedArray<Shape, 1, 3> ResultBox;
    FixedArray<Caption, 1, 3> LAuto;           // automatic download "Yes" / "No"
    FixedArray<PictureBox, 1, 3> SAuto;
    FixedArray<Shape, 1, 3> BAuto;
    FixedArray<Caption, 1, 3> TimeUpdateLabel; // "Time Adj : Off" / "Adv" / "On"
    FixedArray<Shape, 1, 3> TimeUpdateBox;
    Caption Label3;                            // "Click to test all"
    Caption CheckSubLabel;                     // "Click to rescan for ports"

    // ---- file download location ----
    FixedArray<PictureBox, 1, 2> FileDown;     // 1 Local, 2 Server
    FixedArray<Caption, 1, 3> FileDownLabel;   // Local, Server, the sub-mode
    TextBox ServerIP;                          // server address, or e-mail address
    Caption Label2;                            // its caption
    FixedArray<PictureBox, 0, 0> ServerTest;   // the store test, or the test mail
    TextBox TarnTNO;                           // terminal number
    Caption Label1;

    // ---- engineer information ----
    FixedArray<PictureBox, 1, 2> FitterInfo;   // 1 Local, 2 Server
    FixedArray<Caption, 1, 3> FitterInfoLabel;
    Shape FitterInfoBox;
    PictureBox FitterList;                     // opens the engineer list

    // Status frames and captions by number: Shape1(1) terminal number, Shape1(7) server,
    // Shape1(10) engineer list; Label4(9) engineer list, Label4(14) rescan, Label4(15)
    // test all.
    FixedArray<Shape, 0, 15> Shape1;
    FixedArray<Caption, 0, 15> Label4;
    FixedArray<QGroupBox, 1, 3> Frame;         // Frame1 scanners, Frame2 location, Frame3 engineers

    // ---- the buttons: a picture and its caption ----
    FixedArray<PictureBox, 0, 0> Update, Undo, Cancel, Help;
    FixedArray<Caption, 0, 0> UpdateLabel, UndoLabel, CancelLabel, HelpLabel;

    // ---- hidden: the last saved values, the PC's own address (the head office address is
    // the HOEmail box of the company information screen) ----
    FixedArray<TextBox, 1, 3> BPort;
    TextBox BIP;
    TextBox BTNO;
    LocalAddress Winsock1;

    // Module state of the screen.
    Int16 changingtype;                        // 1 while the location or engineer source changes
    FixedArray<Int16, 1, 3> portfault;         // port faults found by the port check

signals:
    // Raised when the screen is closed by its window frame (the Cancel flow handles it).
    void closing();
    // The user chose to leave the program before the first setup was saved; the monitor
    // form ends the program (fullexit).
    void exitprogram();

protected:
    void closeEvent(class QCloseEvent* event) override;

private:
    // Connects the controls' clicks and focus changes to the setup routines.
    void wireevents();
};

Form2& form2();
