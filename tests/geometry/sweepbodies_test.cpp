#include "geometry/sweep.h"

#include "geometry/sideplane.h"
#include "tests/support/chains.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "tests/support/sweeps.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::testing
{

TEST(SweepSide, DrawsASideOut)
{
    const OwnedShape shape = CubeOfHalfEdge(1);
    ASSERT_TRUE(SweepOpen(shape, 1, {{0, 0, 1}, {0, 0, 2}}));
    EXPECT_EQ(OutlinesOf(*shape), (Outlines{{0, 3, 2, 1},
                                            {11, 10, 9, 8}, // the cap
                                            {0, 1, 5, 4},
                                            {3, 7, 6, 2},
                                            {0, 4, 7, 3},
                                            {1, 2, 6, 5},
                                            {6, 7, 8, 9},
                                            {5, 6, 9, 10},
                                            {4, 5, 10, 11},
                                            {7, 4, 11, 8}}));
    const Points points = PointsOf(*shape);
    EXPECT_EQ(Points(points.begin() + 8, points.end()),
              (Points{{-1, 1, 2}, {1, 1, 2}, {1, -1, 2}, {-1, -1, 2}}));
    EXPECT_EQ(shape->trianglenumber, 12 + 8);
    EXPECT_NEAR(GetVolume(*shape), 8 + 4, 1e-5);
    EXPECT_EQ(GetCharacteristic(*shape), 2);
}

TEST(SweepSide, DrawsASideOutInSeveralSteps)
{
    const OwnedShape shape = CubeOfHalfEdge(1);
    ASSERT_TRUE(SweepOpen(shape, 1, {{0, 0, 1}, {0, 0, 2}, {0, 0, 3}, {0, 0, 5}}));
    EXPECT_EQ(shape->pointnumber, 8 + 3 * 4);
    EXPECT_EQ(shape->sidenumber, 6 + 3 * 4);
    EXPECT_EQ(shape->trianglenumber, 12 + 2 * 3 * 4);
    EXPECT_EQ(OutlinesOf(*shape)[1], (std::vector<int>{19, 18, 17, 16}));
    EXPECT_NEAR(GetVolume(*shape), 8 + 16, 1e-5);
}

TEST(SweepSide, PressesAPocketIntoABody)
{
    const OwnedShape shape = CubeOfHalfEdge(1);
    ASSERT_TRUE(SweepOpen(shape, 1, {{0, 0, 1}, {0, 0, 0.5F}}));
    EXPECT_EQ(OutlinesOf(*shape)[1], (std::vector<int>{11, 10, 9, 8}));
    EXPECT_EQ(OutlinesOf(*shape)[6], (std::vector<int>{6, 7, 8, 9}));
    const Points points = PointsOf(*shape);
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

TEST(SweepSide, PassesOverStillSteps)
{
    const OwnedShape still = CubeOfHalfEdge(1);
    const OwnedShape shape = CubeOfHalfEdge(1);
    ASSERT_TRUE(SweepOpen(still, 1, {{0, 0, 1}, {0, 0, 1}, {0, 0, 2}, {0, 0, 2}, {1, 0, 3}}));
    ASSERT_TRUE(SweepOpen(shape, 1, {{0, 0, 1}, {0, 0, 2}, {1, 0, 3}}));
    EXPECT_EQ(PointsOf(*still), PointsOf(*shape));
    EXPECT_EQ(OutlinesOf(*still), OutlinesOf(*shape));
}

TEST(SweepSide, SweepsBodiesThatAreRingsThemselves)
{
    for (const OwnedShape& shape : {Ring(), BridgedCube()}) {
        const double volume = GetVolume(*shape);
        const std::array<float, 3> start = CenterOf(*shape, 0);
        const Block<float[]> normal = GetNormalOfSide(&shape->sides[0]);
        const std::array<float, 3> end = {start[0] + normal[0], start[1] + normal[1],
                                          start[2] + normal[2]};
        ASSERT_TRUE(SweepOpen(shape, 0, {start, end}));
        EXPECT_EQ(GetCharacteristic(*shape), 0);
        EXPECT_GT(GetVolume(*shape), volume);
    }
}

TEST(SweepSide, DrawsASideOutThatRunsAlongASlitTwice)
{
    const OwnedShape shape = PlateWithHole();
    // Its centre is the mean of ten corners, of which 0 and 4 stand there twice.
    ASSERT_TRUE(SweepOpen(shape, 0, {{1.3F, 1.3F, 0}, {1.3F, 1.3F, 1}}));
    EXPECT_EQ(shape->pointnumber, 8 + 10);
    EXPECT_EQ(shape->sidenumber, 2 + 10);
    EXPECT_EQ(shape->trianglenumber, 2 * 8 + 2 * 10);
    EXPECT_NEAR(GetVolume(*shape), 8, 1e-5); // nine squares without the one in the middle, 1 high
}

// As a tube it would have walls on both hands of every edge that is an edge already.
TEST(SweepSide, DrawsOutTheOneSideOfABodyWhoseSidesHaveBeenJoined)
{
    const OwnedShape ring = RingOfOneSide();
    ASSERT_EQ(GetCharacteristic(*ring), 0);
    ASSERT_TRUE(SweepOpen(ring, 0, {CenterOf(*ring, 0), {0, 0, 3}}));
    EXPECT_EQ(ring->pointnumber, 5 + 12);
    EXPECT_EQ(ring->sidenumber, 1 + 12);
    EXPECT_EQ(ring->trianglenumber, 10 + 2 * 12);
    EXPECT_EQ(GetCharacteristic(*ring), 0);
}

TEST(SweepSide, BridgesOppositeSides)
{
    const OwnedShape shape = CubeOfHalfEdge(1);
    ASSERT_TRUE(SweepClosed(shape, 1, handle, 0));
    EXPECT_EQ(shape->pointnumber, 8 + 4 * 4);
    EXPECT_EQ(shape->trianglenumber, 12 - 2 * 2 + 2 * 5 * 4);
    EXPECT_EQ(GetCharacteristic(*shape), 0);
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
    EXPECT_EQ(OutlinesOf(*shape), expected);
}

TEST(SweepSide, BridgesToALaterSideToo)
{
    const OwnedShape shape = CubeOfHalfEdge(1);
    Points back = handle;
    std::reverse(back.begin(), back.end());
    ASSERT_TRUE(SweepClosed(shape, 0, back, 1));
    EXPECT_EQ(shape->sidenumber, 6 - 2 + 5 * 4);
    EXPECT_EQ(GetCharacteristic(*shape), 0);
    EXPECT_GT(GetVolume(*shape), 8);
    // The bottom against its sense, 1 2 3 0, and at the end the top's corner below each.
    const Outlines outlines = OutlinesOf(*shape);
    EXPECT_EQ(outlines[4], (std::vector<int>{2, 1, 8, 9}));
    EXPECT_EQ(outlines[20], (std::vector<int>{21, 20, 5, 6}));
}

// From the cube's top to its side +x, which share the edge between 5 and 6.
TEST(SweepSide, LeavesOutTheWallsOverASharedEdge)
{
    const OwnedShape shape = CubeOfHalfEdge(1);
    ASSERT_TRUE(SweepClosed(shape, 1, {{0, 0, 1}, {2, 0, 2}, {1, 0, 0}}, 5));
    // The rings are 7 6 5 4, then 8 9 10 11, then 2 6 5 1.
    EXPECT_EQ(OutlinesOf(*shape), (Outlines{{0, 3, 2, 1},
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
    EXPECT_EQ(GetCharacteristic(*shape), 2);
}

TEST(SweepSide, BridgesSidesWithASharedEdgeByALongerPathWhole)
{
    const OwnedShape shape = CubeOfHalfEdge(1);
    ASSERT_TRUE(SweepClosed(shape, 1, {{0, 0, 1}, {1, 0, 3}, {3, 0, 1}, {1, 0, 0}}, 5));
    EXPECT_EQ(shape->pointnumber, 8 + 2 * 4);
    EXPECT_EQ(shape->sidenumber, 6 - 2 + 3 * 4);
    EXPECT_EQ(shape->trianglenumber, 12 - 4 + 2 * 3 * 4);
    EXPECT_EQ(GetCharacteristic(*shape), 0);
}

TEST(SweepSide, DoublesTheRingsPointAtASharedCorner)
{
    const OwnedShape shape = Pyramid();
    const float third = float(1.0 / 3);
    ASSERT_TRUE(
        SweepClosed(shape, 1, {{0, -2 * third, third}, {0, 0, 3}, {0, 2 * third, third}}, 3));
    // The rings are 4 1 0, then 5 6 7 with 8 at the place of 5, then 4 2 3.
    EXPECT_EQ(OutlinesOf(*shape), (Outlines{{0, 3, 2, 1},
                                            {1, 2, 4},
                                            {3, 0, 4},
                                            {1, 4, 8, 6},
                                            {0, 1, 6, 7},
                                            {4, 0, 7, 5},
                                            {6, 8, 4, 2},
                                            {7, 6, 2, 3},
                                            {5, 7, 3, 4}}));
    EXPECT_EQ(shape->pointnumber, 9);
    const Points points = PointsOf(*shape);
    EXPECT_EQ(points[5], points[8]);
    EXPECT_EQ(shape->trianglenumber, 6 - 2 + 12);
}

TEST(SweepSide, LeavesOutThePointsBetweenWallsThatAreLeftOut)
{
    // The first two sides share the edges 0-1 and 1-2; 3 and 4 are their fourth corners.
    const OwnedShape shape = MakeShape({{-1, 0, 0}, {0, -1, 0}, {1, 0, 0}, {0, 1, 1}, {0, 1, -1}},
                                       {{0, 1, 2, 3}, {2, 1, 0, 4}, {0, 3, 4}, {3, 2, 4}});
    SetVertexes(shape.get(), {1, 3});
    ASSERT_TRUE(SweepClosed(shape, 0, {{0, 0, 0.25F}, {0, 5, 0}, {0, 0, -0.25F}}, 1));
    // The rings are 3 2 1 0, then 5 6 7 8, then 4 2 1 0. The points 1 and 7 belong to no wall: the
    // others become 0, 2 3 4 -> 1 2 3, 5 6 -> 4 5 and 8 -> 6.
    EXPECT_EQ(OutlinesOf(*shape), (Outlines{{0, 2, 3},
                                            {2, 1, 3},
                                            {1, 2, 4, 5},    // 2 3 5 6
                                            {2, 0, 6, 4},    // 3 0 8 5
                                            {5, 4, 3, 1},    // 6 5 4 2
                                            {4, 6, 0, 3}})); // 5 8 0 4
    EXPECT_EQ(shape->pointnumber, 7);
    ASSERT_EQ(shape->vertexnumber, 1);
    EXPECT_EQ(shape->vertexes[0], 2);
}

TEST(SweepSide, BuildsNothingBetweenSidesThatCannotBeBridged)
{
    ExpectNothingBuilt(CubeOfHalfEdge(1), 1, handle, 1, true);
    ExpectNothingBuilt(CubeOfHalfEdge(1), 1, handle, -1, true);
    ExpectNothingBuilt(CubeOfHalfEdge(1), 1, handle, 6, true);
    ExpectNothingBuilt(TrianglePrism(), 0, handle, 2, true); // three corners and four
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
    EXPECT_EQ(GetCharacteristic(*shape), 0);
}

} // namespace korvane::testing
