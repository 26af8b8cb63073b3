// The selected rows of the tree view, and what they mean for the shapes: which are marked, which
// are shown while the view is restricted to the selection, and where a new node goes.
#pragma once

#include "scene/arrays.h"

#include <gtk/gtk.h>

#include <vector>

namespace korvane
{

// Borrowed; the tree view's selection; null before it first changed.
extern GtkTreeSelection* tselection;

// Selection handler: fills treeselected, drops what lies inside another selected folder, and sets
// the shapes' `selected` bits.
void TreeSelectedChange(GtkTreeSelection* selection);

// Rows that vanish would call the handler once each, with nodes half gone, and so would rows that
// are selected one by one. Between these two it does nothing; EndRowChanges does its work once, but
// for the hint, since the command that changes the rows may not be done with the shapes. They may
// be nested.
void BeginRowChanges();
void EndRowChanges();

// Tells the user why shapes leave the view; nothing when none does.
void SayThatShapesAreHidden();

// Marks every shape at or below a node as selected and shown.
void SetSelected(int node);

// True when a node or a folder above it is selected.
bool IsInSelection(int node);

// The selected nodes that lie in no other selected folder: of some that do, the selection keeps the
// entries.
std::vector<int> GetTopSelectedNodes();

// The first node of a shape; -1 without one.
int FindNodeOfShape(int shapeindex);

// Adds a node's row to the selection, once the folders above it are open: the tree view cannot
// select a row that it does not show.
void SelectRow(int node);

// The same for the rows of those nodes of a folder that are not older than `firstnode`, in one
// change. None of them is open.
void SelectNewRows(int folder, int firstnode);

// Adds a shape's row to the selection, unless it or a folder above it is there already.
void SetSelection(int shapeindex);

// The folder in which a new node goes, from the current selection.
int GetTreePutPlace();

// AddTreeIter at that place.
int CreateTreeIter(int type, Block<char[]> name);

} // namespace korvane
