#include "scene/treeedit.h"

#include "geometry/construction.h"
#include "scene/model.h"
#include "scene/treeselection.h"
#include "scene/treeview.h"
#include "scene/undo.h"
#include "tests/support/camera.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "tests/support/treetexts.h"
#include "tests/support/widgets.h"
#include "ui/dialogs.h"
#include "ui/input.h"
#include "ui/transform.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

// Rows: a(b(deep) leaf) e() m(only) box square. The shapes stand in the scene in the order of their
// indices: deep, leaf, only, box, square; their points tell them apart.
class TreeEdit : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ShowMainWindow();
        StartEmptyScene();
        StartView();
        a = AddFolder("a");
        b = AddFolder("b", a);
        e = AddFolder("e");
        m = AddFolder("m");
        deep = AddShapeRow(FlatTriangle(), "deep", b);
        leaf = AddShapeRow(Pyramid(), "leaf", a);
        only = AddShapeRow(TrianglePrism(), "only", m);
        box = AddShapeRow(Cube(), "box", 0);
        square = AddShapeRow(Square(), "square", 0);
        SelectRows({});
        RefreshView();
        rdstate = 0;
    }
    void TearDown() override
    {
        EXPECT_EQ(FindBrokenRule(), "");
        StartEmptyScene();
        StartView();
    }

    static void Delete(const std::vector<int>& nodes)
    {
        SelectRows(nodes);
        DelSelected();
        EXPECT_EQ(FindBrokenRule(), "");
    }

    int a = 0;
    int b = 0;
    int e = 0;
    int m = 0;
    int deep = 0;
    int leaf = 0;
    int only = 0;
    int box = 0;
    int square = 0;
};

// The names of all nodes in the order of their indices.
static std::string GetNames()
{
    std::string text;
    for (int n = 1; n < treeiternumber; n++) {
        text += (n > 1 ? " " : "") + std::string(treeiters[n].name);
    }
    return text;
}

// The numbers of points of all shapes.
static std::vector<int> GetPointNumbers()
{
    std::vector<int> numbers;
    for (int i = 0; i < shapenumber; i++) {
        numbers.push_back(shapes[i]->pointnumber);
    }
    return numbers;
}

static GdkPixbuf* GetIcon(int node)
{
    GdkPixbuf* icon = nullptr;
    gtk_tree_model_get(GTK_TREE_MODEL(store), &treeiters[node].iter, COLUMN_ICON, &icon, -1);
    g_object_unref(icon); // the store still holds it
    return icon;
}

TEST_F(TreeEdit, DeletesAFolderWithItsContentAndAShapeOutsideIt)
{
    Delete({a, box});
    EXPECT_EQ(GetContent(), "e() m(only) square");
    EXPECT_EQ(GetPointNumbers(), std::vector<int>({6, 4})); // the prism and the square
}

TEST_F(TreeEdit, ClosesUpTheNodesAndTheShapes)
{
    Delete({b, leaf});
    // 1 a, 2 b, 3 e, 4 m, 5 deep, 6 leaf, 7 only, 8 box, 9 square: 2, 5 and 6 go.
    EXPECT_EQ(GetNames(), "a e m only box square");
    EXPECT_EQ(GetContent(), "a() e() m(only) box square");
    const int parents[] = {-1, 0, 0, 0, 3, 0, 0};
    const int shapeindices[] = {-1, -1, -1, -1, 0, 1, 2};
    for (int n = 0; n < treeiternumber; n++) {
        EXPECT_EQ(treeiters[n].parent, parents[n]) << n;
        EXPECT_EQ(treeiters[n].shapeindex, shapeindices[n]) << n;
    }
    EXPECT_EQ(GetPointNumbers(), std::vector<int>({6, 8, 4}));
}

TEST_F(TreeEdit, DeletesTheLastNodes)
{
    Delete({a, e, m, box, square});
    EXPECT_EQ(GetContent(), "");
    EXPECT_EQ(treeiternumber, 1);
    EXPECT_EQ(shapenumber, 0);
    EXPECT_EQ(activesidenumber, 0);
}

