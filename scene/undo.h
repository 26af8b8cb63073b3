// The undo buffer: states saved before they are changed, in the order of the changes. Records below
// pindex are undo steps, those from pindex up are redo steps; the last of these is the present from
// which the first undo started. Undo and redo restore a state only in the view in which it was
// saved: seen from elsewhere, the camera first flies there, and nothing else changes.
#pragma once

#include "scene/undorecord.h"

typedef struct _GtkWidget GtkWidget;

namespace korvane
{

extern UndoRecord* puffer;   // owned; the records
extern int pnumber;          // valid records
extern int pindex;           // the current position
extern UndoRecord* repuffer; // reserved
extern int repnumber;        // reserved
extern int repindex;         // reserved

// Sensitive exactly when there is an undo step; null before the window.
extern GtkWidget* toolbutton_undo;

// Saves one shape before it is changed. Does nothing when there is no shape of that index.
void PushShape(int index);

// Saves every shape and the whole tree before shapes or folders are added, removed or moved.
void PushScene();

// One step back or forward: restores a state or flies to its view. Nothing happens when there is no
// such step.
void PopUndo();
void PopRedo();

// The commands: a step, then a redraw.
void Undo();
void Redo();

// Frees every record's contents; afterwards there is nothing to undo or redo.
void DelPuffer();

} // namespace korvane
