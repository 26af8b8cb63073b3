// Drawing a polygon in the view. Begun on empty space and closed on an earlier point of its own it
// becomes a new flat shape; begun on a point of a shape and closed on another point of that shape,
// it becomes a new side. Only points on which it may be closed can be picked meanwhile.
#pragma once

typedef struct _GtkWidget GtkWidget;

namespace korvane
{

// A click while the new-shape tool is on; `action` is a ClickAction. Reads activepointer and
// gmouse. Saves the scene or the shape for undo at the first point.
void PutNewPoints(int action);

// Handler of the new-shape button: starts the tool, once what is under construction has been given
// up, or ends it.
void NewShape(GtkWidget* button);

// Menu handlers: start the tool, whether or not the button is down already.
void NewShapeFromMenu(GtkWidget* item, GtkWidget* button);
void MenuNewShape();

} // namespace korvane
