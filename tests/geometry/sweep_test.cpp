#include "geometry/sweep.h"

#include "geometry/shapegeometry.h"
#include "geometry/sideplane.h"
#include "geometry/stripes.h"
#include "geometry/surgery.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::testing
{

static Outlines GetOutlines(const Shape& shape)
{
    Outlines outlines;
    for (int s = 0; s < shape.sidenumber; s++) {
        outlines.push_back(GetCornersOfSide(shape.sides[s]));
    }
    return outlines;
}

static Points GetPoints(const Shape& shape)
{
    Points points;
    for (int i = 0; i < shape.pointnumber; i++) {
        points.push_back({shape.points[i][0], shape.points[i][1], shape.points[i][2]});
    }
    return points;
}

// Sweeps, derives what is stale and asks for the invariants.
static bool SweepSoundly(Shape* shape, int side, const Points& path, int target, bool closed)
{
    if (!SweepSide(shape, side, path, target, closed)) {
        return false;
    }
    SetStripesOfShape(shape);
    SetNormalsOfShape(shape);
    SetCenterPointOfShape(shape);
    SetRadiusOfShape(shape);
    EXPECT_EQ(FindBrokenRuleOfShape(*shape), "");
    EXPECT_EQ(FindBrokenRuleOfClosedBody(*shape), "");
    return true;
}

static bool SweepOpen(const OwnedShape& shape, int side, const Points& path)
{
    return SweepSoundly(shape.get(), side, path, 0, false);
}

static bool SweepClosed(const OwnedShape& shape, int side, const Points& path, int target)
{
    return SweepSoundly(shape.get(), side, path, target, true);
}

// Positive when the sides face outwards.
static double GetVolume(const Shape& shape)
{
    double sixfold = 0;
    for (int t = 0; t < shape.trianglenumber; t++) {
        const float* a = shape.points[shape.triangles[t].points[0]];
        const float* b = shape.points[shape.triangles[t].points[1]];
        const float* c = shape.points[shape.triangles[t].points[2]];
        sixfold += double(a[0]) * (double(b[1]) * c[2] - double(b[2]) * c[1]) +
                   double(a[1]) * (double(b[2]) * c[0] - double(b[0]) * c[2]) +
                   double(a[2]) * (double(b[0]) * c[1] - double(b[1]) * c[0]);
    }
    return sixfold / 6;
}

static int GetEulerNumber(const Shape& shape)
{
    int corners = 0;
    for (int s = 0; s < shape.sidenumber; s++) {
        corners += shape.sides[s].pointnumber;
    }
    return shape.pointnumber - corners / 2 + shape.sidenumber;
}

// Faces up; its centre is the origin.
static OwnedShape MakeTriangle()
{
    return MakeFlatShape({{-1, -1, 0}, {2, -1, 0}, {-1, 2, 0}});
}

TEST(SweepSide, MakesATubeOfATriangle)
{
    const OwnedShape shape = MakeTriangle();
    ASSERT_TRUE(SweepOpen(shape, 0, {{0, 0, 0}, {0, 0, -1}, {0, 0, -3}}));
    EXPECT_EQ(GetOutlines(*shape), (Outlines{{0, 1, 2},
                                             {1, 0, 3, 4},
                                             {2, 1, 4, 5},
                                             {0, 2, 5, 3},
                                             {4, 3, 6, 7},
                                             {5, 4, 7, 8},
                                             {3, 5, 8, 6},
                                             {8, 7, 6}}));
    EXPECT_EQ(GetPoints(*shape), (Points{{-1, -1, 0},
                                         {2, -1, 0},
                                         {-1, 2, 0},
                                         {-1, -1, -1},
                                         {2, -1, -1},
                                         {-1, 2, -1},
                                         {-1, -1, -3},
                                         {2, -1, -3},
                                         {-1, 2, -3}}));
    EXPECT_EQ(shape->trianglenumber, 14);
    EXPECT_NEAR(GetVolume(*shape), 4.5 * 3, 1e-5);
}

TEST(SweepSide, ReversesAFaceThatLooksAlongThePath)
{
    const OwnedShape shape = MakeTriangle();
    ASSERT_TRUE(SweepOpen(shape, 0, {{0, 0, 0}, {0, 0, 1}}));
    EXPECT_EQ(GetOutlines(*shape),
              (Outlines{{2, 1, 0}, {1, 2, 3, 4}, {0, 1, 4, 5}, {2, 0, 5, 3}, {5, 4, 3}}));
    EXPECT_EQ(GetPoints(*shape),
              (Points{{-1, -1, 0}, {2, -1, 0}, {-1, 2, 0}, {-1, 2, 1}, {2, -1, 1}, {-1, -1, 1}}));
    EXPECT_NEAR(GetVolume(*shape), 4.5, 1e-5); // both caps look outwards
}

TEST(SweepSide, KeepsAFaceAcrossWhichThePathLeaves)
{
    const OwnedShape shape = MakeTriangle();
    ASSERT_TRUE(SweepOpen(shape, 0, {{0, 0, 0}, {1, 0, 0}}));
    EXPECT_EQ(GetOutlines(*shape)[0], (std::vector<int>{0, 1, 2}));
    // The face is turned about the y axis from -z to x: so x goes to z.
    const Points expected = {{0, -1, -1}, {0, -1, 2}, {0, 2, -1},
                             {1, -1, -1}, {1, -1, 2}, {1, 2, -1}};
    const Points points = GetPoints(*shape);
    ASSERT_EQ(points.size(), expected.size());
    for (std::size_t i = 0; i < points.size(); i++) {
        for (std::size_t c = 0; c < 3; c++) {
            EXPECT_NEAR(points[i][c], expected[i][c], 1e-6);
        }
    }
    EXPECT_NEAR(GetVolume(*shape), 4.5, 1e-5);
}

TEST(SweepSide, SweepsASideWhoseCornersStandInAnyOrder)
{
    const OwnedShape shape = MakeShape({{-1, -1, 0}, {2, -1, 0}, {-1, 2, 0}}, {{2, 0, 1}});
    ASSERT_TRUE(SweepOpen(shape, 0, {{0, 0, 0}, {0, 0, -1}}));
    EXPECT_EQ(GetOutlines(*shape),
              (Outlines{{2, 0, 1}, {0, 2, 3, 4}, {1, 0, 4, 5}, {2, 1, 5, 3}, {5, 4, 3}}));
    EXPECT_EQ(GetPoints(*shape)[3], (std::array<float, 3>{-1, 2, -1}));
}

TEST(SweepSide, SweepsAConcaveSide)
{
    const OwnedShape shape = ConcaveL(); // area 3
    const std::array<float, 3> center = {float(5.0 / 6), float(5.0 / 6), 0};
    ASSERT_TRUE(SweepOpen(shape, 0, {center, {center[0], center[1], 2}}));
    EXPECT_EQ(shape->pointnumber, 12);
    EXPECT_EQ(shape->sidenumber, 8);
    EXPECT_EQ(shape->trianglenumber, 2 * 4 + 2 * 6);
    EXPECT_NEAR(GetVolume(*shape), 6, 1e-5);
}

static const Points roundtrip = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {0, 0, 0}};

