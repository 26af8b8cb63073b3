#include "scene/undo.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/treeview.h"
#include "view/mainview.h"

#include <gtk/gtk.h>

#include <algorithm>

namespace korvane
{

UndoRecord* puffer = nullptr;
int pnumber = 0;
int pindex = 0;
UndoRecord* repuffer = nullptr;
int repnumber = 0;
int repindex = 0;

GtkWidget* toolbutton_undo = nullptr;

static void FreeRecord(UndoRecord& record)
{
    for (int i = 0; i < record.shapenumber; i++) {
        DeleteShape(record.shapes[i]);
    }
    FreeArray(record.shapes);
    for (int i = 0; i < record.treeiternumber; i++) {
        FreeArray(record.treeiters[i].name);
        FreeArray(record.treeiters[i].children);
    }
    FreeArray(record.treeiters);
}

// Frees the records from `first` on.
static void DropRecords(int first)
{
    while (pnumber > first) {
        FreeRecord(puffer[--pnumber]);
    }
}

static void ShowWhetherUndoable()
{
    if (toolbutton_undo != nullptr) {
        gtk_widget_set_sensitive(toolbutton_undo, pindex > 0);
    }
}

// The world directions of the screen's vertical and depth axes.
static void GetViewAxes(float axes[2][3])
{
    constexpr float screen[2][3] = {{0, 1, 0}, {0, 0, 1}};
    std::copy_n(screen[0], 6, axes[0]);
    ReRotate(&mainview, axes, 2);
}

static UndoRecord MakeRecord(UndoKind kind)
{
    UndoRecord record = {};
    record.kind = kind;
    record.shapeindex = -1;
    std::copy_n(mainview.center, 3, record.center);
    GetViewAxes(record.axes);
    record.scale = mainview.scale;
    return record;
}

static UndoRecord SaveShape(int index)
{
    UndoRecord record = MakeRecord(UNDO_SHAPE);
    record.shapeindex = index;
    record.shapenumber = 1;
    record.shapes = NewArray<Shape*>(1);
    record.shapes[0] = CopyShape(shapes[index]);
    return record;
}

static UndoRecord SaveScene()
{
    UndoRecord record = MakeRecord(UNDO_SCENE);
    record.shapenumber = shapenumber;
    record.shapes = NewArray<Shape*>(shapenumber);
    for (int i = 0; i < shapenumber; i++) {
        record.shapes[i] = CopyShape(shapes[i]);
    }
    record.treeiternumber = treeiternumber;
    record.treeiters = NewArray<TreeIter>(treeiternumber);
    for (int i = 0; i < treeiternumber; i++) {
        record.treeiters[i] = CopyTreeIter(treeiters[i]);
    }
    return record;
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
    if (index >= 0 && index < shapenumber) {
        AddRecord(SaveShape(index));
    }
}

void PushScene()
{
    AddRecord(SaveScene());
}

void DelPuffer()
{
    DropRecords(0);
    pindex = 0;
    ShowWhetherUndoable();
}

} // namespace korvane
