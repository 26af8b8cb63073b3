// Which shape an active element belongs to, and where a shape's points are in the active list. Each
// active list holds the elements of all shapes in scene order, so an index into it names a shape
// and an element inside it.
#pragma once

namespace korvane
{

struct Location {
    int shape; // index of the shape; -1 when the index lies outside the shapes' elements
    int index; // index of the element inside the shape
};

Location LocatePoint(int activepoint);   // an index into activepoints
Location LocateStripe(int activestripe); // an index into activestripes
Location LocateSide(int activeside);     // an index into activesides

// The other way round: the place in activepoints of a point of a shape, which must be there.
int GetActivePoint(const Location& place);

} // namespace korvane
