// Form24: the battery timer screen ("OPL 972x Battery Timer"): polls a docked OPL 972x's
// battery and shows how long it still has to charge, with a 20-minute boost stage after
// 100%. Its checkbattery is also the one battery read of every other screen.
#pragma once

#include <QTime>
#include <QTimer>
#include <QWidget>
#include <memory>

#include "core/controls.h"
#include "runtime/vb.h"

namespace opl {
class Control;
}

class Form24 : public QWidget {
    Q_OBJECT
public:
    explicit Form24(QWidget* parent = nullptr);
    ~Form24() override;

    // Full widths in layout units of the four level bars and of the progress bar.
    static constexpr int barfull = 4335, mainbarfull = 3100, checkbarfull = 2175, statusbarfull = 4785;
    static constexpr int progressleft = 240;   // left edge of the progress bar, Shape1(0)

    // ---- controls ----
    Caption Label2;                     // level, "085%"
    // 1 "Finished", 2 time left, 4 scanner ID, 6 scanner time and date; 0, 3, 5 their headings
    FixedArray<Caption, 0, 6> Label4;
    FixedArray<Shape, 0, 1> BatteryLevel;   // 1 the level bar, 0 its frame
    // The progress bar: 0 the charge stage, 5 the charge time passed, 6 the boost stage,
    // 7 the boost time passed; 1 to 4 the frame around it.
    FixedArray<Shape, 0, 7> Shape1;
    PictureBox Cancel;
    ListBox List1;                      // hidden
    QTimer Timer1;                      // the polls: first after 1000 ms, then every 5000 ms
    QTimer Timer2;                      // minutes of the charge

    // ---- screen state ----
    Int16 pollcount;                    // polls since the last identity read
    Int16 lastlevel = 999;              // level shown last; 999 after a reset
    double origtimecounter = 0;         // highest estimate of this charge, minutes
    double timecounter = 0;             // estimate from the level to 100%, minutes
    Int16 boostcounter;                 // length of the boost stage, 20 once set
    double timeincounter = 0;           // minutes passed in the charge stage
    Int16 boostincounter;               // minutes passed in the boost stage
    Int16 doingboost;                   // 1 while the level is 100
    QTime lastbattime;                  // time of the last level display
    Int16 lasttimecounter;              // the values last drawn
    Int16 lastboostincounter;

    // ---- routines ----
    // Resets the display of this screen and the level bars of the others, and the counters
    // but for boostcounter, lasttimecounter and lastboostincounter.
    void setupscreen();
    // Reads the battery of the OPL 972x: 1 a poll of this screen (with the scanner's clock
    // and ID every 61st poll, and the charge or boost stage), 0 a refresh of the level and
    // bars only. Any failed read resets the display without a message.
    void checkbattery(Int16 whichtype);
    // The main screen's battery caption: opens this screen and starts polling.
    void opentimer();
    // Cancel, "Finished" or the window's close: stops both timers and goes back to the main
    // screen.
    void closetimer();

    void Timer1_Timer();
    void Timer2_Timer();
    void opl_Error(const QString& text);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void readidentity(opl::Control& opl, bool& bad);
    void showlevel();
    void chargestage();
    void booststage();
    void drawstages();
    void batteryfailed(std::unique_ptr<opl::Control>& opl);
};
