// Mailing the export files to head office through the monitor form's mail controls.
#pragma once

#include <string>

// Sends every file of c:\tarnbc\exports\ (or, with none, a "test" file made for the mail)
// to `recipient` with `subject` and `note`. Mode "T" is a test: the folder is left as it was
// found; any other mode deletes the files that went once the mail has gone. No handler of
// its own: a failure of the mail reaches the caller's handler, and nothing is deleted then.
void sendmail(const std::string& recipient, const std::string& subject, const std::string& note,
              const std::string& mode);

// The setup screen's test button in Email mode: a test mail to the address in ServerIP.
void sendtestmail();
