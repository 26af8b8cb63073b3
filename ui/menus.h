// The six context menus: that of the tree, and those of what lies under the pointer in the view.
// They are built from tables.
#pragma once

namespace korvane
{

// Builds the menus and fills their globals, which are declared where the menus are popped up:
// scene/treeview.h and ui/viewmenus.h. Call it once, after the toolbars.
void MakeMenus();

} // namespace korvane
