#include "scene/treeselection.h"

#include "scene/model.h"
#include "scene/treeview.h"
#include "ui/dialogs.h"
#include "view/frameloop.h"
#include "view/mainview.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace korvane
{

GtkTreeSelection* tselection = nullptr;

static int rowchanges = 0; // open BeginRowChanges calls, for the whole run

static bool IsTreeSelected(int node)
{
    return std::find(treeselected, treeselected + treeselectednumber, node) !=
           treeselected + treeselectednumber;
}

// True when the node's parent, or a folder further up below the root, is chosen. An entry that has
// been dropped since still counts: it was dropped for a folder above both.
static bool IsBelowChosenFolder(int node, const std::vector<bool>& chosen)
{
    for (int n = treeiters[node].parent; n > 0; n = treeiters[n].parent) {
        if (chosen[std::size_t(n)]) {
            return true;
        }
    }
    return false;
}

static void ReadSelectedRow(GtkTreeModel* model, GtkTreePath*, GtkTreeIter* row, void*)
{
    GrowArray(treeselected, treeselectednumber, treeselectednumber + 1);
    gtk_tree_model_get(model, row, COLUMN_NODE, &treeselected[treeselectednumber], -1);
    treeselectednumber++;
}

static void ReadSelectedRows(GtkTreeSelection* selection)
{
    FreeArray(treeselected);
    treeselectednumber = 0;
    gtk_tree_selection_selected_foreach(selection, ReadSelectedRow, nullptr);
}

static std::vector<bool> MarkSelectedNodes()
{
    std::vector<bool> chosen(std::size_t(treeiternumber), false);
    for (int i = 0; i < treeselectednumber; i++) {
        chosen[std::size_t(treeselected[i])] = true;
    }
    return chosen;
}

// Deliberate: the entry after a dropped one is kept unexamined, so that a folder and something
// inside it can both stay selected.
static void DropNestedSelections()
{
    const std::vector<bool> chosen = MarkSelectedNodes();
    int kept = 0;
    for (int i = 0; i < treeselectednumber; i++) {
        if (IsBelowChosenFolder(treeselected[i], chosen)) {
            i++;
        }
        if (i < treeselectednumber) {
            treeselected[kept++] = treeselected[i];
        }
    }
    treeselectednumber = kept;
}

static void MarkShapes()
{
    for (int i = 0; i < shapenumber; i++) {
        selected[i] &= selectedlevel;
    }
    for (int i = 0; i < treeselectednumber; i++) {
        SetSelected(treeselected[i]);
    }
    if (mainview.onlyselected != 0) {
        return;
    }
    for (int i = 0; i < shapenumber; i++) {
        selected[i] |= selectedshown;
    }
}

void SayThatShapesAreHidden()
{
    for (int i = 0; i < shapenumber; i++) {
        if ((selected[i] & selectedshown) == 0 && (selected[i] & selectedlevel) != 0) {
            PrintStatusBar(" Only selected shapes are shown");
            return;
        }
    }
}

static void FollowSelection(GtkTreeSelection* selection)
{
    ReadSelectedRows(selection);
    DropNestedSelections();
    MarkShapes();
    rdstate |= redrawwanted;
}

void TreeSelectedChange(GtkTreeSelection* selection)
{
    if (rowchanges > 0) {
        return;
    }
    tselection = selection;
    FollowSelection(selection);
    SayThatShapesAreHidden();
}

void BeginRowChanges()
{
    rowchanges++;
}

void EndRowChanges()
{
    rowchanges--;
    if (rowchanges == 0 && tselection != nullptr) {
        FollowSelection(tselection);
    }
}

void SetSelected(int node)
{
    const TreeIter& iter = treeiters[node];
    if (iter.type != NODE_FOLDER) {
        selected[iter.shapeindex] |= selectedintree | selectedshown;
    }
    for (int i = 0; i < iter.childnumber; i++) {
        SetSelected(iter.children[i]);
    }
}

bool IsInSelection(int node)
{
    for (int n = node; n > 0; n = treeiters[n].parent) {
        if (IsTreeSelected(n)) {
            return true;
        }
    }
    return false;
}

std::vector<int> GetTopSelectedNodes()
{
    const std::vector<bool> chosen = MarkSelectedNodes();
    std::vector<int> nodes;
    std::copy_if(treeselected, treeselected + treeselectednumber, std::back_inserter(nodes),
                 [&chosen](int node) { return !IsBelowChosenFolder(node, chosen); });
    return nodes;
}

// The path of a folder's rows but for their own place; that of the root is empty.
static GtkTreePath* OpenFolder(int folder)
{
    if (folder == 0) {
        return gtk_tree_path_new();
    }
    GtkTreePath* path = gtk_tree_model_get_path(GTK_TREE_MODEL(store), &treeiters[folder].iter);
    gtk_tree_view_expand_to_path(GTK_TREE_VIEW(treeview), path);
    return path;
}

void SelectRow(int node)
{
    gtk_tree_path_free(OpenFolder(treeiters[node].parent));
    gtk_tree_selection_select_iter(gtk_tree_view_get_selection(GTK_TREE_VIEW(treeview)),
                                   &treeiters[node].iter);
}

static void SelectRange(GtkTreePath* folder, int first, int last)
{
    GtkTreePath* end = gtk_tree_path_copy(folder);
    gtk_tree_path_append_index(end, last);
    gtk_tree_path_append_index(folder, first);
    GtkTreeSelection* selection = gtk_tree_view_get_selection(GTK_TREE_VIEW(treeview));
    gtk_tree_selection_select_range(selection, folder, end);
    gtk_tree_path_up(folder);
    gtk_tree_path_free(end);
}

// In runs, because each selecting finds its rows by counting from the top, several times.
void SelectNewRows(int folder, int firstnode)
{
    const TreeIter& parent = treeiters[folder];
    const auto isnew = [&](int place) {
        return place < parent.childnumber && parent.children[place] >= firstnode;
    };
    GtkTreePath* path = OpenFolder(folder);
    BeginRowChanges(); // every run would be a change
    for (int i = 0; i < parent.childnumber; i++) {
        const int first = i;
        while (isnew(i)) {
            i++;
        }
        if (i > first) {
            SelectRange(path, first, i - 1);
        }
    }
    EndRowChanges();
    gtk_tree_path_free(path);
}

int FindNodeOfShape(int shapeindex)
{
    for (int n = 1; n < treeiternumber; n++) {
        if (treeiters[n].type != NODE_FOLDER && treeiters[n].shapeindex == shapeindex) {
            return n;
        }
    }
    return -1;
}

void SetSelection(int shapeindex)
{
    const int node = FindNodeOfShape(shapeindex);
    if (node >= 0 && !IsInSelection(node)) {
        SelectRow(node);
    }
}

int GetTreePutPlace()
{
    if (treeselectednumber == 0) {
        return 0;
    }
    const int first = treeselected[0];
    if (treeselectednumber == 1 && treeiters[first].type == NODE_FOLDER) {
        return first;
    }
    const int parent = treeiters[first].parent;
    const bool together =
        std::all_of(treeselected, treeselected + treeselectednumber,
                    [parent](int node) { return treeiters[node].parent == parent; });
    return together ? parent : 0;
}

int CreateTreeIter(int type, Block<char[]> name)
{
    return AddTreeIter(GetTreePutPlace(), type, std::move(name));
}

} // namespace korvane
