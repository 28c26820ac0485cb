// Fetching a file from a web host into a file of the install folder or anywhere else.
#pragma once

#include <string>

// Fetches URL into LocalFilename (a Windows path); returncode is true when the fetch
// succeeded.
void DownloadFile(const std::string& URL, const std::string& LocalFilename, bool& returncode);
