// Timer1 of the monitor form: the tray icon and the main screen's Status picture kept in line
// with the program's state, and the end of the program on a new day.
#pragma once

// True when some scanner has AUTO 1 (whether used or not).
bool anyauto();
// True when some scanner is both used and on AUTO.
bool anyusedauto();
// The day test: today differs from the start date and no scanner has AUTO. closeforms has
// then been called and the caller ends its tick.
bool closedfornewday();
// One tick of Timer1.
void timer1tick();
