// The main window: the whole widget tree, built once at start.
#pragma once

typedef struct _GtkWidget GtkWidget;

namespace korvane
{

// Builds every widget, the tree store and the root of the folder tree, connects every signal and
// starts the timer. The caller shows the window, which it does not own. Call it once.
GtkWidget* GetMainWindow();

} // namespace korvane
