// The pictures of buttons, menu items and tree rows. A toolbar or menu names its pictures by the
// stock id of the toolkit or by the name of a file under "icons", which ends in ".png". A file that
// is missing or no picture costs a line on standard output and never more.
#pragma once

#include <gtk/gtk.h>

namespace korvane
{

// An image of that stock id, at that size, or of that file, as large as it is; the toolkit's broken
// image in the place of a file that cannot be had.
GtkWidget* MakeIconImage(const char* icon, GtkIconSize size);

void SetWindowIcon(); // the icon of every window that has none of its own

// Loads the pictures of the tree's rows; a row whose picture cannot be had has none.
void LoadTreeIcons();

} // namespace korvane
