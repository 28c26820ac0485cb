#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/instance.h"
#include "support/tempinstall.h"

namespace {

// A second process that waits for a byte on `go`, counts the copies, says how many on `told`
// and, when `hold` is set, keeps its lock until `go` closes. It is forked while this process
// holds no lock, so that it starts with none of its own.
pid_t secondcopy(const int go[2], int told, bool hold)
{
    pid_t pid = ::fork();
    if (pid != 0) return pid;
    ::close(go[1]);
    char c;
    if (::read(go[0], &c, 1) != 1) ::_exit(100);
    char n = (char)instance::countcopies();
    if (::write(told, &n, 1) != 1) ::_exit(101);
    if (hold)
        while (::read(go[0], &c, 1) > 0) {
        }
    ::_exit(0);
}

int answer(int from)
{
    char n = 0;
    return ::read(from, &n, 1) == 1 ? n : -1;
}

TEST(Instance, SecondProcessSeesTheLockHolder)
{
    TempInstall t;
    EXPECT_EQ(instance::lockpath(), t.root() + "/vexalbc.lock");
    t.configure("[drives]\nhome=" + t.root() + "/home\n");
    EXPECT_EQ(instance::lockpath(), t.root() + "/home/vexalbc.lock") << "the install folder may be read-only";
    t.configure("");

    int go[2], told[2];
    ASSERT_EQ(::pipe(go), 0);
    ASSERT_EQ(::pipe(told), 0);

    // We hold the lock: the other process counts two.
    pid_t other = secondcopy(go, told[1], false);
    EXPECT_EQ(instance::countcopies(), 1);
    EXPECT_EQ(instance::countcopies(), 1);  // asking again keeps it
    ASSERT_EQ(::write(go[1], "x", 1), 1);
    EXPECT_EQ(answer(told[0]), 2);
    int status = 0;
    ::waitpid(other, &status, 0);

    // Given up, it goes to the other process, and we then count two without holding it.
    instance::release();
    other = secondcopy(go, told[1], true);
    ASSERT_EQ(::write(go[1], "x", 1), 1);
    EXPECT_EQ(answer(told[0]), 1);
    EXPECT_EQ(instance::countcopies(), 2);
    ::close(go[1]);  // the other copy ends, and its lock with it
    ::waitpid(other, &status, 0);
    EXPECT_EQ(instance::countcopies(), 1);
    instance::release();
    ::close(go[0]);
    ::close(told[0]);
    ::close(told[1]);
}

}  // namespace
