// The main screen's list of outstanding files (List1, "Outstanding History"): what data is
// waiting, where, and what to do with it, built afresh from the files at each call.
#pragma once

// Rebuilds List1, repairing the master files on the way, and offers the file editor when
// rogue files lie on the server or the list cannot be built.
void listfiles();
