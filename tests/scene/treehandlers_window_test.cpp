#include "scene/treehandlers.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/treeselection.h"
#include "scene/treeview.h"
#include "tests/support/invariants.h"
#include "tests/support/rowdrag.h"
#include "tests/support/shapes.h"
#include "tests/support/treetexts.h"
#include "tests/support/widgets.h"
#include "view/cameraflight.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

struct PathDeleter {
    void operator()(GtkTreePath* path) const
    {
        gtk_tree_path_free(path);
    }
};
using OwnedPath = std::unique_ptr<GtkTreePath, PathDeleter>;

static GtkTreeModel* GetModel()
{
    return GTK_TREE_MODEL(store);
}

static GtkTreeView* GetView()
{
    return GTK_TREE_VIEW(treeview);
}

static OwnedPath GetPath(int node)
{
    return OwnedPath(gtk_tree_model_get_path(GetModel(), &treeiters[node].iter));
}

static GdkPixbuf* GetIcon(int node)
{
    GdkPixbuf* icon = nullptr;
    gtk_tree_model_get(GetModel(), &treeiters[node].iter, COLUMN_ICON, &icon, -1);
    g_object_unref(icon); // the store still holds it
    return icon;
}

static bool IsExpanded(int node)
{
    return gtk_tree_view_row_expanded(GetView(), GetPath(node).get()) == TRUE;
}

static bool Expand(int node)
{
    return gtk_tree_view_expand_row(GetView(), GetPath(node).get(), FALSE) == TRUE;
}

static void Select(int node)
{
    GtkTreeSelection* selection = gtk_tree_view_get_selection(GetView());
    gtk_tree_selection_unselect_all(selection);
    gtk_tree_selection_select_iter(selection, &treeiters[node].iter);
}

// The first row whose place or icon is not what the program takes it for.
static std::string FindWrongRow()
{
    for (int n = 1; n < treeiternumber; n++) {
        const TreeIter& node = treeiters[n];
        GtkTreeIter row = node.iter;
        if (!gtk_tree_store_iter_is_valid(store, &row)) {
            return std::string("the place of the row is stale: ") + node.name;
        }
        int index = 0;
        gtk_tree_model_get(GetModel(), &row, COLUMN_NODE, &index, -1);
        if (index != n) {
            return std::string("the row is that of another node: ") + node.name;
        }
        GdkPixbuf* const folder = IsExpanded(n) ? pbfoldero : pbfolderc;
        GdkPixbuf* const shape = node.type == NODE_SIDE ? pbside : pbshape;
        if (GetIcon(n) != (node.type == NODE_FOLDER ? folder : shape)) {
            return std::string("the icon is wrong: ") + node.name;
        }
    }
    return "";
}

// Closes every folder and opens them again, which the tree view refuses when it takes one for
// empty.
static std::string FindFolderThatStaysClosed()
{
    gtk_tree_view_collapse_all(GetView());
    for (int n = 1; n < treeiternumber; n++) {
        const OwnedPath path = GetPath(n);
        gtk_tree_view_expand_to_path(GetView(), path.get());
        if (IsExpanded(n) != (treeiters[n].childnumber > 0)) {
            return std::string("the folder does not open: ") + treeiters[n].name;
        }
    }
    return "";
}

// What is wrong with the rows as the program and the tree view know them. Leaves all folders open.
static std::string FindBrokenRow()
{
    const std::string broken = FindWrongRow();
    return broken.empty() ? FindFolderThatStaysClosed() : broken;
}

static bool DragBefore(int node, int other)
{
    return DragRow(node, GetPath(other).get());
}

static bool DragAfter(int node, int other)
{
    const OwnedPath goal = GetPath(other);
    gtk_tree_path_next(goal.get());
    return DragRow(node, goal.get());
}

static bool DragOnto(int node, int other)
{
    const OwnedPath goal = GetPath(other);
    gtk_tree_path_append_index(goal.get(), 0);
    return DragRow(node, goal.get());
}

