// Fetching from the two web hosts ([web] update and support in platform.ini).
#pragma once

#include <string>

// Fetches `url` into the file at the Windows path `file`. 0 on success; any other value is
// a failure (an HTTP error status, a refused connection, a file that could not be written).
long URLDownloadToFileA(void* caller, const std::string& url, const std::string& file,
                        long reserved = 0, void* callback = nullptr);

namespace web {
constexpr long defaulttimeout = 10;
// Seconds a fetch waits for the connection, and for data once connected, before it fails:
// [web] timeout of platform.ini (1 to 3600), 10 when it is not set or not a number.
long timeout();
// The address of `path` on the update or support web host: the host's base from
// platform.ini followed by the path, blanks escaped. "" when the host is not set, and a
// fetch of "" fails quietly.
std::string updateaddress(const std::string& path);
std::string supportaddress(const std::string& path);
}  // namespace web
