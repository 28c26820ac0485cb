// Reading a scanner: the one routine that knows how the three scanner types differ. It
// opens the session of the type in scannertype, reads and judges the clock and the ID,
// names the owner, downloads the lines, offers the ID and date repairs and hands the lines
// to processdata.
#pragma once

// On return the caller finds one of: a full read with processdata done; runmode 4 or 5 with
// the corrupt data screen in charge; an early stop with runmode and pressedop cleared (no
// connection, a refused ID); or the no-data ending (nothing on the scanner, or an ID problem
// left unrepaired), with idstatus telling which.
void readdata();
