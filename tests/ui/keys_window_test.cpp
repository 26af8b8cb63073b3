// The keys of the window, row by row.
#include "geometry/construction.h"
#include "geometry/creation.h"
#include "geometry/duplication.h"
#include "scene/model.h"
#include "scene/undo.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "tests/support/treetexts.h"
#include "tests/support/widgets.h"
#include "ui/dialogs.h"
#include "ui/keys.h"
#include "view/cameraflight.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtest/gtest.h>
#include <gdk/gdkkeysyms.h>
#include <gtk/gtk.h>

#include <cstring>
#include <string>

namespace korvane
{

using namespace korvane::testing;

static const MainView start = mainview; // as the program begins

static bool IsPressed(GtkWidget* button)
{
    return gtk_toggle_tool_button_get_active(GTK_TOGGLE_TOOL_BUTTON(button)) != FALSE;
}

static int Press(guint key, guint state = 0)
{
    GdkEventKey event = {};
    event.type = GDK_KEY_PRESS;
    event.keyval = key;
    event.state = state;
    return KeyPress(nullptr, &event);
}

static int Release(guint key)
{
    GdkEventKey event = {};
    event.type = GDK_KEY_RELEASE;
    event.keyval = key;
    return KeyRelease(nullptr, &event);
}

class Keys : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ShowMainWindow();
        StartEmptyScene();
        Press(GDK_KEY_s);
        if (IsPressed(toolbutton_gradient)) {
            Press(GDK_KEY_g);
        }
        mainview = start;
        mainview.bgshape = BACKGROUND_NONE;
        camposition = cameraframes;
        EndNewShapeTool();
        keyspace = 0;
        rdstate = 0;
    }

    static void ExpectCenter(double x, double y, double z)
    {
        EXPECT_FLOAT_EQ(mainview.center[0], float(x));
        EXPECT_FLOAT_EQ(mainview.center[1], float(y));
        EXPECT_FLOAT_EQ(mainview.center[2], float(z));
        EXPECT_EQ(rdstate, redrawwanted);
    }
};

TEST_F(Keys, PlusZoomsInAboutTheCentre)
{
    mainview.center[0] = 0.25F;
    for (const guint key : {GDK_KEY_plus, GDK_KEY_KP_Add}) {
        mainview.scale = 1;
        rdstate = 0;
        EXPECT_EQ(Press(key), TRUE);
        EXPECT_FLOAT_EQ(mainview.scale, 1.1892071F);
        ExpectCenter(0.25, 0, 0);
    }
}

TEST_F(Keys, MinusZoomsOutAboutTheCentre)
{
    mainview.center[0] = 0.25F;
    for (const guint key : {GDK_KEY_minus, GDK_KEY_KP_Subtract}) {
        mainview.scale = 1;
        rdstate = 0;
        EXPECT_EQ(Press(key), TRUE);
        EXPECT_FLOAT_EQ(mainview.scale, 0.8408964F);
        ExpectCenter(0.25, 0, 0);
    }
}

// What the arrow points away from comes into view: the scene moves by half a view unit against it,
// and the centre with the arrow's name, at scale 2 by half of that.
TEST_F(Keys, ArrowsMoveTheScene)
{
    struct {
        guint key;
        double x, y;
    } const rows[] = {{GDK_KEY_Left, -0.25, 0},
                      {GDK_KEY_Right, 0.25, 0},
                      {GDK_KEY_Up, 0, 0.25},
                      {GDK_KEY_Down, 0, -0.25}};
    for (const auto& row : rows) {
        mainview = start;
        mainview.scale = 2;
        rdstate = 0;
        EXPECT_EQ(Press(row.key), TRUE);
        ExpectCenter(row.x, row.y, 0);
    }
}

TEST_F(Keys, FAndBMoveTheSceneForwardAndBack)
{
    struct {
        guint key;
        double z;
    } const rows[] = {{GDK_KEY_f, -0.02}, {GDK_KEY_F, -0.02}, {GDK_KEY_b, 0.02}, {GDK_KEY_B, 0.02}};
    for (const auto& row : rows) {
        mainview = start;
        rdstate = 0;
        EXPECT_EQ(Press(row.key), TRUE);
        ExpectCenter(0, 0, row.z);
    }
}

TEST_F(Keys, NTogglesTheNewShapeTool)
{
    EXPECT_EQ(Press(GDK_KEY_n), TRUE);
    EXPECT_TRUE(IsPressed(toolbutton_news));
    EXPECT_EQ(newsign, 1);
    EXPECT_EQ(Press(GDK_KEY_N), TRUE);
    EXPECT_FALSE(IsPressed(toolbutton_news));
    EXPECT_EQ(newsign, 0);
}

TEST_F(Keys, GTogglesTheGradient)
{
    EXPECT_FALSE(IsPressed(toolbutton_gradient));
    EXPECT_EQ(Press(GDK_KEY_g), TRUE);
    EXPECT_TRUE(IsPressed(toolbutton_gradient));
    EXPECT_EQ(mainview.gradientfade & fadetarget, fadetarget);
    EXPECT_EQ(Press(GDK_KEY_G, GDK_SHIFT_MASK), TRUE);
    EXPECT_FALSE(IsPressed(toolbutton_gradient));
    EXPECT_EQ(mainview.gradientfade & fadetarget, 0);
}

