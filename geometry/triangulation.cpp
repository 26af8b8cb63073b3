#include "geometry/triangulation.h"

#include "geometry/outline.h"
#include "geometry/sideplane.h"
#include "scene/model.h"

#include <array>
#include <cmath>
#include <numbers>

namespace korvane
{

static double GetLength2d(const float* a, const float* b)
{
    return std::hypot(double(b[0]) - a[0], double(b[1]) - a[1]);
}

// The angle of a triangle at c, given the lengths of its sides.
static double GetAlfaOfTriangle(double ca, double cb, double ab)
{
    const double alfa = std::acos((ca * ca + cb * cb - ab * ab) / 2 / ca / cb);
    return std::isnan(alfa) ? 0 : alfa;
}

double GetAlfaOfThreePoints2d(const float* c, const float* a, const float* b)
{
    return GetAlfaOfTriangle(GetLength2d(c, a), GetLength2d(c, b), GetLength2d(a, b));
}

double GetOrientation2d(const float* a, const float* b, const float* c)
{
    return (double(c[1]) - a[1]) * b[0] + (double(a[1]) - b[1]) * c[0] +
           (double(b[1]) - c[1]) * a[0];
}

int InTheTriangle2d(const float* p, const float* a, const float* b, const float* c)
{
    for (int i = 0; i < 2; i++) {
        if ((a[i] > p[i] && b[i] > p[i] && c[i] > p[i]) ||
            (a[i] < p[i] && b[i] < p[i] && c[i] < p[i])) {
            return 0;
        }
    }
    const std::array<const float*, 5> corners = {a, b, c, a, b};
    for (std::size_t i = 0; i < 3; i++) {
        const double own = GetOrientation2d(corners[i], corners[i + 1], p);
        const double opposite = GetOrientation2d(corners[i], corners[i + 1], corners[i + 2]);
        if ((own > 0 && opposite < 0) || (own < 0 && opposite > 0)) {
            return 0;
        }
    }
    return 1;
}

static constexpr double fullturn = 2 * std::numbers::pi;

static Outline FlattenSide(const Side* side, const FlatPlane& plane)
{
    Outline outline = MakeOutline(side->pointnumber);
    for (int i = 0; i < side->pointnumber; i++) {
        LayFlat(plane, GetPointOfSide(side, i), GetCorner(outline, i).flat);
    }
    return outline;
}

static void MeasureAngles(Outline& outline)
{
    for (OutlineCorner& corner : outline.corners) {
        corner.length = GetLength2d(corner.flat, GetCorner(outline, corner.next).flat);
    }
    for (OutlineCorner& corner : outline.corners) {
        const OutlineCorner& previous = GetCorner(outline, corner.previous);
        const OutlineCorner& next = GetCorner(outline, corner.next);
        const double alfa = GetAlfaOfTriangle(previous.length, corner.length,
                                              GetLength2d(previous.flat, next.flat));
        const bool turnsleft = GetOrientation2d(previous.flat, corner.flat, next.flat) > 0;
        corner.angle = float(turnsleft ? alfa : fullturn - alfa);
    }
}

// The angles on the other side of the outline are full turns less these. The inside has the smaller
// sum.
static void TurnAnglesInside(Outline& outline)
{
    float sum = 0;
    for (const OutlineCorner& corner : outline.corners) {
        sum += corner.angle;
    }
    if (sum > double(outline.corners.size()) * fullturn - sum) {
        for (OutlineCorner& corner : outline.corners) {
            corner.angle = float(fullturn - corner.angle);
        }
    }
}

// Chains a corner to the one that blocks it, so that it is asked again when that is cut off.
static void Wait(Outline& outline, int index, int blocker)
{
    OutlineCorner& corner = GetCorner(outline, index);
    int& first = GetCorner(outline, blocker).waiting;
    corner.blocker = blocker;
    corner.before = noone;
    corner.after = first;
    if (first != noone) {
        GetCorner(outline, first).before = index;
    }
    first = index;
}

static void StopWaiting(Outline& outline, int index)
{
    OutlineCorner& corner = GetCorner(outline, index);
    if (corner.blocker == noone) {
        return;
    }
    if (corner.before == noone) {
        GetCorner(outline, corner.blocker).waiting = corner.after;
    } else {
        GetCorner(outline, corner.before).after = corner.after;
    }
    if (corner.after != noone) {
        GetCorner(outline, corner.after).before = corner.before;
    }
    corner.blocker = noone;
}

// The corner with the smallest angle of those whose triangle is free, the first of equal ones. What
// is blocked stays so until its blocker is cut off or its triangle changes.
static int FindSmallestEar(Outline& outline)
{
    while (GetSmallest(outline) != noone) {
        const int ear = GetSmallest(outline);
        const int blocker = FindBlocker(outline, ear);
        if (blocker == noone) {
            return ear;
        }
        Wait(outline, ear, blocker);
        HideCorner(outline, ear);
    }
    return outline.first; // there is no ear
}

// Three positions in the outline, in its order.
using Positions = std::array<int, 3>;

static void WriteTriangle(Side* side, int first, int k, const Positions& positions)
{
    Triangle& triangle = side->shape->triangles[first + k];
    for (std::size_t i = 0; i < 3; i++) {
        triangle.points[i] = side->points[positions[i]];
    }
    triangle.shape = side->shape;
    side->triangles[k] = first + k;
}

static Positions GetTriangleOfCorner(const Outline& outline, int index)
{
    const OutlineCorner& corner = GetCorner(outline, index);
    return {corner.previous, index, corner.next};
}

// What a cut ear blocked may be an ear now, and so may its neighbours.
static void FreeWaiting(Outline& outline, int ear)
{
    const OutlineCorner& corner = GetCorner(outline, ear);
    StopWaiting(outline, ear);
    StopWaiting(outline, corner.previous);
    StopWaiting(outline, corner.next);
    while (corner.waiting != noone) {
        const int freed = corner.waiting;
        StopWaiting(outline, freed);
        ShowCorner(outline, freed);
    }
}

static void ClipEar(Outline& outline, int ear)
{
    const OutlineCorner& corner = GetCorner(outline, ear);
    OutlineCorner& previous = GetCorner(outline, corner.previous);
    OutlineCorner& next = GetCorner(outline, corner.next);
    const double cut = GetLength2d(previous.flat, next.flat);
    previous.angle = float(previous.angle - GetAlfaOfTriangle(previous.length, cut, corner.length));
    next.angle = float(next.angle - GetAlfaOfTriangle(cut, corner.length, previous.length));
    FreeWaiting(outline, ear);
    previous.length = cut;
    RemoveCorner(outline, ear);
}

void SetTrianglesOfSide(Side* side, int first)
{
    // of a triangle too: looking for its normal may nudge a point
    const Plane plane = MakePlaneOfSide(side);
    const int last = side->trianglenumber - 1;
    if (last == 0) {
        WriteTriangle(side, first, 0, {0, 1, 2});
        return;
    }
    Outline outline = FlattenSide(side, PreparePlane(plane));
    MeasureAngles(outline);
    TurnAnglesInside(outline);
    PlantTree(outline);
    for (int k = 0; k < last; k++) {
        const int ear = FindSmallestEar(outline);
        WriteTriangle(side, first, k, GetTriangleOfCorner(outline, ear));
        ClipEar(outline, ear);
    }
    // the three corners that remain, from the first
    const int middle = GetCorner(outline, outline.first).next;
    WriteTriangle(side, first, last, GetTriangleOfCorner(outline, middle));
}

} // namespace korvane
