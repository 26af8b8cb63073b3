#include "view/nearness.h"

#include "scene/model.h"

#include <algorithm>
#include <cmath>

namespace korvane
{

static constexpr double pickdistancesquare = pickdistance * pickdistance;
static constexpr double straight = 1e-9; // a segment that spans less is horizontal or vertical
static constexpr double farthest = 100;  // a segment's line at this distance is none to choose

bool PointNear2d(const float* mouse, const float* point)
{
    const double dx = double(mouse[0]) - double(point[0]);
    const double dy = double(mouse[1]) - double(point[1]);
    // Deliberate: rounded to whole units, so this rejects only from half a unit on.
    if (std::round(std::fabs(dx)) > pickdistance || std::round(std::fabs(dy)) > pickdistance) {
        return false;
    }
    return std::hypot(dx, dy) < pickdistance;
}

// Where the perpendicular from the mouse meets the line through p and q, which is neither
// horizontal nor vertical.
static void FindFoot(const float* mouse, const float* p, const float* q, double* fx, double* fy)
{
    const double mx = double(mouse[0]), my = double(mouse[1]);
    const double x0 = double(p[0]), y0 = double(p[1]);
    const double k = (double(q[1]) - y0) / (double(q[0]) - x0);
    const double across = 1 / k;
    const double c = y0 - k * x0;
    *fx = ((my + across * mx) - c) / (k + across);
    *fy = k * *fx + c;
}

// The depth of the segment from p to q where it passes the mouse; false when it does not.
static bool FindSegmentDepth(const float* mouse, const float* p, const float* q, double* depth)
{
    const double mx = double(mouse[0]), my = double(mouse[1]);
    const double x0 = double(p[0]), y0 = double(p[1]), z0 = double(p[2]);
    const double x1 = double(q[0]), y1 = double(q[1]), z1 = double(q[2]);
    const double dx = x1 - x0, dy = y1 - y0;
    if (std::fabs(dy) < straight) {
        *depth = ((x1 - mx) * z0 + (mx - x0) * z1) / dx;
        return (y0 - my) * (y0 - my) < pickdistancesquare;
    }
    if (std::fabs(dx) < straight) {
        *depth = ((y1 - my) * z0 + (my - y0) * z1) / dy;
        return (x0 - mx) * (x0 - mx) < pickdistancesquare;
    }
    double fx, fy;
    FindFoot(mouse, p, q, &fx, &fy);
    *depth = ((x1 - fx) * z0 + (fx - x0) * z1) / dx;
    return std::hypot(fx - mx, fy - my) < pickdistance;
}

// True when the mouse is inside the circle that has the segment as its diameter.
static bool IsBesideSegment(const float* mouse, const float* p, const float* q)
{
    const double dx = double(q[0]) - double(p[0]), dy = double(q[1]) - double(p[1]);
    const double mx = double(mouse[0]) - (double(p[0]) + double(q[0])) / 2;
    const double my = double(mouse[1]) - (double(p[1]) + double(q[1])) / 2;
    return std::hypot(dx, dy) / 2 > std::hypot(mx, my);
}

bool StripeNear2d(float* mouse, const Stripe* stripe)
{
    const float(*points)[3] = stripe->shape->points;
    for (int i = 1; i < stripe->pointnumber; i++) {
        const float* p = points[stripe->points[i - 1]];
        const float* q = points[stripe->points[i]];
        double depth;
        if (IsBesideSegment(mouse, p, q) && FindSegmentDepth(mouse, p, q, &depth)) {
            mouse[2] = std::isnan(depth) ? p[2] : float(depth);
            return true;
        }
    }
    return false;
}

// The distance from the mouse to the line through p and q.
static double GetDistanceToLine(const float* mouse, const float* p, const float* q)
{
    if (std::fabs(double(q[1]) - double(p[1])) < straight) {
        return std::fabs(double(p[1]) - double(mouse[1]));
    }
    if (std::fabs(double(q[0]) - double(p[0])) < straight) {
        return std::fabs(double(p[0]) - double(mouse[0]));
    }
    double fx, fy;
    FindFoot(mouse, p, q, &fx, &fy);
    return std::hypot(fx - double(mouse[0]), fy - double(mouse[1]));
}

int FindNearestSegment(const float* mouse, const Stripe* stripe)
{
    const float(*points)[3] = stripe->shape->points;
    double best = farthest;
    int nearest = -1;
    for (int i = 1; i < stripe->pointnumber; i++) {
        const float* p = points[stripe->points[i - 1]];
        const float* q = points[stripe->points[i]];
        if (!IsBesideSegment(mouse, p, q)) {
            continue;
        }
        const double distance = GetDistanceToLine(mouse, p, q);
        if (distance < best) { // strictly smaller: the first of equally near segments stays
            best = distance;
            nearest = i;
        }
    }
    return nearest;
}

// Twice the area of the triangle m, p, q, positive when it runs counter-clockwise.
static double GetDoubleArea(const float* m, const float* p, const float* q)
{
    const double px = double(p[0]) - double(m[0]), py = double(p[1]) - double(m[1]);
    const double qx = double(q[0]) - double(m[0]), qy = double(q[1]) - double(m[1]);
    return px * qy - py * qx;
}

static bool IsBeyond(float m, float a, float b, float c)
{
    return (m < a && m < b && m < c) || (m > a && m > b && m > c);
}

bool InTheCorners2dSetZ(float* mouse, const float* a, const float* b, const float* c)
{
    if (IsBeyond(mouse[0], a[0], b[0], c[0]) || IsBeyond(mouse[1], a[1], b[1], c[1])) {
        return false;
    }
    const double wa = GetDoubleArea(mouse, b, c); // the corners' weights
    const double wb = GetDoubleArea(mouse, c, a);
    const double wc = GetDoubleArea(mouse, a, b);
    const bool inside = (wa >= 0 && wb >= 0 && wc >= 0) || (wa <= 0 && wb <= 0 && wc <= 0);
    if (!inside) {
        return false;
    }
    const double area = wa + wb + wc;
    const double depth = wa * double(a[2]) + wb * double(b[2]) + wc * double(c[2]);
    mouse[2] = area == 0 ? std::max({a[2], b[2], c[2]}) : float(depth / area);
    return true;
}

bool InTheTriangle2dSetZ(float* mouse, const Triangle* triangle)
{
    const float(*points)[3] = triangle->shape->points;
    return InTheCorners2dSetZ(mouse, points[triangle->points[0]], points[triangle->points[1]],
                              points[triangle->points[2]]);
}

} // namespace korvane
