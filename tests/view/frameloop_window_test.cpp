#include "view/frameloop.h"

#include "geometry/construction.h"
#include "scene/model.h"
#include "tests/support/glwindow.h"
#include "tests/support/paintedshapes.h"
#include "view/cameraflight.h"
#include "view/mainview.h"
#include "view/navigation.h"
#include "view/picking.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane
{

using namespace korvane::testing;

class FrameLoop : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyView();
        IsInvalid(); // what opening the window left
    }

    void TearDown() override
    {
        StartEmptyView();
    }

    void Tick(int times = 1)
    {
        for (int i = 0; i < times; i++) {
            EXPECT_EQ(TimeLoop(window.GetArea()), TRUE);
        }
    }

    // Whether a part of the area waits to be drawn; it is forgotten then.
    bool IsInvalid()
    {
        GdkRegion* region = gdk_window_get_update_area(gtk_widget_get_window(window.GetArea()));
        if (region == nullptr) {
            return false;
        }
        gdk_region_destroy(region);
        return true;
    }

    // One tick takes the byte from `before` to `after`, and asks for a frame exactly if it moved.
    template <class Byte> void ExpectStep(Byte& byte, int before, int after)
    {
        rdstate = 0;
        byte = Byte(before);
        Tick();
        EXPECT_EQ(byte, after) << "from " << before;
        EXPECT_EQ(rdstate, before == after ? 0 : redrawwanted) << "from " << before;
        EXPECT_EQ(IsInvalid(), before != after) << "from " << before;
    }

    template <class Byte> void ExpectToggleSteps(Byte& byte)
    {
        ExpectStep(byte, 0, 0);
        ExpectStep(byte, 1, 0);
        ExpectStep(byte, 15, 14);
        ExpectStep(byte, 16, 17);
        ExpectStep(byte, 30, 31);
        ExpectStep(byte, 31, 31);
        byte = 0;
    }

    GlWindow window{200, 200};
};

TEST_F(FrameLoop, IsIdleWhileNothingChanges)
{
    AddShape(SquareAt(0, 0, 0).release());
    selected[0] = selectedintree | selectedfade;
    ProjectScene();
    rdstate = 0;
    const int before = runtime;
    Tick(40);
    EXPECT_EQ(runtime, before + 40);
    EXPECT_EQ(rdstate, 0);
    EXPECT_FALSE(IsInvalid());
}

TEST_F(FrameLoop, InvalidatesOnlyWhenAFrameIsWantedAndNoneIsDrawn)
{
    rdstate = redrawwanted;
    Tick();
    EXPECT_TRUE(IsInvalid());
    EXPECT_EQ(rdstate, redrawwanted); // until the frame is drawn
    rdstate = redrawing;
    Tick();
    EXPECT_FALSE(IsInvalid());
    rdstate = redrawing | redrawwanted;
    Tick();
    EXPECT_FALSE(IsInvalid());
}

TEST_F(FrameLoop, MovesTheBackgroundsTowardsTheChosenOne)
{
    mainview.bgshape = BACKGROUND_CUBE;
    ExpectStep(mainview.bgcubefade, 14, 15);
    ExpectStep(mainview.bgcubefade, 15, 15);
    ExpectStep(mainview.bgplanefade, 1, 0);
    mainview.bgcubefade = 0;
    mainview.bgshape = BACKGROUND_PLANE;
    ExpectStep(mainview.bgplanefade, 14, 15);
    ExpectStep(mainview.bgcubefade, 15, 14);
    mainview.bgcubefade = 0;
    mainview.bgshape = BACKGROUND_NONE;
    ExpectStep(mainview.bgplanefade, 15, 14);
    mainview.bgplanefade = 0;
    ExpectStep(mainview.bgcubefade, 15, 14);
    ExpectStep(mainview.bgcubefade, 0, 0);
}

TEST_F(FrameLoop, MovesTheTogglesOfTheBackground)
{
    ExpectToggleSteps(mainview.gradientfade);
    ExpectToggleSteps(mainview.imagefade);
    ExpectToggleSteps(mainview.smallcubefade);
    ExpectToggleSteps(mainview.centerlinesfade);
}

TEST_F(FrameLoop, MovesSidesAndLinesByTheShapeDisplay)
{
    mainview.showshape = SHAPE_SIDES;
    mainview.linesfade = 0;
    ExpectStep(mainview.sidesfade, 3, 4);
    mainview.sidesfade = fadefull;
    ExpectStep(mainview.linesfade, 15, 14);
    ExpectStep(mainview.linesfade, 0, 0);
    mainview.showshape = SHAPE_LINES;
    mainview.linesfade = fadefull;
    ExpectStep(mainview.sidesfade, 15, 14);
    mainview.sidesfade = 0;
    ExpectStep(mainview.linesfade, 3, 4);
    mainview.showshape = SHAPE_BOTH;
    mainview.linesfade = fadefull;
    ExpectStep(mainview.sidesfade, 0, 1);
    mainview.sidesfade = fadefull;
    ExpectStep(mainview.linesfade, 0, 1);
}

