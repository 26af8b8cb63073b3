#include "geometry/sideplane.h"

#include "geometry/shapegeometry.h"
#include "geometry/vectors.h"
#include "scene/model.h"

#include <algorithm>
#include <cmath>

namespace korvane
{

const float* GetPointOfSide(const Side* side, int position)
{
    return side->shape->points[side->points[position]];
}

static Vector SumPoints(const Side* side)
{
    Vector sum = {0, 0, 0};
    for (int i = 0; i < side->pointnumber; i++) {
        AddTo(sum, GetPointOfSide(side, i));
    }
    return sum;
}

static void StoreCenter(const Side* side, float* center)
{
    const Vector sum = SumPoints(side);
    const double number = side->pointnumber;
    Store(sum / number, center);
}

// S(i): the points after P(i), weighed with n - 2, n - 4, ..., -(n - 2).
static Vector WeighPointsAfter(const Side* side, int i)
{
    const int n = side->pointnumber;
    Vector weighted = {0, 0, 0};
    for (int j = 1; j < n; j++) {
        const float* p = GetPointOfSide(side, (i + j) % n);
        for (std::size_t k = 0; k < 3; k++) {
            weighted[k] += double(n - 2 * j) * p[k];
        }
    }
    return weighted;
}

// Adds the first half of the cross product P(i) x S(i).
static void AddTerm(Vector& normal, const float* p, const Vector& weighted)
{
    normal[0] += p[1] * weighted[2];
    normal[1] += p[2] * weighted[0];
    normal[2] += p[0] * weighted[1];
}

// The sum of the terms of all points, every S(i) made anew: in quadratic time.
static Vector SumTerms(const Side* side)
{
    Vector normal = {0, 0, 0};
    for (int i = 0; i < side->pointnumber; i++) {
        AddTerm(normal, GetPointOfSide(side, i), WeighPointsAfter(side, i));
    }
    return normal;
}

// The same but for rounding, in linear time: from one point to the next S changes by twice the sum
// of all points less n times these two points.
static Vector SumTermsByStep(const Side* side)
{
    const int n = side->pointnumber;
    const Vector sum = SumPoints(side);
    Vector weighted = WeighPointsAfter(side, 0);
    Vector normal = {0, 0, 0};
    for (int i = 0; i < n; i++) {
        const float* p = GetPointOfSide(side, i);
        const float* next = GetPointOfSide(side, i + 1 == n ? 0 : i + 1);
        AddTerm(normal, p, weighted);
        for (std::size_t k = 0; k < 3; k++) {
            weighted[k] += 2 * sum[k] - n * (double(p[k]) + next[k]);
        }
    }
    return normal;
}

// The largest absolute coordinate.
static double GetReach(const Side* side)
{
    double reach = 0;
    for (int i = 0; i < side->pointnumber; i++) {
        const float* p = GetPointOfSide(side, i);
        for (int k = 0; k < 3; k++) {
            reach = std::max(reach, std::fabs(double(p[k])));
        }
    }
    return reach;
}

// What is left of the steps where the sum is zero is rounding, which would pass for a normal.
static Vector GetWeightedNormal(const Side* side)
{
    constexpr double roundingrate = 1e-12; // of the size of the terms
    const Vector stepped = SumTermsByStep(side);
    const double size = side->pointnumber * GetReach(side);
    const double rounding = roundingrate * size * size;
    return GetSquare(stepped) < rounding * rounding ? SumTerms(side) : stepped;
}

// Twice the area that the outline encloses in each of the three coordinate planes.
static Vector GetAreaNormal(const Side* side)
{
    Vector normal = {0, 0, 0};
    for (int i = 0; i < side->pointnumber; i++) {
        const float* p = GetPointOfSide(side, i);
        const float* next = GetPointOfSide(side, i + 1 == side->pointnumber ? 0 : i + 1);
        normal[0] += double(p[1]) * next[2] - double(p[2]) * next[1];
        normal[1] += double(p[2]) * next[0] - double(p[0]) * next[2];
        normal[2] += double(p[0]) * next[1] - double(p[1]) * next[0];
    }
    return normal;
}

static void NudgePoint(float* point)
{
    point[0] = float(point[0] + 1e-9);
    point[1] = float(point[1] - 2e-9);
    point[2] = float(point[2] + 3e-9);
}

static void StoreNormal(Side* side, float* normal)
{
    constexpr int nudgelimit = 16; // most points do not even move: the step is lost in rounding
    bool found = StoreUnit(GetWeightedNormal(side), normal);
    for (int i = 0; i < nudgelimit && !found; i++) {
        // Deliberate: point 0 of the shape, not of the side, and it stays where it was moved.
        NudgePoint(side->shape->points[0]);
        found = StoreUnit(GetWeightedNormal(side), normal);
    }
    if (!found && !StoreUnit(GetAreaNormal(side), normal)) {
        Store({0, 0, 1}, normal);
    }
}

Plane MakePlaneOfSide(Side* side)
{
    float normal[3];
    float center[3];
    StoreNormal(side, normal); // before the center: it may move a point
    StoreCenter(side, center);
    return SolvePlane(center, normal);
}

Block<float[]> GetCenterOfSide(const Side* side)
{
    Block<float[]> center(NewUnfilledArray<float>(3));
    StoreCenter(side, center.get());
    return center;
}

Block<float[]> GetNormalOfSide(Side* side)
{
    Block<float[]> normal(NewUnfilledArray<float>(3));
    StoreNormal(side, normal.get());
    return normal;
}

Block<Plane> GetPlaneOfSide(Side* side)
{
    Block<Plane> plane(NewUnfilledArray<Plane>(1));
    *plane = MakePlaneOfSide(side);
    return plane;
}

Block<float[][3]> GetPlanePointsOfSide(Side* side)
{
    const FlatPlane plane = PreparePlane(MakePlaneOfSide(side));
    Block<float[][3]> flat(NewArray<float[3]>(side->pointnumber));
    for (int i = 0; i < side->pointnumber; i++) {
        LayFlat(plane, GetPointOfSide(side, i), flat[std::size_t(i)]);
    }
    return flat;
}

} // namespace korvane
