#include "scene/treeselection.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/treeview.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "tests/support/widgets.h"
#include "ui/dialogs.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

static char* Name(const std::string& name)
{
    return CopyArray(name.c_str(), int(name.size()) + 1);
}

static GtkTreeSelection* GetSelection()
{
    return gtk_tree_view_get_selection(GTK_TREE_VIEW(treeview));
}

static std::vector<int> GetSelectedNodes()
{
    return {treeselected, treeselected + treeselectednumber};
}

static std::string GetStatusText()
{
    return gtk_label_get_text(GTK_LABEL(FindWidget(statusbar, GTK_TYPE_LABEL)));
}

// Rows, all of them open: folder "a" with folder "b" (shape 0) and shapes 1, 2 and 3; folder "c",
// empty; shape 4.
class TreeSelection : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ShowMainWindow();
        StartEmptyScene();
        a = AddTreeIter(0, NODE_FOLDER, Name("a"));
        b = AddTreeIter(a, NODE_FOLDER, Name("b"));
        c = AddTreeIter(0, NODE_FOLDER, Name("c"));
        inner = AddShapeRow("inner", b);
        one = AddShapeRow("one", a);
        three = AddShapeRow("three", a); // sorted: one, three, two
        two = AddShapeRow("two", a);
        top = AddShapeRow("top", 0);
        gtk_tree_view_expand_all(GTK_TREE_VIEW(treeview));
        mainview.onlyselected = 0;
        PrintStatusBar(" ");
    }
    void TearDown() override
    {
        EXPECT_EQ(FindBrokenRule(), "");
        StartEmptyScene();
    }

    static int AddShapeRow(const std::string& name, int folder)
    {
        AddToScene(Square(), name, folder);
        return treeiternumber - 1;
    }

    // One change of the selection that leaves exactly these rows selected.
    static void Select(const std::vector<int>& nodes)
    {
        BeginRowRemoval(); // a silent handler: each row alone would be a change
        gtk_tree_selection_unselect_all(GetSelection());
        for (int node : nodes) {
            gtk_tree_selection_select_iter(GetSelection(), &treeiters[node].iter);
        }
        EndRowRemoval();
        TreeSelectedChange(GetSelection());
    }

    int a = 0;
    int b = 0;
    int c = 0;
    int inner = 0;
    int one = 0;
    int three = 0;
    int two = 0;
    int top = 0;
};

TEST_F(TreeSelection, IsReadWhenARowIsSelected)
{
    gtk_tree_selection_select_iter(GetSelection(), &treeiters[top].iter);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({top}));
    EXPECT_EQ(tselection, GetSelection());
}

TEST_F(TreeSelection, HasNoArrayWhenNoRowIsSelected)
{
    Select({top});
    gtk_tree_selection_unselect_all(GetSelection());
    EXPECT_EQ(treeselectednumber, 0);
    EXPECT_EQ(treeselected, nullptr);
}

TEST_F(TreeSelection, ListsTheRowsFromTopToBottom)
{
    Select({top, c, two, one});
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({one, two, c, top}));
}

TEST_F(TreeSelection, LeavesOnlyTheFolderOfAFolderAndAShapeInIt)
{
    Select({a, one});
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({a}));
}

TEST_F(TreeSelection, DropsWhatLiesDeepInASelectedFolder)
{
    Select({a, inner});
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({a}));
}

TEST_F(TreeSelection, KeepsWhatStandsBesideASelectedFolder)
{
    Select({b, one, top});
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({b, one, top}));
}

TEST_F(TreeSelection, SkipsTheEntryAfterADroppedOne)
{
    Select({a, one, three}); // a stays, one goes, three moves up into its place unexamined
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({a, three}));
}

TEST_F(TreeSelection, ExaminesTheEntryAfterASkippedOne)
{
    Select({a, one, three, two, top}); // one goes, three is skipped, two goes, top is skipped
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({a, three, top}));
}

TEST_F(TreeSelection, CountsADroppedFolderAsSelected)
{
    // b goes, inner is skipped, one goes for a.
    Select({a, b, inner, one});
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({a, inner}));
}

TEST_F(TreeSelection, MarksShapesAndShowsAllOfThem)
{
    const unsigned char before[] = {31, 0, 80 | 9, 16 | 4, 15};
    std::copy(std::begin(before), std::end(before), selected);
    rdstate = 0;
    Select({b, one}); // shapes 0 and 1
    // The level in the low four bits stays; 80 is "selected in the tree" and "shown", 16 "shown".
    const std::vector<int> after{80 | 15, 80 | 0, 16 | 9, 16 | 4, 16 | 15};
    EXPECT_EQ(std::vector<int>(selected, selected + shapenumber), after);
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
}

