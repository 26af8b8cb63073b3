// Planes in space, and laying points flat into their two dimensions.
#pragma once

namespace korvane
{

// A plane solved for its dominant coordinate r (0 x, 1 y, 2 z): r = a f + b s + c, where (r, f, s)
// is (x, y, z), (y, z, x) or (z, x, y).
struct Plane {
    int axis; // r
    float a, b, c;
    float center[3]; // the point through which it runs
    float normal[3]; // unit length, except where a degenerate polygon has none
};

// The plane through `center` with `normal`, solved for the coordinate with the largest squared
// normal component; of equal ones z wins, then y, but z never when it is zero.
Plane SolvePlane(const float* center, const float* normal);

// A plane and what laying points flat into it needs again and again.
struct FlatPlane {
    Plane plane;
    double divisor; // of the distance
    double turnf;   // how far a point's offset across the normal's tilt turns f
    double turns;   // and s
};

FlatPlane PreparePlane(const Plane& plane);

// Moves a point along the plane's normal into the plane and turns the plane until the normal points
// along r, which then drops out. Stores the two coordinates that are left, counted from the plane's
// center. Returns how far along the normal the point lay from the plane.
double LayFlat(const FlatPlane& plane, const float* point, float* flat);

} // namespace korvane
