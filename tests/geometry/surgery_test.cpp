#include "geometry/surgery.h"

#include "tests/support/edits.h"
#include "tests/support/invariants.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::testing
{

using Chain = std::vector<int>;

static Chain GetRun(const Shape& shape, int side)
{
    const Side& s = shape.sides[side];
    return {s.triangles, s.triangles + s.trianglenumber};
}

static Chain WithoutSpikes(Chain outline)
{
    RemoveSpikes(outline);
    return outline;
}

TEST(AppendPoints, PutsThemBehindTheOthers)
{
    const OwnedShape square = Square();
    const float points[2][3] = {{1, 2, 3}, {4, 5, 6}};
    EXPECT_EQ(AppendPoints(square.get(), points, 2), 4);
    EXPECT_EQ(square->pointnumber, 6);
    EXPECT_EQ(square->points[1][0], 1);
    EXPECT_EQ(square->points[4][2], 3);
    EXPECT_EQ(square->points[5][0], 4);
}

TEST(SetCornersOfSide, LeavesTheTriangles)
{
    const OwnedShape square = Square();
    SetCornersOfSide(&square->sides[0], {2, 1, 0});
    EXPECT_EQ(GetCornersOfSide(square->sides[0]), (Chain{2, 1, 0}));
    EXPECT_EQ(square->sides[0].trianglenumber, 2);
}

TEST(AppendStripe, PutsAStripeOfTheShapeBehindTheOthers)
{
    const OwnedShape square = Square();
    AppendStripe(square.get(), {0, 2});
    EXPECT_EQ(StripesOf(*square), (Outlines{{0, 1, 2, 3, 0}, {0, 2}}));
    EXPECT_EQ(square->stripes[1].shape, square.get());
    SetPointsOfStripe(&square->stripes[0], {3, 1});
    EXPECT_EQ(StripesOf(*square), (Outlines{{3, 1}, {0, 2}}));
}

TEST(RemoveStripeAt, MovesTheLaterOnesDown)
{
    const OwnedShape tetrahedron = Tetrahedron();
    Outlines stripes = StripesOf(*tetrahedron);
    RemoveStripeAt(tetrahedron.get(), 2);
    stripes.erase(stripes.begin() + 2);
    EXPECT_EQ(StripesOf(*tetrahedron), stripes);
}

TEST(AppendSide, TakesTheLooksOfAnotherSideEvenOfItsOwnShape)
{
    const OwnedShape cube = Cube();
    cube->sides[1].visibility = VISIBLE_BACK;
    cube->sides[1].colors[FRONT_LIGHT] = 0.5F;
    AppendSide(cube.get(), {0, 1, 2, 3, 4}, cube->sides[1]);
    const Side& side = cube->sides[6];
    EXPECT_EQ(cube->sidenumber, 7);
    EXPECT_EQ(side.visibility, VISIBLE_BACK);
    EXPECT_EQ(side.colors[FRONT_LIGHT], 0.5F);
    EXPECT_EQ(side.shape, cube.get());
    EXPECT_EQ(GetCornersOfSide(side), (Chain{0, 1, 2, 3, 4}));
    EXPECT_EQ(GetCornersOfSide(cube->sides[1]), (Chain{4, 5, 6, 7})); // a copy, not the same list
    EXPECT_EQ(GetRun(*cube, 6), (Chain{12, 13, 14}));
    EXPECT_EQ(cube->trianglenumber, 15);
    EXPECT_EQ(cube->triangles[14].shape, cube.get());
}

TEST(RemoveSide, TakesItsRunAwayAndMovesTheLaterOnesDown)
{
    const OwnedShape cube = Cube();
    const Corners later = CornersOf(*cube, 3, 1);
    RemoveSide(cube.get(), 2);
    EXPECT_EQ(cube->sidenumber, 5);
    EXPECT_EQ(cube->trianglenumber, 10);
    EXPECT_EQ(GetRun(*cube, 1), (Chain{2, 3}));
    EXPECT_EQ(GetRun(*cube, 2), (Chain{4, 5}));
    EXPECT_EQ(CornersOf(*cube, 2, 1), later);
}

TEST(ResizeRunOfSide, OpensRoomAtTheEndOfARun)
{
    const OwnedShape cube = Cube();
    const Corners kept = CornersOf(*cube, 1, 1);
    const Corners later = CornersOf(*cube, 2, 0);
    ResizeRunOfSide(cube.get(), 1, 4);
    EXPECT_EQ(GetRun(*cube, 0), (Chain{0, 1}));
    EXPECT_EQ(GetRun(*cube, 1), (Chain{2, 3, 4, 5}));
    EXPECT_EQ(GetRun(*cube, 2), (Chain{6, 7}));
    EXPECT_EQ(GetRun(*cube, 5), (Chain{12, 13}));
    EXPECT_EQ(CornersOf(*cube, 1, 1), kept);
    EXPECT_EQ(CornersOf(*cube, 2, 0), later);
    for (int i = 0; i < cube->trianglenumber; i++) {
        EXPECT_EQ(cube->triangles[i].shape, cube.get());
    }
}

TEST(ResizeRunOfSide, TakesTheEndOfARunAway)
{
    const OwnedShape cube = Cube();
    const Corners kept = CornersOf(*cube, 5, 0);
    const Corners later = CornersOf(*cube, 1, 1);
    ResizeRunOfSide(cube.get(), 0, 1);
    EXPECT_EQ(GetRun(*cube, 0), (Chain{0}));
    EXPECT_EQ(GetRun(*cube, 1), (Chain{1, 2}));
    EXPECT_EQ(CornersOf(*cube, 1, 1), later);
    ResizeRunOfSide(cube.get(), 5, 1);
    EXPECT_EQ(GetRun(*cube, 5), (Chain{9}));
    EXPECT_EQ(CornersOf(*cube, 5, 0), kept);
    EXPECT_EQ(cube->trianglenumber, 10);
}

TEST(CutSideAgain, GivesTheRunTheLengthOfTheOutline)
{
    const OwnedShape cube = Cube();
    SetCornersOfSide(&cube->sides[1], {4, 5, 6});
    CutSideAgain(cube.get(), 1);
    EXPECT_EQ(GetRun(*cube, 1), (Chain{2}));
    EXPECT_EQ(CornersOf(*cube, 1, 0), (Corners{4, 5, 6}));
    EXPECT_EQ(GetRun(*cube, 2), (Chain{3, 4}));
}

TEST(CutSidesAgain, CutsEverySide)
{
    const OwnedShape cube = Cube();
    SetCornersOfSide(&cube->sides[0], {0, 3, 2});
    SetCornersOfSide(&cube->sides[5], {1, 2, 6});
    CutSidesAgain(cube.get());
    EXPECT_EQ(GetRun(*cube, 0), (Chain{0}));
    EXPECT_EQ(CornersOf(*cube, 0, 0), (Corners{0, 3, 2}));
    EXPECT_EQ(GetRun(*cube, 5), (Chain{9}));
    EXPECT_EQ(CornersOf(*cube, 5, 0), (Corners{1, 2, 6}));
    EXPECT_EQ(cube->trianglenumber, 10);
}

TEST(GetReversed, GivesTheOtherWayRound)
{
    EXPECT_EQ(GetReversed({4, 5, 6}), (Chain{6, 5, 4}));
    EXPECT_EQ(GetReversed({}), Chain{});
}

TEST(RemovePoints, RenamesThePointsThatStayEverywhere)
{
    // a quad 0, 1, 2, 3 and a triangle 3, 2, 4; the points 1 and 4 go
    const OwnedShape sheet =
        MakeShape({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 3, 0}, {4, 4, 4}, {5, 0, 0}},
                  {{0, 1, 2, 3}, {3, 2, 5}, {5, 2, 4}});
    SetVertexes(sheet.get(), {1, 3, 5});
    const std::vector<int> indices =
        RemovePoints(sheet.get(), {false, true, false, false, true, false});
    EXPECT_EQ(indices, (Chain{0, -1, 1, 2, -1, 3}));
    EXPECT_EQ(OutlinesOf(*sheet), (Outlines{{0, 1, 2}, {2, 1, 3}, {3, 1}}));
    EXPECT_EQ(GetMarks(*sheet), (Chain{2, 3}));
    EXPECT_EQ(CornersOf(*sheet, 1, 0), (Corners{2, 1, 3}));
    EXPECT_EQ(sheet->pointnumber, 4);
    EXPECT_EQ(sheet->points[2][0], 3);
    EXPECT_EQ(sheet->points[3][0], 5);
}

