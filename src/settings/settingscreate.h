// The settings file of a first start.
#pragma once

// Writes a new TAGSTORE.INI into the install folder unless a look-up finds one there: the
// three scanner sections unused on port 0 without automatic download, Local saving on
// 0.0.0.0 and terminal 999, a local engineer list, company details "N/A" (without the "#"
// every other text carries), the rogue file check on, and the first run still to come.
void createsettingsfile();
