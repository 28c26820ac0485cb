// SMB back end of the file layer: shares that platform.ini does not map to a folder are
// reached with libsmbclient, as the user, password and workgroup of [smb] (guest when
// unset), on the port of [smb] port= when given.
//
// libsmbclient's traps on Samba 4.17: O_WRONLY|O_APPEND fails and O_WRONLY with a seek to
// the end writes at offset 0, so appends open O_RDWR|O_APPEND; smbc_splice is never used
// (it crashes without a progress callback). A refused connection, a missing share and a
// stopped server come back as ECONNREFUSED or ENOENT.
#include "platform/fsys.h"

#ifdef VEXAL_HAVE_SMBCLIENT

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <libsmbclient.h>
#include <sys/stat.h>

namespace fsys::smb {
namespace {

struct Credentials {
    std::string user, password, workgroup, port;
    bool operator==(const Credentials&) const = default;
};

Credentials wanted()
{
    return {platform::setting("smb", "user", "guest"), platform::setting("smb", "password", ""),
            platform::setting("smb", "workgroup", "WORKGROUP"), platform::setting("smb", "port", "")};
}

Credentials current;

void copyfield(char* out, int size, const std::string& text)
{
    if (size <= 0) return;
    std::strncpy(out, text.c_str(), (size_t)size - 1);
    out[size - 1] = 0;
}

void authenticate(SMBCCTX*, const char*, const char*, char* workgroup, int wgsize, char* user,
                  int usersize, char* password, int pwsize)
{
    copyfield(workgroup, wgsize, current.workgroup);
    copyfield(user, usersize, current.user);
    copyfield(password, pwsize, current.password);
}

// One client context, rebuilt when platform.ini names other credentials or another port.
bool ready()
{
    static SMBCCTX* ctx = nullptr;
    Credentials want = wanted();
    if (ctx && want == current) return true;
    if (ctx) {
        smbc_free_context(ctx, 1);
        ctx = nullptr;
    }
    current = want;
    SMBCCTX* c = smbc_new_context();
    if (!c) return false;
    smbc_setFunctionAuthDataWithContext(c, authenticate);
    smbc_setUser(c, current.user.c_str());
    smbc_setWorkgroup(c, current.workgroup.c_str());
    smbc_setTimeout(c, 5000);
    smbc_setOptionNoAutoAnonymousLogin(c, 0);
    if (int port = std::atoi(current.port.c_str()); port > 0 && port < 65536)
        smbc_setPort(c, (uint16_t)port);
    if (!smbc_init_context(c)) {
        smbc_free_context(c, 0);
        return false;
    }
    smbc_set_context(c);
    ctx = c;
    return true;
}

// smb://host/share/rest -> smb://host/share/rest without its last part.
std::string parentof(const std::string& url)
{
    auto slash = url.find_last_of('/');
    return slash == std::string::npos ? url : url.substr(0, slash);
}

// The share itself: smb://host/share.
bool isshareroot(const std::string& url)
{
    size_t n = 0;
    for (size_t i = 6; i < url.size(); ++i)
        if (url[i] == '/') ++n;
    return n <= 1;
}

err kindof(int e, const std::string& url)
{
    switch (e) {
    case 0: return err::none;
    case ENOENT: {
        if (isshareroot(url)) return err::netpath;
        struct stat st;
        std::string up = parentof(url);
        if (smbc_stat(up.c_str(), &st) == 0) return S_ISDIR(st.st_mode) ? err::nofile : err::nopath;
        int upe = errno;
        if (upe == ENOENT || upe == ENOTDIR) return isshareroot(up) ? err::netpath : err::nopath;
        return err::netpath;
    }
    case ENOTDIR: return err::nopath;
    case EACCES: case EPERM: case EROFS: case EBUSY: return err::denied;
    case EEXIST: return err::exists;
    case ENOTEMPTY: return err::notempty;
    case EISDIR: return err::isfolder;
    case ENOSPC: case EDQUOT: case EFBIG: return err::full;
    case EINVAL: case ENAMETOOLONG: return err::badname;
    case ECONNREFUSED: case ECONNRESET: case ECONNABORTED: case EHOSTUNREACH: case ENETUNREACH:
    case ETIMEDOUT: case ENODEV: case ENXIO: case EPIPE: case ENOTCONN:
        return err::netpath;
    default: return err::io;
    }
}

}  // namespace

err stat(const std::string& url, Info& info)
{
    if (!ready()) return err::netpath;
    struct stat st;
    if (smbc_stat(url.c_str(), &st) != 0) return kindof(errno, url);
    info.folder = S_ISDIR(st.st_mode);
    info.size = st.st_size;
    info.readonly = (st.st_mode & 0222) == 0;
    return err::none;
}

err list(const std::string& url, std::vector<Entry>& entries)
{
    if (!ready()) return err::netpath;
    int dh = smbc_opendir(url.c_str());
    if (dh < 0) return kindof(errno, url);
    while (smbc_dirent* e = smbc_readdir(dh)) {
        std::string name = e->name;
        if (name == "." || name == "..") continue;
        if (e->smbc_type == SMBC_DIR) entries.push_back({name, true});
        else if (e->smbc_type == SMBC_FILE) entries.push_back({name, false});
    }
    smbc_closedir(dh);
    return err::none;
}

err read(const std::string& url, std::string& bytes)
{
    if (!ready()) return err::netpath;
    int fd = smbc_open(url.c_str(), O_RDONLY, 0);
    if (fd < 0) return kindof(errno, url);
    bytes.clear();
    char buf[65536];
    for (;;) {
        ssize_t n = smbc_read(fd, buf, sizeof buf);
        if (n < 0) {
            int e = errno;
            smbc_close(fd);
            return kindof(e, url);
        }
        if (n == 0) break;
        bytes.append(buf, (size_t)n);
    }
    smbc_close(fd);
    return err::none;
}

err write(const std::string& url, std::string_view bytes, bool append, bool truncate)
{
    if (!ready()) return err::netpath;
    int flags = O_CREAT | (append ? O_RDWR | O_APPEND : O_WRONLY) | (truncate ? O_TRUNC : 0);
    int fd = smbc_open(url.c_str(), flags, 0644);
    if (fd < 0) return kindof(errno, url);
    size_t done = 0;
    while (done < bytes.size()) {
        ssize_t n = smbc_write(fd, bytes.data() + done, bytes.size() - done);
        if (n <= 0) {
            int e = n < 0 ? errno : EIO;
            smbc_close(fd);
            return kindof(e, url);
        }
        done += (size_t)n;
    }
    if (smbc_close(fd) != 0) return kindof(errno, url);
    return err::none;
}

err makefolder(const std::string& url)
{
    if (!ready()) return err::netpath;
    return smbc_mkdir(url.c_str(), 0755) == 0 ? err::none : kindof(errno, url);
}

err removefolder(const std::string& url)
{
    if (!ready()) return err::netpath;
    return smbc_rmdir(url.c_str()) == 0 ? err::none : kindof(errno, url);
}

err removefile(const std::string& url)
{
    if (!ready()) return err::netpath;
    return smbc_unlink(url.c_str()) == 0 ? err::none : kindof(errno, url);
}

err rename(const std::string& from, const std::string& to)
{
    if (!ready()) return err::netpath;
    return smbc_rename(from.c_str(), to.c_str()) == 0 ? err::none : kindof(errno, from);
}

err setreadonly(const std::string& url, bool readonly)
{
    if (!ready()) return err::netpath;
    return smbc_chmod(url.c_str(), readonly ? 0444 : 0644) == 0 ? err::none : kindof(errno, url);
}

}  // namespace fsys::smb

#else  // built without libsmbclient: every unmapped share is out of reach

namespace fsys::smb {
err stat(const std::string&, Info&) { return err::netpath; }
err list(const std::string&, std::vector<Entry>&) { return err::netpath; }
err read(const std::string&, std::string&) { return err::netpath; }
err write(const std::string&, std::string_view, bool, bool) { return err::netpath; }
err makefolder(const std::string&) { return err::netpath; }
err removefolder(const std::string&) { return err::netpath; }
err removefile(const std::string&) { return err::netpath; }
err rename(const std::string&, const std::string&) { return err::netpath; }
err setreadonly(const std::string&, bool) { return err::netpath; }
}  // namespace fsys::smb

#endif
