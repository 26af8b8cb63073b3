#include "geometry/rotation.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <random>

namespace korvane
{

using Direction = std::array<float, 3>;

struct Frame {
    float vectors[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
};

static void ExpectVector(const float* v, const Direction& expected, float tolerance = 1e-6F)
{
    EXPECT_NEAR(v[0], expected[0], tolerance);
    EXPECT_NEAR(v[1], expected[1], tolerance);
    EXPECT_NEAR(v[2], expected[2], tolerance);
}

static void ExpectFrame(const Frame& frame, const Direction& x, const Direction& y,
                        const Direction& z)
{
    ExpectVector(frame.vectors[0], x);
    ExpectVector(frame.vectors[1], y);
    ExpectVector(frame.vectors[2], z);
}

static Frame Rotated(const Direction& from, const Direction& to)
{
    Frame frame;
    VectorRotate(frame.vectors, from.data(), to.data());
    return frame;
}

static Frame RotatedExactly(const Direction& from, const Direction& to)
{
    Frame frame;
    VectorRotateExact(frame.vectors, from.data(), to.data());
    return frame;
}

static double DotOf(const float* a, const float* b)
{
    return double(a[0]) * b[0] + double(a[1]) * b[1] + double(a[2]) * b[2];
}

// Right-handed, unit length, square to each other.
static void ExpectRotation(const Frame& frame)
{
    const auto& v = frame.vectors;
    for (int i = 0; i < 3; i++) {
        EXPECT_NEAR(DotOf(v[i], v[i]), 1, 1e-6);
        EXPECT_NEAR(DotOf(v[i], v[(i + 1) % 3]), 0, 1e-6);
    }
    const float cross[3] = {v[0][1] * v[1][2] - v[0][2] * v[1][1],
                            v[0][2] * v[1][0] - v[0][0] * v[1][2],
                            v[0][0] * v[1][1] - v[0][1] * v[1][0]};
    EXPECT_NEAR(DotOf(cross, v[2]), 1, 1e-6);
}

TEST(VectorRotate, TurnsXOntoYAboutZ)
{
    ExpectFrame(Rotated({1, 0, 0}, {0, 1, 0}), {0, 1, 0}, {-1, 0, 0}, {0, 0, 1});
}

TEST(VectorRotate, TurnsByAnyAngleAboutTheAxisSquareToBoth)
{
    // From z to (0.6, 0, 0.8): about y by the angle whose cosine is 0.8 and sine 0.6.
    ExpectFrame(Rotated({0, 0, 1}, {0.6F, 0, 0.8F}), {0.8F, 0, -0.6F}, {0, 1, 0}, {0.6F, 0, 0.8F});
}

TEST(VectorRotate, TurnsOppositeZHalfATurnAboutX)
{
    // sx = sy = 1, sz = 0: x does not win its tie with y, and y beats z. z goes to y and on to -z.
    ExpectFrame(Rotated({0, 0, 1}, {0, 0, -1}), {1, 0, 0}, {0, -1, 0}, {0, 0, -1});
}

TEST(VectorRotate, TurnsOppositeXHalfATurnAboutY)
{
    // sx = 0, sy = sz = 1: y does not win its tie with z. x goes to z and on to -x.
    ExpectFrame(Rotated({1, 0, 0}, {-1, 0, 0}), {-1, 0, 0}, {0, 1, 0}, {0, 0, -1});
}

TEST(VectorRotate, TurnsOppositeYHalfATurnAboutX)
{
    // sx = sz = 1, sy = 0: x does not win its tie with z. y goes to z and on to -y.
    ExpectFrame(Rotated({0, 1, 0}, {0, -1, 0}), {1, 0, 0}, {0, -1, 0}, {0, 0, -1});
}

TEST(VectorRotate, GoesThroughXWhenXIsStrictlyTheFarthest)
{
    // a = (0, 0.6, 0.8): sx = 1, sy = 0.64, sz = 0.36. Half a turn about a x (1, 0, 0), which is
    // (0, 0.8, -0.6) and stays; everything square to it changes its sign.
    Frame frame;
    frame.vectors[1][1] = 0.8F;
    frame.vectors[1][2] = -0.6F;
    const Direction a = {0, 0.6F, 0.8F}, b = {0, -0.6F, -0.8F};
    VectorRotate(frame.vectors, a.data(), b.data());
    ExpectVector(frame.vectors[0], {-1, 0, 0});
    ExpectVector(frame.vectors[1], {0, 0.8F, -0.6F});
}

TEST(VectorRotate, LeavesTheFrameForEqualDirections)
{
    EXPECT_EQ(Rotated({0.6F, 0.8F, 0}, {0.6F, 0.8F, 0}).vectors[0][0], 1);
}

TEST(VectorRotate, LeavesTheFrameForDirectionsUpToAThousandthApart)
{
    const float angle = 5e-4F; // the squares of sine and distance are 2.5e-7
    const Frame frame = Rotated({1, 0, 0}, {std::cos(angle), std::sin(angle), 0});
    EXPECT_EQ(frame.vectors[0][0], 1);
    EXPECT_EQ(frame.vectors[0][1], 0);
}

TEST(VectorRotate, LeavesTheFrameForAZeroVector)
{
    EXPECT_EQ(Rotated({0, 0, 0}, {0, 1, 0}).vectors[0][0], 1);
    EXPECT_EQ(Rotated({0, 1, 0}, {0, 0, 0}).vectors[0][0], 1);
    EXPECT_EQ(Rotated({0, 9e-7F, 0}, {0, 1, 0}).vectors[0][0], 1);
}

TEST(VectorRotate, LeavesTheFrameForWhatIsNotANumber)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    ExpectFrame(Rotated({nan, 0, 0}, {0, 1, 0}), {1, 0, 0}, {0, 1, 0}, {0, 0, 1});
    ExpectFrame(Rotated({1, 0, 0}, {0, nan, 0}), {1, 0, 0}, {0, 1, 0}, {0, 0, 1});
}

TEST(VectorRotate, EndsForVectorsThatAreNearlyZero)
{
    const Direction tiny = {2e-6F, 0, 0}; // no unit vector, and not zero either
    Frame frame;
    VectorRotate(frame.vectors, tiny.data(), tiny.data());
    EXPECT_EQ(frame.vectors[0][0], 1);
    const Direction other = {0, 1, 0};
    VectorRotate(frame.vectors, tiny.data(), other.data()); // must come back at all
}

TEST(VectorRotate, TakesDirectionsThatBelongToItsFrame)
{
    Frame frame;
    VectorRotate(frame.vectors, frame.vectors[0], frame.vectors[1]);
    ExpectFrame(frame, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1});
}

