#include "ui/transform.h"

#include "geometry/rounding.h"
#include "geometry/shapegeometry.h"
#include "geometry/transforms.h"
#include "scene/model.h"
#include "scene/undo.h"
#include "tests/support/camera.h"
#include "tests/support/invariants.h"
#include "tests/support/shapebytes.h"
#include "tests/support/transformscene.h"
#include "tests/support/widgets.h"
#include "ui/dialogs.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

using TransformDialogs = TransformScene;

static void Change(int code, double value)
{
    EXPECT_EQ(ScaleChangeValue(nullptr, GTK_SCROLL_JUMP, value, GINT_TO_POINTER(code)), FALSE);
}

TEST_F(TransformDialogs, FindTheirTargetFromThePress)
{
    const auto ignore = [](GtkDialog*) {};
    buttonpresssideactive = 8; // the third side of the second box
    Open(ROTATE_SIDE, GTK_RESPONSE_CANCEL, ignore);
    EXPECT_EQ(srshapenumber, 1);
    EXPECT_EQ(srsidenumber, 2);
    ForgetPressedElements();
    buttonpressstripeactive = activestripenumber - 1; // the square's one
    Open(SCALE_SHAPE, GTK_RESPONSE_CANCEL, ignore);
    EXPECT_EQ(srshapenumber, 2);
    ForgetPressedElements();
    buttonpresspointactive = 15; // the last of the second box
    Open(ROTATE_SHAPE, GTK_RESPONSE_CANCEL, ignore);
    EXPECT_EQ(srshapenumber, 1);
    buttonpresssideactive = 8;
    Open(ROTATE_SELECTED, GTK_RESPONSE_CANCEL, ignore);
    EXPECT_EQ(srshapenumber, -1);
    Open(SCALE_SELECTED, GTK_RESPONSE_CANCEL, ignore);
    EXPECT_EQ(srshapenumber, -1);
}

TEST_F(TransformDialogs, DoNotOpenWithoutATarget)
{
    for (const int tool : {ROTATE_SIDE, SCALE_SIDE, ROTATE_SHAPE, SCALE_SHAPE}) {
        ActionType(nullptr, GINT_TO_POINTER(tool)); // would run for ever
        EXPECT_EQ(mainview.action, TOOL_NONE);
        EXPECT_EQ(activesides[0].active, 1);
    }
    buttonpresspointactive = 0; // of a shape, but of no side
    ActionType(nullptr, GINT_TO_POINTER(ROTATE_SIDE));
    EXPECT_EQ(pindex, 0);
}

static constexpr int dialogtools[] = {ROTATE_SIDE, SCALE_SIDE,      ROTATE_SHAPE,
                                      SCALE_SHAPE, ROTATE_SELECTED, SCALE_SELECTED};

// Cancels each dialog after its sliders have been moved, by its button and by closing it.
static void ExpectEverythingRestored()
{
    const std::string before = GetSceneBytes();
    for (const int tool : dialogtools) {
        for (const int response : {GTK_RESPONSE_CANCEL, GTK_RESPONSE_DELETE_EVENT}) {
            SCOPED_TRACE(tool);
            rdstate = 0;
            Open(tool, response, [&](GtkDialog* dialog) {
                Slide(dialog, 0, 1.25);
                Slide(dialog, 2, -0.5);
                EXPECT_TRUE(GetSceneBytes() != before); // it is live
                EXPECT_EQ(FindBrokenRule(), "");
                EXPECT_EQ(activesides[0].active, 0);
            });
            EXPECT_TRUE(GetSceneBytes() == before);
            EXPECT_EQ(pindex, 0);
            EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
            EXPECT_EQ(activesides[0].active, 1);
            EXPECT_EQ(FindBrokenRule(), "");
        }
    }
}

// The shapes have been moved before, so that their rounded versions are not quite what rounding
// them anew would give.
TEST_F(TransformDialogs, RestoreEverythingToTheBitWhenCancelled)
{
    buttonpresssideactive = 8;
    SelectedMove(0, 0, 0.013F, 0.017F);
    SelectedRotate(11, 0);
    ExpectEverythingRestored();
}

TEST_F(TransformDialogs, RestoreEverythingToTheBitUnderPerspective)
{
    buttonpresssideactive = 8;
    mainview.perspective = fadedone;
    RefreshView();
    SelectedMove(0, 0, 0.013F, 0.017F);
    SelectedRotate(11, 0);
    ExpectEverythingRestored();
}