TEST_F(TreeEdit, LeavesNothingSelectedAfterDeleting)
{
    Delete({b});
    EXPECT_EQ(treeselectednumber, 0);
    EXPECT_EQ(treeselected, nullptr);
    for (int i = 0; i < shapenumber; i++) {
        EXPECT_EQ(selected[i] & selectedintree, 0);
    }
}

TEST_F(TreeEdit, DeletesEachNodeOnceWhenAFolderAndItsContentAreSelected)
{
    // "b" is dropped from the selection for lying in "a", and so "leaf" behind it is not examined.
    SelectRows({a, b, leaf, square});
    ASSERT_EQ(GetSelection(), "a leaf square");
    DelSelected();
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(GetContent(), "e() m(only) box");
    EXPECT_EQ(GetPointNumbers(), std::vector<int>({6, 8}));
}

TEST_F(TreeEdit, ClosesTheIconOfAFolderThatLosesItsLastRow)
{
    gtk_tree_view_expand_all(GTK_TREE_VIEW(treeview));
    ASSERT_EQ(GetIcon(m), pbfoldero);
    Delete({only, a}); // "m" stands further up afterwards
    EXPECT_EQ(GetContent(), "e() m() box square");
    EXPECT_EQ(GetIcon(2), pbfolderc);
}

static void Count(GtkTreeModel*, GtkTreePath*, GtkTreeIter*, int* number)
{
    ++*number;
}

// A row that is written to is measured and looked for anew, which takes time in a large tree.
TEST_F(TreeEdit, WritesOnlyToTheRowsWhoseNodesMove)
{
    int written = 0;
    const gulong counter = g_signal_connect(store, "row-changed", G_CALLBACK(Count), &written);
    Delete({square}); // the last node
    EXPECT_EQ(written, 0);
    Delete({e}); // node 3: 4 to 8 move down
    EXPECT_EQ(written, 5);
    g_signal_handler_disconnect(store, counter);
}

TEST_F(TreeEdit, KeepsTheOtherFoldersOpen)
{
    gtk_tree_view_expand_all(GTK_TREE_VIEW(treeview));
    Delete({e});
    EXPECT_EQ(GetIcon(a), pbfoldero);
    EXPECT_EQ(GetIcon(b), pbfoldero);
    GtkTreePath* path = gtk_tree_model_get_path(GTK_TREE_MODEL(store), &treeiters[3].iter); // m
    EXPECT_TRUE(gtk_tree_view_row_expanded(GTK_TREE_VIEW(treeview), path));
    gtk_tree_path_free(path);
}

TEST_F(TreeEdit, DeletesNothingWhenNothingIsSelected)
{
    Delete({});
    EXPECT_EQ(GetNames(), "a b e m deep leaf only box square");
    EXPECT_EQ(pnumber, 0);
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted); // by the selection alone
}

TEST_F(TreeEdit, SavesTheWholeSceneOnceBeforeDeleting)
{
    Delete({a, box});
    ASSERT_EQ(pnumber, 1);
    EXPECT_EQ(puffer[0].kind, 1);
    EXPECT_EQ(puffer[0].shapenumber, 5);
    EXPECT_EQ(puffer[0].treeiternumber, 10);
}

TEST_F(TreeEdit, BringsBackWhatWasDeletedByUndo)
{
    Delete({b, leaf, box});
    Undo();
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(GetNames(), "a b e m deep leaf only box square");
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m(only) box square");
    EXPECT_EQ(GetPointNumbers(), std::vector<int>({3, 5, 6, 8, 4}));
    Redo();
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(GetContent(), "a() e() m(only) square");
}

TEST_F(TreeEdit, AsksForARedrawAfterDeleting)
{
    SelectRows({box});
    rdstate = 0;
    DelSelected();
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
}

TEST_F(TreeEdit, DeletesMoreThan256NodesAtOnce)
{
    for (int i = 0; i < 300; i++) {
        AddShapeRow(FlatTriangle(), "in" + std::to_string(i), e);
        AddFolder("folder" + std::to_string(i), b);
    }
    Delete({e, b});
    EXPECT_EQ(GetContent(), "a(leaf) m(only) box square");
    EXPECT_EQ(shapenumber, 4);
}

