// Statement-style file operations (MkDir, RmDir, FileCopy, Kill, Name, FileLen, whole-file
// reads and writes, Dir) with the classic fault numbers.
#include "platform/files.h"

#include "platform/fsys.h"
#include "platform/paths.h"
#include "runtime/fault.h"
#include "runtime/vb.h"

#include <algorithm>

namespace files {
namespace {

using fsys::err;

[[noreturn]] void fail(err e) { raisefault(fsys::faultof(e)); }

void check(err e)
{
    if (e != err::none) fail(e);
}

platform::HostPath at(const std::string& path) { return platform::resolve(path); }

// Files (and with `folders` also folders) matching the pattern, sorted; 52 for a path that
// maps nowhere, nothing for a folder that cannot be listed. A folder of the install folder
// with a home folder apart lists both, a name in the home folder hiding the same name (in
// any case) of the install folder, as the look-up finds it.
std::vector<fsys::Entry> entries(const std::string& pattern, bool folders)
{
    std::string folder, last;
    fsys::splitlast(pattern, folder, last);
    auto places = platform::layers(folder);
    if (places.empty()) raisefault(fault::badfilename);
    std::vector<fsys::Entry> found;
    fsys::matching(places[0], last, folders, found);
    for (size_t i = 1; i < places.size(); ++i) {
        std::vector<fsys::Entry> more;
        fsys::matching(places[i], last, folders, more);
        for (auto& entry : more) {
            bool hidden = std::any_of(found.begin(), found.end(),
                                      [&](const fsys::Entry& e) { return LCase(e.name) == LCase(entry.name); });
            if (!hidden) found.push_back(std::move(entry));
        }
        fsys::sortentries(found);
    }
    return found;
}

struct DirState {
    std::vector<std::string> names;
    size_t next = 0;
    bool started = false;
};

DirState& dirstate()
{
    static DirState d;
    return d;
}

}  // namespace

bool exists(const std::string& path)
{
    fsys::Info info;
    return fsys::stat(at(path), info) == err::none;
}

bool isfolder(const std::string& path)
{
    fsys::Info info;
    return fsys::stat(at(path), info) == err::none && info.folder;
}

void makefolder(const std::string& path)
{
    err e = fsys::makefolder(at(path));
    if (e == err::exists) raisefault(fault::pathfileaccess);
    check(e);
}

void removefolder(const std::string& path)
{
    err e = fsys::removefolder(at(path));
    if (e == err::nofile) raisefault(fault::pathnotfound);
    check(e);
}

void copyfile(const std::string& from, const std::string& to)
{
    std::string bytes;
    check(fsys::read(at(from), bytes));
    check(fsys::write(at(to), bytes, fsys::writemode::replace));
}

void removefile(const std::string& path)
{
    std::string folder, last;
    fsys::splitlast(path, folder, last);
    if (!fsys::haswild(last)) {
        err e = fsys::removefile(at(path));
        if (e == err::isfolder) raisefault(fault::filenotfound);
        check(e);
        return;
    }
    auto found = entries(path, false);
    if (found.empty()) raisefault(fault::filenotfound);
    auto where = at(folder);
    for (const auto& entry : found) check(fsys::removefile(fsys::child(where, entry.name)));
}

void renamefile(const std::string& from, const std::string& to)
{
    fsys::Info info;
    err e = fsys::stat(at(from), info);
    if (e == err::nofile || e == err::nopath || e == err::netpath) raisefault(fault::filenotfound);
    check(e);
    auto source = at(from), target = at(to);
    if (target.path == source.path) {
        // The same file under another case: it takes the case written.
        std::string folder, last;
        fsys::splitlast(to, folder, last);
        target = fsys::child(fsys::parent(target), last);
    } else if (exists(to)) {
        raisefault(fault::fileexists);
    }
    check(fsys::rename(source, target));
}

long long filelength(const std::string& path)
{
    fsys::Info info;
    if (fsys::stat(at(path), info) != err::none) raisefault(fault::filenotfound);
    return info.size;
}

std::string readall(const std::string& path)
{
    std::string bytes;
    check(fsys::read(at(path), bytes));
    return bytes;
}

void writeall(const std::string& path, const std::string& bytes)
{
    check(fsys::write(at(path), bytes, fsys::writemode::replace));
}

void appendbytes(const std::string& path, const std::string& bytes)
{
    check(fsys::write(at(path), bytes, fsys::writemode::append));
}

void flush(const std::string& path, bool entry) { check(fsys::flush(at(path), entry)); }

std::vector<std::string> list(const std::string& pattern, bool folders)
{
    std::vector<std::string> names;
    for (auto& entry : entries(pattern, folders)) names.push_back(std::move(entry.name));
    return names;
}

std::string Dir(const std::string& pattern)
{
    auto& d = dirstate();
    d.names = list(pattern, false);
    d.next = 0;
    d.started = true;
    return Dir();
}

std::string Dir()
{
    auto& d = dirstate();
    if (!d.started) raisefault(fault::invalidcall);
    if (d.next < d.names.size()) return d.names[d.next++];
    d.started = false;  // asking again after the end is an invalid call
    return {};
}

}  // namespace files
