// frmSplash: the splash screen that stands while the program starts. It shows the version,
// gives the main and setup screens their titles, asks the update web host whether a newer
// issue of the program exists (a reminder the user may put off, a stronger message past 30
// days, or the web updater started), and three seconds later tells the monitor form
// through splashdone that the start-up may go on.
#pragma once

#include <QTimer>
#include <QWidget>
#include <string>

#include "core/controls.h"
#include "runtime/vb.h"

// The build's version and issue date (DDMMYYYY).
inline constexpr const char* programversion = "4.65";
inline constexpr const char* programissue = "21022011";

class frmSplash : public QWidget {
    Q_OBJECT
public:
    explicit frmSplash(QWidget* parent = nullptr);

    Caption lblVersion, lblProductName, lblCompanyProduct, Label1;
    QWidget Frame1;
    QTimer Timer1;

    // The load: version label, titles of the main and setup screens, the update check, then
    // Timer1 at 1000 ms. A fault around the version file is quiet; any other shows the
    // "frmSplash: Load" box. Either way Timer1 runs, so the splash always ends.
    void load();

    Int16 nagcount;   // starts still to pass with no reminder (UPDATE NAG)
    // Each tick counts; after the third the splash is done.
    void timer1tick();
    // A click on the form or Frame1 ends the splash at once.
    void done();

protected:
    void mousePressEvent(class QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int tickcount = 0;
    // UPDATE NAG as the number and "#", when the settings file exists.
    void writenag();
};

frmSplash& frmsplash();
// "VEXAL Bench Clock Utility v4.65 (Issue: 21/02/11)" and the setup screen's title.
std::string maintitle();
std::string setuptitle();