// Rows: a(b(deep) leaf) e() m(only) box square. The last two are at the top.
class TreeHandlers : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ShowMainWindow();
        StartEmptyScene();
        a = AddFolder("a");
        b = AddFolder("b", a);
        e = AddFolder("e");
        m = AddFolder("m");
        deep = AddShapeRow(Square(), "deep", b);
        leaf = AddShapeRow(Square(), "leaf", a);
        only = AddShapeRow(Square(), "only", m);
        box = AddShapeRow(Cube(), "box", 0);
        square = AddShapeRow(Square(), "square", 0);
        camposition = cameraframes; // no flight
    }
    void TearDown() override
    {
        EXPECT_EQ(FindBrokenRule(), "");
        EXPECT_EQ(movediter, nullptr);
        EXPECT_EQ(insertiter, 0);
        StartEmptyScene();
        camposition = cameraframes;
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

TEST_F(TreeHandlers, OpenAndCloseTheIconOfAFolder)
{
    EXPECT_EQ(GetIcon(a), pbfolderc);
    Expand(a);
    EXPECT_EQ(GetIcon(a), pbfoldero);
    EXPECT_EQ(GetIcon(b), pbfolderc);
    gtk_tree_view_collapse_row(GetView(), GetPath(a).get());
    EXPECT_EQ(GetIcon(a), pbfolderc);
}

TEST_F(TreeHandlers, CloseTheInnerIconsWhenAFolderIsClosed)
{
    gtk_tree_view_expand_all(GetView());
    EXPECT_EQ(GetIcon(b), pbfoldero);
    gtk_tree_view_collapse_row(GetView(), GetPath(a).get());
    EXPECT_EQ(GetIcon(b), pbfolderc);
    EXPECT_EQ(GetIcon(m), pbfoldero); // beside it
    EXPECT_EQ(GetIcon(deep), pbside); // no folder
}

TEST_F(TreeHandlers, CloseEveryFolderBelowANodeButNotTheNode)
{
    gtk_tree_view_expand_all(GetView());
    TreeCollapsedAll(a);
    EXPECT_EQ(GetIcon(a), pbfoldero);
    EXPECT_EQ(GetIcon(b), pbfolderc);
    TreeCollapsedAll(0);
    EXPECT_EQ(GetIcon(a), pbfolderc);
    EXPECT_EQ(GetIcon(m), pbfolderc);
    gtk_tree_view_collapse_all(GetView());
}

static void Activate(int node)
{
    GtkTreeViewColumn* column = gtk_tree_view_get_column(GetView(), 0);
    gtk_tree_view_row_activated(GetView(), GetPath(node).get(), column);
}

TEST_F(TreeHandlers, OpenAnActivatedFolderByOneLevelAndCloseItTheNextTime)
{
    Select(square);
    Activate(a);
    EXPECT_TRUE(IsExpanded(a));
    EXPECT_FALSE(IsExpanded(b));
    Activate(a);
    EXPECT_FALSE(IsExpanded(a));
    EXPECT_EQ(camposition, cameraframes); // neither flies
}

TEST_F(TreeHandlers, FlyToTheSelectionWhenAShapeIsActivated)
{
    Select(square);
    Activate(box);
    EXPECT_EQ(camposition, 0);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({square}));
    // The centre of the selected shape, the square from (0, 0) to (1, 1), not of the activated one.
    EXPECT_FLOAT_EQ(camtable[cameraframes - 1].center[0], 0.5F);
    EXPECT_FLOAT_EQ(camtable[cameraframes - 1].center[1], 0.5F);
}

TEST_F(TreeHandlers, FlyToTheSelectionWhenAnEmptyFolderIsActivated)
{
    Select(square);
    Activate(e);
    EXPECT_EQ(camposition, 0);
}

TEST_F(TreeHandlers, StayWhenAShapeIsActivatedAndNothingIsSelected)
{
    gtk_tree_selection_unselect_all(gtk_tree_view_get_selection(GetView()));
    Activate(box);
    EXPECT_EQ(camposition, cameraframes);
}

static void PressOverRow(guint button, int node)
{
    GdkRectangle cell{};
    gtk_tree_view_get_cell_area(GetView(), GetPath(node).get(),
                                gtk_tree_view_get_column(GetView(), 0), &cell);
    GdkEvent* event = gdk_event_new(GDK_BUTTON_PRESS);
    event->button.window = GDK_WINDOW(g_object_ref(gtk_tree_view_get_bin_window(GetView())));
    event->button.button = button;
    event->button.x = cell.x + cell.width / 2.0;
    event->button.y = cell.y + cell.height / 2.0;
    gtk_widget_event(treeview, event);
    event->type = GDK_BUTTON_RELEASE;
    gtk_widget_event(treeview, event);
    gdk_event_free(event);
    gtk_menu_popdown(GTK_MENU(treemenu));
}

