// The import at head office: data files mailed in by remote users, saved by a person into
// c:\tarnbc\imports\, each fed through the line processing as a fresh OPL 972x download.
#pragma once

// Imports every file of c:\tarnbc\imports\ after the "Import In Data" question. Keeps
// importbusy, runmode and pressedop set when a fault stops it.
void processemails();

// The main screen's import icon and Label2: the import, then the outstanding list.
void importclick();
