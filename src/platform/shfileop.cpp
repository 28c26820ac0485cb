// SHFileOperationA: copy, move, delete and rename of files named with wild cards, reporting as
// the Windows call does. The names in pFrom are checked first; a name that is missing, or a
// pattern that matches nothing at all, fails the call with its error before anything is
// done. A failure while files are being done stops the operation, sets
// fAnyOperationsAborted and leaves the Win32 code in the last error and the return value.
// Matched folders are copied and deleted with all they hold. A missing target folder is
// made, with the folders above it.
#include "platform/files.h"
#include "platform/fsys.h"

namespace files {
namespace {

using fsys::err;
using platform::HostPath;

struct Item {
    HostPath path;
    std::string name;
    bool folder = false;
};

// The names of a NUL-separated list closed by an empty name.
std::vector<std::string> names(const std::string& list)
{
    std::vector<std::string> out;
    size_t at = 0;
    while (at < list.size()) {
        size_t end = list.find('\0', at);
        if (end == std::string::npos) end = list.size();
        if (end == at) break;
        out.push_back(list.substr(at, end - at));
        at = end + 1;
    }
    return out;
}

err gather(const std::vector<std::string>& sources, std::vector<Item>& items)
{
    for (const auto& source : sources) {
        std::string folder, last;
        fsys::splitlast(source, folder, last);
        if (fsys::haswild(last)) {
            auto where = platform::resolve(folder);
            std::vector<fsys::Entry> found;
            if (err e = fsys::matching(where, last, true, found); e != err::none) return e;
            for (const auto& entry : found) items.push_back({fsys::child(where, entry.name), entry.name, entry.folder});
        } else {
            auto where = platform::resolve(source);
            fsys::Info info;
            if (err e = fsys::stat(where, info); e != err::none) return e;
            items.push_back({where, fsys::basename(where), info.folder});
        }
    }
    return items.empty() ? err::nofile : err::none;
}

err makepath(const HostPath& p)
{
    fsys::Info info;
    err e = fsys::stat(p, info);
    if (e == err::none) return info.folder ? err::none : err::exists;
    if (e == err::nopath) {
        HostPath up = fsys::parent(p);
        if (up.path == p.path) return e;
        if (err u = makepath(up); u != err::none) return u;
    } else if (e != err::nofile) {
        return e;
    }
    e = fsys::makefolder(p);
    return e == err::exists ? err::none : e;
}

err copytree(const Item& item, const HostPath& to)
{
    if (!item.folder) {
        std::string bytes;
        if (err e = fsys::read(item.path, bytes); e != err::none) return e;
        return fsys::write(to, bytes, fsys::writemode::replace);
    }
    if (err e = makepath(to); e != err::none) return e;
    std::vector<fsys::Entry> inside;
    if (err e = fsys::list(item.path, inside); e != err::none) return e;
    for (const auto& entry : inside) {
        Item sub{fsys::child(item.path, entry.name), entry.name, entry.folder};
        if (err e = copytree(sub, fsys::child(to, entry.name)); e != err::none) return e;
    }
    return err::none;
}

err deletetree(const Item& item)
{
    if (!item.folder) return fsys::removefile(item.path);
    std::vector<fsys::Entry> inside;
    if (err e = fsys::list(item.path, inside); e != err::none) return e;
    for (const auto& entry : inside) {
        if (err e = deletetree({fsys::child(item.path, entry.name), entry.name, entry.folder}); e != err::none) return e;
    }
    return fsys::removefolder(item.path);
}

// Where each item goes: into the folder pTo when several items go, when pTo ends in a
// backslash or names a folder; otherwise pTo is the new name of the one item.
err transfer(const std::vector<Item>& items, const std::string& to, bool several, bool move)
{
    HostPath target = platform::resolve(to);
    fsys::Info info;
    bool intofolder = several || (!to.empty() && (to.back() == '\\' || to.back() == '/')) ||
                      (fsys::stat(target, info) == err::none && info.folder);
    if (err e = makepath(intofolder ? target : fsys::parent(target)); e != err::none) return e;
    for (const auto& item : items) {
        HostPath dest = intofolder ? platform::resolve(platform::winjoin(to, item.name)) : target;
        if (err e = copytree(item, dest); e != err::none) return e;
        if (move) {
            if (err e = deletetree(item); e != err::none) return e;
        }
    }
    return err::none;
}

int finish(SHFILEOPSTRUCTA& op, err e, bool started)
{
    uint32_t code = fsys::win32of(e);
    SetLastError(code);
    if (e != err::none && started) op.fAnyOperationsAborted = 1;
    return (int)code;
}

}  // namespace

int SHFileOperationA(SHFILEOPSTRUCTA& op)
{
    op.fAnyOperationsAborted = 0;
    auto sources = names(op.pFrom);
    auto targets = names(op.pTo);
    std::string to = targets.empty() ? std::string() : targets.front();
    constexpr uint32_t invalidparameter = 87;

    if (op.wFunc != FO_COPY && op.wFunc != FO_MOVE && op.wFunc != FO_DELETE && op.wFunc != FO_RENAME) {
        SetLastError(invalidparameter);
        return (int)invalidparameter;
    }
    std::vector<Item> items;
    if (err e = gather(sources, items); e != err::none) return finish(op, e, false);

    switch (op.wFunc) {
    case FO_DELETE:
        for (const auto& item : items) {
            if (err e = deletetree(item); e != err::none) return finish(op, e, true);
        }
        return finish(op, err::none, true);
    case FO_RENAME: {
        if (items.size() != 1 || to.empty()) return finish(op, err::badname, false);
        fsys::Info info;
        HostPath dest = platform::resolve(to);
        if (fsys::stat(dest, info) == err::none) return finish(op, err::exists, false);
        return finish(op, fsys::rename(items.front().path, dest), true);
    }
    default: {
        bool several = sources.size() > 1 || items.size() > 1 ||
                       (!sources.empty() && fsys::haswild(sources.front()));
        return finish(op, transfer(items, to, several, op.wFunc == FO_MOVE), true);
    }
    }
}

}  // namespace files
