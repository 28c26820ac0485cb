// Loading the settings file into the shared block and the setup and company screens.
#pragma once

// Reads TAGSTORE.INI: the scanner sections (a used scanner's port, automatic download and
// clock adjustment; a missing AUTOTIME is written as 0 into all three sections), the save
// type, address and terminal number, the time margin, the data location and engineer
// groups, the first run mark, the company details, read delay, display type and the rogue
// file check. Any failure but that of the rogue file check ends the load with a message;
// what was read so far stays read.
void settingsfromfile();
