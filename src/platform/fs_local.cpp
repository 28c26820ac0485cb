// Local back end of the file layer: POSIX calls on host paths. A file without any write
// permission stands for a file with the read-only attribute and refuses writes and deletes,
// also to root, as Windows would.
#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "platform/fsys.h"

namespace fsys::local {
namespace {

std::string parentof(const std::string& p)
{
    auto slash = p.find_last_of('/');
    if (slash == std::string::npos || slash == 0) return "/";
    return p.substr(0, slash);
}

bool folderexists(const std::string& p)
{
    struct stat st;
    return ::stat(p.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

err kindof(int e, const std::string& p)
{
    switch (e) {
    case 0: return err::none;
    case ENOENT: return folderexists(parentof(p)) ? err::nofile : err::nopath;
    case ENOTDIR: return err::nopath;
    case EACCES: case EPERM: case EROFS: case ETXTBSY: case EBUSY: return err::denied;
    case EEXIST: return err::exists;
    case ENOTEMPTY: return err::notempty;
    case EISDIR: return err::isfolder;
    case ENOSPC: case EDQUOT: case EFBIG: return err::full;
    case ENAMETOOLONG: case EINVAL: case EILSEQ: return err::badname;
    default: return err::io;
    }
}

// A present file whose mode has no write bit is read-only.
bool readonlyfile(const std::string& p)
{
    struct stat st;
    return ::stat(p.c_str(), &st) == 0 && S_ISREG(st.st_mode) && (st.st_mode & 0222) == 0;
}

}  // namespace

err stat(const std::string& p, Info& info)
{
    struct stat st;
    if (::stat(p.c_str(), &st) != 0) return kindof(errno, p);
    info.folder = S_ISDIR(st.st_mode);
    info.size = st.st_size;
    info.readonly = (st.st_mode & 0222) == 0;
    return err::none;
}

err list(const std::string& folder, std::vector<Entry>& entries)
{
    DIR* d = ::opendir(folder.c_str());
    if (!d) return kindof(errno, folder);
    while (dirent* e = ::readdir(d)) {
        std::string name = e->d_name;
        if (name == "." || name == "..") continue;
        bool isdir = e->d_type == DT_DIR;
        if (e->d_type == DT_UNKNOWN || e->d_type == DT_LNK) isdir = folderexists(folder + "/" + name);
        entries.push_back({name, isdir});
    }
    ::closedir(d);
    return err::none;
}

err read(const std::string& p, std::string& bytes)
{
    if (folderexists(p)) return err::isfolder;
    int fd = ::open(p.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return kindof(errno, p);
    bytes.clear();
    char buf[65536];
    for (;;) {
        ssize_t n = ::read(fd, buf, sizeof buf);
        if (n < 0) {
            if (errno == EINTR) continue;
            int e = errno;
            ::close(fd);
            return kindof(e, p);
        }
        if (n == 0) break;
        bytes.append(buf, (size_t)n);
    }
    ::close(fd);
    return err::none;
}

err write(const std::string& p, std::string_view bytes, bool append, bool truncate)
{
    if (folderexists(p)) return err::isfolder;
    if (readonlyfile(p)) return err::denied;
    // A replacement is written over the old bytes and then cut to its length: truncating to
    // nothing first makes ext4 flush the file at close, which costs milliseconds a write.
    int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (append ? O_APPEND : 0);
    int fd = ::open(p.c_str(), flags, 0644);
    if (fd < 0) return kindof(errno, p);
    size_t done = 0;
    while (done < bytes.size()) {
        ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0) {
            if (errno == EINTR) continue;
            int e = errno;
            ::close(fd);
            return kindof(e, p);
        }
        done += (size_t)n;
    }
    if (truncate && ::ftruncate(fd, (off_t)bytes.size()) != 0) {
        int e = errno;
        ::close(fd);
        return kindof(e, p);
    }
    if (::close(fd) != 0) return kindof(errno, p);
    return err::none;
}

err makefolder(const std::string& p)
{
    return ::mkdir(p.c_str(), 0755) == 0 ? err::none : kindof(errno, p);
}

err removefolder(const std::string& p)
{
    if (::rmdir(p.c_str()) == 0) return err::none;
    int e = errno;
    if (e == EEXIST) e = ENOTEMPTY;
    return kindof(e, p);
}

err removefile(const std::string& p)
{
    if (folderexists(p)) return err::isfolder;
    if (readonlyfile(p)) return err::denied;
    return ::unlink(p.c_str()) == 0 ? err::none : kindof(errno, p);
}

err rename(const std::string& from, const std::string& to)
{
    if (readonlyfile(to)) return err::denied;
    if (::rename(from.c_str(), to.c_str()) == 0) return err::none;
    int e = errno;
    if (e == ENOENT && ::access(from.c_str(), F_OK) == 0) return kindof(e, to);
    return kindof(e, from);
}

err setreadonly(const std::string& p, bool readonly)
{
    struct stat st;
    if (::stat(p.c_str(), &st) != 0) return kindof(errno, p);
    mode_t mode = st.st_mode & 07777;
    mode = readonly ? (mode & ~0222) : (mode | 0200);
    return ::chmod(p.c_str(), mode) == 0 ? err::none : kindof(errno, p);
}

err flush(const std::string& p, bool entry)
{
    std::vector<std::string> paths = {p};
    if (entry) paths.push_back(parentof(p));
    for (const std::string& what : paths) {
        int fd = ::open(what.c_str(), O_RDONLY | O_CLOEXEC);
        if (fd < 0) return kindof(errno, what);
        int rc = ::fsync(fd);
        int e = errno;
        ::close(fd);
        if (rc != 0) return kindof(e, what);
    }
    return err::none;
}

}  // namespace fsys::local
