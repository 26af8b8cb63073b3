// The main window: the whole widget tree, built once at start.
#pragma once

typedef struct _GtkWidget GtkWidget;

namespace korvane
{

// The frame buffer that the view asks for, as a list of attributes of the toolkit's OpenGL
// extension.
extern const int config_attributes[];

// Builds every widget, the tree store and the root of the folder tree, connects every signal and
// starts the timer. The caller shows the window, which it does not own. Call it once. Ends the
// program, after an error dialog, on a display without OpenGL.
GtkWidget* GetMainWindow();

} // namespace korvane
