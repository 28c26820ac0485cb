#include "pipeline/processdata.h"

#include "core/globals.h"
#include "core/logs.h"
#include "pipeline/linerun.h"
#include "pipeline/linetexts.h"
#include "platform/dialogs.h"

void processdata2()
{
    try {
        Globals& s = g();
        announce("Processing Ammended Data");
        s.outcount = 0;
        s.badcount = 0;
        showprocessing();
        for (long i = 1; i <= s.scancount; ++i) {
            showprogress(i);
            const std::string review = s.reviewlines[i];
            if (Left(review, 7) == "Invalid") {
                announce(review);
                s.badcount += 1;
                continue;
            }
            // The raw line at a fixed place, whatever the scanner: a plain OPL line keeps
            // its "99" at 5-6 and is not found here.
            if (Mid(s.scanlines[i], 3, 2) == "99") {
                s.badcount += 1;
                announce(canonicaltext(review) + " TEST");
                continue;
            }
            s.outcount += 1;
            s.outlines[s.outcount] = review;
            announce(canonicaltext(review));
        }
        finishrun(true);
    } catch (const std::exception& e) {
        const Fault f = Fault::from(e);
        const std::string tail = CStr((long long)f.number) + " " + f.description;
        abandonrun();
        MsgBox("An unexpected error had occured while attempting to process the revised data from the scanner! Error : " +
                   tail,
               vbExclamation, "Error While Processing Revised Data");
        addtologfile("processdata2: Unexpected error. Error : " + tail);
    }
}
