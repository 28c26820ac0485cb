// The file layer's dispatch: injected faults first, then the local or the SMB back end.
#include "platform/fsys.h"

namespace fsys {
namespace {

using Kind = HostPath::Kind;

// Faults every operation meets: a path that maps nowhere, a vanished share.
err reachable(const HostPath& p)
{
    if (p.kind == Kind::none) return err::badname;
    if (injected::vanished(p)) return err::netpath;
    return err::none;
}

// ... and every change meets a folder made read-only.
err writable(const HostPath& p)
{
    if (err e = reachable(p); e != err::none) return e;
    return injected::readonly(p) ? err::denied : err::none;
}

// smb://host/share of an SMB path.
std::string shareof(const std::string& url)
{
    size_t slashes = 0;
    for (size_t i = 6; i < url.size(); ++i)
        if (url[i] == '/' && ++slashes == 2) return url.substr(0, i);
    return url;
}

}  // namespace

err stat(const HostPath& p, Info& info)
{
    if (err e = reachable(p); e != err::none) return e;
    return p.kind == Kind::local ? local::stat(p.path, info) : smb::stat(p.path, info);
}

err list(const HostPath& folder, std::vector<Entry>& entries)
{
    if (err e = reachable(folder); e != err::none) return e;
    return folder.kind == Kind::local ? local::list(folder.path, entries) : smb::list(folder.path, entries);
}

err read(const HostPath& p, std::string& bytes)
{
    if (err e = reachable(p); e != err::none) return e;
    return p.kind == Kind::local ? local::read(p.path, bytes) : smb::read(p.path, bytes);
}

err write(const HostPath& p, std::string_view bytes, writemode mode)
{
    if (err e = writable(p); e != err::none) return e;
    bool counted = mode == writemode::replace || mode == writemode::append;
    if (counted && injected::failthiswrite()) return err::full;
    bool append = mode == writemode::append || mode == writemode::createappend;
    bool truncate = mode == writemode::replace || mode == writemode::create;
    return p.kind == Kind::local ? local::write(p.path, bytes, append, truncate)
                                 : smb::write(p.path, bytes, append, truncate);
}

err makefolder(const HostPath& p)
{
    if (err e = writable(p); e != err::none) return e;
    return p.kind == Kind::local ? local::makefolder(p.path) : smb::makefolder(p.path);
}

err removefolder(const HostPath& p)
{
    if (err e = writable(p); e != err::none) return e;
    return p.kind == Kind::local ? local::removefolder(p.path) : smb::removefolder(p.path);
}

err removefile(const HostPath& p)
{
    if (err e = writable(p); e != err::none) return e;
    return p.kind == Kind::local ? local::removefile(p.path) : smb::removefile(p.path);
}

// Within one back end (and one share) a real rename; across them a copy and a delete.
err rename(const HostPath& from, const HostPath& to)
{
    if (err e = writable(from); e != err::none) return e;
    if (err e = writable(to); e != err::none) return e;
    if (from.kind == Kind::local && to.kind == Kind::local) return local::rename(from.path, to.path);
    if (from.kind == Kind::smb && to.kind == Kind::smb && shareof(from.path) == shareof(to.path))
        return smb::rename(from.path, to.path);
    std::string bytes;
    if (err e = read(from, bytes); e != err::none) return e;
    if (err e = write(to, bytes, writemode::replace); e != err::none) return e;
    return removefile(from);
}

err setreadonly(const HostPath& p, bool readonly)
{
    if (err e = writable(p); e != err::none) return e;
    return p.kind == Kind::local ? local::setreadonly(p.path, readonly) : smb::setreadonly(p.path, readonly);
}

err flush(const HostPath& p, bool entry)
{
    if (err e = reachable(p); e != err::none) return e;
    return p.kind == Kind::local ? local::flush(p.path, entry) : err::none;
}

HostPath child(const HostPath& folder, const std::string& name)
{
    std::string path = folder.path;
    if (path.empty() || path.back() != '/') path += '/';
    return {folder.kind, path + name};
}

HostPath parent(const HostPath& p)
{
    auto slash = p.path.find_last_of('/');
    if (slash == std::string::npos) return p;
    return {p.kind, slash == 0 ? std::string("/") : p.path.substr(0, slash)};
}

std::string basename(const HostPath& p)
{
    auto slash = p.path.find_last_of('/');
    return slash == std::string::npos ? p.path : p.path.substr(slash + 1);
}

int faultof(err e)
{
    switch (e) {
    case err::none: return 0;
    case err::nofile: return 53;
    case err::nopath: case err::netpath: return 76;
    case err::denied: return 70;
    case err::exists: return 58;
    case err::notempty: case err::isfolder: return 75;
    case err::full: return 61;
    case err::badname: return 52;
    case err::io: return 57;
    }
    return 57;
}

uint32_t win32of(err e)
{
    switch (e) {
    case err::none: return 0;
    case err::nofile: return 2;        // ERROR_FILE_NOT_FOUND
    case err::nopath: return 3;        // ERROR_PATH_NOT_FOUND
    case err::badname: return 3;       // a drive that does not exist
    case err::denied: return 5;        // ERROR_ACCESS_DENIED
    case err::isfolder: return 5;
    case err::exists: return 80;       // ERROR_FILE_EXISTS
    case err::full: return 112;        // ERROR_DISK_FULL
    case err::netpath: return 53;      // ERROR_BAD_NETPATH
    case err::notempty: return 145;    // ERROR_DIR_NOT_EMPTY
    case err::io: return 1117;         // ERROR_IO_DEVICE
    }
    return 1117;
}

}  // namespace fsys
