#include "scene/treeselection.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/treeview.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "tests/support/treetexts.h"
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

static GtkTreeSelection* GetTreeSelection()
{
    return gtk_tree_view_get_selection(GTK_TREE_VIEW(treeview));
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
        a = AddFolder("a");
        b = AddFolder("b", a);
        c = AddFolder("c");
        inner = AddShapeRow(Square(), "inner", b);
        one = AddShapeRow(Square(), "one", a);
        three = AddShapeRow(Square(), "three", a); // sorted: one, three, two
        two = AddShapeRow(Square(), "two", a);
        top = AddShapeRow(Square(), "top", 0);
        gtk_tree_view_expand_all(GTK_TREE_VIEW(treeview));
        mainview.onlyselected = 0;
        PrintStatusBar(" ");
    }
    void TearDown() override
    {
        EXPECT_EQ(FindBrokenRule(), "");
        StartEmptyScene();
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
    gtk_tree_selection_select_iter(GetTreeSelection(), &treeiters[top].iter);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({top}));
    EXPECT_EQ(tselection, GetTreeSelection());
}

TEST_F(TreeSelection, HasNoArrayWhenNoRowIsSelected)
{
    SelectRows({top});
    gtk_tree_selection_unselect_all(GetTreeSelection());
    EXPECT_EQ(treeselectednumber, 0);
    EXPECT_EQ(treeselected, nullptr);
}

TEST_F(TreeSelection, ListsTheRowsFromTopToBottom)
{
    SelectRows({top, c, two, one});
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({one, two, c, top}));
}

TEST_F(TreeSelection, LeavesOnlyTheFolderOfAFolderAndAShapeInIt)
{
    SelectRows({a, one});
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({a}));
}

TEST_F(TreeSelection, DropsWhatLiesDeepInASelectedFolder)
{
    SelectRows({a, inner});
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({a}));
}

TEST_F(TreeSelection, KeepsWhatStandsBesideASelectedFolder)
{
    SelectRows({b, one, top});
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({b, one, top}));
}

TEST_F(TreeSelection, SkipsTheEntryAfterADroppedOne)
{
    SelectRows({a, one, three}); // a stays, one goes, three moves up into its place unexamined
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({a, three}));
}

TEST_F(TreeSelection, ExaminesTheEntryAfterASkippedOne)
{
    SelectRows({a, one, three, two, top}); // one goes, three is skipped, two goes, top is skipped
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({a, three, top}));
}

TEST_F(TreeSelection, CountsADroppedFolderAsSelected)
{
    // b goes, inner is skipped, one goes for a.
    SelectRows({a, b, inner, one});
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({a, inner}));
}

TEST_F(TreeSelection, MarksShapesAndShowsAllOfThem)
{
    const unsigned char before[] = {31, 0, 80 | 9, 16 | 4, 15};
    std::copy(std::begin(before), std::end(before), selected);
    rdstate = 0;
    SelectRows({b, one}); // shapes 0 and 1
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
    SelectRows({b, one});
    const std::vector<int> after{80 | 15, 80 | 0, 9, 4, 15};
    EXPECT_EQ(std::vector<int>(selected, selected + shapenumber), after);
}

TEST_F(TreeSelection, SaysWhyShapesLeaveTheView)
{
    mainview.onlyselected = 1;
    std::fill(selected, selected + shapenumber, static_cast<unsigned char>(31));
    SelectRows({top});
    EXPECT_EQ(GetStatusText(), " Only selected shapes are shown");
}

TEST_F(TreeSelection, SaysNothingWhenNoShapeLeavesTheView)
{
    std::fill(selected, selected + shapenumber, static_cast<unsigned char>(31));
    SelectRows({top});
    EXPECT_EQ(GetStatusText(), " ");
    mainview.onlyselected = 1;
    SelectRows({a, c, top}); // all five shapes
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
    SelectRows({c});
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
    SelectRows({top, one});
    rdstate = 0;
    SetSelection(treeiters[one].shapeindex);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({one, top}));
    EXPECT_EQ(rdstate, 0); // the handler has not run
}

TEST_F(TreeSelection, StaysWhenAFolderAboveAPickedShapeIsSelected)
{
    SelectRows({a});
    SetSelection(treeiters[inner].shapeindex);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({a}));
    EXPECT_FALSE(gtk_tree_selection_iter_is_selected(GetTreeSelection(), &treeiters[inner].iter));
}

TEST_F(TreeSelection, StaysWhenAPickedShapeHasNoNode)
{
    SelectRows({top});
    SetSelection(shapenumber);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({top}));
}

TEST_F(TreeSelection, TellsWhereANewNodeGoes)
{
    SelectRows({});
    EXPECT_EQ(GetTreePutPlace(), 0);
    SelectRows({b}); // a folder
    EXPECT_EQ(GetTreePutPlace(), b);
    SelectRows({c}); // an empty one
    EXPECT_EQ(GetTreePutPlace(), c);
    SelectRows({inner}); // a shape
    EXPECT_EQ(GetTreePutPlace(), b);
    SelectRows({top});
    EXPECT_EQ(GetTreePutPlace(), 0);
    SelectRows({one, two}); // both in a
    EXPECT_EQ(GetTreePutPlace(), a);
    SelectRows({b, one}); // both in a, though one is a folder
    EXPECT_EQ(GetTreePutPlace(), a);
    SelectRows({a, c}); // both at the top
    EXPECT_EQ(GetTreePutPlace(), 0);
    SelectRows({inner, one}); // different folders
    EXPECT_EQ(GetTreePutPlace(), 0);
}

TEST_F(TreeSelection, PutsACreatedNodeInTheSelectedFolder)
{
    SelectRows({c});
    const int folder = CreateTreeIter(NODE_FOLDER, CopyText("new"));
    EXPECT_EQ(treeiters[folder].parent, c);
    SelectRows({inner});
    AddShape(Cube().release());
    const int shape = CreateTreeIter(NODE_SHAPE, CopyText("cube"));
    SetActives();
    EXPECT_EQ(treeiters[shape].parent, b);
    EXPECT_EQ(treeiters[shape].shapeindex, shapenumber - 1);
}

TEST_F(TreeSelection, IsNotReadWhileRowsVanishAndOnceAfterwards)
{
    SelectRows({top});
    BeginRowChanges();
    BeginRowChanges();
    gtk_tree_selection_unselect_all(GetTreeSelection());
    gtk_tree_selection_select_iter(GetTreeSelection(), &treeiters[c].iter);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({top}));
    EndRowChanges(); // the inner one
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({top}));
    rdstate = 0;
    EndRowChanges();
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({c}));
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
}

TEST_F(TreeSelection, IsEmptyWhenTheTreeIsCleared)
{
    SelectRows({a, top});
    StartEmptyScene();
    EXPECT_EQ(treeselectednumber, 0);
    EXPECT_EQ(treeselected, nullptr);
}

} // namespace korvane
