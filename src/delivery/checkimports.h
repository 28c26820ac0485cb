// The watch on c:\tarnbc\imports for data files mailed in from remote users: the main
// screen's import icon shows while any lie there.
#pragma once

// Makes the folder if missing, then shows ImportIcon(0) (List1's frame and caption shrunk
// to 2655) when files are there, or hides it (back to 3375) when none are. Does nothing
// while importbusy is 1, or when the icon already shows the right state.
void checkimports();

// Shows ImportIcon(0) with List1's frame and caption shrunk to 2655, or hides it with them
// back at 3375.
void showimporticon(bool show);
