#include "geometry/triangulation.h"

#include "geometry/shapegeometry.h"
#include "scene/arrays.h"
#include "tests/support/shapes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace korvane::testing
{

constexpr double pi = 3.14159265358979323846;

TEST(GetAlfaOfThreePoints2d, IsTheAngleAtTheFirstPoint)
{
    const float c[2] = {1, 1};
    const float east[2] = {3, 1};
    const float north[2] = {1, 5};
    const float west[2] = {0, 1};
    EXPECT_NEAR(GetAlfaOfThreePoints2d(c, east, north), pi / 2, 1e-12);
    EXPECT_NEAR(GetAlfaOfThreePoints2d(c, north, east), pi / 2, 1e-12);
    EXPECT_EQ(GetAlfaOfThreePoints2d(c, east, west), std::acos(-1.0));
    EXPECT_EQ(GetAlfaOfThreePoints2d(c, east, east), 0);
}

TEST(GetAlfaOfThreePoints2d, IsZeroWhereADistanceIsZero)
{
    const float c[2] = {1, 1};
    const float other[2] = {3, 1};
    EXPECT_EQ(GetAlfaOfThreePoints2d(c, c, other), 0);
    EXPECT_EQ(GetAlfaOfThreePoints2d(c, other, c), 0);
}

static int IsInside(float x, float y)
{
    const float p[2] = {x, y};
    const float a[2] = {0, 0};
    const float b[2] = {4, 0};
    const float c[2] = {0, 4};
    const int inside = InTheTriangle2d(p, a, b, c);
    EXPECT_EQ(InTheTriangle2d(p, c, b, a), inside); // whichever way the corners run
    return inside;
}

TEST(InTheTriangle2d, CountsTheBorderAsInside)
{
    EXPECT_EQ(IsInside(1, 1), 1);
    EXPECT_EQ(IsInside(2, 2), 1); // on an edge
    EXPECT_EQ(IsInside(2, 0), 1);
    EXPECT_EQ(IsInside(4, 0), 1); // on a corner
    EXPECT_EQ(IsInside(3, 3), 0); // inside the box round the triangle alone
    EXPECT_EQ(IsInside(5, 0), 0);
    EXPECT_EQ(IsInside(-1, 1), 0);
    EXPECT_EQ(IsInside(1, -1), 0);
}

TEST(InTheTriangle2d, TakesTheWholeBoxOfATriangleWithoutArea)
{
    const float a[2] = {0, 0};
    const float b[2] = {2, 2};
    const float c[2] = {1, 1};
    const float besides[2] = {1, 0.5F};
    const float beyond[2] = {3, 3};
    EXPECT_EQ(InTheTriangle2d(besides, a, b, c), 1); // no edge has an opposite corner on one side
    EXPECT_EQ(InTheTriangle2d(beyond, a, b, c), 0);
}

using Triangles = std::vector<Corners>;

static Triangles GetTriangles(const Shape& shape)
{
    Triangles triangles;
    for (int k = 0; k < shape.sides[0].trianglenumber; k++) {
        triangles.push_back(CornersOf(shape, 0, k));
    }
    return triangles;
}

TEST(SetTrianglesOfSide, TakesATriangleAsItIs)
{
    EXPECT_EQ(GetTriangles(*FlatTriangle()), (Triangles{{0, 1, 2}}));
}

TEST(SetTrianglesOfSide, CutsARectangleAtTheFirstOfItsEqualCorners)
{
    const OwnedShape flat = MakeFlatShape({{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {0, 1, 0}});
    EXPECT_EQ(GetTriangles(*flat), (Triangles{{3, 0, 1}, {1, 2, 3}}));
}

TEST(SetTrianglesOfSide, CutsAQuadrilateralAtItsSmallestCorner)
{
    // the angle at (4, 0) is 2 atan(1/3) = 37 degrees, the others have 90 and 116
    const OwnedShape kite = MakeFlatShape({{0, 0, 0}, {1, -1, 0}, {4, 0, 0}, {1, 1, 0}});
    EXPECT_EQ(GetTriangles(*kite), (Triangles{{1, 2, 3}, {0, 1, 3}}));
}

TEST(SetTrianglesOfSide, TurnsTheAnglesOfAClockwiseOutlineInside)
{
    // The normal is (0, 0, -1), so the flat points run clockwise. Not turned, the angles at the tip
    // would be 323 degrees and the ear elsewhere.
    const OwnedShape kite = MakeFlatShape({{1, 1, 0}, {4, 0, 0}, {1, -1, 0}, {0, 0, 0}});
    EXPECT_EQ(GetTriangles(*kite), (Triangles{{0, 1, 2}, {0, 2, 3}}));
}

TEST(SetTrianglesOfSide, LeavesAnEarThatAPointTouches)
{
    // (0,0) (2,0) (2,1) (1,1) (1,2) (0,2): all right angles but 3, which is 270 degrees.
    // Corner 0 comes first, but (1, 1) lies on the line from (0, 2) to (2, 0). Corner 1 is cut.
    // Then 0 has 90 - 27 = 63, 2 has 90 - 63 = 27, which is the smallest and is cut.
    // Then 0 has 63 - 18 = 45, 3 has 270 - 135 = 135, 4 and 5 have 90: 0 is cut, its line now runs
    // from (0, 2) to (1, 1).
    EXPECT_EQ(GetTriangles(*ConcaveL()), (Triangles{{0, 1, 2}, {0, 2, 3}, {5, 0, 3}, {3, 4, 5}}));
}

TEST(SetTrianglesOfSide, TakesTheFirstCornerWhereThereIsNoEar)
{
    // four equal points: each lies in the triangle of the others
    const OwnedShape knot = MakeFlatShape({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}});
    EXPECT_EQ(GetTriangles(*knot), (Triangles{{3, 0, 1}, {1, 2, 3}}));
    // a square with every corner twice: the twin of a corner lies in every triangle that has it
    const OwnedShape twins = MakeFlatShape(
        {{1, 1, 1}, {1, 1, 1}, {2, 1, 1}, {2, 1, 1}, {2, 2, 1}, {2, 2, 1}, {1, 2, 1}, {1, 2, 1}});
    EXPECT_EQ(GetTriangles(*twins)[0], (Corners{7, 0, 1}));
}

TEST(SetTrianglesOfSide, StoresTheRunFromTheGivenIndex)
{
    const OwnedShape prism = TrianglePrism();
    int first = 0;
    for (int s = 0; s < prism->sidenumber; s++) {
        const Side& side = prism->sides[s];
        for (int k = 0; k < side.trianglenumber; k++) {
            EXPECT_EQ(side.triangles[k], first + k);
            EXPECT_EQ(prism->triangles[first + k].shape, prism.get());
        }
        first += side.trianglenumber;
    }
    EXPECT_EQ(first, prism->trianglenumber);
}

TEST(SetTrianglesOfSide, NudgesPointZeroForATriangleWithoutArea)
{
    const OwnedShape line = MakeFlatShape({{0, 0, 0}, {1, 1, 1}, {2, 2, 2}});
    EXPECT_EQ(line->points[0][0], 1e-9F);
}

// The area of the side's triangles, and that they all face the same way.
static double GetArea(const Shape& shape)
{
    double area = 0;
    for (int t = 0; t < shape.trianglenumber; t++) {
        const int* p = shape.triangles[t].points;
        const float* a = shape.points[p[0]];
        const float* b = shape.points[p[1]];
        const float* c = shape.points[p[2]];
        const double own = (double(b[0]) - a[0]) * (double(c[1]) - a[1]) -
                           (double(c[0]) - a[0]) * (double(b[1]) - a[1]);
        EXPECT_GT(own, 0);
        area += own / 2;
    }
    return area;
}

TEST(SetTrianglesOfSide, CoversASimplePolygonOnce)
{
    EXPECT_NEAR(GetArea(*ConcaveL()), 3, 1e-6);
    // ten triangles from the centre, of 0.4 sin 36 / 2 each
    EXPECT_NEAR(GetArea(*Star()), 10 * 0.4 * std::sin(pi / 5) / 2, 1e-6);
}

// Cutting as it is defined: at every step every corner is asked whether it is an ear.
class Definition
{
public:
    explicit Definition(Side* side) : flat(GetPlanePointsOfSide(side))
    {
        for (int i = 0; i < side->pointnumber; i++) {
            corners.push_back(i);
            points.push_back(side->points[i]);
        }
        MeasureAngles();
    }

    Triangles Cut()
    {
        Triangles triangles;
        while (corners.size() > 3) {
            const std::size_t ear = FindEar();
            triangles.push_back(GetTriangle(ear));
            const float* a = At(ear + corners.size() - 1);
            const float* b = At(ear);
            const float* c = At(ear + 1);
            float& before = angles[(ear + corners.size() - 1) % corners.size()];
            float& after = angles[(ear + 1) % corners.size()];
            before = float(before - GetAlfaOfThreePoints2d(a, b, c));
            after = float(after - GetAlfaOfThreePoints2d(c, a, b));
            corners.erase(corners.begin() + std::ptrdiff_t(ear));
            angles.erase(angles.begin() + std::ptrdiff_t(ear));
        }
        triangles.push_back(GetTriangle(1));
        return triangles;
    }

private:
    const float* At(std::size_t position) const
    {
        return flat[std::size_t(corners[position % corners.size()])];
    }

    Corners GetTriangle(std::size_t middle) const
    {
        const std::size_t n = corners.size();
        return {points[std::size_t(corners[(middle + n - 1) % n])],
                points[std::size_t(corners[middle % n])],
                points[std::size_t(corners[(middle + 1) % n])]};
    }

    void MeasureAngles()
    {
        const std::size_t n = corners.size();
        float sum = 0;
        for (std::size_t i = 0; i < n; i++) {
            const float* prev = At(i + n - 1);
            const float* own = At(i);
            const float* next = At(i + 1);
            const double value = (double(next[1]) - prev[1]) * own[0] +
                                 (double(prev[1]) - own[1]) * next[0] +
                                 (double(own[1]) - next[1]) * prev[0];
            const double alfa = GetAlfaOfThreePoints2d(own, prev, next);
            angles.push_back(float(value > 0 ? alfa : 2 * pi - alfa));
            sum += angles.back();
        }
        if (sum > double(n) * 2 * pi - sum) {
            for (float& angle : angles) {
                angle = float(2 * pi - angle);
            }
        }
    }

    std::size_t FindEar() const
    {
        const std::size_t n = corners.size();
        float smallest = 9.424778F;
        std::size_t ear = 0;
        for (std::size_t j = 0; j < n; j++) {
            bool free = true;
            for (std::size_t i = 0; i < n && free; i++) {
                const bool own = i == j || i == (j + 1) % n || i == (j + n - 1) % n;
                free = own || InTheTriangle2d(At(i), At(j + n - 1), At(j), At(j + 1)) == 0;
            }
            if (free && angles[j] < smallest) {
                smallest = angles[j];
                ear = j;
            }
        }
        return ear;
    }

    Block<float[][3]> flat;
    std::vector<int> corners; // positions in the side
    std::vector<int> points;
    std::vector<float> angles;
};

// An initialiser that can be pasted into a test.
static std::string Print(const Shape& shape)
{
    std::string text = "{";
    for (int i = 0; i < shape.pointnumber; i++) {
        char point[100];
        std::snprintf(point, sizeof point, "{%.9gF, %.9gF, %.9gF}, ", double(shape.points[i][0]),
                      double(shape.points[i][1]), double(shape.points[i][2]));
        text += point;
    }
    return text + "}";
}

static void ExpectAsDefined(const Points& points)
{
    const OwnedShape shape = MakeFlatShape(points);
    EXPECT_EQ(GetTriangles(*shape), Definition(&shape->sides[0]).Cut()) << Print(*shape);
}

static float Draw(std::mt19937& random, double low, double high)
{
    return float(std::uniform_real_distribution<double>(low, high)(random));
}

TEST(SetTrianglesOfSide, CutsStarShapedPolygonsAsDefined)
{
    std::mt19937 random(1);
    for (int n = 4; n < 200; n = n < 40 ? n + 1 : n + 17) {
        for (int variant = 0; variant < 4; variant++) {
            const double inner = variant == 0 ? 1 : 0.2; // the first is convex
            Points points;
            for (int i = 0; i < n; i++) {
                const double angle = 2 * pi * i / n;
                const double r = Draw(random, inner, 1.0);
                points.push_back({float(r * std::cos(angle)), float(r * std::sin(angle)),
                                  float(variant * 0.3 * r * std::cos(angle))});
            }
            ExpectAsDefined(points);
        }
    }
}

TEST(SetTrianglesOfSide, CutsTanglesAsDefined)
{
    // corners on a coarse grid: twins, straight runs, crossings and outlines without area
    std::mt19937 random(2);
    for (int round = 0; round < 1500; round++) {
        const int n = 4 + int(random() % 30);
        const int grid = 1 + int(random() % 6);
        Points points;
        for (int i = 0; i < n; i++) {
            points.push_back({1 + float(int(random() % unsigned(grid))),
                              1 + float(int(random() % unsigned(grid))),
                              1 + float(int(random() % 2) * (round % 3))});
        }
        ExpectAsDefined(points);
    }
}

TEST(SetTrianglesOfSide, CutsNearlyStraightOutlinesAsDefined)
{
    std::mt19937 random(3);
    for (int round = 0; round < 300; round++) {
        const int n = 4 + int(random() % 60);
        Points points;
        for (int i = 0; i < n; i++) {
            points.push_back({float(i + 1), 1 + Draw(random, 0, 1e-6), 1});
        }
        ExpectAsDefined(points);
    }
}

TEST(SetTrianglesOfSide, CutsSpiralsAsDefined)
{
    // two arms round each other: most small angles are blocked for long
    for (int n : {8, 20, 60, 120}) {
        Points points;
        for (int i = 0; i < 2 * n; i++) {
            const int step = i < n ? i : 2 * n - 1 - i;
            const double angle = 0.35 * step;
            const double r = 1 + 0.1 * step + (i < n ? 0 : 0.25);
            points.push_back({float(r * std::cos(angle)), float(r * std::sin(angle)), 2});
        }
        ExpectAsDefined(points);
    }
}

TEST(SetTrianglesOfSide, CutsCornersTooLargeForFloatsAsDefined)
{
    // sums overflow, so some flat coordinates are infinite or no numbers; nothing may hang
    std::mt19937 random(4);
    for (int round = 0; round < 200; round++) {
        const int n = 4 + int(random() % 20);
        Points points;
        for (int i = 0; i < n; i++) {
            points.push_back({Draw(random, -3.4e38, 3.4e38), Draw(random, -3.4e38, 3.4e38),
                              Draw(random, -3.4e38, 3.4e38)});
        }
        ExpectAsDefined(points);
    }
}

TEST(SetTrianglesOfSide, CutsCornersNearTheSmallestFloatsAsDefined)
{
    std::mt19937 random(5);
    for (int round = 0; round < 200; round++) {
        Points points = {{1, 1, 1}}; // takes the nudges
        for (int i = 0; i < 12; i++) {
            points.push_back({Draw(random, -1e-40, 1e-40), Draw(random, -1e-40, 1e-40), 0});
        }
        ExpectAsDefined(points);
    }
}

TEST(SetTrianglesOfSide, CutsThousandsOfCorners)
{
    Points points;
    constexpr int number = 20000;
    for (int i = 0; i < number; i++) {
        const double angle = 2 * pi * i / number;
        const double r = i % 2 == 0 ? 1.0 : 0.9;
        points.push_back({float(r * std::cos(angle)), float(r * std::sin(angle)), 1});
    }
    const OwnedShape gear = MakeFlatShape(points);
    EXPECT_EQ(gear->trianglenumber, number - 2);
    double area = 0;
    for (int i = 0; i < gear->trianglenumber; i++) {
        const int* p = gear->triangles[i].points;
        const float* a = gear->points[p[0]];
        const float* b = gear->points[p[1]];
        const float* c = gear->points[p[2]];
        area += ((double(b[0]) - a[0]) * (double(c[1]) - a[1]) -
                 (double(c[0]) - a[0]) * (double(b[1]) - a[1])) /
                2;
    }
    EXPECT_NEAR(area, number * 0.9 * std::sin(2 * pi / number) / 2, 1e-4);
}

} // namespace korvane::testing