TEST_F(TreeEdit, DeletesMoreThan256SelectedRows)
{
    std::vector<int> nodes;
    for (int i = 0; i < 300; i++) {
        nodes.push_back(AddShapeRow(FlatTriangle(), "in" + std::to_string(i), e));
    }
    nodes.erase(nodes.begin() + 150); // one stays
    Delete(nodes);
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e(in150) m(only) box square");
    EXPECT_EQ(treeiters[treeiternumber - 1].shapeindex, 5);
}

// Whatever is deleted, the others keep their order, their folders and their shapes.
TEST_F(TreeEdit, KeepsTheOthersInOrder)
{
    std::mt19937 random(11);
    for (int round = 0; round < 60; round++) {
        StartEmptyScene();
        std::vector<int> folders{0};
        for (int i = 0; i < 12; i++) {
            const int parent = folders[random() % folders.size()];
            const std::string name = std::to_string(i);
            if (random() % 2 == 0) {
                folders.push_back(AddFolder(name, parent));
            } else {
                AddShapeRow(random() % 2 == 0 ? Square() : Pyramid(), name, parent);
            }
        }
        std::vector<bool> gone(std::size_t(treeiternumber), false);
        std::vector<int> rows;
        std::string names;
        std::vector<int> points;
        for (int n = 1; n < treeiternumber; n++) { // a folder stands before what is in it
            const bool picked = random() % 4 == 0;
            gone[std::size_t(n)] = picked || gone[std::size_t(treeiters[n].parent)];
            if (picked) {
                rows.push_back(n);
            }
            if (!gone[std::size_t(n)]) {
                names += (names.empty() ? "" : " ") + std::string(treeiters[n].name);
                if (treeiters[n].type != NODE_FOLDER) {
                    points.push_back(shapes[treeiters[n].shapeindex]->pointnumber);
                }
            }
        }
        Delete(rows);
        ASSERT_EQ(GetNames(), names);
        ASSERT_EQ(GetPointNumbers(), points);
    }
}

// The first record of a shape's sides, by its place in activesides.
static int GetSideOf(int shapeindex)
{
    int place = 0;
    for (int i = 0; i < shapeindex; i++) {
        place += shapes[i]->sidenumber;
    }
    return place;
}

TEST_F(TreeEdit, RemovesTheShapeOfASide)
{
    RemoveShape(GetSideOf(2));
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m() box square");
    EXPECT_EQ(GetPointNumbers(), std::vector<int>({3, 5, 8, 4}));
    RemoveShape(GetSideOf(0) + 3); // the third side of "leaf"
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(GetContent(), "a(b(deep)) e() m() box square");
    EXPECT_EQ(GetPointNumbers(), std::vector<int>({3, 8, 4}));
}

TEST_F(TreeEdit, LowersTheFoldersAboveARemovedShape)
{
    const int late = AddFolder("late"); // its index lies above that of the shape which goes
    AddShapeRow(Square(), "inside", late);
    RemoveShape(GetSideOf(0));
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(treeiters[treeiternumber - 1].parent, late - 1);
    EXPECT_EQ(GetContent(late - 1), "inside");
}

TEST_F(TreeEdit, RemovesTheLastSide)
{
    RemoveShape(activesidenumber - 1);
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m(only) box");
}

TEST_F(TreeEdit, RemovesNothingForASideThatIsGone)
{
    RemoveShape(activesidenumber);
    RemoveShape(-1);
    EXPECT_EQ(shapenumber, 5);
    EXPECT_EQ(pnumber, 0);
    EXPECT_EQ(rdstate & redrawwanted, 0);
}

TEST_F(TreeEdit, SavesTheWholeSceneBeforeRemovingAShape)
{
    RemoveShape(GetSideOf(3));
    ASSERT_EQ(pnumber, 1);
    EXPECT_EQ(puffer[0].kind, 1);
    EXPECT_EQ(puffer[0].shapenumber, 5);
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
}

TEST_F(TreeEdit, BringsBackARemovedShapeByUndo)
{
    RemoveShape(GetSideOf(1));
    Undo();
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m(only) box square");
    EXPECT_EQ(GetPointNumbers(), std::vector<int>({3, 5, 6, 8, 4}));
}

