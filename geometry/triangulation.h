// Cutting a side into triangles. A side is a closed polygon that need be neither convex nor exactly
// plane: it is laid flat into two dimensions and its ears are clipped, smallest angle first.
#pragma once

#include "geometry/shapegeometry.h"
#include "geometry/stripes.h" // who cuts sides rebuilds the stripes
#include "scene/arrays.h"

namespace korvane
{

struct Side;

// The mean of the side's points. The caller owns the float triple.
Block<float[]> GetCenterOfSide(const Side* side);

// The side's unit normal. A side without one nudges point 0 of its shape, a bounded number of
// times, then takes the area normal, then (0, 0, 1).
Block<float[]> GetNormalOfSide(Side* side);

// The plane through the side's centre across its normal; see GetNormalOfSide.
Block<Plane> GetPlaneOfSide(Side* side);

// The side's points laid flat, one triple per point of which the first two members are filled.
Block<float[][3]> GetPlanePointsOfSide(Side* side);

// The angle at c between the directions to a and b, in radians, 0..pi, in the first two
// coordinates; 0 when it cannot be told.
double GetAlfaOfThreePoints2d(const float* c, const float* a, const float* b);

// 1 when the 2D point p lies in the triangle a, b, c or on its border, else 0.
int InTheTriangle2d(const float* p, const float* a, const float* b, const float* c);

// Writes the side's triangles into its shape's `triangles` from index `first` on, and the side's
// own list. The caller has set trianglenumber and allocated both arrays.
void SetTrianglesOfSide(Side* side, int first);

} // namespace korvane
