#include "geometry/newpoints.h"

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "geometry/editing.h"
#include "scene/scenefile.h"
#include "scene/treeview.h"
#include "scene/undo.h"
#include "scene/undorecord.h"
#include "tests/support/constructionscene.h"
#include "tests/support/invariants.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/navigation.h"
#include "view/picking.h"

#include <gmock/gmock.h>
#include <gtk/gtk.h>

namespace korvane
{

using namespace korvane::testing;
using ::testing::FloatNear;
using ::testing::Pointwise;

using Place = std::array<float, 3>;

static void PressButton(bool down)
{
    gtk_toggle_tool_button_set_active(GTK_TOGGLE_TOOL_BUTTON(toolbutton_news), down ? TRUE : FALSE);
}

static bool IsButtonDown()
{
    return gtk_toggle_tool_button_get_active(GTK_TOGGLE_TOOL_BUTTON(toolbutton_news)) != FALSE;
}

static void ExpectPlace(const Place& actual, const Place& expected)
{
    EXPECT_THAT(actual, Pointwise(FloatNear(1e-6F), expected));
}

static Place NewPoint(int index)
{
    return {newpoints[index][0], newpoints[index][1], newpoints[index][2]};
}

class NewPoints : public ConstructionScene
{
protected:
    static void ClickAt(float x, float y)
    {
        PointAt(x, y);
        Put(CLICK_ADD);
    }

    static void Put(int action)
    {
        PutNewPoints(action);
        EXPECT_EQ(FindBrokenRule(), "");
    }

    // As the input does with a click on a point while no tool is on.
    static void StartSideAt(float x, float y)
    {
        newsign = 1;
        ClickAt(x, y);
    }

