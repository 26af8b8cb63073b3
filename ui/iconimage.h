// The pictures of buttons and menu items.
#pragma once

#include <gtk/gtk.h>

namespace korvane
{

// An image of a stock id of the toolkit, at that size, or of a file under "icons", as large as it
// is, when the name ends in ".png"; the toolkit's broken image in the place of a file that cannot
// be read.
GtkWidget* MakeIconImage(const char* icon, GtkIconSize size);

} // namespace korvane
