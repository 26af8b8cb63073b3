#include "ui/transform.h"

#include "geometry/shapegeometry.h"
#include "geometry/transforms.h"
#include "scene/model.h"
#include "scene/undo.h"
#include "tests/support/invariants.h"
#include "tests/support/pointer.h"
#include "tests/support/shapes.h"
#include "tests/support/widgets.h"
#include "ui/dialogs.h"
#include "ui/input.h"
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

// The points and normals of a version of a shape, to compare to the bit.
static std::string GetMeshBytes(const Shape& shape)
{
    std::string bytes;
    const auto add = [&](const void* data, std::size_t size) {
        bytes.append(static_cast<const char*>(data), size);
    };
    add(shape.points, sizeof(float[3]) * std::size_t(shape.pointnumber));
    add(shape.normals, sizeof(float[3]) * std::size_t(shape.normalnumber));
    for (int i = 0; i < shape.trianglenumber; i++) {
        add(shape.triangles[i].points, sizeof shape.triangles[i].points);
        add(shape.triangles[i].normals, sizeof shape.triangles[i].normals);
    }
    return bytes;
}

static std::string GetBytes(const Shape& shape)
{
    std::string bytes = GetMeshBytes(shape);
    bytes.append(reinterpret_cast<const char*>(shape.center), sizeof shape.center);
    bytes.append(reinterpret_cast<const char*>(&shape.radius), sizeof shape.radius);
    return bytes;
}

static std::string GetModelBytes(int shape)
{
    return GetBytes(*shapes[shape]);
}

// The four versions of every shape.
static std::string GetSceneBytes()
{
    std::string bytes;
    for (int i = 0; i < shapenumber; i++) {
        bytes += GetBytes(*shapes[i]) + GetBytes(*round1[i]) + GetMeshBytes(*shapest[i]) +
                 GetMeshBytes(*round1t[i]);
    }
    return bytes;
}

static std::string GetPointBytes(int shape)
{
    return {reinterpret_cast<const char*>(shapes[shape]->points),
            sizeof(float[3]) * std::size_t(shapes[shape]->pointnumber)};
}

static std::vector<GtkWidget*> GetSliders(GtkDialog* dialog)
{
    return FindWidgets(GTK_WIDGET(dialog), GTK_TYPE_HSCALE);
}

static void Slide(GtkDialog* dialog, std::size_t slider, double value)
{
    MoveSlider(GetSliders(dialog)[slider], value);
}

static void Change(int code, double value)
{
    EXPECT_EQ(ScaleChangeValue(nullptr, GTK_SCROLL_JUMP, value, GINT_TO_POINTER(code)), FALSE);
}

// Two boxes of half edge 0.1 in the middle and a square to the right of them, all projected: sides
// 0 to 5, 6 to 11 and 12.
class TransformDialogs : public PointerTest
{
protected:
    void SetUp() override
    {
        PointerTest::SetUp();
        AddToScene(CubeOfHalfEdge(0.1F), "first");
        AddToScene(CubeOfHalfEdge(0.1F), "second");
        AddToScene(
            MakeFlatShape({{0.2F, 0.1F, 0}, {0.4F, 0.1F, 0}, {0.4F, 0.2F, 0}, {0.2F, 0.2F, 0}}),
            "square");
        TransferAllShape();
        ChangeActives();
        ForgetPressedElements();
    }
    void TearDown() override
    {
        EXPECT_EQ(FindBrokenRule(), "");
        EXPECT_EQ(mainview.action, TOOL_NONE);
        SelectNodes({});
        ForgetPressedElements();
    }

    // Opens a tool's dialog, looks at it and answers it.
    static void Open(int tool, int response, const std::function<void(GtkDialog*)>& look)
    {
        bool opened = false;
        AnswerDialog([&](GtkDialog* dialog) {
            opened = true;
            look(dialog);
            gtk_dialog_response(dialog, response);
            return true;
        });
        ActionType(nullptr, GINT_TO_POINTER(tool));
        EXPECT_TRUE(opened);
    }
};

struct DialogLook {
    int tool;
    const char* title;
    int code; // of the first slider
};