TEST_F(Keys, WAndSSwitchBetweenTheWireAndAll)
{
    for (const guint shift : {GDK_KEY_w - GDK_KEY_w, GDK_KEY_w - GDK_KEY_W}) { // both cases
        EXPECT_EQ(Press(GDK_KEY_w - shift), TRUE);
        EXPECT_TRUE(IsPressed(toolbutton_wire));
        EXPECT_EQ(mainview.showshape, SHAPE_LINES);
        EXPECT_EQ(Press(GDK_KEY_w - shift), TRUE); // pressed already: stays
        EXPECT_TRUE(IsPressed(toolbutton_wire));
        EXPECT_EQ(Press(GDK_KEY_s - shift), TRUE);
        EXPECT_TRUE(IsPressed(toolbutton_full));
        EXPECT_EQ(mainview.showshape, SHAPE_BOTH);
        EXPECT_EQ(Press(GDK_KEY_s - shift), TRUE);
        EXPECT_TRUE(IsPressed(toolbutton_full));
    }
}

// Two steps that can be undone; each key takes one of them back.
static void SaveTwoStates()
{
    DelPuffer();
    AddToScene(Square(), "square");
    PushScene();
    PushShape(0);
    rdstate = 0;
}

static void ExpectStep(guint key, guint state, int expected)
{
    rdstate = 0;
    EXPECT_EQ(Press(key, state), TRUE);
    EXPECT_EQ(pindex, expected);
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
}

TEST_F(Keys, ZAndBackSpaceUndo)
{
    for (const guint key : {GDK_KEY_z, GDK_KEY_Z, GDK_KEY_BackSpace}) {
        SaveTwoStates();
        ExpectStep(key, 0, 1);
        ExpectStep(key, 0, 0);
        rdstate = 0;
        EXPECT_EQ(Press(key), TRUE); // nothing is left
        EXPECT_EQ(pindex, 0);
        EXPECT_EQ(rdstate, 0);
    }
}

TEST_F(Keys, YRedoes)
{
    for (const guint key : {GDK_KEY_y, GDK_KEY_Y}) {
        SaveTwoStates();
        PopUndo();
        PopUndo();
        ExpectStep(key, 0, 1);
        ExpectStep(key, 0, 2);
        ExpectStep(key, 0, 2); // nothing is left
    }
}

TEST_F(Keys, WithControlUndoAndRedo)
{
    SaveTwoStates();
    ExpectStep(GDK_KEY_z, GDK_CONTROL_MASK, 1);
    ExpectStep(GDK_KEY_z, GDK_CONTROL_MASK, 0);
    ExpectStep(GDK_KEY_y, GDK_CONTROL_MASK, 1);
    ExpectStep(GDK_KEY_Z, GDK_CONTROL_MASK | GDK_SHIFT_MASK, 2);
}

TEST_F(Keys, SpaceIsHeldUntilItIsReleased)
{
    EXPECT_EQ(Press(GDK_KEY_space), TRUE);
    EXPECT_EQ(keyspace, 1);
    EXPECT_EQ(Press(GDK_KEY_space), TRUE); // as the keyboard repeats it
    EXPECT_EQ(keyspace, 1);
    EXPECT_EQ(Release(GDK_KEY_a), FALSE); // of another key
    EXPECT_EQ(Release(GDK_KEY_Escape), FALSE);
    EXPECT_EQ(keyspace, 1);
    EXPECT_EQ(Release(GDK_KEY_space), TRUE);
    EXPECT_EQ(keyspace, 0);
    EXPECT_EQ(Release(GDK_KEY_space), TRUE);
}

TEST_F(Keys, SpaceIsNotHeldWhenAnotherWindowTakesTheKeys)
{
    Press(GDK_KEY_space);
    GdkEvent event = {};
    event.focus_change.type = GDK_FOCUS_CHANGE;
    event.focus_change.window = gtk_widget_get_window(mainwindow);
    gtk_widget_send_focus_change(mainwindow, &event);
    EXPECT_EQ(keyspace, 0);
}

static gboolean PressEscape(gpointer answer)
{
    *static_cast<int*>(answer) = Press(GDK_KEY_Escape);
    return FALSE;
}

TEST_F(Keys, EscapeEndsTheMainLoopWithoutAsking)
{
    AddToScene(Square(), "unsaved");
    int answer = FALSE;
    g_timeout_add(1, PressEscape, &answer);
    gtk_main(); // does not return unless the key ends it
    EXPECT_EQ(answer, TRUE);
}

static std::string title; // of the last dialog that was cancelled

static void CancelDialog()
{
    title.clear();
    AnswerDialog([](GtkDialog* dialog) {
        title = GetText(gtk_window_get_title(GTK_WINDOW(dialog)));
        gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL);
        return true;
    });
}

