// Inside the file layer: the operations on resolved host paths that files.cpp, the Win32
// calls and the profile calls share. Each call goes to the local or the SMB back end and
// passes the injected faults first, so every write path meets them. Errors come back as a
// small set of kinds that the callers turn into fault numbers or Win32 error codes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/paths.h"

namespace fsys {

using platform::HostPath;

enum class err {
    none,
    nofile,    // the name is missing, its folder exists
    nopath,    // a folder on the way is missing
    netpath,   // the share cannot be reached
    denied,
    exists,
    notempty,
    isfolder,  // a folder where a file was wanted
    full,
    badname,   // a path that maps nowhere
    io,
};

struct Info {
    bool folder = false;
    long long size = 0;
    bool readonly = false;
};

struct Entry {
    std::string name;
    bool folder = false;
};

// How a write treats the file: replace it, add to it, or only make sure it exists (empty
// when replacing) without counting as a write for the injected disk-full fault.
enum class writemode { replace, append, create, createappend };

err stat(const HostPath& p, Info& info);
err list(const HostPath& folder, std::vector<Entry>& entries);   // without . and ..
err read(const HostPath& p, std::string& bytes);
err write(const HostPath& p, std::string_view bytes, writemode mode);
err makefolder(const HostPath& p);
err removefolder(const HostPath& p);
err removefile(const HostPath& p);
err rename(const HostPath& from, const HostPath& to);   // replaces an existing target
err setreadonly(const HostPath& p, bool readonly);
// Puts a file's (or folder's) bytes on the disk (fsync), with `entry` also its name in its
// folder (fsync of the folder). On a share the server holds the bytes once a write has
// returned, so there is nothing more to do.
err flush(const HostPath& p, bool entry);

HostPath child(const HostPath& folder, const std::string& name);
HostPath parent(const HostPath& p);
std::string basename(const HostPath& p);

// Wild cards of a name's last part: * any run, ? one character, case ignored; "*.*" is "*".
bool haswild(std::string_view name);
bool wildmatch(std::string_view name, std::string_view pattern);
// A Windows path cut into its folder (with the trailing backslash) and its last part.
void splitlast(const std::string& winpath, std::string& folder, std::string& last);
// Entries of a folder whose names match a pattern, sorted by name without regard to case.
err matching(const HostPath& folder, const std::string& pattern, bool withfolders, std::vector<Entry>& found);
void sortentries(std::vector<Entry>& entries);

// Fault number and Win32 error code of an error kind.
int faultof(err e);
uint32_t win32of(err e);

// The back ends, behind the checks above.
namespace local {
err stat(const std::string& p, Info& info);
err list(const std::string& folder, std::vector<Entry>& entries);
err read(const std::string& p, std::string& bytes);
err write(const std::string& p, std::string_view bytes, bool append, bool truncate);
err makefolder(const std::string& p);
err removefolder(const std::string& p);
err removefile(const std::string& p);
err rename(const std::string& from, const std::string& to);
err setreadonly(const std::string& p, bool readonly);
err flush(const std::string& p, bool entry);
}  // namespace local

namespace smb {
err stat(const std::string& url, Info& info);
err list(const std::string& url, std::vector<Entry>& entries);
err read(const std::string& url, std::string& bytes);
err write(const std::string& url, std::string_view bytes, bool append, bool truncate);
err makefolder(const std::string& url);
err removefolder(const std::string& url);
err removefile(const std::string& url);
err rename(const std::string& from, const std::string& to);
err setreadonly(const std::string& url, bool readonly);
}  // namespace smb

// The injected faults (files::inject sets them).
namespace injected {
bool vanished(const HostPath& p);
bool readonly(const HostPath& p);   // p lies inside a folder made read-only
bool failthiswrite();               // counts one write; true for the one that fails
}  // namespace injected

}  // namespace fsys