TEST_F(TreeHandlers, KeepTheSelectionWhenTheMenuIsWantedForOneOfItsRows)
{
    SelectRows({e, box});
    HandleEvents(); // the rows are laid out
    PressOverRow(3, box);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({e, box}));
    PressOverRow(3, e);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({e, box}));
}

TEST_F(TreeHandlers, SelectARowThatWasNotWhenTheMenuIsWantedForIt)
{
    SelectRows({e, box});
    HandleEvents();
    PressOverRow(3, square);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({square}));
}

TEST_F(TreeHandlers, SelectOneRowOfSeveralByTheLeftButton)
{
    SelectRows({e, box});
    HandleEvents();
    PressOverRow(1, box);
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({box}));
}

static gboolean ReleaseButton(guint button)
{
    GdkEventButton event{};
    event.type = GDK_BUTTON_RELEASE;
    event.button = button;
    return TreeButtonRelease(treeview, &event);
}

// The items that depend on the selection and are shown, one letter each.
static std::string GetShownItems()
{
    std::string shown;
    shown += gtk_widget_get_visible(menucopys) ? "c" : "";
    shown += gtk_widget_get_visible(menudels) ? "d" : "";
    shown += gtk_widget_get_visible(menucolor) ? "o" : "";
    shown += gtk_widget_get_visible(menurename) ? "r" : "";
    gtk_menu_popdown(GTK_MENU(treemenu));
    return shown;
}

TEST_F(TreeHandlers, OfferInTheMenuWhatTheSelectionAllows)
{
    EXPECT_EQ(ReleaseButton(3), TRUE);
    EXPECT_EQ(GetShownItems(), "");
    Select(a);
    EXPECT_EQ(ReleaseButton(3), TRUE);
    EXPECT_EQ(GetShownItems(), "cdor");
    gtk_tree_selection_select_iter(gtk_tree_view_get_selection(GetView()), &treeiters[box].iter);
    EXPECT_EQ(ReleaseButton(3), TRUE);
    EXPECT_EQ(GetShownItems(), "cdo");
}

TEST_F(TreeHandlers, LeaveTheOtherItemsOfTheMenuAlone)
{
    gtk_widget_hide(menupastes);
    Select(a);
    ReleaseButton(3);
    EXPECT_FALSE(gtk_widget_get_visible(menupastes));
    gtk_widget_show(menupastes);
    gtk_tree_selection_unselect_all(gtk_tree_view_get_selection(GetView()));
    ReleaseButton(3);
    EXPECT_TRUE(gtk_widget_get_visible(menupastes));
    gtk_menu_popdown(GTK_MENU(treemenu));
}

TEST_F(TreeHandlers, LeaveOtherButtonsToTheTreeView)
{
    Select(a);
    ReleaseButton(3);
    GetShownItems(); // closes the menu
    gtk_tree_selection_unselect_all(gtk_tree_view_get_selection(GetView()));
    for (guint button : {1U, 2U}) {
        EXPECT_EQ(ReleaseButton(button), FALSE);
        EXPECT_EQ(GetShownItems(), "cdor"); // as before
    }
}

TEST_F(TreeHandlers, KeepTheFirstRowThatADragInserts)
{
    GtkTreeIter first;
    GtkTreeIter second;
    gtk_tree_store_append(store, &first, nullptr);
    ASSERT_NE(movediter, nullptr);
    EXPECT_EQ(movediter->user_data, first.user_data);
    gtk_tree_store_append(store, &second, &first);
    EXPECT_EQ(movediter->user_data, first.user_data);
    gtk_tree_iter_free(movediter);
    movediter = nullptr;
    gtk_tree_store_remove(store, &second);
    gtk_tree_store_remove(store, &first);
}

TEST_F(TreeHandlers, SortAShapeIntoTheFolderOnWhichItIsDropped)
{
    const int shape = treeiters[box].shapeindex;
    ASSERT_TRUE(DragOnto(box, a)); // dropped before the folder "b"
    EXPECT_EQ(GetContent(), "a(b(deep) box leaf) e() m(only) square");
    EXPECT_EQ(treeiters[box].parent, a);
    EXPECT_EQ(treeiters[box].shapeindex, shape);
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(FindBrokenRow(), "");
}

TEST_F(TreeHandlers, SelectADroppedRowAgain)
{
    Select(box);
    ASSERT_TRUE(DragOnto(box, a));
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({box}));
    EXPECT_TRUE(IsExpanded(a)); // so that it is seen
    EXPECT_EQ(selected[treeiters[box].shapeindex] & selectedintree, selectedintree);
}

