// Removing a point of a shape. Pure: the shape that is given and nothing else.
#pragma once

namespace korvane
{

struct Shape;

// Removes a point. One inside a stripe leaves the outlines that pass it, and the stripes stay. With
// one at the end of a stripe go the stripes that meet there, and their sides are merged: a point
// that is then still needed stays. Cuts the sides again that have changed; normals and edges are
// stale. Answers false, and changes nothing, when the shape has too few points or nothing can go.
bool RemovePointOfShape(Shape* shape, int point);

} // namespace korvane
