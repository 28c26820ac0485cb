// The automatic download: Timer2 of the monitor form polls the scanners on AUTO and
// downloads one that has been docked, without anyone touching the PC. Also the Status
// picture's click, the user's switch for it, and the unarmed battery poll of Timer3.
#pragma once

// One tick of Timer2.
void timer2tick();
// One tick of Timer3: the OPL 972x's battery, when nothing else runs.
void timer3tick();
// A click on the main screen's Status picture: automatic download off, or on when some
// used scanner has AUTO. Refused while a transfer, read or delete runs.
void statusclick();
// The main screen's own switch of automatic download. Nothing calls it: the Status click
// and the setup screen's timers do this work.
void startstopauto();