TEST_F(TreeHandlers, SortAShapeIntoTheTopLevel)
{
    Expand(a);
    ASSERT_TRUE(DragBefore(leaf, a)); // shapes stand after all folders
    EXPECT_EQ(GetContent(), "a(b(deep)) e() m(only) box leaf square");
    EXPECT_EQ(treeiters[leaf].parent, 0);
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(FindBrokenRow(), "");
}

TEST_F(TreeHandlers, MoveAFolderWithAllThatIsInIt)
{
    gtk_tree_view_expand_all(GetView());
    ASSERT_TRUE(DragOnto(a, m));
    EXPECT_EQ(GetContent(), "e() m(a(b(deep) leaf) only) box square");
    EXPECT_EQ(treeiters[a].parent, m);
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({a}));
    EXPECT_FALSE(IsExpanded(a));
    EXPECT_EQ(FindBrokenRow(), "");
}

TEST_F(TreeHandlers, MoveAFolderUpAndOutOfAnother)
{
    Expand(a);
    ASSERT_TRUE(DragAfter(b, square)); // the very end
    EXPECT_EQ(GetContent(), "a(leaf) b(deep) e() m(only) box square");
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(FindBrokenRow(), "");
}

TEST_F(TreeHandlers, KeepTheOrderWhenARowIsDroppedInItsOwnFolder)
{
    const std::string before = GetContent();
    ASSERT_TRUE(DragBefore(square, a));
    EXPECT_EQ(GetContent(), before);
    EXPECT_EQ(FindBrokenRule(), "");
    ASSERT_TRUE(DragAfter(a, square));
    EXPECT_EQ(GetContent(), before);
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>({a}));
    EXPECT_EQ(FindBrokenRow(), "");
}

TEST_F(TreeHandlers, PutADroppedRowAfterAnEqualName)
{
    const int other = AddShapeRow(Cube(), "BOX", a);
    Expand(a);
    ASSERT_TRUE(DragBefore(other, box));
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m(only) box BOX square");
    EXPECT_EQ(FindBrokenRow(), "");
}

TEST_F(TreeHandlers, TakeAShapeForItsFolderWhenARowIsDroppedOnIt)
{
    Expand(a);
    ASSERT_TRUE(DragOnto(box, leaf));
    EXPECT_EQ(GetContent(), "a(b(deep) box leaf) e() m(only) square");
    EXPECT_EQ(treeiters[box].parent, a);
    EXPECT_EQ(GetIcon(leaf), pbside);
    EXPECT_EQ(FindBrokenRule(), "");
    ASSERT_TRUE(DragOnto(e, square)); // a shape at the top
    EXPECT_EQ(treeiters[e].parent, 0);
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(FindBrokenRow(), "");
}

TEST_F(TreeHandlers, CloseTheFolderThatLosesItsLastRow)
{
    gtk_tree_view_expand_all(GetView());
    ASSERT_TRUE(DragAfter(only, square));
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m() box only square");
    EXPECT_EQ(GetIcon(m), pbfolderc);
    EXPECT_EQ(FindBrokenRow(), "");
}

TEST_F(TreeHandlers, CloseTheRightFolderWhenTheMovedOneComesBeforeIt)
{
    // Dropped at the end, "c" is sorted in before "x", which then stands one row further down than
    // the store says when it tells that "x" has lost its last row: "m" stands there.
    const int x = AddFolder("x");
    const int inside = AddFolder("c", x);
    AddShapeRow(Square(), "kept", inside);
    gtk_tree_view_expand_all(GetView());
    ASSERT_TRUE(DragAfter(inside, square));
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) c(kept) e() m(only) x() box square");
    EXPECT_EQ(GetIcon(x), pbfolderc);
    EXPECT_EQ(GetIcon(m), pbfoldero);
    EXPECT_EQ(FindBrokenRule(), "");
    gtk_tree_view_collapse_all(GetView());
    for (int folder : {a, inside, m}) {
        EXPECT_TRUE(Expand(folder)) << treeiters[folder].name;
    }
    for (int folder : {e, x}) {
        EXPECT_FALSE(Expand(folder)) << treeiters[folder].name;
    }
    EXPECT_EQ(FindBrokenRow(), "");
}

