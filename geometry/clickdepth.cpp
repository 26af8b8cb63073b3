#include "geometry/clickdepth.h"

#include <cmath>

namespace korvane
{

// Nearer coordinates count as equal. A point that has gone to the world and back has moved less,
// unless the view is zoomed in a hundred times and more.
static constexpr double tolerance = 1e-5;

int GetCameraSignature(const float rotation[9])
{
    double sum = 0;
    double weight = 1024;
    for (int k = 0; k < 6; k++) { // the third column follows from the first two
        sum += double(rotation[k]) * weight;
        weight *= 2;
    }
    return int(sum);
}

ClickDepth StartClickDepth(float zbasic, const float rotation[9])
{
    return {zbasic, 0, GetCameraSignature(rotation)};
}

static bool AreEqual(float a, float b)
{
    return std::abs(double(a) - double(b)) < tolerance;
}

void FollowCamera(ClickDepth& depth, const float rotation[9], const float points[][3], int number)
{
    const int signature = GetCameraSignature(rotation);
    if (signature != depth.coordsign) {
        depth = {points[number - 1][2], number - 1, signature};
    }
    // Deliberate: an equal depth is not taken over. The fixed one was asked for; the point was
    // rounded on its way.
    const float present = points[depth.zindex][2];
    if (!AreEqual(present, depth.zbasic)) {
        depth.zbasic = present;
    }
}

void FollowTakeBack(ClickDepth& depth, const float points[][3], int number)
{
    if (number - 1 < depth.zindex) {
        depth.zindex = number - 1;
        depth.zbasic = points[number - 1][2];
    }
}

// The depth at `x` on a line that has depth z0 at x0 and z1 at x1.
static double GetDepthAt(double x, double x0, double z0, double x1, double z1)
{
    return z0 - (x0 - x) * (z0 - z1) / (x0 - x1);
}

// Where the perpendicular from a point meets the line through two others, which is neither upright
// nor level; its x.
static double GetFoot(const float* point, const float* z, const float* e)
{
    const double slope = (double(z[1]) - double(e[1])) / (double(z[0]) - double(e[0]));
    const double constant = double(z[1]) - double(z[0]) * slope;
    // Deliberate: the only step in between that is rounded to float.
    const double across = double(float(double(point[1]) + double(point[0]) / slope));
    return (across - constant) / (slope + 1 / slope);
}

static double GetDepthBetween(const float* point, const float* z, const float* e)
{
    if (AreEqual(z[0], e[0])) {
        return GetDepthAt(double(point[1]), double(z[1]), double(z[2]), double(e[1]), double(e[2]));
    }
    const double x = AreEqual(z[1], e[1]) ? double(point[0]) : GetFoot(point, z, e);
    return GetDepthAt(x, double(z[0]), double(z[2]), double(e[0]), double(e[2]));
}

void InterpolateDepths(float points[][3], int first, int last)
{
    const float* z = points[first];
    const float* e = points[last];
    if (AreEqual(z[0], e[0]) && AreEqual(z[1], e[1])) { // one place on the screen: by index
        const double step = (double(e[2]) - double(z[2])) / (last - first);
        for (int i = first + 1; i < last; i++) {
            points[i][2] = float(double(z[2]) + step * (i - first));
        }
        return;
    }
    for (int i = first + 1; i < last; i++) {
        points[i][2] = float(GetDepthBetween(points[i], z, e));
    }
}

} // namespace korvane
