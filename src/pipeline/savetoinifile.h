// Saving scan data: the lines of outlines[1..outcount] go into the BAR file of their
// scanner, in the store folder or on the PC, and the master file counts the files.
#pragma once

// Appends the lines to the section of outlines[0]'s scanner, in the file that already
// holds it or in a new one; writes the data log block first. A fault is reported and
// swallowed: the caller goes on.
void savetoinifile();
