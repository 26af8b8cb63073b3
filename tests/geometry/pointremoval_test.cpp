#include "geometry/pointremoval.h"

#include "tests/support/edits.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::testing
{

using Chain = std::vector<int>;

// A prism with points 6 and 7 in the upright edge from 0 to 3.
static OwnedShape PrismWithTwoPointsInAnEdge()
{
    return MakeShape({{0, 0, 0},
                      {1, 0, 0},
                      {0, 1, 0},
                      {0, 0, 1},
                      {1, 0, 1},
                      {0, 1, 1},
                      {0, 0, 0.3F},
                      {0, 0, 0.6F}},
                     {{0, 2, 1}, {3, 4, 5}, {0, 1, 4, 3, 7, 6}, {1, 2, 5, 4}, {2, 0, 6, 7, 3, 5}});
}

TEST(RemovePointOfShape, KeepsFourPoints)
{
    const OwnedShape tetrahedron = Tetrahedron();
    const OwnedShape square = Square();
    for (int i = 0; i < 4; i++) {
        EXPECT_FALSE(RemovePointOfShape(tetrahedron.get(), i));
        EXPECT_FALSE(RemovePointOfShape(square.get(), i));
    }
    EXPECT_EQ(tetrahedron->sidenumber, 4);
    EXPECT_EQ(OutlinesOf(*square), (Outlines{{0, 1, 2, 3}}));
}

TEST(RemovePointOfShape, TakesAnInnerPointOutOfItsStripeAndItsSides)
{
    const OwnedShape prism = PrismWithTwoPointsInAnEdge();
    SetVertexes(prism.get(), {5, 6, 7});
    const Outlines before = StripesOf(*prism);
    ASSERT_EQ(before[7], (Chain{3, 7, 6, 0}));
    ASSERT_TRUE(RemovePointOfShape(prism.get(), 6)); // 7 is now 6
    EXPECT_EQ(OutlinesOf(*prism),
              (Outlines{{0, 2, 1}, {3, 4, 5}, {0, 1, 4, 3, 6}, {1, 2, 5, 4}, {2, 0, 6, 3, 5}}));
    EXPECT_EQ(StripesOf(*prism)[7], (Chain{3, 6, 0}));
    EXPECT_EQ(prism->stripenumber, int(before.size()));
    EXPECT_EQ(GetMarks(*prism), (Chain{5, 6}));
    EXPECT_EQ(prism->trianglenumber, 10); // 1, 1, 3, 2 and 3
    EXPECT_FLOAT_EQ(prism->points[6][2], 0.6F);
    EXPECT_EQ(FindBrokenRuleOfEditedBody(prism.get()), "");
}

TEST(RemovePointOfShape, FreesTheMarksWithTheLastOfThem)
{
    const OwnedShape prism = PrismWithTwoPointsInAnEdge();
    SetVertexes(prism.get(), {6});
    ASSERT_TRUE(RemovePointOfShape(prism.get(), 6));
    EXPECT_EQ(prism->vertexes, nullptr);
}

TEST(RemovePointOfShape, RemovesTheStripeWithItsOnlyInnerPoint)
{
    const OwnedShape prism = PrismWithTwoPointsInAnEdge();
    ASSERT_TRUE(RemovePointOfShape(prism.get(), 6));
    ASSERT_TRUE(RemovePointOfShape(prism.get(), 6)); // the middle of 3, 6, 0
    EXPECT_EQ(OutlinesOf(*prism),
              (Outlines{{0, 2, 1}, {3, 4, 5}, {0, 1, 4, 3, 5, 2}, {1, 2, 5, 4}}));
    EXPECT_EQ(prism->pointnumber, 6);
    EXPECT_EQ(FindBrokenRuleOfEditedBody(prism.get()), "");
}

TEST(RemovePointOfShape, MergesTheSidesRoundACorner)
{
    const OwnedShape cube = Cube();
    ASSERT_TRUE(RemovePointOfShape(cube.get(), 0));
    // the edge 0-3 goes: {0, 4, 7, 3, 2, 1}; then 1, 0, 4: {4, 7, 3, 2, 1, 5}; all are one less
    EXPECT_EQ(OutlinesOf(*cube),
              (Outlines{{3, 6, 2, 1, 0, 4}, {3, 4, 5, 6}, {2, 6, 5, 1}, {0, 1, 5, 4}}));
    EXPECT_EQ(cube->pointnumber, 7);
    EXPECT_EQ(FindBrokenRuleOfEditedBody(cube.get()), "");
}

TEST(RemovePointOfShape, FollowsItsPointByIndexThoughAnotherLiesInItsPlace)
{
    const OwnedShape pyramid = Pyramid();
    std::copy_n(pyramid->points[4], 3, pyramid->points[0]); // 0 would be found first by its place
    ASSERT_TRUE(RemovePointOfShape(pyramid.get(), 4));
    EXPECT_EQ(OutlinesOf(*pyramid), (Outlines{{0, 3, 2, 1}}));
    EXPECT_FLOAT_EQ(pyramid->points[0][2], 1);
    EXPECT_EQ(FindBrokenRuleAfterEdit(pyramid.get()), "");
}

TEST(RemovePointOfShape, LeavesTheBaseOfAPyramidWithoutItsApex)
{
    const OwnedShape pyramid = Pyramid();
    ASSERT_TRUE(RemovePointOfShape(pyramid.get(), 4));
    // 1-4 and 2-4 go; then 3, 4, 0 separates the last two of three sides
    EXPECT_EQ(OutlinesOf(*pyramid), (Outlines{{0, 3, 2, 1}}));
    EXPECT_EQ(pyramid->sides[0].visibility, VISIBLE_BOTH);
    EXPECT_EQ(FindBrokenRuleAfterEdit(pyramid.get()), "");
}

TEST(RemovePointOfShape, RemovesACornerOfTheBaseOfAPyramid)
{
    const OwnedShape pyramid = Pyramid();
    ASSERT_TRUE(RemovePointOfShape(pyramid.get(), 0));
    // 0-3 goes: {0, 4, 3, 2, 1}; then 1, 0, 4: {4, 3, 2, 1}; all are one less
    EXPECT_EQ(OutlinesOf(*pyramid), (Outlines{{3, 2, 1, 0}, {0, 1, 3}, {1, 2, 3}}));
    EXPECT_EQ(FindBrokenRuleOfEditedBody(pyramid.get()), "");
}

TEST(RemovePointOfShape, LeavesNoPointThatNoSideUses)
{
    const OwnedShape prism = PrismWithoutEdge();
    ASSERT_TRUE(RemovePointOfShape(prism.get(), 1)); // the end of the stripes 2-1, 1-0-2 and 1-4
    // 2-1 goes; of the three sides that are left {3, 4, 5} alone stays, and 0, 1, 2 are unused
    EXPECT_EQ(OutlinesOf(*prism), (Outlines{{0, 1, 2}}));
    EXPECT_EQ(prism->pointnumber, 3);
    EXPECT_EQ(FindBrokenRuleAfterEdit(prism.get()), "");
}

TEST(RemovePointOfShape, StopsWhenOneSideIsLeft)
{
    const OwnedShape melon = Melon();
    ASSERT_TRUE(RemovePointOfShape(melon.get(), 0)); // the seam 0, 2, 1 goes, and with it two sides
    EXPECT_EQ(OutlinesOf(*melon), (Outlines{{0, 2, 1, 3}}));
    EXPECT_EQ(FindBrokenRuleAfterEdit(melon.get()), "");
}

TEST(RemovePointOfShape, TakesAPointOutOfABorder)
{
    const OwnedShape shape = ConcaveL();
    ASSERT_TRUE(RemovePointOfShape(shape.get(), 3)); // the inward corner
    EXPECT_EQ(OutlinesOf(*shape), (Outlines{{0, 1, 2, 3, 4}}));
    EXPECT_EQ(StripesOf(*shape), (Outlines{{0, 1, 2, 3, 4, 0}}));
    EXPECT_EQ(FindBrokenRuleAfterEdit(shape.get()), "");
}

TEST(RemovePointOfShape, ClosesABorderAgainThatLosesItsFirstPoint)
{
    const OwnedShape shape = ConcaveL();
    ASSERT_TRUE(RemovePointOfShape(shape.get(), 0));
    EXPECT_EQ(OutlinesOf(*shape), (Outlines{{0, 1, 2, 3, 4}}));
    EXPECT_EQ(StripesOf(*shape), (Outlines{{0, 1, 2, 3, 4, 0}}));
    EXPECT_FLOAT_EQ(shape->points[0][0], 2); // what was 1
    EXPECT_EQ(FindBrokenRuleAfterEdit(shape.get()), "");
}

TEST(RemovePointOfShape, TakesAPointOutOfBothPassesOfASlit)
{
    const OwnedShape prism =
        MakeShape({{0, 0, 0},
                   {1, 0, 0},
                   {0, 1, 0},
                   {0, 0, 1},
                   {1, 0, 1},
                   {0, 1, 1},
                   {0, 1, 0.3F},
                   {0, 1, 0.6F}},
                  {{0, 2, 1}, {3, 4, 5}, {0, 1, 2, 6, 7, 5, 4, 3, 5, 7, 6, 2}});
    ASSERT_TRUE(RemovePointOfShape(prism.get(), 6));
    EXPECT_EQ(OutlinesOf(*prism)[2], (Chain{0, 1, 2, 6, 5, 4, 3, 5, 6, 2}));
    EXPECT_EQ(FindBrokenRuleOfEditedBody(prism.get()), "");
    EXPECT_FALSE(RemovePointOfShape(prism.get(), 6)); // the slit would have to go with it
    EXPECT_EQ(prism->pointnumber, 7);
}

TEST(RemovePointOfShape, MergesTheSidesOfAClosedStripeOfThreePoints)
{
    const OwnedShape house = HouseWithSlit();
    ASSERT_TRUE(RemovePointOfShape(house.get(), 0)); // inside 2, 1, 0, 2
    EXPECT_EQ(OutlinesOf(*house), (Outlines{{2, 1, 0}, {0, 1, 3}, {1, 2, 3}, {2, 0, 3}}));
    EXPECT_EQ(FindBrokenRuleOfEditedBody(house.get()), "");
}

TEST(RemovePointOfShape, TakesAHoleAwayThatWouldEncloseNothing)
{
    const OwnedShape square = SquareWithHole();
    ASSERT_TRUE(RemovePointOfShape(square.get(), 5)); // 4, 6, 4 is a spike, and then 0, 4, 0
    EXPECT_EQ(OutlinesOf(*square), (Outlines{{0, 1, 2, 3}}));
    EXPECT_EQ(StripesOf(*square), (Outlines{{0, 1, 2, 3, 0}}));
    EXPECT_EQ(square->pointnumber, 4);
    EXPECT_EQ(FindBrokenRuleAfterEdit(square.get()), "");
}

TEST(RemovePointOfShape, RefusesWhereTwoSidesBackToBackWouldVanish)
{
    const OwnedShape lens = MakeShape({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0.5F, 2, 0}, {0, 1, 0}},
                                      {{0, 1, 2, 3, 4}, {4, 3, 2, 1, 0}});
    EXPECT_FALSE(RemovePointOfShape(lens.get(), 0)); // an end of the only stripe
    EXPECT_EQ(OutlinesOf(*lens), (Outlines{{0, 1, 2, 3, 4}, {4, 3, 2, 1, 0}}));
    ASSERT_TRUE(RemovePointOfShape(lens.get(), 2)); // inside it
    EXPECT_EQ(OutlinesOf(*lens), (Outlines{{0, 1, 2, 3}, {3, 2, 1, 0}}));
    EXPECT_EQ(FindBrokenRuleOfEditedBody(lens.get()), "");
}

TEST(RemovePointOfShape, LeavesAPointThatIsOnNoStripe)
{
    const OwnedShape square =
        MakeShape({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0.5F, 0.5F, 0}}, {{0, 1, 2, 3}});
    EXPECT_FALSE(RemovePointOfShape(square.get(), 4));
    EXPECT_EQ(square->pointnumber, 5);
}

TEST(RemovePointOfShape, KeepsEveryBodyClosedWhicheverPointGoes)
{
    for (const OwnedShape& body : GetBodies()) {
        for (int i = 0; i < body->pointnumber; i++) {
            const OwnedShape copy(CopyShape(body.get()));
            if (RemovePointOfShape(copy.get(), i)) {
                EXPECT_EQ(copy->sidenumber == 1 ? FindBrokenRuleAfterEdit(copy.get())
                                                : FindBrokenRuleOfEditedBody(copy.get()),
                          "");
                EXPECT_LE(copy->pointnumber, body->pointnumber);
            }
        }
    }
}

} // namespace korvane::testing
