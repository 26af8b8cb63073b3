#include "geometry/sidemerge.h"

#include "tests/support/edits.h"

#include <gtest/gtest.h>

namespace korvane::testing
{

using Chain = std::vector<int>;

// The index of the stripe with these two ends; -1 without one.
static int FindStripe(const Shape& shape, int a, int b)
{
    for (int i = 0; i < shape.stripenumber; i++) {
        const Stripe& stripe = shape.stripes[i];
        const int first = stripe.points[0];
        const int last = stripe.points[stripe.pointnumber - 1];
        if ((first == a && last == b) || (first == b && last == a)) {
            return i;
        }
    }
    return -1;
}

static bool DissolveBetween(Shape* shape, int a, int b, int* followed = nullptr)
{
    const int stripe = FindStripe(*shape, a, b);
    EXPECT_GE(stripe, 0) << "there is no stripe from " << a << " to " << b;
    return stripe >= 0 && DissolveStripe(shape, stripe, followed);
}

TEST(DissolveStripe, MergesTheTwoSidesIntoTheFirst)
{
    const OwnedShape cube = Cube();
    ASSERT_TRUE(DissolveBetween(cube.get(), 0, 1));
    // -z {0, 3, 2, 1} runs from 1 to 0, -y {0, 1, 5, 4} from 0 to 1: round -z from 0 to 1, then
    // what -y has beyond the edge
    EXPECT_EQ(
        OutlinesOf(*cube),
        (Outlines{{0, 3, 2, 1, 5, 4}, {4, 5, 6, 7}, {3, 7, 6, 2}, {0, 4, 7, 3}, {1, 2, 6, 5}}));
    EXPECT_EQ(cube->stripenumber,
              9); // 0 and 1 are inner points of stripes now: of 12, three are gone
    EXPECT_EQ(FindBrokenRuleOfEditedBody(cube.get()), "");
}

TEST(DissolveStripe, StartsTheUnionWithTheFirstCornerThatIsNoInnerPoint)
{
    // the seam from 0 to 1 through 2 and 3 begins at the end of the first outline and goes on at
    // its start: there 3 and 1 stand first, of which 3 is an inner point
    const OwnedShape body =
        MakeShape({{0, 0, -1}, {0, 0, 1}, {1, 0, -0.5F}, {1, 0, 0.5F}, {-1, 1, 0}, {-1, -1, 0}},
                  {{3, 1, 4, 0, 2}, {1, 3, 2, 0, 5}, {0, 4, 5}, {1, 5, 4}});
    ASSERT_TRUE(DissolveBetween(body.get(), 0, 1));
    // from 1, through 4 to 0, then through 5: 2 and 3 are gone, 4 and 5 are now 2 and 3
    EXPECT_EQ(OutlinesOf(*body), (Outlines{{1, 2, 0, 3}, {0, 2, 3}, {1, 3, 2}}));
    EXPECT_EQ(body->pointnumber, 4);
    EXPECT_FLOAT_EQ(body->points[2][1], 1);
    EXPECT_EQ(FindBrokenRuleOfEditedBody(body.get()), "");
}

TEST(DissolveStripe, KeepsTheLaterColoursAndRunsWithTheirSides)
{
    const OwnedShape cube = Cube();
    for (int i = 0; i < 6; i++) {
        cube->sides[i].colors[0] = 0.1F * float(i);
    }
    ASSERT_TRUE(DissolveBetween(cube.get(), 6, 7)); // of sides 1 and 3
    EXPECT_FLOAT_EQ(cube->sides[1].colors[0], 0.1F);
    EXPECT_FLOAT_EQ(cube->sides[2].colors[0], 0.2F);
    EXPECT_FLOAT_EQ(cube->sides[3].colors[0], 0.4F);
    EXPECT_EQ(cube->sides[1].trianglenumber, 4);
    EXPECT_EQ(FindBrokenRuleOfEditedBody(cube.get()), "");
}

TEST(DissolveStripe, TakesInnerPointsAndTheirMarksAway)
{
    // the upright edge from 0 to 3 of a prism, with a point 6 in it
    const OwnedShape prism =
        MakeShape({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {0, 0, 0.5F}},
                  {{0, 2, 1}, {3, 4, 5}, {0, 1, 4, 3, 6}, {1, 2, 5, 4}, {2, 0, 6, 3, 5}});
    SetVertexes(prism.get(), {2, 6});
    ASSERT_TRUE(DissolveBetween(prism.get(), 0, 3));
    EXPECT_EQ(OutlinesOf(*prism),
              (Outlines{{0, 2, 1}, {3, 4, 5}, {0, 1, 4, 3, 5, 2}, {1, 2, 5, 4}}));
    EXPECT_EQ(prism->pointnumber, 6);
    EXPECT_EQ(GetMarks(*prism), (Chain{2}));
    EXPECT_EQ(FindBrokenRuleOfEditedBody(prism.get()), "");
}

TEST(DissolveStripe, LeavesTheThirdOfThreeSidesVisibleFromBothFaces)
{
    const OwnedShape melon = Melon();
    for (int i = 0; i < 3; i++) {
        melon->sides[i].visibility = VISIBLE_FRONT;
    }
    ASSERT_TRUE(DissolveStripe(melon.get(), 0)); // the seam 0, 2, 1 of the first and the third
    EXPECT_EQ(OutlinesOf(*melon), (Outlines{{0, 2, 1, 3}})); // 2 is gone, 3 and 4 are 2 and 3
    EXPECT_EQ(melon->sides[0].visibility, VISIBLE_BOTH);
    EXPECT_EQ(melon->trianglenumber, 2);
    EXPECT_EQ(StripesOf(*melon), (Outlines{{0, 2, 1, 3, 0}}));
    EXPECT_EQ(FindBrokenRuleAfterEdit(melon.get()), "");
}

TEST(DissolveStripe, RefusesTheBorderOfASingleSide)
{
    const OwnedShape square = Square();
    EXPECT_FALSE(DissolveStripe(square.get(), 0));
    EXPECT_EQ(OutlinesOf(*square), (Outlines{{0, 1, 2, 3}}));
}

TEST(DissolveStripe, RefusesTheCommonBorderOfTwoSidesBackToBack)
{
    const OwnedShape lens =
        MakeShape({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {{0, 1, 2, 3}, {3, 2, 1, 0}});
    ASSERT_EQ(lens->stripenumber, 1);
    EXPECT_FALSE(DissolveStripe(lens.get(), 0));
    EXPECT_EQ(lens->sidenumber, 2);
    EXPECT_EQ(FindBrokenRuleOfEditedBody(lens.get()), "");
}

TEST(DissolveStripe, MakesASlitWhereTwoSidesMeetAlongAnotherStripeToo)
{
    const OwnedShape prism = TrianglePrism();
    ASSERT_TRUE(DissolveBetween(prism.get(), 0, 3));
    EXPECT_EQ(FindBrokenRuleOfEditedBody(prism.get()), "");
    ASSERT_TRUE(DissolveBetween(prism.get(), 1, 4));
    // the wall passes 2-5 both ways
    EXPECT_EQ(OutlinesOf(*prism), (Outlines{{0, 2, 1}, {3, 4, 5}, {0, 1, 2, 5, 4, 3, 5, 2}}));
    EXPECT_EQ(StripesOf(*prism), (Outlines{{2, 1, 0, 2}, {5, 3, 4, 5}, {2, 5}}));
    EXPECT_EQ(FindBrokenRuleOfEditedBody(prism.get()), "");
}

TEST(DissolveStripe, RefusesASlit)
{
    const OwnedShape prism = PrismWithSlit();
    EXPECT_FALSE(DissolveBetween(prism.get(), 2, 5));
    EXPECT_EQ(OutlinesOf(*prism), OutlinesOf(*PrismWithSlit()));
    EXPECT_EQ(FindBrokenRuleOfEditedBody(prism.get()), "");
}

TEST(DissolveStripe, ClosesAHoleAndTakesTheEdgeThatThenEnclosesNothing)
{
    const OwnedShape house = HouseWithSlit();
    ASSERT_TRUE(DissolveBetween(house.get(), 2, 2));
    // floor and wall give 2, 5, 4, 3, 5: the slit is a spike at 2. Without 0, 1 and 2 the points
    // 3, 4, 5 and 6 are 0, 1, 2 and 3
    EXPECT_EQ(OutlinesOf(*house), (Outlines{{2, 1, 0}, {0, 1, 3}, {1, 2, 3}, {2, 0, 3}}));
    EXPECT_EQ(house->pointnumber, 4);
    EXPECT_EQ(house->stripenumber, 6);
    EXPECT_EQ(FindBrokenRuleOfEditedBody(house.get()), "");
}

TEST(DissolveStripe, GoesByTheStripeAndNotByItsEndsAlone)
{
    const OwnedShape prism = PrismWithoutEdge();
    // floor and wall {0, 1, 4, 3, 5, 2} meet along 1, 0, 2; another stripe joins 1 and 2 directly
    ASSERT_EQ(StripesOf(*prism)[1], (Chain{1, 0, 2}));
    ASSERT_TRUE(DissolveStripe(prism.get(), 1));
    // 2, 1 of the floor, 4, 3, 5 of the wall; without 0 all are one less
    EXPECT_EQ(OutlinesOf(*prism), (Outlines{{1, 0, 3, 2, 4}, {2, 3, 4}, {0, 1, 4, 3}}));
    EXPECT_EQ(FindBrokenRuleOfEditedBody(prism.get()), "");
}

TEST(DissolveStripe, WalksASecondSideBackwardThatIsTurnedAgainstTheFirst)
{
    // the first two triangles both run from 2 to 0
    const OwnedShape turned = MakeShape({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}},
                                        {{0, 1, 2}, {2, 0, 3}, {0, 1, 4}, {1, 2, 4}});
    ASSERT_TRUE(DissolveBetween(turned.get(), 0, 2));
    EXPECT_EQ(OutlinesOf(*turned).front(), (Chain{0, 1, 2, 3}));
    EXPECT_EQ(FindBrokenRuleAfterEdit(turned.get()), "");
}

TEST(DissolveStripe, FollowsAPointThroughTheRenumbering)
{
    OwnedShape melon = Melon();
    int followed = 4;
    ASSERT_TRUE(DissolveStripe(melon.get(), 0, &followed));
    EXPECT_EQ(followed, 3);
    melon = Melon();
    followed = 2;
    ASSERT_TRUE(DissolveStripe(melon.get(), 0, &followed));
    EXPECT_EQ(followed, -1);
}

TEST(DissolveStripe, KeepsEveryBodyClosedWhicheverStripeGoes)
{
    for (const OwnedShape& body : GetBodies()) {
        for (int i = 0; i < body->stripenumber; i++) {
            const OwnedShape copy(CopyShape(body.get()));
            if (!DissolveStripe(copy.get(), i)) {
                continue;
            }
            const bool flat = body->sidenumber == 3;
            EXPECT_EQ(copy->sidenumber, flat ? 1 : body->sidenumber - 1);
            EXPECT_EQ(flat ? FindBrokenRuleAfterEdit(copy.get())
                           : FindBrokenRuleOfEditedBody(copy.get()),
                      "");
        }
    }
}

} // namespace korvane::testing
