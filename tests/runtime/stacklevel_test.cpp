// The stack space of routines that call each other round in a circle.
#include <gtest/gtest.h>

#include "runtime/fault.h"

namespace {

// Calls itself `left` more times; returns the depth reached when the stack ran out, or -1.
int recurse(int left)
{
    try {
        StackLevel level;
        return left > 0 ? recurse(left - 1) : -1;
    } catch (const Fault& f) {
        EXPECT_EQ(f.number, 28);
        EXPECT_EQ(f.description, "Out of stack space");
        return StackLevel::depth();
    }
}

TEST(StackLevel, TheEntryPastTheLimitRaises28AndTheLevelsComeBack)
{
    const int limit = StackLevel::limit();
    StackLevel::setlimit(5);
    EXPECT_EQ(recurse(4), -1) << "five levels fit";
    EXPECT_EQ(StackLevel::depth(), 0);
    EXPECT_EQ(recurse(10), 5) << "the sixth entry fails while five are taken";
    EXPECT_EQ(StackLevel::depth(), 0);
    StackLevel::setlimit(limit);
}

}  // namespace