TEST(RemovePoints, FreesTheMarksWithTheLastOfThem)
{
    const OwnedShape square = Square();
    SetVertexes(square.get(), {1, 2});
    RemovePoints(square.get(), {false, true, true, false});
    EXPECT_EQ(square->vertexes, nullptr);
    EXPECT_EQ(square->vertexnumber, 0);
    EXPECT_EQ(StripesOf(*square), (Outlines{{0, 1, 0}}));
}

TEST(RemoveUnusedPoints, KeepsTheCornersOfTheSides)
{
    const OwnedShape sheet =
        MakeShape({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 3, 0}, {4, 4, 4}}, {{4, 1, 2}});
    EXPECT_EQ(RemoveUnusedPoints(sheet.get()), (Chain{-1, 0, 1, -1, 2}));
    EXPECT_EQ(OutlinesOf(*sheet), (Outlines{{2, 0, 1}}));
    EXPECT_EQ(FindBrokenRuleAfterEdit(sheet.get()), "");
    EXPECT_EQ(RemoveUnusedPoints(sheet.get()), (Chain{0, 1, 2})); // nothing is left to remove
    EXPECT_EQ(sheet->pointnumber, 3);
}

TEST(MovePoint, CutsTheSidesOfThePointAgain)
{
    // a kite over the diagonal 1-3; with 2 inside the triangle of the others only 0-2 can be cut
    const OwnedShape square = Square();
    const float place[3] = {0.25F, 0.25F, 0};
    MovePoint(square.get(), 2, place);
    EXPECT_EQ(square->points[2][0], 0.25F);
    for (int k = 0; k < 2; k++) {
        const Corners corners = CornersOf(square, k);
        EXPECT_NE(std::find(corners.begin(), corners.end(), 0), corners.end());
        EXPECT_NE(std::find(corners.begin(), corners.end(), 2), corners.end());
    }
    EXPECT_EQ(FindBrokenRuleAfterEdit(square.get()), "");
}

