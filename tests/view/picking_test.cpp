#include "view/picking.h"

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "scene/model.h"
#include "tests/support/pickscene.h"
#include "tests/support/shapes.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

namespace korvane
{

using namespace korvane::testing;

TEST(SearchActive, FindsNothingBesideTheShape)
{
    StartPickScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    ProjectAndPick();
    mouse[2] = 5;
    EXPECT_EQ(FindAt(0.3F, 0.3F), nullptr);
}

TEST(SearchActive, TakesOverTheDepthAndThePositionOfTheHit)
{
    StartPickScene();
    AddSlope(-0.2F, -0.2F, 0.4F, 0.2F); // z = y
    ProjectAndPick();
    ASSERT_EQ(FindAt(0.0625F, 0.125F), SideOf(0));
    EXPECT_FLOAT_EQ(mouse[2], 0.125F);
    EXPECT_EQ(activepointer->position[0], 0.0625F);
    EXPECT_EQ(activepointer->position[1], 0.125F);
    EXPECT_EQ(activepointer->position[2], mouse[2]);
    ASSERT_EQ(FindAt(-0.19F, -0.195F), PointOf(0, 0)); // a point's position is its own
    EXPECT_EQ(activepointer->position[0], -0.2F);
    EXPECT_EQ(activepointer->position[1], -0.2F);
    EXPECT_EQ(mouse[2], -0.2F);
    ASSERT_EQ(FindAt(-0.19F, 0.125F), StripeOf(0)); // a stripe's is the mouse's, at its depth
    EXPECT_EQ(activepointer->position[0], -0.19F);
    EXPECT_FLOAT_EQ(mouse[2], 0.125F);
}

TEST(SearchActive, MovesTheHoverFlag)
{
    StartPickScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    ProjectAndPick();
    FindAt(0, 0);
    EXPECT_EQ(SideOf(0)->hover, 1);
    FindAt(0.1F, 0);
    EXPECT_EQ(SideOf(0)->hover, 0);
    EXPECT_EQ(StripeOf(0)->hover, 1);
    FindAt(0.1F, 0.1F);
    EXPECT_EQ(StripeOf(0)->hover, 0);
    EXPECT_EQ(PointOf(0, 2)->hover, 1);
    FindAt(-0.1F, 0.1F);
    EXPECT_EQ(PointOf(0, 2)->hover, 0);
    EXPECT_EQ(PointOf(0, 3)->hover, 1);
    FindAt(0.4F, 0.4F);
    EXPECT_EQ(PointOf(0, 3)->hover, 0);
}

TEST(SearchActive, LeavesOutShapesThatAreNotDrawnInFull)
{
    StartPickScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    ProjectAndPick();
    showtable[0] = SHOW_PLAIN;
    ChangeActives();
    EXPECT_EQ(FindAt(0, 0), nullptr);
    activesides[0].active = 1; // as a construction marks elements
    EXPECT_EQ(FindAt(0, 0), SideOf(0));
    showtable[0] = SHOW_NOTHING;
    EXPECT_EQ(FindAt(0, 0), nullptr);
}

TEST(SearchActive, LooksOnlyInTheCircleOfAShape)
{
    StartPickScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    ProjectAndPick();
    shapest[0]->radius = 0.0625F;
    EXPECT_EQ(FindAt(0.075F, 0), SideOf(0)); // within 0.0625 + 0.016
    EXPECT_EQ(FindAt(0.0825F, 0), nullptr);  // beyond
}

// The full perspective shows the front corners at 0.35 * 1.5 / (1.5 - 0.35) = 0.4565 from either
// axis. That is 0.6456 from the middle, and the cube's radius is 0.35 sqrt(3) = 0.6062.
TEST(SearchActive, ReachesTheNearCornersOfACubeInPerspective)
{
    StartPickScene();
    SetFace(0, -0.5F, -0.5F, 1);
    AddShape(CubeOfHalfEdge(0.35F).release());
    mainview.perspective = fadedone;
    ProjectAndPick();
    for (const float x : {-0.4565F, 0.4565F}) {
        for (const float y : {-0.4565F, 0.4565F}) {
            const ActiveElement* corner = FindAt(x, y);
            ASSERT_EQ(corner->type, ELEMENT_POINT);
            EXPECT_EQ(corner->position[2], 0.35F);
            EXPECT_EQ(FindAt(x, y * 0.95F)->type, ELEMENT_STRIPE); // of the front's upright edges
            EXPECT_EQ(FindAt(x * 1.05F, y), &activebgcube[0]);
        }
    }
}

// Its near end shows at 1.77 * 1.5 / (1.5 - 0.1) = 1.896, which is 0.296 from its centre. Of that
// its radius, 0.198, tells 0.228 at its nearest depth; the rest is that it lies far aside.
TEST(SearchActive, ReachesTheNearEndOfAShapeFarAsideInPerspective)
{
    StartPickScene();
    width = 1600;
    height = 400;
    AddShape(MakeFlatShape({{1.43F, -0.02F, -0.1F},
                            {1.77F, -0.02F, 0.1F},
                            {1.77F, 0.02F, 0.1F},
                            {1.43F, 0.02F, -0.1F}})
                 .release());
    mainview.perspective = fadedone;
    ProjectAndPick();
    EXPECT_EQ(FindAt(1.8964F, 0), StripeOf(0));
}

TEST(SearchActive, NeedsLinesAndAMarkedShapeForPointsAndStripes)
{
    StartPickScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    ProjectAndPick();
    selected[0] = selectedshown;
    EXPECT_EQ(FindAt(0.1F, 0.1F), SideOf(0));
    EXPECT_EQ(FindAt(0.1F, 0), SideOf(0));
    selected[0] = selectedshown | selectedintree;
    EXPECT_EQ(FindAt(0.1F, 0.1F), PointOf(0, 2));
    mainview.linesfade = 0;
    EXPECT_EQ(FindAt(0.1F, 0.1F), SideOf(0));
    mainview.linesfade = 1;
    EXPECT_EQ(FindAt(0.1F, 0), StripeOf(0));
}

TEST(SearchActive, NeedsSolidSidesForSides)
{
    StartPickScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    ProjectAndPick();
    mainview.sidesfade = 0;
    EXPECT_EQ(FindAt(0, 0), nullptr);
    mainview.sidesfade = 1;
    EXPECT_EQ(FindAt(0, 0), SideOf(0));
}

TEST(SearchActive, TakesTheNearerOfTwoPoints)
{
    StartPickScene();
    AddSquare(0, 0, 0.2F, 0.1F);
    AddSquare(0, 0, 0.2F, 0.2F);
    AddSquare(0, 0, 0.2F, 0.1F);
    ProjectAndPick();
    EXPECT_EQ(FindAt(0, 0), PointOf(1, 0));
}

TEST(SearchActive, KeepsTheFirstOfEquallyDeepElements)
{
    StartPickScene();
    AddSquare(0, 0, 0.2F, 0.1F);
    AddSquare(0, 0, 0.2F, 0.1F);
    ProjectAndPick();
    EXPECT_EQ(FindAt(0, 0), PointOf(0, 0));
    EXPECT_EQ(FindAt(0.1F, 0), StripeOf(0));
    EXPECT_EQ(FindAt(0.1F, 0.1F), SideOf(0));
}

TEST(SearchActive, TakesTheNearerOfTwoStripes)
{
    StartPickScene();
    AddSquare(0, 0, 0.2F, 0.1F);
    AddSquare(0, 0, 0.2F, 0.2F);
    AddSquare(0, 0, 0.2F, 0.1F);
    ProjectAndPick();
    EXPECT_EQ(FindAt(0.1F, -0.01F), StripeOf(1)); // outside the sides
}

TEST(SearchActive, TakesTheNearerOfTwoSides)
{
    StartPickScene();
    AddSquare(-0.2F, -0.2F, 0.4F, 0.1F);
    AddSquare(-0.1F, -0.1F, 0.2F, 0.2F);
    AddSquare(-0.2F, -0.2F, 0.4F, 0.1F);
    ProjectAndPick();
    EXPECT_EQ(FindAt(0, 0), SideOf(1));
}

TEST(SearchActive, PrefersAPointToItsOwnStripeAndSideEvenWhenTheyAreNearer)
{
    StartPickScene();
    AddSlope(-0.2F, -0.2F, 0.4F, 0.2F);
    ProjectAndPick();
    // Point 0 lies at depth -0.2; here the stripe and the side are nearer to the viewer.
    EXPECT_EQ(FindAt(-0.195F, -0.19F), PointOf(0, 0));
}

TEST(SearchActive, PrefersAStripeToItsOwnSideEvenWhenThatIsNearer)
{
    StartPickScene();
    AddSlope(-0.2F, -0.2F, 0.4F, 0.2F);
    ProjectAndPick();
    EXPECT_EQ(FindAt(0, -0.19F), StripeOf(0)); // at -0.2, where the side lies at -0.19
}

TEST(SearchActive, LetsAForeignStripeReplaceAPointThatLiesDeeper)
{
    StartPickScene();
    AddSquare(0, 0, 0.2F, 0);
    AddSquare(-0.1F, 0.005F, 0.2F, 0.1F); // its lower edge passes over the point
    ProjectAndPick();
    EXPECT_EQ(FindAt(0, 0), StripeOf(1));
}

TEST(SearchActive, KeepsAPointBeforeAForeignStripeAsDeepOrDeeper)
{
    StartPickScene();
    AddSquare(0, 0, 0.2F, 0.1F);
    AddSquare(-0.1F, 0.005F, 0.2F, 0.1F);
    AddSquare(-0.1F, 0.005F, 0.2F, 0);
    ProjectAndPick();
    EXPECT_EQ(FindAt(0, 0), PointOf(0, 0));
}

TEST(SearchActive, LetsAForeignSideReplaceAPointThatLiesDeeper)
{
    StartPickScene();
    AddSquare(0, 0, 0.2F, 0);
    AddSquare(-0.1F, -0.1F, 0.2F, 0.1F);
    ProjectAndPick();
    EXPECT_EQ(FindAt(0, 0), SideOf(1));
}

TEST(SearchActive, LetsAForeignSideReplaceAStripeThatLiesDeeper)
{
    StartPickScene();
    AddSquare(0, 0, 0.2F, 0);
    AddSquare(0, -0.1F, 0.2F, 0.1F);
    ProjectAndPick();
    EXPECT_EQ(FindAt(0.1F, 0), SideOf(1));
}

TEST(SearchActive, KeepsAStripeBeforeAForeignSideAsDeep)
{
    StartPickScene();
    AddSquare(0, 0, 0.2F, 0.1F);
    AddSquare(0, -0.1F, 0.2F, 0.1F);
    ProjectAndPick();
    EXPECT_EQ(FindAt(0.1F, 0), StripeOf(0));
}

TEST(SearchActive, NeverLetsAStripeReplaceASide)
{
    StartPickScene();
    AddSquare(-0.2F, -0.2F, 0.4F, 0);
    AddSquare(0.01F, -0.1F, 0.1F, 0.3F); // the mouse is beside it, near its left edge
    ProjectAndPick();
    EXPECT_EQ(FindAt(0, -0.05F), SideOf(0));
}

TEST(SearchActive, KeepsANearerStripeBeforeASideThatComesLater)
{
    StartPickScene();
    AddSquare(0.01F, -0.1F, 0.1F, 0.3F);
    AddSquare(-0.2F, -0.2F, 0.4F, 0);
    ProjectAndPick();
    EXPECT_EQ(FindAt(0, -0.05F), StripeOf(0));
}

TEST(SearchActive, LetsAPointReplaceASideOnlyWhenItIsNearer)
{
    for (const float depth : {-0.1F, 0.0F, 0.1F}) {
        StartPickScene();
        AddSquare(-0.2F, -0.2F, 0.4F, 0);
        AddSquare(0.005F, 0.005F, 0.1F, depth); // the mouse is beside it, near its corner
        ProjectAndPick();
        EXPECT_EQ(FindAt(0, 0), depth > 0 ? PointOf(1, 0) : SideOf(0));
    }
}

TEST(SearchActive, LetsAPointReplaceAStripeOnlyWhenItIsNearer)
{
    for (const float depth : {-0.1F, 0.0F, 0.1F}) {
        StartPickScene();
        AddSquare(-0.1F, 0.005F, 0.2F, 0);
        AddSquare(0.0F, -0.105F, 0.1F, depth); // its upper left corner is near the mouse
        ProjectAndPick();
        EXPECT_EQ(FindAt(0, 0), depth > 0 ? PointOf(1, 3) : StripeOf(0));
    }
}

TEST(SearchActive, LeavesOutPointsBehindTheEye)
{
    StartPickScene();
    AddSlope(-0.2F, -0.2F, 0.4F, 1.5F);
    ProjectAndPick();
    EXPECT_EQ(FindAt(-0.2F, 0.2F), SideOf(0)); // the corner lies at 1.5
}

TEST(SearchActive, TakesAStripeBehindTheEyeWhenThereIsNothingElse)
{
    StartPickScene();
    AddSlope(-0.2F, -0.2F, 0.4F, 1.6F);
    ProjectAndPick();
    EXPECT_EQ(FindAt(0, 0.205F), StripeOf(0));
    EXPECT_FLOAT_EQ(mouse[2], 1.6F);
}

TEST(SearchActive, LetsNoStripeBehindTheEyeReplaceAnything)
{
    StartPickScene();
    AddSquare(-0.1F, 0.21F, 0.2F, 0);
    AddSlope(-0.2F, -0.2F, 0.4F, 1.6F);
    ProjectAndPick();
    EXPECT_EQ(FindAt(0, 0.205F), StripeOf(0));
}

TEST(SearchActive, FindsBothHalvesOfACubeFaceAtDepthZero)
{
    StartPickScene();
    SetFace(2, -0.2F, -0.2F, 0.4F);
    for (const float x : {-0.1F, 0.1F}) {
        EXPECT_EQ(FindAt(x, 0), &activebgcube[2]);
        EXPECT_EQ(activebgcube[2].hover, 1);
        EXPECT_EQ(activebgcube[2].position[0], x);
        EXPECT_EQ(activebgcube[2].position[2], 0);
        EXPECT_EQ(mouse[2], 0);
    }
    EXPECT_EQ(FindAt(0.3F, 0), nullptr);
    EXPECT_EQ(activebgcube[2].hover, 0);
}

TEST(SearchActive, TakesTheLastCubeFaceUnderTheMouse)
{
    StartPickScene();
    SetFace(1, -0.2F, -0.2F, 0.4F);
    SetFace(4, -0.2F, -0.2F, 0.4F);
    SetFace(5, -0.2F, -0.2F, 0.4F);
    activebgcube[5].active = 0; // not drawn
    EXPECT_EQ(FindAt(0, 0), &activebgcube[4]);
}

TEST(SearchActive, FindsCubeFacesOnlyWhileTheCubeIsShown)
{
    StartPickScene();
    SetFace(0, -0.2F, -0.2F, 0.4F);
    mainview.bgshape = BACKGROUND_PLANE;
    EXPECT_EQ(FindAt(0, 0), nullptr);
    mainview.bgshape = BACKGROUND_NONE;
    EXPECT_EQ(FindAt(0, 0), nullptr);
    mainview.bgshape = BACKGROUND_CUBE;
    EXPECT_EQ(FindAt(0, 0), &activebgcube[0]);
}

TEST(SearchActive, FindsCubeFacesDuringAConstructionOnlyWithSpaceHeld)
{
    StartPickScene();
    SetFace(0, -0.2F, -0.2F, 0.4F);
    for (char* const sign : {&newsign, &duplicatesign}) {
        *sign = 1;
        keyspace = 0;
        EXPECT_EQ(FindAt(0, 0), nullptr);
        keyspace = 1;
        EXPECT_EQ(FindAt(0, 0), &activebgcube[0]);
        *sign = 0;
    }
}

TEST(SearchActive, PrefersEverythingToACubeFace)
{
    StartPickScene();
    SetFace(0, -0.4F, -0.4F, 0.8F);
    AddSquare(-0.1F, -0.1F, 0.2F, -0.5F); // deeper than the face's 0
    ProjectAndPick();
    EXPECT_EQ(FindAt(0, 0), SideOf(0));
    EXPECT_EQ(FindAt(0.11F, 0), StripeOf(0));
    EXPECT_EQ(FindAt(0.105F, 0.105F), PointOf(0, 2));
    EXPECT_EQ(FindAt(0.2F, 0), &activebgcube[0]);
    EXPECT_EQ(SideOf(0)->hover, 0);
}

TEST(SearchActive, LetsConstructionPointsWinOverEverything)
{
    StartPickScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0.5F);
    ProjectAndPick();
    float first[3] = {0, 0, -0.5F}, second[3] = {0.005F, 0, -0.6F}, third[3] = {0, 0, 0.9F};
    newpointnumber = 3;
    AppendActivePoint(first, 1);
    AppendActivePoint(second, 1);
    AppendActivePoint(third, 0);               // cannot be picked
    EXPECT_EQ(FindAt(0, 0), &activepoints[5]); // the last one that can
    EXPECT_EQ(mouse[2], -0.6F);
    EXPECT_EQ(activepoints[5].position[0], 0.005F);
    EXPECT_EQ(activepoints[5].position[2], -0.6F);
    EXPECT_EQ(activepoints[5].hover, 1);
    EXPECT_EQ(FindAt(0.05F, 0), SideOf(0));
    EXPECT_EQ(activepoints[5].hover, 0);
}

