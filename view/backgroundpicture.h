// The background picture: a texture that stays where it was put in the world, in the plane in which
// clicked points land, so that it can be traced.
#pragma once

typedef struct _GtkWidget GtkWidget;

namespace korvane
{

struct MainView;

extern unsigned int textid; // the picture's texture; 0 while there is none

// Takes an image widget as the new background picture, in the place of the former one, and owns it.
// False when it holds no pixels of three or four channels: then there is no picture.
bool SetBackgroundPicture(MainView* view, GtkWidget* image);

// Draws the picture at its fade; puts it on the screen's rectangle when it first shows, and forgets
// that place when it has faded out.
void DrawBackgroundPicture(MainView* view);

} // namespace korvane