TEST_F(Keys, WithControlSaveAndOpen)
{
    const guint both = GDK_CONTROL_MASK | GDK_SHIFT_MASK;
    CancelDialog();
    EXPECT_EQ(Press(GDK_KEY_o, GDK_CONTROL_MASK), TRUE);
    EXPECT_EQ(title, "Open scene");
    CancelDialog();
    EXPECT_EQ(Press(GDK_KEY_s, GDK_CONTROL_MASK), TRUE); // a scene without a name yet
    EXPECT_EQ(title, "Save scene");
    CancelDialog();
    EXPECT_EQ(Press(GDK_KEY_S, both), TRUE);
    EXPECT_EQ(title, "Save scene");
}

TEST_F(Keys, WithControlAndAnotherLetterDoNothing)
{
    Press(GDK_KEY_w);
    const MainView before = mainview;
    rdstate = 0;
    for (guint key = GDK_KEY_a; key <= GDK_KEY_z; key++) {
        if (std::string("cosvxyz").find(char(key)) != std::string::npos) {
            continue;
        }
        EXPECT_EQ(Press(key, GDK_CONTROL_MASK), TRUE);
        EXPECT_EQ(Press(gdk_keyval_to_upper(key), GDK_CONTROL_MASK | GDK_SHIFT_MASK), TRUE);
    }
    EXPECT_EQ(std::memcmp(&mainview, &before, sizeof before), 0);
    EXPECT_FALSE(IsPressed(toolbutton_gradient));
    EXPECT_TRUE(IsPressed(toolbutton_wire));
    EXPECT_EQ(rdstate, 0);
}

// The selected square, copied or cut and pasted twice by keys.
static void ExpectCopyAndPaste(guint copy, guint paste, guint state, int left)
{
    StartEmptyScene();
    AddToScene(Square(), "square");
    SelectRows({1});
    EXPECT_EQ(Press(copy, state), TRUE);
    EXPECT_EQ(shapenumber, left);
    SelectRows({});
    EXPECT_EQ(Press(paste, state), TRUE);
    EXPECT_EQ(Press(paste, state), TRUE);
    EXPECT_EQ(GetContent(), left == 1 ? "square square square" : "square square");
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(Keys, CXAndVCopyCutAndPasteWithAndWithoutControl)
{
    const guint both = GDK_CONTROL_MASK | GDK_SHIFT_MASK;
    ExpectCopyAndPaste(GDK_KEY_c, GDK_KEY_v, 0, 1);
    ExpectCopyAndPaste(GDK_KEY_C, GDK_KEY_V, GDK_SHIFT_MASK, 1);
    ExpectCopyAndPaste(GDK_KEY_c, GDK_KEY_v, GDK_CONTROL_MASK, 1);
    ExpectCopyAndPaste(GDK_KEY_C, GDK_KEY_V, both, 1);
    ExpectCopyAndPaste(GDK_KEY_x, GDK_KEY_v, 0, 0);
    ExpectCopyAndPaste(GDK_KEY_X, GDK_KEY_V, GDK_SHIFT_MASK, 0);
    ExpectCopyAndPaste(GDK_KEY_x, GDK_KEY_v, GDK_CONTROL_MASK, 0);
    ExpectCopyAndPaste(GDK_KEY_X, GDK_KEY_V, both, 0);
}

TEST_F(Keys, DeleteRemovesWhatIsSelected)
{
    for (const guint key : {GDK_KEY_Delete, GDK_KEY_KP_Delete}) {
        StartEmptyScene();
        AddToScene(Square(), "kept");
        AddToScene(Square(), "selected");
        SelectRows({2});
        EXPECT_EQ(Press(key), TRUE);
        EXPECT_EQ(GetContent(), "kept");
        EXPECT_EQ(FindBrokenRule(), "");
    }
}

TEST_F(Keys, ThatAreNotBoundAreLeftToOthers)
{
    const MainView before = mainview;
    for (const guint key : {GDK_KEY_a, GDK_KEY_A, GDK_KEY_q, GDK_KEY_1, GDK_KEY_Return, GDK_KEY_Tab,
                            GDK_KEY_F1, GDK_KEY_Page_Up, GDK_KEY_Shift_L, GDK_KEY_Control_L}) {
        EXPECT_EQ(Press(key), FALSE) << key;
    }
    EXPECT_EQ(Press(GDK_KEY_1, GDK_CONTROL_MASK), FALSE); // no letter
    EXPECT_EQ(std::memcmp(&mainview, &before, sizeof before), 0);
    EXPECT_EQ(rdstate, 0);
}

// A key that changes nothing at the end of a range is handled all the same: passed on, arrows would
// turn the pages of the notebook.
TEST_F(Keys, ThatAreBoundAreHandledEvenWhenNothingChanges)
{
    mainview.scale = greatestscale;
    EXPECT_EQ(Press(GDK_KEY_plus), TRUE);
    EXPECT_EQ(mainview.scale, greatestscale);
    mainview.scale = smallestscale;
    EXPECT_EQ(Press(GDK_KEY_minus), TRUE);
    EXPECT_EQ(mainview.scale, smallestscale);
}

} // namespace korvane
