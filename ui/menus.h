// The six context menus: that of the tree, and those of what lies under the pointer in the view.
// They are built from tables; an item whose command does not exist yet has no handler in its row
// and is insensitive.
#pragma once

namespace korvane
{

// Builds the menus and fills their globals, which are declared where the menus are popped up:
// scene/treeview.h and ui/input.h. Call it once, after the toolbars.
void MakeMenus();

} // namespace korvane
