// Update on the setup screen: the checks before the save, each put as a question whose Yes
// cancels the save, then the save and the return to work.
#pragma once

// Ports, store location, terminal number and engineer list in that order. Answering No to
// every question saves a setup known to be bad. After the save the screen hides, the
// outstanding files are listed again and the timers are armed (setuptimers).
void updatedata();
