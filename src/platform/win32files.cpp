// The Win32 file calls the routines name. Each sets the last error: 0 on success, the
// Windows code of what went wrong otherwise (2, 3, 5, 53 for a share out of reach, 80, 112).
#include "platform/files.h"
#include "platform/fsys.h"

namespace files {
namespace {

uint32_t lasterror = 0;

bool done(fsys::err e)
{
    SetLastError(fsys::win32of(e));
    return e == fsys::err::none;
}

}  // namespace

uint32_t GetLastError() { return lasterror; }

void SetLastError(uint32_t code) { lasterror = code; }

bool PathFileExistsA(const std::string& path)
{
    fsys::Info info;
    return done(fsys::stat(platform::resolve(path), info));
}

bool CopyFileA(const std::string& from, const std::string& to, bool failifexists)
{
    std::string bytes;
    if (!done(fsys::read(platform::resolve(from), bytes))) return false;
    auto target = platform::resolve(to);
    fsys::Info info;
    if (failifexists && fsys::stat(target, info) == fsys::err::none) return done(fsys::err::exists);
    return done(fsys::write(target, bytes, fsys::writemode::replace));
}

bool DeleteFileA(const std::string& path)
{
    return done(fsys::removefile(platform::resolve(path)));
}

uint32_t GetDriveTypeA(const std::string& root)
{
    constexpr uint32_t noroot = 1, fixed = 3, remote = 4;
    auto where = platform::resolve(root);
    if (where.kind == platform::HostPath::none) return noroot;
    bool unc = root.size() >= 2 && (root[0] == '\\' || root[0] == '/') && (root[1] == '\\' || root[1] == '/');
    if (!unc) return fixed;
    fsys::Info info;
    return fsys::stat(where, info) == fsys::err::none && info.folder ? remote : noroot;
}

bool SetFileAttributesA(const std::string& path, uint32_t attributes)
{
    constexpr uint32_t readonly = 1;
    return done(fsys::setreadonly(platform::resolve(path), (attributes & readonly) != 0));
}

}  // namespace files
