#include "geometry/shapegeometry.h"

#include "scene/arrays.h"
#include "tests/support/shapes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace korvane::testing
{

constexpr double pi = 3.14159265358979323846;
using Triple = std::array<float, 3>;

static Triple GetTriple(const float* v)
{
    return {v[0], v[1], v[2]};
}

TEST(IndexLoop, WrapsOnce)
{
    EXPECT_EQ(IndexLoop(-1, 5), 4);
    EXPECT_EQ(IndexLoop(0, 5), 0);
    EXPECT_EQ(IndexLoop(4, 5), 4);
    EXPECT_EQ(IndexLoop(5, 5), 0);
    EXPECT_EQ(IndexLoop(10, 5), 5);
    EXPECT_EQ(IndexLoop(-6, 5), -1);
}

TEST(CheckNan, KnowsWhatIsNoNumber)
{
    EXPECT_EQ(CheckNan(std::numeric_limits<float>::quiet_NaN()), 1);
    EXPECT_EQ(CheckNan(std::numeric_limits<float>::infinity()), 0);
    EXPECT_EQ(CheckNan(-0.0F), 0);
}

TEST(GetDistanceOfTwoPoints, IsEuclidean)
{
    const float a[3] = {1, 2, 3};
    const float b[3] = {3, 5, 9};
    EXPECT_EQ(GetDistanceOfTwoPoints(a, b), 7); // 4 + 9 + 36
    const float c[3] = {4, 6, 100};
    EXPECT_EQ(GetDistanceOfTwoPointsIn2d(a, c), 5);
}

TEST(GetAlfaOfTwoVectors, IsBetweenZeroAndPi)
{
    const float x[3] = {2, 0, 0};
    const float y[3] = {0, 3, 0};
    const float diagonal[3] = {1, 1, 0};
    EXPECT_NEAR(GetAlfaOfTwoVectors(x, y), pi / 2, 1e-7);
    EXPECT_NEAR(GetAlfaOfTwoVectors(x, diagonal), pi / 4, 1e-7);
}

TEST(GetAlfaOfTwoVectors, IsExactForEqualAndOppositeDirections)
{
    std::mt19937 random(1);
    for (int i = 0; i < 1000; i++) {
        float a[3];
        float b[3];
        float c[3];
        for (int k = 0; k < 3; k++) {
            a[k] = float(int(random() % 2000) - 1000) / 7;
            b[k] = 2 * a[k];
            c[k] = -4 * a[k];
        }
        EXPECT_EQ(GetAlfaOfTwoVectors(a, b), 0) << a[0] << ' ' << a[1] << ' ' << a[2];
        EXPECT_EQ(GetAlfaOfTwoVectors(a, c), std::acos(-1.0));
    }
}

TEST(GetAlfaOfTwoVectors, IsOneForAZeroVector)
{
    const float zero[3] = {0, 0, 0};
    const float x[3] = {2, 0, 0};
    EXPECT_EQ(GetAlfaOfTwoVectors(zero, x), 1.0);
    EXPECT_EQ(GetAlfaOfTwoVectors(x, zero), 1.0);
    EXPECT_EQ(GetAlfaOfTwoVectors(zero, zero), 1.0);
}

TEST(GetAlfaOfTwoVectors, RoundsTheCosineToFloat)
{
    // one part in a hundred million: the cosine differs from 1 by half its square, which a float
    // loses
    const float x[3] = {1, 0, 0};
    const float tilted[3] = {1, 1e-4F, 0};
    EXPECT_EQ(GetAlfaOfTwoVectors(x, tilted), 0);
}

TEST(GetNormal, IsOfUnitLengthAndHasNoFallback)
{
    const float a[3] = {1, 1, 1};
    const float b[3] = {1, 3, 1};
    const float c[3] = {1, 1, 5};
    EXPECT_EQ(GetTriple(GetNormal(a, b, c).get()), (Triple{1, 0, 0}));
    EXPECT_EQ(GetTriple(GetNormal(c, b, a).get()), (Triple{-1, 0, 0}));
    EXPECT_EQ(CheckNan(GetNormal(a, a, c)[1]), 1);
}

// One triangle of a shape, as it stands there.
static OwnedShape MakeTriangle(const Triple& a, const Triple& b, const Triple& c)
{
    OwnedShape shape = MakeRawShape({a, b, c}, {{0, 1, 2}});
    shape->triangles[0] = {{0, 1, 2}, {0, 0, 0}, shape.get()};
    shape->trianglenormals = NewArray<float[3]>(1);
    return shape;
}

TEST(GetNormalOfTriangle, FallsBackToTheRawCrossProduct)
{
    const OwnedShape good = MakeTriangle({0, 0, 0}, {0, 0, 4}, {0, -2, 0});
    EXPECT_EQ(GetTriple(GetNormalOfTriangle(good->triangles).get()), (Triple{1, 0, 0}));
    const OwnedShape flat = MakeTriangle({1, 1, 1}, {2, 2, 2}, {3, 3, 3});
    EXPECT_EQ(GetTriple(GetNormalOfTriangle(flat->triangles).get()), (Triple{0, 0, 0}));
}

TEST(SetTriangleNormalsOfShape, StoresTheRawCrossProductOfADegenerateTriangle)
{
    const OwnedShape good = MakeTriangle({0, 0, 0}, {0, 0, 4}, {0, -2, 0});
    SetTriangleNormalsOfShape(good.get());
    EXPECT_EQ(GetTriple(good->trianglenormals[0]), (Triple{1, 0, 0}));
    const OwnedShape flat = MakeTriangle({1, 1, 1}, {2, 2, 2}, {3, 3, 3});
    SetTriangleNormalsOfShape(flat.get());
    EXPECT_EQ(GetTriple(flat->trianglenormals[0]), (Triple{0, 0, 0}));
}

TEST(GetPlaneOfTriangle, RunsThroughTheMeanOfTheCorners)
{
    const OwnedShape shape = MakeTriangle({1, 0, 2}, {4, 0, 2}, {1, 6, 2});
    const Block<Plane> plane = GetPlaneOfTriangle(shape->triangles);
    EXPECT_EQ(plane->axis, 2);
    EXPECT_EQ(plane->a, 0);
    EXPECT_EQ(plane->b, 0);
    EXPECT_EQ(plane->c, 2);
    EXPECT_EQ(GetTriple(plane->center), (Triple{2, 2, 2}));
    EXPECT_EQ(GetTriple(plane->normal), (Triple{0, 0, 1}));
}

TEST(SetCenterPointOfShape, IsTheMeanOfAllPoints)
{
    const OwnedShape shape = MakeTriangle({1, 2, 3}, {4, 2, 3}, {1, 8, 3});
    SetCenterPointOfShape(shape.get());
    EXPECT_EQ(GetTriple(shape->center), (Triple{2, 4, 3}));
    SetRadiusOfShape(shape.get());
    EXPECT_FLOAT_EQ(shape->radius, std::sqrt(17.0F)); // from (2, 4) to (1, 8)
}

TEST(SetCenterPointOfShape, LeavesAShapeWithoutPointsAtTheOrigin)
{
    const OwnedShape shape = MakeRawShape({}, {});
    SetCenterPointOfShape(shape.get());
    EXPECT_EQ(GetTriple(shape->center), (Triple{0, 0, 0}));
    SetRadiusOfShape(shape.get());
    EXPECT_EQ(shape->radius, 0);
}

// The triangle of the distance tests: A (0, 0, 0), B (4, 0, 0), C (0, 3, 0), facing +z.
static double GetDistance(float x, float y, float z)
{
    const OwnedShape shape = MakeTriangle({0, 0, 0}, {4, 0, 0}, {0, 3, 0});
    const float p[3] = {x, y, z};
    return GetDistancePointTriangle(p, shape->triangles);
}

// The angle between +z and the direction from (p + A + B) / 3 to p.
static double GetFacing(double x, double y, double z)
{
    const double away[3] = {x - (x + 4) / 3, y - y / 3, z - z / 3};
    return std::acos(away[2] / std::hypot(away[0], away[1], away[2]));
}

TEST(GetDistancePointTriangle, IsTheDistanceFromThePlaneOverTheTriangle)
{
    EXPECT_NEAR(GetDistance(1, 1, 2), 2 + 1e-6 * GetFacing(1, 1, 2), 1e-12);
    EXPECT_NEAR(GetDistance(1, 1, -2), 2 + 1e-6 * GetFacing(1, 1, -2), 1e-12);
    EXPECT_NEAR(GetDistance(1, 0, 5), 5 + 1e-6 * GetFacing(1, 0, 5), 1e-12); // over the border
}

TEST(GetDistancePointTriangle, IsTheHeightOverTheEdgeOppositeTheFarthestCorner)
{
    // C is farthest: over AB
    EXPECT_NEAR(GetDistance(2, -3, 0), 3 + 1e-6 * pi / 2, 1e-9);
    // A is farthest: over BC, 3 x + 4 y = 12, of which (5, 4) is 19 / 5 away
    EXPECT_NEAR(GetDistance(5, 4, 0), 3.8 + 1e-6 * pi / 2, 1e-9);
    // B is farthest: over AC
    EXPECT_NEAR(GetDistance(-2, 1, 0), 2 + 1e-6 * pi / 2, 1e-9);
    EXPECT_NEAR(GetDistance(-3, 1, 4), 5 + 1e-6 * GetFacing(-3, 1, 4), 1e-9);
}

TEST(GetDistancePointTriangle, IsTheDistanceToTheNearerEndBeyondAnEdge)
{
    EXPECT_NEAR(GetDistance(7, -1, 0), std::sqrt(10.0) + 1e-6 * pi / 2, 1e-9); // AB, to B
    EXPECT_NEAR(GetDistance(-3, -4, 0), 5 + 1e-6 * pi / 2, 1e-9);              // AC, to A
    EXPECT_NEAR(GetDistance(0, 6, 0), 3 + 1e-6 * pi / 2, 1e-9);                // AC, to C
}

TEST(GetDistancePointTriangle, TakesTheEdgeFromAToBOnATie)
{
    // The triangle (0, 0) (4, 0) (2, 2): from (2, -1) A and B are at the same distance, 2.24, and C
    // is farther, 3. From (4, 3) A is farthest, alone. From (1, 3) B is farthest. From (2, 5) A and
    // B are equally far, so AB is taken: the height over it is 5, though C is only 3 away.
    const OwnedShape shape = MakeTriangle({0, 0, 0}, {4, 0, 0}, {2, 2, 0});
    const float p[3] = {2, 5, 0};
    EXPECT_NEAR(GetDistancePointTriangle(p, shape->triangles), 5 + 1e-6 * pi / 2, 1e-9);
}

TEST(GetDistancePointTriangle, PrefersTheTriangleThatFacesThePoint)
{
    // both have the edge from (0, 0, 0) to (4, 0, 0), from which (2, -1, 1) is the square root of 2
    // away; it sees the first at 45 degrees and the second, which looks to +y, from behind, at 135
    const OwnedShape level = MakeTriangle({0, 0, 0}, {4, 0, 0}, {2, 3, 0});
    const OwnedShape upright = MakeTriangle({0, 0, 0}, {4, 0, 0}, {2, 0, -3});
    const float p[3] = {2, -1, 1};
    EXPECT_NEAR(GetDistancePointTriangle(p, level->triangles), std::sqrt(2.0) + 1e-6 * pi / 4,
                1e-9);
    EXPECT_NEAR(GetDistancePointTriangle(p, upright->triangles), std::sqrt(2.0) + 1e-6 * 3 * pi / 4,
                1e-9);
}

TEST(GetDistancePointTriangle, IsANumberForAPointStraightAbove)
{
    // the direction from g to p is the normal itself, so its cosine may round to more than 1
    for (int i = 1; i < 200; i++) {
        const float height = 0.01F * float(i * i);
        EXPECT_NEAR(GetDistance(2, 0, height), height, 1e-6);
    }
}

TEST(GetDistancePointTriangle, IsNoNumberForTheMiddleOfTheFirstEdge)
{
    EXPECT_TRUE(std::isnan(GetDistance(2, 0, 0)));
}

TEST(GetDistancePointTriangle, IsNoNumberForATriangleWithoutArea)
{
    const OwnedShape flat = MakeTriangle({1, 1, 1}, {2, 2, 2}, {3, 3, 3});
    const float p[3] = {1, 0, 0};
    EXPECT_TRUE(std::isnan(GetDistancePointTriangle(p, flat->triangles)));
}

TEST(GetDistancePointTriangle, SurvivesAHeronProductThatRoundsBelowZero)
{
    // points on the line of AB beyond which the three sides of (p, A, B) make a triangle without
    // area
    const OwnedShape shape = MakeTriangle({0.1F, 0.1F, 0.1F}, {0.7F, 0.7F, 0.7F}, {0.2F, 0.4F, 9});
    for (int i = 0; i < 1000; i++) {
        const float at = 0.1F + 0.0006F * float(i) + 1e-4F;
        const float p[3] = {at, at, at};
        const double distance = GetDistancePointTriangle(p, shape->triangles);
        EXPECT_GE(distance, 0);
        EXPECT_LT(distance, 1e-3);
    }
}

} // namespace korvane::testing
