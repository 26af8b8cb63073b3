#include "scene/undo.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "view/frameloop.h"

#include <gtk/gtk.h>

namespace korvane
{

UndoRecord* puffer = nullptr;
int pnumber = 0;
int pindex = 0;
UndoRecord* repuffer = nullptr;
int repnumber = 0;
int repindex = 0;

GtkWidget* toolbutton_undo = nullptr;

static void ShowWhetherUndoable()
{
    if (toolbutton_undo != nullptr) {
        gtk_widget_set_sensitive(toolbutton_undo, pindex > 0);
    }
}

// Frees the records from `first` on.
static void DropRecords(int first)
{
    while (pnumber > first) {
        pnumber--;
        FreeRecord(puffer[pnumber]);
    }
}

// Takes ownership of what the record owns. What could be redone no longer can.
static void AddRecord(const UndoRecord& record)
{
    if (pindex < pnumber) {
        DropRecords(pindex); // the slot is used again
    } else {
        GrowArray(puffer, pnumber, pnumber + 1);
    }
    puffer[pnumber] = record;
    pnumber++;
    pindex++;
    ShowWhetherUndoable();
}

void PushShape(int index)
{
    if (IsShapeThere(index)) {
        AddRecord(SaveShape(index));
    }
}

void PushScene()
{
    AddRecord(SaveScene());
}

// Saves the present, to which redo can come back, behind the newest undo step, in the place of one
// that is there already.
static void SavePresent()
{
    const UndoRecord& newest = puffer[pindex - 1];
    if (IsStillThere(newest)) {
        AddRecord(SaveLike(newest));
        pindex--;
    }
}

// Whether restoring the record behind it brings back all that was changed after a record was made.
static bool IsToldByNext(int index)
{
    if (index + 1 >= pnumber) {
        return false;
    }
    const UndoRecord& record = puffer[index];
    const UndoRecord& next = puffer[index + 1];
    return next.kind == UNDO_SCENE ||
           (record.kind == UNDO_SHAPE && next.shapeindex == record.shapeindex);
}

static void KeepRedoState(int index)
{
    UndoRecord& record = puffer[index];
    if (!IsToldByNext(index) && IsStillThere(record)) {
        record.redo = NewArray<UndoRecord>(1);
        *record.redo = SaveLike(record);
    }
}

void PopUndo()
{
    if (pindex == 0) {
        return;
    }
    const bool inplace = IsViewInPlace(puffer[pindex - 1]);
    // A present that was saved before a flight may have gone on since.
    if (pindex == pnumber || (inplace && pindex + 1 == pnumber)) {
        SavePresent();
    }
    if (!inplace) {
        FlyToView(puffer[pindex - 1]);
        return;
    }
    pindex--;
    KeepRedoState(pindex);
    RestoreRecord(puffer[pindex]);
    ShowWhetherUndoable();
}

void PopRedo()
{
    if (pindex + 1 >= pnumber) {
        return;
    }
    UndoRecord& undone = puffer[pindex];
    if (!IsViewInPlace(undone)) {
        FlyToView(undone);
        return;
    }
    pindex++;
    RestoreRecord(undone.redo != nullptr ? *undone.redo : puffer[pindex]);
    FreeRedoState(undone);
    ShowWhetherUndoable();
    if (pindex + 1 == pnumber) {
        DropRecords(pindex); // the present is no longer a saved one
    }
}

void Undo()
{
    PopUndo();
    rdstate |= redrawwanted;
}

void Redo()
{
    PopRedo();
    rdstate |= redrawwanted;
}

void DelPuffer()
{
    DropRecords(0);
    pindex = 0;
    ShowWhetherUndoable();
}

} // namespace korvane
