#include "geometry/sideplane.h"

#include "geometry/shapegeometry.h"
#include "tests/support/shapes.h"

#include <gtest/gtest.h>

#include <cmath>

namespace korvane::testing
{

using Triple = std::array<float, 3>;

static Triple GetTriple(const float* v)
{
    return {v[0], v[1], v[2]};
}

static Triple GetNormal(const OwnedShape& shape)
{
    return GetTriple(GetNormalOfSide(&shape->sides[0]).get());
}

TEST(GetCenterOfSide, IsTheMeanOfTheCorners)
{
    const OwnedShape shape = MakeFlatShape({{0, 0, 3}, {4, 0, 3}, {4, 2, 3}, {0, 2, 3}});
    EXPECT_EQ(GetTriple(GetCenterOfSide(&shape->sides[0]).get()), (Triple{2, 1, 3}));
}

TEST(GetNormalOfSide, PointsToWhereTheCornersRunCounterClockwise)
{
    EXPECT_EQ(GetNormal(MakeFlatShape({{1, 1, 2}, {3, 1, 2}, {3, 2, 2}, {1, 2, 2}})),
              (Triple{0, 0, 1}));
    EXPECT_EQ(GetNormal(MakeFlatShape({{1, 2, 2}, {3, 2, 2}, {3, 1, 2}, {1, 1, 2}})),
              (Triple{0, 0, -1}));
    EXPECT_EQ(GetNormal(MakeFlatShape({{5, 1, 1}, {5, 2, 1}, {5, 1, 2}})), (Triple{1, 0, 0}));
}

TEST(GetNormalOfSide, IsTheStatedSumForEveryNumberOfCorners)
{
    // corners on a bent surface, so that every component counts
    for (int n = 3; n < 20; n++) {
        Points points;
        for (int i = 0; i < n; i++) {
            const double angle = 6.283185307179586 * i / n;
            points.push_back({float(std::cos(angle) + 2), float(std::sin(angle) + 3),
                              float(1.5 * std::cos(3 * angle) + 0.3 * std::sin(angle))});
        }
        double sum[3] = {0, 0, 0};
        for (int i = 0; i < n; i++) {
            double weighted[3] = {0, 0, 0};
            for (int j = 1; j < n; j++) {
                for (std::size_t k = 0; k < 3; k++) {
                    weighted[k] += (n - 2 * j) * double(points[std::size_t((i + j) % n)][k]);
                }
            }
            const auto& p = points[std::size_t(i)];
            sum[0] += p[1] * weighted[2];
            sum[1] += p[2] * weighted[0];
            sum[2] += p[0] * weighted[1];
        }
        const double length = std::hypot(sum[0], sum[1], sum[2]);
        const Triple normal = GetNormal(MakeFlatShape(points));
        for (std::size_t k = 0; k < 3; k++) {
            EXPECT_NEAR(normal[k], sum[k] / length, 1e-6) << n;
        }
    }
}

TEST(GetNormalOfSide, NudgesPointZeroOfTheShapeUntilThereIsANormal)
{
    // the second side is a line; point 0 is the shape's, and lies on that side
    const OwnedShape shape = MakeRawShape({{0, 0, 0}, {1, 1, 1}, {2, 2, 2}}, {{1, 2, 0}});
    const Triple normal = GetNormal(shape);
    EXPECT_EQ(GetTriple(shape->points[0]), (Triple{1e-9F, -2e-9F, 3e-9F}));
    // (P2 - P1) x (P0 - P1) with P2 - P1 = (1, 1, 1) is 1e-9 (1, 1, 1) x (1, -2, 3) = 1e-9 (5, -2,
    // -3)
    const float length = std::sqrt(38.0F);
    EXPECT_NEAR(normal[0], 5 / length, 1e-5);
    EXPECT_NEAR(normal[1], -2 / length, 1e-5);
    EXPECT_NEAR(normal[2], -3 / length, 1e-5);
}

TEST(GetNormalOfSide, NudgesAPointThatIsNotOfTheSideAtMostSixteenTimes)
{
    const OwnedShape shape =
        MakeRawShape({{0, 0, 0}, {1, 1, 1}, {2, 2, 2}, {3, 3, 3}}, {{1, 2, 3}});
    EXPECT_EQ(GetNormal(shape), (Triple{0, 0, 1})); // neither sum nor area
    EXPECT_NEAR(shape->points[0][0], 16e-9, 1e-13);
    EXPECT_NEAR(shape->points[0][1], -32e-9, 1e-13);
    EXPECT_NEAR(shape->points[0][2], 48e-9, 1e-13);
}

TEST(GetNormalOfSide, DoesNotMoveAPointOfOrdinarySize)
{
    const OwnedShape line = MakeRawShape({{1, 1, 1}, {2, 2, 2}, {3, 3, 3}}, {{0, 1, 2}});
    EXPECT_EQ(GetNormal(line), (Triple{0, 0, 1}));
    EXPECT_EQ(GetTriple(line->points[0]), (Triple{1, 1, 1}));
}

// P0 = P1 makes S(1) = P2 - P0 the opposite of S(0) = P0 - P2 and S(2) zero: the terms cancel to
// the bit, however far one coordinate lies below the others; and so from the other beginnings.
TEST(GetNormalOfSide, TakesRoundingForNoNormal)
{
    const std::array<float, 3> corner = {-0.23330144584178925F, 0.23246008157730103F,
                                         -0.3705357611179352F};
    const std::array<float, 3> other = {0.37010669708251953F, -0.07062707096338272F,
                                        -1.2736641741284416e-09F};
    for (const std::array<int, 3>& order : {std::array{1, 2, 3}, {2, 3, 1}, {3, 1, 2}}) {
        const OwnedShape shape = MakeRawShape({{0, 0, 0}, corner, corner, other},
                                              {std::vector<int>(order.begin(), order.end())});
        EXPECT_EQ(GetNormal(shape), (Triple{0, 0, 1})); // neither sum nor area
        EXPECT_NEAR(shape->points[0][0], 16e-9, 1e-13); // nudged to the end
    }
}

TEST(GetNormalOfSide, TakesTheAreaWhereTheStatedSumOfAGoodPentagonIsZero)
{
    // With five corners the sum is 3 A + B: A is twice the area, B the same of every second corner.
    // A = 81 - 55 - 7 + 2 - 3 = 18 and B = 14 - 68 + 1 - 7 + 6 = -54.
    const OwnedShape pentagon =
        MakeRawShape({{13, 10, 1}, {1, 7, 1}, {9, 8, 1}, {11, 9, 1}, {1, 1, 1}}, {{0, 1, 2, 3, 4}});
    EXPECT_EQ(GetNormal(pentagon), (Triple{0, 0, 1}));
    const OwnedShape back =
        MakeRawShape({{13, 10, 1}, {1, 7, 1}, {9, 8, 1}, {11, 9, 1}, {1, 1, 1}}, {{4, 3, 2, 1, 0}});
    EXPECT_EQ(GetNormal(back), (Triple{0, 0, -1}));
}

TEST(GetPlaneOfSide, RunsThroughTheCenterAndIsSolvedForTheDominantCoordinate)
{
    // the wall x = 2 y + 4: its normal is (1, -2, 0) or the opposite, so it is solved for y
    const OwnedShape wall = MakeFlatShape({{4, 0, 0}, {6, 1, 0}, {6, 1, 2}, {4, 0, 2}});
    const Block<Plane> plane = GetPlaneOfSide(&wall->sides[0]);
    EXPECT_EQ(plane->axis, 1); // y = a z + b x + c = 0 z + x / 2 - 2
    EXPECT_NEAR(plane->a, 0, 1e-6);
    EXPECT_NEAR(plane->b, 0.5, 1e-6);
    EXPECT_NEAR(plane->c, -2, 1e-6);
    EXPECT_EQ(GetTriple(plane->center), (Triple{5, 0.5F, 1}));
    // (P1 - P0) x (P2 - P0) = (2, 1, 0) x (2, 1, 2) = (2, -4, 0)
    EXPECT_NEAR(plane->normal[0], 1 / std::sqrt(5.0), 1e-6);
    EXPECT_NEAR(plane->normal[1], -2 / std::sqrt(5.0), 1e-6);
}

TEST(GetPlanePointsOfSide, DropsTheAxisAlongWhichTheNormalRuns)
{
    const OwnedShape shape = MakeFlatShape({{1, 1, 7}, {5, 1, 7}, {5, 3, 7}, {1, 3, 7}});
    const Block<float[][3]> flat = GetPlanePointsOfSide(&shape->sides[0]);
    const float expected[4][2] = {{-2, -1}, {2, -1}, {2, 1}, {-2, 1}}; // from the center (3, 2)
    for (std::size_t i = 0; i < 4; i++) {
        EXPECT_EQ(flat[i][0], expected[i][0]);
        EXPECT_EQ(flat[i][1], expected[i][1]);
    }
}

TEST(GetPlanePointsOfSide, GivesAClockwiseOutlineWhereTheNormalRunsAgainstItsAxis)
{
    // the normal is (0, 0, -1) exactly: the side is not turned over
    const OwnedShape shape = MakeFlatShape({{1, 3, 7}, {5, 3, 7}, {5, 1, 7}, {1, 1, 7}});
    const Block<float[][3]> flat = GetPlanePointsOfSide(&shape->sides[0]);
    EXPECT_EQ(flat[0][0], -2);
    EXPECT_EQ(flat[0][1], 1);
    EXPECT_EQ(flat[2][0], 2);
    EXPECT_EQ(flat[2][1], -1);
}

// Twice the area, positive when the flat points run counter-clockwise.
static double GetFlatArea(const Block<float[][3]>& flat, std::size_t n)
{
    double area = 0;
    for (std::size_t i = 0; i < n; i++) {
        const std::size_t next = (i + 1) % n;
        area += double(flat[i][0]) * flat[next][1] - double(flat[next][0]) * flat[i][1];
    }
    return area;
}

TEST(GetPlanePointsOfSide, KeepsLengthsAndTurnsTheNormalUpwards)
{
    // a rectangle of 2 by 1 between two directions across each other, in several attitudes
    const double attitudes[][2][3] = {
        {{0.6, 0, 0.8}, {0, 1, 0}},      {{0.6, 0, -0.8}, {0, 1, 0}},
        {{0, 0.6, 0.8}, {1, 0, 0}},      {{0, 1, 0}, {-0.8, 0, 0.6}},
        {{0.6, 0.8, 0}, {-0.8, 0.6, 0}}, {{0, 0.28, 0.96}, {0, -0.96, 0.28}}};
    for (const auto& attitude : attitudes) {
        const double* u = attitude[0];
        const double* v = attitude[1];
        Points points;
        for (const auto& [along, across] : {std::pair{0, 0}, {2, 0}, {2, 1}, {0, 1}}) {
            points.push_back({float(1 + along * u[0] + across * v[0]),
                              float(2 + along * u[1] + across * v[1]),
                              float(3 + along * u[2] + across * v[2])});
        }
        const OwnedShape shape = MakeFlatShape(points);
        const Block<float[][3]> flat = GetPlanePointsOfSide(&shape->sides[0]);
        EXPECT_NEAR(GetDistanceOfTwoPointsIn2d(flat[0], flat[1]), 2, 1e-5);
        EXPECT_NEAR(GetDistanceOfTwoPointsIn2d(flat[1], flat[2]), 1, 1e-5);
        EXPECT_NEAR(GetDistanceOfTwoPointsIn2d(flat[0], flat[2]), std::sqrt(5.0), 1e-5);
        const Block<Plane> plane = GetPlaneOfSide(&shape->sides[0]);
        const bool against = plane->normal[plane->axis] == -1;
        EXPECT_NEAR(GetFlatArea(flat, 4), against ? -4 : 4, 1e-4);
    }
}

} // namespace korvane::testing
