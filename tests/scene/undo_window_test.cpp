// Undo in the window: its button, the rows of the tree, the flight at the timer's pace.
#include "scene/undo.h"

#include "geometry/construction.h"
#include "geometry/finishedit.h"
#include "geometry/newpoints.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/scenefile.h"
#include "scene/treeselection.h"
#include "scene/treeview.h"
#include "tests/support/camera.h"
#include "tests/support/constructionscene.h"
#include "tests/support/invariants.h"
#include "tests/support/widgets.h"
#include "view/frameloop.h"
#include "view/mainview.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <array>

namespace korvane
{

using namespace korvane::testing;

class UndoInTheWindow : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ShowMainWindow();
        StartView();
    }
    void TearDown() override
    {
        EXPECT_EQ(FindBrokenRule(), "");
        EXPECT_EQ(gtk_widget_get_sensitive(toolbutton_undo), pindex > 0);
        StartView();
    }

    static void ClickUndo()
    {
        g_signal_emit_by_name(toolbutton_undo, "clicked");
    }

    static bool CanClick()
    {
        return gtk_widget_get_sensitive(toolbutton_undo) != FALSE;
    }
};

TEST_F(UndoInTheWindow, IsOfferedWhileThereIsAStep)
{
    AddToView(Square());
    EXPECT_FALSE(CanClick());
    PushShape(-1);
    EXPECT_FALSE(CanClick());
    PushShape(0);
    EXPECT_TRUE(CanClick());
    PushScene();
    ClickUndo();
    EXPECT_EQ(pindex, 1);
    EXPECT_TRUE(CanClick());
    ClickUndo();
    EXPECT_EQ(pindex, 0);
    EXPECT_FALSE(CanClick());
    Redo();
    EXPECT_TRUE(CanClick());
    Undo();
    EXPECT_FALSE(CanClick());
    PushShape(0); // a new change
    EXPECT_TRUE(CanClick());
    NewMrt();
    EXPECT_FALSE(CanClick());
}

TEST_F(UndoInTheWindow, IsStillOfferedWhenItOnlyFlew)
{
    AddToView(Square());
    PushShape(0);
    mainview.scale = 2;
    ClickUndo();
    EXPECT_EQ(pindex, 1);
    EXPECT_TRUE(CanClick());
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
}

TEST_F(UndoInTheWindow, FliesAFrameOfTheTimerAtATime)
{
    AddToView(Square());
    mainview.center[0] = 0.1F;
    mainview.scale = 0.7F;
    PushShape(0);
    mainview.center[0] = 0.9F;
    mainview.scale = 3;
    Undo();
    GtkWidget* area = FindWidget(ShowMainWindow(), GTK_TYPE_DRAWING_AREA);
    for (int tick = 1; tick < cameraframes; tick++) {
        TimeLoop(area);
        EXPECT_FALSE(IsViewInPlace(puffer[0]));
    }
    TimeLoop(area);
    EXPECT_EQ(mainview.center[0], 0.1F);
    EXPECT_EQ(mainview.scale, 0.7F);
    Undo();
    EXPECT_EQ(pindex, 0);
}

// As a body that was raised from a side and is a side again.
TEST_F(UndoInTheWindow, ShowsTheIconOfTheShapeThatIsBack)
{
    AddToView(Square());
    PushShape(0);
    DeleteShape(shapes[0]);
    shapes[0] = Cube().release();
    FinishEdit(0);
    const auto geticon = [] {
        GdkPixbuf* icon = nullptr;
        gtk_tree_model_get(GTK_TREE_MODEL(store), &treeiters[1].iter, COLUMN_ICON, &icon, -1);
        g_object_unref(icon); // the row has it still
        return icon;
    };
    EXPECT_EQ(geticon(), pbshape);
    Undo();
    EXPECT_EQ(geticon(), pbside);
    Redo();
    EXPECT_EQ(geticon(), pbshape);
}

TEST_F(UndoInTheWindow, LeavesNoRowOfTheSceneSelectedAndShowsEveryShape)
{
    const int folder = AddTreeIter(0, NODE_FOLDER, CopyText("f"));
    AddToScene(Square(), "a", folder);
    AddToScene(Square(), "b", folder);
    AddToScene(Square(), "c");
    gtk_tree_view_expand_all(GTK_TREE_VIEW(treeview));
    SelectRow(2);
    SelectRow(4);
    ASSERT_EQ(treeselectednumber, 2);
    mainview.onlyselected = 1;
    PushScene();
    Undo();
    EXPECT_EQ(treeselectednumber, 0);
    EXPECT_EQ(gtk_tree_selection_count_selected_rows(tselection), 0);
    for (int i = 0; i < 3; i++) {
        EXPECT_EQ(selected[i], selectedintree | selectedshown);
    }
    SelectRow(3); // the rows are alive
    EXPECT_EQ(treeselectednumber, 1);
    EXPECT_EQ(selected[0] & selectedintree, 0);
    EXPECT_EQ(selected[1] & selectedintree, selectedintree);
}

TEST_F(UndoInTheWindow, ReleasesTheButtonOfADrawingThatItEnds)
{
    AddToView(Square());
    PushScene(); // as the first click does
    GtkToggleToolButton* button = GTK_TOGGLE_TOOL_BUTTON(toolbutton_news);
    gtk_toggle_tool_button_set_active(button, TRUE);
    newsign = 1;
    constexpr float place[3] = {0, 0, 0};
    AddNewPoint(place);
    Undo();
    EXPECT_FALSE(gtk_toggle_tool_button_get_active(button));
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_EQ(FindBrokenRule(), "");
}

class UndoOfADrawing : public ConstructionScene
{
protected:
    static void Click(float x, float y)
    {
        PointAt(x, y);
        PutNewPoints(CLICK_ADD);
        EXPECT_EQ(FindBrokenRule(), "");
    }
};

TEST_F(UndoOfADrawing, TakesTheShapeOutAndRedoBringsItBack)
{
    MenuNewShape();
    Click(0, 0);
    Click(0.2F, 0);
    Click(0, 0.2F);
    Click(0, 0);
    ASSERT_EQ(shapenumber, 1);
    Undo();
    EXPECT_EQ(shapenumber, 0);
    Redo();
    ASSERT_EQ(shapenumber, 1);
    EXPECT_EQ(PlaceOf(shapes[0], 1), (std::array<float, 3>{0.2F, 0, 0}));
    EXPECT_EQ(pnumber, 1);
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(UndoOfADrawing, OnTheWayEndsIt)
{
    MenuNewShape();
    Click(0, 0);
    Click(0.2F, 0);
    Undo();
    EXPECT_FALSE(IsUnderConstruction());
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_EQ(shapenumber, 0);
    EXPECT_EQ(FindBrokenRule(), "");
}

// The flight leaves the drawing alone, and the shape that it becomes is part of the present.
TEST_F(UndoOfADrawing, ThatOnlyFliesLetsItGoOn)
{
    MenuNewShape();
    Click(0, 0);
    Click(0.2F, 0);
    mainview.center[0] = 0.1F;
    RefreshView();
    Undo();
    PlayFlight();
    EXPECT_TRUE(IsUnderConstruction());
    Click(0, 0.2F);
    Click(0, 0);
    ASSERT_EQ(shapenumber, 1);
    Undo();
    EXPECT_EQ(shapenumber, 0);
    Redo();
    EXPECT_EQ(shapenumber, 1);
    EXPECT_EQ(FindBrokenRule(), "");
}

} // namespace korvane
