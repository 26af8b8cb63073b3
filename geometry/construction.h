// A polygon or path under construction: the points clicked so far.
#pragma once

typedef struct _GtkWidget GtkWidget;

namespace korvane
{

extern GtkWidget* toolbutton_news; // the new-shape button; null before the window

extern float (*newpoints)[3]; // owned; the clicked points in world coordinates
extern float (*rotated)[3];   // owned; the same points in view coordinates
extern int newpointnumber;    // length of both
extern char newsign;          // 1 while the new-shape tool is on

} // namespace korvane