// What is not shown is not picked, though the pointer rests.
TEST_F(FrameLoop, FindsWhatComesAndGoesUnderARestingPointer)
{
    mainview.bgshape = BACKGROUND_NONE; // nothing else searches
    AddShape(SquareAt(0, 0, 0).release());
    selected[0] = selectedintree | selectedfade;
    ProjectScene();
    mouse[0] = mouse[1] = 0.02F; // on the side, far from its edges
    SearchActive();
    ASSERT_EQ(activepointer, &activesides[0]);
    mainview.showshape = SHAPE_LINES;
    Tick(14);
    EXPECT_EQ(activepointer, &activesides[0]);
    Tick(); // the side has gone
    EXPECT_EQ(activepointer, nullptr);
    mainview.showshape = SHAPE_BOTH;
    Tick();
    EXPECT_EQ(activepointer, &activesides[0]);
    EXPECT_GT(activesides[0].fade, 0); // it lights up at once
}

TEST_F(FrameLoop, MovesThePerspective)
{
    ExpectToggleSteps(mainview.perspective);
}

TEST_F(FrameLoop, MovesHoverFadesByTheirFlags)
{
    AddShape(SquareAt(0, 0, 0).release());
    selected[0] = selectedfade;
    ProjectScene();
    for (ActiveElement* record : {&activebgcube[0], &activebgcube[5], &activepoints[3],
                                  &activestripes[0], &activesides[0]}) {
        record->hover = 1;
        ExpectStep(record->fade, 0, 1);
        ExpectStep(record->fade, 14, 15);
        ExpectStep(record->fade, 15, 15);
        record->hover = 0;
        ExpectStep(record->fade, 15, 14);
        ExpectStep(record->fade, 1, 0);
        ExpectStep(record->fade, 0, 0);
    }
}

TEST_F(FrameLoop, MovesTheFadesOfShapesAndKeepsTheirMarks)
{
    AddShape(SquareAt(0, 0, 0).release());
    ExpectToggleSteps(selected[0]);
    ExpectStep(selected[0], selectedintree, selectedintree);
    ExpectStep(selected[0], selectedintree + 16, selectedintree + 17);
    ExpectStep(selected[0], selectedintree + 31, selectedintree + 31);
    ExpectStep(selected[0], selectedintree + 15, selectedintree + 14);
    ExpectStep(selected[0], selectedintree + 1, selectedintree);
}

TEST_F(FrameLoop, FadesFromNothingToFullIn15Ticks)
{
    mainview.centerlinesfade = fadetarget;
    Tick(14);
    EXPECT_EQ(mainview.centerlinesfade, 30);
    Tick();
    EXPECT_EQ(mainview.centerlinesfade, fadedone);
    mainview.centerlinesfade = fadedone - fadetarget; // switched off
    Tick(15);
    EXPECT_EQ(mainview.centerlinesfade, 0);
}

TEST_F(FrameLoop, ProjectsAgainWhileThePerspectiveMoves)
{
    mainview.bgshape = BACKGROUND_NONE; // nothing else projects the scene
    AddShape(SquareAt(0, 0, 0.3F).release());
    selected[0] = selectedfade;
    ProjectScene();
    const float before = shapest[0]->points[2][0];
    mainview.perspective = fadetarget;
    Tick(15);
    // Full perspective: an eye at 1.5 enlarges what lies at depth 0.3 by 1.5 / 1.2.
    EXPECT_FLOAT_EQ(shapest[0]->points[2][0], before * 1.25F);
}

TEST_F(FrameLoop, ProjectsAgainWhileShapesFade)
{
    mainview.bgshape = BACKGROUND_NONE;
    AddShape(SquareAt(0, 0, 0).release());
    selected[0] = 0;
    ProjectScene();
    EXPECT_EQ(showtable[0], SHOW_NOTHING);
    EXPECT_EQ(activesides[0].active, 0);
    selected[0] = selectedshown;
    Tick();
    EXPECT_EQ(showtable[0], SHOW_ROUNDED);
    EXPECT_EQ(activesides[0].active, 1); // and it can be picked
    selected[0] = 1;                     // the last step of fading out
    Tick();
    EXPECT_EQ(showtable[0], SHOW_NOTHING);
    EXPECT_EQ(activesides[0].active, 0);
}

// A transition of 16 frames that differ in every value.
static void FillTransition()
{
    for (int k = 0; k < cameraframes; k++) {
        CameraFrame& frame = camtable[k];
        std::copy_n(mainview.rotation, 9, frame.rotation);
        frame.rotation[3] = 0.01F * float(k);
        frame.center[0] = 0.1F * float(k);
        frame.center[1] = 1;
        frame.center[2] = 2;
        frame.scale = 1 + float(k);
    }
    camposition = 0;
}

