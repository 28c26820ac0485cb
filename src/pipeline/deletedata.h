// Clearing a scanner's memory, the one act that can lose data: the scanner is read again
// first.
#pragma once

#include "runtime/vb.h"

// deltype 0: the user's delete, with the counts and a question. deltype 1: straight after
// a save, silent, and for the OPL 972x only when the scanner in the cradle is still the
// one whose lines were saved (corruptid).
void deletedata(Int16 deltype);
