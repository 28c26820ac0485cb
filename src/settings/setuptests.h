// The scanner rows' tests on the setup screen: the test of one scanner, the test of all,
// the scan for a scanner's port and the scanner information behind a test result.
#pragma once

// An unused scanner reads "N/A", a scanner without a port "INVALID PORT"; otherwise the
// scanner information screen reads the scanner with its screen hidden and reports into
// TestResult(i) and the row's frames.
void runtests(int i);
// Every row back to "N/A" with neutral frames, then runtests for each used scanner.
void testall();
// Lists the ports again and opens the port scan screen for scanner i; a port found there
// goes into SPorts(i) and is tested.
void scanforport(int i);
// The scanner information screen for scanner i, read afresh; its Finish comes back here.
void showscannerinfo(int i);
