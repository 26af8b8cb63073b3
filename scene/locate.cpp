#include "scene/locate.h"

#include "scene/model.h"

namespace korvane
{

// The first shape at which the running sum of a count exceeds the index.
static Location Locate(int element, int Shape::*count)
{
    if (element < 0) {
        return {-1, -1};
    }
    for (int i = 0; i < shapenumber; i++) {
        if (element < shapes[i]->*count) {
            return {i, element};
        }
        element -= shapes[i]->*count;
    }
    return {-1, -1};
}

Location LocatePoint(int activepoint)
{
    return Locate(activepoint, &Shape::pointnumber);
}

Location LocateStripe(int activestripe)
{
    return Locate(activestripe, &Shape::stripenumber);
}

Location LocateSide(int activeside)
{
    return Locate(activeside, &Shape::sidenumber);
}

int GetActivePoint(const Location& place)
{
    int before = 0;
    for (int i = 0; i < place.shape; i++) {
        before += shapes[i]->pointnumber;
    }
    return before + place.index;
}

} // namespace korvane