TEST(VectorRotateExact, TurnsWhereVectorRotateLeavesTheFrame)
{
    const float angle = 5e-4F;
    const Frame frame = RotatedExactly({1, 0, 0}, {std::cos(angle), std::sin(angle), 0});
    EXPECT_EQ(frame.vectors[0][0], std::cos(angle)); // to the bit: it was the vector itself
    EXPECT_EQ(frame.vectors[0][1], std::sin(angle));
    EXPECT_FLOAT_EQ(frame.vectors[1][0], -std::sin(angle));
}

TEST(VectorRotateExact, TurnsLikeVectorRotateElsewhere)
{
    ExpectFrame(RotatedExactly({1, 0, 0}, {0, 1, 0}), {0, 1, 0}, {-1, 0, 0}, {0, 0, 1});
    ExpectFrame(RotatedExactly({0, 0, 1}, {0.6F, 0, 0.8F}), {0.8F, 0, -0.6F}, {0, 1, 0},
                {0.6F, 0, 0.8F});
    ExpectFrame(RotatedExactly({0, 0, 1}, {0, 0, -1}), {1, 0, 0}, {0, -1, 0}, {0, 0, -1});
}

TEST(VectorRotateExact, ChangesNoBitBetweenEqualDirections)
{
    const Frame frame = RotatedExactly({0.36F, 0.48F, 0.8F}, {0.36F, 0.48F, 0.8F});
    EXPECT_EQ(frame.vectors[0][0], 1);
    EXPECT_EQ(frame.vectors[0][1], 0);
    EXPECT_EQ(frame.vectors[2][0], 0);
    EXPECT_EQ(frame.vectors[2][2], 1);
}

TEST(VectorRotateExact, LeavesTheFrameForAZeroVector)
{
    ExpectFrame(RotatedExactly({0, 0, 0}, {0, 1, 0}), {1, 0, 0}, {0, 1, 0}, {0, 0, 1});
    ExpectFrame(RotatedExactly({0, 1, 0}, {0, 0, 0}), {1, 0, 0}, {0, 1, 0}, {0, 0, 1});
}

static Direction GetRandomDirection(std::mt19937& random)
{
    std::normal_distribution<float> normal;
    const Direction v = {normal(random), normal(random), normal(random)};
    const float length = std::hypot(v[0], v[1], v[2]);
    return {v[0] / length, v[1] / length, v[2] / length};
}

TEST(VectorRotateExact, ArrivesFromEverywhereAndStaysARotation)
{
    std::mt19937 random(1);
    for (const float sign : {1.0F, -1.0F}) {
        for (const float offset : {0.0F, 1e-7F, 1e-5F, 3e-4F, 1e-3F, 0.1F, 2.0F}) {
            const Direction from = GetRandomDirection(random);
            const Direction aside = GetRandomDirection(random);
            const Direction to = {sign * from[0] + offset * aside[0],
                                  sign * from[1] + offset * aside[1],
                                  sign * from[2] + offset * aside[2]};
            const float length = std::hypot(to[0], to[1], to[2]);
            Frame frame = RotatedExactly(from, to);
            ExpectRotation(frame);
            // The frame's columns are the images of the axes: from arrives at their sum.
            float arrived[3] = {};
            for (int i = 0; i < 3; i++) {
                for (int k = 0; k < 3; k++) {
                    arrived[k] += from[std::size_t(i)] * frame.vectors[i][k];
                }
            }
            ExpectVector(arrived, {to[0] / length, to[1] / length, to[2] / length});
        }
    }
}

} // namespace korvane
