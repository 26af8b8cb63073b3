#include "geometry/shapegeometry.h"

#include "geometry/triangulation.h"
#include "geometry/vectors.h"
#include "scene/model.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvane
{

static Vector GetCrossOfTriangle(const Triangle& triangle)
{
    const float(*points)[3] = triangle.shape->points;
    return GetCross(points[triangle.points[0]], points[triangle.points[1]],
                    points[triangle.points[2]]);
}

void SetTriangleNormalsOfShape(Shape* shape)
{
    for (int i = 0; i < shape->trianglenumber; i++) {
        const Vector cross = GetCrossOfTriangle(shape->triangles[i]);
        if (!StoreUnit(cross, shape->trianglenormals[i])) {
            Store(cross, shape->trianglenormals[i]);
        }
    }
}

void SetCenterPointOfShape(Shape* shape)
{
    Vector sum = {0, 0, 0};
    for (int i = 0; i < shape->pointnumber; i++) {
        AddTo(sum, shape->points[i]);
    }
    const double number = std::max(1, shape->pointnumber);
    Store(sum / number, shape->center);
}

void SetRadiusOfShape(Shape* shape)
{
    double square = 0;
    for (int i = 0; i < shape->pointnumber; i++) {
        square = std::max(square, GetSquare(ToVector(shape->points[i]) - ToVector(shape->center)));
    }
    shape->radius = float(std::sqrt(square));
}

Block<float[]> GetNormal(const float* a, const float* b, const float* c)
{
    Block<float[]> normal(NewUnfilledArray<float>(3));
    StoreUnit(GetCross(a, b, c), normal.get());
    return normal;
}

Block<float[]> GetNormalOfTriangle(const Triangle* triangle)
{
    Block<float[]> normal(NewUnfilledArray<float>(3));
    const Vector cross = GetCrossOfTriangle(*triangle);
    if (!StoreUnit(cross, normal.get())) {
        Store(cross, normal.get());
    }
    return normal;
}

Block<Plane> GetPlaneOfTriangle(const Triangle* triangle)
{
    const float(*points)[3] = triangle->shape->points;
    float center[3];
    for (int i = 0; i < 3; i++) {
        const double sum = double(points[triangle->points[0]][i]) + points[triangle->points[1]][i] +
                           points[triangle->points[2]][i];
        center[i] = float(sum / 3);
    }
    Block<Plane> plane(NewUnfilledArray<Plane>(1));
    *plane = SolvePlane(center, GetNormalOfTriangle(triangle).get());
    return plane;
}

double GetDistanceOfTwoPoints(const float* a, const float* b)
{
    return std::sqrt(GetSquare(ToVector(a) - ToVector(b)));
}

double GetDistanceOfTwoPointsIn2d(const float* a, const float* b)
{
    const double x = double(a[0]) - b[0];
    const double y = double(a[1]) - b[1];
    return std::sqrt(x * x + y * y);
}

double GetAlfaOfTwoVectors(const float* a, const float* b)
{
    const double aa = GetSquare(ToVector(a));
    const double bb = GetSquare(ToVector(b));
    const double ab = GetSquare(ToVector(a) - ToVector(b));
    const float cosine = float((aa + bb - ab) / 2 / std::sqrt(aa * bb));
    if (CheckNan(cosine) != 0) {
        return 1.0; // Deliberate: a zero vector stands at one radian to every other.
    }
    return std::acos(double(std::clamp(cosine, -1.0F, 1.0F)));
}

// The distance from p to the edge between two points, given its distances from them. Where the foot
// of the perpendicular lies beyond the edge it is the distance to the nearer end.
static double GetDistanceFromEdge(double edge, double first, double second)
{
    if (second * second > edge * edge + first * first ||
        first * first > edge * edge + second * second) {
        return std::min(first, second);
    }
    const double s = (edge + first + second) / 2;
    const double product = s * (s - edge) * (s - first) * (s - second);
    return 2 * std::sqrt(std::max(product, 0.0)) / edge; // rounding can make it negative
}

static double GetDistanceFromBorder(const float* p, const float* a, const float* b, const float* c)
{
    const double pa = GetDistanceOfTwoPoints(p, a);
    const double pb = GetDistanceOfTwoPoints(p, b);
    const double pc = GetDistanceOfTwoPoints(p, c);
    if (pa > pb && pa > pc) {
        return GetDistanceFromEdge(GetDistanceOfTwoPoints(b, c), pb, pc);
    }
    if (pb > pa && pb > pc) {
        return GetDistanceFromEdge(GetDistanceOfTwoPoints(a, c), pa, pc);
    }
    return GetDistanceFromEdge(GetDistanceOfTwoPoints(a, b), pa, pb);
}

// The angle between the triangle's normal and the direction in which p lies. NaN when it lies
// nowhere: at the middle of a and b.
static double GetFacingAngle(const float* p, const float* a, const float* b, const float* normal)
{
    Vector away; // from g, the mean of p, a and b, to p
    for (std::size_t i = 0; i < 3; i++) {
        // Deliberate: the mean of p and two corners, not the triangle's centre.
        away[i] = p[i] - (double(p[i]) + a[i] + b[i]) / 3;
    }
    const double length = std::sqrt(GetSquare(away));
    if (length == 0) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    const double square = GetSquare(away - ToVector(normal));
    return std::acos(std::clamp((length * length + 1 - square) / 2 / length, -1.0, 1.0));
}

double GetDistancePointTriangle(const float* p, const Triangle* triangle)
{
    const float(*points)[3] = triangle->shape->points;
    const float* a = points[triangle->points[0]];
    const float* b = points[triangle->points[1]];
    const float* c = points[triangle->points[2]];
    const FlatPlane plane = PreparePlane(*GetPlaneOfTriangle(triangle));
    float flat[2], flata[2], flatb[2], flatc[2];
    LayFlat(plane, a, flata);
    LayFlat(plane, b, flatb);
    LayFlat(plane, c, flatc);
    double distance = LayFlat(plane, p, flat);
    if (InTheTriangle2d(flat, flata, flatb, flatc) == 0) {
        distance = GetDistanceFromBorder(p, a, b, c);
    }
    constexpr double facingweight = 1e-6; // decides only between equal distances
    return std::fabs(distance) + facingweight * GetFacingAngle(p, a, b, plane.plane.normal);
}

int CheckNan(float x)
{
    return x != x ? 1 : 0;
}

int IndexLoop(int i, int n)
{
    if (i < 0) {
        return i + n;
    }
    return i >= n ? i - n : i;
}

} // namespace korvane
