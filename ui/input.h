// Pointer and key state, and the widgets that the pointer and the keys work on; those are filled by
// GetMainWindow and null before.
#pragma once

typedef struct _GtkWidget GtkWidget;

namespace korvane
{

extern int mstate;    // the button state machine; 0 idle
extern char keyspace; // 1 while the space bar is held

extern GtkWidget* toolbutton_gradient; // the buttons that keys press
extern GtkWidget* toolbutton_full;
extern GtkWidget* toolbutton_wire;

extern GtkWidget* sidemenu; // popped up over a side
extern GtkWidget* menuborder;
extern GtkWidget* menuduplicate;

extern GtkWidget* pointmenu; // popped up over a point
extern GtkWidget* menuvertex;
extern GtkWidget* menupointdel;

extern GtkWidget* stripemenu; // popped up over a stripe
extern GtkWidget* menuedge;
extern GtkWidget* menustripedel;

extern GtkWidget* bgmenu;  // popped up over the empty background of an empty scene
extern GtkWidget* bgmenu2; // and over that of any other

} // namespace korvane
