// Menu commands on the point, the stripe or the side under the menu: marking points as vertexes,
// which shading and rounding keep sharp, and deleting. The check items' handlers ignore the change
// that the program itself makes while toolsign is set.
#pragma once

typedef struct _GtkWidget GtkWidget;

namespace korvane
{

extern char toolsign; // 1 while a check item is set by the program, whose handler ignores it

// Handlers of "toggled": the point, the points of the stripe or the corners of the side are marked
// when the item is now checked, and lose their marks when it is not.
void SetVertex(GtkWidget* checkitem);
void SetEdge(GtkWidget* checkitem);
void SetBorder(GtkWidget* checkitem);

// Handlers of "activate".
void DelPoint();
void DelStripe();
void DelShape();

} // namespace korvane
