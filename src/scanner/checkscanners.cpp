#include "scanner/checkscanners.h"

#include <QCoreApplication>

#include "core/colorbox.h"
#include "core/globals.h"
#include "core/imagelists.h"
#include "core/logs.h"
#include "pipeline/form1.h"
#include "pipeline/screens.h"
#include "platform/serial.h"
#include "settings/form11.h"
#include "settings/form17.h"
#include "settings/form2.h"

ScannerCheck judgescanners()
{
    ScannerCheck c;
    for (int i = 1; i <= 3; ++i) {
        ScannerRow& r = c.rows[i];
        r.used = g().scannerused[i] != 0;
        if (!r.used) {
            r.port = "N/A";
            r.status = "Scanner not in use";
            r.captioncolour = 6;
            r.scanbox = r.portbox = 2;
            continue;
        }
        c.anyused = true;
        Int16 port = g().scannerport[i];
        r.port = "COM" + std::to_string(port.value());
        r.missing = !serial::portexists(port);
        if (r.missing) {
            c.anymissing = true;
            r.status = "Scanner COM Port Does Not Exist";
            r.captioncolour = 2;
            r.scanbox = r.portbox = 2;
        } else {
            r.status = "Scanner COM Port OK";
            r.captioncolour = 10;
            r.scanbox = 6;
            r.portbox = 1;
        }
    }
    return c;
}

namespace {

void hidebusy()
{
    form11().hidebusy();
    QCoreApplication::processEvents();
}

void showrow(int i, const ScannerRow& row)
{
    Form17& f = form17();
    f.ScanPort[i].setcaption(row.port);
    f.ScanStatus[i].setcaption(row.status);
    f.ScanPort[i].setforecolor(colorbox(row.captioncolour));
    f.Scanner[i].setforecolor(colorbox(row.captioncolour));
    form2().ScanBox[i].setfillcolor(colorbox(row.scanbox));
    form2().PortBox[i].setfillcolor(colorbox(row.portbox));
}

// The main screen's Check button: grey and off when no scanner is in use.
void showcheckbutton(bool enabled)
{
    Form1& f = form1();
    f.Check.setpicture(enabled ? ColorIcons() : GreyIcons(), 6);
    f.Check.setEnabled(enabled);
    f.CheckLabel.setEnabled(enabled);
    f.CheckSubLabel.setVisible(!enabled);
}

}  // namespace

void checkscanners()
{
    try {
        if (g().commandline != "startup") {
            form11().showbusy("Checking Scanner Ports", 2);
            QCoreApplication::processEvents();
        }
        g().portstatus[0] = 0;
        for (int i = 1; i <= 3; ++i) g().portstatus[i] = 0;
        ScannerCheck c = judgescanners();
        for (int i = 1; i <= 3; ++i) {
            if (c.rows[i].missing) g().portstatus[i] = 1;
            showrow(i, c.rows[i]);
        }
        if (!c.anyused) {
            showcheckbutton(false);
            hidebusy();
            g().portstatus[0] = 1;
        } else {
            showcheckbutton(true);
        }
        bool fault = c.anymissing || !c.anyused;
        form17().Status[1].setpicture(ColorIcons(), fault ? 1 : 2);
        form17().Label3.setforecolor(colorbox(fault ? 2 : 4));
        hidebusy();
    } catch (const std::exception& e) {
        Fault f = Fault::from(e);
        try {
            hidebusy();
        } catch (...) {
        }
        g().portstatus[0] = 2;
        addtologfile("checkscanners: Unexpected error. Error: " + std::to_string(f.number) + " " + f.description);
    }
}