// Stands across the x axis and faces along it.
static OwnedShape MakeUprightSquare()
{
    return MakeFlatShape({{0, -1, -1}, {0, 1, -1}, {0, 1, 1}, {0, -1, 1}});
}

TEST(SweepSide, MakesARingOfASquare)
{
    const OwnedShape shape = MakeUprightSquare();
    ASSERT_TRUE(SweepClosed(shape, 0, roundtrip, 0));
    EXPECT_EQ(shape->pointnumber, 16);
    EXPECT_EQ(shape->trianglenumber, 32);
    EXPECT_EQ(GetEulerNumber(*shape), 0);
    EXPECT_GT(GetVolume(*shape), 0);
    // The path leaves along the square's front, which is reversed: 3 2 1 0, then 4 to 7 and so on.
    EXPECT_EQ(GetOutlines(*shape), (Outlines{{2, 3, 4, 5},
                                             {1, 2, 5, 6},
                                             {0, 1, 6, 7},
                                             {3, 0, 7, 4},
                                             {5, 4, 8, 9},
                                             {6, 5, 9, 10},
                                             {7, 6, 10, 11},
                                             {4, 7, 11, 8},
                                             {9, 8, 12, 13},
                                             {10, 9, 13, 14},
                                             {11, 10, 14, 15},
                                             {8, 11, 15, 12},
                                             {13, 12, 3, 2},
                                             {14, 13, 2, 1},
                                             {15, 14, 1, 0},
                                             {12, 15, 0, 3}}));
    for (int s = 0; s < shape->sidenumber; s++) {
        EXPECT_EQ(shape->sides[s].visibility, VISIBLE_FRONT);
    }
}