TEST(SearchActive, ReachesSidesDuringAConstructionWhileSpaceIsHeld)
{
    StartPickScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    ProjectAndPick();
    SetActivesOff(); // as every construction does
    for (char* const sign : {&newsign, &duplicatesign}) {
        *sign = 1;
        keyspace = 0;
        EXPECT_EQ(FindAt(0, 0), nullptr);
        keyspace = 1;
        EXPECT_EQ(FindAt(0, 0), SideOf(0));
        EXPECT_EQ(FindAt(0.1F, 0.1F), SideOf(0)); // but no points and no stripes
        EXPECT_EQ(FindAt(0.1F, 0.11F), nullptr);
        showtable[0] = SHOW_PLAIN;
        EXPECT_EQ(FindAt(0, 0), nullptr);
        showtable[0] = SHOW_ROUNDED;
        *sign = 0;
    }
    EXPECT_EQ(FindAt(0, 0), nullptr); // no construction, and still off
}

TEST(SearchActive, FollowsTheProjection)
{
    StartPickScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    ProjectAndPick();
    EXPECT_EQ(FindAt(0.2F, 0.2F), nullptr);
    mainview.center[0] = mainview.center[1] = -0.2F;
    TransferAllShape();
    EXPECT_EQ(FindAt(0.2F, 0.2F), SideOf(0));
    EXPECT_EQ(FindAt(0, 0), nullptr);
    mainview.center[0] = mainview.center[1] = 0;
    TransferOneShape(0);
    EXPECT_EQ(FindAt(0, 0), SideOf(0));
}

