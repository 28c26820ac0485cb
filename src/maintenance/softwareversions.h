// The scanner's two versions out of the text of the loader's version event, which names
// "version" twice: "OS version: OS1.20 APP version: VX2.05".
#pragma once

#include <string>

// The operating system version is what follows the first "version" up to the next blank,
// the application version all that follows the second "version". Each begins two
// characters past the end of its "version", less a leading blank or ": ". A text with no
// blank after the first version raises 5, as the runtime's Left does.
void scannerversions(const std::string& statustext, std::string& os, std::string& app);
