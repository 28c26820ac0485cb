// readdata's parts for the OPN 2001 and the CS 1504: the whole memory comes into the
// library in one exchange, and the download is a copy out of it.
#include <QCoreApplication>
#include <cmath>

#include "core/form16.h"
#include "core/form6.h"
#include "core/globals.h"
#include "core/screens.h"
#include "maintenance/scannertests.h"
#include "pipeline/form1.h"
#include "pipeline/readsteps.h"
#include "pipeline/formats.h"
#include "pipeline/screens.h"
#include "platform/clock.h"
#include "platform/csp2.h"
#include "platform/files.h"

void cspfirstread(Int16& linemark)
{
    Globals& s = g();
    csp2Restore();
    csp2Init(s.scannerport[s.scannertype] - 1);
    s.scancount = csp2ReadData();
    linemark = 5;
    if (s.scancount == -1) throw ConnectionLost();
    csp2GetASCIIMode();
    linemark = 6;
    if (s.scancount == -1) throw ConnectionLost();

    readcspclock();
    testthedate();
    linemark = 7;

    // Parameter 38 holds the ID right-aligned in its first six characters.
    std::string id(32, ' ');
    csp2GetParam(38, id.data(), (int32_t)id.size());
    s.scannerid = Right(Left(id, 6), 3);
    testtheID();
    linemark = 8;
}

namespace {

// The records as the device handed them over, on the disk (file and folder flushed) before
// anything can clear the scanner: whatever happens to the save, they can be decoded again.
void savesafetycopy(const std::string& dump)
{
    if (!files::isfolder(formats::backupfolder)) files::makefolder(formats::backupfolder);
    const std::string copy = formats::safetycopyfile(g().scannerid, platform::clock::now());
    files::writeall(copy, dump);
    files::flush(copy, true);
}

}  // namespace

void cspdownload(Int16& linemark)
{
    Globals& s = g();
    linemark = 14;
    const long count = s.scancount;
    Form6& progress = form6();
    Form16& status = form16();
    std::string dump;
    for (long i = 0; i <= count - 1; ++i) {
        if (count > 1) {
            progress.TimeCount.settext(CStr((long long)std::floor((double)i / (count - 1) * 10)));
            progress.fillballs();
        }
        if (status.isVisible()) {
            status.DownData.setcaption(Format(i + 1, "000") + " / " + Format(count, "000"));
            status.DownData.repaint();
        }
        QCoreApplication::processEvents();
        // The whole buffer is kept, not only the record at its start.
        std::string packet(256, '\0');
        csp2GetPacket(packet.data(), (int32_t)i, 63);
        dump += formats::packetrecord(packet);
        s.scanlines[i + 1] = packet;
    }
    savesafetycopy(dump);
    form1().List2.additem("Data Download Complete");
    csp2Restore();
}
