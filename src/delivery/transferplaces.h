// The places and colours of the transfer to the server: the work folder on the PC that
// holds the store's files while local lines are merged into them, its backups, and the
// colour boxes of the transfer screen's frames and arrows.
#pragma once

#include <string>

namespace transferplaces {

// C:\TARNBC\INITEMP\ and C:\TARNBC\INITEMP\BACKUPS\ .
inline constexpr const char* workfolder = "C:\\TARNBC\\INITEMP\\";
inline constexpr const char* backupfolder = "C:\\TARNBC\\INITEMP\\BACKUPS\\";

// The store's files in the work folder: BARCODE.<TNO> and BARnnn.<TNO>.
std::string workmaster();
std::string workbar(long n);
// BAR*.<TNO>, in the store folder and in the work folder.
std::string storepattern();
std::string workpattern();

// Makes the work folder and its backup folder where missing.
void makeworkfolders();

}  // namespace transferplaces

namespace transfercolours {
// Colour boxes: an arrow at rest, a frame while the transfer runs, the step lit by the
// animation, a frame with files, a frame with a fault, a server with no data.
inline constexpr int idle = 5, running = 9, lit = 11, good = 1, fault = 2, empty = 14;
}  // namespace transfercolours
