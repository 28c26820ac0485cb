// The main screen's actions: the four scanner buttons and Settings, the guard question
// that frees a stuck operation, and the wiring of the screen's clicks.
#pragma once

class Form1;

// Counts the scanner types in use, enabling their rows on the select scanner type screen;
// scannertype becomes the highest type in use.
int countscanners();

// The host lock test: a lock file in the store means Tarn is loading data. Asks whether to
// remove it; false when the user leaves it in place and the download must not go on.
bool lockcleared();

void runtransfer();
void runread();
void rundelete();
void runcheck();
void runsetup();

// The question before Help and the outstanding list's double click while runmode or
// pressedop is set. True when the user says an operation is running (stop there); on No
// both flags are cleared.
bool operationrunning();
// Help and its caption: the guard question, then the help menu.
void helpclick();

// Connects the main screen's clicks to their routines and installs the pipeline's session
// closer; done once, when the screen is made.
void wireform1(Form1& screen);
