#include "geometry/plane.h"

#include <algorithm>
#include <cmath>

namespace korvane
{

// The coordinate for which a plane is solved.
static int GetDominantAxis(const float* normal)
{
    const double x = double(normal[0]) * normal[0];
    const double y = double(normal[1]) * normal[1];
    const double z = double(normal[2]) * normal[2];
    if (x > y && x > z) {
        return 0;
    }
    if (y > x && y > z) {
        return 1;
    }
    return z == 0 ? 1 : 2; // an upright wall at 45 degrees: x and y tie, z would divide by zero
}

Plane SolvePlane(const float* center, const float* normal)
{
    const int r = GetDominantAxis(normal);
    const int f = (r + 1) % 3;
    const int s = (r + 2) % 3;
    Plane plane;
    plane.axis = r;
    plane.a = float(-double(normal[f]) / normal[r]);
    plane.b = float(-double(normal[s]) / normal[r]);
    plane.c = float(center[r] - double(plane.a) * center[f] - double(plane.b) * center[s]);
    std::copy_n(center, 3, plane.center);
    std::copy_n(normal, 3, plane.normal);
    return plane;
}

FlatPlane PreparePlane(const Plane& plane)
{
    const int r = plane.axis;
    const double nr = plane.normal[r];
    const double nf = plane.normal[(r + 1) % 3];
    const double ns = plane.normal[(r + 2) % 3];
    const double q = nf * nf + ns * ns;
    return {plane, plane.a * nf + plane.b * ns - nr, (ns - nr * ns) / q, (nf - nr * nf) / q};
}

double LayFlat(const FlatPlane& flatplane, const float* point, float* flat)
{
    const Plane& plane = flatplane.plane;
    const int r = plane.axis;
    const int f = r == 2 ? 0 : r + 1;
    const int s = r == 0 ? 2 : r - 1;
    const double nr = plane.normal[r], nf = plane.normal[f], ns = plane.normal[s];
    const double pr = point[r], pf = point[f], ps = point[s];
    const double t = (plane.a * pf + plane.b * ps - pr + plane.c) / flatplane.divisor;
    const double dr = pr - t * nr - plane.center[r];
    const double df = pf - t * nf - plane.center[f];
    const double ds = ps - t * ns - plane.center[s];
    const double w = df * ns - ds * nf;
    flat[0] = float(df * nr - nf * dr + flatplane.turnf * w);
    flat[1] = float(ds * nr - ns * dr - flatplane.turns * w);
    if (std::isnan(flat[0]) || std::isnan(flat[1])) { // the normal runs exactly along r
        flat[0] = float(df);
        flat[1] = float(ds);
    }
    return t;
}

} // namespace korvane
