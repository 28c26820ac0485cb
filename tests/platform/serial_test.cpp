// Serial ports: the mapping from COMn, the exclusive port-exists test, and a line that goes.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/serial.h"
#include "support/emulator.h"
#include "support/tempinstall.h"

namespace {

// Another process that holds the device open, by the exclusive flag, by a lock, or both.
class Holder {
public:
    Holder(const std::string& path, bool exclusive, bool lock)
    {
        int ready[2];
        if (pipe(ready) != 0) return;
        const char* p = path.c_str();
        pid_ = fork();
        if (pid_ == 0) {
            int fd = open(p, O_RDWR | O_NOCTTY | O_NONBLOCK);
            if (exclusive) ioctl(fd, TIOCEXCL);
            if (lock) flock(fd, LOCK_EX);
            char c = fd >= 0 ? 'y' : 'n';
            if (write(ready[1], &c, 1) != 1) _exit(1);
            pause();
            _exit(0);
        }
        char c = 0;
        held_ = read(ready[0], &c, 1) == 1 && c == 'y';
        close(ready[0]);
        close(ready[1]);
    }
    ~Holder()
    {
        if (pid_ > 0) {
            kill(pid_, SIGKILL);
            waitpid(pid_, nullptr, 0);
        }
    }
    bool held() const { return held_; }

private:
    pid_t pid_ = -1;
    bool held_ = false;
};

TEST(Serial, PortsComeFromPlatformIni)
{
    TempInstall inst("[ports]\nCOM3=/dev/ttyS99-none\nCOM16=/tmp/x\n");
    EXPECT_EQ(serial::devicepath(3), "/dev/ttyS99-none");
    EXPECT_EQ(serial::devicepath(16), "/tmp/x");
    EXPECT_EQ(serial::devicepath(4), "");
    EXPECT_EQ(serial::devicepath(0), "") << "COM0 does not exist";
    EXPECT_FALSE(serial::portexists(3)) << "a mapped device that is missing";
    EXPECT_FALSE(serial::portexists(4)) << "no mapping";
    EXPECT_FALSE(serial::portexists(0));
    EXPECT_FALSE(serial::portexists(-1));
}

// An emulated scanner's port mapped to COM3.
class SerialLine : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(emu.ready()) << emu.output(); }
    Emulator emu{"opn"};
    TempInstall inst{emu.portsection(3)};
};

TEST_F(SerialLine, PortHeldByAnotherProcessCountsAsAbsent)
{
    EXPECT_TRUE(serial::portexists(3));
    EXPECT_TRUE(serial::portexists(3)) << "the test itself leaves the port free";
    {
        Holder locked(emu.link(), false, true);
        ASSERT_TRUE(locked.held());
        EXPECT_FALSE(serial::portexists(3)) << "held by a lock";
    }
    EXPECT_TRUE(serial::portexists(3));
    {
        Holder exclusive(emu.link(), true, false);
        ASSERT_TRUE(exclusive.held());
        EXPECT_FALSE(serial::portexists(3)) << "held by the exclusive flag (root passes it, so it is read)";
    }
}

TEST_F(SerialLine, OpenPortIsExclusiveAndClosingFreesIt)
{
    serial::Port a, b;
    ASSERT_TRUE(a.open(3, 9600, serial::Port::odd));
    EXPECT_TRUE(serial::portexists(3)) << "a port this program holds is there";
    EXPECT_FALSE(b.open(3)) << "a second open of the same port";
    a.close();
    EXPECT_TRUE(serial::portexists(3));
    EXPECT_TRUE(b.open(3));
    EXPECT_EQ(emu.stop(), 0);
    EXPECT_FALSE(serial::portexists(3)) << "held, but its device has gone";
}

TEST_F(SerialLine, ReadsWaitThenTellAGoneDevice)
{
    serial::Port p;
    ASSERT_TRUE(p.openpath(emu.link(), 9600));
    uint8_t buf[8];
    QElapsedTimer t;
    t.start();
    EXPECT_EQ(p.read(buf, 8, 100), 0) << "nothing comes from a silent line";
    EXPECT_GE(t.elapsed(), 90);
    EXPECT_EQ(emu.stop(), 0);
    EXPECT_EQ(p.read(buf, 8, 1000), -1);
    EXPECT_FALSE(p.write(buf, 8));
}

}  // namespace
