// The file editor's two repairs: a new scanner ID in a file of the set, and a rogue file
// taken into the set or deleted.
#include <cmath>

#include "core/globals.h"
#include "pipeline/formats.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "recovery/form28.h"
#include "runtime/vb.h"

namespace {

using formats::Place;

constexpr long maxlines = 500;

// The entered ID as three digits; an answer that is not a number stands as it is.
std::string threedigits(const std::string& answer)
{
    if (!IsNumeric(answer)) return answer;
    return Format((long long)std::nearbyint(CDbl(answer)), "000");
}

// Deletes the file and writes the lines anew. Should a write fail, the old bytes are put
// back where that can be done, and the fault goes on.
void rewrite(const std::string& file, const FixedArray<std::string, 1, maxlines>& lines, long count)
{
    const std::string old = files::readall(file);
    files::removefile(file);
    try {
        files::TextWriter out(file, files::TextWriter::output);
        for (long i = 1; i <= count; ++i) out.print(lines[i]);
        out.close();
    } catch (const std::exception&) {
        try {
            files::writeall(file, old);
        } catch (const std::exception&) {
        }
        throw;
    }
}

}  // namespace

void Form28::list1dblclick()
{
    const std::string name = Left(List1.list(List1.listindex()), 6);
    const std::string answer =
        InputBox("Please enter the new ID for this file (you do not need to include leading zeros)", "Fitter ID");
    if (answer.empty()) return;

    const std::string file = formats::namedfile(formats::saveplace(), name);
    FixedArray<std::string, 1, maxlines> lines;
    long count = 0;
    {
        files::TextReader in(file);
        while (!in.eof()) {
            const std::string line = in.lineinput();
            lines[count + 1] = line;   // a line past the array's end raises 9 before anything is written
            ++count;
        }
    }
    lines[1] = "[000000" + threedigits(answer) + "]";
    rewrite(file, lines, count);
    listerrorfiles();
}

void Form28::list2dblclick()
{
    const std::string name = Left(List2.list(List2.listindex()), 6);
    const int answer = MsgBox("PLEASE READ CAREFULLY: In order to add the rogue file '" + name +
                                  "' to the current file list for processing in Tarn click 'YES', to delete this file "
                                  "click 'NO', to leave this file for later click 'CANCEL'.",
                              vbYesNoCancel + vbQuestion, "Add File To Outstanding List");
    const std::string rogue = formats::namedfile(Place::store, name);
    if (answer == vbYes) {
        const std::string master = formats::masterfile(formats::saveplace());
        const long count = formats::masterfilecount(master) + 1;
        formats::writemastercount(master, count);
        if (count != (long)Val(Mid(name, 4, 3))) {
            files::copyfile(rogue, formats::barfile(Place::store, count));
            files::removefile(rogue);
        }
        listerrorfiles();
    } else if (answer == vbNo) {
        if (MsgBox("Are you sure that you want to delete the file '" + name + "'?", vbYesNo + vbDefaultButton2,
                   "Confirm Deletion") == vbYes) {
            files::removefile(rogue);
            listerrorfiles();
        }
    }
}