TEST_F(TreeHandlers, CannotPutAFolderIntoItself)
{
    gtk_tree_view_expand_all(GetView());
    EXPECT_FALSE(DragOnto(a, a));
    EXPECT_FALSE(DragOnto(a, b));
    EXPECT_FALSE(DragOnto(a, deep));
    EXPECT_EQ(GetContent(), "a(b(deep) leaf) e() m(only) box square");
}

TEST_F(TreeHandlers, KeepTreeAndRowsInStepThroughManyDrags)
{
    for (const char* name : {"c", "f", "k", "x"}) { // folders that become empty with one drag
        AddFolder("in", AddFolder(name));
    }
    std::mt19937 random(7); // the same drags in every run
    const auto pick = [&random] { return 1 + int(random() % unsigned(treeiternumber - 1)); };
    constexpr int drags = 300;
    int made = 0;
    for (int i = 0; i < drags; i++) {
        const int node = pick();
        const int other = pick();
        const auto place = random() % 3;
        const std::string before = GetContent();
        const bool moved = place == 0   ? DragBefore(node, other)
                           : place == 1 ? DragAfter(node, other)
                                        : DragOnto(node, other);
        made += moved ? 1 : 0;
        ASSERT_EQ(FindBrokenRule(), "") << before << " to " << GetContent();
        ASSERT_EQ(FindBrokenRow(), "") << before << " to " << GetContent();
        if (i % 2 == 0) {
            gtk_tree_view_collapse_all(GetView());
        }
    }
    EXPECT_GT(made, drags / 2);
}

static std::string ReadRowsAndListen()
{
    ::testing::internal::CaptureStdout();
    ReadRowsAgain();
    std::fflush(stdout);
    return ::testing::internal::GetCapturedStdout();
}

TEST_F(TreeHandlers, ReadEveryRowsPlaceAgain)
{
    for (int n = 1; n < treeiternumber; n++) {
        gtk_tree_store_set(store, &treeiters[n].iter, COLUMN_NODE, 99, -1);
        treeiters[n].iter = GtkTreeIter{};
    }
    EXPECT_EQ(ReadRowsAndListen(), "");
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(FindBrokenRow(), "");
}

static const char* const wholetree = "a\n  b\n    deep\n  leaf\ne\nm\n  only\nbox\nsquare\n";

TEST_F(TreeHandlers, ComplainAboutARowOfAnotherName)
{
    gtk_tree_store_set(store, &treeiters[only].iter, COLUMN_NAME, "other", -1);
    EXPECT_EQ(ReadRowsAndListen(), std::string("Jjjjjjaaaaaaj: other, only\n") + wholetree);
    gtk_tree_store_set(store, &treeiters[only].iter, COLUMN_NAME, "only", -1);
}

TEST_F(TreeHandlers, ComplainAboutAMissingRow)
{
    gtk_tree_store_remove(store, &treeiters[square].iter);
    EXPECT_EQ(ReadRowsAndListen(), "\u00f3\u00f3\u00f3\u00f3\u00f3\u00f3\u00f3\u00f3\u00f3\n");
    ShowRowsOfNode(square);
}

TEST_F(TreeHandlers, PrintTheTreeWithTwoSpacesForEachLevel)
{
    ::testing::internal::CaptureStdout();
    PrintAllTree(0, 0);
    PrintAllTree(m, 2);
    std::fflush(stdout);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), std::string(wholetree) + "    only\n");
}

TEST_F(TreeHandlers, CollectANodeBeforeWhatIsBelowIt)
{
    int count = 0;
    int* nodes = nullptr;
    DelTreeIter(m, &count, nodes);
    DelTreeIter(a, &count, nodes); // appended
    EXPECT_EQ(std::vector<int>(nodes, nodes + count),
              std::vector<int>({m, only, a, b, deep, leaf}));
    FreeArray(nodes);
}

TEST_F(TreeHandlers, CollectAThousandNodes)
{
    // Made in the order in which they are collected: the top, and nine times a folder with 110
    // folders. Equal names stay in the order in which they came.
    const int top = AddFolder("top");
    for (int i = 0; i < 9; i++) {
        const int folder = AddFolder("folder", top);
        for (int k = 0; k < 110; k++) {
            AddFolder("inside", folder);
        }
    }
    int count = 0;
    int* nodes = nullptr;
    DelTreeIter(top, &count, nodes);
    ASSERT_EQ(count, 1000); // 1 + 9 * (1 + 110)
    for (int i = 0; i < count; i++) {
        ASSERT_EQ(nodes[i], top + i);
    }
    FreeArray(nodes);
}

} // namespace korvane
