// The support tools behind the help menu's entries that are not screens: the manual, the
// scan-off barcode sheet, the start-up entry, the web updater and the support viewer.
// Faults reach the caller (the menu's own handler), except where a routine says otherwise.
#pragma once

#include <string>

// The name the start-up entry goes by (Vexal Tag.desktop in the autostart folder).
inline constexpr const char* startupentryname = "Vexal Tag";

// FS49.pdf of the install folder: the menu hides, the way back is taken and the file goes
// to the desktop. False (after its box, the menu staying) when the file is missing.
bool openmanual();
// BARCODES\Scanner Log Off.pdf, or on the user's word the same sheet on the support web
// host.
void openlogoffbarcodes();
// The start-up entry: the program file with the word "startup", and the program's
// automatic-download icon.
void createstartupicon();
// Asks, fetches the web updater, starts it with the word "Internal" and ends this program.
void startwebupdater();
// Fetches the support viewer into the install folder's Support folder and starts it; a
// fetch or start that fails is reported in a box here.
void runsupportviewer();
