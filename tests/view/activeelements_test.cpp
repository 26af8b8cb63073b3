#include "view/activeelements.h"

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "scene/model.h"
#include "tests/support/pickscene.h"
#include "tests/support/shapes.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtest/gtest.h>

namespace korvane
{

using namespace korvane::testing;

TEST(SetActives, MakesARecordForEveryElementInSceneOrder)
{
    StartPickScene();
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
    StartPickScene();
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
    StartPickScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    ProjectAndPick();
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
    StartPickScene();
    SetActives();
    EXPECT_EQ(activepointnumber, 0);
    EXPECT_EQ(activestripenumber, 0);
    EXPECT_EQ(activesidenumber, 0);
    EXPECT_EQ(FindAt(0, 0), nullptr);
}

TEST(SetActives, KeepsTheRecordsOfAConstructionAtTheEnd)
{
    StartPickScene();
    AddSquare(0, 0, 0.2F, 0);
    ProjectAndPick();
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

TEST(SetActives, KeepsWhatAConstructionLetsBePicked)
{
    StartPickScene();
    AddSquare(0, 0, 0.2F, 0);
    ProjectAndPick();
    for (char* const sign : {&newsign, &duplicatesign}) {
        *sign = 1;
        SetActivesOff();
        activepoints[2].active = 1;
        activestripes[0].active = 1;
        SetActives();
        for (int k = 0; k < 4; k++) {
            EXPECT_EQ(PointOf(0, k)->active, k == 2 ? 1 : 0);
        }
        EXPECT_EQ(StripeOf(0)->active, 1);
        EXPECT_EQ(SideOf(0)->active, 0);
        *sign = 0;
    }
    SetActives();
    EXPECT_EQ(SideOf(0)->active, 1);
}

TEST(SetActives, DropsTheRecordsOfAConstructionThatHasEnded)
{
    StartPickScene();
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
    StartPickScene();
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
    StartPickScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    ProjectAndPick();
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
    StartPickScene();
    AddSquare(-0.1F, -0.1F, 0.2F, 0);
    ProjectAndPick();
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
    StartPickScene();
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
    StartPickScene();
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
    StartPickScene();
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

} // namespace korvane
