// Test entry: a QApplication on the offscreen platform, so screens and timers work headless.
#include <QApplication>
#include <cstdlib>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    if (!getenv("XDG_RUNTIME_DIR")) {
        static char dir[] = "/tmp/vexal-xdg-XXXXXX";
        if (mkdtemp(dir)) setenv("XDG_RUNTIME_DIR", dir, 1);
    }
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