TEST_F(TransformDialogs, RestoreEverythingToTheBitBeforeATurnedCamera)
{
    buttonpresssideactive = 8;
    SetRotation(MakeTurn({1, 2, 3}, 1));
    mainview.scale = 1.3F;
    mainview.center[1] = 0.07F;
    RefreshView();
    SelectedMove(0, 0, 0.013F, 0.017F);
    SelectedRotate(11, 0);
    ExpectEverythingRestored();
}

// What is seen when the view is so small that it reaches farther, and nothing is hidden.
static std::string GetBytesOfAll()
{
    const unsigned char hidden = selected[4];
    selected[4] = selectedintree | selectedshown;
    mainview.scale = 0.2F;
    RefreshView();
    std::string bytes = GetSceneBytes();
    selected[4] = hidden;
    mainview.scale = 1;
    RefreshView();
    return bytes;
}

// One beside the view, one that the view does not show at present, and one that is drawn plain.
TEST_F(TransformDialogs, RestoreWhatIsNotSeenToo)
{
    AddToScene(MakeFlatShape({{2, 0, 0}, {2.2F, 0, 0}, {2.2F, 0.2F, 0}, {2, 0.2F, 0}}), "beside");
    AddToScene(CubeOfHalfEdge(0.1F), "hidden");
    selected[4] = selectedintree;
    AddToScene(CubeOfHalfEdge(0.005F), "tiny");
    RefreshView();
    ASSERT_EQ(showtable[3], SHOW_NOTHING);
    ASSERT_EQ(showtable[4], SHOW_NOTHING);
    ASSERT_EQ(showtable[5], SHOW_PLAIN);
    const std::string before = GetBytesOfAll();
    for (const int side : {13, 14, 20}) { // the first of each
        SCOPED_TRACE(side);
        buttonpresssideactive = side;
        ExpectEverythingRestored();
        EXPECT_TRUE(GetBytesOfAll() == before);
    }
}

// Everything of the shapes' models.
static std::string GetModelBytes()
{
    std::string bytes;
    for (int i = 0; i < shapenumber; i++) {
        bytes += GetBytes(*shapes[i]);
    }
    return bytes;
}

static std::vector<Points> GetPoints()
{
    std::vector<Points> points;
    for (int i = 0; i < shapenumber; i++) {
        points.push_back(PointsOf(*shapes[i]));
    }
    return points;
}

// What turned along while the dialog was open is made anew from the model.
static void ExpectRoundedAnew()
{
    for (int i = 0; i < shapenumber; i++) {
        SCOPED_TRACE(i);
        const OwnedShape round(RoundShape(shapes[i]));
        EXPECT_TRUE(GetBytes(*round1[i]) == GetBytes(*round));
    }
}

TEST_F(TransformDialogs, KeepTheirWorkAsOneStepOfUndoOnOk)
{
    for (const int tool : dialogtools) {
        SCOPED_TRACE(tool);
        buttonpresssideactive = 8;
        const std::string before = GetModelBytes();
        const std::vector<Points> pointsbefore = GetPoints();
        std::vector<Points> during;
        Open(tool, GTK_RESPONSE_OK, [&](GtkDialog* dialog) {
            Slide(dialog, 0, 1.25);
            Slide(dialog, 1, 1);
            Slide(dialog, 2, -0.5);
            during = GetPoints();
        });
        const bool all = tool == ROTATE_SELECTED || tool == SCALE_SELECTED;
        for (std::size_t i = 0; i < during.size(); i++) {
            EXPECT_EQ(during[i] != pointsbefore[i], all || i == 1);
        }
        EXPECT_EQ(pindex, 1);
        EXPECT_EQ(GetPoints(), during);
        ExpectRoundedAnew();
        EXPECT_EQ(activesides[0].active, 1);
        PopUndo();
        EXPECT_TRUE(GetModelBytes() == before);
        EXPECT_EQ(pindex, 0);
        PopRedo();
        EXPECT_EQ(GetPoints(), during);
        ExpectRoundedAnew();
        PopUndo();
        DelPuffer();
    }
}

