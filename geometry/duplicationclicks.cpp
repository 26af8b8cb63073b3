#include "geometry/duplicationclicks.h"

#include "geometry/clickdepth.h"
#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "geometry/sidecut.h"
#include "geometry/sideplane.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/undo.h"
#include "ui/dialogs.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"
#include "view/projection.h"

#include <algorithm>
#include <vector>

namespace korvane
{

// Of the path under construction, from its first point to its end.
static ClickDepth clickdepth = {};
static std::vector<int> sideindexes; // of each centre, the side to which it belongs
static bool oneside = false;         // the shape has a single side and no inside

// The centres of the other sides to which the side can be bridged.
static void PutCenters(const Shape* shape, int sideindex)
{
    sideindexes.clear();
    for (int i = 0; i < shape->sidenumber; i++) {
        if (i != sideindex && shape->sides[i].pointnumber == shape->sides[sideindex].pointnumber) {
            sideindexes.push_back(i);
        }
    }
    const int number = int(sideindexes.size());
    const Block<float[][3]> centers(NewUnfilledArray<float[3]>(number));
    for (int k = 0; k < number; k++) {
        const Side* side = &shape->sides[sideindexes[std::size_t(k)]];
        std::copy_n(GetCenterOfSide(side).get(), 3, centers[std::size_t(k)]);
    }
    AddCenterPoints(centers.get(), number);
}

static void PutFirstPoint(int shapeindex, int sideindex)
{
    const Shape* shape = shapes[shapeindex];
    SetActivesOff();
    PushShape(shapeindex);
    oneside = !IsBody(shape);
    if (!oneside) {
        PutCenters(shape, sideindex);
    }
    const Block<float[]> center = GetCenterOfSide(&shape->sides[sideindex]);
    float place[1][3];
    std::copy_n(center.get(), 3, place[0]);
    TransferPoints(&mainview, place, 1);
    AddNewPoint(place[0]);
    std::copy_n(center.get(), 3, newpoints[0]); // not rounded on the way to the view and back
    clickdepth = StartClickDepth(place[0][2], mainview.rotation);
}

// Where the path may be closed. A ring needs three places, a bridge one between its ends.
static void MarkEnds()
{
    const int places = CountPathPlaces();
    if (oneside) {
        GetNewPointRecords()[0].active = places >= 3 ? 1 : 0;
    }
    for (int k = 0; k < centernumber; k++) {
        GetCenterRecords()[k].active = places >= 2 ? 1 : 0;
    }
}

static void ClosePath(int shapeindex, int sideindex)
{
    const int target = oneside ? 0 : sideindexes[std::size_t(GetPickedCenter())];
    CloseLine(clickdepth.zindex);
    CreateDuplicate(shapeindex, sideindex, target, 1);
    DelNewPoints();
}

static void PutNextPoint(int shapeindex, int sideindex)
{
    FollowCamera(clickdepth, mainview.rotation, rotated, newpointnumber);
    if ((oneside ? GetPickedNewPoint() : GetPickedCenter()) >= 0) {
        ClosePath(shapeindex, sideindex);
        return;
    }
    const float place[3] = {gmouse[0], gmouse[1], clickdepth.zbasic};
    AddNewPoint(place);
    MarkEnds();
}

static void TakeBackPoint()
{
    DropNewPoint();
    FollowTakeBack(clickdepth, rotated, newpointnumber);
    MarkEnds();
}

void PutDPoints(int shapeindex, int sideindex, int action)
{
    if (action == CLICK_ADD && newpointnumber == 0) {
        PutFirstPoint(shapeindex, sideindex);
    } else if (action == CLICK_ADD) {
        PutNextPoint(shapeindex, sideindex);
    } else if (newpointnumber < 2) {
        DelNewPoints();
    } else if (action == CLICK_TAKEBACK) {
        TakeBackPoint();
    } else {
        CreateDuplicate(shapeindex, sideindex, 0, 0);
        DelNewPoints();
    }
    SearchActive(); // other points can be picked now
}

void Duplicate()
{
    DelNewPoints();
    if (!IsDuplicateSideThere()) {
        return;
    }
    duplicatesign = 1;
    PutDPoints(duplicateshape, duplicateside, CLICK_ADD);
    PrintStatusBar(" Click the path of the duplicate");
    rdstate |= redrawwanted;
}

} // namespace korvane
