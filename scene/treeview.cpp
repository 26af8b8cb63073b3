#include "scene/treeview.h"

#include "scene/model.h"
#include "scene/treeselection.h"

#include <algorithm>
#include <numeric>
#include <strings.h>
#include <utility>
#include <vector>

namespace korvane
{

GtkWidget* treeview = nullptr;
GtkTreeStore* store = nullptr;
GdkPixbuf* pbfolderc = nullptr;
GdkPixbuf* pbfoldero = nullptr;
GdkPixbuf* pbside = nullptr;
GdkPixbuf* pbshape = nullptr;
GtkWidget* treemenu = nullptr;
GtkWidget* menucopys = nullptr;
GtkWidget* menupastes = nullptr;
GtkWidget* menurename = nullptr;
GtkWidget* menudels = nullptr;
GtkWidget* menucolor = nullptr;
GtkTreeIter* movediter = nullptr;

void MakeTree()
{
    static char rootname[] = "scene";
    store = gtk_tree_store_new(3, GDK_TYPE_PIXBUF, G_TYPE_STRING, G_TYPE_INT);
    treeiters = NewArray<TreeIter>(1);
    TreeIter& root = treeiters[0];
    root.name = rootname;
    root.shapeindex = -1;
    root.parent = -1;
    root.children = NewArray<int>(1);
    treeiternumber = 1;
}

// True when a node of type and name `a` stands before one of `b` in the same folder.
static bool IsBefore(const TreeIter& a, const TreeIter& b)
{
    const bool folder = a.type == NODE_FOLDER;
    if (folder != (b.type == NODE_FOLDER)) {
        return folder;
    }
    return strcasecmp(a.name, b.name) < 0;
}

// The first place whose child stands after the node; equal names go after those that are there.
static int GetSortedPlace(const TreeIter& folder, const TreeIter& node)
{
    int* end = folder.children + folder.childnumber;
    const int* place =
        std::upper_bound(folder.children, end, node, [](const TreeIter& wanted, int child) {
            return IsBefore(wanted, treeiters[child]);
        });
    return int(place - folder.children);
}

static GdkPixbuf* GetIconOfNode(const TreeIter& node)
{
    if (node.type == NODE_FOLDER) {
        return pbfolderc;
    }
    return node.type == NODE_SIDE ? pbside : pbshape;
}

static void InsertRow(int index, int place)
{
    TreeIter& node = treeiters[index];
    GtkTreeIter* parentrow = node.parent == 0 ? nullptr : &treeiters[node.parent].iter;
    insertiter = 1;
    gtk_tree_store_insert_with_values(store, &node.iter, parentrow, place, COLUMN_ICON,
                                      GetIconOfNode(node), COLUMN_NAME, node.name, COLUMN_NODE,
                                      index, -1);
    insertiter = 0;
}

int AppendTreeIter(int parent, int type, int shapeindex, Block<char[]> name)
{
    const int index = treeiternumber;
    GrowArray(treeiters, index, index + 1);
    TreeIter& node = treeiters[index];
    node.parent = parent;
    node.type = type;
    node.name = name.release();
    node.shapeindex = shapeindex;
    node.children = type == NODE_FOLDER ? NewArray<int>(1) : nullptr;
    treeiternumber++;
    return index;
}

// Gives every folder the nodes whose parent it is, in sorted order.
static void SortChildren()
{
    for (int i = 0; i < treeiternumber; i++) {
        treeiters[i].childnumber = 0;
    }
    for (int i = 1; i < treeiternumber; i++) {
        TreeIter& folder = treeiters[treeiters[i].parent];
        GrowArray(folder.children, folder.childnumber, folder.childnumber + 1);
        folder.children[folder.childnumber++] = i;
    }
    for (int i = 0; i < treeiternumber; i++) {
        TreeIter& folder = treeiters[i];
        std::stable_sort(folder.children, folder.children + folder.childnumber,
                         [](int a, int b) { return IsBefore(treeiters[a], treeiters[b]); });
    }
}

// Shows the rows of everything below a folder. The last row goes in first, each at position 0: the
// store finds that place at once, while one at the end would be looked for row by row.
static void InsertRowsBelow(int root)
{
    std::vector<int> waiting{root};
    while (!waiting.empty()) {
        const int folder = waiting.back();
        waiting.pop_back();
        for (int i = treeiters[folder].childnumber - 1; i >= 0; i--) {
            const int child = treeiters[folder].children[i];
            InsertRow(child, 0);
            if (treeiters[child].childnumber > 0) {
                waiting.push_back(child);
            }
        }
    }
}

void TakeFromParent(int node)
{
    TreeIter& parent = treeiters[treeiters[node].parent];
    for (int i = 0; i < parent.childnumber; i++) {
        if (parent.children[i] == node) {
            RemoveAt(parent.children, parent.childnumber, i);
            return;
        }
    }
}

void PutAtSortedPlace(int node, int parent)
{
    TreeIter& folder = treeiters[parent];
    treeiters[node].parent = parent;
    const int place = GetSortedPlace(folder, treeiters[node]);
    InsertAt(folder.children, folder.childnumber, place);
    folder.children[place] = node;
}

void ShowRowsOfNode(int node)
{
    const TreeIter& folder = treeiters[treeiters[node].parent];
    const int* place = std::find(folder.children, folder.children + folder.childnumber, node);
    InsertRow(node, int(place - folder.children));
    InsertRowsBelow(node);
}

// The last row goes in first: those above it that are new need not be passed.
void ShowNewRows(int folder, int firstnode)
{
    const TreeIter& parent = treeiters[folder];
    int newabove = int(std::count_if(parent.children, parent.children + parent.childnumber,
                                     [=](int node) { return node >= firstnode; }));
    for (int i = parent.childnumber - 1; newabove > 0; i--) {
        if (parent.children[i] >= firstnode) {
            newabove--;
            InsertRow(parent.children[i], i - newabove);
            InsertRowsBelow(parent.children[i]);
        }
    }
}

int AddTreeIter(int parent, int type, Block<char[]> name)
{
    const int shapeindex = type == NODE_FOLDER ? -1 : shapenumber - 1;
    const int node = AppendTreeIter(parent, type, shapeindex, std::move(name));
    PutAtSortedPlace(node, parent);
    ShowRowsOfNode(node);
    return node;
}

void SortAndShowTree()
{
    SortChildren();
    InsertRowsBelow(0);
}

TreeIter CopyNode(const TreeIter& node)
{
    TreeIter copy = node;
    copy.name = CopyText(node.name).release();
    copy.children = node.children == nullptr ? nullptr : CopyArray(node.children, node.childnumber);
    return copy;
}

void FillTree(const TreeIter* nodes, int count)
{
    GrowArray(treeiters, 1, count);
    for (int i = 1; i < count; i++) {
        treeiters[i] = CopyNode(nodes[i]);
    }
    TreeIter& root = treeiters[0];
    FreeArray(root.children);
    root.childnumber = nodes[0].childnumber;
    root.children = CopyArray(nodes[0].children, root.childnumber);
    treeiternumber = count;
    InsertRowsBelow(0);
}

int GetTypeOfShape(const Shape* shape)
{
    return shape->sidenumber == 1 ? NODE_SIDE : NODE_SHAPE;
}

void SetTypeOfShapeNode(int shapeindex)
{
    const int type = GetTypeOfShape(shapes[shapeindex]);
    for (int i = 1; i < treeiternumber; i++) {
        TreeIter& node = treeiters[i];
        if (node.type != NODE_FOLDER && node.shapeindex == shapeindex && node.type != type) {
            node.type = type;
            gtk_tree_store_set(store, &node.iter, COLUMN_ICON, GetIconOfNode(node), -1);
        }
    }
}

void GetSelectedShapesRecursive(int node, int* array, int* count)
{
    const TreeIter& top = treeiters[node];
    if (top.type != NODE_FOLDER) {
        array[(*count)++] = top.shapeindex;
        return;
    }
    for (int i = 0; i < top.childnumber; i++) {
        GetSelectedShapesRecursive(top.children[i], array, count);
    }
}

// Both a folder and a node inside it may be selected (the selection drops most nested nodes, but
// not all), so a shape can be met twice.
Block<int[]> GetSelectedShapes(int* count)
{
    Block<int[]> indices(NewArray<int>(shapenumber));
    std::vector<int> below(static_cast<std::size_t>(shapenumber));
    std::vector<bool> taken(static_cast<std::size_t>(shapenumber), false);
    *count = 0;
    for (int i = 0; i < treeselectednumber; i++) {
        int belownumber = 0;
        GetSelectedShapesRecursive(treeselected[i], below.data(), &belownumber);
        for (int k = 0; k < belownumber; k++) {
            const int shape = below[std::size_t(k)];
            if (!taken[std::size_t(shape)]) {
                taken[std::size_t(shape)] = true;
                indices[std::size_t((*count)++)] = shape;
            }
        }
    }
    if (*count == 0) { // Deliberate: an empty selection means all shapes
        std::iota(indices.get(), indices.get() + shapenumber, 0);
        *count = shapenumber;
    }
    return indices;
}

void ClearTree()
{
    BeginRowChanges();
    gtk_tree_store_clear(store);
    for (int i = 1; i < treeiternumber; i++) {
        FreeArray(treeiters[i].children);
        FreeArray(treeiters[i].name);
    }
    treeiternumber = 1;
    treeiters[0].childnumber = 0;
    EndRowChanges();
}

} // namespace korvane
