#include "geometry/triangulation.h"

#include "scene/model.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace korvane
{

using Vector = std::array<double, 3>;

static const float* GetPointOfSide(const Side* side, int position)
{
    return side->shape->points[side->points[position]];
}

// Stores v divided by its length. Answers whether that is a number: a zero vector has no direction.
static bool StoreUnit(const Vector& v, float* target)
{
    const double length = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    int nans = 0;
    for (std::size_t i = 0; i < 3; i++) {
        target[i] = float(v[i] / length);
        nans += CheckNan(target[i]);
    }
    return nans == 0;
}

static Vector SumPoints(const Side* side)
{
    Vector sum = {0, 0, 0};
    for (int i = 0; i < side->pointnumber; i++) {
        for (std::size_t k = 0; k < 3; k++) {
            sum[k] += GetPointOfSide(side, i)[k];
        }
    }
    return sum;
}

Block<float[]> GetCenterOfSide(const Side* side)
{
    Block<float[]> center(NewUnfilledArray<float>(3));
    const Vector sum = SumPoints(side);
    for (std::size_t k = 0; k < 3; k++) {
        center[k] = float(sum[k] / side->pointnumber);
    }
    return center;
}

// The sum over the points P(i) of P(i) x S(i), of whose two halves only the first is taken, where
// S(i) weighs the points after P(i) with n - 2, n - 4, ..., -(n - 2). From one point to the next S
// changes by twice the sum of all points less n times these two points.
static Vector GetWeightedNormal(const Side* side)
{
    const int n = side->pointnumber;
    const Vector sum = SumPoints(side);
    Vector weighted = {0, 0, 0}; // S(0)
    for (int j = 1; j < n; j++) {
        for (std::size_t k = 0; k < 3; k++) {
            weighted[k] += double(n - 2 * j) * GetPointOfSide(side, j)[k];
        }
    }
    Vector normal = {0, 0, 0};
    for (int i = 0; i < n; i++) {
        const float* p = GetPointOfSide(side, i);
        const float* next = GetPointOfSide(side, i + 1 == n ? 0 : i + 1);
        normal[0] += p[1] * weighted[2];
        normal[1] += p[2] * weighted[0];
        normal[2] += p[0] * weighted[1];
        for (std::size_t k = 0; k < 3; k++) {
            weighted[k] += 2 * sum[k] - n * (double(p[k]) + next[k]);
        }
    }
    return normal;
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

Block<float[]> GetNormalOfSide(Side* side)
{
    constexpr int nudgelimit = 16; // most points do not even move: the step is lost in rounding
    Block<float[]> normal(NewUnfilledArray<float>(3));
    bool found = StoreUnit(GetWeightedNormal(side), normal.get());
    for (int i = 0; i < nudgelimit && !found; i++) {
        // Deliberate: point 0 of the shape, not of the side, and it stays where it was moved.
        NudgePoint(side->shape->points[0]);
        found = StoreUnit(GetWeightedNormal(side), normal.get());
    }
    if (!found && !StoreUnit(GetAreaNormal(side), normal.get())) {
        normal[0] = 0;
        normal[1] = 0;
        normal[2] = 1;
    }
    return normal;
}

Block<Plane> GetPlaneOfSide(Side* side)
{
    // the normal first: it may move a point
    const Block<float[]> normal = GetNormalOfSide(side);
    const Block<float[]> center = GetCenterOfSide(side);
    Block<Plane> plane(NewUnfilledArray<Plane>(1));
    *plane = SolvePlane(center.get(), normal.get());
    return plane;
}

Block<float[][3]> GetPlanePointsOfSide(Side* side)
{
    const Block<Plane> plane = GetPlaneOfSide(side);
    Block<float[][3]> flat(NewArray<float[3]>(side->pointnumber));
    for (int i = 0; i < side->pointnumber; i++) {
        LayFlat(*plane, GetPointOfSide(side, i), flat[std::size_t(i)]);
    }
    return flat;
}

double GetAlfaOfThreePoints2d(const float* c, const float* a, const float* b)
{
    const double ca = std::hypot(double(a[0]) - c[0], double(a[1]) - c[1]);
    const double cb = std::hypot(double(b[0]) - c[0], double(b[1]) - c[1]);
    const double ab = std::hypot(double(b[0]) - a[0], double(b[1]) - a[1]);
    const double alfa = std::acos((ca * ca + cb * cb - ab * ab) / 2 / ca / cb);
    return std::isnan(alfa) ? 0 : alfa;
}

static double GetOrientation(const float* a, const float* b, const float* c)
{
    return (double(b[1]) - c[1]) * a[0] + (double(c[1]) - a[1]) * b[0] +
           (double(a[1]) - b[1]) * c[0];
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
        const double own = GetOrientation(corners[i], corners[i + 1], p);
        const double opposite = GetOrientation(corners[i], corners[i + 1], corners[i + 2]);
        if ((own > 0 && opposite < 0) || (own < 0 && opposite > 0)) {
            return 0;
        }
    }
    return 1;
}

// The part of the outline that is not yet cut off. The three shrink in step.
struct Outline {
    std::vector<int> points; // indices into the shape's points
    std::vector<std::array<float, 3>> flat;
    std::vector<float> angles;
};

static Outline FlattenSide(Side* side)
{
    Outline outline;
    const auto number = std::size_t(side->pointnumber);
    const Block<float[][3]> flat = GetPlanePointsOfSide(side);
    outline.points.assign(side->points, side->points + number);
    outline.flat.resize(number);
    outline.angles.resize(number);
    for (std::size_t i = 0; i < number; i++) {
        std::copy_n(flat[i], 3, outline.flat[i].data());
    }
    return outline;
}

static std::size_t GetPrevious(const Outline& outline, std::size_t i)
{
    return i == 0 ? outline.points.size() - 1 : i - 1;
}

static std::size_t GetNext(const Outline& outline, std::size_t i)
{
    return i + 1 == outline.points.size() ? 0 : i + 1;
}

constexpr double fullturn = 2 * std::numbers::pi;

static void MeasureAngles(Outline& outline)
{
    for (std::size_t i = 0; i < outline.points.size(); i++) {
        const float* previous = outline.flat[GetPrevious(outline, i)].data();
        const float* own = outline.flat[i].data();
        const float* next = outline.flat[GetNext(outline, i)].data();
        const double alfa = GetAlfaOfThreePoints2d(own, previous, next);
        outline.angles[i] = float(GetOrientation(previous, own, next) > 0 ? alfa : fullturn - alfa);
    }
}

static void TurnAnglesInside(Outline& outline)
{
    float sum = 0;
    for (float angle : outline.angles) {
        sum += angle;
    }
    if (sum > double(outline.angles.size()) * fullturn - sum) {
        for (float& angle : outline.angles) {
            angle = float(fullturn - angle);
        }
    }
}

static bool IsEar(const Outline& outline, std::size_t ear)
{
    const std::size_t previous = GetPrevious(outline, ear);
    const std::size_t next = GetNext(outline, ear);
    for (std::size_t i = 0; i < outline.points.size(); i++) {
        if (i != previous && i != ear && i != next &&
            InTheTriangle2d(outline.flat[i].data(), outline.flat[previous].data(),
                            outline.flat[ear].data(), outline.flat[next].data()) != 0) {
            return false;
        }
    }
    return true;
}

static std::size_t FindSmallestEar(const Outline& outline)
{
    float smallest = 9.424778F; // more than any angle
    std::size_t ear = 0;
    for (std::size_t i = 0; i < outline.points.size(); i++) {
        // strictly smaller: the first of equal ears stays
        if (outline.angles[i] < smallest && IsEar(outline, i)) {
            smallest = outline.angles[i];
            ear = i;
        }
    }
    return ear;
}

static void WriteTriangle(Side* side, int first, int k, const Outline& outline, std::size_t middle)
{
    Triangle& triangle = side->shape->triangles[first + k];
    triangle.points[0] = outline.points[GetPrevious(outline, middle)];
    triangle.points[1] = outline.points[middle];
    triangle.points[2] = outline.points[GetNext(outline, middle)];
    triangle.shape = side->shape;
    side->triangles[k] = first + k;
}

static void ClipEar(Outline& outline, std::size_t ear)
{
    const std::size_t previous = GetPrevious(outline, ear);
    const std::size_t next = GetNext(outline, ear);
    const float* a = outline.flat[previous].data();
    const float* b = outline.flat[ear].data();
    const float* c = outline.flat[next].data();
    outline.angles[previous] = float(outline.angles[previous] - GetAlfaOfThreePoints2d(a, b, c));
    outline.angles[next] = float(outline.angles[next] - GetAlfaOfThreePoints2d(c, a, b));
    const auto offset = std::ptrdiff_t(ear);
    outline.points.erase(outline.points.begin() + offset);
    outline.flat.erase(outline.flat.begin() + offset);
    outline.angles.erase(outline.angles.begin() + offset);
}

void SetTrianglesOfSide(Side* side, int first)
{
    Outline outline = FlattenSide(side);
    MeasureAngles(outline);
    TurnAnglesInside(outline);
    const int last = side->trianglenumber - 1;
    for (int k = 0; k < last; k++) {
        const std::size_t ear = FindSmallestEar(outline);
        WriteTriangle(side, first, k, outline, ear);
        ClipEar(outline, ear);
    }
    WriteTriangle(side, first, last, outline, 1); // the three points that remain
}

} // namespace korvane
