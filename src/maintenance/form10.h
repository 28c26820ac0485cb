// Form10: the Check Scanner screen ("Scanner Information"): reads a docked scanner's clock
// and ID, judges them against the PC and the engineer list in coloured boxes, and offers to
// set the scanner's date and time, to give it a new ID and, for the OPL 972x, to load new
// software. The setup screen's scanner test runs its reading with the screen hidden.
#pragma once

#include <QTimer>
#include <QWidget>
#include <memory>

#include "core/controls.h"
#include "runtime/vb.h"

namespace opl {
class Control;
}

class Form10 : public QWidget {
    Q_OBJECT
public:
    explicit Form10(QWidget* parent = nullptr);
    ~Form10() override;

    static constexpr int barfull = 2175;   // full width of the level bar, layout units

    // ---- controls ----
    Shape STypeB;                       // scanner type box
    Caption STypeL;
    FixedArray<Caption, 0, 1> BatLabel; // 0 "Batt: 085%"; 1 the caption over the level bar
    Shape BatteryLevel;                 // the level bar
    Shape DateTitleBox, TimeTitleBox, IDTitleBox, FitterTitleBox;
    Caption DateTitleLabel, TimeTitleLabel, IDTitleLabel, FitterTitleLabel;
    Shape DateBox, TimeBox, IDBox, FitterBox;
    Caption DateLabel, TimeLabel;       // "DD/MM/YY", "HH:MM"
    FixedArray<Caption, 1, 1> IDLabel;      // the ID as read, "000"
    FixedArray<Caption, 1, 1> FitterLabel;  // the engineer, "Unknown" or "N/A"
    PictureBox UpdateTime, UpdateID, UploadSW;
    Caption TimeUpdate, IDUpdate, SWUpload;
    Shape UploadBox;
    FixedArray<Caption, 0, 1> Label4;   // 0 "Refresh", 1 "Finish"
    PictureBox Image2;                  // close
    TextBox Text2;                      // hidden: "1" while the setup screen's test reads
    QTimer Timer1;                      // started after a reading; its tick does nothing
    QTimer Timer2;                      // counts the wait after a clock write

    // ---- screen state ----
    Int16 tickcount;                    // ticks of Timer2
    bool updaterunning = false;         // refresh clicks do nothing while set
    bool closing = false;               // set by cancelclose; startfunction does nothing

    // ---- routines ----
    // Resets the display for scannertype: type caption, red type box, boxes hidden and the
    // repairs off; for the OPL 972x the battery level is read.
    void setupscreen();
    // Clears the marks and oplerror, probes for the scanner and reads it if it answered.
    void firstcall();
    // The presence probe: the line count of an OPL 972x, an interrogation of the others.
    // oplerror becomes 1 when no scanner answers.
    void startfunction();
    // Reads the clock and the ID, judges them and reports to this screen and the setup
    // screen's row of the scanner.
    void gettingscannerdata();
    // Writes the PC's date and time to the scanner, reads the clock back and judges it again.
    void updatethetime();
    // Writes the ID chosen on the select new scanner ID screen, reads it back and judges it.
    void updatescannerID();
    // After the checks, hands the OPL 972x over to the software update screen, which comes
    // back here when it is done.
    void uploadsoftware();
    // Leaves the screen for whoever opened it (callerof[10]: 2 the setup screen, otherwise
    // the main screen).
    void cancelclose();

    // ---- events ----
    void BatLabel_Click();
    void Label4_Click(int index);
    void UpdateTime_Click();
    void TimeUpdate_Click();
    void UpdateID_Click();
    // The select new scanner ID screen has hidden with the new ID: back on this screen when
    // it was opened from here (callerof[14] 10), and the ID goes to the scanner.
    void idchosen();
    void opl_Error(const QString& text);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // A routine's own control for its session, with this screen's error handler, on the OPL
    // 972x's port; the port is opened unless another routine holds it open.
    std::unique_ptr<opl::Control> openopl();
    // Closes the port if this session opened it, and releases the control.
    void closeopl(std::unique_ptr<opl::Control>& opl);
    void refresh(bool secondprobe);
    QList<QWidget*> verdictcontrols();
};