TEST(SweepSide, MakesARingThatFacesOutwardsOfEitherFace)
{
    OwnedShape shape = MakeShape({{0, -1, -1}, {0, 1, -1}, {0, 1, 1}, {0, -1, 1}}, {{3, 2, 1, 0}});
    ASSERT_TRUE(SweepClosed(shape, 0, roundtrip, 0));
    EXPECT_EQ(GetOutlines(*shape)[0], (std::vector<int>{2, 3, 4, 5}));
    EXPECT_GT(GetVolume(*shape), 0);
}

TEST(SweepSide, MakesTheSmallestRingOfThreeRings)
{
    const OwnedShape shape = MakeUprightSquare();
    ASSERT_TRUE(SweepClosed(shape, 0, {{0, 0, 0}, {9, 0, 0}, {4, 9, 0}, {0, 0, 0}}, 0));
    EXPECT_EQ(shape->pointnumber, 12);
    EXPECT_EQ(shape->sidenumber, 12);
    EXPECT_EQ(shape->trianglenumber, 24);
    EXPECT_EQ(GetEulerNumber(*shape), 0);
}

TEST(SweepSide, EndsARingAtItsStartAlsoWhenThePathMissesItByRounding)
{
    const OwnedShape shape = MakeUprightSquare();
    const OwnedShape exact = MakeUprightSquare();
    Points path = roundtrip;
    path.back() = {1e-7F, 0, -1e-7F};
    ASSERT_TRUE(SweepClosed(shape, 0, path, 0));
    ASSERT_TRUE(SweepClosed(exact, 0, roundtrip, 0));
    EXPECT_EQ(GetPoints(*shape), GetPoints(*exact));
}

TEST(SweepSide, DrawsASideOut)
{
    const OwnedShape shape = CubeOfHalfEdge(1);
    ASSERT_TRUE(SweepOpen(shape, 1, {{0, 0, 1}, {0, 0, 2}}));
    EXPECT_EQ(GetOutlines(*shape), (Outlines{{0, 3, 2, 1},
                                             {11, 10, 9, 8}, // the cap
                                             {0, 1, 5, 4},
                                             {3, 7, 6, 2},
                                             {0, 4, 7, 3},
                                             {1, 2, 6, 5},
                                             {6, 7, 8, 9},
                                             {5, 6, 9, 10},
                                             {4, 5, 10, 11},
                                             {7, 4, 11, 8}}));
    const Points points = GetPoints(*shape);
    EXPECT_EQ(Points(points.begin() + 8, points.end()),
              (Points{{-1, 1, 2}, {1, 1, 2}, {1, -1, 2}, {-1, -1, 2}}));
    EXPECT_EQ(shape->trianglenumber, 12 + 8);
    EXPECT_NEAR(GetVolume(*shape), 8 + 4, 1e-5);
    EXPECT_EQ(GetEulerNumber(*shape), 2);
}

TEST(SweepSide, DrawsASideOutInSeveralSteps)
{
    const OwnedShape shape = CubeOfHalfEdge(1);
    ASSERT_TRUE(SweepOpen(shape, 1, {{0, 0, 1}, {0, 0, 2}, {0, 0, 3}, {0, 0, 5}}));
    EXPECT_EQ(shape->pointnumber, 8 + 3 * 4);
    EXPECT_EQ(shape->sidenumber, 6 + 3 * 4);
    EXPECT_EQ(shape->trianglenumber, 12 + 2 * 3 * 4);
    EXPECT_EQ(GetOutlines(*shape)[1], (std::vector<int>{19, 18, 17, 16}));
    EXPECT_NEAR(GetVolume(*shape), 8 + 16, 1e-5);
}

