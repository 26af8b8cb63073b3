// The three toolbars, each a page of the notebook at the top of the window. They are built from
// tables.
#pragma once

typedef struct _GtkWidget GtkWidget;
typedef struct _GtkNotebook GtkNotebook;

namespace korvane
{

extern GtkWidget* labelfile; // the labels of the notebook's tabs; filled by MakeNotebook
extern GtkWidget* labeledit;
extern GtkWidget* labelview;

// The notebook with its three toolbars, File in front. Fills the globals of the buttons that other
// modules reach. Call it once.
GtkWidget* MakeNotebook();

// Handler of "switch-page": the label of the page in front is black, the others are grey.
void ChangeMenuTab(GtkNotebook* notebook, void* page, unsigned int pagenumber);

} // namespace korvane
