#include "support/loopback.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {
sockaddr_in loopback(int port)
{
    sockaddr_in a{};
    a.sin_family = AF_INET;
    a.sin_port = htons((uint16_t)port);
    a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return a;
}
}  // namespace

int freeport()
{
    int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in a = loopback(0);
    ::bind(fd, (sockaddr*)&a, sizeof a);
    socklen_t len = sizeof a;
    ::getsockname(fd, (sockaddr*)&a, &len);
    ::close(fd);
    return ntohs(a.sin_port);
}

bool listening(int port)
{
    int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in a = loopback(port);
    bool ok = ::connect(fd, (sockaddr*)&a, sizeof a) == 0;
    ::close(fd);
    return ok;
}