TEST(RemoveSpikes, LeavesAnOutlineThatPassesPointsTwice)
{
    EXPECT_EQ(WithoutSpikes({0, 1, 2, 5, 4, 3, 5, 2}), (Chain{0, 1, 2, 5, 4, 3, 5, 2}));
}

TEST(RemoveSpikes, TakesOneOfTwoEqualNeighbours)
{
    EXPECT_EQ(WithoutSpikes({0, 1, 1, 2}), (Chain{0, 1, 2}));
    EXPECT_EQ(WithoutSpikes({0, 1, 2, 0}), (Chain{0, 1, 2}));
}

TEST(RemoveSpikes, TakesACornerBetweenTwoThatAreOnePoint)
{
    EXPECT_EQ(WithoutSpikes({0, 1, 5, 1, 2}), (Chain{0, 1, 2}));
    EXPECT_EQ(WithoutSpikes({0, 1, 2, 0, 5}), (Chain{0, 1, 2}));
    EXPECT_EQ(WithoutSpikes({5, 0, 1, 2, 0}), (Chain{0, 1, 2}));
}

TEST(RemoveSpikes, TakesALongSpikeAllTheWay)
{
    EXPECT_EQ(WithoutSpikes({0, 1, 5, 6, 7, 6, 5, 1, 2}), (Chain{0, 1, 2}));
    EXPECT_EQ(WithoutSpikes({7, 6, 5, 0, 1, 2, 0, 5, 6}), (Chain{0, 1, 2}));
}

TEST(RemoveSpikes, LeavesAlmostNothingOfAnOutlineThatEnclosesNothing)
{
    EXPECT_LT(WithoutSpikes({0, 1, 2, 1}).size(), 3U);
    EXPECT_LT(WithoutSpikes({0, 1, 0}).size(), 3U);
    EXPECT_LT(WithoutSpikes({0, 0}).size(), 3U);
    EXPECT_TRUE(WithoutSpikes({}).empty());
}

TEST(MarkPoints, KeepsTheMarksAscendingAndOnce)
{
    const OwnedShape cube = Cube();
    MarkPoints(cube.get(), {6, 2}, true);
    EXPECT_EQ(GetMarks(*cube), (Chain{2, 6}));
    MarkPoints(cube.get(), {4, 2, 0}, true);
    EXPECT_EQ(GetMarks(*cube), (Chain{0, 2, 4, 6}));
    MarkPoints(cube.get(), {2, 3, 4}, false);
    EXPECT_EQ(GetMarks(*cube), (Chain{0, 6}));
    EXPECT_EQ(FindBrokenRuleOfShape(*cube), "");
}

TEST(MarkPoints, FreesTheMarksWithTheLastOfThem)
{
    const OwnedShape cube = Cube();
    MarkPoints(cube.get(), {6}, true);
    MarkPoints(cube.get(), {6}, false);
    EXPECT_EQ(cube->vertexes, nullptr);
    EXPECT_EQ(cube->vertexnumber, 0);
    MarkPoints(cube.get(), {1}, false);
    EXPECT_EQ(cube->vertexes, nullptr);
}

} // namespace korvane::testing
