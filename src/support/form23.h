// Form23: the driver installation screen ("Driver Installation"): one entry per scanner
// type that runs the USB driver installer for it, fetching and running the driver package
// first when the drivers were never unpacked on this PC.
#pragma once

#include <QWidget>
#include <string>

#include "core/controls.h"
#include "runtime/vb.h"

class Form23 : public QWidget {
    Q_OBJECT
public:
    explicit Form23(QWidget* parent = nullptr);

    // Where the drivers unpack to, and the package under the install folder.
    static constexpr const char* driverfolder = "C:\\Vexal BC Drivers";
    static std::string packagefile();   // homedir + "DRIVERS\VexalBCDrivers.exe"

    // index 1 the OPL 972x cradle, 2 the OPN 2001, 3 the CS 1504. With the drivers folder in
    // place its installer runs; without it the package runs, fetched from the update web
    // host first when it is missing too.
    void helptype(int index);
    // Cancel: hides the screen and goes back by driverreturn (callerof[23]): 1 the setup
    // screen, 2 the help menu (backtohelp).
    void cancel();

    FixedArray<Caption, 1, 3> HelpLabel;
    FixedArray<PictureBox, 1, 3> HelpIcon;
    Caption Label1;          // heading
    PictureBox Cancel;
    Caption Label4;          // "Cancel"

    bool installing = false; // set while the package is fetched: the screen cannot close

signals:
    // Cancel when the screen was opened from the help menu (driverreturn 2).
    void backtohelp();

protected:
    void closeEvent(class QCloseEvent* event) override;

private:
    void setbusy(bool busy);
};

Form23& form23();
