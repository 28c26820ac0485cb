#include "pipeline/processdata.h"

#include "core/globals.h"
#include "core/logs.h"
#include "pipeline/form1.h"
#include "pipeline/formats.h"
#include "pipeline/linerun.h"
#include "pipeline/linetexts.h"
#include "pipeline/scanlines.h"
#include "pipeline/screens.h"
#include "platform/dialogs.h"
#include "platform/files.h"

namespace {

// Position marker of the run, quoted by the failure message.
enum Step {
    starting = 1,
    readingfile = 2,
    nextline = 3,
    correcting = 4,
    checkingchars = 5,
    checkinglength = 6,
    invalidline = 7,
    makinglong = 8,
    testline = 9,
    validline = 10,
    rewritingfile = 11,
    readingrecord = 12,
    decodingstamp = 13,
    recordkept = 14,
    summing = 15,
};

struct Run {
    Globals& s = g();
    Int16 linekind;   // kept from line to line: an empty line has the kind of the one before
    int step = starting;
};

// The raw download file into scanlines from 1 up to its end; scancount is the scanner's.
void readrawfile()
{
    files::TextReader in(formats::rawfile(g().scannerid));
    long i = 1;
    while (!in.eof()) {
        g().scanlines[i] = in.lineinput();
        ++i;
    }
}

// An invalid line reported after counting it, and kept for the repair screen at the new
// count.
void rejectline(const std::string& text)
{
    Globals& s = g();
    s.badcount += 1;
    reportline(text);
    if (repairrunning()) s.reviewlines[s.outcount + s.badcount] = text;
}

// A test line: counted as bad, shown with " TEST" except in repair running.
void testfound(const std::string& text, const std::string& review)
{
    Globals& s = g();
    s.badcount += 1;
    reportline(repairrunning() ? text : text + " TEST");
    if (repairrunning()) s.reviewlines[s.outcount + s.badcount] = review;
}

void validfound(const std::string& canonical, const std::string& text, const std::string& review)
{
    Globals& s = g();
    s.outcount += 1;
    s.outlines[s.outcount] = canonical;
    reportline(text);
    if (repairrunning()) s.reviewlines[s.outcount + s.badcount] = review;
}

void oplline(Run& run, long index, bool invalid, bool corrected, const std::string& correctedtext)
{
    Globals& s = run.s;
    std::string& line = s.scanlines[index];
    const int kind = run.linekind;

    run.step = checkinglength;
    if (badlength(line, kind)) {
        // Reported at once and kept one place too low: it overwrites the entry before it
        // and leaves its own empty. The repair relies on that as it stands.
        const std::string text = invalidtext(line);
        reportline(text);
        if (repairrunning()) s.reviewlines[s.outcount + s.badcount] = text;
        s.badcount += 1;
        return;
    }
    run.step = invalidline;
    if (invalid) {
        rejectline(invalidtext(line));
        return;
    }
    run.step = makinglong;
    if (kind == 1 && isshortline(line)) line = makelong(line);

    if (istestline(line, kind)) {
        run.step = testline;
        testfound(opltext(line, kind), oplreview(line, kind));
    } else {
        run.step = validline;
        validfound(oplcanonical(line, kind), opltext(line, kind), oplreview(line, kind));
    }

    if (corrected) {
        run.step = rewritingfile;
        announce("Corrected (" + correctedtext + ")");
        formats::writerawfile(s.scannerid, s.scanlines, s.scancount);
    }
}

void recordline(Run& run, long index, bool invalid)
{
    Globals& s = run.s;
    const std::string& record = s.scanlines[index];

    run.step = readingrecord;
    const std::string barcode = recordbarcode(record);
    if (shortfield(barcode)) invalid = true;
    if (invalid) {
        rejectline(invalidtext(barcode));
        return;
    }
    run.step = decodingstamp;
    std::string& datecode = form1().binresult;
    recorddatecode(record, datecode);

    run.step = recordkept;
    const std::string canonical = recordcanonical(barcode, datecode);
    const std::string text = recordtext(barcode, datecode);
    if (istestrecord(barcode)) testfound(text, canonical);
    else validfound(canonical, text, canonical);
}

void processline(Run& run, long index)
{
    Globals& s = run.s;
    run.step = nextline;
    showprogress(index);

    run.step = correcting;
    std::string& line = s.scanlines[index];
    std::string correctedtext;
    bool corrected = false;
    bool invalid = false;
    if (line.find('\xff') != std::string::npos) {
        correctedtext = line;
        corrected = correctline(line);
    }

    run.step = checkingchars;
    const bool opl = s.scannertype == 1;
    for (long pos = 1; pos <= Len(line); ++pos) {
        run.linekind = linekindof(line);
        const char c = line[pos - 1];
        if ((unsigned char)c >= '0' && (unsigned char)c <= '9') continue;
        if (!(opl ? oplcharok(line, run.linekind, pos, c) : recordcharok(pos))) invalid = true;
    }

    if (opl) oplline(run, index, invalid, corrected, correctedtext);
    else recordline(run, index, invalid);
}

}  // namespace

void processdata()
{
    Run run;
    try {
        Globals& s = run.s;
        form1().List2.additem("Processing Data");
        s.outcount = 0;
        s.badcount = 0;
        showprocessing();
        if (s.scannertype == 1) {
            run.step = readingfile;
            readrawfile();
        }
        for (long i = 1; i <= s.scancount; ++i) processline(run, i);

        if (repairrunning()) return;
        run.step = summing;
        finishrun(false);
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        const std::string tail = CStr((long long)f.number) + " " + f.description + " @ line " + CStr((long long)run.step);
        // A run that broke off has not judged every line: nothing is saved and the scanner
        // keeps all it holds.
        run.s.deleteallowed = 0;
        abandonrun();
        MsgBox("An unexpected error had occured while attempting to process the data from the scanner! Error : " + tail,
               vbExclamation, "Error While Processing Data");
        addtologfile("processdata: Unexpected error. Error : " + tail);
    }
}
