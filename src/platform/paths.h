// The Windows names the program's logic uses, mapped onto this machine by platform.ini.
//
// The logic sees the install folder as C:\Program Files\VexalBCv4\, the working folder as
// c:\tarnbc\, the server share as \\<ServerIP>\tagstore\ and ports as COM1..COM16. Only this
// layer turns those names into host paths. platform.ini lies in the real install folder:
//   [drives]  C=<host folder for drive C>        default: drive_c beside the program
//   [ports]   COM1=<device path> .. COM16=       default: the port does not exist
//   [shares]  \\host\share=<mounted folder>      default: reached over SMB
//   [smb]     user, password, workgroup          default: guest
//   [mail]    server, from, user, password, tls, cafile, support (see mail.h)
//                                                default: smtp://localhost:25
//   [web]     update, support                    default: empty, every fetch fails
//   [dialogs] answers, transcript                default: none
// The install folder itself is mapped to the real folder of the program file wherever
// drive C lies.
#pragma once

#include <string>

namespace platform {

// The install folder as the logic sees it.
inline constexpr const char* installfolder = "C:\\Program Files\\VexalBCv4\\";

// Sets the real install folder and (re)reads its platform.ini. Called once at start; tests
// call it for each temporary install.
void initplatform(const std::string& hostinstalldir);
// The real install folder (host path, no trailing slash).
std::string hostinstalldir();
// The host folder that stands for drive C.
std::string hostdrivec();

// A value of platform.ini; `fallback` when the section or key is missing.
std::string setting(const std::string& section, const std::string& key, const std::string& fallback = "");

struct HostPath {
    enum Kind { local, smb, none } kind = none;
    std::string path;   // host path (local), or smb://host/share/rest (smb)
};

// Maps a Windows path (drive letter, install folder, \\host\share) to where it lives. Each
// component is looked up without regard to case; components that do not exist yet keep the
// case written. A drive without a mapping gives kind none.
HostPath resolve(const std::string& winpath);

// Joins a folder and a name with one backslash.
std::string winjoin(const std::string& folder, const std::string& name);

}  // namespace platform
