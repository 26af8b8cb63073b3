#include "ui/input.h"

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "geometry/duplicationclicks.h"
#include "scene/model.h"
#include "scene/undo.h"
#include "tests/support/pointer.h"
#include "tests/support/shapes.h"
#include "tests/support/widgets.h"
#include "ui/dialogs.h"
#include "ui/keys.h"
#include "ui/transform.h"
#include "ui/viewmenus.h"
#include "view/cameraflight.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/navigation.h"
#include "view/picking.h"

#include <gtest/gtest.h>
#include <gdk/gdkkeysyms.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

namespace korvane
{

using namespace korvane::testing;

using Input = PointerTest;

static void AddProjected(OwnedShape shape)
{
    AddToScene(std::move(shape), "shape");
    TransferAllShape();
    ChangeActives();
}

TEST_F(Input, TakesPixelsToViewCoordinatesWithYPointingUp)
{
    Move(660, 320); // 160 right of the middle and 80 above it, over 800
    EXPECT_FLOAT_EQ(mouse[0], 0.2F);
    EXPECT_FLOAT_EQ(mouse[1], 0.1F);
    EXPECT_EQ(mouse[2], 0.0F);
}

static std::string GetStatus()
{
    return gtk_label_get_text(GTK_LABEL(FindWidget(statusbar, GTK_TYPE_LABEL)));
}

TEST_F(Input, ShowsThePlaceOfThePointerInTheScene)
{
    mainview.scale = 2;
    mainview.center[2] = 3;
    Move(660, 320);
    EXPECT_EQ(GetStatus(), " X:   0.1000\t Y:   0.0500\t Z:   3.0000");
}

TEST_F(Input, ShowsThePlaceOfThePointUnderThePointer)
{
    AddProjected(MakeFlatShape({{-0.3F, -0.3F, 0.1F}, {0.3F, -0.3F, 0.1F}, {0, 0.3F, 0.1F}}));
    Move(262, 639); // the point is at (260, 640)
    EXPECT_EQ(GetStatus(), " X:  -0.3000\t Y:  -0.3000\t Z:   0.1000");
}

TEST_F(Input, SaysWhichToolHasStartedUntilThePointerMoves)
{
    GtkToggleToolButton* button = GTK_TOGGLE_TOOL_BUTTON(toolbutton_news);
    AddProjected(MakeFlatShape({{-0.3F, -0.3F, 0}, {0.3F, -0.3F, 0}, {0, 0.3F, 0}}));
    gtk_toggle_tool_button_set_active(button, TRUE);
    EXPECT_EQ(GetStatus(), " Click the points of the new shape");
    Move(510, 400);
    EXPECT_EQ(GetStatus(), " X:   0.0125\t Y:   0.0000\t Z:   0.0000");
    gtk_toggle_tool_button_set_active(button, FALSE);
    EXPECT_EQ(GetStatus(), " X:   0.0125\t Y:   0.0000\t Z:   0.0000");
    Click(left, 500, 160); // on a point
    EXPECT_EQ(GetStatus(), " Click the points of the new side");
    duplicateshape = 0;
    duplicateside = 0;
    Duplicate();
    EXPECT_EQ(GetStatus(), " Click the path of the duplicate");
}

TEST_F(Input, RecordsThePress)
{
    Move(660, 320);
    runtime = 77;
    Press(left);
    EXPECT_EQ(buttonpressx, 660.0F);
    EXPECT_EQ(buttonpressy, 320.0F);
    EXPECT_FLOAT_EQ(buttonpressgx, 0.2F);
    EXPECT_FLOAT_EQ(buttonpressgy, 0.1F);
    EXPECT_EQ(presstime, 77);
}

TEST_F(Input, GoesThroughTheStatesOfEachButton)
{
    Press(left);
    EXPECT_EQ(mstate, LEFT_DOWN);
    Release(left);
    EXPECT_EQ(mstate, LEFT_RELEASED);
    Press(middle);
    EXPECT_EQ(mstate, MIDDLE_DOWN);
    Release(middle);
    EXPECT_EQ(mstate, MIDDLE_RELEASED);
    Press(right);
    EXPECT_EQ(mstate, RIGHT_DOWN);
    Move(600, 400);
    EXPECT_EQ(mstate, RIGHT_DRAG);
    Release(right);
    EXPECT_EQ(mstate, RIGHT_RELEASED);
}

TEST_F(Input, LeavesTheStateToOtherButtons)
{
    mstate = POINTER_IDLE;
    Press(8);
    EXPECT_EQ(mstate, POINTER_IDLE);
    Release(8);
    EXPECT_EQ(mstate, POINTER_IDLE);
}

TEST_F(Input, DoesNotCountTheExtraPressOfADoubleClick)
{
    Press(left);
    Release(left);
    Press(left, GDK_2BUTTON_PRESS);
    EXPECT_EQ(mstate, LEFT_RELEASED);
}

TEST_F(Input, TakesAWiggleOfSixPixelsForAClick)
{
    Press(left);
    Move(506, 400); // exactly 6 pixels: not more
    EXPECT_EQ(mstate, LEFT_DOWN);
    Move(506.1, 400);
    EXPECT_EQ(mstate, LEFT_DRAG);
}

TEST_F(Input, TakesAWiggleAfterThirtyTwoTicksForADrag)
{
    Press(left);
    runtime = 32;
    Move(505, 400);
    EXPECT_EQ(mstate, LEFT_DOWN);
    runtime = 33;
    Move(504, 400);
    EXPECT_EQ(mstate, LEFT_DRAG);
}

TEST_F(Input, TurnsTheViewByALeftDrag)
{
    Press(left);
    Move(580, 400);
    EXPECT_TRUE(IsTurned());
    EXPECT_EQ(rdstate, redrawwanted);
    Release(left);
    EXPECT_EQ(mstate, LEFT_RELEASED);
}

TEST_F(Input, TakesOneStepOfALeftDragPerFrame)
{
    Press(left);
    Move(580, 400);
    const MainView before = mainview;
    Move(660, 400); // the frame of the first step is not yet drawn
    EXPECT_EQ(std::memcmp(mainview.freerotation, before.freerotation, sizeof before.freerotation),
              0);
    DrawFrame();
    Move(661, 400);
    EXPECT_NE(std::memcmp(mainview.freerotation, before.freerotation, sizeof before.freerotation),
              0);
}

TEST_F(Input, SkipsADragStepOfAThousandth)
{
    Press(left);
    Move(580, 400);
    const MainView before = mainview;
    DrawFrame();
    Move(580.7, 400); // 0.7 of 800 pixels
    EXPECT_EQ(std::memcmp(mainview.freerotation, before.freerotation, sizeof before.freerotation),
              0);
    EXPECT_EQ(rdstate, 0);
}

TEST_F(Input, DoesNotTurnTheViewWhenAnotherButtonEndsThePressBeforeItIsADrag)
{
    Press(left);
    Move(580, 400);
    Release(left);
    DrawFrame();
    Move(300, 300); // far from where that drag ended
    const MainView before = mainview;
    Press(left);
    Press(right);
    Release(left);
    EXPECT_EQ(std::memcmp(mainview.freerotation, before.freerotation, sizeof before.freerotation),
              0);
}

// A menu over the view is closed by a press that it takes, and goes before the release.
TEST_F(Input, LeavesAPointAloneWhenItGetsOnlyTheReleaseOfAButton)
{
    AddProjected(MakeFlatShape({{-0.3F, -0.3F, 0}, {0.3F, -0.3F, 0}, {0, 0.3F, 0}}));
    Move(500 - 240, 400 + 240); // on the first point
    Press(right);
    Move(300, 600);
    Release(right);
    ASSERT_EQ(buttonpresspointactive, 0);
    for (const int button : {left, middle, right}) {
        PressElsewhere(button);
        Move(400, 400);
        Release(button);
        EXPECT_EQ(mstate, RIGHT_RELEASED);
    }
    EXPECT_EQ(shapes[0]->points[0][0], -0.3F);
    EXPECT_EQ(pindex, 0);
}

TEST_F(Input, NeitherTurnsTheViewNorEndsAToolByAReleaseAlone)
{
    AddProjected(Square());
    Press(left);
    Move(580, 400);
    Release(left);
    DrawFrame();
    const MainView turned = mainview;
    Move(300, 300);
    PressElsewhere(left);
    Release(left);
    EXPECT_EQ(std::memcmp(mainview.freerotation, turned.freerotation, sizeof turned.freerotation),
              0);
    buttonpresssideactive = 0;
    ActionType(nullptr, GINT_TO_POINTER(MOVE_SHAPE));
    const float before = shapes[0]->points[0][0];
    PressElsewhere(left);
    Move(400, 300);
    Release(left);
    EXPECT_EQ(mainview.action, MOVE_SHAPE);
    EXPECT_EQ(shapes[0]->points[0][0], before);
}

TEST_F(Input, EndsADragWhoseReleaseItDidNotGet)
{
    Press(left);
    Move(580, 400);
    DrawFrame();
    const MainView turned = mainview;
    ReleaseElsewhere(left);
    Move(300, 300);
    EXPECT_EQ(mstate, POINTER_IDLE);
    EXPECT_EQ(std::memcmp(mainview.freerotation, turned.freerotation, sizeof turned.freerotation),
              0);
    PressElsewhere(left);
    Release(left); // of another press than that of the drag
    EXPECT_EQ(std::memcmp(mainview.freerotation, turned.freerotation, sizeof turned.freerotation),
              0);
}

TEST_F(Input, TakesNoLostPressForAClickWhenAnotherButtonIsPressed)
{
    AddProjected(MakeFlatShape({{-0.3F, -0.3F, 0}, {0.3F, -0.3F, 0}, {0, 0.3F, 0}}));
    Move(500, 420); // on the side
    Press(left);
    ReleaseElsewhere(left);
    Press(8); // it does nothing itself
    EXPECT_EQ(mstate, POINTER_IDLE);
    PressElsewhere(left);
    Release(left);
    EXPECT_EQ(camposition, cameraframes); // no flight to the side
}

// The left button goes on with its drag although the right one was pressed and released.
TEST_F(Input, KnowsEveryButtonThatIsDown)
{
    Press(left);
    Press(right);
    Move(580, 400);
    Release(right);
    EXPECT_EQ(mstate, RIGHT_RELEASED);
    EXPECT_FALSE(IsTurned());
    Release(left);
    EXPECT_EQ(mstate, LEFT_RELEASED);
    EXPECT_TRUE(IsTurned());
}

TEST_F(Input, MovesTheViewByAMiddleDragWithoutWaitingForFrames)
{
    Press(middle);
    Move(580, 400); // 0.1 to the right: the centre goes to the left
    EXPECT_NEAR(mainview.center[0], -0.1, 1e-6);
    Move(580, 320);
    EXPECT_NEAR(mainview.center[0], -0.1, 1e-6);
    EXPECT_NEAR(mainview.center[1], -0.1, 1e-6);
    Release(middle);
    EXPECT_EQ(mstate, MIDDLE_RELEASED);
    EXPECT_NEAR(mainview.center[1], -0.1, 1e-6);
}

TEST_F(Input, DoesNotTurnTheViewWhenAPointOrAnEdgeWasPressed)
{
    AddProjected(MakeFlatShape({{-0.3F, -0.3F, 0}, {0.3F, -0.3F, 0}, {0, 0.3F, 0}}));
    Move(500 - 240, 400 + 240); // on the first point
    ASSERT_NE(activepointer, nullptr);
    ASSERT_EQ(activepointer->type, ELEMENT_POINT);
    Press(left);
    EXPECT_EQ(buttonpresspointactive, 0);
    EXPECT_EQ(buttonpressstripeactive, -1);
    EXPECT_EQ(buttonpresssideactive, -1);
    Move(300, 600);
    EXPECT_FALSE(IsTurned());
}

TEST_F(Input, FliesToAClickedSide)
{
    AddProjected(MakeFlatShape({{-0.3F, -0.3F, 0}, {0.3F, -0.3F, 0}, {0, 0.3F, 0}}));
    Move(500, 420);
    ASSERT_NE(activepointer, nullptr);
    ASSERT_EQ(activepointer->type, ELEMENT_SIDE);
    Press(left);
    EXPECT_EQ(buttonpresssideactive, 0);
    Release(left);
    EXPECT_EQ(camposition, 0); // a flight has begun
}

TEST_F(Input, DoesNothingWhenTheBackgroundIsClicked)
{
    Press(left);
    Release(left);
    EXPECT_EQ(camposition, cameraframes);
    EXPECT_FALSE(IsTurned());
}

TEST_F(Input, LetsClicksReachASideDuringAConstructionWhileSpaceIsHeld)
{
    AddProjected(MakeFlatShape({{-0.3F, -0.3F, 0}, {0.3F, -0.3F, 0}, {0, 0.3F, 0}}));
    newsign = 1;
    SetActivesOff();
    Move(500, 420);
    EXPECT_EQ(activepointer, nullptr);
    GdkEventKey key = {};
    key.keyval = GDK_KEY_space;
    KeyPress(nullptr, &key);
    ASSERT_NE(activepointer, nullptr);
    Press(left);
    Release(left);
    EXPECT_EQ(camposition, 0);
    KeyRelease(nullptr, &key);
    EXPECT_EQ(activepointer, nullptr);
}

TEST_F(Input, LeadsClicksToTheShapeUnderConstruction)
{
    GtkToggleToolButton* button = GTK_TOGGLE_TOOL_BUTTON(toolbutton_news);
    gtk_toggle_tool_button_set_active(button, TRUE);
    for (int i = 1; i <= 3; i++) {
        rdstate = 0;
        Click(left, 400 + 80 * i, 400);
        EXPECT_EQ(newpointnumber, i);
        EXPECT_EQ(rdstate, redrawwanted);
    }
    EXPECT_FLOAT_EQ(newpoints[1][0], 0.075F); // 60 pixels right of the middle
    rdstate = 0;
    Click(middle, x, y);
    EXPECT_EQ(newpointnumber, 2);
    EXPECT_EQ(rdstate, redrawwanted);
    Click(right, x, y);
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_EQ(newsign, 0);
    EXPECT_FALSE(gtk_toggle_tool_button_get_active(button));
}

TEST_F(Input, StartsANewSideByAClickOnAPoint)
{
    AddProjected(MakeFlatShape({{-0.3F, -0.3F, 0}, {0.3F, -0.3F, 0}, {0, 0.3F, 0}}));
    Click(left, 500, 160); // 0.3 above the middle
    EXPECT_EQ(newsign, 1);
    ASSERT_EQ(newpointnumber, 1);
    EXPECT_FLOAT_EQ(newpoints[0][1], 0.3F);
    rdstate = 0;
    GdkEventButton event = {};
    event.button = right;
    RightPressed(&event); // the button of the tool is up
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_EQ(rdstate, redrawwanted);
}

TEST_F(Input, LeadsClicksToTheDuplicateUnderConstruction)
{
    AddProjected(MakeFlatShape({{-0.3F, -0.3F, 0}, {0.3F, -0.3F, 0}, {0, 0.3F, 0}}));
    duplicateshape = 0;
    duplicateside = 0;
    Duplicate();
    Click(left, 700, 400);
    EXPECT_EQ(newpointnumber, 2);
    Click(left, 700, 200);
    EXPECT_EQ(newpointnumber, 3);
    Click(middle, x, y);
    EXPECT_EQ(newpointnumber, 2);
    rdstate = 0;
    Click(right, x, y); // the path is left open
    EXPECT_EQ(duplicatesign, 0);
    EXPECT_EQ(shapes[0]->sidenumber, 3 + 2);
    EXPECT_EQ(rdstate, redrawwanted);
}

TEST_F(Input, TurnsTheViewByADragDuringAConstruction)
{
    gtk_toggle_tool_button_set_active(GTK_TOGGLE_TOOL_BUTTON(toolbutton_news), TRUE);
    Click(left, x, y);
    DrawFrame();
    Press(left);
    Move(560, 400);
    DrawFrame();
    Move(580, 400);
    Release(left);
    EXPECT_TRUE(IsTurned());
    EXPECT_EQ(newpointnumber, 1);
}

TEST_F(Input, ReachesPointsOfAConstructionWhileSpaceIsHeld)
{
    gtk_toggle_tool_button_set_active(GTK_TOGGLE_TOOL_BUTTON(toolbutton_news), TRUE);
    const int places[3][2] = {{420, 400}, {580, 400}, {580, 240}};
    for (const auto& place : places) {
        Click(left, place[0], place[1]);
    }
    keyspace = 1;
    Click(left, 660, 400); // nothing is there
    EXPECT_EQ(newpointnumber, 3);
    Click(left, 420, 400); // the first point, on which the polygon is closed
    EXPECT_EQ(shapenumber, 1);
}

TEST_F(Input, AsksForAFrameWhenAConstructionFollowsThePointer)
{
    Move(510, 400);
    EXPECT_EQ(rdstate, 0);
    newsign = 1;
    Move(520, 400);
    EXPECT_EQ(rdstate, redrawwanted);
}

static void Scroll(GdkScrollDirection direction, double x, double y)
{
    GdkEventScroll event = {};
    event.direction = direction;
    event.x = x;
    event.y = y;
    EXPECT_EQ(MouseScroll(nullptr, &event), TRUE);
}

TEST_F(Input, ZoomsByTheWheelAboutThePointer)
{
    Move(660, 400); // 0.2 to the right
    Scroll(GDK_SCROLL_UP, x, y);
    EXPECT_FLOAT_EQ(mainview.scale, 1.1892071F);
    // the world point at 0.2 stays there: (0.2 - center) * scale = 0.2
    EXPECT_NEAR((0.2 - mainview.center[0]) * mainview.scale, 0.2, 1e-6);
    EXPECT_EQ(rdstate, redrawwanted);
    Scroll(GDK_SCROLL_DOWN, x, y);
    EXPECT_NEAR(mainview.scale, 1, 1e-6);
    EXPECT_NEAR(mainview.center[0], 0, 1e-6);
}

TEST_F(Input, ZoomsAboutThePointerThatHasNotMovedSinceTheStart)
{
    for (const GdkScrollDirection direction : {GDK_SCROLL_UP, GDK_SCROLL_DOWN}) {
        mainview.scale = 1;
        mainview.center[0] = 0;
        std::fill_n(mouse, 2, 10.0F); // as the program begins
        std::fill_n(gmouse, 2, 10.0F);
        Scroll(direction, 660, 400);
        EXPECT_NEAR((0.2 - mainview.center[0]) * mainview.scale, 0.2, 1e-6);
    }
}

TEST_F(Input, ZoomsAboutWhatTheSceneHasBroughtUnderARestingPointer)
{
    AddProjected(MakeFlatShape({{-0.3F, -0.3F, 0.1F}, {0.3F, -0.3F, 0.1F}, {0, 0.3F, 0.1F}}));
    Move(500, 420);                        // on the side
    ChangePosition(0, 0, 0, 0, 0, -0.02F); // which goes back from 0.1 to 0.08
    Scroll(GDK_SCROLL_UP, x, y);
    EXPECT_NEAR((0.1 - mainview.center[2]) * mainview.scale, 0.08, 1e-6); // and stays there
}

TEST_F(Input, AsksForAFrameEvenForASidewaysWheel)
{
    Scroll(GDK_SCROLL_LEFT, x, y);
    EXPECT_EQ(mainview.scale, 1.0F);
    EXPECT_EQ(rdstate, redrawwanted);
}

TEST_F(Input, ForgetsWhatWasPressedWhenTheListsChangeTheirLength)
{
    AddProjected(MakeFlatShape({{-0.3F, -0.3F, 0}, {0.3F, -0.3F, 0}, {0, 0.3F, 0}}));
    Move(500, 420);
    Press(left);
    ASSERT_EQ(buttonpresssideactive, 0);
    SetActives(); // as in a step of a drag
    EXPECT_EQ(buttonpresssideactive, 0);
    AddToScene(Cube(), "cube");
    EXPECT_EQ(buttonpresssideactive, -1);
}

TEST_F(Input, FindsTheTargetOfAMoveFromThePress)
{
    AddToScene(Square(), "square"); // side 0
    AddToScene(Cube(), "cube");     // sides 1 to 6
    buttonpresssideactive = 3;
    ActionType(nullptr, GINT_TO_POINTER(MOVE_SIDE));
    EXPECT_EQ(mainview.action, MOVE_SIDE);
    EXPECT_EQ(srshapenumber, 1);
    EXPECT_EQ(srsidenumber, 2);
    ForgetPressedElements();
    buttonpressstripeactive = 5; // the square has one stripe
    ActionType(nullptr, GINT_TO_POINTER(MOVE_SHAPE));
    EXPECT_EQ(srshapenumber, 1);
    EXPECT_EQ(srsidenumber, -1);
    ForgetPressedElements();
    buttonpresspointactive = 3; // the square has four points
    ActionType(nullptr, GINT_TO_POINTER(MOVE_SHAPE));
    EXPECT_EQ(srshapenumber, 0);
    EXPECT_EQ(mainview.action, MOVE_SHAPE);
}

TEST_F(Input, PutsAToolAwayThatHasNothingToWorkOn)
{
    AddProjected(Cube());
    ForgetPressedElements();
    ActionType(nullptr, GINT_TO_POINTER(MOVE_SHAPE));
    EXPECT_EQ(srshapenumber, -1);
    EXPECT_EQ(mainview.action, TOOL_NONE);
    buttonpressstripeactive = 0; // an edge lies between two sides
    ActionType(nullptr, GINT_TO_POINTER(MOVE_SIDE));
    EXPECT_EQ(mainview.action, TOOL_NONE);
    EXPECT_EQ(pindex, 0);
    EXPECT_EQ(activesides[0].active, 1);
}

TEST_F(Input, KeepsAToolUntilTheNextLeftDragEnds)
{
    AddProjected(Square());
    buttonpresssideactive = 0;
    ActionType(nullptr, GINT_TO_POINTER(MOVE_SHAPE));
    EXPECT_EQ(activesides[0].active, 0); // nothing is picked while a tool waits
    Press(left);
    Move(580, 400);
    EXPECT_EQ(mainview.action, MOVE_SHAPE);
    EXPECT_FALSE(IsTurned());
    Release(left);
    EXPECT_EQ(mainview.action, TOOL_NONE);
    EXPECT_EQ(activesides[0].active, 1);
}

} // namespace korvane
