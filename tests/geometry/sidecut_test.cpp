#include "geometry/sidecut.h"

#include "geometry/normals.h"
#include "geometry/sideplane.h"
#include "tests/support/chains.h"
#include "tests/support/invariants.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::testing
{

using ::testing::ElementsAre;

// The indices of every side's triangles.
static Outlines RunsOf(const Shape& shape)
{
    Outlines runs;
    for (int i = 0; i < shape.sidenumber; i++) {
        const Side& side = shape.sides[i];
        runs.emplace_back(side.triangles, side.triangles + side.trianglenumber);
    }
    return runs;
}

static void Cut(Shape& shape, const TestChain& chain)
{
    ASSERT_TRUE(CanTakeChain(&shape, chain.Get()));
    CutAlongChain(&shape, chain.Get());
    EXPECT_EQ(FindBrokenRuleOfBody(shape), "");
}

static void Raise(Shape& shape, const TestChain& chain)
{
    ASSERT_TRUE(CanTakeChain(&shape, chain.Get()));
    RaiseOverChain(&shape, chain.Get());
    EXPECT_EQ(FindBrokenRuleOfBody(shape), "");
}

TEST(CutAlongChain, SplitsAFaceOfACubeStraightAlongItsDiagonal)
{
    const OwnedShape cube = Cube();
    Cut(*cube, TestChain(*cube, 4, {}, 6));
    const Outlines sides = OutlinesOf(*cube);
    EXPECT_EQ(cube->pointnumber, 8);
    EXPECT_THAT(sides,
                ElementsAre(ElementsAre(0, 3, 2, 1), ElementsAre(4, 5, 6), ElementsAre(0, 1, 5, 4),
                            ElementsAre(3, 7, 6, 2), ElementsAre(0, 4, 7, 3),
                            ElementsAre(1, 2, 6, 5), ElementsAre(6, 7, 4)));
    EXPECT_EQ(cube->stripenumber, 13); // both ends are ends of stripes
    EXPECT_THAT(StripesOf(*cube).back(), ElementsAre(4, 6));
    // The two triangles of side 1, which were 2 and 3, are gone and one for each half is at the end
    EXPECT_THAT(RunsOf(*cube), ElementsAre(ElementsAre(0, 1), ElementsAre(10), ElementsAre(2, 3),
                                           ElementsAre(4, 5), ElementsAre(6, 7), ElementsAre(8, 9),
                                           ElementsAre(11)));
    EXPECT_EQ(CornersOf(*cube, 1, 0), (Corners{4, 5, 6}));
    EXPECT_EQ(CornersOf(*cube, 6, 0), (Corners{6, 7, 4}));
}

TEST(CutAlongChain, MakesTheSameSidesFromTheOtherEnd)
{
    const OwnedShape cube = Cube();
    Cut(*cube, TestChain(*cube, 6, {}, 4));
    EXPECT_THAT(OutlinesOf(*cube)[1], ElementsAre(4, 5, 6));
    EXPECT_THAT(OutlinesOf(*cube)[6], ElementsAre(6, 7, 4));
    EXPECT_THAT(StripesOf(*cube).back(), ElementsAre(6, 4));
}

TEST(CutAlongChain, LeadsBothHalvesThroughAnInnerPoint)
{
    const OwnedShape cube = Cube();
    Cut(*cube, TestChain(*cube, 4, {{0.2F, -0.2F, 0.5F}}, 6));
    EXPECT_EQ(cube->pointnumber, 9);
    EXPECT_THAT(cube->points[8], ElementsAre(0.2F, -0.2F, 0.5F));
    EXPECT_THAT(OutlinesOf(*cube)[1], ElementsAre(4, 5, 6, 8));
    EXPECT_THAT(OutlinesOf(*cube)[6], ElementsAre(6, 7, 4, 8));
    EXPECT_THAT(StripesOf(*cube).back(), ElementsAre(4, 8, 6));
    EXPECT_THAT(RunsOf(*cube)[1], ElementsAre(10, 11)); // 12 - 2 were left
    EXPECT_THAT(RunsOf(*cube)[6], ElementsAre(12, 13));
}

// The outline of side 1 is 4 5 6 7: 4 stands at lo, 6 at hi. The kept side comes back from hi.
TEST(CutAlongChain, TurnsTheChainRoundForTheKeptSideWhenItEndsAtTheLaterCorner)
{
    const OwnedShape cube = Cube();
    Cut(*cube, TestChain(*cube, 4, {{-0.2F, -0.2F, 0.5F}, {0.2F, 0.2F, 0.5F}}, 6));
    EXPECT_THAT(OutlinesOf(*cube)[1], ElementsAre(4, 5, 6, 9, 8));
    EXPECT_THAT(OutlinesOf(*cube)[6], ElementsAre(6, 7, 4, 8, 9));
    EXPECT_THAT(StripesOf(*cube).back(), ElementsAre(4, 8, 9, 6));
}

TEST(CutAlongChain, TurnsTheChainRoundForTheNewSideWhenItStartsAtTheLaterCorner)
{
    const OwnedShape cube = Cube();
    Cut(*cube, TestChain(*cube, 6, {{0.2F, 0.2F, 0.5F}, {-0.2F, -0.2F, 0.5F}}, 4));
    EXPECT_THAT(OutlinesOf(*cube)[1], ElementsAre(4, 5, 6, 8, 9));
    EXPECT_THAT(OutlinesOf(*cube)[6], ElementsAre(6, 7, 4, 9, 8));
    EXPECT_THAT(StripesOf(*cube).back(), ElementsAre(6, 8, 9, 4));
}

TEST(CutAlongChain, TakesAnyNumberOfInnerPoints)
{
    const OwnedShape cube = Cube();
    Cut(*cube, TestChain(*cube, 4, {{-0.2F, -0.3F, 0.5F}, {0, 0.1F, 0.5F}, {0.2F, 0.1F, 0.5F}}, 6));
    EXPECT_THAT(OutlinesOf(*cube)[1], ElementsAre(4, 5, 6, 10, 9, 8));
    EXPECT_THAT(OutlinesOf(*cube)[6], ElementsAre(6, 7, 4, 8, 9, 10));
    EXPECT_EQ(cube->trianglenumber, 18); // 12 + 2 for each inner point
}

TEST(CutAlongChain, CutsATriangleOffBetweenNeighbours)
{
    const OwnedShape cube = Cube();
    Cut(*cube, TestChain(*cube, 4, {{0, -0.3F, 0.5F}}, 5));
    EXPECT_THAT(OutlinesOf(*cube)[1], ElementsAre(4, 5, 8));
    EXPECT_THAT(OutlinesOf(*cube)[6], ElementsAre(5, 6, 7, 4, 8));
}

// 4 and 5 are corners of side 1, at z = 0.5, and of side 2, at y = -0.5.
TEST(CutAlongChain, GoesIntoTheSideThatIsNearest)
{
    const OwnedShape cube = Cube();
    Cut(*cube, TestChain(*cube, 4, {{0, -0.5F, 0.3F}}, 5));
    EXPECT_THAT(OutlinesOf(*cube)[1], ElementsAre(4, 5, 6, 7));
    EXPECT_THAT(OutlinesOf(*cube)[2], ElementsAre(5, 4, 8)); // of 0 1 5 4, from lo = 2 to hi = 3
    EXPECT_THAT(OutlinesOf(*cube)[6], ElementsAre(4, 0, 1, 5, 8));
}

TEST(CutAlongChain, GivesTheNewSideTheLookOfTheSideThatIsCut)
{
    const OwnedShape cube = Cube();
    cube->sides[1].visibility = VISIBLE_BACK;
    cube->sides[1].colors[BACK_ACUITY] = 0.25F;
    Cut(*cube, TestChain(*cube, 4, {}, 6));
    EXPECT_EQ(cube->sides[6].visibility, VISIBLE_BACK);
    EXPECT_EQ(cube->sides[6].colors[BACK_ACUITY], 0.25F);
    EXPECT_EQ(cube->sides[1].visibility, VISIBLE_BACK);
}

TEST(CutAlongChain, EndsTheStripesOnWhichItBeginsAndEnds)
{
    const OwnedShape body = RaisedSquare(); // its stripes join 0 and 2
    ASSERT_THAT(StripesOf(*body),
                ElementsAre(ElementsAre(2, 1, 0), ElementsAre(0, 3, 2), ElementsAre(2, 4, 0)));
    Cut(*body, TestChain(*body, 1, {}, 3));
    EXPECT_THAT(OutlinesOf(*body), ElementsAre(ElementsAre(3, 2, 1), ElementsAre(0, 1, 2, 4),
                                               ElementsAre(2, 3, 0, 4), ElementsAre(1, 0, 3)));
    EXPECT_THAT(StripesOf(*body),
                ElementsAre(ElementsAre(2, 1), ElementsAre(0, 3), ElementsAre(2, 4, 0),
                            ElementsAre(1, 0), ElementsAre(3, 2), ElementsAre(1, 3)));
}

TEST(CutAlongChain, LeavesAStripeWholeOnWhichItsEndIsAnEnd)
{
    const OwnedShape body = RaisedSquare();
    Cut(*body, TestChain(*body, 2, {{0.3F, 0.6F, 0.6F}, {0.2F, 0.4F, 0.4F}}, 3));
    EXPECT_THAT(StripesOf(*body), // 3 lies in the middle of the second stripe
                ElementsAre(ElementsAre(2, 1, 0), ElementsAre(0, 3), ElementsAre(2, 4, 0),
                            ElementsAre(3, 2), ElementsAre(2, 5, 6, 3)));
}

// A square raised between the neighbours 0 and 1: its second stripe is 1 2 3 0.
static OwnedShape SquareRaisedAtAnEdge()
{
    OwnedShape body = Square();
    Raise(*body, TestChain(*body, 0, {{0.5F, 0.2F, 1}}, 1));
    EXPECT_THAT(StripesOf(*body),
                ElementsAre(ElementsAre(0, 1), ElementsAre(1, 2, 3, 0), ElementsAre(0, 4, 1)));
    return body;
}

TEST(CutAlongChain, FindsItsEndInTheRestOfTheStripeThatItsStartHasCut)
{
    const OwnedShape body = SquareRaisedAtAnEdge();
    Cut(*body, TestChain(*body, 2, {{0.5F, 0.8F, 0}}, 3));
    EXPECT_THAT(StripesOf(*body),
                ElementsAre(ElementsAre(0, 1), ElementsAre(1, 2), ElementsAre(0, 4, 1),
                            ElementsAre(2, 3), ElementsAre(3, 0), ElementsAre(2, 5, 3)));
}

TEST(CutAlongChain, FindsItsEndInThePartOfTheStripeThatWasKept)
{
    const OwnedShape body = SquareRaisedAtAnEdge();
    Cut(*body, TestChain(*body, 3, {{0.5F, 0.8F, 0}}, 2));
    EXPECT_THAT(StripesOf(*body),
                ElementsAre(ElementsAre(0, 1), ElementsAre(1, 2), ElementsAre(0, 4, 1),
                            ElementsAre(3, 0), ElementsAre(2, 3), ElementsAre(3, 5, 2)));
}

// Two squares back to back, whose one stripe is closed.
static OwnedShape Pillow()
{
    return MakeShape({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {{0, 1, 2, 3}, {3, 2, 1, 0}});
}

TEST(CutAlongChain, OpensAClosedStripeAtBothEnds)
{
    const OwnedShape pillow = Pillow();
    ASSERT_THAT(StripesOf(*pillow), ElementsAre(ElementsAre(0, 1, 2, 3, 0)));
    Cut(*pillow, TestChain(*pillow, 1, {{0.5F, 0.5F, 0.1F}}, 3));
    EXPECT_THAT(OutlinesOf(*pillow), ElementsAre(ElementsAre(1, 2, 3, 4), ElementsAre(3, 2, 1, 0),
                                                 ElementsAre(3, 0, 1, 4)));
    EXPECT_THAT(StripesOf(*pillow), ElementsAre(ElementsAre(0, 1), ElementsAre(1, 2, 3),
                                                ElementsAre(3, 0), ElementsAre(1, 4, 3)));
}

TEST(CutAlongChain, KeepsTheStartOfAClosedStripeAsAnEnd)
{
    const OwnedShape pillow = Pillow();
    Cut(*pillow, TestChain(*pillow, 2, {{0.5F, 0.5F, 0.1F}}, 0));
    EXPECT_THAT(StripesOf(*pillow),
                ElementsAre(ElementsAre(0, 1, 2), ElementsAre(2, 3, 0), ElementsAre(2, 4, 0)));
}

TEST(CutAlongChain, CutsAPrismTwiceAcrossTheSameFace)
{
    const OwnedShape prism = TrianglePrism();
    // {0, 1, 4, 3} is the face y = 0. The chain bounds a triangle below the upper edge.
    Cut(*prism, TestChain(*prism, 3, {{0.5F, 0, 0.5F}}, 4));
    EXPECT_THAT(OutlinesOf(*prism)[2], ElementsAre(4, 3, 6));
    EXPECT_THAT(OutlinesOf(*prism)[5], ElementsAre(3, 0, 1, 4, 6));
    Cut(*prism, TestChain(*prism, 0, {}, 6));
    EXPECT_THAT(OutlinesOf(*prism)[5], ElementsAre(0, 1, 4, 6));
    EXPECT_THAT(OutlinesOf(*prism)[6], ElementsAre(6, 3, 0));
    EXPECT_THAT(StripesOf(*prism), ::testing::Contains(ElementsAre(6, 4))); // cut where 6 was inner
}

// The outlines from their least point on, in order.
static Outlines SortedOutlinesOf(const Shape& shape)
{
    Outlines outlines = OutlinesOf(shape);
    for (std::vector<int>& outline : outlines) {
        std::rotate(outline.begin(), std::min_element(outline.begin(), outline.end()),
                    outline.end());
    }
    std::sort(outlines.begin(), outlines.end());
    return outlines;
}

TEST(CutAlongChain, MakesTheSameSidesHoweverTheBodyStandsAndIsNumbered)
{
    const Points inner = {{-0.2F, -0.3F, 0.5F}, {0.3F, 0.1F, 0.5F}};
    const OwnedShape cube = Cube();
    Cut(*cube, TestChain(*cube, 4, inner, 6));
    for (int k = 0; k < 6 * 8; k++) {
        const Placing placing = {k % 3, k / 3 % 2 == 1, k / 6, 8};
        const OwnedShape placed = PlaceShape(*Cube(), placing);
        Cut(*placed, TestChain(*placed, Rename(4, placing), PlacePoints(inner, placing),
                               Rename(6, placing)));
        EXPECT_EQ(SortedOutlinesOf(*placed), SortedOutlinesOf(*PlaceShape(*cube, placing)));
    }
}

TEST(CutAlongChain, CutsASlitSideOnTheBankThatItMeets)
{
    const OwnedShape plate = PlateWithHole();
    Cut(*plate, TestChain(*plate, 1, {{2, 0.4F, 0.1F}}, 4));
    EXPECT_THAT(OutlinesOf(*plate)[0], ElementsAre(1, 2, 3, 0, 4, 7, 6, 5, 4, 8));
    EXPECT_THAT(OutlinesOf(*plate)[2], ElementsAre(4, 0, 1, 8));
}

// The diagonal is an edge of sides 1 and 2 by then: once more it would be one of four sides.
TEST(CanTakeChain, RefusesTheDiagonalOverWhichAFlatShapeWasRaised)
{
    const OwnedShape square = Square();
    Raise(*square, TestChain(*square, 0, {}, 2));
    EXPECT_FALSE(CanTakeChain(square.get(), TestChain(*square, 0, {}, 2).Get()));
    EXPECT_FALSE(CanTakeChain(square.get(), TestChain(*square, 2, {}, 0).Get()));
    Cut(*square, TestChain(*square, 1, {}, 3)); // the other one is free, in side 0
}

TEST(RaiseOverChain, TurnsTheBaseRoundBelowItsChain)
{
    const OwnedShape square = Square();
    Raise(*square, TestChain(*square, 0, {{0.5F, 0.5F, 1}}, 2));
    EXPECT_THAT(OutlinesOf(*square), ElementsAre(ElementsAre(3, 2, 1, 0), ElementsAre(0, 1, 2, 4),
                                                 ElementsAre(2, 3, 0, 4)));
    EXPECT_THAT(StripesOf(*square),
                ElementsAre(ElementsAre(0, 1, 2), ElementsAre(2, 3, 0), ElementsAre(0, 4, 2)));
    EXPECT_THAT(RunsOf(*square),
                ElementsAre(ElementsAre(0, 1), ElementsAre(2, 3), ElementsAre(4, 5)));
    EXPECT_EQ(square->trianglenumber, 2 + 4 + 2 * 3 - 6);
    EXPECT_EQ(CornersOf(*square, 0, 0), (Corners{0, 3, 2})); // the ear is the base's first corner
    EXPECT_EQ(CornersOf(*square, 0, 1), (Corners{2, 1, 0}));
}

TEST(RaiseOverChain, TurnsTheNewSidesRoundAboveTheirChain)
{
    const OwnedShape square = Square();
    Raise(*square, TestChain(*square, 0, {{0.5F, 0.5F, -1}}, 2));
    EXPECT_THAT(OutlinesOf(*square), ElementsAre(ElementsAre(0, 1, 2, 3), ElementsAre(4, 2, 1, 0),
                                                 ElementsAre(4, 0, 3, 2)));
}

TEST(RaiseOverChain, ContinuesBothOutlinesAlongTheChain)
{
    const OwnedShape square = Square();
    Raise(*square, TestChain(*square, 2, {{0.7F, 0.7F, 1}, {0.3F, 0.3F, 1}}, 0));
    EXPECT_THAT(OutlinesOf(*square),
                ElementsAre(ElementsAre(3, 2, 1, 0), ElementsAre(0, 1, 2, 4, 5),
                            ElementsAre(2, 3, 0, 5, 4)));
    EXPECT_THAT(StripesOf(*square).back(), ElementsAre(2, 4, 5, 0));
}

TEST(RaiseOverChain, MakesAFoldedSheetWithoutInnerPoints)
{
    const OwnedShape square = Square();
    Raise(*square, TestChain(*square, 0, {}, 2));
    EXPECT_THAT(OutlinesOf(*square),
                ElementsAre(ElementsAre(0, 1, 2, 3), ElementsAre(2, 1, 0), ElementsAre(0, 3, 2)));
    EXPECT_EQ(square->trianglenumber, 2 + 4 + 2 * 2 - 6);
}

// Without height the base counts as facing outwards: it stays, and the new sides are turned.
TEST(RaiseOverChain, FoldsAConcaveShapeAlongEachOfItsDiagonals)
{
    for (int k = 0; k < 6 * 6; k++) {
        const int start = k / 6;
        const int end = k % 6;
        const OwnedShape body = ConcaveL();
        const TestChain chain(*body, start, {}, end);
        const int apart = (end - start + 6) % 6;
        const bool isdiagonal = apart > 1 && apart < 5;
        ASSERT_EQ(CanTakeChain(body.get(), chain.Get()), isdiagonal) << start << " to " << end;
        if (isdiagonal) {
            Raise(*body, chain);
            EXPECT_THAT(OutlinesOf(*body)[0], ElementsAre(0, 1, 2, 3, 4, 5));
            EXPECT_EQ(body->trianglenumber, 4 + 6 + 2 * 2 - 6);
        }
    }
}

TEST(RaiseOverChain, ShowsOnlyTheFrontsInTheColoursOfTheBase)
{
    const OwnedShape square = Square();
    square->sides[0].colors[FRONT_LIGHT] = 0.25F;
    Raise(*square, TestChain(*square, 0, {{0.5F, 0.5F, 1}}, 2));
    for (int i = 0; i < 3; i++) {
        EXPECT_EQ(square->sides[i].visibility, VISIBLE_FRONT);
        EXPECT_EQ(square->sides[i].colors[FRONT_LIGHT], 0.25F);
    }
}

static void RaiseOverEveryPair(OwnedShape (*make)(), int innernumber, float height)
{
    const int number = make()->pointnumber;
    for (int k = 0; k < number * number; k++) {
        const int start = k / number;
        const int end = k % number;
        if (start == end) {
            continue;
        }
        const OwnedShape body = make();
        const bool isconvex = number < 5; // else the new sides can fold over each other
        Raise(*body, ArchOver(*body, start, innernumber, height, end));
        EXPECT_LT(GetNormalOfSide(body->sides)[2] * height, 0) << start << " to " << end;
        EXPECT_EQ(body->trianglenumber, number - 2 + number + 2 * (innernumber + 2) - 6);
        EXPECT_TRUE(!isconvex || GetVolume(*body) > -1e-6) << start << " to " << end;
    }
}

// The base looks away from the chain, wherever the chain begins and ends; the other sides follow
// it, since the body is closed and oriented.
TEST(RaiseOverChain, FacesOutwardsAboveAndBelowEveryFlatShape)
{
    for (const auto make : {FlatTriangle, Square, ConcaveL, Star}) {
        for (int innernumber = 1; innernumber <= 3; innernumber++) {
            RaiseOverEveryPair(make, innernumber, 1);
            RaiseOverEveryPair(make, innernumber, -1);
        }
    }
}

// A pyramid over the square, of the triangles 0 1 4, 1 2 4, 2 3 4 and 3 0 4: a third of its height.
TEST(RaiseOverChain, EnclosesAPyramid)
{
    const OwnedShape square = Square();
    Raise(*square, TestChain(*square, 0, {{0.5F, 0.5F, 1}}, 2));
    EXPECT_NEAR(GetVolume(*square), 1.0 / 3, 1e-6);
}

// In the plane of the base, and two clicks in one place: the body has no volume, and is sound.
TEST(RaiseOverChain, TakesPointsThatLieInTheBaseOrOnEachOther)
{
    const OwnedShape square = Square();
    Raise(*square, TestChain(*square, 0, {{0.6F, 0.4F, 0}, {0.6F, 0.4F, 0}}, 2));
    EXPECT_EQ(GetVolume(*square), 0);
    const OwnedShape other = Square();
    Raise(*other, TestChain(*other, 0, {{1, 0, 0}, {1, 1, 0}}, 2)); // on corners
    EXPECT_EQ(GetVolume(*other), 0);
}

TEST(CutAlongChain, TakesPointsThatLieOnEachOther)
{
    const OwnedShape cube = Cube();
    Cut(*cube, TestChain(*cube, 4, {{0.5F, -0.5F, 0.5F}, {0.5F, -0.5F, 0.5F}}, 6)); // on corner 5
    EXPECT_THAT(OutlinesOf(*cube)[1], ElementsAre(4, 5, 6, 9, 8));
    EXPECT_NEAR(GetVolume(*cube), 1, 1e-6);
}

TEST(IsFlatShape, IsTrueOfOneSideThatPassesNoEdgeTwice)
{
    EXPECT_TRUE(IsFlatShape(ConcaveL().get()));
    EXPECT_FALSE(IsFlatShape(RaisedSquare().get()));
    const OwnedShape slit =
        MakeShape(PointsOf(*PlateWithHole()), {OutlinesOf(*PlateWithHole())[0]});
    EXPECT_FALSE(IsFlatShape(slit.get()));
}

TEST(IsBody, IsTrueOfSeveralSidesAndOfOneThatMeetsItselfAtEveryEdge)
{
    EXPECT_TRUE(IsBody(RaisedSquare().get()));
    EXPECT_TRUE(IsBody(RingOfOneSide().get()));
    EXPECT_FALSE(IsBody(ConcaveL().get()));
    const OwnedShape slit =
        MakeShape(PointsOf(*PlateWithHole()), {OutlinesOf(*PlateWithHole())[0]});
    EXPECT_FALSE(IsBody(slit.get()));
}

TEST(CutAlongChain, CutsTheOneSideOfARing)
{
    const OwnedShape ring = RingOfOneSide();
    ASSERT_FALSE(IsFlatShape(ring.get()));
    ASSERT_EQ(FindBrokenRuleOfClosedBody(*ring), "");
    CutAlongChain(ring.get(), TestChain(*ring, 1, {{0.5F, 0.5F, 0}}, 3).Get());
    SetNormalsOfShape(ring.get());
    EXPECT_EQ(FindBrokenRuleOfShape(*ring), "");
    EXPECT_EQ(FindBrokenRuleOfClosedBody(*ring), "");
    EXPECT_EQ(ring->sidenumber, 2);
}

} // namespace korvane::testing