TEST_F(TreeEdit, ShowsWhatIsVisibleAfterRemovingAShape)
{
    SelectRows({leaf, box}); // alone they are shown: the view starts restricted to the selection
    selected[0] = 7;         // on its way out of sight
    selected[4] = 0;         // out of sight
    RemoveShape(GetSideOf(3));
    EXPECT_EQ(selected[0], 31); // deep
    EXPECT_EQ(selected[1], 31); // leaf, which is selected in the tree and not marked for it
    EXPECT_EQ(selected[3], 0);  // square
    EXPECT_EQ(GetSelection(), "leaf");
}

static std::string GetStatusText()
{
    return gtk_label_get_text(GTK_LABEL(FindWidget(statusbar, GTK_TYPE_LABEL)));
}

TEST_F(TreeEdit, SaysThatShapesAreHiddenOnlyWhileTheyAre)
{
    SelectRows({box}); // the view starts restricted to the selection
    std::fill(selected, selected + shapenumber, static_cast<unsigned char>(31));
    PrintStatusBar(" ");
    RemoveShape(GetSideOf(3));
    EXPECT_EQ(std::count(selected, selected + shapenumber, 31), 4);
    EXPECT_EQ(GetStatusText(), " ");
    SelectRows({square});
    PrintStatusBar(" ");
    DelSelected(); // nothing is selected any more: the three others fade out
    EXPECT_EQ(GetStatusText(), " Only selected shapes are shown");
}

TEST_F(TreeEdit, EndsAConstructionWhenShapesGo)
{
    const float place[3] = {0, 0, 0};
    AddNewPoint(place);
    newsign = 1;
    RemoveShape(GetSideOf(4));
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_EQ(activepointnumber, 3 + 5 + 6 + 8);
    AddNewPoint(place);
    newsign = 1;
    Delete({box});
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_EQ(activepointnumber, 3 + 5 + 6);
}

TEST_F(TreeEdit, EndsATakenUpToolAndItsDrag)
{
    mainview.onlyselected = 0; // what is left stays in sight
    SelectRows({leaf});
    RefreshView();
    mainview.action = MOVE_SHAPE; // of a shape whose index would name another afterwards
    srshapenumber = 4;
    mstate = LEFT_DRAG;
    SetActivesOff();
    DelSelected();
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(mainview.action, TOOL_NONE);
    EXPECT_EQ(mstate, POINTER_IDLE);
    EXPECT_EQ(activesides[activesidenumber - 1].active, 1); // can be picked again
}

// Calls a command whose dialog is answered with a name. What the dialog showed is checked.
static void AnswerWithName(void (*command)(), const std::string& prompt, const std::string& offered,
                           const std::string& name, int response = GTK_RESPONSE_OK)
{
    AnswerDialog([=](GtkDialog* dialog) {
        EXPECT_STREQ(gtk_window_get_title(GTK_WINDOW(dialog)), "New shape");
        GtkWidget* label = FindWidget(gtk_dialog_get_content_area(dialog), GTK_TYPE_LABEL);
        EXPECT_EQ(gtk_label_get_text(GTK_LABEL(label)), prompt);
        GtkEntry* entry = GTK_ENTRY(FindWidget(GTK_WIDGET(dialog), GTK_TYPE_ENTRY));
        EXPECT_EQ(gtk_entry_get_text(entry), offered);
        gtk_entry_set_text(entry, name.c_str());
        gtk_dialog_response(dialog, response);
        return true;
    });
    command();
    EXPECT_EQ(FindBrokenRule(), "");
}

static void Rename(int node, const std::string& name, int response = GTK_RESPONSE_OK)
{
    SelectRows({node});
    AnswerWithName(RenameSelected, "Please give me the new name:", treeiters[node].name, name,
                   response);
}

TEST_F(TreeEdit, RenamesAShapeAndMovesItToItsPlace)
{
    Rename(square, "Alpha");
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m(only) Alpha box");
    Rename(square, "zeta");
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m(only) box zeta");
    Rename(square, "Box"); // an equal name goes after the one that is there
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m(only) box Box");
    Rename(box, "BOX");
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m(only) Box BOX");
    EXPECT_EQ(treeiters[box].shapeindex, 3);
    EXPECT_EQ(treeiters[square].shapeindex, 4);
}

