// The double click on the main screen's outstanding list (List1): the delivery the list
// offers, after the guard question when an operation seems to be running.
#pragma once

// Email mode mails what waits; the server modes open the transfer screen (callerof[20] 1)
// when c:\tarnbc\BARCODE.INI counts files; Local mode does nothing. A fault is shown in the
// handler's own box and logged.
void outstandingdblclick();
