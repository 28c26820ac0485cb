// The monitor form's load sequence, which is the program's start: refuse a second copy, put
// up the tray icon, wait for the splash, make c:\tarnbc, write the first settings file,
// open the day's logs, then the first-run flow or the settings, store, engineer list and
// ports, the outstanding files, the timers and the main screen.
#pragma once

#include <string>

// The whole sequence, under one handler that reports a fault with the step it reached
// ("Form9: Load") and leaves the program in the tray with what was armed so far.
// `commandline`: "startup" keeps the main screen hidden and asks no store question; one
// beginning "swupdate" hands over to the scanner software update instead.
void form9load(const std::string& commandline);

// Wires the monitor form once: the timers' ticks, the tray menu, the main screen's Close
// and unload, the setup screen's exitprogram. Called by form9load.
void connectmonitor();

// Timer4's tick: the flag file c:\tarnbc\max.txt of a second start brings the main screen
// up and is deleted.
void timer4tick();
