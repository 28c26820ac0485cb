// Whether the engineer list can be used where fittertype says it lives.
#pragma once

// Opens the list (for PC Copy, the server's file, copied over the local one), and sets
// fitterstatus: 0 usable, 1 the server file unavailable, 2 unavailable with no local copy
// either. A missing local list, and a server failure without a local copy, leave an empty
// c:\tarnbc\ENGLST.TXT behind. The result colours Shape1(10) of the setup screen, shows on
// the system check screen and, unless it is a plain success, goes to the log.
void checkfitterfile();
// After a store check: checkfitterfile when the list is local or the store is usable;
// otherwise the list cannot be reached and Shape1(10) takes the fault colour.
void checkfittersource();
