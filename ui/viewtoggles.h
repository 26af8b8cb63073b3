// The toggles of the view toolbar: each sets what the timer then fades to.
#pragma once

typedef struct _GtkToggleToolButton GtkToggleToolButton;

namespace korvane
{

// `mode` is a BackgroundMode or a ShapeMode, as the connection's user data carries it.
void BgShape(GtkToggleToolButton* button, void* mode);
void ShowShape(GtkToggleToolButton* button, void* mode);

void Gradient(GtkToggleToolButton* button);
void SmallCube(GtkToggleToolButton* button);
void CenterLines(GtkToggleToolButton* button);
void Perspective(GtkToggleToolButton* button);

// Asks for a picture when switched on; the button goes up again when there is none to show.
void ImageBg(GtkToggleToolButton* button);

// Restricts the view to the shapes that are selected in the tree, or shows all of them.
void OnlySelected(GtkToggleToolButton* button);

} // namespace korvane
