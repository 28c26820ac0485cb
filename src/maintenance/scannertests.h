// The judgements of a scanner's clock and ID, shared by the Check Scanner screen, the setup
// screen's scanner test and the download: each reports to the Check Scanner screen, the
// setup screen's row of the scanner type, the main screen's "ID: 000 Date: HHMM DDMMYY"
// label and the corrupt data screen's clock.
#pragma once

#include <string>

// Reads an OPN 2001's or CS 1504's clock into scannerrawclock through the open csp2 session;
// its six-byte field keeps what it held when the read fails.
void readcspclock();
// Judges the clock in scannerclock (OPL 972x) or scannerrawclock (the others) against the
// PC: sets scannerdate, scannertime, datestatus and timestatus, and corrects the scanner's
// clock when AUTOTIME allows (a small difference, or an hour across a clock change).
void testthedate();
// Judges scannerid (idstatus 0 good, 1 not all digits, 2 longer than three characters,
// 3 000 or 999) and names its engineer from the engineer list.
void testtheID();

// The ID text as the screens show it, formatted "000": a number is zero-padded, any other
// text stands as it is.
std::string formatid(const std::string& id);
