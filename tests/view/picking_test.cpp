#include "view/picking.h"

#include "geometry/creation.h"
#include "geometry/duplication.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "tests/support/plainsearch.h"
#include "tests/support/shapes.h"
#include "ui/input.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace korvane
{

using namespace korvane::testing;

static const MainView startview = mainview;

// An empty scene seen from the front: the screen's coordinates are the model's.
static void StartScene()
{
    newsign = duplicatesign = keyspace = 0;
    newpointnumber = centernumber = 0;
    DeleteAllShapes();
    mainview = startview;
    width = height = 600;
    std::fill_n(mouse, 3, 0.0F);
    std::fill(std::begin(activebgcube), std::end(activebgcube), ActiveElement{});
    std::fill_n(&cubepoints[0][0], 72, 9.0F);
}

// A square in the plane of a depth; its stripe starts at the lower left corner and runs to the
// right.
static int AddSquare(float left, float bottom, float size, float z)
{
    const float right = left + size, top = bottom + size;
    AddShape(MakeFlatShape({{left, bottom, z}, {right, bottom, z}, {right, top, z}, {left, top, z}})
                 .release());
    return shapenumber - 1;
}

// A square whose lower edge lies at depth -z and whose upper edge lies at z.
static int AddSlope(float left, float bottom, float size, float z)
{
    const float right = left + size, top = bottom + size;
    AddShape(
        MakeFlatShape({{left, bottom, -z}, {right, bottom, -z}, {right, top, z}, {left, top, z}})
            .release());
    return shapenumber - 1;
}

static void Project()
{
    SetActives();
    TransferAllShape();
    ChangeActives();
}

static const ActiveElement* FindAt(float x, float y)
{
    mouse[0] = x;
    mouse[1] = y;
    mouse[2] = 0;
    SearchActive();
    return activepointer;
}

// Every square has four points, one stripe and one side.
static const ActiveElement* PointOf(int square, int corner)
{
    return &activepoints[4 * square + corner];
}
static const ActiveElement* StripeOf(int square)
{
    return &activestripes[square];
}
static const ActiveElement* SideOf(int square)
{
    return &activesides[square];
}

// A point of a construction, as the modules append it.
static void AppendActivePoint(float* point, unsigned char active)
{
    GrowArray(activepoints, activepointnumber, activepointnumber + 1);
    activepoints[activepointnumber].type = ELEMENT_POINT;
    activepoints[activepointnumber].active = active;
    activepoints[activepointnumber].element = point;
    activepointnumber++;
}

TEST(SetActives, MakesARecordForEveryElementInSceneOrder)
{
    StartScene();
    AddShape(Cube().release());
    AddSquare(0, 0, 0.2F, 0);
    SetActives();
    EXPECT_EQ(activepointnumber, 8 + 4);
    EXPECT_EQ(activestripenumber, 12 + 1);
    EXPECT_EQ(activesidenumber, 6 + 1);
    EXPECT_EQ(activepoints[7].type, ELEMENT_POINT);
    EXPECT_EQ(GetPointOfElement(&activepoints[7]), shapest[0]->points[7]);
    EXPECT_EQ(GetPointOfElement(&activepoints[9]), shapest[1]->points[1]);
    EXPECT_EQ(activestripes[12].type, ELEMENT_STRIPE);
    EXPECT_EQ(GetStripeOfElement(&activestripes[12]), &shapest[1]->stripes[0]);
    EXPECT_EQ(activesides[6].type, ELEMENT_SIDE);
    EXPECT_EQ(GetSideOfElement(&activesides[6]), &shapest[1]->sides[0]);
}

TEST(SetActives, MakesOnlyElementsOfFullyDrawnShapesPickable)
{
    StartScene();
    AddSquare(0, 0, 0.2F, 0);
    AddSquare(0, 0, 0.2F, 0);
    AddSquare(0, 0, 0.2F, 0);
    showtable[0] = SHOW_NOTHING;
    showtable[1] = SHOW_PLAIN;
    showtable[2] = SHOW_ROUNDED;
    SetActives();
    for (int i = 0; i < 3; i++) {
        EXPECT_EQ(PointOf(i, 3)->active, i == 2 ? 1 : 0);
        EXPECT_EQ(StripeOf(i)->active, i == 2 ? 1 : 0);
        EXPECT_EQ(SideOf(i)->active, i == 2 ? 1 : 0);
    }
    mainview.action = 4;
    SetActives();
    EXPECT_EQ(SideOf(2)->active, 0);
}

TEST(SetActives, StartsRecordsWithoutHoverAndFade)
{
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    Project();
    FindAt(0, 0);
    activesides[0].fade = 9;
    ASSERT_EQ(SideOf(0)->hover, 1);
    SetActives();
    EXPECT_EQ(SideOf(0)->hover, 0);
    EXPECT_EQ(SideOf(0)->fade, 0);
    EXPECT_EQ(activepointer, nullptr);
}

TEST(SetActives, LeavesEmptyListsWithoutShapes)
{
    StartScene();
    SetActives();
    EXPECT_EQ(activepointnumber, 0);
    EXPECT_EQ(activestripenumber, 0);
    EXPECT_EQ(activesidenumber, 0);
    EXPECT_EQ(FindAt(0, 0), nullptr);
}

TEST(SetActives, KeepsTheRecordsOfAConstructionAtTheEnd)
{
    StartScene();
    AddSquare(0, 0, 0.2F, 0);
    Project();
    float center[3] = {0.3F, 0.3F, 0.1F}, point[3] = {-0.3F, 0.3F, 0.2F};
    newsign = 1;
    centernumber = 1;
    AppendActivePoint(center, 0);
    newpointnumber = 1;
    AppendActivePoint(point, 1);
    activepoints[5].fade = 7;
    FindAt(-0.3F, 0.3F);
    ASSERT_EQ(activepointer, &activepoints[5]);
    AddSquare(0, 0, 0.3F, 0);
    SetActives();
    ASSERT_EQ(activepointnumber, 8 + 2);
    EXPECT_EQ(GetPointOfElement(&activepoints[8]), center);
    EXPECT_EQ(activepoints[8].active, 0);
    EXPECT_EQ(GetPointOfElement(&activepoints[9]), point);
    EXPECT_EQ(activepoints[9].active, 1);
    EXPECT_EQ(activepoints[9].fade, 7);
    EXPECT_EQ(activepointer, nullptr);
    FindAt(0, 0); // away from it
    EXPECT_EQ(activepoints[9].hover, 0);
    EXPECT_EQ(FindAt(-0.3F, 0.3F), &activepoints[9]);
}

TEST(SetActives, DropsTheRecordsOfAConstructionThatHasEnded)
{
    StartScene();
    AddSquare(0, 0, 0.2F, 0);
    SetActives();
    float point[3] = {-0.3F, 0.3F, 0.2F};
    newpointnumber = 1;
    AppendActivePoint(point, 1);
    newpointnumber = 0;
    EXPECT_EQ(FindAt(-0.3F, 0.3F), nullptr);
    SetActives();
    EXPECT_EQ(activepointnumber, 4);
}

TEST(ChangeActives, FollowsTheShowTableAndSearches)
{
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    SetActives();
    TransferAllShape();
    EXPECT_EQ(activepointer, nullptr);
    ChangeActives();
    EXPECT_EQ(PointOf(0, 0)->active, 1);
    EXPECT_EQ(StripeOf(0)->active, 1);
    EXPECT_EQ(activepointer, SideOf(0));
    mainview.scale = 0.01F; // drawn plain
    TransferAllShape();
    ChangeActives();
    EXPECT_EQ(showtable[0], SHOW_PLAIN);
    EXPECT_EQ(SideOf(0)->active, 0);
    EXPECT_EQ(activepointer, nullptr);
}

TEST(ChangeActives, DoesNothingDuringAConstructionOrInAToolMode)
{
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    Project();
    SetActivesOff();
    newsign = 1;
    ChangeActives();
    EXPECT_EQ(SideOf(0)->active, 0);
    newsign = 0;
    duplicatesign = 1;
    ChangeActives();
    EXPECT_EQ(SideOf(0)->active, 0);
    duplicatesign = 0;
    mainview.action = 7;
    ChangeActives();
    EXPECT_EQ(SideOf(0)->active, 0);
    mainview.action = 0;
    ChangeActives();
    EXPECT_EQ(SideOf(0)->active, 1);
}

TEST(SetActivesOff, MakesEveryElementUnpickable)
{
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    Project();
    float point[3] = {-0.3F, 0.3F, 0.2F};
    newpointnumber = 1;
    AppendActivePoint(point, 1);
    SetActivesOff();
    EXPECT_EQ(PointOf(0, 0)->active, 0);
    EXPECT_EQ(StripeOf(0)->active, 0);
    EXPECT_EQ(SideOf(0)->active, 0);
    EXPECT_EQ(activepoints[4].active, 0);
    EXPECT_EQ(FindAt(0, 0), nullptr);
}

TEST(IsPointOfStripe, AsksForTheSameShape)
{
    StartScene();
    AddShape(Cube().release());
    AddShape(Cube().release());
    SetActives();
    const Stripe* stripe = GetStripeOfElement(&activestripes[0]);
    for (int k = 0; k < 8; k++) {
        const bool onit = k == stripe->points[0] || k == stripe->points[1];
        EXPECT_EQ(IsPointOfStripe(&activepoints[k], &activestripes[0]), onit);
        EXPECT_FALSE(IsPointOfStripe(&activepoints[8 + k], &activestripes[0]));
    }
}

TEST(IsPointOfSide, AsksForTheSameShape)
{
    StartScene();
    AddShape(Cube().release());
    AddShape(Cube().release());
    SetActives();
    for (int k = 0; k < 8; k++) { // side 0 has the points 0, 3, 2, 1
        EXPECT_EQ(IsPointOfSide(&activepoints[k], &activesides[0]), k < 4);
        EXPECT_FALSE(IsPointOfSide(&activepoints[8 + k], &activesides[0]));
    }
}

TEST(IsStripeOfSide, WantsAllPointsOfTheStripeAmongTheCorners)
{
    StartScene();
    AddShape(Cube().release());
    AddShape(Cube().release());
    SetActives();
    int ofside = 0;
    for (int k = 0; k < 12; k++) {
        const Stripe* stripe = GetStripeOfElement(&activestripes[k]);
        const bool both = stripe->points[0] < 4 && stripe->points[1] < 4;
        EXPECT_EQ(IsStripeOfSide(&activestripes[k], &activesides[0]), both);
        EXPECT_FALSE(IsStripeOfSide(&activestripes[12 + k], &activesides[0]));
        ofside += both ? 1 : 0;
    }
    EXPECT_EQ(ofside, 4);
}

TEST(SearchActive, FindsNothingBesideTheShape)
{
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    Project();
    mouse[2] = 5;
    EXPECT_EQ(FindAt(0.3F, 0.3F), nullptr);
}

TEST(SearchActive, TakesOverTheDepthAndThePositionOfTheHit)
{
    StartScene();
    AddSlope(-0.2F, -0.2F, 0.4F, 0.2F); // z = y
    Project();
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
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    Project();
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
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    Project();
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
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    Project();
    shapest[0]->radius = 0.0625F;
    EXPECT_EQ(FindAt(0.075F, 0), SideOf(0)); // within 0.0625 + 0.016
    EXPECT_EQ(FindAt(0.0825F, 0), nullptr);  // beyond
}

TEST(SearchActive, NeedsLinesAndAMarkedShapeForPointsAndStripes)
{
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    Project();
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
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    Project();
    mainview.sidesfade = 0;
    EXPECT_EQ(FindAt(0, 0), nullptr);
    mainview.sidesfade = 1;
    EXPECT_EQ(FindAt(0, 0), SideOf(0));
}

TEST(SearchActive, TakesTheNearerOfTwoPoints)
{
    StartScene();
    AddSquare(0, 0, 0.2F, 0.1F);
    AddSquare(0, 0, 0.2F, 0.2F);
    AddSquare(0, 0, 0.2F, 0.1F);
    Project();
    EXPECT_EQ(FindAt(0, 0), PointOf(1, 0));
}

TEST(SearchActive, KeepsTheFirstOfEquallyDeepElements)
{
    StartScene();
    AddSquare(0, 0, 0.2F, 0.1F);
    AddSquare(0, 0, 0.2F, 0.1F);
    Project();
    EXPECT_EQ(FindAt(0, 0), PointOf(0, 0));
    EXPECT_EQ(FindAt(0.1F, 0), StripeOf(0));
    EXPECT_EQ(FindAt(0.1F, 0.1F), SideOf(0));
}

TEST(SearchActive, TakesTheNearerOfTwoStripes)
{
    StartScene();
    AddSquare(0, 0, 0.2F, 0.1F);
    AddSquare(0, 0, 0.2F, 0.2F);
    AddSquare(0, 0, 0.2F, 0.1F);
    Project();
    EXPECT_EQ(FindAt(0.1F, -0.01F), StripeOf(1)); // outside the sides
}

TEST(SearchActive, TakesTheNearerOfTwoSides)
{
    StartScene();
    AddSquare(-0.2F, -0.2F, 0.4F, 0.1F);
    AddSquare(-0.1F, -0.1F, 0.2F, 0.2F);
    AddSquare(-0.2F, -0.2F, 0.4F, 0.1F);
    Project();
    EXPECT_EQ(FindAt(0, 0), SideOf(1));
}

TEST(SearchActive, PrefersAPointToItsOwnStripeAndSideEvenWhenTheyAreNearer)
{
    StartScene();
    AddSlope(-0.2F, -0.2F, 0.4F, 0.2F);
    Project();
    // Point 0 lies at depth -0.2; here the stripe and the side are nearer to the viewer.
    EXPECT_EQ(FindAt(-0.195F, -0.19F), PointOf(0, 0));
}

TEST(SearchActive, PrefersAStripeToItsOwnSideEvenWhenThatIsNearer)
{
    StartScene();
    AddSlope(-0.2F, -0.2F, 0.4F, 0.2F);
    Project();
    EXPECT_EQ(FindAt(0, -0.19F), StripeOf(0)); // at -0.2, where the side lies at -0.19
}

TEST(SearchActive, LetsAForeignStripeReplaceAPointThatLiesDeeper)
{
    StartScene();
    AddSquare(0, 0, 0.2F, 0);
    AddSquare(-0.1F, 0.005F, 0.2F, 0.1F); // its lower edge passes over the point
    Project();
    EXPECT_EQ(FindAt(0, 0), StripeOf(1));
}

TEST(SearchActive, KeepsAPointBeforeAForeignStripeAsDeepOrDeeper)
{
    StartScene();
    AddSquare(0, 0, 0.2F, 0.1F);
    AddSquare(-0.1F, 0.005F, 0.2F, 0.1F);
    AddSquare(-0.1F, 0.005F, 0.2F, 0);
    Project();
    EXPECT_EQ(FindAt(0, 0), PointOf(0, 0));
}

TEST(SearchActive, LetsAForeignSideReplaceAPointThatLiesDeeper)
{
    StartScene();
    AddSquare(0, 0, 0.2F, 0);
    AddSquare(-0.1F, -0.1F, 0.2F, 0.1F);
    Project();
    EXPECT_EQ(FindAt(0, 0), SideOf(1));
}

TEST(SearchActive, LetsAForeignSideReplaceAStripeThatLiesDeeper)
{
    StartScene();
    AddSquare(0, 0, 0.2F, 0);
    AddSquare(0, -0.1F, 0.2F, 0.1F);
    Project();
    EXPECT_EQ(FindAt(0.1F, 0), SideOf(1));
}

TEST(SearchActive, KeepsAStripeBeforeAForeignSideAsDeep)
{
    StartScene();
    AddSquare(0, 0, 0.2F, 0.1F);
    AddSquare(0, -0.1F, 0.2F, 0.1F);
    Project();
    EXPECT_EQ(FindAt(0.1F, 0), StripeOf(0));
}

TEST(SearchActive, NeverLetsAStripeReplaceASide)
{
    StartScene();
    AddSquare(-0.2F, -0.2F, 0.4F, 0);
    AddSquare(0.01F, -0.1F, 0.1F, 0.3F); // the mouse is beside it, near its left edge
    Project();
    EXPECT_EQ(FindAt(0, -0.05F), SideOf(0));
}

TEST(SearchActive, KeepsANearerStripeBeforeASideThatComesLater)
{
    StartScene();
    AddSquare(0.01F, -0.1F, 0.1F, 0.3F);
    AddSquare(-0.2F, -0.2F, 0.4F, 0);
    Project();
    EXPECT_EQ(FindAt(0, -0.05F), StripeOf(0));
}

TEST(SearchActive, LetsAPointReplaceASideOnlyWhenItIsNearer)
{
    for (const float depth : {-0.1F, 0.0F, 0.1F}) {
        StartScene();
        AddSquare(-0.2F, -0.2F, 0.4F, 0);
        AddSquare(0.005F, 0.005F, 0.1F, depth); // the mouse is beside it, near its corner
        Project();
        EXPECT_EQ(FindAt(0, 0), depth > 0 ? PointOf(1, 0) : SideOf(0));
    }
}

TEST(SearchActive, LetsAPointReplaceAStripeOnlyWhenItIsNearer)
{
    for (const float depth : {-0.1F, 0.0F, 0.1F}) {
        StartScene();
        AddSquare(-0.1F, 0.005F, 0.2F, 0);
        AddSquare(0.0F, -0.105F, 0.1F, depth); // its upper left corner is near the mouse
        Project();
        EXPECT_EQ(FindAt(0, 0), depth > 0 ? PointOf(1, 3) : StripeOf(0));
    }
}

TEST(SearchActive, LeavesOutPointsBehindTheEye)
{
    StartScene();
    AddSlope(-0.2F, -0.2F, 0.4F, 1.5F);
    Project();
    EXPECT_EQ(FindAt(-0.2F, 0.2F), SideOf(0)); // the corner lies at 1.5
}

TEST(SearchActive, TakesAStripeBehindTheEyeWhenThereIsNothingElse)
{
    StartScene();
    AddSlope(-0.2F, -0.2F, 0.4F, 1.6F);
    Project();
    EXPECT_EQ(FindAt(0, 0.205F), StripeOf(0));
    EXPECT_FLOAT_EQ(mouse[2], 1.6F);
}

TEST(SearchActive, LetsNoStripeBehindTheEyeReplaceAnything)
{
    StartScene();
    AddSquare(-0.1F, 0.21F, 0.2F, 0);
    AddSlope(-0.2F, -0.2F, 0.4F, 1.6F);
    Project();
    EXPECT_EQ(FindAt(0, 0.205F), StripeOf(0));
}

// A face of the background cube over a square of the screen.
static void SetFace(int face, float left, float bottom, float size)
{
    const float right = left + size, top = bottom + size;
    const float corners[4][3] = {
        {left, top, -0.9F}, {left, bottom, -0.9F}, {right, bottom, -0.9F}, {right, top, -0.9F}};
    std::copy_n(&corners[0][0], 12, cubepoints[4 * face]);
    activebgcube[face].active = 1;
}

TEST(SearchActive, FindsBothHalvesOfACubeFaceAtDepthZero)
{
    StartScene();
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
    StartScene();
    SetFace(1, -0.2F, -0.2F, 0.4F);
    SetFace(4, -0.2F, -0.2F, 0.4F);
    SetFace(5, -0.2F, -0.2F, 0.4F);
    activebgcube[5].active = 0; // not drawn
    EXPECT_EQ(FindAt(0, 0), &activebgcube[4]);
}

TEST(SearchActive, FindsCubeFacesOnlyWhileTheCubeIsShown)
{
    StartScene();
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
    StartScene();
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
    StartScene();
    SetFace(0, -0.4F, -0.4F, 0.8F);
    AddSquare(-0.1F, -0.1F, 0.2F, -0.5F); // deeper than the face's 0
    Project();
    EXPECT_EQ(FindAt(0, 0), SideOf(0));
    EXPECT_EQ(FindAt(0.11F, 0), StripeOf(0));
    EXPECT_EQ(FindAt(0.105F, 0.105F), PointOf(0, 2));
    EXPECT_EQ(FindAt(0.2F, 0), &activebgcube[0]);
    EXPECT_EQ(SideOf(0)->hover, 0);
}

TEST(SearchActive, LetsConstructionPointsWinOverEverything)
{
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0.5F);
    Project();
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
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    Project();
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
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    Project();
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
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    Project();
    const OwnedShape other(CopyShape(shapest[0])); // so that the new copy lies elsewhere
    ChangeShape(0);
    TransferAllShape();
    ASSERT_EQ(FindAt(0, 0), SideOf(0));
    EXPECT_EQ(GetSideOfElement(activepointer), &shapest[0]->sides[0]);
}