TEST(SearchActive, PointsAtTheNewCopyOfAChangedShape)
{
    StartPickScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    ProjectAndPick();
    const OwnedShape other(CopyShape(shapest[0])); // so that the new copy lies elsewhere
    ChangeShape(0);
    TransferAllShape();
    ASSERT_EQ(FindAt(0, 0), SideOf(0));
    EXPECT_EQ(GetSideOfElement(activepointer), &shapest[0]->sides[0]);
}

TEST(SearchActive, LeavesOutShapesThatHaveNoRecordsYet)
{
    StartPickScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    ProjectAndPick();
    AddSquare(0.2F, 0.2F, 0.2F, 0); // an edit before its SetActives
    TransferAllShape();
    EXPECT_EQ(FindAt(0.3F, 0.3F), nullptr);
    EXPECT_EQ(FindAt(0, 0), SideOf(0));
}

TEST(SearchActive, FindsTheElementsOfAnEditedShapeAfterItsSetActives)
{
    StartPickScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    ProjectAndPick();
    ASSERT_EQ(FindAt(0, 0), SideOf(0));
    DeleteShape(shapes[0]); // two triangles in the place of the square
    shapes[0] = MakeShape({{-0.1F, -0.1F, 0},
                           {0.1F, -0.1F, 0},
                           {0, 0.1F, 0},
                           {0.3F, 0.3F, 0},
                           {0.5F, 0.3F, 0},
                           {0.4F, 0.5F, 0}},
                          {{0, 1, 2}, {3, 4, 5}})
                    .release();
    ChangeShape(0);
    TransferAllShape();
    EXPECT_EQ(FindAt(0, 0), nullptr); // more elements than records
    SetActives();
    EXPECT_EQ(FindAt(0, 0), &activesides[0]);
    EXPECT_EQ(FindAt(0.4F, 0.4F), &activesides[1]);
    EXPECT_EQ(FindAt(0.4F, 0.3F), &activestripes[1]);
    EXPECT_EQ(FindAt(0.5F, 0.3F), &activepoints[4]);
}

} // namespace korvane