TEST(SweepSide, PressesAPocketIntoABody)
{
    const OwnedShape shape = CubeOfHalfEdge(1);
    ASSERT_TRUE(SweepOpen(shape, 1, {{0, 0, 1}, {0, 0, 0.5F}}));
    EXPECT_EQ(GetOutlines(*shape)[1], (std::vector<int>{11, 10, 9, 8}));
    EXPECT_EQ(GetOutlines(*shape)[6], (std::vector<int>{6, 7, 8, 9}));
    const Points points = GetPoints(*shape);
    EXPECT_EQ(Points(points.begin() + 8, points.end()),
              (Points{{-1, 1, 0.5F}, {1, 1, 0.5F}, {1, -1, 0.5F}, {-1, -1, 0.5F}}));
    EXPECT_NEAR(GetVolume(*shape), 8 - 4 * 0.5, 1e-5);
}

TEST(SweepSide, LeansASideOfABodyForwardWherePathAndNormalAreSquare)
{
    const OwnedShape shape = CubeOfHalfEdge(1);
    ASSERT_TRUE(SweepOpen(shape, 1, {{0, 0, 1}, {1, 0, 1}}));
    // z goes to x and x to -z: corner 7, (-1, 1) from the centre, stands 1 above the path's end.
    const float* p = shape->points[8];
    EXPECT_NEAR(p[0], 1, 1e-6);
    EXPECT_NEAR(p[1], 1, 1e-6);
    EXPECT_NEAR(p[2], 2, 1e-6);
}

TEST(SweepSide, GivesWallsTheColoursOfTheSideAndOnlyAFront)
{
    const OwnedShape shape = Cube();
    for (int s = 0; s < 6; s++) {
        shape->sides[s].colors[FRONT_LIGHT] = 0.1F * float(s);
    }
    ASSERT_TRUE(SweepOpen(shape, 3, {{0, 0.5F, 0}, {0, 1, 0}}));
    for (int s = 0; s < 10; s++) {
        const Side& side = shape->sides[s];
        EXPECT_EQ(side.colors[FRONT_LIGHT], 0.1F * float(s < 6 ? s : 3)) << s;
        EXPECT_EQ(side.visibility, s < 6 ? VISIBLE_BOTH : VISIBLE_FRONT) << s;
    }
}

TEST(SweepSide, GivesATubeTheColoursOfItsSideAndOnlyAFront)
{
    const OwnedShape shape = MakeTriangle();
    shape->sides[0].colors[BACK_ACUITY] = 0.25F;
    ASSERT_TRUE(SweepOpen(shape, 0, {{0, 0, 0}, {0, 0, 1}}));
    for (int s = 0; s < shape->sidenumber; s++) {
        EXPECT_EQ(shape->sides[s].colors[BACK_ACUITY], 0.25F);
        EXPECT_EQ(shape->sides[s].visibility, VISIBLE_FRONT);
    }
}

static std::vector<int> GetVertexes(const Shape& shape)
{
    return {shape.vertexes, shape.vertexes + shape.vertexnumber};
}

TEST(SweepSide, LeavesTheMarksOfVertexesOnTheirPoints)
{
    const OwnedShape shape = MakeTriangle();
    SetVertexes(shape.get(), {0, 2});
    ASSERT_TRUE(SweepOpen(shape, 0, {{0, 0, 0}, {0, 0, 1}}));
    EXPECT_EQ(GetVertexes(*shape), (std::vector<int>{0, 2}));
}

TEST(SweepSide, DropsPointsThatNoSideUses)
{
    const OwnedShape shape =
        MakeShape({{9, 9, 9}, {-1, -1, 0}, {2, -1, 0}, {-1, 2, 0}}, {{1, 2, 3}});
    SetVertexes(shape.get(), {0, 3});
    ASSERT_TRUE(SweepOpen(shape, 0, {{0, 0, 0}, {0, 0, -1}}));
    EXPECT_EQ(GetOutlines(*shape),
              (Outlines{{0, 1, 2}, {1, 0, 3, 4}, {2, 1, 4, 5}, {0, 2, 5, 3}, {5, 4, 3}}));
    EXPECT_EQ(GetVertexes(*shape), (std::vector<int>{2}));
}

