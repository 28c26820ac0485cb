// The master file's repair: it must exist, have sound contents, and count exactly the BAR
// files present, numbered without gaps.
#pragma once

#include <cstdint>

// which: 0 the set in force, 1 the local set, 3 the set in the store folder. Repairs what
// it finds and logs what it did; a fault is reported in a message box and the log.
void checkbarcodeini(int16_t which);
