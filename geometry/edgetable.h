// The table of a shape's triangle edges: which two triangles share each edge.
#pragma once

#include <vector>

namespace korvane
{

struct Shape;

// For every point of the shape, how many triangle corners lie on it.
std::vector<int> CountCornersOfPoints(const Shape* shape);

// Builds `edges` and `edgenumber` from the sides' triangles, which are walked side by side. A
// directed edge is given to the earliest edge that runs the opposite way and still has one
// triangle; without one it becomes a new edge. The caller has freed the edges there were.
void SetEdgesOfShape(Shape* shape);

} // namespace korvane
