// Form9: the monitor form ("VEXAL Scanner Interface"), the program's main object, never
// shown. It owns the timers that drive the program, the tray icon's owner and menu, and the
// icon the tray shows.
#pragma once

#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QTimer>
#include <QWidget>
#include <string>

#include "platform/mail.h"

class Form9 : public QWidget {
    Q_OBJECT
public:
    explicit Form9(QWidget* parent = nullptr);

    QTimer Timer1;              // tray icon and Status picture in line with the state
    QTimer Timer2;              // polls the scanners on automatic download
    QTimer Timer3;              // the OPL 972x cradle watch
    QTimer Timer4;              // waits for the flag file of a second start
    QTimer ImportCheckTimer;    // looks for mailed-in files
    QTimer ReadDelayTimer;      // counts the read delay

    // The tray's popup menu mnuPopup, in order: mnuMain, mnuSetup, a line, mnuTransfer, a
    // line, mnuDisplay, a line, mnuExit.
    QMenu mnuPopup;
    QAction mnuMain;            // "Open &Main"
    QAction mnuSetup;           // "&Setup"
    QAction mnuTransfer;        // tray menu "&Transfer Batch"
    QAction mnuDisplay;         // "&Display Size"
    QAction mnuExit;            // "Exit"

    // The mail controls: data mails to head office and support mails.
    MAPISession MAPISession1;
    MAPIMessages MAPIMessages1;

    // The picture box that receives the tray icon's mouse messages.
    QWidget picHook;

    // Hidden text boxes: "1" once the splash screen is done; the tray icon's animation steps.
    std::string splashdone = "0";
    std::string iconm1 = "0";
    std::string iconm2 = "0";

    // The form's icon: a picture from the install folder (as "icons\vexalgrey.ico"), 16 by
    // 16. The tray takes it at its next update (updateicon).
    void seticon(const std::string& iconpath);
    const std::string& iconpath() const { return iconpath_; }

private:
    std::string iconpath_;
};

Form9& form9();
// A timer's interval as the screens set it: 0 stops the timer, any other value sets the
// interval and starts it if it was stopped.
void setinterval(QTimer& timer, int ms);
