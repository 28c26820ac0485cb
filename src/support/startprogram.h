// Starting another program, as the runtime's Shell statement does: the program runs on its
// own and nothing waits for it.
#pragma once

#include <string>

// Starts `program` (a Windows path, quoted when it holds blanks, then its arguments) with
// the window style `show`. A program that cannot be started raises the runtime's fault: 53
// when the file is missing, 76 when its folder is, 5 for anything else.
void startprogram(const std::string& commandline, int show);
