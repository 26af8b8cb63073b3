#include "geometry/construction.h"

#include "geometry/clickdepth.h"
#include "geometry/duplication.h"
#include "scene/arrays.h"
#include "view/mainview.h"
#include "view/picking.h"
#include "view/projection.h"

#include <algorithm>

namespace korvane
{

float (*newpoints)[3] = nullptr;
float (*rotated)[3] = nullptr;
int newpointnumber = 0;
char newsign = 0;

GtkWidget* toolbutton_news = nullptr;

bool IsUnderConstruction()
{
    return newsign != 0 || duplicatesign != 0;
}

void TransferConstruction(const MainView* view)
{
    TransferPointsInto(view, newpoints, rotated, newpointnumber);
    TransferPointsInto(view, centerpoints, rcenterpoints, centernumber);
}

ActiveElement* GetNewPointRecords()
{
    return activepoints + activepointnumber - newpointnumber;
}

ActiveElement* GetCenterRecords()
{
    return GetNewPointRecords() - centernumber;
}

// For records that are new, or whose coordinates have moved.
static void PointRecordsAtPlaces()
{
    for (int i = 0; i < newpointnumber; i++) {
        GetNewPointRecords()[i].element = rotated[i];
    }
    for (int i = 0; i < centernumber; i++) {
        GetCenterRecords()[i].element = rcenterpoints[i];
    }
}

static void AppendRecords(int number)
{
    const bool pointed = activepointer != nullptr && activepointer->type == ELEMENT_POINT;
    const auto index = pointed ? activepointer - activepoints : 0;
    GrowArray(activepoints, activepointnumber, activepointnumber + number);
    for (int i = 0; i < number; i++) {
        activepoints[activepointnumber + i].type = ELEMENT_POINT;
    }
    activepointnumber += number;
    if (pointed) {
        activepointer = activepoints + index;
    }
}

void AddNewPoint(const float place[3])
{
    const float copy[3] = {place[0], place[1], place[2]}; // `place` may lie in what is to move
    const int last = newpointnumber;
    newpointnumber++;
    GrowArray(newpoints, last, newpointnumber);
    GrowArray(rotated, last, newpointnumber);
    std::copy_n(copy, 3, rotated[last]);
    std::copy_n(copy, 3, newpoints[last]);
    ReTransferPoints(&mainview, newpoints + last, 1);
    AppendRecords(1);
    PointRecordsAtPlaces();
}

void AddCenterPoints(const float places[][3], int number)
{
    centerpoints = CopyArray(places, number);
    rcenterpoints = NewUnfilledArray<float[3]>(number);
    centernumber = number;
    TransferPointsInto(&mainview, centerpoints, rcenterpoints, number);
    AppendRecords(number);
    PointRecordsAtPlaces();
}

void DropNewPoint()
{
    newpointnumber--;
    activepointnumber--;
}

void CloseLine(int zindex)
{
    AddNewPoint(GetPointOfElement(activepointer));
    InterpolateDepths(rotated, zindex, newpointnumber - 1);
    std::copy_n(&rotated[0][0], 3 * newpointnumber, &newpoints[0][0]);
    ReTransferPoints(&mainview, newpoints, newpointnumber);
}

// The place of activepointer among some records; -1 when it is none of them.
static int GetPickedOf(const ActiveElement* records, int number)
{
    if (activepointer == nullptr || activepointer->type != ELEMENT_POINT) {
        return -1;
    }
    const auto index = activepointer - records;
    return index >= 0 && index < number ? int(index) : -1;
}

int GetPickedNewPoint()
{
    return GetPickedOf(GetNewPointRecords(), newpointnumber);
}

int GetPickedCenter()
{
    return GetPickedOf(GetCenterRecords(), centernumber);
}

void DelNewPoints()
{
    newsign = 0;
    duplicatesign = 0;
    if (newpointnumber > 0) {
        ForgetPressedElements(); // their indices may lie beyond the records that stay
        activepointnumber -= newpointnumber + centernumber;
        newpointnumber = 0;
        FreeArray(newpoints);
        FreeArray(rotated);
        centernumber = 0;
        FreeArray(centerpoints);
        FreeArray(rcenterpoints);
    }
    activepointer = nullptr; // it may have been one of the records
    ChangeActives();
}

} // namespace korvane
