#include "scanner/checkscanners.h"

#include <QCoreApplication>

#include "core/globals.h"
#include "core/logs.h"
#include "platform/serial.h"

CheckScannersDisplay& checkscannersdisplay()
{
    static CheckScannersDisplay d;
    return d;
}

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

void checkscanners()
{
    auto& show = checkscannersdisplay();
    auto hidebusy = [&] {
        if (show.hidebusy) show.hidebusy();
        QCoreApplication::processEvents();
    };
    try {
        if (g().commandline != "startup") {
            if (show.showbusy) show.showbusy("Checking Scanner Ports", 2);
            QCoreApplication::processEvents();
        }
        g().portstatus[0] = 0;
        for (int i = 1; i <= 3; ++i) g().portstatus[i] = 0;
        ScannerCheck c = judgescanners();
        for (int i = 1; i <= 3; ++i) {
            if (c.rows[i].missing) g().portstatus[i] = 1;
            if (show.showrow) show.showrow(i, c.rows[i]);
        }
        if (!c.anyused) {
            if (show.checkbutton) show.checkbutton(false);
            hidebusy();
            g().portstatus[0] = 1;
        } else if (show.checkbutton) {
            show.checkbutton(true);
        }
        bool fault = c.anymissing || !c.anyused;
        if (show.statuslight) show.statuslight(fault ? 1 : 2, fault ? 2 : 4);
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
