#include "scene/treehandlers.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/treeselection.h"
#include "scene/treeview.h"
#include "view/selectedfit.h"

#include <cstdio>
#include <cstring>

namespace korvane
{

static constexpr guint menubutton = 3;

static int GetNodeOfRow(GtkTreeIter* row)
{
    int node = 0;
    gtk_tree_model_get(GTK_TREE_MODEL(store), row, COLUMN_NODE, &node, -1);
    return node;
}

static void SetIcon(GtkTreeIter* row, GdkPixbuf* icon)
{
    gtk_tree_store_set(store, row, COLUMN_ICON, icon, -1);
}

void TreeExpanded(GtkTreeView*, GtkTreeIter* iter, GtkTreePath*)
{
    SetIcon(iter, pbfoldero);
}

void TreeCollapsedAll(int node)
{
    const TreeIter& folder = treeiters[node];
    for (int i = 0; i < folder.childnumber; i++) {
        const int child = folder.children[i];
        if (treeiters[child].type == NODE_FOLDER) {
            SetIcon(&treeiters[child].iter, pbfolderc);
            TreeCollapsedAll(child);
        }
    }
}

void TreeCollapsed(GtkTreeView*, GtkTreeIter* iter, GtkTreePath*)
{
    SetIcon(iter, pbfolderc);
    TreeCollapsedAll(GetNodeOfRow(iter)); // what is inside shows closed when it is shown again
}

void TreeActivated(GtkTreeView* view, GtkTreePath* path, GtkTreeViewColumn*)
{
    if (gtk_tree_view_row_expanded(view, path)) {
        gtk_tree_view_collapse_row(view, path);
        return;
    }
    gtk_tree_view_expand_row(view, path, FALSE);
    if (!gtk_tree_view_row_expanded(view, path)) { // a shape or an empty folder
        SelectedFit();
    }
}

static void ShowIf(GtkWidget* item, bool shown)
{
    if (shown) {
        gtk_widget_show(item);
    } else {
        gtk_widget_hide(item);
    }
}

static bool IsOverSelectedRow(GtkTreeView* view, const GdkEventButton* event)
{
    GtkTreePath* path = nullptr;
    if (!gtk_tree_view_get_path_at_pos(view, int(event->x), int(event->y), &path, nullptr, nullptr,
                                       nullptr)) {
        return false;
    }
    const bool over =
        gtk_tree_selection_path_is_selected(gtk_tree_view_get_selection(view), path) != FALSE;
    gtk_tree_path_free(path);
    return over;
}

gboolean TreeButtonPress(GtkTreeView* view, GdkEventButton* event)
{
    const bool formenu = event->type == GDK_BUTTON_PRESS && event->button == menubutton;
    return formenu && IsOverSelectedRow(view, event) ? TRUE : FALSE;
}

gboolean TreeButtonRelease(GtkWidget*, GdkEventButton* event)
{
    if (event->button != menubutton) {
        return FALSE;
    }
    for (GtkWidget* item : {menucopys, menudels, menucolor}) {
        ShowIf(item, treeselectednumber > 0);
    }
    ShowIf(menurename, treeselectednumber == 1);
    gtk_menu_popup(GTK_MENU(treemenu), nullptr, nullptr, nullptr, nullptr, event->button,
                   event->time);
    return TRUE;
}

void TreeInserted(GtkTreeModel*, GtkTreePath*, GtkTreeIter* iter)
{
    if (insertiter == 0 && movediter == nullptr) {
        movediter = gtk_tree_iter_copy(iter);
    }
}

// The folder into which a row was dropped. Dropped onto a shape's row, it goes beside that shape.
static int GetFolderOfDrop(GtkTreeIter* dropped)
{
    GtkTreeIter parentrow;
    if (!gtk_tree_model_iter_parent(GTK_TREE_MODEL(store), &parentrow, dropped)) {
        return 0;
    }
    const int node = GetNodeOfRow(&parentrow);
    return treeiters[node].type == NODE_FOLDER ? node : treeiters[node].parent;
}

// The dragged row is gone. Its copy stands where it was dropped, with copies of what was below it:
// they give way to rows at the sorted place.
void TreeDeleted(GtkTreeModel*, GtkTreePath*)
{
    if (movediter == nullptr) {
        return;
    }
    const int node = GetNodeOfRow(movediter);
    const int folder = GetFolderOfDrop(movediter);
    BeginRowChanges();
    GtkTreeIter copy = *movediter;
    gtk_tree_iter_free(movediter);
    movediter = nullptr; // the removal that follows is our own: this handler ignores it
    gtk_tree_store_remove(store, &copy);
    TakeFromParent(node);
    PutAtSortedPlace(node, folder);
    ShowRowsOfNode(node);
    ReadRowsAgain();
    EndRowChanges();
    gtk_tree_selection_unselect_all(gtk_tree_view_get_selection(GTK_TREE_VIEW(treeview)));
    SelectRow(node);
}

// Tells the tree view anew, with its true path, whether a row has children.
static void TellWhetherRowHasChild(GtkTreeModel* model, GtkTreeIter* iter)
{
    GtkTreePath* path = gtk_tree_model_get_path(model, iter);
    gtk_tree_model_row_has_child_toggled(model, path, iter);
    gtk_tree_path_free(path);
}

// The store tells a row's path from before the removal; when rows were put in since, another row
// stands there and would lose its expander.
static void RepairStalePath(GtkTreeModel* model, GtkTreePath* path, GtkTreeIter* iter)
{
    GtkTreePath* truepath = gtk_tree_model_get_path(model, iter);
    if (gtk_tree_path_compare(path, truepath) != 0) {
        TellWhetherRowHasChild(model, iter);
        GtkTreeIter other;
        if (gtk_tree_model_get_iter(model, &other, path)) {
            TellWhetherRowHasChild(model, &other);
        }
    }
    gtk_tree_path_free(truepath);
}

void TreeRowHasChild(GtkTreeModel* model, GtkTreePath* path, GtkTreeIter* iter)
{
    RepairStalePath(model, path, iter);
    if (!gtk_tree_model_iter_has_child(model, iter) &&
        treeiters[GetNodeOfRow(iter)].type == NODE_FOLDER) {
        SetIcon(iter, pbfolderc);
    }
}

// Deliberate: the texts of this line and of SetAllIter's are the system's own; whoever sees one in
// a terminal finds it here.
static void CompareNames(const TreeIter& node)
{
    char* name = nullptr;
    GtkTreeIter row = node.iter;
    gtk_tree_model_get(GTK_TREE_MODEL(store), &row, COLUMN_NAME, &name, -1);
    if (name == nullptr || std::strcmp(name, node.name) != 0) {
        std::printf("Jjjjjjaaaaaaj: %s, %s\n", name == nullptr ? "" : name, node.name);
        PrintAllTree(0, 0);
    }
    g_free(name);
}

// Only where a row names another node: each writing makes the toolkit count the rows above it and
// measure the row again.
static void WriteNodesIntoRows()
{
    for (int n = 1; n < treeiternumber; n++) {
        GtkTreeIter* row = &treeiters[n].iter;
        if (row->stamp != 0 && GetNodeOfRow(row) != n) { // no stamp: there is no row
            gtk_tree_store_set(store, row, COLUMN_NODE, n, -1);
        }
    }
}

void SetAllIter(int node, GtkTreePath* path)
{
    const TreeIter& folder = treeiters[node];
    GtkTreeModel* model = GTK_TREE_MODEL(store);
    GtkTreeIter row = {};
    bool found = gtk_tree_model_get_iter(model, &row, path) != FALSE;
    for (int i = 0; i < folder.childnumber; i++) {
        const int child = folder.children[i];
        treeiters[child].iter = row;
        if (found) {
            CompareNames(treeiters[child]);
            found = gtk_tree_model_iter_next(model, &row) != FALSE; // a path is found row by row
        } else {
            std::printf("óóóóóóóóó\n");
        }
        if (treeiters[child].childnumber > 0) {
            gtk_tree_path_down(path);
            SetAllIter(child, path);
            gtk_tree_path_up(path);
        }
        gtk_tree_path_next(path);
    }
    if (node == 0) {
        WriteNodesIntoRows();
    }
}

void ReadRowsAgain()
{
    GtkTreePath* first = gtk_tree_path_new_first();
    SetAllIter(0, first);
    gtk_tree_path_free(first);
}

void PrintAllTree(int node, int depth)
{
    const TreeIter& folder = treeiters[node];
    for (int i = 0; i < folder.childnumber; i++) {
        const int child = folder.children[i];
        std::printf("%*s%s\n", 2 * depth, "", treeiters[child].name);
        if (treeiters[child].childnumber > 0) {
            PrintAllTree(child, depth + 1);
        }
    }
}

void DelTreeIter(int node, int* count, int*& array)
{
    GrowArray(array, *count, *count + 1);
    array[(*count)++] = node;
    const TreeIter& folder = treeiters[node];
    for (int i = 0; i < folder.childnumber; i++) {
        DelTreeIter(folder.children[i], count, array);
    }
}

} // namespace korvane
