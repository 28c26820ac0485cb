// The scanner session that a failing pipeline routine leaves behind. Its handler closes it:
// the opl control if this program holds the port open, else csp2Restore. The scanner layer,
// which owns both, installs the closer at start.
#pragma once

#include <functional>

void setsessioncloser(std::function<void()> closer);
// Runs the installed closer; a fault while closing is ignored, as the handlers want.
void closesession();
