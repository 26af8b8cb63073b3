// Cutting a side into triangles. A side is a closed polygon that need be neither convex nor exactly
// plane: it is laid flat into two dimensions and its ears are clipped, smallest angle first.
#pragma once

#include "geometry/sideplane.h"
#include "geometry/stripes.h"

namespace korvane
{

struct Side;

// The angle at c between the directions to a and b, in radians, 0..pi, in the first two
// coordinates; 0 when it cannot be told.
double GetAlfaOfThreePoints2d(const float* c, const float* a, const float* b);

// Twice the area of the triangle a, b, c, positive when they run counter-clockwise.
double GetOrientation2d(const float* a, const float* b, const float* c);

// 1 when the 2D point p lies in the triangle a, b, c or on its border, else 0.
int InTheTriangle2d(const float* p, const float* a, const float* b, const float* c);

// Writes the side's triangles into its shape's `triangles` from index `first` on, and the side's
// own list. The caller has set trianglenumber and allocated both arrays.
void SetTrianglesOfSide(Side* side, int first);

} // namespace korvane
