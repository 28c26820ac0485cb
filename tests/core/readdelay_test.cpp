// The read delay between OPL 972x calls: none at 0, n + 1 ticks of a second at n.
#include <QElapsedTimer>
#include <QTimer>
#include <gtest/gtest.h>

#include "core/globals.h"
#include "core/readdelay.h"

namespace {

TEST(ReadDelay, NoneAtZeroAndNPlusOneTicksOtherwise)
{
    resetglobals();
    QElapsedTimer t;
    t.start();
    waitreaddelay();
    EXPECT_LT(t.elapsed(), 100);

    g().readdelay = 1;
    bool ran = false;
    QTimer::singleShot(200, [&] { ran = true; });
    t.restart();
    waitreaddelay();
    EXPECT_GE(t.elapsed(), 1900);
    EXPECT_LT(t.elapsed(), 10000) << "two ticks, not a hang";
    EXPECT_TRUE(ran) << "events run during the wait";
    resetglobals();
}

}  // namespace
