#include "geometry/plane.h"

#include <gtest/gtest.h>

#include <cmath>

namespace korvane
{

static int GetAxis(float x, float y, float z)
{
    const float center[3] = {0, 0, 0};
    const float normal[3] = {x, y, z};
    return SolvePlane(center, normal).axis;
}

TEST(SolvePlane, SolvesForTheLargestNormalComponent)
{
    EXPECT_EQ(GetAxis(-0.9F, 0.3F, 0.2F), 0);
    EXPECT_EQ(GetAxis(0.3F, -0.9F, 0.2F), 1);
    EXPECT_EQ(GetAxis(0.3F, 0.2F, -0.9F), 2);
}

TEST(SolvePlane, GivesTiesToZAndThenToY)
{
    EXPECT_EQ(GetAxis(0.7F, 0.1F, 0.7F), 2);
    EXPECT_EQ(GetAxis(0.1F, 0.7F, -0.7F), 2);
    EXPECT_EQ(GetAxis(0.5F, 0.5F, 0.5F), 2);
    EXPECT_EQ(GetAxis(0.7F, 0.7F, 0.1F), 2); // though z is the smallest
    EXPECT_EQ(GetAxis(0.7F, -0.7F, 0), 1);   // an upright wall: z would divide by zero
}

TEST(SolvePlane, SolvesForEachAxisInTurn)
{
    const float center[3] = {1, 2, 3};
    const float alongx[3] = {4, -1, 2}; // 4 x - y + 2 z = 8: x = y / 4 - z / 2 + 2
    const Plane x = SolvePlane(center, alongx);
    EXPECT_EQ(x.a, 0.25F);
    EXPECT_EQ(x.b, -0.5F);
    EXPECT_EQ(x.c, 2);
    const float alongy[3] = {2, 4, -1}; // 2 x + 4 y - z = 7: y = z / 4 - x / 2 + 7/4
    const Plane y = SolvePlane(center, alongy);
    EXPECT_EQ(y.a, 0.25F);
    EXPECT_EQ(y.b, -0.5F);
    EXPECT_EQ(y.c, 1.75F);
    const float alongz[3] = {-1, 2, 4}; // -x + 2 y + 4 z = 15: z = x / 4 - y / 2 + 15/4
    const Plane z = SolvePlane(center, alongz);
    EXPECT_EQ(z.a, 0.25F);
    EXPECT_EQ(z.b, -0.5F);
    EXPECT_EQ(z.c, 3.75F);
}

TEST(SolvePlane, SolvesAnUprightWallAt45Degrees)
{
    const float center[3] = {1, 2, 3};
    const float normal[3] = {0.5F, 0.5F, 0}; // x + y = 3: y = 0 z - x + 3
    const Plane wall = SolvePlane(center, normal);
    EXPECT_EQ(wall.axis, 1);
    EXPECT_EQ(wall.a, 0);
    EXPECT_EQ(wall.b, -1);
    EXPECT_EQ(wall.c, 3);
}

TEST(LayFlat, AnswersHowFarAPointLiesAlongTheNormal)
{
    const float center[3] = {1, 1, 1};
    const float normal[3] = {0.6F, 0, 0.8F};
    const FlatPlane plane = PreparePlane(SolvePlane(center, normal));
    const float above[3] = {1 + 5 * 0.6F, 1, 1 + 5 * 0.8F};
    const float below[3] = {1 - 2 * 0.6F, 1, 1 - 2 * 0.8F};
    float flat[2];
    EXPECT_NEAR(LayFlat(plane, above, flat), 5, 1e-5);
    EXPECT_NEAR(flat[0], 0, 1e-5);
    EXPECT_NEAR(flat[1], 0, 1e-5);
    EXPECT_NEAR(LayFlat(plane, below, flat), -2, 1e-5);
}

} // namespace korvane