TEST_F(TreeSelection, ShowsOnlyTheSelectedShapesWhileTheViewIsRestricted)
{
    mainview.onlyselected = 1;
    const unsigned char before[] = {31, 0, 80 | 9, 16 | 4, 15};
    std::copy(std::begin(before), std::end(before), selected);
    Select({b, one});
    const std::vector<int> after{80 | 15, 80 | 0, 9, 4, 15};
    EXPECT_EQ(std::vector<int>(selected, selected + shapenumber), after);
}

TEST_F(TreeSelection, SaysWhyShapesLeaveTheView)
{
    mainview.onlyselected = 1;
    std::fill(selected, selected + shapenumber, static_cast<unsigned char>(31));
    Select({top});
    EXPECT_EQ(GetStatusText(), " Only selected shapes are shown");
}

TEST_F(TreeSelection, SaysNothingWhenNoShapeLeavesTheView)
{
    std::fill(selected, selected + shapenumber, static_cast<unsigned char>(31));
    Select({top});
    EXPECT_EQ(GetStatusText(), " ");
    mainview.onlyselected = 1;
    Select({a, c, top}); // all five shapes
    EXPECT_EQ(GetStatusText(), " ");
}

TEST_F(TreeSelection, MarksEverythingBelowANode)
{
    std::fill(selected, selected + shapenumber, static_cast<unsigned char>(3));
    SetSelected(a); // shapes 0 to 3
    SetSelected(c);
    EXPECT_EQ(std::vector<int>(selected, selected + shapenumber),
              std::vector<int>({83, 83, 83, 83, 3}));
}

TEST_F(TreeSelection, GainsTheRowOfAPickedShape)
{
    Select({c});
    SetSelection(treeiters[one].shapeindex);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({one, c}));
}

TEST_F(TreeSelection, GainsAPickedShapeWhoseFoldersAreClosed)
{
    gtk_tree_view_collapse_all(GTK_TREE_VIEW(treeview));
    SetSelection(treeiters[inner].shapeindex);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({inner}));
}

TEST_F(TreeSelection, StaysWhenAPickedShapeIsSelectedAlready)
{
    Select({top, one});
    rdstate = 0;
    SetSelection(treeiters[one].shapeindex);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({one, top}));
    EXPECT_EQ(rdstate, 0); // the handler has not run
}

TEST_F(TreeSelection, StaysWhenAFolderAboveAPickedShapeIsSelected)
{
    Select({a});
    SetSelection(treeiters[inner].shapeindex);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({a}));
    EXPECT_FALSE(gtk_tree_selection_iter_is_selected(GetSelection(), &treeiters[inner].iter));
}

TEST_F(TreeSelection, StaysWhenAPickedShapeHasNoNode)
{
    Select({top});
    SetSelection(shapenumber);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({top}));
}

TEST_F(TreeSelection, TellsWhereANewNodeGoes)
{
    Select({});
    EXPECT_EQ(GetTreePutPlace(), 0);
    Select({b}); // a folder
    EXPECT_EQ(GetTreePutPlace(), b);
    Select({c}); // an empty one
    EXPECT_EQ(GetTreePutPlace(), c);
    Select({inner}); // a shape
    EXPECT_EQ(GetTreePutPlace(), b);
    Select({top});
    EXPECT_EQ(GetTreePutPlace(), 0);
    Select({one, two}); // both in a
    EXPECT_EQ(GetTreePutPlace(), a);
    Select({b, one}); // both in a, though one is a folder
    EXPECT_EQ(GetTreePutPlace(), a);
    Select({a, c}); // both at the top
    EXPECT_EQ(GetTreePutPlace(), 0);
    Select({inner, one}); // different folders
    EXPECT_EQ(GetTreePutPlace(), 0);
}

TEST_F(TreeSelection, PutsACreatedNodeInTheSelectedFolder)
{
    Select({c});
    const int folder = CreateTreeIter(NODE_FOLDER, Name("new"));
    EXPECT_EQ(treeiters[folder].parent, c);
    Select({inner});
    AddShape(Cube().release());
    const int shape = CreateTreeIter(NODE_SHAPE, Name("cube"));
    SetActives();
    EXPECT_EQ(treeiters[shape].parent, b);
    EXPECT_EQ(treeiters[shape].shapeindex, shapenumber - 1);
}

TEST_F(TreeSelection, IsNotReadWhileRowsVanishAndOnceAfterwards)
{
    Select({top});
    BeginRowRemoval();
    BeginRowRemoval();
    gtk_tree_selection_unselect_all(GetSelection());
    gtk_tree_selection_select_iter(GetSelection(), &treeiters[c].iter);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({top}));
    EndRowRemoval(); // the inner one
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({top}));
    rdstate = 0;
    EndRowRemoval();
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({c}));
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
}

TEST_F(TreeSelection, IsEmptyWhenTheTreeIsCleared)
{
    Select({a, top});
    StartEmptyScene();
    EXPECT_EQ(treeselectednumber, 0);
    EXPECT_EQ(treeselected, nullptr);
}

} // namespace korvane
