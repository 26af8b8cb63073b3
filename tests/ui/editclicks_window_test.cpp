// Points and stripes edited with the pointer and the context menus.
#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "geometry/marks.h"
#include "scene/model.h"
#include "scene/undo.h"
#include "tests/support/camera.h"
#include "tests/support/edits.h"
#include "tests/support/invariants.h"
#include "tests/support/pointer.h"
#include "ui/viewmenus.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

namespace korvane::testing
{

using Chain = std::vector<int>;

// A square with corners at 0.3 and -0.3: on the screen from (260, 640) to (740, 160).
class EditClicks : public PointerTest
{
protected:
    void SetUp() override
    {
        PointerTest::SetUp();
        ForgetPressedElements();
        AddToView(MakeFlatShape(
            {{-0.3F, -0.3F, 0}, {0.3F, -0.3F, 0}, {0.3F, 0.3F, 0}, {-0.3F, 0.3F, 0}}));
        rdstate = 0;
    }

    void TearDown() override
    {
        EXPECT_EQ(FindBrokenRule(), "");
    }

    static const float* GetPoint(int point)
    {
        return shapes[0]->points[point];
    }
};

TEST_F(EditClicks, InsertAPointIntoAnEdge)
{
    Click(left, 420, 640); // 0.1 left of the middle of the lower edge
    ASSERT_EQ(OutlinesOf(*shapes[0]), (Outlines{{0, 4, 1, 2, 3}}));
    EXPECT_NEAR(GetPoint(4)[0], -0.1F, 1e-6);
    EXPECT_NEAR(GetPoint(4)[1], -0.3F, 1e-6);
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
    EXPECT_EQ(pindex, 1);
}

TEST_F(EditClicks, TakeAPointOnAnEdgeForAPoint)
{
    Click(middle, 420, 640);
    EXPECT_EQ(pindex, 0); // the border of one side stays
    Click(left, 420, 640);
    ASSERT_EQ(shapes[0]->pointnumber, 5);
    Click(middle, 420, 640);
    EXPECT_EQ(OutlinesOf(*shapes[0]), (Outlines{{0, 1, 2, 3}}));
    EXPECT_EQ(pindex, 2);
}

// The hand rests between the click and the drag.
TEST_F(EditClicks, DragThePointThatAClickHasJustInserted)
{
    Click(left, 420, 640);
    DrawFrame();
    Press(left);
    EXPECT_EQ(buttonpresspointactive, 4);
    Move(420, 720);
    Release(left);
    EXPECT_NEAR(GetPoint(4)[1], -0.4F, 1e-6);
    EXPECT_FALSE(IsTurned());
}

// A menu keeps the motions over it to itself.
TEST_F(EditClicks, DragThePointOnWhichAMenuHasLeftThePointer)
{
    Move(500, 400);
    x = 740;
    y = 160;
    Press(left);
    EXPECT_EQ(buttonpresspointactive, 2);
    Move(780, 160);
    EXPECT_NEAR(GetPoint(2)[0], 0.35F, 1e-6);
}

TEST_F(EditClicks, DragAPointAgainWhereItWasLeft)
{
    Move(740, 160);
    for (const double newy : {120.0, 80.0}) {
        Press(left);
        ASSERT_EQ(buttonpresspointactive, 2);
        Move(740, newy);
        Release(left);
        DrawFrame();
    }
    EXPECT_NEAR(GetPoint(2)[1], 0.4F, 1e-6);
    EXPECT_FALSE(IsTurned());
}

TEST_F(EditClicks, RemoveOneShapeBehindTheOtherWithoutMoving)
{
    AddToView(CubeOfHalfEdge(0.1F));
    Move(500, 400);
    for (int remaining = 1; remaining >= 0; remaining--) {
        Press(middle);
        Release(middle);
        EXPECT_EQ(shapenumber, remaining);
    }
}

TEST_F(EditClicks, LeaveFourPoints)
{
    Click(middle, 260, 640);
    EXPECT_EQ(shapes[0]->pointnumber, 4);
    EXPECT_EQ(pindex, 0);
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
}

TEST_F(EditClicks, DoNothingWithTheMiddleButtonOverTheBackground)
{
    Click(middle, 900, 100);
    EXPECT_EQ(rdstate, 0);
    EXPECT_EQ(pindex, 0);
}

TEST_F(EditClicks, MergeTwoSidesWithTheMiddleButtonOnAnEdge)
{
    StartEmptyScene();
    AddToView(CubeOfHalfEdge(0.25F));
    mainview.perspective = 0;
    Click(middle, 500, 600); // the lower front edge, 4-5
    EXPECT_EQ(shapes[0]->sidenumber, 5);
    EXPECT_EQ(pindex, 1);
}

TEST_F(EditClicks, RemoveAShapeWithTheMiddleButtonOnASide)
{
    AddToView(CubeOfHalfEdge(0.1F)); // before and behind the square
    Click(middle, 500, 400);
    ASSERT_EQ(shapenumber, 1);
    EXPECT_EQ(shapes[0]->sidenumber, 1);
    EXPECT_EQ(pindex, 1);
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
}

TEST_F(EditClicks, DragAPointInOneUndoStep)
{
    Move(740, 160);
    Press(left);
    ASSERT_EQ(buttonpresspointactive, 2);
    Move(780, 160);
    EXPECT_NEAR(GetPoint(2)[0], 0.35F, 1e-6);
    DrawFrame();
    Move(820, 120);
    EXPECT_NEAR(GetPoint(2)[0], 0.4F, 1e-6);
    EXPECT_NEAR(GetPoint(2)[1], 0.35F, 1e-6);
    Move(900, 120); // the frame is not yet drawn: the release takes this step
    EXPECT_NEAR(GetPoint(2)[0], 0.4F, 1e-6);
    Release(left);
    EXPECT_NEAR(GetPoint(2)[0], 0.5F, 1e-6);
    EXPECT_EQ(pindex, 1);
    EXPECT_FALSE(IsTurned());
}

TEST_F(EditClicks, SaveTheShapeWithTheFirstStepThatIsTaken)
{
    Move(740, 160);
    Press(left);
    rdstate = redrawwanted;
    Move(780, 160); // the first step is skipped: a frame is waiting
    EXPECT_EQ(pindex, 0);
    EXPECT_NEAR(GetPoint(2)[0], 0.3F, 1e-6);
    DrawFrame();
    Move(820, 160);
    EXPECT_NEAR(GetPoint(2)[0], 0.4F, 1e-6);
    EXPECT_EQ(pindex, 1);
    DrawFrame();
    Move(780, 160);
    Release(left);
    EXPECT_EQ(pindex, 1);
    PopUndo();
    EXPECT_NEAR(GetPoint(2)[0], 0.3F, 1e-6);
}

TEST_F(EditClicks, SaveTheShapeAgainForTheNextDrag)
{
    for (int drag = 1; drag <= 2; drag++) {
        Move(260, 640);
        Press(left);
        Move(300, 640);
        DrawFrame();
        Move(260, 640);
        Release(left);
        DrawFrame();
        EXPECT_EQ(pindex, drag);
    }
}

TEST_F(EditClicks, DragAnEdgeIntoANewPointInOneUndoStep)
{
    Move(500, 640);
    Press(left);
    ASSERT_EQ(buttonpressstripeactive, 0);
    Move(500, 648); // eight pixels below the edge
    ASSERT_EQ(OutlinesOf(*shapes[0]), (Outlines{{0, 4, 1, 2, 3}}));
    EXPECT_EQ(buttonpresspointactive, 4);
    EXPECT_EQ(buttonpressstripeactive, -1);
    DrawFrame();
    Move(500, 720);
    Release(left);
    EXPECT_EQ(shapes[0]->pointnumber, 5);
    EXPECT_NEAR(GetPoint(4)[0], 0, 1e-6);
    EXPECT_NEAR(GetPoint(4)[1], -0.4F, 1e-6);
    EXPECT_EQ(pindex, 1);
    EXPECT_FALSE(IsTurned());
}

TEST_F(EditClicks, DragAPointOutOfAnEdgeAtItsDepthHoweverFarTheFirstStepGoes)
{
    StartEmptyScene();
    AddToView(CubeOfHalfEdge(0.25F));
    Move(500, 600); // the lower front edge, 4-5
    Press(left);
    Move(500, 680); // over the background, whose depth is 0
    ASSERT_EQ(shapes[0]->pointnumber, 9);
    EXPECT_NEAR(GetPoint(8)[1], -0.35F, 1e-6);
    EXPECT_NEAR(GetPoint(8)[2], 0.25F, 1e-6);
    Release(left);
}

TEST_F(EditClicks, DoNothingMoreInADragThatBeganBesideAllSegments)
{
    Move(500, 640);
    Press(left);
    Move(900, 100); // in no circle over an edge
    EXPECT_EQ(pindex, 1);
    DrawFrame();
    Move(500, 400);
    DrawFrame();
    Move(500, 640);
    Release(left);
    EXPECT_EQ(shapes[0]->pointnumber, 4);
    EXPECT_EQ(pindex, 1);
    EXPECT_FALSE(IsTurned());
    DrawFrame();
    Move(900, 100);
    Press(left); // the next drag turns the view again
    Move(900, 200);
    EXPECT_TRUE(IsTurned());
}

TEST_F(EditClicks, TakeAShortWiggleForAClickAndALongPressForADrag)
{
    Move(740, 160);
    Press(left);
    runtime = 32;
    Move(743, 164); // five pixels
    EXPECT_EQ(pindex, 0);
    runtime = 33;
    Move(743, 165);
    EXPECT_EQ(pindex, 1);
    EXPECT_NEAR(GetPoint(2)[0], 0.30375F, 1e-6);
    Release(left);
}

TEST_F(EditClicks, LeaveThePointsWhileAShapeIsUnderConstruction)
{
    newsign = 1;
    Click(middle, 420, 640);
    EXPECT_EQ(shapes[0]->pointnumber, 4);
    newsign = 0;
}

// As a person does: the item is activated in the menu.
static void Choose(GtkWidget* item)
{
    gtk_menu_item_activate(GTK_MENU_ITEM(item));
}

static void SetCheck(GtkWidget* item, bool checked)
{
    toolsign = 1;
    gtk_check_menu_item_set_active(GTK_CHECK_MENU_ITEM(item), checked ? TRUE : FALSE);
    toolsign = 0;
}

TEST_F(EditClicks, MarkAPointFromItsMenu)
{
    SetCheck(menuvertex, false);
    buttonpresspointactive = 2;
    Choose(menuvertex);
    EXPECT_EQ(GetMarks(*shapes[0]), (Chain{2}));
    EXPECT_EQ(pindex, 1);
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
    Choose(menuvertex);
    EXPECT_EQ(shapes[0]->vertexes, nullptr);
    EXPECT_EQ(pindex, 2);
}

TEST_F(EditClicks, KeepTheMarksAscending)
{
    for (const int point : {3, 0, 2}) {
        SetCheck(menuvertex, false);
        buttonpresspointactive = point;
        Choose(menuvertex);
    }
    EXPECT_EQ(GetMarks(*shapes[0]), (Chain{0, 2, 3}));
}

TEST_F(EditClicks, MarkAStripeOnceHoweverOften)
{
    AddToView(Cube());
    buttonpressstripeactive = 1 + 3; // the cube's stripe from 1 to 0
    for (int i = 0; i < 2; i++) {
        SetCheck(menuedge, false);
        Choose(menuedge);
        EXPECT_EQ(GetMarks(*shapes[1]), (Chain{0, 1}));
    }
    Choose(menuedge);
    EXPECT_EQ(shapes[1]->vertexes, nullptr);
    EXPECT_EQ(shapes[0]->vertexes, nullptr);
}

TEST_F(EditClicks, MarkTheBorderOfASide)
{
    AddToView(Cube());
    SetCheck(menuborder, false);
    duplicateshape = 1;
    duplicateside = 3; // {3, 7, 6, 2}
    Choose(menuborder);
    EXPECT_EQ(GetMarks(*shapes[1]), (Chain{2, 3, 6, 7}));
    Choose(menuborder);
    EXPECT_EQ(shapes[1]->vertexes, nullptr);
    EXPECT_EQ(pindex, 2);
}

TEST_F(EditClicks, MakeNormalsAnewForAMark)
{
    AddToView(Cube());
    const int smooth = shapes[1]->normalnumber;
    SetCheck(menuborder, false);
    duplicateshape = 1;
    duplicateside = 3;
    Choose(menuborder);
    EXPECT_GT(shapes[1]->normalnumber, smooth); // the sides at a crease share no normals
}

TEST_F(EditClicks, IgnoreAnItemThatTheProgramSets)
{
    buttonpresspointactive = 2;
    buttonpressstripeactive = 0;
    duplicateshape = 0;
    duplicateside = 0;
    for (GtkWidget* item : {menuvertex, menuedge, menuborder}) {
        SetCheck(item, true);
        SetCheck(item, false);
    }
    EXPECT_EQ(shapes[0]->vertexes, nullptr);
    EXPECT_EQ(pindex, 0);
}

TEST_F(EditClicks, MarkNothingThatIsGone)
{
    ForgetPressedElements();
    duplicateshape = 0;
    duplicateside = 1; // of one
    for (GtkWidget* item : {menuvertex, menuedge, menuborder}) {
        Choose(item);
    }
    duplicateshape = 1; // of one
    duplicateside = 0;
    Choose(menuborder);
    EXPECT_EQ(shapes[0]->vertexes, nullptr);
    EXPECT_EQ(pindex, 0);
}

TEST_F(EditClicks, DeleteAPointFromItsMenu)
{
    Click(left, 420, 640);
    DrawFrame();
    buttonpresspointactive = 1;
    Choose(menupointdel);
    EXPECT_EQ(shapes[0]->pointnumber, 4);
    EXPECT_EQ(pindex, 2);
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
}

TEST_F(EditClicks, DeleteAStripeFromItsMenu)
{
    AddToView(Cube());
    buttonpressstripeactive = 1 + 3;
    Choose(menustripedel);
    EXPECT_EQ(shapes[1]->sidenumber, 5);
    EXPECT_EQ(pindex, 1);
}

TEST_F(EditClicks, LeaveAShapeWhoseMenuSaysDelete)
{
    buttonpresssideactive = 0;
    DelShape();
    EXPECT_EQ(shapenumber, 1);
    EXPECT_EQ(pindex, 0);
}

} // namespace korvane::testing
