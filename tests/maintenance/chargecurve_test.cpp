// The charge curve: minutes from a level to 100%.
#include <gtest/gtest.h>

#include "maintenance/chargecurve.h"

namespace {

TEST(ChargeCurve, SumsAlongTheCurve)
{
    struct Row { int level, minutes; } rows[] = {
        {0, 131}, {30, 131}, {31, 130}, {42, 130}, {43, 129}, {71, 124}, {72, 123}, {75, 120}, {76, 119},
        {78, 109}, {79, 104}, {85, 86}, {86, 83}, {91, 38}, {92, 29}, {93, 24}, {96, 15}, {97, 12},
        {98, 8}, {99, 4}, {100, 2}, {101, 0}, {150, 0}, {-5, 131},
    };
    for (const auto& r : rows) EXPECT_EQ(chargeminutes(r.level), r.minutes) << "level " << r.level;
}

}  // namespace
