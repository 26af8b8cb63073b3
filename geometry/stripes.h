// A shape's stripes: the runs of side outline between the points where three or more sides meet.
#pragma once

namespace korvane
{

struct Shape;

// Rebuilds the shape's stripes from its sides; frees what they held before. A one-sided shape has
// its outline, closed. Of several sides each gives the runs between its junctions, points that
// stand more than twice in the outlines; a run that is there already, in either direction, is not
// added again. A side without a junction gives its outline, closed, once for all sides that share
// it.
void SetStripesOfShape(Shape* shape);

} // namespace korvane
