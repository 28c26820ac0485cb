// Leaving the program: the offer to transfer locally held data first, then the tray icon
// removed and the process ended. Nothing is saved on the way out.
#pragma once

#include <functional>

// Asks "Transfer Local Data" when the settings save to a server (savetype above 0) and
// c:\tarnbc\BARCODE.INI counts files. Yes opens the transfer screen (callerof[20] 99) and
// the program goes on; otherwise the tray icon goes and the process ends.
void closeforms();
// The same as closeforms.
void fullexit();

// Ends the process at once (no handler of any screen runs). Test seam: `end` replaces the
// ending; an empty function restores it.
[[noreturn]] void endprocess();
void setprocessend(std::function<void()> end);
