#include "geometry/construction.h"

#include "geometry/duplication.h"
#include "tests/support/pickscene.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtest/gtest.h>

namespace korvane
{

using namespace korvane::testing;

// Two centres and three points over a scene with one square, whose points are the first four
// records.
class Construction : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartPickScene();
        AddSquare(-0.1F, -0.1F, 0.2F, 0);
        ProjectAndPick();
    }

    void TearDown() override
    {
        DelNewPoints();
        StartPickScene();
    }

    static void AddCenters()
    {
        const float centers[2][3] = {{-0.3F, 0.3F, 0}, {-0.2F, 0.3F, 0}};
        AddCenterPoints(centers, 2);
    }

    static void AddPoints(int number)
    {
        const float places[5][3] = {
            {0.3F, 0, 0}, {0.3F, 0.1F, 0.1F}, {0.3F, 0.2F, 0.2F}, {0.3F, 0.3F, 0}, {0.3F, 0.4F, 0}};
        for (int i = 0; i < number; i++) {
            AddNewPoint(places[i]);
        }
    }

    static bool AreRecordsInStep()
    {
        for (int i = 0; i < centernumber; i++) {
            if (GetPointOfElement(&activepoints[4 + i]) != rcenterpoints[i]) {
                return false;
            }
        }
        for (int i = 0; i < newpointnumber; i++) {
            if (GetPointOfElement(&activepoints[4 + centernumber + i]) != rotated[i]) {
                return false;
            }
        }
        return activepointnumber == 4 + centernumber + newpointnumber;
    }
};

TEST_F(Construction, AppendsARecordThatCannotBePickedForEveryPoint)
{
    AddCenters();
    AddPoints(5);
    EXPECT_TRUE(AreRecordsInStep());
    for (int k = 4; k < activepointnumber; k++) {
        EXPECT_EQ(activepoints[k].type, ELEMENT_POINT);
        EXPECT_EQ(activepoints[k].active, 0);
    }
    EXPECT_EQ(GetCenterRecords(), activepoints + 4);
    EXPECT_EQ(GetNewPointRecords(), activepoints + 6);
}

TEST_F(Construction, TakesPointsFromTheViewToTheWorld)
{
    mainview.scale = 2;
    mainview.center[0] = 1;
    AddPoints(2);
    EXPECT_FLOAT_EQ(rotated[1][1], 0.1F);
    EXPECT_FLOAT_EQ(newpoints[1][0], 1.15F); // 0.3 / 2 + 1
    EXPECT_FLOAT_EQ(newpoints[1][1], 0.05F);
    EXPECT_FLOAT_EQ(newpoints[1][2], 0.05F);
}

TEST_F(Construction, KeepsThePointerOnItsRecordWhenTheListGrows)
{
    AddPoints(1);
    GetNewPointRecords()[0].active = 1;
    FindAt(0.3F, 0);
    ASSERT_EQ(GetPickedNewPoint(), 0);
    for (int i = 0; i < 60; i++) { // far enough for the list to move
        AddNewPoint(activepointer->position);
        ASSERT_EQ(activepointer, &activepoints[4]);
        ASSERT_EQ(GetPickedNewPoint(), 0);
    }
    EXPECT_TRUE(AreRecordsInStep());
}

TEST_F(Construction, AnswersWhatIsPicked)
{
    AddCenters();
    AddPoints(2);
    for (int k = 4; k < activepointnumber; k++) {
        activepoints[k].active = 1;
    }
    FindAt(0.1F, 0.1F); // a corner of the square
    ASSERT_EQ(activepointer, PointOf(0, 2));
    EXPECT_EQ(GetPickedNewPoint(), -1);
    EXPECT_EQ(GetPickedCenter(), -1);
    FindAt(0.3F, 0.1F);
    EXPECT_EQ(GetPickedNewPoint(), 1);
    EXPECT_EQ(GetPickedCenter(), -1);
    FindAt(-0.2F, 0.3F);
    EXPECT_EQ(GetPickedNewPoint(), -1);
    EXPECT_EQ(GetPickedCenter(), 1);
    FindAt(0, 0);
    ASSERT_EQ(activepointer, SideOf(0));
    EXPECT_EQ(GetPickedNewPoint(), -1);
    FindAt(0.4F, -0.4F);
    EXPECT_EQ(GetPickedCenter(), -1);
}

TEST_F(Construction, FollowsTheCamera)
{
    AddCenters();
    AddPoints(1);
    GetNewPointRecords()[0].active = 1;
    mainview.scale = 0.5F;
    TransferAllShape();
    EXPECT_FLOAT_EQ(rotated[0][0], 0.15F);
    EXPECT_FLOAT_EQ(rcenterpoints[0][1], 0.15F);
    FindAt(0.15F, 0);
    EXPECT_EQ(GetPickedNewPoint(), 0);
}

