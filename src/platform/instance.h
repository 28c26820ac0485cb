// Telling whether another copy of the program is running: a lock held by the running copy
// on a file in the install folder, not a window search.
#pragma once

#include <string>

namespace instance {

// Takes the lock for this process if it is free. Returns how many copies run with this
// one: 1 when alone, 2 when another copy holds the lock (this one then holds nothing).
int countcopies();
// Gives the lock up (the process's end does so too).
void release();
// The lock file's host path.
std::string lockpath();

}  // namespace instance
