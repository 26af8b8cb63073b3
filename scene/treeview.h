// The folder tree: its nodes, and the rows of the tree store that show them beside the view. The
// store's order equals the order of every folder's `children` after each change: folders first,
// then shapes, each group by name without regard to case, equal names in the order in which they
// came.
#pragma once

#include "scene/arrays.h"

#include <gtk/gtk.h>

namespace korvane
{

// A node's type; any value but NODE_FOLDER means a shape.
enum NodeType { NODE_FOLDER = 0, NODE_SIDE = 1, NODE_SHAPE = 2 };

struct Shape;

struct TreeIter {
    char* name;       // owned, but for the root's, which is a constant
    int type;         // a NodeType: a shape of exactly one side is a NODE_SIDE
    int shapeindex;   // index into the per-shape arrays; -1 for a folder
    GtkTreeIter iter; // the node's row in `store`; the root has none
    int parent;       // the folder that holds the node; -1 for the root
    int childnumber;  // length of children
    int* children;    // owned; nodes in display order; null for a shape
};

// Columns of `store`.
enum StoreColumn { COLUMN_ICON = 0, COLUMN_NAME = 1, COLUMN_NODE = 2 };

extern GtkWidget* treeview;  // the tree view; filled by GetMainWindow
extern GtkTreeStore* store;  // its rows
extern GdkPixbuf* pbfolderc; // icon of a closed folder; null when the file is missing
extern GdkPixbuf* pbfoldero; // icon of an open folder
extern GdkPixbuf* pbside;    // icon of a one-sided shape
extern GdkPixbuf* pbshape;   // icon of any other shape

extern GtkWidget* treemenu;  // the tree's context menu and those of its items that depend on the
extern GtkWidget* menucopys; // selection; filled by GetMainWindow
extern GtkWidget* menupastes;
extern GtkWidget* menurename;
extern GtkWidget* menudels;
extern GtkWidget* menucolor;

extern GtkTreeIter* movediter; // owned; the row that a drag has just inserted; null when none

// Makes the root node and the empty store. Call it once, before anything is loaded.
void MakeTree();

// Appends a node, puts it at its sorted place among parent's children and shows its row. A shape
// node gets shapeindex shapenumber - 1. Returns the node's index.
int AddTreeIter(int parent, int type, Block<char[]> name);

// Loading many nodes in linear time: append them all, a folder before what it holds, then show
// them; the result is that of AddTreeIter one by one.
int AppendTreeIter(int parent, int type, int shapeindex, Block<char[]> name);
void SortAndShowTree();

// The two halves of AddTreeIter, for a node that exists: PutAtSortedPlace makes it a child of
// `parent`, ShowRowsOfNode makes its row and those of everything below it. TakeFromParent ends its
// being a child; the row stays.
void TakeFromParent(int node);
void PutAtSortedPlace(int node, int parent);
void ShowRowsOfNode(int node);

// ShowRowsOfNode for those nodes of a folder that are not older than `firstnode`.
void ShowNewRows(int folder, int firstnode);

// A copy with a name and children of its own, which the caller owns.
TreeIter CopyNode(const TreeIter& node);

// Puts copies of saved nodes, the root first, into the tree, which holds its root alone. Every node
// gets its old index, and the rows stand in the order of the saved `children`.
void FillTree(const TreeIter* nodes, int count);

int GetTypeOfShape(const Shape* shape); // NODE_SIDE or NODE_SHAPE, as its number of sides says

// Makes a shape's node a side or a shape, as its number of sides now says, with its icon.
void SetTypeOfShapeNode(int shapeindex);

// The shapes that are selected in the tree, those of selected folders included, each once; with
// none, all shapes of the scene. Sets `count`. The caller owns the indices.
Block<int[]> GetSelectedShapes(int* count);

// Appends the shapes at and below a node to `array`, which has room for them, and raises `count`.
void GetSelectedShapesRecursive(int node, int* array, int* count);

// Frees every node but the root and removes every row. The selection handler runs once, afterwards.
void ClearTree();

} // namespace korvane
