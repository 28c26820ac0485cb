// Back to work after the setup screen: the main screen's buttons, automatic download and
// the monitor form's timers as the settings now say.
#pragma once

// Shows Undo again, clears runmode, automaticactive and pressedop, lists the outstanding
// files, sets Transfer, Read and Delete of the main screen by the scanners used by hand,
// starts Timer2 when a scanner is on automatic, stops Timer3 unless the OPL 972x is used
// by hand, makes sure Timer1 runs, and ends a first run by showing the main screen (as does
// a setup opened from the main screen, callerof[2] 1).
void setuptimers();
