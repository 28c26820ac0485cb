// The scanner rows of the setup screen: the port lists, the port check and the showing and
// hiding of a row.
#pragma once

// Lists COM1..COM16 that exist right now in all three SPorts lists; the texts typed or
// chosen in them stay.
void getcoms();
// Checks the port in SPorts(i): "COM" and a number from 1 to 16 (a bare number becomes
// "COMn"), and the port must exist. A good port is written in upper case into the box and
// into scannerport[i], and the frames keep the last test's result while it is the port
// last tested; a bad one paints ScanBox(i) and PortBox(i) in the fault colour and sets
// portfault[i].
void checkcomport(int i);
// Mode 0 is a click on the scanner type, which flips scannerused[i]; mode 1 shows the row
// as scannerused[i] says. A shown row is checked by checkcomport and starts without
// automatic download and with advanced clock adjustment; a hidden row has both off.
void showandhide(int i, int mode);
