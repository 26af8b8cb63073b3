#include "scene/undorecord.h"

#include "geometry/finishedit.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/scenefile.h"
#include "scene/treeview.h"
#include "ui/input.h"
#include "view/cameraflight.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <algorithm>
#include <cmath>

namespace korvane
{

static constexpr double axistolerance = 0.01; // of each component of the axes

// The world directions of the screen's vertical and depth axes.
static void GetViewAxes(const MainView& view, float axes[2][3])
{
    constexpr float screen[2][3] = {{0, 1, 0}, {0, 0, 1}};
    std::copy_n(screen[0], 6, axes[0]);
    ReRotate(&view, axes, 2);
}

static UndoRecord MakeRecord(UndoKind kind)
{
    UndoRecord record = {};
    record.kind = kind;
    record.shapeindex = -1;
    std::copy_n(mainview.center, 3, record.center);
    GetViewAxes(mainview, record.axes);
    record.scale = mainview.scale;
    return record;
}

UndoRecord SaveShape(int index)
{
    UndoRecord record = MakeRecord(UNDO_SHAPE);
    record.shapeindex = index;
    record.shapenumber = 1;
    record.shapes = NewArray<Shape*>(1);
    record.shapes[0] = CopyShape(shapes[index]);
    return record;
}

UndoRecord SaveScene()
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
        record.treeiters[i] = CopyNode(treeiters[i]);
    }
    return record;
}

UndoRecord SaveLike(const UndoRecord& record)
{
    return record.kind == UNDO_SHAPE ? SaveShape(record.shapeindex) : SaveScene();
}

bool IsStillThere(const UndoRecord& record)
{
    return record.shapeindex < shapenumber;
}

static void RestoreShape(const UndoRecord& record)
{
    const int index = record.shapeindex;
    DeleteShape(shapes[index]);
    shapes[index] = CopyShape(record.shapes[0]);
    DeriveEditedShape(index);
    SearchActive();
}

static void RestoreScene(const UndoRecord& record)
{
    DelScene();
    for (int i = 0; i < record.shapenumber; i++) {
        AddShape(CopyShape(record.shapes[i]));
    }
    FillTree(record.treeiters, record.treeiternumber);
    SetActives();
    RefreshView();
}

void RestoreRecord(const UndoRecord& record)
{
    if (!IsStillThere(record)) {
        return;
    }
    EndPointerActions();
    if (record.kind == UNDO_SHAPE) {
        RestoreShape(record);
    } else {
        RestoreScene(record);
    }
}

static void FreeContents(UndoRecord& record)
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

void FreeRedoState(UndoRecord& record)
{
    if (record.redo != nullptr) {
        FreeContents(*record.redo); // which has no redo state of its own
        FreeArray(record.redo);
    }
}

void FreeRecord(UndoRecord& record)
{
    FreeContents(record);
    FreeRedoState(record);
}

static bool IsViewOf(const UndoRecord& record, const MainView& view)
{
    float axes[2][3];
    GetViewAxes(view, axes);
    const auto near = [](float a, float b) {
        return std::fabs(double(a) - double(b)) <= axistolerance; // the tolerance itself is near
    };
    return std::equal(record.center, record.center + 3, view.center) &&
           record.scale == view.scale && std::equal(axes[0], axes[0] + 6, record.axes[0], near);
}

bool IsViewInPlace(const UndoRecord& record)
{
    return IsViewOf(record, mainview);
}

static bool IsFlyingTo(const UndoRecord& record)
{
    const CameraFrame& last = camtable[cameraframes - 1];
    MainView goal = mainview;
    std::copy_n(last.rotation, 9, goal.rotation);
    std::copy_n(last.center, 3, goal.center);
    goal.scale = last.scale;
    return camposition < cameraframes && IsViewOf(record, goal);
}

void FlyToView(const UndoRecord& record)
{
    if (IsFlyingTo(record)) {
        return; // a key that is held down would start the flight over and over
    }
    float axes[2][3];
    std::copy_n(record.axes[0], 6, axes[0]);
    Rotate(&mainview, axes, 2);
    ChangeCamera(axes[1], axes[0], record.center, record.scale);
}

} // namespace korvane
