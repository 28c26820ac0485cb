// Leaving the setup screen without saving: Cancel (and the window's close button) and Undo
// both take the settings file back as the truth.
#pragma once

// During the first run Cancel asks whether to leave the program, which cannot run without
// a saved setup; Yes raises Form2::exitprogram, No keeps the screen. Otherwise the file is
// loaded again, the store, engineer list and ports are checked, and the screen hides with
// the timers armed (setuptimers).
void cancelsetup();
// Loads the settings file again, except during the first run.
void undosetup();