// On the screen the line runs from (0.3, 0) up to (0.3, 0.4) and back to the first point, seen
// twice as large as it is.
TEST_F(Construction, ClosesTheLineOnThePointUnderThePointer)
{
    mainview.scale = 2;
    TransferAllShape();
    AddPoints(5);
    GetNewPointRecords()[3].active = 1;
    FindAt(0.3F, 0.3F);
    rotated[3][2] = 0.6F;
    CloseLine(0);
    ASSERT_EQ(newpointnumber, 6);
    EXPECT_EQ(GetPickedNewPoint(), 3);
    EXPECT_TRUE(AreRecordsInStep());
    EXPECT_FLOAT_EQ(newpoints[5][1], 0.15F);
    EXPECT_FLOAT_EQ(newpoints[5][2], 0.3F);
    EXPECT_FLOAT_EQ(newpoints[0][2], 0.0F);
    EXPECT_FLOAT_EQ(newpoints[1][2], 0.1F); // a third of the way up
    EXPECT_FLOAT_EQ(newpoints[2][2], 0.2F);
    EXPECT_FLOAT_EQ(newpoints[4][2], 0.4F); // beyond
    EXPECT_FLOAT_EQ(newpoints[4][1], 0.2F);
}

TEST_F(Construction, KeepsTheDepthsBeforeTheFixedPoint)
{
    AddPoints(5);
    GetNewPointRecords()[0].active = 1;
    FindAt(0.3F, 0);
    CloseLine(2);
    EXPECT_FLOAT_EQ(newpoints[1][2], 0.1F);
    EXPECT_FLOAT_EQ(newpoints[2][2], 0.2F);
    EXPECT_FLOAT_EQ(newpoints[3][2], 0.3F); // from 0.2 at height 0.2 to 0 at height 0
    EXPECT_FLOAT_EQ(newpoints[4][2], 0.4F);
    EXPECT_FLOAT_EQ(newpoints[5][2], 0.0F);
}

TEST_F(Construction, DropsTheLastPointWithItsRecord)
{
    AddCenters();
    AddPoints(3);
    DropNewPoint();
    EXPECT_EQ(newpointnumber, 2);
    EXPECT_TRUE(AreRecordsInStep());
    AddPoints(1);
    EXPECT_EQ(newpointnumber, 3);
    EXPECT_EQ(rotated[2][1], 0.0F);
    EXPECT_TRUE(AreRecordsInStep());
}

TEST_F(Construction, SurvivesNewRecordsOfTheShapes)
{
    AddCenters();
    AddPoints(2);
    GetNewPointRecords()[1].active = 1;
    SetActives();
    EXPECT_TRUE(AreRecordsInStep());
    EXPECT_EQ(activepoints[7].active, 1);
}

TEST_F(Construction, EndsWithoutARest)
{
    for (char* const sign : {&newsign, &duplicatesign}) {
        SetActivesOff();
        *sign = 1;
        AddCenters();
        AddPoints(2);
        GetNewPointRecords()[1].active = 1;
        FindAt(0.3F, 0.1F);
        ASSERT_NE(activepointer, nullptr);
        mouse[0] = mouse[1] = 0; // over the square's side
        buttonpresspointactive = activepointnumber - 1;
        DelNewPoints();
        EXPECT_EQ(buttonpresspointactive, -1);
        EXPECT_EQ(newsign, 0);
        EXPECT_EQ(duplicatesign, 0);
        EXPECT_EQ(newpointnumber, 0);
        EXPECT_EQ(newpoints, nullptr);
        EXPECT_EQ(rotated, nullptr);
        EXPECT_EQ(centernumber, 0);
        EXPECT_EQ(centerpoints, nullptr);
        EXPECT_EQ(rcenterpoints, nullptr);
        EXPECT_EQ(activepointnumber, 4);
        EXPECT_EQ(PointOf(0, 0)->active, 1);
        EXPECT_EQ(activepointer, SideOf(0));
    }
}

TEST_F(Construction, EndsAlsoBeforeTheFirstPoint)
{
    SetActivesOff();
    newsign = 1;
    DelNewPoints();
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(activepointnumber, 4);
    EXPECT_EQ(SideOf(0)->active, 1);
}

TEST_F(Construction, LeavesNothingUnderThePointerWhileAToolWaits)
{
    newsign = 1;
    AddPoints(1);
    GetNewPointRecords()[0].active = 1;
    FindAt(0.3F, 0);
    ASSERT_EQ(GetPickedNewPoint(), 0);
    mainview.action = 4;
    DelNewPoints();
    EXPECT_EQ(activepointer, nullptr);
}

} // namespace korvane
