#include "delivery/processemails.h"

#include "core/colorbox.h"
#include "core/globals.h"
#include "core/logs.h"
#include "delivery/checkimports.h"
#include "delivery/listfiles.h"
#include "pipeline/form1.h"
#include "pipeline/formats.h"
#include "pipeline/mainactions.h"
#include "pipeline/processdata.h"
#include "pipeline/readowner.h"
#include "pipeline/reseticons.h"
#include "pipeline/savetoinifile.h"
#include "pipeline/screens.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/files.h"

namespace {

const std::string imports = "c:\\tarnbc\\imports\\";

void say(const std::string& text) { form1().List2.additem(text); }

// Lines that are not empty, the count a download would have given; and whether a line
// with text lies past that many lines (an empty line before it), which the processing,
// going from the top for that count, does not reach.
long countlines(const std::string& file, bool& beyond)
{
    files::TextReader in(file);
    long count = 0, at = 0, last = 0;
    while (!in.eof()) {
        ++at;
        if (!in.lineinput().empty()) {
            ++count;
            last = at;
        }
    }
    beyond = last > count;
    return count;
}

// One import file through the pipeline, steps a to j; `marker` follows the stages.
void importfile(const std::string& name, Int16& marker)
{
    Globals& s = g();
    Form1& f = form1();
    marker = 4;
    const std::string id = Format((long long)CInt(Mid(name, 8, 3)), "000");
    marker = 5;
    s.scannerid = id;
    s.lastscannerid = id;
    s.outlines[0] = id;
    const std::string temp = formats::rawfile(id);
    if (files::exists(temp)) {
        addtologfile("Killing existing temp file " + temp);
        files::removefile(temp);
    }
    marker = 6;
    files::copyfile(imports + name, temp);
    marker = 7;
    bool beyond = false;
    s.scancount = countlines(temp, beyond);
    marker = 8;
    f.Label3.setforecolor(colorbox(13));
    f.Label3.setcaption("ID: " + id + " Date: N/A  " + Format(platform::clock::now(), "DDMMYY"));
    if (f.List2.listcount() > 0) say("");
    say("Importing Data From Scanner " + id);
    const std::string owner = scannerowner(id);
    say("Scanner Belongs To : " + owner);
    addtologfile("Scanner From : " + owner);
    say("The Data Contains " + CStr((long long)s.scancount) + " Lines");
    // As for a download: the processing or the save clears this on any doubt.
    s.deleteallowed = 1;
    processdata();
    // A failed processing has said so and ended the run (runmode back to 0).
    if (s.runmode != 1) s.deleteallowed = 0;
    marker = 9;
    savetoinifile();
    marker = 10;
    // The file goes only once its lines are stored; after a failed processing or save, or
    // with lines the processing did not reach, it stays for another try.
    if (s.deleteallowed == 1 && !beyond) {
        files::removefile(imports + name);
    } else {
        const std::string text = "Import file " + name + " kept due to possible error!";
        say(text);
        addtologfile("Function processemails() : " + text);
    }
    listfiles();
}

}  // namespace

void processemails()
{
    Globals& s = g();
    if (s.importbusy == 1) return;
    s.importbusy = 1;
    Int16 marker = 0;
    try {
        if (s.runmode != 0 || s.pressedop != 0) {
            if (operationrunning()) return;
        }
        marker = 1;
        if (!files::isfolder("C:\\TARNBC\\IMPORTS")) files::makefolder("C:\\TARNBC\\IMPORTS");
        marker = 2;
        FixedArray<std::string, 1, 100> names;
        long count = 0;
        for (std::string name = files::Dir(imports); !name.empty(); name = files::Dir()) names[++count] = name;
        marker = 3;
        if (count > 0 && MsgBox("Do you wish to import the data files emailed in from remote users?",
                                vbYesNo + vbQuestion, "Import In Data") == vbYes) {
            clearlist(2);
            s.scannertype = 1;
            s.runmode = 1;
            s.pressedop = 3;
            for (long i = 1; i <= count; ++i) importfile(names[i], marker);
        }
        s.runmode = 0;
        s.pressedop = 0;
        if (!form1().ImportIcon[0].isHidden()) showimporticon(false);
        s.importbusy = 0;
    } catch (const std::exception& e) {
        // importbusy, runmode and pressedop stay as they are.
        const Fault f = Fault::from(e);
        const std::string error = CStr((long long)f.number) + " " + f.description;
        MsgBox("An unexpected error has occured attempting to run a system function at line " +
                   CStr((long long)marker) + "! Error: " + error,
               vbExclamation, "Error In Function processemails");
        addtologfile("Function processemails() : Line " + CStr((long long)marker) + " " + error);
    }
}

void importclick()
{
    processemails();
    listfiles();
}
