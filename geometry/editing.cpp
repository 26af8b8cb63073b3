#include "geometry/editing.h"

#include "geometry/construction.h"
#include "geometry/finishedit.h"
#include "geometry/pointinsert.h"
#include "geometry/pointremoval.h"
#include "geometry/sidemerge.h"
#include "geometry/surgery.h"
#include "scene/locate.h"
#include "scene/model.h"
#include "scene/undo.h"
#include "view/mainview.h"
#include "view/picking.h"
#include "view/projection.h"

#include <algorithm>

namespace korvane
{

int AddPoint(int activestripe)
{
    const Location place = LocateStripe(activestripe);
    if (place.shape < 0) {
        return -1;
    }
    PushShape(place.shape);
    const int segment = FindNearestSegment(mouse, &shapest[place.shape]->stripes[place.index]);
    if (segment < 0) {
        return -1;
    }
    float point[1][3];
    std::copy_n(gmouse, 3, point[0]);
    ReTransferPoints(&mainview, point, 1);
    if (InsertPoint(shapes[place.shape], place.index, segment, point[0]) < 0) {
        return -1;
    }
    FinishEdit(place.shape);
    return GetActivePoint({place.shape, shapes[place.shape]->pointnumber - 1});
}

// Moves a new point of the construction, whose records stand at the end of activepoints. The
// centres before them stay where they are.
static void MoveNewPoint(int activepoint, float x, float y)
{
    const int index = activepoint - int(GetNewPointRecords() - activepoints);
    if (index < 0 || index >= newpointnumber) {
        return;
    }
    rotated[index][0] = x;
    rotated[index][1] = y;
    std::copy_n(rotated[index], 3, newpoints[index]);
    ReTransferPoints(&mainview, newpoints + index, 1);
}

void PointMove(int activepoint, float x, float y, char first)
{
    if (activepoint < 0) {
        return;
    }
    const Location place = LocatePoint(activepoint);
    if (place.shape < 0) {
        MoveNewPoint(activepoint, x, y);
        return;
    }
    if (first == 1) {
        PushShape(place.shape);
    }
    Shape* shape = shapes[place.shape];
    float point[1][3]; // projected here: a shape that has left the view has no current view copy
    std::copy_n(shape->points[place.index], 3, point[0]);
    TransferPoints(&mainview, point, 1);
    point[0][0] = x;
    point[0][1] = y;
    ReTransferPoints(&mainview, point, 1);
    MovePoint(shape, place.index, point[0]);
    FinishEdit(place.shape);
}

// An edit that may be refused is tried on a copy, so that a refusal leaves neither a trace nor an
// undo step.
static void TryEdit(int shapeindex, bool (*edit)(Shape*, int), int element)
{
    OwnedShape edited(CopyShape(shapes[shapeindex]));
    if (!edit(edited.get(), element)) {
        return;
    }
    PushShape(shapeindex);
    DeleteShape(shapes[shapeindex]);
    shapes[shapeindex] = edited.release();
    FinishEdit(shapeindex);
}

void RemovePoint(int activepoint)
{
    const Location place = LocatePoint(activepoint);
    if (place.shape >= 0) {
        TryEdit(place.shape, RemovePointOfShape, place.index);
    }
}

static bool DissolveBorder(Shape* shape, int stripe)
{
    return DissolveStripe(shape, stripe);
}

void RemoveStripe(int activestripe)
{
    const Location place = LocateStripe(activestripe);
    if (place.shape >= 0) {
        TryEdit(place.shape, DissolveBorder, place.index);
    }
}

} // namespace korvane
