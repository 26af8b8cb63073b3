// The context menus of the view: which of them a right click pops up, and their check marks. The
// menus are filled by GetMainWindow and null before.
#pragma once

typedef struct _GtkWidget GtkWidget;
typedef struct _GdkEventButton GdkEventButton;

namespace korvane
{

extern GtkWidget* sidemenu; // popped up over a side, with some of its items
extern GtkWidget* menuborder;
extern GtkWidget* menuduplicate;

extern GtkWidget* pointmenu; // over a point
extern GtkWidget* menuvertex;
extern GtkWidget* menupointdel;

extern GtkWidget* stripemenu; // over a stripe
extern GtkWidget* menuedge;
extern GtkWidget* menustripedel;

extern GtkWidget* bgmenu;  // over the empty background of an empty scene
extern GtkWidget* bgmenu2; // and over that of any other

// A right click: ends or abandons a construction, or pops up the menu of what lies under the
// pointer.
void RightPressed(GdkEventButton* event);

} // namespace korvane