TEST_F(FrameLoop, PlaysOneFrameOfTheCameraPerTick)
{
    FillTransition();
    for (int k = 0; k < cameraframes; k++) {
        rdstate = 0;
        Tick();
        EXPECT_EQ(camposition, k + 1);
        EXPECT_EQ(rdstate, redrawwanted);
        EXPECT_TRUE(std::equal(mainview.rotation, mainview.rotation + 9, camtable[k].rotation));
        EXPECT_TRUE(
            std::equal(mainview.freerotation, mainview.freerotation + 9, camtable[k].rotation));
        EXPECT_TRUE(std::equal(mainview.center, mainview.center + 3, camtable[k].center));
        EXPECT_EQ(mainview.scale, camtable[k].scale);
    }
    rdstate = 0;
    mainview.scale = 3;
    Tick();
    EXPECT_EQ(camposition, cameraframes);
    EXPECT_EQ(mainview.scale, 3);
    EXPECT_EQ(rdstate, 0);
}

TEST_F(FrameLoop, ProjectsAgainAfterEachFrameOfTheCamera)
{
    mainview.bgshape = BACKGROUND_NONE;
    AddShape(SquareAt(0, 0, 0).release());
    selected[0] = selectedfade;
    ProjectScene();
    FillTransition();
    for (CameraFrame& frame : camtable) {
        std::copy_n(mainview.rotation, 9, frame.rotation);
        std::fill_n(frame.center, 3, 0.0F);
    }
    PlayCamera();
    PlayCamera(); // scale 2
    EXPECT_FLOAT_EQ(shapest[0]->points[2][0], 0.5F);
}

// Nothing but the shapes is drawn.
static void HideBackground()
{
    mainview.bgshape = BACKGROUND_NONE;
    mainview.bgcubefade = 0;
    mainview.smallcubefade = 0;
}

TEST_F(FrameLoop, DrawsTheSceneIntoTheWindow)
{
    HideBackground();
    AddShape(PlainSquareAt(0, 0, 0, {1, 0, 0, 1}).release());
    selected[0] = selectedfade;
    ProjectScene();
    rdstate = redrawwanted;
    Tick();
    const Picture picture = window.ReadWindow(); // after the expose that the tick asked for
    EXPECT_EQ(rdstate, 0);
    EXPECT_EQ(picture.AtView(0.1, 0.05), MakePixel(1, 0, 0));
    EXPECT_EQ(picture.AtView(0.4, 0.4), cleared);
}

// The next click snaps to the grid, whose lines are 1/60 apart.
TEST_F(FrameLoop, ShowsTheNextPointOnTheGridThatComesUnderARestingPointer)
{
    HideBackground();
    newsign = 1;
    mouse[0] = gmouse[0] = 0.108F; // 6.48 steps
    mouse[1] = gmouse[1] = 0;
    const Pixel cursor = MakePixel(1, 1, 0.4); // four pixels wide, a pixel is 0.005
    rdstate = redrawwanted;
    Tick();
    EXPECT_EQ(window.ReadWindow().AtView(0.1125, 0.0025), cursor);
    mainview.gradientfade = fadetarget; // switched on
    Tick();
    const Picture picture = window.ReadWindow();
    EXPECT_EQ(picture.AtView(0.0925, 0.0025), cursor);
    EXPECT_FALSE(picture.AtView(0.1125, 0.0025) == cursor);
    EXPECT_FLOAT_EQ(gmouse[0], 0.1F);
}

TEST_F(FrameLoop, ShowsTheNextPointOnTheGridThatMovesUnderARestingPointer)
{
    mainview.gradientfade = fadedone;
    mouse[0] = gmouse[0] = 0.108F;
    mouse[1] = gmouse[1] = 0;
    ChangePosition(0, 0, 0, 0.005F, 0, 0); // the scene goes to the right
    ReDraw(window.GetArea(), nullptr);
    EXPECT_NEAR(gmouse[0], 0.105, 1e-6); // the line at 0.1, which was at 0.1 on the screen
    mainview.gradientfade = 1;           // the last step of fading out
    Tick();
    ReDraw(window.GetArea(), nullptr);
    EXPECT_EQ(gmouse[0], mouse[0]);
}

TEST_F(FrameLoop, ClearsTheFormerFrame)
{
    HideBackground();
    AddShape(PlainSquareAt(0, 0, 0.9F, {1, 0, 0, 1}).release());
    selected[0] = selectedfade;
    ProjectScene();
    EXPECT_EQ(ReDraw(window.GetArea(), nullptr), TRUE);
    DeleteAllShapes();
    AddShape(PlainSquareAt(0, 0.25F, -0.9F, {0, 1, 0, 1}).release());
    selected[0] = selectedfade;
    ProjectScene();
    ReDraw(window.GetArea(), nullptr);
    const Picture picture = window.ReadWindow();
    EXPECT_EQ(picture.AtView(0.1, 0.05), MakePixel(0, 1, 0)); // the depth is cleared too
    EXPECT_EQ(picture.AtView(0.1, -0.1), cleared);
}

TEST_F(FrameLoop, RunsOnBeforeTheAreaIsRealised)
{
    GtkWidget* area = gtk_drawing_area_new();
    g_object_ref_sink(area);
    rdstate = redrawwanted;
    EXPECT_EQ(TimeLoop(area), TRUE);
    g_object_unref(area);
}

} // namespace korvane
