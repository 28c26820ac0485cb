// E-mail delivery of the export files to head office: the question after an Email mode
// download, and the outstanding list's double click that sends what waits.
#pragma once

// Asks "Confirm Email Sending"; Yes mails the exports to the head office address (HOEmail),
// No holds them; then rebuilds the outstanding list. A failure of the mail reaches the
// caller's handler.
void emaildatafiles();

// The Email mode step of List1's double click: with savetype 3, sends what waits when the
// list shows files (more than one row) and returns true, so the double click ends there.
// False in any other mode: the double click goes on.
bool emailfromlist();