// The way round the cube from its top to its bottom.
static const Points handle = {{0, 0, 1}, {0, 0, 3}, {4, 0, 3}, {4, 0, -3}, {0, 0, -3}, {0, 0, -1}};

TEST(SweepSide, BridgesOppositeSides)
{
    const OwnedShape shape = CubeOfHalfEdge(1);
    ASSERT_TRUE(SweepClosed(shape, 1, handle, 0));
    EXPECT_EQ(shape->pointnumber, 8 + 4 * 4);
    EXPECT_EQ(shape->trianglenumber, 12 - 2 * 2 + 2 * 5 * 4);
    EXPECT_EQ(GetEulerNumber(*shape), 0);
    EXPECT_GT(GetVolume(*shape), 8);
    Outlines expected = {{0, 1, 5, 4}, {3, 7, 6, 2}, {0, 4, 7, 3}, {1, 2, 6, 5}};
    // The top against its sense, 7 6 5 4; the four new rings; the bottom's corner above each.
    const Outlines rings = {{7, 6, 5, 4},     {8, 9, 10, 11},   {12, 13, 14, 15},
                            {16, 17, 18, 19}, {20, 21, 22, 23}, {3, 2, 1, 0}};
    for (std::size_t i = 1; i < rings.size(); i++) {
        for (std::size_t k = 0; k < 4; k++) {
            const std::size_t next = (k + 1) % 4;
            expected.push_back({rings[i - 1][next], rings[i - 1][k], rings[i][k], rings[i][next]});
        }
    }
    EXPECT_EQ(GetOutlines(*shape), expected);
}

TEST(SweepSide, BridgesToALaterSideToo)
{
    const OwnedShape shape = CubeOfHalfEdge(1);
    Points back = handle;
    std::reverse(back.begin(), back.end());
    ASSERT_TRUE(SweepClosed(shape, 0, back, 1));
    EXPECT_EQ(shape->sidenumber, 6 - 2 + 5 * 4);
    EXPECT_EQ(GetEulerNumber(*shape), 0);
    EXPECT_GT(GetVolume(*shape), 8);
    // The bottom against its sense, 1 2 3 0, and at the end the top's corner below each.
    const Outlines outlines = GetOutlines(*shape);
    EXPECT_EQ(outlines[4], (std::vector<int>{2, 1, 8, 9}));
    EXPECT_EQ(outlines[20], (std::vector<int>{21, 20, 5, 6}));
}

// From the cube's top to its side +x, which share the edge between 5 and 6.
TEST(SweepSide, LeavesOutTheWallsOverASharedEdge)
{
    const OwnedShape shape = CubeOfHalfEdge(1);
    ASSERT_TRUE(SweepClosed(shape, 1, {{0, 0, 1}, {2, 0, 2}, {1, 0, 0}}, 5));
    // The rings are 7 6 5 4, then 8 9 10 11, then 2 6 5 1.
    EXPECT_EQ(GetOutlines(*shape), (Outlines{{0, 3, 2, 1},
                                             {0, 1, 5, 4},
                                             {3, 7, 6, 2},
                                             {0, 4, 7, 3},
                                             {6, 7, 8, 9},
                                             {4, 5, 10, 11},
                                             {7, 4, 11, 8},
                                             {9, 8, 2, 6},
                                             {11, 10, 5, 1},
                                             {8, 11, 1, 2}}));
    EXPECT_EQ(shape->pointnumber, 12);
    EXPECT_EQ(shape->trianglenumber, 20);
    EXPECT_EQ(GetEulerNumber(*shape), 2);
}

TEST(SweepSide, BridgesSidesWithASharedEdgeByALongerPathWhole)
{
    const OwnedShape shape = CubeOfHalfEdge(1);
    ASSERT_TRUE(SweepClosed(shape, 1, {{0, 0, 1}, {1, 0, 3}, {3, 0, 1}, {1, 0, 0}}, 5));
    EXPECT_EQ(shape->pointnumber, 8 + 2 * 4);
    EXPECT_EQ(shape->sidenumber, 6 - 2 + 3 * 4);
    EXPECT_EQ(shape->trianglenumber, 12 - 4 + 2 * 3 * 4);
    EXPECT_EQ(GetEulerNumber(*shape), 0);
}

