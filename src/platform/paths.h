// The Windows names the program's logic uses, mapped onto this machine by platform.ini.
//
// The logic sees the install folder as C:\Program Files\VexalBCv4\, the working folder as
// c:\tarnbc\, the server share as \\<ServerIP>\tagstore\ and ports as COM1..COM16. Only this
// layer turns those names into host paths. platform.ini lies in the real install folder:
//   [platform] site=<a second platform.ini>      default: none; its keys win over these
//   [drives]  home=<writable install folder>     default: the install folder itself
//   [drives]  C=<host folder for drive C>        default: drive_c in the home folder
//   [ports]   COM1=<device path> .. COM16=       default: the port does not exist
//   [shares]  \\host\share=<mounted folder>      default: reached over SMB
//   [smb]     user, password, workgroup          default: guest
//   [mail]    server, from, user, password, tls, cafile, support (see mail.h)
//                                                default: smtp://localhost:25
//   [web]     update, support                    default: empty, every fetch fails
//   [dialogs] answers, transcript                default: none
// The install folder itself is mapped to the real folder of the program file wherever
// drive C lies. With a home folder the two are laid one over the other: a name is found in
// the home folder first, then in the real install folder, and a new file goes to the home
// folder (a file that only the install folder holds is found there: the program reads
// those, the icons, OS\ and the PDFs, and writes none of them), so a read-only install (a package under /opt) keeps TAGSTORE.INI, LOGS\ and the
// rest of what the program writes in a folder of the user or the site. Values of [drives]
// and [platform] may start with ~/ and use $VAR or ${VAR}; $XDG_DATA_HOME, unset or empty,
// stands for ~/.local/share as the XDG rules say.
#pragma once

#include <string>
#include <vector>

namespace platform {

// The install folder as the logic sees it.
inline constexpr const char* installfolder = "C:\\Program Files\\VexalBCv4\\";

struct HostPath {
    enum Kind { local, smb, none } kind = none;
    std::string path;   // host path (local), or smb://host/share/rest (smb)
};

// Sets the real install folder and (re)reads its platform.ini, then the site file that it
// names. Called once at start; tests call it for each temporary install.
void initplatform(const std::string& hostinstalldir);
// The real install folder (host path, no trailing slash).
std::string hostinstalldir();
// The writable side of the install folder (host path, no trailing slash): [drives] home,
// made if missing, or the install folder itself.
std::string hosthomedir();
// The host folder that stands for drive C.
std::string hostdrivec();
// Every host folder that a Windows folder name stands for, the one searched first first: two
// for a folder of the install folder with a home folder apart from it, one otherwise (or
// none). Listings merge them.
std::vector<HostPath> layers(const std::string& winfolder);
// A platform.ini value with ~/ and environment variables expanded.
std::string expand(const std::string& value);

// A value of platform.ini; `fallback` when the section or key is missing.
std::string setting(const std::string& section, const std::string& key, const std::string& fallback = "");

// Maps a Windows path (drive letter, install folder, \\host\share) to where it lives. Each
// component is looked up without regard to case; components that do not exist yet keep the
// case written. A drive without a mapping gives kind none.
HostPath resolve(const std::string& winpath);

// Joins a folder and a name with one backslash.
std::string winjoin(const std::string& folder, const std::string& name);

}  // namespace platform
