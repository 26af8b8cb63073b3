#include "geometry/sweep.h"

#include "tests/support/chains.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "tests/support/sweeps.h"

#include <gtest/gtest.h>

namespace korvane::testing
{

// Faces up; its centre is the origin.
static OwnedShape MakeTriangle()
{
    return MakeFlatShape({{-1, -1, 0}, {2, -1, 0}, {-1, 2, 0}});
}

TEST(SweepSide, MakesATubeOfATriangle)
{
    const OwnedShape shape = MakeTriangle();
    ASSERT_TRUE(SweepOpen(shape, 0, {{0, 0, 0}, {0, 0, -1}, {0, 0, -3}}));
    EXPECT_EQ(OutlinesOf(*shape), (Outlines{{0, 1, 2},
                                            {1, 0, 3, 4},
                                            {2, 1, 4, 5},
                                            {0, 2, 5, 3},
                                            {4, 3, 6, 7},
                                            {5, 4, 7, 8},
                                            {3, 5, 8, 6},
                                            {8, 7, 6}}));
    EXPECT_EQ(PointsOf(*shape), (Points{{-1, -1, 0},
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
    EXPECT_EQ(OutlinesOf(*shape),
              (Outlines{{2, 1, 0}, {1, 2, 3, 4}, {0, 1, 4, 5}, {2, 0, 5, 3}, {5, 4, 3}}));
    EXPECT_EQ(PointsOf(*shape),
              (Points{{-1, -1, 0}, {2, -1, 0}, {-1, 2, 0}, {-1, 2, 1}, {2, -1, 1}, {-1, -1, 1}}));
    EXPECT_NEAR(GetVolume(*shape), 4.5, 1e-5); // both caps look outwards
}

TEST(SweepSide, KeepsAFaceAcrossWhichThePathLeaves)
{
    const OwnedShape shape = MakeTriangle();
    ASSERT_TRUE(SweepOpen(shape, 0, {{0, 0, 0}, {1, 0, 0}}));
    EXPECT_EQ(OutlinesOf(*shape)[0], (std::vector<int>{0, 1, 2}));
    // The face is turned about the y axis from -z to x: so x goes to z.
    const Points expected = {{0, -1, -1}, {0, -1, 2}, {0, 2, -1},
                             {1, -1, -1}, {1, -1, 2}, {1, 2, -1}};
    const Points points = PointsOf(*shape);
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
    EXPECT_EQ(OutlinesOf(*shape),
              (Outlines{{2, 0, 1}, {0, 2, 3, 4}, {1, 0, 4, 5}, {2, 1, 5, 3}, {5, 4, 3}}));
    EXPECT_EQ(PointsOf(*shape)[3], (std::array<float, 3>{-1, 2, -1}));
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

TEST(SweepSide, SweepsASideWithoutArea)
{
    const OwnedShape line = MakeFlatShape({{-1, 0, 0}, {0, 0, 0}, {1, 0, 0}});
    ASSERT_TRUE(SweepOpen(line, 0, {{0, 0, 0}, {0, 0, 1}, {0, 1, 1}}));
    EXPECT_EQ(line->sidenumber, 8);
    const OwnedShape point = MakeFlatShape({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}});
    ASSERT_TRUE(SweepClosed(point, 0, {{1, 1, 1}, {2, 1, 1}, {2, 2, 1}, {1, 1, 1}}, 0));
    EXPECT_EQ(point->sidenumber, 9);
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
    EXPECT_EQ(GetCharacteristic(*shape), 0);
    EXPECT_GT(GetVolume(*shape), 0);
    // The path leaves along the square's front, which is reversed: 3 2 1 0, then 4 to 7 and so on.
    EXPECT_EQ(OutlinesOf(*shape), (Outlines{{2, 3, 4, 5},
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
    EXPECT_EQ(OutlinesOf(*shape)[0], (std::vector<int>{2, 3, 4, 5}));
    EXPECT_GT(GetVolume(*shape), 0);
}

TEST(SweepSide, MakesTheSmallestRingOfThreeRings)
{
    const OwnedShape shape = MakeUprightSquare();
    ASSERT_TRUE(SweepClosed(shape, 0, {{0, 0, 0}, {9, 0, 0}, {4, 9, 0}, {0, 0, 0}}, 0));
    EXPECT_EQ(shape->pointnumber, 12);
    EXPECT_EQ(shape->sidenumber, 12);
    EXPECT_EQ(shape->trianglenumber, 24);
    EXPECT_EQ(GetCharacteristic(*shape), 0);
}

TEST(SweepSide, EndsARingAtItsStartAlsoWhenThePathMissesItByRounding)
{
    const OwnedShape shape = MakeUprightSquare();
    const OwnedShape exact = MakeUprightSquare();
    Points path = roundtrip;
    path.back() = {1e-7F, 0, -1e-7F};
    ASSERT_TRUE(SweepClosed(shape, 0, path, 0));
    ASSERT_TRUE(SweepClosed(exact, 0, roundtrip, 0));
    EXPECT_EQ(PointsOf(*shape), PointsOf(*exact));
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
    EXPECT_EQ(OutlinesOf(*shape),
              (Outlines{{0, 1, 2}, {1, 0, 3, 4}, {2, 1, 4, 5}, {0, 2, 5, 3}, {5, 4, 3}}));
    EXPECT_EQ(GetVertexes(*shape), (std::vector<int>{2}));
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

TEST(SweepSide, BuildsNothingOfASideThatIsGone)
{
    ExpectNothingBuilt(MakeTriangle(), 1, {{0, 0, 0}, {0, 0, 1}}, 0, false);
    ExpectNothingBuilt(MakeTriangle(), -1, {{0, 0, 0}, {0, 0, 1}}, 0, false);
}

} // namespace korvane::testing
