#include "geometry/clickdepth.h"

#include <gtest/gtest.h>

namespace korvane
{

static constexpr float front[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
static constexpr float side[9] = {0, 0, -1, 0, 1, 0, 1, 0, 0}; // a quarter turn about the y axis

TEST(GetCameraSignature, WeighsTheFirstSixValuesByPowersOfTwo)
{
    EXPECT_EQ(GetCameraSignature(front), 1024 + 16384);
    EXPECT_EQ(GetCameraSignature(side), -4096 + 16384);
    for (int k = 0; k < 9; k++) {
        float rotation[9] = {};
        rotation[k] = 1;
        EXPECT_EQ(GetCameraSignature(rotation), k < 6 ? 1024 << k : 0);
    }
}

TEST(GetCameraSignature, CutsTheSumOff)
{
    const float rotation[9] = {0.5F / 1024, 0, 0, 0, 0, 0.75F / 32768, 0, 0, 0};
    EXPECT_EQ(GetCameraSignature(rotation), 1); // 0.5 + 0.75, cut once
    const float opposite[9] = {-0.5F / 1024, 0, 0, 0, 0, -0.75F / 32768, 0, 0, 0};
    EXPECT_EQ(GetCameraSignature(opposite), -1);
}

TEST(ClickDepth, StartsFixedAtTheFirstPoint)
{
    const ClickDepth depth = StartClickDepth(0.25F, side);
    EXPECT_EQ(depth.zbasic, 0.25F);
    EXPECT_EQ(depth.zindex, 0);
    EXPECT_EQ(depth.coordsign, -4096 + 16384);
}

TEST(FollowCamera, TakesTheDepthOfTheLastPointAfterATurn)
{
    const float points[3][3] = {{0, 0, 0.1F}, {0, 0, 0.2F}, {0, 0, 0.3F}};
    ClickDepth depth = StartClickDepth(0.5F, front);
    FollowCamera(depth, side, points, 3);
    EXPECT_EQ(depth.zbasic, 0.3F);
    EXPECT_EQ(depth.zindex, 2);
    EXPECT_EQ(depth.coordsign, GetCameraSignature(side));
}

TEST(FollowCamera, ChangesNothingWithoutATurn)
{
    const float points[2][3] = {{0, 0, 0.5F}, {0, 0, 0.2F}};
    ClickDepth depth = StartClickDepth(0.5F, front);
    FollowCamera(depth, front, points, 2);
    EXPECT_EQ(depth.zbasic, 0.5F);
    EXPECT_EQ(depth.zindex, 0);
}

TEST(FollowCamera, KeepsTheFixedDepthToTheBitWhenItsPointWasOnlyRounded)
{
    const float points[1][3] = {{0, 0, 0.500005F}};
    ClickDepth depth = StartClickDepth(0.5F, front);
    FollowCamera(depth, front, points, 1);
    EXPECT_EQ(depth.zbasic, 0.5F);
}

TEST(FollowCamera, GoesWithThePointOfTheFixedDepthWhenItHasMoved)
{
    const float points[3][3] = {{0, 0, 0.1F}, {0, 0, 0.4F}, {0, 0, 0.7F}};
    ClickDepth depth = {0.2F, 1, GetCameraSignature(front)};
    FollowCamera(depth, front, points, 3);
    EXPECT_EQ(depth.zbasic, 0.4F);
    EXPECT_EQ(depth.zindex, 1);
}

TEST(FollowTakeBack, MovesBackWithThePointsBelowTheFixedOne)
{
    const float points[4][3] = {{0, 0, 0.1F}, {0, 0, 0.2F}, {0, 0, 0.3F}, {0, 0, 0.4F}};
    ClickDepth depth = {0.7F, 2, 5};
    FollowTakeBack(depth, points, 3); // point 2 is still there
    EXPECT_EQ(depth.zindex, 2);
    EXPECT_EQ(depth.zbasic, 0.7F);
    FollowTakeBack(depth, points, 2);
    EXPECT_EQ(depth.zindex, 1);
    EXPECT_EQ(depth.zbasic, 0.2F);
    EXPECT_EQ(depth.coordsign, 5);
}

TEST(InterpolateDepths, GoesByIndexBetweenPointsAtOnePlaceOfTheScreen)
{
    float points[6][3] = {{9, 9, 9},    {0.5F, 0.5F, 0.2F}, {0, 0, 0},
                          {0.9F, 0, 0}, {0, 0.3F, 0.1F},    {0.500005F, 0.5F, 0.6F}};
    InterpolateDepths(points, 1, 5);
    EXPECT_EQ(points[0][2], 9.0F);
    EXPECT_FLOAT_EQ(points[2][2], 0.3F); // quarters of the way from 0.2 to 0.6
    EXPECT_FLOAT_EQ(points[3][2], 0.4F);
    EXPECT_FLOAT_EQ(points[4][2], 0.5F);
    EXPECT_EQ(points[1][2], 0.2F);
    EXPECT_EQ(points[5][2], 0.6F);
}

TEST(InterpolateDepths, GoesByHeightBetweenPointsAboveEachOther)
{
    float points[4][3] = {{0.1F, -0.2F, 0.1F}, {0.4F, 0, 0}, {-0.4F, 0.4F, 0}, {0.1F, 0.2F, 0.5F}};
    InterpolateDepths(points, 0, 3);
    EXPECT_FLOAT_EQ(points[1][2], 0.3F); // half of the way up
    EXPECT_FLOAT_EQ(points[2][2], 0.7F); // as far above as half of the way: the line goes on
}

TEST(InterpolateDepths, GoesByWidthBetweenPointsBesideEachOther)
{
    float points[4][3] = {
        {-0.2F, 0.1F, 0.5F}, {-0.1F, 0.4F, 0}, {0.1F, -0.3F, 0}, {0.2F, 0.1F, -0.3F}};
    InterpolateDepths(points, 0, 3);
    EXPECT_FLOAT_EQ(points[1][2], 0.3F); // a quarter of the way
    EXPECT_FLOAT_EQ(points[2][2], -0.1F);
}

// The line on the screen runs from (0, 0) to (0.4, 0.2), slope 1/2. The perpendicular through
// (0.1, 0.3) is y = 0.5 - 2x and meets it at (0.2, 0.1), half of the way; that through (0, 0.25)
// is y = 0.25 - 2x and meets it at (0.1, 0.05), a quarter of the way.
TEST(InterpolateDepths, GoesByTheFootOnASlantedLine)
{
    float points[4][3] = {{0, 0, 0.1F}, {0.1F, 0.3F, 0}, {0, 0.25F, 0}, {0.4F, 0.2F, 0.5F}};
    InterpolateDepths(points, 0, 3);
    EXPECT_NEAR(points[1][2], 0.3, 1e-6);
    EXPECT_NEAR(points[2][2], 0.2, 1e-6);
}

TEST(InterpolateDepths, GoesByTheFootOnAFallingLine)
{
    float points[3][3] = {{-0.2F, 0.3F, 0.4F}, {0.15F, 0.25F, 0}, {0.2F, -0.1F, 0}};
    InterpolateDepths(points, 0, 2);
    // Slope -1 through (-0.2, 0.3): y = 0.1 - x. The perpendicular through (0.15, 0.25) is
    // y = 0.1 + x, so the foot is (0, 0.1), half of the way.
    EXPECT_NEAR(points[1][2], 0.2, 1e-6);
}

// The line on the screen is x = y, along which the depth grows by 1024 a unit. The foot's x is half
// of y + x = 1 + 2^-25, which as float is 1: without that step the depth were 2^-16.
TEST(InterpolateDepths, RoundsTheSumOfTheFootToFloat)
{
    constexpr float small = 1.0F / 1024;
    float points[3][3] = {{0, 0, -512}, {1.0F / (1 << 25), 1, 7}, {small, small, -511}};
    InterpolateDepths(points, 0, 2);
    EXPECT_EQ(points[1][2], 0.0F);
}

TEST(InterpolateDepths, LeavesNeighboursAlone)
{
    float points[2][3] = {{0, 0, 0.1F}, {0.5F, 0.5F, 0.9F}};
    InterpolateDepths(points, 0, 1);
    EXPECT_EQ(points[0][2], 0.1F);
    EXPECT_EQ(points[1][2], 0.9F);
}

} // namespace korvane
