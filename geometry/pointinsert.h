// Inserting a point into a stripe of a shape. Pure: the shape that is given and nothing else.
#pragma once

namespace korvane
{

struct Shape;

// Puts a new point between the stripe's points `position` - 1 and `position`, and into the outlines
// that run there: the first in the order of the sides, and the next that runs the opposite way. Of
// the stripes only this one is changed. Cuts these sides again; normals and edges are stale.
// Returns the point's index, the last; -1, and nothing is changed, when no outline runs there.
int InsertPoint(Shape* shape, int stripe, int position, const float place[3]);

} // namespace korvane