TEST(SearchActive, LeavesOutShapesThatHaveNoRecordsYet)
{
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    Project();
    AddSquare(0.2F, 0.2F, 0.2F, 0); // an edit before its SetActives
    TransferAllShape();
    EXPECT_EQ(FindAt(0.3F, 0.3F), nullptr);
    EXPECT_EQ(FindAt(0, 0), SideOf(0));
}

TEST(SearchActive, FindsTheElementsOfAnEditedShapeAfterItsSetActives)
{
    StartScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    Project();
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

// Sides through random points. The points lie on a coarse grid, so that many elements meet in one
// place, at one depth, on one line.
static OwnedShape MakeRandomShape(std::mt19937& random, int points, int sides)
{
    std::uniform_int_distribution<int> coordinate(-12, 12), corners(3, 5), any(0, points - 1);
    Points cloud;
    for (int i = 0; i < points; i++) {
        cloud.push_back({float(coordinate(random)) / 32, float(coordinate(random)) / 32,
                         float(coordinate(random) / 4) / 8});
    }
    Outlines outlines;
    for (int i = 0; i < sides; i++) {
        std::set<int> chosen;
        const std::size_t number = std::size_t(corners(random));
        while (chosen.size() < number) {
            chosen.insert(any(random));
        }
        outlines.emplace_back(chosen.begin(), chosen.end());
        std::shuffle(outlines.back().begin(), outlines.back().end(), random);
    }
    return MakeShape(cloud, outlines);
}

static void MakeRandomScene(std::mt19937& random)
{
    StartScene();
    for (int face = 0; face < 6; face++) {
        SetFace(face, -0.4F + 0.1F * float(face), -0.3F, 0.3F);
    }
    const int number = int(random() % 4) + 1;
    for (int i = 0; i < number; i++) {
        const int points = int(random() % 40) + 5;
        AddShape(MakeRandomShape(random, points, int(random() % 30) + 1).release());
        if (random() % 4 == 0) {
            selected[i] = selectedshown; // not marked: no points, no stripes
        }
    }
    Project();
}

static void TurnRandomly(std::mt19937& random)
{
    const float directions[3][3] = {{1, 0, 0}, {0.6F, 0, 0.8F}, {0.36F, 0.48F, 0.8F}};
    VectorRotate(reinterpret_cast<float(*)[3]>(mainview.rotation), directions[random() % 3],
                 directions[random() % 3]);
    mainview.perspective = int8_t(random() % 2 == 0 ? 0 : fadedone);
    mainview.scale = random() % 2 == 0 ? 1.0F : 1.25F;
    mainview.linesfade = random() % 8 == 0 ? 0 : fadefull;
    mainview.sidesfade = random() % 8 == 0 ? 0 : fadefull;
    TransferAllShape();
    ChangeActives();
}

static void ExpectPlainAnswerAt(float x, float y, std::array<int, 6>& counts)
{
    mouse[0] = x;
    mouse[1] = y;
    mouse[2] = 0;
    const PlainSearch plain = SearchPlainly();
    SearchActive();
    ASSERT_EQ(activepointer, plain.found) << x << " " << y;
    if (plain.found == nullptr) {
        counts[5]++;
        return;
    }
    ASSERT_EQ(mouse[2], plain.place[2]) << x << " " << y;
    ASSERT_TRUE(std::equal(plain.place.begin(), plain.place.end(), activepointer->position));
    ASSERT_EQ(activepointer->hover, 1);
    counts[std::size_t(plain.found->type)]++;
}

TEST(SearchActive, AgreesWithAPlainLoopOverEveryElement)
{
    std::array<int, 6> counts = {}; // by type, and of places without any
    std::mt19937 random(11);
    for (int scene = 0; scene < 12; scene++) {
        MakeRandomScene(random);
        for (int view = 0; view < 5; view++) {
            for (int i = 0; i < 21 * 21; i++) { // places of the points' grid, and between them
                const float step = view % 2 == 0 ? 1.0F / 32 : 0.049F;
                ExpectPlainAnswerAt(float(i % 21 - 10) * step, float(i / 21 - 10) * step, counts);
            }
            TurnRandomly(random);
        }
    }
    EXPECT_GT(counts[ELEMENT_CUBEFACE], 100);
    EXPECT_GT(counts[ELEMENT_POINT], 100);
    EXPECT_GT(counts[ELEMENT_STRIPE], 100);
    EXPECT_GT(counts[ELEMENT_SIDE], 100);
    EXPECT_GT(counts[5], 100);
}

TEST(SearchActive, AgreesWithAPlainLoopDuringAConstruction)
{
    std::array<int, 6> counts = {};
    std::mt19937 random(12);
    for (int scene = 0; scene < 6; scene++) {
        MakeRandomScene(random);
        SetActivesOff();
        newsign = 1;
        keyspace = char(scene % 2);
        for (int k = 0; k < activepointnumber; k += 3) {
            activepoints[k].active = 1;
        }
        float points[3][3] = {{0, 0, 0}, {0.125F, 0, 0.5F}, {0.13F, 0, -0.5F}};
        newpointnumber = 3;
        for (float* point : points) {
            AppendActivePoint(point, 1);
        }
        for (int i = 0; i < 21 * 21; i++) {
            ExpectPlainAnswerAt(float(i % 21 - 10) / 32, float(i / 21 - 10) / 32, counts);
        }
    }
    EXPECT_GT(counts[ELEMENT_POINT], 10);
    EXPECT_GT(counts[ELEMENT_SIDE], 10);
}

} // namespace korvane
