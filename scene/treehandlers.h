// What the tree view's rows do: opening and closing, activation, the context menu, and drag and
// drop. A drag inserts a copy of the row at the drop place and then deletes the row; these handlers
// follow it, so that the dropped node ends up at its sorted place in the folder into which it was
// dropped.
#pragma once

#include <gtk/gtk.h>

namespace korvane
{

void TreeExpanded(GtkTreeView* view, GtkTreeIter* iter, GtkTreePath* path);
void TreeCollapsed(GtkTreeView* view, GtkTreeIter* iter, GtkTreePath* path);
void TreeCollapsedAll(int node); // closes the icon of every folder below a node

// Double click or Enter: opens or closes a folder; anything else flies to the selection.
void TreeActivated(GtkTreeView* view, GtkTreePath* path, GtkTreeViewColumn* column);

// Keeps the selection, for which the context menu is meant, when button 3 is pressed over one of
// its rows; returns true then. Over another row the tree view selects that one alone.
gboolean TreeButtonPress(GtkTreeView* view, GdkEventButton* event);

// Pops up the tree's context menu for button 3; returns true then.
gboolean TreeButtonRelease(GtkWidget* widget, GdkEventButton* event);

void TreeInserted(GtkTreeModel* model, GtkTreePath* path, GtkTreeIter* iter);
void TreeDeleted(GtkTreeModel* model, GtkTreePath* path);
void TreeRowHasChild(GtkTreeModel* model, GtkTreePath* path, GtkTreeIter* iter);

// Reads every row's place below a node again after the store was reordered, `path` being that of
// the node's first child; complains on standard output about rows that do not match. From the root
// it also writes every node's index into its row, where that has another.
void SetAllIter(int node, GtkTreePath* path);

void ReadRowsAgain(); // SetAllIter from the root

// Prints the names below a node, two spaces per level.
void PrintAllTree(int node, int depth);

// Lists what goes with `node`, and deletes nothing itself: appends the node and everything below
// it, a node before its children, to `array`, which holds `count` entries and grows as needed.
void DelTreeIter(int node, int* count, int*& array);

} // namespace korvane
