#include "geometry/construction.h"

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

// The arrays of coordinates have moved, or a record has been appended.
static void PointRecordsAtPlaces()
{
    for (int i = 0; i < newpointnumber; i++) {
        GetNewPointRecords()[i].element = rotated[i];
    }
    for (int i = 0; i < centernumber; i++) {
        GetCenterRecords()[i].element = rcenterpoints[i];
    }
}

static void AppendRecord()
{
    const bool pointed = activepointer != nullptr && activepointer->type == ELEMENT_POINT;
    const auto index = pointed ? activepointer - activepoints : 0;
    GrowArray(activepoints, activepointnumber, activepointnumber + 1);
    activepoints[activepointnumber].type = ELEMENT_POINT;
    activepointnumber++;
    if (pointed) {
        activepointer = activepoints + index;
    }
}

// Opens a place at the end of a pair of arrays.
static void GrowPair(float (*&world)[3], float (*&view)[3], int& number)
{
    GrowArray(world, number, number + 1);
    GrowArray(view, number, number + 1);
    number++;
}

void AddNewPoint(const float place[3])
{
    const float copy[3] = {place[0], place[1], place[2]}; // `place` may lie in rotated
    GrowPair(newpoints, rotated, newpointnumber);
    const int last = newpointnumber - 1;
    std::copy_n(copy, 3, rotated[last]);
    std::copy_n(copy, 3, newpoints[last]);
    ReTransferPoints(&mainview, newpoints + last, 1);
    AppendRecord();
    PointRecordsAtPlaces();
}

void AddCenterPoint(const float place[3])
{
    GrowPair(centerpoints, rcenterpoints, centernumber);
    std::copy_n(place, 3, centerpoints[centernumber - 1]);
    TransferPointsInto(&mainview, centerpoints, rcenterpoints, centernumber);
    AppendRecord();
    PointRecordsAtPlaces();
}

void DropNewPoint()
{
    newpointnumber--;
    activepointnumber--;
}

void PlaceNewPoints()
{
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
