// Shapes of any size for the benchmarks. Each is complete but for what is derived: points, sides
// and triangles are there, stripes, normals and edges are not. The caller owns the shape.
#pragma once

#include "scene/model.h"

namespace korvane::bench
{

// A closed torus of about `trianglenumber` triangles (at least 18), each of which is a side.
OwnedShape MakeTriangleTorus(int trianglenumber);

// The same torus in rectangles: every two triangles are one side.
OwnedShape MakeQuadTorus(int trianglenumber);

// A one-sided shape whose side is a regular polygon. Its triangles are not yet cut.
OwnedShape MakeConvexPolygon(int pointnumber);

// The same with every other corner drawn in to 0.4 of the radius.
OwnedShape MakeStarPolygon(int pointnumber);

} // namespace korvane::bench