TEST_F(TreeEdit, RenamesAFolderAmongTheFolders)
{
    gtk_tree_view_expand_all(GTK_TREE_VIEW(treeview));
    Rename(a, "zoo");
    EXPECT_EQ(GetContent(), "e() m(only) zoo(b(deep) leaf) box square");
    EXPECT_EQ(GetIcon(a), pbfoldero); // still open
    Rename(m, "all");
    EXPECT_EQ(GetContent(), "all(only) e() zoo(b(deep) leaf) box square");
    EXPECT_EQ(GetSelection(), "all");
}

TEST_F(TreeEdit, RenamesTheOnlyNodeOfAFolder)
{
    Rename(only, "alone");
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m(alone) box square");
}

TEST_F(TreeEdit, RenamesInPlaceWhenTheOrderStays)
{
    Rename(box, "cube");
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m(only) cube square");
    Rename(e, "f");
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) f() m(only) cube square");
}

TEST_F(TreeEdit, RenamesNothingWhenTheNameIsCancelled)
{
    Rename(square, "Alpha", GTK_RESPONSE_CANCEL);
    Rename(square, ""); // no name either
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m(only) box square");
}

TEST_F(TreeEdit, RenamesNothingWhenNoneOrTwoAreSelected)
{
    SelectRows({});
    RenameSelected(); // a dialog would wait for ever
    SelectRows({box, square});
    RenameSelected();
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m(only) box square");
}

TEST_F(TreeEdit, RenamesWithoutAnUndoStep)
{
    Rename(square, "Alpha");
    EXPECT_EQ(pnumber, 0);
}

TEST_F(TreeEdit, KeepsTheRowsInOrderThroughManyNames)
{
    std::mt19937 random(5);
    for (int i = 0; i < 60; i++) {
        const int node = 1 + int(random() % unsigned(treeiternumber - 1));
        Rename(node, std::string(1, char((random() % 2 == 0 ? 'a' : 'A') + random() % 26)));
    }
    for (int n = 0; n < treeiternumber; n++) {
        const TreeIter& folder = treeiters[n];
        for (int i = 0; i + 1 < folder.childnumber; i++) {
            const TreeIter& before = treeiters[folder.children[i]];
            const TreeIter& after = treeiters[folder.children[i + 1]];
            if ((before.type == NODE_FOLDER) == (after.type == NODE_FOLDER)) {
                EXPECT_LE(strcasecmp(before.name, after.name), 0);
            } else {
                EXPECT_EQ(before.type, NODE_FOLDER);
            }
        }
    }
}

static void MakeFolder(const std::string& name, int response = GTK_RESPONSE_OK)
{
    AnswerWithName(NewFolder, "Please give me the name of new folder:", "folder", name, response);
}

TEST_F(TreeEdit, MakesAFolderWhereTheSelectionSays)
{
    MakeFolder("new");
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m(only) new() box square");
    SelectRows({e});
    MakeFolder("folder");
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e(folder()) m(only) new() box square");
    SelectRows({leaf});
    MakeFolder("A");
    EXPECT_EQ(GetContent(), "a(A() b(deep) leaf) e(folder()) m(only) new() box square");
    EXPECT_EQ(GetIcon(treeiternumber - 1), pbfolderc);
}

TEST_F(TreeEdit, MakesFoldersOfOneName)
{
    MakeFolder("e");
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() e() m(only) box square");
    EXPECT_EQ(treeiters[0].children[2], treeiternumber - 1); // after the one that was there
}

TEST_F(TreeEdit, MakesNoFolderWithoutAName)
{
    MakeFolder("new", GTK_RESPONSE_CANCEL);
    MakeFolder("");
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m(only) box square");
}

TEST_F(TreeEdit, MakesAFolderWithoutAnUndoStep)
{
    MakeFolder("new");
    EXPECT_EQ(pnumber, 0);
}

} // namespace korvane