    // The corners 0 to 3 run round from the lower left.
    static int AddFlatSquare(float z = 0)
    {
        return AddProjected(MakeFlatShape(
            {{-0.2F, -0.2F, z}, {0.2F, -0.2F, z}, {0.2F, 0.2F, z}, {-0.2F, 0.2F, z}}));
    }
};

TEST_F(NewPoints, MakeATriangleWhenClosedOnTheFirstOfThree)
{
    PressButton(true);
    ClickAt(0, 0);
    ClickAt(0.2F, 0);
    ClickAt(0, 0.3F);
    EXPECT_EQ(shapenumber, 0);
    ClickAt(0.003F, 0); // near enough to the first
    ASSERT_EQ(shapenumber, 1);
    const Shape* shape = shapes[0];
    ASSERT_EQ(shape->pointnumber, 3);
    ExpectPlace(PlaceOf(shape, 0), {0, 0, 0});
    ExpectPlace(PlaceOf(shape, 1), {0.2F, 0, 0});
    ExpectPlace(PlaceOf(shape, 2), {0, 0.3F, 0});
    ASSERT_EQ(treeiternumber, 2);
    EXPECT_STREQ(treeiters[1].name, "shape");
    EXPECT_EQ(treeselectednumber, 1);
    EXPECT_FALSE(IsButtonDown());
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_EQ(GetMarksOfShape(0), "111");
}

TEST_F(NewPoints, BecomePickableTwoPlacesBack)
{
    PressButton(true);
    const char* const marks[] = {"0", "00", "100", "1100", "11100"};
    for (int i = 0; i < 5; i++) {
        ClickAt(0.1F * float(i) - 0.3F, 0.1F);
        EXPECT_EQ(GetMarks(), marks[i]);
    }
}

TEST_F(NewPoints, LoseTheirMarksAgainWhenTakenBack)
{
    PressButton(true);
    for (int i = 0; i < 5; i++) {
        ClickAt(0.1F * float(i) - 0.3F, 0.1F);
    }
    for (const char* marks : {"1100", "100", "00", "0"}) {
        Put(CLICK_TAKEBACK);
        EXPECT_EQ(GetMarks(), marks);
    }
    EXPECT_EQ(newsign, 1);
    Put(CLICK_TAKEBACK);
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_TRUE(IsButtonDown()); // only the points are gone
}

TEST_F(NewPoints, CannotBeClosedOnThePointBefore)
{
    PressButton(true);
    ClickAt(0, 0);
    ClickAt(0.2F, 0);
    ClickAt(0, 0.3F);
    ClickAt(0.2F, 0); // the second cannot be picked yet: a point on top of it
    EXPECT_EQ(shapenumber, 0);
    ASSERT_EQ(newpointnumber, 4);
    ExpectPlace(NewPoint(3), {0.2F, 0, 0});
    EXPECT_EQ(GetMarks(), "1100");
}

TEST_F(NewPoints, LeaveOutThoseBeforeTheOneOnWhichTheyAreClosed)
{
    PressButton(true);
    const Place places[] = {
        {-0.4F, 0, 0}, {-0.3F, 0.1F, 0}, {0, 0, 0}, {0.3F, 0, 0}, {0.2F, 0.3F, 0}};
    for (const Place& place : places) {
        ClickAt(place[0], place[1]);
    }
    ClickAt(0, 0); // the sixth click, on the third point
    ASSERT_EQ(shapenumber, 1);
    ASSERT_EQ(shapes[0]->pointnumber, 3);
    for (int i = 0; i < 3; i++) {
        ExpectPlace(PlaceOf(shapes[0], i), places[2 + i]);
    }
}

TEST_F(NewPoints, LieWhereTheGridPutsTheClick)
{
    PressButton(true);
    PointAt(0.113F, 0.087F);
    gmouse[0] = gmouse[1] = 0.1F;
    Put(CLICK_ADD);
    ExpectPlace(NewPoint(0), {0.1F, 0.1F, 0});
}

TEST_F(NewPoints, LieAtTheScreenWhateverTheCamera)
{
    mainview.scale = 2;
    mainview.center[2] = 3;
    mainview.perspective = fadedone;
    PressButton(true);
    ClickAt(0.3F, 0.1F);
    ExpectPlace(NewPoint(0), {0.15F, 0.05F, 3});
}

// Seen from the side, depth is the opposite of the world's x, and the screen's x its z.
TEST_F(NewPoints, TakeTheDepthOfTheLastOneAfterATurn)
{
    PressButton(true);
    ClickAt(0, 0);
    ClickAt(0.3F, 0.1F);
    TurnToTheSide();
    ClickAt(0.2F, 0.2F);
    ExpectPlace(NewPoint(2), {0.3F, 0.2F, 0.2F});
    ClickAt(0.1F, 0.4F); // as long as the view is not turned again
    ExpectPlace(NewPoint(3), {0.3F, 0.4F, 0.1F});
}

// The view turns about depth 0, from which the second corner is 0.3 away: zoomed twice, 0.6.
TEST_F(NewPoints, StayInOnePlaneWhenTheViewIsZoomed)
{
    PressButton(true);
    ClickAt(0, 0);
    ClickAt(0.3F, 0.1F);
    TurnToTheSide();
    ClickAt(0.2F, 0.2F);
    mainview.scale = 2;
    RefreshView();
    ClickAt(0.2F, 0.6F);
    ExpectPlace(NewPoint(3), {0.3F, 0.3F, 0.1F});
    Put(CLICK_TAKEBACK);
    mainview.scale = 1;
    RefreshView();
    ClickAt(0.1F, 0.4F);
    ExpectPlace(NewPoint(3), {0.3F, 0.4F, 0.1F});
}

TEST_F(NewPoints, OfASideStayAsDeepAsItsStartWhenTheViewIsMovedBack)
{
    AddFlatSquare(0.2F);
    StartSideAt(0.2F, 0.2F);
    ChangePosition(0, 0, 0, 0, 0, -0.5F); // the start shows at -0.3 now
    ClickAt(0.1F, 0);
    ExpectPlace(NewPoint(1), {0.1F, 0, 0.2F});
}

TEST_F(NewPoints, GetDepthsBetweenTheFixedOneAndTheLast)
{
    PressButton(true);
    ClickAt(0, 0);
    ClickAt(0.4F, 0.1F);
    TurnToTheSide(); // now one lies above the other, at the depths 0 and -0.4
    ClickAt(0.2F, 0.075F);
    ClickAt(0.2F, 0.05F);
    ClickAt(0, 0);
    ASSERT_EQ(shapenumber, 1);
    const Shape* shape = shapes[0];
    ASSERT_EQ(shape->pointnumber, 4);
    ExpectPlace(PlaceOf(shape, 0), {0, 0, 0});
    ExpectPlace(PlaceOf(shape, 1), {0.4F, 0.1F, 0});
    ExpectPlace(PlaceOf(shape, 2), {0.3F, 0.075F, 0.2F}); // a quarter of the way down
    ExpectPlace(PlaceOf(shape, 3), {0.2F, 0.05F, 0.2F});
}

TEST_F(NewPoints, GoBackToTheDepthOfTheLastOneThatStays)
{
    PressButton(true);
    ClickAt(0, 0);
    ClickAt(0.3F, 0.1F);
    TurnToTheSide();
    ClickAt(0.2F, 0.2F);
    Put(CLICK_TAKEBACK); // the fixed point is the last one now
    Put(CLICK_TAKEBACK); // and gone
    ClickAt(0.2F, 0.2F);
    ExpectPlace(NewPoint(1), {0, 0.2F, 0.2F}); // at the depth of the first
}

TEST_F(NewPoints, SaveTheSceneOnceForUndo)
{
    PressButton(true);
    const int before = pindex;
    for (int i = 0; i < 4; i++) {
        ClickAt(0.1F * float(i) - 0.3F, 0.1F);
        EXPECT_EQ(pindex, before + 1);
    }
    EXPECT_EQ(puffer[before].kind, UNDO_SCENE);
}

TEST_F(NewPoints, CountAClickOnAnythingElseAsEmptySpace)
{
    AddFlatSquare();
    PressButton(true);
    ClickAt(-0.4F, 0);
    MakeAllPickable();
    ClickAt(0, 0);
    ASSERT_NE(activepointer, nullptr);
    EXPECT_EQ(newpointnumber, 2);
    ClickAt(0.2F, 0.2F); // a corner of the square
    EXPECT_EQ(newpointnumber, 3);
    EXPECT_EQ(shapenumber, 1);
    ClickAt(0, 0.2F); // its border
    EXPECT_EQ(newpointnumber, 4);
    ClickAt(-0.4F, 0);
    EXPECT_EQ(shapenumber, 2);
}

TEST_F(NewPoints, MakeNothingOfFewerThanThree)
{
    PressButton(true);
    ClickAt(-0.4F, 0);
    ClickAt(0, 0);
    GetNewPointRecords()[0].active = 1;
    ClickAt(-0.4F, 0);
    EXPECT_EQ(shapenumber, 0);
    EXPECT_EQ(newsign, 0);
    EXPECT_FALSE(IsButtonDown());
}

TEST_F(NewPoints, DoNothingWhenThereIsNoneToTakeBack)
{
    PressButton(true);
    Put(CLICK_TAKEBACK);
    EXPECT_EQ(newsign, 1);
}

TEST_F(NewPoints, AreGivenUpByTheRightButton)
{
    AddFlatSquare();
    PressButton(true);
    ClickAt(-0.4F, 0);
    ClickAt(0.4F, 0);
    EXPECT_EQ(GetMarksOfShape(0), "0000");
    Put(CLICK_FINISH);
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_EQ(shapenumber, 1);
    EXPECT_EQ(GetMarksOfShape(0), "1111");
}

TEST_F(NewPoints, StartANewSideOnAPointOfAShape)
{
    AddFlatSquare();
    const int other = AddProjected(CubeOfHalfEdge(0.1F));
    const int before = pindex;
    StartSideAt(-0.2F, -0.2F);
    ASSERT_EQ(newpointnumber, 1);
    ExpectPlace(NewPoint(0), {-0.2F, -0.2F, 0});
    EXPECT_EQ(GetMarks(), "0");
    EXPECT_EQ(activepointer, nullptr);     // the side cannot end where it starts
    EXPECT_EQ(GetMarksOfShape(0), "0010"); // across the square
    EXPECT_EQ(GetMarksOfShape(other), "00000000");
    EXPECT_EQ(activesides[0].active, 0);
    EXPECT_EQ(activestripes[0].active, 0);
    EXPECT_EQ(pindex, before + 1);
    EXPECT_EQ(puffer[before].kind, UNDO_SHAPE);
    EXPECT_EQ(puffer[before].shapeindex, 0);
}

TEST_F(NewPoints, MayEndANewSideOnANeighbourOnceThereIsAPointBetween)
{
    AddFlatSquare();
    StartSideAt(-0.2F, -0.2F);
    ClickAt(0, 0.1F);
    EXPECT_EQ(GetMarksOfShape(0), "0111");
    ClickAt(0.1F, 0.1F);
    EXPECT_EQ(GetMarksOfShape(0), "0111");
    EXPECT_EQ(GetMarks(), "000");
    Put(CLICK_TAKEBACK);
    EXPECT_EQ(GetMarksOfShape(0), "0111");
    Put(CLICK_TAKEBACK);
    EXPECT_EQ(GetMarksOfShape(0), "0010");
    Put(CLICK_TAKEBACK);
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(GetMarksOfShape(0), "1111");
}

// Corner 0 of the cube shares a side, but no edge, with the far corners of the three squares that
// meet in it, and nothing with the opposite corner of the cube.
TEST_F(NewPoints, MayEndANewSideOnAnySideRoundItsStart)
{
    AddProjected(CubeOfHalfEdge(0.2F));
    const auto differences = [](int point) {
        int number = 0;
        for (int k = 0; k < 3; k++) {
            number += shapes[0]->points[point][k] != shapes[0]->points[0][k] ? 1 : 0;
        }
        return number;
    };
    TurnToTheSide(); // whatever is in front: corner 0 is put under the pointer by hand
    newsign = 1;
    activepointer = &activepoints[0];
    Put(CLICK_ADD);
    for (int i = 0; i < 8; i++) {
        EXPECT_EQ(activepoints[i].active != 0, differences(i) == 2) << i;
    }
    ClickAt(0.4F, 0.4F);
    for (int i = 0; i < 8; i++) {
        EXPECT_EQ(activepoints[i].active != 0, differences(i) == 1 || differences(i) == 2) << i;
    }
}

TEST_F(NewPoints, RaiseAFlatShape)
{
    AddFlatSquare();
    StartSideAt(-0.2F, -0.2F);
    ClickAt(0, 0.1F);
    ClickAt(0.2F, 0.2F);
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_EQ(shapes[0]->sidenumber, 3);
    EXPECT_EQ(shapes[0]->pointnumber, 5);
    EXPECT_EQ(FindBrokenRuleOfClosedBody(*shapes[0]), "");
    EXPECT_EQ(treeiters[1].type, NODE_SHAPE);
    EXPECT_EQ(GetMarksOfShape(0), "11111");
}

TEST_F(NewPoints, CutASideOfABody)
{
    AddProjected(CubeOfHalfEdge(0.2F)); // its front square is the +z side
    StartSideAt(-0.2F, -0.2F);
    ClickAt(0.1F, 0);
    ClickAt(0.2F, 0.2F);
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(shapes[0]->sidenumber, 7);
    EXPECT_EQ(shapes[0]->pointnumber, 9);
    ExpectPlace(PlaceOf(shapes[0], 8), {0.1F, 0, 0.2F});
    EXPECT_EQ(FindBrokenRuleOfClosedBody(*shapes[0]), "");
}

TEST_F(NewPoints, CutASideOfTheShapeOnWhichTheyStartInTheOrderOfTheClicks)
{
    AddProjected(MakeFlatShape({{0.3F, 0.3F, 0}, {0.4F, 0.3F, 0}, {0.4F, 0.4F, 0}}));
    const int body = AddProjected(CubeOfHalfEdge(0.2F)); // 4 is at the lower left in front
    StartSideAt(-0.2F, -0.2F);
    EXPECT_EQ(puffer[pindex - 1].shapeindex, body);
    EXPECT_EQ(GetMarksOfShape(0), "000");
    ClickAt(-0.1F, 0);
    EXPECT_EQ(GetMarksOfShape(0), "000");
    ClickAt(0.1F, 0);
    ClickAt(0.2F, 0.2F);
    EXPECT_EQ(shapes[0]->sidenumber, 1);
    EXPECT_EQ(StripesOf(*shapes[body]).back(), (std::vector<int>{4, 8, 9, 6}));
    ExpectPlace(PlaceOf(shapes[body], 8), {-0.1F, 0, 0.2F});
    ExpectPlace(PlaceOf(shapes[body], 9), {0.1F, 0, 0.2F});
}

TEST_F(NewPoints, StartANewSideAtTheDepthOfItsPoint)
{
    AddFlatSquare(0.3F);
    StartSideAt(-0.2F, -0.2F);
    ClickAt(0.1F, 0);
    ExpectPlace(NewPoint(1), {0.1F, 0, 0.3F});
}

// The line from (-0.2, -0.2) at depth -0.1 to (0.2, 0.2) at depth 0.3: from (0.1, -0.1) the
// perpendicular meets it in the middle.
TEST_F(NewPoints, GiveANewSideTheDepthsBetweenItsEnds)
{
    AddProjected(MakeFlatShape(
        {{-0.2F, -0.2F, -0.1F}, {0.2F, -0.2F, 0.1F}, {0.2F, 0.2F, 0.3F}, {-0.2F, 0.2F, 0.1F}}));
    StartSideAt(-0.2F, -0.2F);
    ClickAt(0.1F, -0.1F);
    ClickAt(0.2F, 0.2F);
    ASSERT_EQ(shapes[0]->pointnumber, 5);
    ExpectPlace(PlaceOf(shapes[0], 4), {0.1F, -0.1F, 0.1F});
}

TEST_F(NewPoints, RunNoNewSideStraightAlongAnEdge)
{
    AddFlatSquare();
    StartSideAt(-0.2F, -0.2F);
    MakeAllPickable();
    ClickAt(0.2F, -0.2F);
    EXPECT_EQ(newpointnumber, 2);
    EXPECT_EQ(shapes[0]->sidenumber, 1);
}

TEST_F(NewPoints, RunNoSecondNewSideStraightAcross)
{
    AddFlatSquare();
    StartSideAt(-0.2F, -0.2F);
    ClickAt(0.2F, 0.2F);
    ASSERT_EQ(shapes[0]->sidenumber, 3); // the square with two triangles on its back
    StartSideAt(-0.2F, -0.2F);
    EXPECT_EQ(GetMarksOfShape(0), "0000"); // the corner across shares an edge with it now
    ClickAt(0, 0.1F);
    EXPECT_EQ(GetMarksOfShape(0), "0111");
}

TEST_F(NewPoints, EndNoNewSideOnAnotherShape)
{
    AddFlatSquare();
    AddProjected(MakeFlatShape({{0.3F, 0.3F, 0}, {0.4F, 0.3F, 0}, {0.4F, 0.4F, 0}}));
    StartSideAt(-0.2F, -0.2F);
    ClickAt(0, 0.1F);
    MakeAllPickable();
    ClickAt(0.4F, 0.4F); // its third, as the one across the square
    EXPECT_EQ(newpointnumber, 3);
    EXPECT_EQ(newsign, 1);
}

TEST_F(NewPoints, KeepTheirMarksWhenAPointOfTheShapeIsDragged)
{
    AddFlatSquare();
    StartSideAt(-0.2F, -0.2F);
    PointMove(2, 0.3F, 0.25F, 1);
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(GetMarksOfShape(0), "0010");
    EXPECT_EQ(activesides[0].active, 0);
    ClickAt(0, 0.1F);
    PointMove(2, 0.3F, 0.3F, 0);
    EXPECT_EQ(GetMarksOfShape(0), "0111");
    ClickAt(0.3F, 0.3F);
    EXPECT_EQ(shapes[0]->sidenumber, 3);
}

TEST_F(NewPoints, MayBeginAnewAfterASide)
{
    AddFlatSquare();
    StartSideAt(-0.2F, -0.2F);
    ClickAt(0, 0.1F);
    ClickAt(0.2F, 0.2F);
    PressButton(true);
    for (const Place& place : {Place{0.3F, 0, 0}, Place{0.4F, 0, 0}, Place{0.4F, 0.1F, 0}}) {
        ClickAt(place[0], place[1]);
    }
    EXPECT_EQ(GetMarks(), "100");
    ClickAt(0.3F, 0);
    EXPECT_EQ(shapenumber, 2);
}

TEST_F(NewPoints, AreForgottenWithTheirScene)
{
    PressButton(true);
    ClickAt(0.1F, 0.1F);
    ClickAt(0.2F, 0.1F);
    New();
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_EQ(activepointer, nullptr);
    EXPECT_FALSE(IsButtonDown());
}

using NewShapeTool = NewPoints;

TEST_F(NewShapeTool, MakesNothingElsePickable)
{
    AddFlatSquare();
    PointAt(0, 0);
    ASSERT_EQ(activepointer, &activesides[0]);
    rdstate = 0;
    PressButton(true);
    EXPECT_EQ(newsign, 1);
    EXPECT_EQ(activepointer, nullptr);
    EXPECT_EQ(GetMarksOfShape(0), "0000");
    EXPECT_EQ(rdstate, redrawwanted);
    rdstate = 0;
    PressButton(false);
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(activepointer, &activesides[0]);
    EXPECT_EQ(GetMarksOfShape(0), "1111");
    EXPECT_EQ(rdstate, redrawwanted);
}

TEST_F(NewShapeTool, GivesUpAPolygonWhenItsButtonIsLetGo)
{
    PressButton(true);
    ClickAt(0, 0);
    ClickAt(0.2F, 0);
    PressButton(false);
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_EQ(newsign, 0);
}

TEST_F(NewShapeTool, GivesUpASideWhenItStarts)
{
    AddFlatSquare();
    StartSideAt(-0.2F, -0.2F);
    ClickAt(0, 0.1F);
    PressButton(true);
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(newsign, 1);
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_EQ(GetMarksOfShape(0), "0000");
}

TEST_F(NewShapeTool, StartsFromTheMenusWithItsButtonUpOrDown)
{
    MenuNewShape();
    EXPECT_TRUE(IsButtonDown());
    EXPECT_EQ(newsign, 1);
    ClickAt(0, 0);
    Put(CLICK_TAKEBACK);
    ASSERT_EQ(newsign, 0);
    ASSERT_TRUE(IsButtonDown());
    NewShapeFromMenu(nullptr, toolbutton_news);
    EXPECT_TRUE(IsButtonDown());
    EXPECT_EQ(newsign, 1);
}

} // namespace korvane
