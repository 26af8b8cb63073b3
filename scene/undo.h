// The undo buffer: states saved before they are changed, each with the camera of its moment.
// Records below pindex are undo steps, those from pindex up are redo steps.
#pragma once

typedef struct _GtkWidget GtkWidget;

namespace korvane
{

struct Shape;
struct TreeIter;

enum UndoKind { UNDO_SHAPE = 0, UNDO_SCENE = 1 };

struct UndoRecord {
    int kind;            // an UndoKind
    int shapeindex;      // of the saved shape; -1 for the whole scene
    int shapenumber;     // length of shapes
    Shape** shapes;      // owned; copies: the one shape, or every shape in order
    int treeiternumber;  // length of treeiters; 0 for one shape
    TreeIter* treeiters; // owned; copies of every node, the root included; null for one shape
    float center[3];     // the view's centre when the record was made
    float axes[2][3]; // the world directions of the screen's vertical and depth axes at that time
    float scale;      // the view's scale at that time
};

extern UndoRecord* puffer;   // owned; the records
extern int pnumber;          // valid records
extern int pindex;           // the current position
extern UndoRecord* repuffer; // reserved
extern int repnumber;        // reserved
extern int repindex;         // reserved

extern GtkWidget*
    toolbutton_undo; // sensitive exactly when there is an undo step; null before the window

// Saves one shape before it is changed. Does nothing when there is no shape of that index.
void PushShape(int index);

// Saves every shape and the whole tree before shapes or folders are added, removed or moved.
void PushScene();

// Frees every record's contents; afterwards there is nothing to undo or redo.
void DelPuffer();

} // namespace korvane