static void ExpectPlainDialog(GtkDialog* dialog, const DialogLook& look)
{
    GtkWindow* window = GTK_WINDOW(dialog);
    EXPECT_STREQ(gtk_window_get_title(window), look.title);
    EXPECT_TRUE(gtk_window_get_modal(window));
    EXPECT_FALSE(gtk_window_get_resizable(window));
    EXPECT_TRUE(gtk_window_get_skip_taskbar_hint(window));
    EXPECT_TRUE(gtk_window_get_skip_pager_hint(window));
    EXPECT_EQ(gtk_window_get_type_hint(window), GDK_WINDOW_TYPE_HINT_NORMAL);
    EXPECT_EQ(gtk_window_get_transient_for(window), GTK_WINDOW(mainwindow));
    const auto buttons = GetChildren(gtk_dialog_get_action_area(dialog));
    ASSERT_EQ(buttons.size(), 2U);
    for (GtkWidget* button : buttons) {
        const std::string label = GetText(gtk_button_get_label(GTK_BUTTON(button)));
        const int response = gtk_dialog_get_response_for_widget(dialog, button);
        EXPECT_EQ(label, response == GTK_RESPONSE_OK ? "gtk-ok" : "gtk-cancel");
    }
}

static void ExpectSlider(GtkWidget* slider, double reach, double step, int digits, int code)
{
    double lower, upper, stepincrement;
    GtkAdjustment* adjustment = gtk_range_get_adjustment(GTK_RANGE(slider));
    g_object_get(adjustment, "lower", &lower, "upper", &upper, "step-increment", &stepincrement,
                 nullptr);
    EXPECT_EQ(lower, -reach);
    EXPECT_EQ(upper, reach);
    EXPECT_EQ(stepincrement, step);
    EXPECT_EQ(gtk_range_get_value(GTK_RANGE(slider)), 0);
    EXPECT_EQ(gtk_scale_get_digits(GTK_SCALE(slider)), digits);
    int requested;
    gtk_widget_get_size_request(slider, &requested, nullptr);
    EXPECT_EQ(requested, 360);
    EXPECT_TRUE(
        IsConnected(slider, "change-value", G_CALLBACK(ScaleChangeValue), GINT_TO_POINTER(code)));
}

static GtkWidget* GetBox(GtkDialog* dialog)
{
    return GetChildren(gtk_dialog_get_content_area(dialog))[0];
}

static void ExpectRow(GtkWidget* row, const char* markup)
{
    ASSERT_TRUE(GTK_IS_HBOX(row));
    const auto parts = GetChildren(row);
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_STREQ(gtk_label_get_label(GTK_LABEL(parts[0])), markup);
    EXPECT_TRUE(gtk_label_get_use_markup(GTK_LABEL(parts[0])));
    EXPECT_TRUE(GTK_IS_HSCALE(parts[1]));
}

TEST_F(TransformDialogs, OfferThreeAnglesToTurnBy)
{
    buttonpresssideactive = 8;
    const DialogLook looks[] = {{ROTATE_SIDE, "Rotate side", 1},
                                {ROTATE_SHAPE, "Rotate shape", 4},
                                {ROTATE_SELECTED, "Rotate selected", 7}};
    for (const DialogLook& look : looks) {
        SCOPED_TRACE(look.title);
        Open(look.tool, GTK_RESPONSE_CANCEL, [&](GtkDialog* dialog) {
            ExpectPlainDialog(dialog, look);
            GtkBox* box = GTK_BOX(GetBox(dialog));
            EXPECT_TRUE(gtk_box_get_homogeneous(box));
            EXPECT_EQ(gtk_box_get_spacing(box), 10);
            EXPECT_EQ(gtk_container_get_border_width(GTK_CONTAINER(box)), 10U);
            const auto rows = GetChildren(GTK_WIDGET(box));
            ASSERT_EQ(rows.size(), 3U);
            ExpectRow(rows[0], "<b> X axis: </b>");
            ExpectRow(rows[1], "<b> Y axis: </b>");
            ExpectRow(rows[2], "<b> Z axis: </b>");
            for (int i = 0; i < 3; i++) {
                ExpectSlider(GetSliders(dialog)[std::size_t(i)], 180, 0.1, 1, look.code + i);
            }
        });
    }
}

