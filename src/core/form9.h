// Form9: the monitor form ("VEXAL Scanner Interface"), the program's main object, never
// shown. It owns the timers that drive the program and the tray menu.
#pragma once

#include <QAction>
#include <QTimer>
#include <QWidget>

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

    QAction mnuTransfer;        // tray menu "&Transfer Batch"
};

Form9& form9();
// A timer's interval as the screens set it: 0 stops the timer, any other value sets the
// interval and starts it if it was stopped.
void setinterval(QTimer& timer, int ms);
