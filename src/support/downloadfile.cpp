#include "support/downloadfile.h"

#include "platform/web.h"

void DownloadFile(const std::string& URL, const std::string& LocalFilename, bool& returncode)
{
    returncode = URLDownloadToFileA(nullptr, URL, LocalFilename, 0, nullptr) == 0;
}