// The title is the same for all three.
TEST_F(TransformDialogs, OfferFourExponentsToScaleBy)
{
    buttonpresssideactive = 8;
    const DialogLook looks[] = {{SCALE_SIDE, "Scale selected", 10},
                                {SCALE_SHAPE, "Scale selected", 14},
                                {SCALE_SELECTED, "Scale selected", 18}};
    for (const DialogLook& look : looks) {
        SCOPED_TRACE(look.tool);
        Open(look.tool, GTK_RESPONSE_CANCEL, [&](GtkDialog* dialog) {
            ExpectPlainDialog(dialog, look);
            GtkBox* box = GTK_BOX(GetBox(dialog));
            EXPECT_FALSE(gtk_box_get_homogeneous(box));
            EXPECT_EQ(gtk_box_get_spacing(box), 0);
            EXPECT_EQ(gtk_container_get_border_width(GTK_CONTAINER(box)), 10U);
            const auto rows = GetChildren(GTK_WIDGET(box));
            ASSERT_EQ(rows.size(), 5U);
            ExpectRow(rows[0], "<b> A: </b>");
            EXPECT_TRUE(GTK_IS_HSEPARATOR(rows[1]));
            ExpectRow(rows[2], "<b> X: </b>");
            ExpectRow(rows[3], "<b> Y: </b>");
            ExpectRow(rows[4], "<b> Z: </b>");
            for (int i = 0; i < 4; i++) {
                ExpectSlider(GetSliders(dialog)[std::size_t(i)], 4, 0.01, 2, look.code + i);
            }
        });
    }
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

// The shapes have been moved before, so that their rounded versions are not quite what rounding
// them anew would give.
TEST_F(TransformDialogs, RestoreEverythingToTheBitWhenCancelled)
{
    buttonpresssideactive = 8;
    SelectedMove(0, 0, 0.013F, 0.017F);
    SelectedRotate(11, 0);
    const std::string before = GetSceneBytes();
    for (const int tool :
         {ROTATE_SIDE, SCALE_SIDE, ROTATE_SHAPE, SCALE_SHAPE, ROTATE_SELECTED, SCALE_SELECTED}) {
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

TEST_F(TransformDialogs, KeepTheirWorkAsOneStepOfUndoOnOk)
{
    for (const int tool :
         {ROTATE_SIDE, SCALE_SIDE, ROTATE_SHAPE, SCALE_SHAPE, ROTATE_SELECTED, SCALE_SELECTED}) {
        SCOPED_TRACE(tool);
        buttonpresssideactive = 8;
        const std::string before = GetModelBytes(1);
        std::string during;
        Open(tool, GTK_RESPONSE_OK, [&](GtkDialog* dialog) {
            Slide(dialog, 0, 1.25);
            Slide(dialog, 1, 1);
            Slide(dialog, 2, -0.5);
            during = GetPointBytes(1);
        });
        EXPECT_EQ(pindex, 1);
        EXPECT_TRUE(GetPointBytes(1) == during);
        EXPECT_EQ(activesides[0].active, 1);
        PopUndo();
        EXPECT_TRUE(GetModelBytes(1) == before);
        EXPECT_EQ(pindex, 0);
        PopRedo();
        EXPECT_TRUE(GetPointBytes(1) == during);
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
    const std::string second = GetModelBytes(1);
    const std::string first = GetModelBytes(0);
    const std::string square = GetModelBytes(2);
    for (const int tool : {ROTATE_SELECTED, SCALE_SELECTED}) {
        Open(tool, GTK_RESPONSE_OK, [&](GtkDialog* dialog) { Slide(dialog, 0, 1); });
        EXPECT_TRUE(GetModelBytes(1) == second);
        EXPECT_TRUE(GetModelBytes(0) != first);
        EXPECT_TRUE(GetModelBytes(2) != square);
        EXPECT_EQ(pindex, 1);
        PopUndo();
        EXPECT_TRUE(GetModelBytes(0) == first);
        EXPECT_TRUE(GetModelBytes(2) == square);
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
        const std::string before = GetModelBytes(2);
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
        EXPECT_TRUE(GetModelBytes(2) == before);
    }
}

} // namespace korvane
