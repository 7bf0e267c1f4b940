#include "gps/nav_math.hpp"
#include <gtest/gtest.h>
TEST(NavMath, Smoke) {
    EXPECT_DOUBLE_EQ(aerix::PositiveModulo(1.0, 2.0), 1.0);
}
