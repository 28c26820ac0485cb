#include "pipeline/savetoinifile.h"

#include <QCoreApplication>

#include "core/colorbox.h"
#include "core/form16.h"
#include "core/globals.h"
#include "core/logs.h"
#include "core/screens.h"
#include "delivery/checkbarcodeini.h"
#include "delivery/listfiles.h"
#include "pipeline/form1.h"
#include "pipeline/formats.h"
#include "pipeline/linerun.h"
#include "pipeline/savejournal.h"
#include "pipeline/screens.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "runtime/vb.h"

namespace {

using formats::Place;

// The target of a save: the file number, the lines its section holds already, and whether
// the section was found at all.
struct Target {
    long number = 1;
    long held = 0;
    bool found = false;
};

// The first file of 1..count that holds the section; otherwise a new file after them, and
// count grows by one.
Target findtarget(Place place, const std::string& section, long& count)
{
    Target t;
    if (count == 0) {
        count = 1;
        return t;
    }
    for (long i = 1; i <= count; ++i) {
        const long lines = formats::sectionlines(formats::barfile(place, i), section);
        if (lines >= 0) {
            t.number = i;
            t.held = lines;
            t.found = true;
            return t;
        }
    }
    t.number = ++count;
    return t;
}

void addrow(const std::string& text) { form1().List2.additem(text); }

// The closing rows by savetype and storedown.
void reportsaved(int savetype, int storedown)
{
    if (savetype == 0) {
        addrow("Entries Added To File On Local PC");
    } else if (savetype == 1 && storedown == 0) {
        addrow("Entries Added To File On Server");
        addrow("Data Ready For Transfer And Import To Tarn");
    } else if (savetype == 1 && storedown == 1) {
        addrow("Entries Added To Temp File On PC");
        addrow("Data Now Ready For Import To Tarn");
    } else if (savetype == 1 && storedown == 1) {
        // Shadowed by the branch above and never shown; kept as it stands.
        addrow("Data can be sent to Tarn server later.");
    } else if (savetype == 2) {
        addrow("Entries Added To Batch On PC");
        addrow("Batch Must Be Sent To Tarn Server");
    }
}

bool statusshown() { return form16().isVisible(); }

}  // namespace

void savetoinifile()
{
    int step = 1;
    try {
        Globals& s = g();
        const long outcount = s.outcount;
        if (statusshown()) form16().showstage(form16().SaveLabel, form16().SaveData, "000 / " + Format(outcount, "000"));

        step = 2;
        checkbarcodeini(0);

        step = 3;
        Place place = formats::saveplace();
        std::string master = formats::masterfile(place);
        if (place == Place::local && s.savetype == 1 && s.storedown == 1) {
            addrow("Store Location Unavailable!");
            addrow("Data Held On PC");
        }

        step = 4;
        long count = formats::masterfilecount(master);

        step = 5;
        const std::string scanner = s.outlines[0];
        const std::string section = formats::sectionname(scanner);

        step = 6;
        const Target target = findtarget(formats::saveplace(), section, count);
        const std::string file = formats::barfile(formats::saveplace(), target.number);

        step = 7;
        if (!target.found && files::exists(file)) {
            // A stale or rogue file under this number goes without asking.
            files::removefile(file);
            QCoreApplication::processEvents();
        }

        step = 8;
        addrow("Adding Entries to BAR" + Format(target.number, "000") +
               (target.found ? " File (Contains " + CStr((long long)target.held) + " Lines)" : std::string(" File (New File)")));

        step = 9;
        const QDateTime now = platform::clock::now();
        const std::string header = formats::barheader(target.held + outcount, now.date());

        step = 10;
        std::vector<std::string> lines;
        for (long i = 1; i <= outcount; ++i) lines.push_back(s.outlines[i]);
        formats::writedatalogblock(formats::datalogblock(scanner, now, header, target.held + 1, lines));
        // From here on the two files change: as they stand now they go into the journal.
        // Journal and block are on the disk before the first line goes to the BAR file (the
        // second flush finds the disk's own journal already written by the first).
        // The keys written last say, after a crash, whether the save got to its end.
        const long last = target.held + outcount;
        savejournal::begin({file, master}, {{file, section, "000", header},
                                            {file, section, formats::linekey(last), s.outlines[outcount]},
                                            {master, "FILES", "FILES", Format(count, "000")}});
        flushdatfile();

        step = 11;
        formats::writevalue(file, section, "000", header);

        step = 12;
        form1().repaint();
        for (long key = target.held + 1; key <= target.held + outcount; ++key) {
            const long running = key - target.held;
            if (statusshown()) {
                form16().SaveData.setcaption(Format(running, "000") + " / " + Format(outcount, "000"));
                QCoreApplication::processEvents();
            }
            formats::writevalue(file, section, formats::linekey(key), s.outlines[running]);
        }

        step = 13;
        if (statusshown()) form16().SaveData.setforecolor(colorbox(11));

        step = 14;
        master = formats::masterfile(formats::saveplace());
        formats::writemastercount(master, count);
        savejournal::commit();

        step = 15;
        reportsaved(s.savetype, s.storedown);

        step = 16;
        QCoreApplication::processEvents();
        listfiles();
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        // A save that stopped half way leaves no torn file: what it changed is put back (its
        // lines are in the data log). If the files are out of reach the journal waits.
        savejournal::rollback();
        abandonrun();
        form1().repaint();
        const std::string tail = CStr((long long)f.number) + " " + f.description;
        MsgBox("An unexpected error had occured while attempting to save the data from the scanner at line " +
                   CStr((long long)step) + "! Error : " + tail,
               vbExclamation, "Error While Saving Data");
        addtologfile("savetoinifile: Line " + CStr((long long)step) + " Unexpected error. Error : " + tail);
    }
}