TEST(SweepSide, DoublesTheRingsPointAtASharedCorner)
{
    const OwnedShape shape = Pyramid();
    const float third = float(1.0 / 3);
    ASSERT_TRUE(
        SweepClosed(shape, 1, {{0, -2 * third, third}, {0, 0, 3}, {0, 2 * third, third}}, 3));
    // The rings are 4 1 0, then 5 6 7 with 8 at the place of 5, then 4 2 3.
    EXPECT_EQ(GetOutlines(*shape), (Outlines{{0, 3, 2, 1},
                                             {1, 2, 4},
                                             {3, 0, 4},
                                             {1, 4, 8, 6},
                                             {0, 1, 6, 7},
                                             {4, 0, 7, 5},
                                             {6, 8, 4, 2},
                                             {7, 6, 2, 3},
                                             {5, 7, 3, 4}}));
    EXPECT_EQ(shape->pointnumber, 9);
    const Points points = GetPoints(*shape);
    EXPECT_EQ(points[5], points[8]);
    EXPECT_EQ(shape->trianglenumber, 6 - 2 + 12);
}

TEST(SweepSide, LeavesOutThePointsBetweenWallsThatAreLeftOut)
{
    // The first two sides share the edges 0-1 and 1-2; 3 and 4 are their fourth corners.
    const OwnedShape shape = MakeShape({{-1, 0, 0}, {0, -1, 0}, {1, 0, 0}, {0, 1, 1}, {0, 1, -1}},
                                       {{0, 1, 2, 3}, {2, 1, 0, 4}, {0, 3, 4}, {3, 2, 4}});
    ASSERT_TRUE(SweepClosed(shape, 0, {{0, 0, 0.25F}, {0, 5, 0}, {0, 0, -0.25F}}, 1));
    // The rings are 3 2 1 0, then 5 6 7 8, then 4 2 1 0. The points 1 and 7 belong to no wall: the
    // others become 0, 2 3 4 -> 1 2 3, 5 6 -> 4 5 and 8 -> 6.
    EXPECT_EQ(GetOutlines(*shape), (Outlines{{0, 2, 3},
                                             {2, 1, 3},
                                             {1, 2, 4, 5},    // 2 3 5 6
                                             {2, 0, 6, 4},    // 3 0 8 5
                                             {5, 4, 3, 1},    // 6 5 4 2
                                             {4, 6, 0, 3}})); // 5 8 0 4
    EXPECT_EQ(shape->pointnumber, 7);
}

// What a sweep that builds nothing must leave.
static void ExpectNothingBuilt(const OwnedShape& shape, int side, const Points& path, int target,
                               bool closed)
{
    const Points points = GetPoints(*shape);
    const Outlines outlines = GetOutlines(*shape);
    const int trianglenumber = shape->trianglenumber;
    EXPECT_FALSE(SweepSide(shape.get(), side, path, target, closed));
    EXPECT_EQ(GetPoints(*shape), points);
    EXPECT_EQ(GetOutlines(*shape), outlines);
    EXPECT_EQ(shape->trianglenumber, trianglenumber);
    EXPECT_EQ(FindBrokenRuleOfShape(*shape), "");
}

TEST(SweepSide, BuildsNothingOfAPathWithoutAStep)
{
    ExpectNothingBuilt(MakeTriangle(), 0, {}, 0, false);
    ExpectNothingBuilt(MakeTriangle(), 0, {{0, 0, 0}}, 0, false);
    ExpectNothingBuilt(MakeTriangle(), 0, {{0, 0, 0}, {0, 0, 0}}, 0, false);
    ExpectNothingBuilt(MakeTriangle(), 0, {{0, 0, 0}}, 0, true);
    ExpectNothingBuilt(Cube(), 1, {{0, 0, 0.5F}, {0, 0, 0.5F}}, 0, false);
}

TEST(SweepSide, BuildsNothingOfAClosedPathThatIsTooShort)
{
    const Points there = {{0, 0, 0}, {4, 0, 0}, {0, 0, 0}};
    ExpectNothingBuilt(MakeUprightSquare(), 0, there, 0, true);
    const Points still = {{0, 0, 0}, {4, 0, 0}, {4, 0, 0}, {0, 0, 0}};
    ExpectNothingBuilt(MakeUprightSquare(), 0, still, 0, true);
    ExpectNothingBuilt(CubeOfHalfEdge(1), 1, {{0, 0, 1}, {0, 0, -1}}, 0, true);
}

