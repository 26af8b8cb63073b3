#include "geometry/pointinsert.h"

#include "tests/support/edits.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::testing
{

using Chain = std::vector<int>;

static constexpr float place[3] = {0.25F, -0.5F, -0.5F};

TEST(InsertPoint, PutsThePointIntoTheStripeAndItsTwoSides)
{
    const OwnedShape cube = Cube();
    ASSERT_EQ(StripesOf(*cube)[3], (Chain{1, 0}));
    EXPECT_EQ(InsertPoint(cube.get(), 3, 1, place), 8);
    EXPECT_EQ(OutlinesOf(*cube), (Outlines{{0, 3, 2, 1, 8}, // after its last corner
                                           {4, 5, 6, 7},
                                           {0, 8, 1, 5, 4},
                                           {3, 7, 6, 2},
                                           {0, 4, 7, 3},
                                           {1, 2, 6, 5}}));
    EXPECT_EQ(StripesOf(*cube)[3], (Chain{1, 8, 0}));
    EXPECT_EQ(cube->pointnumber, 9);
    EXPECT_EQ(cube->points[8][0], 0.25F);
    EXPECT_EQ(cube->trianglenumber, 14);
    EXPECT_EQ(cube->stripenumber, 12);
    EXPECT_EQ(FindBrokenRuleOfEditedBody(cube.get()), "");
}

TEST(InsertPoint, KeepsTheOtherSidesTriangles)
{
    const OwnedShape cube = Cube();
    const Corners last = CornersOf(*cube, 5, 1);
    InsertPoint(cube.get(), 3, 1, place);
    EXPECT_EQ(CornersOf(*cube, 5, 1), last);
    EXPECT_EQ(cube->sides[5].triangles[0], 12); // runs of 3, 2, 3, 2 and 2 stand before it
}

TEST(InsertPoint, PutsAPointBetweenTheEndAndTheStartOfABorder)
{
    const OwnedShape square = Square();
    EXPECT_EQ(InsertPoint(square.get(), 0, 4, place), 4);
    EXPECT_EQ(OutlinesOf(*square), (Outlines{{0, 1, 2, 3, 4}}));
    EXPECT_EQ(StripesOf(*square), (Outlines{{0, 1, 2, 3, 4, 0}}));
    EXPECT_EQ(FindBrokenRuleAfterEdit(square.get()), "");
}

TEST(InsertPoint, PutsAPointIntoBothPassesOfASlit)
{
    const OwnedShape prism = PrismWithSlit();
    ASSERT_EQ(StripesOf(*prism)[2], (Chain{2, 5}));
    EXPECT_EQ(InsertPoint(prism.get(), 2, 1, place), 6);
    EXPECT_EQ(OutlinesOf(*prism)[2], (Chain{0, 1, 2, 6, 5, 4, 3, 5, 6, 2}));
    EXPECT_EQ(StripesOf(*prism)[2], (Chain{2, 6, 5}));
    EXPECT_EQ(FindBrokenRuleOfEditedBody(prism.get()), "");
}

TEST(InsertPoint, PutsAPointTwiceIntoABorderThatPassesASlitBothWays)
{
    const OwnedShape square = SquareWithHole();
    EXPECT_EQ(InsertPoint(square.get(), 0, 5, place), 7); // into the slit
    EXPECT_EQ(OutlinesOf(*square), (Outlines{{0, 1, 2, 3, 0, 7, 4, 5, 6, 4, 7}}));
    EXPECT_EQ(StripesOf(*square), (Outlines{{0, 1, 2, 3, 0, 7, 4, 5, 6, 4, 7, 0}}));
    EXPECT_EQ(FindBrokenRuleAfterEdit(square.get()), "");
}

TEST(InsertPoint, LeavesTheOtherPassOfASideThatRunsAlongAnEdgeTwiceTheSameWay)
{
    const OwnedShape sheet = MakeShape({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0.5F, 2, 0}, {0, 1, 0}},
                                       {{3, 0, 1, 2, 4, 0, 1}});
    EXPECT_EQ(InsertPoint(sheet.get(), 0, 6, place), 5); // the second pass of 0-1
    EXPECT_EQ(OutlinesOf(*sheet), (Outlines{{3, 0, 5, 1, 2, 4, 0, 1}}));
    EXPECT_EQ(StripesOf(*sheet), (Outlines{{3, 0, 5, 1, 2, 4, 0, 1, 3}}));
    EXPECT_EQ(FindBrokenRuleAfterEdit(sheet.get()), "");
}

TEST(InsertPoint, TakesTheNextSideThatRunsTheOppositeWayAlongAnEdgeOfFourSides)
{
    // two tetrahedra on the edge 0-1: the first two sides run from 0 to 1, the next two back
    const OwnedShape pair = MakeShape(
        {{0, 0, 0}, {0, 0, 1}, {1, 0, 0}, {1, 1, 0}, {-1, 0, 0}, {-1, -1, 0}},
        {{0, 1, 2}, {0, 1, 4}, {0, 3, 1}, {0, 5, 1}, {1, 3, 2}, {0, 2, 3}, {1, 5, 4}, {0, 4, 5}});
    ASSERT_EQ(StripesOf(*pair)[0], (Chain{0, 1}));
    EXPECT_EQ(InsertPoint(pair.get(), 0, 1, place), 6);
    const Outlines outlines = OutlinesOf(*pair);
    EXPECT_EQ(outlines[0], (Chain{0, 6, 1, 2}));
    EXPECT_EQ(outlines[1], (Chain{0, 1, 4}));
    EXPECT_EQ(outlines[2], (Chain{0, 3, 1, 6}));
    EXPECT_EQ(outlines[3], (Chain{0, 5, 1}));
    EXPECT_EQ(FindBrokenRuleOfEditedBody(pair.get()), "");
}

TEST(InsertPoint, TakesTheNextSideWhereNoneRunsTheOppositeWay)
{
    const OwnedShape sheet = MakeShape({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}},
                                       {{0, 1, 2}, {2, 0, 3}, {0, 1, 4}, {1, 2, 4}});
    ASSERT_EQ(StripesOf(*sheet)[2], (Chain{2, 0}));
    EXPECT_EQ(InsertPoint(sheet.get(), 2, 1, place), 5);
    EXPECT_EQ(OutlinesOf(*sheet), (Outlines{{0, 1, 2, 5}, {2, 5, 0, 3}, {0, 1, 4}, {1, 2, 4}}));
    EXPECT_EQ(FindBrokenRuleAfterEdit(sheet.get()), "");
}

TEST(InsertPoint, ChangesNothingWhereNoOutlineRuns)
{
    const OwnedShape square = Square();
    std::swap(square->stripes[0].points[1], square->stripes[0].points[2]); // 0, 2: the diagonal
    EXPECT_EQ(InsertPoint(square.get(), 0, 1, place), -1);
    EXPECT_EQ(square->pointnumber, 4);
    EXPECT_EQ(square->stripes[0].pointnumber, 5);
}

TEST(InsertPoint, KeepsEveryBodyClosedWhereverThePointGoes)
{
    for (const OwnedShape& body : GetBodies()) {
        for (int i = 0; i < body->stripenumber; i++) {
            for (int k = 1; k < body->stripes[i].pointnumber; k++) {
                const OwnedShape copy(CopyShape(body.get()));
                EXPECT_EQ(InsertPoint(copy.get(), i, k, place), body->pointnumber);
                EXPECT_EQ(copy->trianglenumber, body->trianglenumber + 2);
                EXPECT_EQ(FindBrokenRuleOfEditedBody(copy.get()), "");
            }
        }
    }
}

} // namespace korvane::testing
