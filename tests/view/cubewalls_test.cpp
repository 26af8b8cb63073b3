#include "view/cubewalls.h"

#include <gtest/gtest.h>

namespace korvane
{

TEST(IsWallFacing, TellsCornersThatRunCounterClockwise)
{
    const float a[3] = {0, 0, 0};
    const float b[3] = {1, 0, 0};
    const float c[3] = {0, 1, 0};
    EXPECT_TRUE(IsWallFacing(a, b, c));
    EXPECT_FALSE(IsWallFacing(c, b, a));
    EXPECT_FALSE(IsWallFacing(a, b, b)); // edge on
}

// Twice the area is a.y c.x - a.x c.y = (1 + e)^2 - (1 + 2e) = e^2, which is lost where a product
// of two floats is rounded to float.
TEST(IsWallFacing, SeesTheThinnestWall)
{
    constexpr float e = 1.0F / (1 << 23);
    const float a[3] = {1 + 2 * e, 1 + e, 0};
    const float b[3] = {0, 0, 0};
    const float c[3] = {1 + e, 1, 0};
    EXPECT_TRUE(IsWallFacing(a, b, c));
    EXPECT_FALSE(IsWallFacing(c, b, a));
}

} // namespace korvane
