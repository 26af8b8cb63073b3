// Dragging rows of the tree without a pointer.
#pragma once

#include <gtk/gtk.h>

namespace korvane::testing
{

// Drags the row of a node to `goal` as the tree view does: the store inserts a copy there, and then
// it deletes the row, which may stand elsewhere by now. False when it cannot be dropped there.
bool DragRow(int node, GtkTreePath* goal);

} // namespace korvane::testing
