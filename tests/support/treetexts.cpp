#include "tests/support/treetexts.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/treeselection.h"
#include "scene/treeview.h"

#include <utility>

namespace korvane::testing
{

int AddFolder(const std::string& name, int parent)
{
    return AddTreeIter(parent, NODE_FOLDER, CopyText(name));
}

int AddShapeRow(OwnedShape shape, const std::string& name, int folder)
{
    AddToScene(std::move(shape), name, folder);
    return treeiternumber - 1;
}

std::vector<int> GetSelectedNodes()
{
    return {treeselected, treeselected + treeselectednumber};
}

std::string GetContent(int folder)
{
    std::string text;
    for (int i = 0; i < treeiters[folder].childnumber; i++) {
        const int child = treeiters[folder].children[i];
        text += (i > 0 ? " " : "") + std::string(treeiters[child].name);
        if (treeiters[child].type == NODE_FOLDER) {
            text += "(" + GetContent(child) + ")";
        }
    }
    return text;
}

std::string GetSelection()
{
    std::string text;
    for (int i = 0; i < treeselectednumber; i++) {
        text += (i > 0 ? " " : "") + std::string(treeiters[treeselected[i]].name);
    }
    return text;
}

void SelectRows(const std::vector<int>& nodes)
{
    GtkTreeSelection* selection = gtk_tree_view_get_selection(GTK_TREE_VIEW(treeview));
    BeginRowChanges(); // a silent handler: each row alone would be a change
    gtk_tree_selection_unselect_all(selection);
    for (int node : nodes) {
        SelectRow(node);
    }
    EndRowChanges();
    TreeSelectedChange(selection);
}

} // namespace korvane::testing
