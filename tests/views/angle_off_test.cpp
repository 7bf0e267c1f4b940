#include <gtest/gtest.h>

#include "views/map_view.hpp"

namespace aerix {
namespace {

TEST(AngleOff, FoldsBehindTargetsAndSignsByShortestSide) {
    struct Case {
        double a, b, angle;
        bool ahead;
    } cases[] = {
        {10, 30, -20, true},                        // bearing left of the course
        {30, 10, 20, true},                         // right of it
        {350, 10, -20, true},                       // left across north
        {10, 350, 20, true},                        // right across north
        {0, 135, -45, false},                       // behind: folded, flag cleared
        {200, 10, -10, false},                      // 190 -> 170 -> 10, behind
        {90, 90, 0, true},     {0, 90, -90, true},  // exactly abeam still counts as ahead
    };
    for (const Case& c : cases) {
        bool ahead = !c.ahead;
        EXPECT_DOUBLE_EQ(AngleOff(c.a, c.b, &ahead), c.angle) << c.a << " " << c.b;
        EXPECT_EQ(ahead, c.ahead) << c.a << " " << c.b;
    }
}

}  // namespace
}  // namespace aerix
