// Saving the setup screen into the settings file.
#pragma once

// Writes the scanner sections (an unused scanner on port 0 without automatic download; a
// used one on the port in its SPorts box), the save type with its address and terminal
// number (Local always 0.0.0.0 and 999; Email stores a good address from the ServerIP box
// as the head office address instead), the fitter type (Local when saving locally) and the
// first run mark, then reads the rogue file check again. AUTOTIME is never written: the
// clock adjustment chosen on the screen lasts until the next load.
void savesettings();
