// The first run: the company details, the offer of the driver installation, then the setup
// screen, which must be saved before the program can run.
#pragma once

// The start of a first run (FIRST RUN 0 at start-up): the port lists filled, Undo hidden and
// dim on the setup screen, and the company screen shown at its tall height with its welcome
// text, told (callerof[3] 2) to lead on to the setup screen.
void startfirstrun();
// Where the company screen leads on once its details are stored: on a first run the
// question "Run Driver Installation?", whose Yes opens the driver screen (callerof[23] 1)
// and whose No opens the setup screen and runs initialcheck. Opened from the help menu
// (any other callerof[3]), it leads back to the help menu.
void aftercompany();
// The import of an earlier layout's settings stands behind a question whose answer is
// fixed at No, so nothing changes.
void initialcheck();
// That import: section Settings of the settings file, port (for the CS 1504), saveto (1 for
// a server), server and termid, each value cut at ";". A value without ";" is a fault, which
// goes to the caller.
void importprevioussettings();
