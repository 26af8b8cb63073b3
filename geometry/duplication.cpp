#include "geometry/duplication.h"

#include "geometry/construction.h"
#include "geometry/finishedit.h"
#include "geometry/stripes.h"
#include "geometry/sweep.h"
#include "scene/model.h"

namespace korvane
{

char duplicatesign = 0;
int duplicateshape = 0;
int duplicateside = 0;
float (*centerpoints)[3] = nullptr;
float (*rcenterpoints)[3] = nullptr;
int centernumber = 0;

bool IsDuplicateSideThere()
{
    return IsSideThere(duplicateshape, duplicateside);
}

static Places GetNewPoints()
{
    Places path;
    for (int i = 0; i < newpointnumber; i++) {
        path.push_back(ToPlace(newpoints[i]));
    }
    return path;
}

int CountPathPlaces()
{
    return int(DropStillSteps(GetNewPoints()).size());
}

void CreateDuplicate(int shapeindex, int sideindex, int target, int closed)
{
    if (!IsShapeThere(shapeindex)) {
        return;
    }
    Shape* shape = shapes[shapeindex];
    if (SweepSide(shape, sideindex, GetNewPoints(), target, closed != 0)) {
        SetStripesOfShape(shape);
        FinishEdit(shapeindex);
    }
}

} // namespace korvane
