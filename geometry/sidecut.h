// A chain of points between two corners makes new sides: it cuts a side of a body in two, or it
// raises a flat shape into a closed body of three sides. Triangles and stripes are right
// afterwards; the normals, the edges and the radius are the caller's.
#pragma once

#include "geometry/sidechoice.h"

namespace korvane
{

// Whether the shape is a flat polygon: one side, which passes no edge twice.
bool IsFlatShape(const Shape* shape);

// Whether the shape has an inside: more than one side, or one that passes every edge both ways, as
// is left when all sides of a body have been joined.
bool IsBody(const Shape* shape);

// Both ask for a chain that the shape can take (CanTakeChain).
void CutAlongChain(Shape* shape, const Chain& chain);  // a body
void RaiseOverChain(Shape* shape, const Chain& chain); // a flat shape

} // namespace korvane
