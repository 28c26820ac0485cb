// Line processing: the raw lines of one download judged, repaired where the damage is
// known, and made into the canonical lines that the save writes.
//
// In normal running the texts go to the main screen's List2; with runmode 4 or 5 the repair
// screen drives the run, the texts go to its List1 and reviewlines is filled for it.
#pragma once

// Judges scanlines[1..scancount] (read first from the raw download file for an OPL 972x)
// into outlines[1..outcount], counting invalid and test lines in badcount.
void processdata();
// After a repair: makes outlines from reviewlines again, without line checks.
void processdata2();