// While the dialog is open the centre is the pivot; afterwards it is the middle again.
TEST_F(TransformDialogs, KnowTheBoundsOfWhatWasTurnedUnderPerspective)
{
    mainview.perspective = fadedone;
    TransferAllShape();
    buttonpresssideactive = 12;
    Open(ROTATE_SHAPE, GTK_RESPONSE_OK, [](GtkDialog* dialog) { Slide(dialog, 1, 60); });
    const Shape& square = *shapes[2];
    double middle = 0;
    double farthest = 0;
    for (int i = 0; i < 4; i++) {
        middle += double(square.points[i][0]) / 4;
        farthest = std::max(farthest, GetDistanceOfTwoPoints(square.points[i], square.center));
    }
    EXPECT_NEAR(double(square.center[0]), middle, 1e-6);
    EXPECT_NEAR(double(square.radius), farthest, 1e-6);
    mainview.perspective = 0;
}

TEST_F(TransformDialogs, WorkOnTheSelectionAloneThoughOpenedOverASide)
{
    SelectNodes({1, 3}); // the first box and the square
    buttonpresssideactive = 8;
    const std::string second = GetBytes(*shapes[1]);
    const std::string first = GetBytes(*shapes[0]);
    const std::string square = GetBytes(*shapes[2]);
    for (const int tool : {ROTATE_SELECTED, SCALE_SELECTED}) {
        Open(tool, GTK_RESPONSE_OK, [&](GtkDialog* dialog) { Slide(dialog, 0, 1); });
        EXPECT_TRUE(GetBytes(*shapes[1]) == second);
        EXPECT_TRUE(GetBytes(*shapes[0]) != first);
        EXPECT_TRUE(GetBytes(*shapes[2]) != square);
        EXPECT_EQ(pindex, 1);
        PopUndo();
        EXPECT_TRUE(GetBytes(*shapes[0]) == first);
        EXPECT_TRUE(GetBytes(*shapes[2]) == square);
        DelPuffer();
        SelectNodes({1, 3});
    }
}

TEST_F(TransformDialogs, StartEachTimeFromZero)
{
    buttonpresssideactive = 12;
    const auto left = [] { return double(shapes[2]->points[0][0]); };
    for (int i = 0; i < 2; i++) { // from 0.1 beside the centre to 0.2, then to 0.4
        Open(SCALE_SHAPE, GTK_RESPONSE_OK, [](GtkDialog* dialog) { Slide(dialog, 0, 1); });
    }
    EXPECT_NEAR(left(), 0.3 - 0.4, 1e-6);
}

TEST_F(TransformDialogs, ApplyOnlyWhatAValueDiffersFromTheLastOne)
{
    srshapenumber = 2; // about (0.3, 0.15); its corner 1 is 0.1 right of it and 0.05 below
    Change(0, 0);
    Change(14, 1);
    Change(14, 2); // four times as large by now
    EXPECT_NEAR(double(shapes[2]->points[1][0]), 0.3 + 0.4, 1e-6);
    Change(14, 0);
    EXPECT_NEAR(double(shapes[2]->points[1][0]), 0.4, 1e-6);
    Change(15, 1); // x remembers apart from all axes
    EXPECT_NEAR(double(shapes[2]->points[1][0]), 0.5, 1e-6);
    EXPECT_NEAR(double(shapes[2]->points[1][1]), 0.1, 1e-6);
    Change(16, 1);
    EXPECT_NEAR(double(shapes[2]->points[1][1]), 0.05, 1e-6);
}

// What z has scaled by counts as what z has turned by: from 1 to 91 it is a quarter turn.
TEST_F(TransformDialogs, ShareTheMemoriesOfTheirAxes)
{
    srshapenumber = 0;
    const double right = double(shapes[0]->points[0][0]);
    const double up = double(shapes[0]->points[0][1]);
    Change(0, 0);
    Change(17, 1);
    EXPECT_NEAR(std::abs(double(shapes[0]->points[0][2])), 0.2, 1e-6);
    Change(6, 91);
    EXPECT_NEAR(double(shapes[0]->points[0][0]), -up, 1e-6);
    EXPECT_NEAR(double(shapes[0]->points[0][1]), right, 1e-6);
}

TEST_F(TransformDialogs, TakeAValueOutsideTheirRangeAsItComes)
{
    srshapenumber = 2;
    Change(0, 0);
    Change(14, 5);
    EXPECT_NEAR(double(shapes[2]->points[1][0]), 0.3 + 3.2, 1e-5);
    Change(14, 0);
    Change(6, 270); // corner 1 at (0.1, -0.05) goes to (-0.05, -0.1)
    EXPECT_NEAR(double(shapes[2]->points[1][0]), 0.25, 1e-5);
    EXPECT_NEAR(double(shapes[2]->points[1][1]), 0.05, 1e-5);
}

