#include "platform/instance.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "platform/paths.h"

// The running copy holds an exclusive flock on vexalbc.lock in the writable side of the
// install folder (the home folder of platform.ini, so one copy per user, or per site when
// the site points every user to one folder) for as long as it lives; the kernel drops the lock when the process ends, however it ends.

namespace instance {
namespace {

int& lockfd()
{
    static int fd = -1;
    return fd;
}

}  // namespace

std::string lockpath() { return platform::hosthomedir() + "/vexalbc.lock"; }

int countcopies()
{
    if (lockfd() >= 0) return 1;
    std::string path = lockpath();
    int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) {
        // Without a lock file nothing can be told: count this copy alone rather than refuse
        // to start.
        std::fprintf(stderr, "instance: cannot open the lock file %s: %s\n", path.c_str(), std::strerror(errno));
        return 1;
    }
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        int error = errno;
        ::close(fd);
        if (error == EWOULDBLOCK) return 2;
        std::fprintf(stderr, "instance: cannot lock %s: %s\n", path.c_str(), std::strerror(error));
        return 1;
    }
    lockfd() = fd;
    return 1;
}

void release()
{
    if (lockfd() < 0) return;
    ::flock(lockfd(), LOCK_UN);
    ::close(lockfd());
    lockfd() = -1;
}

}  // namespace instance
