#include "delivery/checkbarcodeini.h"

#include "core/globals.h"
#include "core/logs.h"
#include "pipeline/formats.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "runtime/vb.h"

namespace {

using formats::Place;

// The set this check works on. Decided on storestate rather than storedown, so Email mode
// aims at the store folder.
Place placefor(int which)
{
    const Globals& s = g();
    if (which == 3) return Place::store;
    if (which != 1 && s.savetype != 0 && s.savetype != 2 && !(s.storestate > 0)) return Place::store;
    return Place::local;
}

std::string filename(const std::string& path) { return path.substr(path.rfind('\\') + 1); }

// The first two lines of the file as text; what cannot be read stays empty.
void firstlines(const std::string& file, std::string& line1, std::string& line2)
{
    try {
        files::TextReader in(file);
        line1 = in.lineinput();
        line2 = in.lineinput();
    } catch (const std::exception&) {
    }
}

// Moves the BAR files present among 1..count to 1..n through TMP copies; returns n. Each
// file goes to the next free TMP name, so a TMP file that an interrupted repair left behind
// is not overwritten: it joins the set with the others.
long closegaps(Place place, long count, const FixedArray<bool, 1, 999>& missing)
{
    long n = 0;
    for (long i = 1; i <= count; ++i) {
        if (missing[i]) continue;
        do ++n;
        while (files::exists(formats::tmpfile(place, n)));
        files::copyfile(formats::barfile(place, i), formats::tmpfile(place, n));
        files::removefile(formats::barfile(place, i));
    }
    for (long m = 1; m <= n; ++m) {
        files::copyfile(formats::tmpfile(place, m), formats::barfile(place, m));
        files::removefile(formats::tmpfile(place, m));
    }
    return n;
}

std::string repairtext(int repair, int which)
{
    const std::string set = which == 0 ? "Main" : "Temp";
    switch (repair) {
    case 1: return "Missing " + set + " BARCODE.INI File - Recreated";
    case 2: return "Corrupt " + set + " BARCODE.INI File - Recreated";
    default: return "Missing " + set + " File(s) From Folder - Fixed";
    }
}

}  // namespace

void checkbarcodeini(int16_t which)
{
    try {
        const Place place = placefor(which);
        const std::string master = formats::masterfile(place);
        int repair = 0;

        if (UCase(files::Dir(master)) != UCase(filename(master))) {
            formats::writemastercount(master, 0);
            repair = 1;
        }

        std::string line1, line2;
        if (repair == 0) {
            firstlines(master, line1, line2);
            if (InStr(line1, "FILES=") > 0) {
                // The section line is lost: keep the count it still has.
                const std::string count = Mid(line1, InStr(line1, "=") + 1, 3);
                files::removefile(master);
                formats::writevalue(master, "FILES", "FILES", count);
                repair = 2;
            } else if (line1.empty() || line2.empty() || !Like(line2, "FILES=*")) {
                files::removefile(master);
                formats::writemastercount(master, 0);
                repair = 2;
            }
        }

        if (repair == 0) {
            const long count = CInt(Mid(line2, 7, 3));
            if (count > 0) {
                FixedArray<bool, 1, 999> missing;
                bool anymissing = false;
                for (long i = 1; i <= count; ++i) {
                    missing[i] = !files::exists(formats::barfile(place, i));
                    anymissing = anymissing || missing[i];
                }
                if (anymissing) {
                    repair = 3;
                    formats::writemastercount(master, closegaps(place, count, missing));
                }
            }
        }

        if (repair > 0) addtologfile("checkbarcodeini: " + repairtext(repair, which));
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        const std::string tail = CStr((long long)f.number) + " " + f.description;
        MsgBox("An unexpected error had occured while attempting to check the BARCODE.INI file! Error : " + tail,
               vbExclamation, "Error While Checking File");
        addtologfile("checkbarcodeini: Unexpected error. Error: " + tail);
    }
}