TEST(SweepSide, BuildsNothingBetweenSidesThatCannotBeBridged)
{
    ExpectNothingBuilt(CubeOfHalfEdge(1), 1, handle, 1, true);
    ExpectNothingBuilt(CubeOfHalfEdge(1), 1, handle, -1, true);
    ExpectNothingBuilt(CubeOfHalfEdge(1), 1, handle, 6, true);
    ExpectNothingBuilt(TrianglePrism(), 0, handle, 2, true); // three corners and four
}

TEST(SweepSide, BuildsNothingOfASideThatIsGone)
{
    ExpectNothingBuilt(MakeTriangle(), 1, {{0, 0, 0}, {0, 0, 1}}, 0, false);
    ExpectNothingBuilt(MakeTriangle(), -1, {{0, 0, 0}, {0, 0, 1}}, 0, false);
}

// Its two sides lie back to back on the same four points.
static OwnedShape MakeSheet()
{
    return MakeShape({{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}},
                     {{0, 1, 2, 3}, {3, 2, 1, 0}});
}

TEST(SweepSide, BuildsNothingRoundTheEdgesOfASheetWithOneRing)
{
    ExpectNothingBuilt(MakeSheet(), 0, {{0, 0, 0}, {0, 0, 1}, {0, 0, 0}}, 1, true);
}

TEST(SweepSide, BridgesTheFacesOfASheetWithTwoRings)
{
    const OwnedShape shape = MakeSheet();
    ASSERT_TRUE(SweepClosed(shape, 0, {{0, 0, 0}, {0, 0, 1}, {5, 0, 1}, {0, 0, 0}}, 1));
    EXPECT_EQ(shape->pointnumber, 4 + 8);
    EXPECT_EQ(shape->sidenumber, 12);
    EXPECT_EQ(GetEulerNumber(*shape), 0);
}

TEST(SweepSide, PassesOverStillSteps)
{
    const OwnedShape still = CubeOfHalfEdge(1);
    const OwnedShape shape = CubeOfHalfEdge(1);
    ASSERT_TRUE(SweepOpen(still, 1, {{0, 0, 1}, {0, 0, 1}, {0, 0, 2}, {0, 0, 2}, {1, 0, 3}}));
    ASSERT_TRUE(SweepOpen(shape, 1, {{0, 0, 1}, {0, 0, 2}, {1, 0, 3}}));
    EXPECT_EQ(GetPoints(*still), GetPoints(*shape));
    EXPECT_EQ(GetOutlines(*still), GetOutlines(*shape));
}

TEST(SweepSide, SweepsBodiesThatAreRingsThemselves)
{
    for (const OwnedShape& shape : {Ring(), BridgedCube()}) {
        const double volume = GetVolume(*shape);
        const Block<float[]> center = GetCenterOfSide(&shape->sides[0]);
        const Block<float[]> normal = GetNormalOfSide(&shape->sides[0]);
        const std::array<float, 3> start = {center[0], center[1], center[2]};
        const std::array<float, 3> end = {center[0] + normal[0], center[1] + normal[1],
                                          center[2] + normal[2]};
        ASSERT_TRUE(SweepOpen(shape, 0, {start, end}));
        EXPECT_EQ(GetEulerNumber(*shape), 0);
        EXPECT_GT(GetVolume(*shape), volume);
    }
}

TEST(ShapeCatalogue, HasRingsThatFaceOutwards)
{
    EXPECT_NEAR(GetVolume(*Ring()), 12, 1e-5);
    EXPECT_NEAR(GetVolume(*BridgedCube()), 11, 1e-5);
    for (const OwnedShape& shape : {Ring(), BridgedCube()}) {
        EXPECT_EQ(FindBrokenRuleOfShape(*shape), "");
        EXPECT_EQ(FindBrokenRuleOfClosedBody(*shape), "");
        EXPECT_EQ(GetEulerNumber(*shape), 0);
    }
}

} // namespace korvane::testing
