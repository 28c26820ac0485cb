#include <QElapsedTimer>
#include <gtest/gtest.h>

#include "platform/clock.h"

namespace {

using namespace platform;

TEST(Clock, SetRunsOnAdvanceMovesResetReturns)
{
    QDateTime moment(QDate(2024, 2, 29), QTime(23, 59, 58));
    clock::set(moment);
    QElapsedTimer wait;
    wait.start();
    while (wait.elapsed() < 30) {
    }
    qint64 ran = moment.msecsTo(clock::now());
    EXPECT_GE(ran, 30);
    EXPECT_LT(ran, 2000);
    EXPECT_EQ(clock::today(), QDate(2024, 2, 29));
    EXPECT_NEAR(clock::Timer(), 86398.0, 1.5);

    clock::advance(3);  // past midnight: a new day
    EXPECT_EQ(clock::today(), QDate(2024, 3, 1));
    EXPECT_LT(clock::Timer(), 3.0);
    clock::advance(-30 * 86400);
    EXPECT_EQ(clock::today(), QDate(2024, 1, 31));

    clock::reset();
    EXPECT_LT(std::abs(QDateTime::currentDateTime().msecsTo(clock::now())), 1000);
}

}  // namespace
