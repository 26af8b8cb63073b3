#include "scene/treeselection.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/treeview.h"
#include "ui/dialogs.h"
#include "view/frameloop.h"
#include "view/mainview.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace korvane
{

GtkTreeSelection* tselection = nullptr;

static int rowremovals = 0; // open BeginRowRemoval calls, for the whole run

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

static void ReadSelectedRows(GtkTreeSelection* selection)
{
    FreeArray(treeselected);
    GtkTreeModel* model = nullptr;
    GList* rows = gtk_tree_selection_get_selected_rows(selection, &model);
    treeselectednumber = int(g_list_length(rows));
    if (treeselectednumber > 0) {
        treeselected = NewArray<int>(treeselectednumber);
    }
    int* place = treeselected;
    for (GList* row = rows; row != nullptr; row = row->next) {
        auto* path = static_cast<GtkTreePath*>(row->data);
        GtkTreeIter iter;
        gtk_tree_model_get_iter(model, &iter, path);
        gtk_tree_model_get(model, &iter, COLUMN_NODE, place++, -1);
        gtk_tree_path_free(path);
    }
    g_list_free(rows);
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

// Tells the user why shapes leave the view.
static void SayThatShapesAreHidden()
{
    for (int i = 0; i < shapenumber; i++) {
        if ((selected[i] & selectedshown) == 0 && (selected[i] & selectedlevel) != 0) {
            PrintStatusBar(" Only selected shapes are shown");
            return;
        }
    }
}

void TreeSelectedChange(GtkTreeSelection* selection)
{
    if (rowremovals > 0) {
        return;
    }
    tselection = selection;
    ReadSelectedRows(selection);
    DropNestedSelections();
    MarkShapes();
    SayThatShapesAreHidden();
    rdstate |= redrawwanted;
}

void BeginRowRemoval()
{
    rowremovals++;
}

void EndRowRemoval()
{
    rowremovals--;
    if (rowremovals == 0 && tselection != nullptr) {
        TreeSelectedChange(tselection);
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

void SelectRow(int node)
{
    GtkTreeView* view = GTK_TREE_VIEW(treeview);
    TreeIter& selectednode = treeiters[node];
    if (selectednode.parent != 0) {
        GtkTreePath* folder =
            gtk_tree_model_get_path(GTK_TREE_MODEL(store), &treeiters[selectednode.parent].iter);
        gtk_tree_view_expand_to_path(view, folder);
        gtk_tree_path_free(folder);
    }
    gtk_tree_selection_select_iter(gtk_tree_view_get_selection(view), &selectednode.iter);
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

int CreateTreeIter(int type, char* name)
{
    return AddTreeIter(GetTreePutPlace(), type, name);
}

} // namespace korvane