// Which element a code turns or scales, and about which axis, seen from the corner 1 of the square
// at (0.4, 0.1): its offset from the side's centre and the shape's is (0.1, -0.05).
TEST_F(TransformDialogs, KnowTheirCodes)
{
    struct Row {
        int code;
        double value;
        double x, y, z;
    };
    const Row rows[] = {{1, 90, 0.4, 0.15, -0.05}, {2, 90, 0.3, 0.1, -0.1}, {3, 90, 0.35, 0.25, 0},
                        {4, 90, 0.4, 0.15, -0.05}, {5, 90, 0.3, 0.1, -0.1}, {6, 90, 0.35, 0.25, 0},
                        {7, 90, 0.4, 0, 0.1},      {8, 90, 0, 0.1, -0.4},   {9, 90, -0.1, 0.4, 0},
                        {10, 1, 0.5, 0.05, 0},     {11, 1, 0.5, 0.1, 0},    {12, 1, 0.4, 0.05, 0},
                        {13, 1, 0.4, 0.1, 0},      {14, 1, 0.5, 0.05, 0},   {15, 1, 0.5, 0.1, 0},
                        {16, 1, 0.4, 0.05, 0},     {17, 1, 0.4, 0.1, 0},    {18, 1, 0.8, 0.2, 0},
                        {19, 1, 0.8, 0.1, 0},      {20, 1, 0.4, 0.2, 0},    {21, 1, 0.4, 0.1, 0},
                        {22, 1, 0.4, 0.1, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.code);
        SetUp();
        srshapenumber = 2;
        srsidenumber = 0;
        Change(0, 0);
        Change(row.code, row.value);
        EXPECT_NEAR(double(shapes[2]->points[1][0]), row.x, 1e-6);
        EXPECT_NEAR(double(shapes[2]->points[1][1]), row.y, 1e-6);
        EXPECT_NEAR(double(shapes[2]->points[1][2]), row.z, 1e-6);
        EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
    }
}

TEST_F(TransformDialogs, AskForNoFrameWhenTheyForget)
{
    rdstate = 0;
    Change(0, 0);
    EXPECT_EQ(rdstate, 0);
}

// From the pixel (500, 400), the middle, to (580, 320): 0.1 to the right and 0.1 up.
TEST_F(TransformDialogs, LeaveMovingToTheNextDrag)
{
    struct Row {
        int tool;
        double first, square; // how far they go to the right
    };
    const Row rows[] = {{MOVE_SIDE, 0, 0.1}, {MOVE_SHAPE, 0, 0.1}, {MOVE_SELECTED, 0.1, 0.1}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.tool);
        SetUp();
        buttonpresssideactive = 12;
        const std::string before = GetBytes(*shapes[2]);
        ActionType(nullptr, GINT_TO_POINTER(row.tool));
        EXPECT_EQ(pindex, 1);
        EXPECT_STREQ(gtk_label_get_text(GTK_LABEL(FindWidget(statusbar, GTK_TYPE_LABEL))),
                     " Drag with the left button to move");
        rdstate = 0;
        Press(left);
        Move(540, 360);
        EXPECT_NEAR(double(shapes[2]->points[0][0]), 0.2 + row.square / 2, 1e-6);
        Move(560, 340); // is not taken before a frame has been drawn
        EXPECT_NEAR(double(shapes[2]->points[0][0]), 0.2 + row.square / 2, 1e-6);
        DrawFrame();
        Move(580, 320);
        EXPECT_NEAR(double(shapes[2]->points[0][0]), 0.2 + row.square, 1e-6);
        EXPECT_NEAR(double(shapes[2]->points[0][1]), 0.1 + row.square, 1e-6);
        EXPECT_NEAR(double(shapes[0]->points[0][0]), -0.1 + row.first, 1e-6);
        EXPECT_EQ(mainview.action, row.tool);
        EXPECT_FALSE(IsTurned());
        Release(left);
        EXPECT_EQ(mainview.action, TOOL_NONE);
        EXPECT_EQ(activesides[0].active, 1);
        EXPECT_EQ(FindBrokenRule(), "");
        EXPECT_EQ(pindex, 1);
        PopUndo();
        EXPECT_TRUE(GetBytes(*shapes[2]) == before);
    }
}

} // namespace korvane
