// One saved state, of one shape or of the whole scene, with the view of its moment: how it is made,
// restored and freed. A record owns copies alone: nothing in it is shared with the scene.
#pragma once

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
    UndoRecord* redo; // owned; the state that undo replaced by this one; null while this one is
                      // not undone, and where the record after it tells as much
};

// The present state. The caller owns what the record owns (FreeRecord).
UndoRecord SaveShape(int index); // the index is not checked
UndoRecord SaveScene();
UndoRecord SaveLike(const UndoRecord& record); // of the same shape, or of the scene

// Whether there is still a shape of the saved shape's index; the scene is always there.
bool IsStillThere(const UndoRecord& record);

// Puts copies of what is saved in the place of the present state and projects them. A construction,
// a drag and a tool in force end: what they were about is replaced. Does nothing when the shape is
// no longer there.
void RestoreRecord(const UndoRecord& record);

void FreeRecord(UndoRecord& record);
void FreeRedoState(UndoRecord& record); // redo alone, which becomes null

// Whether the view is that of the record: centre and scale to the bit, the axes nearly.
bool IsViewInPlace(const UndoRecord& record);

// Starts a flight to the view of the record, unless one is on its way there.
void FlyToView(const UndoRecord& record);

} // namespace korvane
