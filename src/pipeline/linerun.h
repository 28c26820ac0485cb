// What the two line processing routines share: where a line's text goes, the progress on
// the status screen, the closing summary and the way out after a fault.
#pragma once

#include <string>

// The repair screen is driving the run (runmode 4 or 5).
bool repairrunning();
// A line's text: to the repair screen's List1 in repair running, else to List2; and to the
// log.
void reportline(const std::string& text);
// To List2 and the log.
void announce(const std::string& text);
// The status screen's processing row: shown with "000 / <scancount>" at the start, and the
// running index on each line, while it is visible and no repair runs.
void showprocessing();
void showprogress(long index);
// The closing summary of a normal run. `logignored` also logs the count of ignored lines.
void finishrun(bool logignored);
// After a fault: close the device session, runmode and the button state back to 0, buttons.
void abandonrun();
