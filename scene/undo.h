// The undo buffer: states saved before they are changed, each with the camera of its moment.
// Records below pindex are undo steps, those from pindex up are redo steps.
#pragma once

typedef struct _GtkWidget GtkWidget;

namespace korvane
{

struct Shape;
struct TreeIter;

struct UndoRecord {
    int kind;            // 0 one shape, 1 the whole scene
    int shapenumber;     // kind 0: the index of the saved shape; kind 1: how many are saved
    Shape** shapes;      // owned; copies: one entry for kind 0, every shape in order for kind 1
    int treeiternumber;  // kind 1: number of saved nodes
    TreeIter* treeiters; // owned; kind 1: copies of every node, the root included
    float center[3];     // the view's centre when the record was made
    float axes[6];       // world directions of the screen's vertical and depth axes at that time
    float scale;         // the view's scale at that time
};

extern UndoRecord* puffer;   // owned; the records
extern int pnumber;          // valid records
extern int pindex;           // the current position
extern UndoRecord* repuffer; // reserved
extern int repnumber;        // reserved
extern int repindex;         // reserved

extern GtkWidget*
    toolbutton_undo; // sensitive exactly when there is an undo step; null before the window

// Frees every record's contents; afterwards there is nothing to undo or redo.
void DelPuffer();

} // namespace korvane
