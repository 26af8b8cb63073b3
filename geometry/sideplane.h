// The plane of a side, which is a polygon that need not be exactly plane, and its points laid flat
// in it.
#pragma once

#include "geometry/plane.h"
#include "scene/arrays.h"

namespace korvane
{

struct Side;

// The coordinates of the side's corner at a position.
const float* GetPointOfSide(const Side* side, int position);

// The mean of the side's points. The caller owns the float triple.
Block<float[]> GetCenterOfSide(const Side* side);

// The side's unit normal. A side without one nudges point 0 of its shape, a bounded number of
// times, then takes the area normal, then (0, 0, 1).
Block<float[]> GetNormalOfSide(Side* side);

// The plane through the side's centre across its normal; see GetNormalOfSide.
Plane MakePlaneOfSide(Side* side);
Block<Plane> GetPlaneOfSide(Side* side); // the same; the caller owns it

// The side's points laid flat, one triple per point of which the first two members are filled.
Block<float[][3]> GetPlanePointsOfSide(Side* side);

} // namespace korvane
