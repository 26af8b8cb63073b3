#include "scene/treeedit.h"

#include "scene/arrays.h"
#include "scene/locate.h"
#include "scene/model.h"
#include "scene/treehandlers.h"
#include "scene/treeselection.h"
#include "scene/treeview.h"
#include "scene/undo.h"
#include "ui/dialogs.h"
#include "ui/input.h"
#include "view/frameloop.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace korvane
{

void NewFolder()
{
    Block<char[]> name = GetName("New shape", "Please give me the name of new folder:", "folder");
    if (name != nullptr) {
        CreateTreeIter(NODE_FOLDER, std::move(name));
    }
}

// Moves a node's row before that of the sibling that follows it.
static void MoveRowToItsPlace(int node)
{
    const TreeIter& folder = treeiters[treeiters[node].parent];
    const int* end = folder.children + folder.childnumber;
    const int* next = std::find<const int*>(folder.children, end, node) + 1;
    GtkTreeIter* nextrow = next == end ? nullptr : &treeiters[*next].iter; // null: to the end
    gtk_tree_store_move_before(store, &treeiters[node].iter, nextrow);
}

void RenameSelected()
{
    if (treeselectednumber != 1) {
        return;
    }
    const int node = treeselected[0];
    Block<char[]> name = GetName("New shape", "Please give me the new name:", treeiters[node].name);
    if (name == nullptr) {
        return;
    }
    gtk_tree_store_set(store, &treeiters[node].iter, COLUMN_NAME, name.get(), -1);
    FreeArray(treeiters[node].name);
    treeiters[node].name = name.release();
    TakeFromParent(node);
    PutAtSortedPlace(node, treeiters[node].parent);
    MoveRowToItsPlace(node);
}

// One entry for each node, not 0 for those that are one of `tops` or below it.
static std::vector<char> MarkSubtrees(const std::vector<int>& tops)
{
    int number = 0;
    int* nodes = nullptr;
    for (int top : tops) {
        DelTreeIter(top, &number, nodes);
    }
    std::vector<char> marked(std::size_t(treeiternumber), 0);
    for (int i = 0; i < number; i++) {
        marked[std::size_t(nodes[i])] = 1;
    }
    FreeArray(nodes);
    return marked;
}

static std::vector<char> MarkShapesOfNodes(const std::vector<char>& nodes)
{
    std::vector<char> marked(std::size_t(shapenumber), 0);
    for (int n = 0; n < treeiternumber; n++) {
        if (nodes[std::size_t(n)] != 0 && treeiters[n].type != NODE_FOLDER) {
            marked[std::size_t(treeiters[n].shapeindex)] = 1;
        }
    }
    return marked;
}

// The index that each entry has once the marked ones are gone; -1 for those.
static std::vector<int> NumberTheOthers(const std::vector<char>& marked)
{
    std::vector<int> numbers;
    int next = 0;
    for (char gone : marked) {
        numbers.push_back(gone != 0 ? -1 : next++);
    }
    return numbers;
}

static void RenumberChildren(TreeIter& folder, const std::vector<int>& numbers)
{
    int kept = 0;
    for (int i = 0; i < folder.childnumber; i++) {
        const int number = numbers[std::size_t(folder.children[i])];
        if (number >= 0) {
            folder.children[kept++] = number;
        }
    }
    folder.childnumber = kept;
}

// Frees the nodes without a new number and moves the others down to theirs.
static void CloseUpNodes(const std::vector<int>& nodenumbers, const std::vector<int>& shapenumbers)
{
    int kept = 0;
    for (int n = 0; n < treeiternumber; n++) {
        TreeIter& node = treeiters[n];
        if (nodenumbers[std::size_t(n)] < 0) {
            FreeArray(node.name);
            FreeArray(node.children);
            continue;
        }
        if (node.parent >= 0) {
            node.parent = nodenumbers[std::size_t(node.parent)];
        }
        if (node.type != NODE_FOLDER) {
            node.shapeindex = shapenumbers[std::size_t(node.shapeindex)];
        }
        RenumberChildren(node, nodenumbers);
        treeiters[kept++] = node;
    }
    treeiternumber = kept;
}

// Removes nodes with all that is below them; none of `tops` lies below another. Everything is
// renumbered in one pass. The rows go first, while they still name the right nodes.
static void RemoveSubtrees(const std::vector<int>& tops)
{
    BeginRowChanges();
    for (int top : tops) {
        GtkTreeIter row = treeiters[top].iter;
        gtk_tree_store_remove(store, &row);
    }
    const std::vector<char> gonenodes = MarkSubtrees(tops);
    const std::vector<char> goneshapes = MarkShapesOfNodes(gonenodes);
    CloseUpNodes(NumberTheOthers(gonenodes), NumberTheOthers(goneshapes));
    ReadRowsAgain();
    DeleteMarkedShapes(goneshapes.data());
    EndRowChanges();
}

void DelSelected()
{
    const std::vector<int> tops = GetTopSelectedNodes();
    if (tops.empty()) {
        return;
    }
    EndPointerActions();
    PushScene();
    RemoveSubtrees(tops);
    SayThatShapesAreHidden();
    rdstate |= redrawwanted;
}

// Shapes that are out of sight stay so; the marks of the selection go.
static void ShowVisibleShapes()
{
    for (int i = 0; i < shapenumber; i++) {
        if (selected[i] != 0) {
            selected[i] = selectedfade;
        }
    }
}

void RemoveShape(int activeside)
{
    const int shapeindex = LocateSide(activeside).shape;
    const int node = FindNodeOfShape(shapeindex);
    if (node < 0) {
        return;
    }
    EndPointerActions();
    PushScene();
    RemoveSubtrees({node});
    ShowVisibleShapes();
    rdstate |= redrawwanted;
}

} // namespace korvane
