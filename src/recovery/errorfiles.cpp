// The file editor's two lists: the files of the set, and the rogue files on the server
// between the master file's count and number 20.
#include "core/globals.h"
#include "core/logs.h"
#include "delivery/checkbarcodeini.h"
#include "pipeline/formats.h"
#include "platform/files.h"
#include "recovery/form28.h"
#include "runtime/vb.h"

namespace {

using formats::Place;

// "DD/MM/YYYY" of a key 000 value, whose date stands at positions 4 to 11 as YYYYMMDD.
std::string headerdate(const std::string& header)
{
    const std::string d = Mid(header, 4, 8);
    return Mid(d, 7, 2) + "/" + Mid(d, 5, 2) + "/" + Left(d, 4);
}

// One entry: the file's number, the scanner from its first line, the count of lines of the
// section that line names, and either the date (sound rogue files) or the ID mark (a first
// line that is not 11 long).
std::string entry(long n, const std::string& file, bool rogue)
{
    std::string line;
    {
        files::TextReader in(file);
        line = in.lineinput();
    }
    const bool faulty = formats::faultyid(line);
    const std::string section = formats::sectionfromline(line);
    const std::string id = formats::scannerfromline(line);
    const std::string header = formats::readheader(file, section);

    // The count as read; a section that is not found leaves the text of the path, which
    // is shown as it stands.
    std::string c = Left(header, 3);
    bool one = false;
    if (IsNumeric(c)) {
        one = CInt(c) == 1;
        c = Format(CInt(c), "000");
    }

    std::string text = "BAR" + Format(n, "000") + "    Scanner " + id;
    if (faulty) return text + "   " + c + (one ? " Line   *ID ERROR*" : " Lines  *ID ERROR*");
    text += "     " + c;
    if (!rogue) return text + (one ? " Line" : " Lines");
    return text + (one ? " Line   Processed " : " Lines  Processed ") + headerdate(header);
}

}  // namespace

void Form28::listerrorfiles()
{
    try {
        const Globals& s = g();
        List1.clear();
        List2.clear();
        if (s.savetype == 1 && s.storedown == 1) {
            List1.additem("Store Location Unavailable!");
            List1.additem("Checking For Temporary Files:");
        }
        checkbarcodeini(0);
        const Place place = formats::saveplace();
        const long filecount = formats::masterfilecount(formats::masterfile(place));
        if (s.savetype == 2) List1.additem("Batched Files Currently On PC:");

        for (long i = 1; i <= filecount; ++i) List1.additem(entry(i, formats::barfile(place, i), false));
        if (filecount == 0) {
            if (s.savetype == 1 && s.storedown == 1) List1.additem("No Outstanding Temporary Data");
            else if (s.savetype == 2) List1.additem("No Outstanding Batched Data");
            else List1.additem("No Outstanding Data");
        }

        if (s.savetype == 1 && s.storedown == 0) {
            checkbarcodeini(1);
            const long local = formats::masterfilecount(formats::masterfile(Place::local));
            if (local == 1) List1.additem("There is 1 outstanding local file");
            if (local > 1) List1.additem("There are " + CStr((long long)local) + " outstanding local files");
        }

        if (s.chkrogue == "1" && s.savetype > 0 && s.storedown == 0) {
            for (long i = filecount + 1; i <= formats::roguelimit; ++i) {
                const std::string file = formats::barfile(Place::store, i);
                if (files::exists(file)) List2.additem(entry(i, file, true));
            }
        }
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        List1.additem("Error processing file list!");
        addtologfile("listerrorfiles: Unexpected error. Error: " + CStr((long long)f.number) + " " + f.description);
    }
}
