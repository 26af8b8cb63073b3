#include "geometry/shapegeometry.h"

#include "geometry/edgetable.h"
#include "geometry/triangulation.h"
#include "scene/model.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace korvane
{

using Vector = std::array<double, 3>;

static Vector ToVector(const float* v)
{
    return {v[0], v[1], v[2]};
}

static Vector Subtract(const Vector& a, const Vector& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

static double GetSquare(const Vector& v)
{
    return v[0] * v[0] + v[1] * v[1] + v[2] * v[2];
}

// (b - a) x (c - a)
static Vector GetCross(const float* a, const float* b, const float* c)
{
    const double ax = a[0], ay = a[1], az = a[2];
    const double bx = b[0], by = b[1], bz = b[2];
    const double cx = c[0], cy = c[1], cz = c[2];
    return {ay * (bz - cz) + by * (cz - az) + cy * (az - bz),
            az * (bx - cx) + bz * (cx - ax) + cz * (ax - bx),
            ax * (by - cy) + bx * (cy - ay) + cx * (ay - by)};
}

static void Store(const Vector& v, float* target)
{
    for (std::size_t i = 0; i < 3; i++) {
        target[i] = float(v[i]);
    }
}

// Stores v divided by its length. Answers whether that is a number: a zero vector has no direction.
static bool StoreUnit(const Vector& v, float* target)
{
    const double length = std::sqrt(GetSquare(v));
    Store({v[0] / length, v[1] / length, v[2] / length}, target);
    return CheckNan(target[0]) + CheckNan(target[1]) + CheckNan(target[2]) == 0;
}

static Vector GetCrossOfTriangle(const Triangle& triangle)
{
    const float(*points)[3] = triangle.shape->points;
    return GetCross(points[triangle.points[0]], points[triangle.points[1]],
                    points[triangle.points[2]]);
}

static void SetUnitTriangleNormals(Shape* shape)
{
    for (int i = 0; i < shape->trianglenumber; i++) {
        // Deliberate: this fallback differs from that of SetTriangleNormalsOfShape.
        if (!StoreUnit(GetCrossOfTriangle(shape->triangles[i]), shape->trianglenormals[i])) {
            Store({1, 0, 0}, shape->trianglenormals[i]);
        }
    }
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

// How a point is shaded. The bits add up over the stripes through the point.
enum PointClass : unsigned char { POINT_VERTEX = 1, POINT_CREASE = 2, POINT_CORNER = 4 };

// All points of a one-sided shape are smooth.
static std::vector<unsigned char> ClassifyPoints(const Shape* shape)
{
    std::vector<unsigned char> classes(std::size_t(shape->pointnumber), 0);
    if (shape->sidenumber <= 1) {
        return classes;
    }
    for (int i = 0; i < shape->vertexnumber; i++) {
        classes[std::size_t(shape->vertexes[i])] = POINT_VERTEX;
    }
    for (int i = 0; i < shape->stripenumber; i++) {
        const Stripe& stripe = shape->stripes[i];
        const int last = stripe.pointnumber - 1;
        for (int k = 0; k <= last; k++) {
            unsigned char& own = classes[std::size_t(stripe.points[k])];
            if (own == 0) {
                continue;
            }
            const bool crease = k > 0 && k < last &&
                                classes[std::size_t(stripe.points[k - 1])] != 0 &&
                                classes[std::size_t(stripe.points[k + 1])] != 0;
            own = static_cast<unsigned char>(own | (crease ? POINT_CREASE : POINT_CORNER));
        }
    }
    return classes;
}

// Where the normals of a point stand.
struct PointNormals {
    int first; // index of its first normal
    int sum;   // index of its first sum; a corner has none
    int met;   // of a corner the triangle corners met so far; of a crease point 1 + the first side
               // met
};

// What SetShadingNormals works on.
struct Shading {
    std::vector<unsigned char> classes; // per point, bits of PointClass
    std::vector<PointNormals> points;
    std::vector<Vector>
        sums; // sums of triangle normals: one of a smooth point, two of a crease point
};

static Shading MakeShading(Shape* shape)
{
    Shading shading;
    shading.classes = ClassifyPoints(shape);
    shading.points.resize(std::size_t(shape->pointnumber));
    const std::vector<int> corners = CountCornersOfPoints(shape);
    int normalnumber = 0;
    int sumnumber = 0;
    for (std::size_t i = 0; i < shading.points.size(); i++) {
        const int pointclass = shading.classes[i];
        const int sums = pointclass == 0 ? 1 : (pointclass & POINT_CREASE) != 0 ? 2 : 0;
        shading.points[i] = {normalnumber, sumnumber, 0};
        normalnumber += sums != 0 ? sums : corners[i];
        sumnumber += sums;
    }
    shading.sums.assign(std::size_t(sumnumber), {0, 0, 0});
    shape->normalnumber = normalnumber;
    return shading;
}

// Counts a triangle in at one of its corners. Returns the index of the corner's normal.
static int AddCorner(Shape* shape, Shading& shading, int point, int side, const float* normal)
{
    const unsigned char pointclass = shading.classes[std::size_t(point)];
    PointNormals& own = shading.points[std::size_t(point)];
    int group = 0;
    if ((pointclass & POINT_CREASE) != 0) {
        own.met = own.met == 0 ? side + 1 : own.met;
        group = own.met == side + 1 ? 0 : 1;
    } else if (pointclass != 0) {
        const int index = own.first + own.met++;
        std::copy_n(normal, 3, shape->normals[index]);
        return index;
    }
    Vector& sum = shading.sums[std::size_t(own.sum + group)];
    for (std::size_t i = 0; i < 3; i++) {
        sum[i] += normal[i];
    }
    return own.first + group;
}

static void FinishNormals(Shape* shape, const Shading& shading)
{
    for (std::size_t i = 0; i < shading.points.size(); i++) {
        const PointNormals& own = shading.points[i];
        if (shading.classes[i] == 0) {
            if (!StoreUnit(shading.sums[std::size_t(own.sum)], shape->normals[own.first])) {
                // Deliberate: not a unit vector, unlike the fallback of a triangle.
                Store({1, 1, 1}, shape->normals[own.first]);
            }
        } else if ((shading.classes[i] & POINT_CREASE) != 0) {
            // Deliberate: no fallback here.
            StoreUnit(shading.sums[std::size_t(own.sum)], shape->normals[own.first]);
            StoreUnit(shading.sums[std::size_t(own.sum + 1)], shape->normals[own.first + 1]);
        }
    }
}

static void SetShadingNormals(Shape* shape)
{
    Shading shading = MakeShading(shape);
    shape->normals = NewUnfilledArray<float[3]>(shape->normalnumber);
    for (int s = 0; s < shape->sidenumber; s++) {
        const Side& side = shape->sides[s];
        for (int k = 0; k < side.trianglenumber; k++) {
            Triangle& triangle = shape->triangles[side.triangles[k]];
            const float* normal = shape->trianglenormals[side.triangles[k]];
            for (int c = 0; c < 3; c++) {
                triangle.normals[c] = AddCorner(shape, shading, triangle.points[c], s, normal);
            }
        }
    }
    FinishNormals(shape, shading);
}

void SetNormalsOfShape(Shape* shape)
{
    FreeArray(shape->trianglenormals);
    FreeArray(shape->edges);
    FreeArray(shape->normals);
    shape->trianglenormals = NewUnfilledArray<float[3]>(shape->trianglenumber);
    SetUnitTriangleNormals(shape);
    SetEdgesOfShape(shape);
    SetShadingNormals(shape);
}

void SetCenterPointOfShape(Shape* shape)
{
    Vector sum = {0, 0, 0};
    for (int i = 0; i < shape->pointnumber; i++) {
        for (std::size_t k = 0; k < 3; k++) {
            sum[k] += shape->points[i][k];
        }
    }
    const double number = std::max(1, shape->pointnumber);
    Store({sum[0] / number, sum[1] / number, sum[2] / number}, shape->center);
}

void SetRadiusOfShape(Shape* shape)
{
    double square = 0;
    for (int i = 0; i < shape->pointnumber; i++) {
        square = std::max(square,
                          GetSquare(Subtract(ToVector(shape->points[i]), ToVector(shape->center))));
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

Plane SolvePlane(const float* center, const float* normal)
{
    const Vector n = ToVector(normal);
    const double x = n[0] * n[0], y = n[1] * n[1], z = n[2] * n[2];
    int axis = 2;
    if (x > y && x > z) {
        axis = 0;
    } else if ((y > x && y > z) || z == 0) { // x and y may tie; z would divide by zero
        axis = 1;
    }
    const int f = (axis + 1) % 3;
    const int s = (axis + 2) % 3;
    Plane plane;
    plane.axis = axis;
    plane.a = float(-n[std::size_t(f)] / n[std::size_t(axis)]);
    plane.b = float(-n[std::size_t(s)] / n[std::size_t(axis)]);
    plane.c = float(center[axis] - double(plane.a) * center[f] - double(plane.b) * center[s]);
    std::copy_n(center, 3, plane.center);
    std::copy_n(normal, 3, plane.normal);
    return plane;
}

double LayFlat(const Plane& plane, const float* point, float* flat)
{
    const int r = plane.axis;
    const int f = (r + 1) % 3;
    const int s = (r + 2) % 3;
    const double nr = plane.normal[r], nf = plane.normal[f], ns = plane.normal[s];
    const double pr = point[r], pf = point[f], ps = point[s];
    const double t =
        (plane.a * pf + plane.b * ps - pr + plane.c) / (plane.a * nf + plane.b * ns - nr);
    const double dr = pr - t * nr - plane.center[r];
    const double df = pf - t * nf - plane.center[f];
    const double ds = ps - t * ns - plane.center[s];
    const double q = nf * nf + ns * ns;
    const double w = df * ns - ds * nf;
    flat[0] = float(df * nr - nf * dr + (ns - nr * ns) / q * w);
    flat[1] = float(ds * nr - ns * dr - (nf - nr * nf) / q * w);
    if (CheckNan(flat[0]) != 0 || CheckNan(flat[1]) != 0) { // the normal runs exactly along r
        flat[0] = float(df);
        flat[1] = float(ds);
    }
    return t;
}

double GetDistanceOfTwoPoints(const float* a, const float* b)
{
    return std::sqrt(GetSquare(Subtract(ToVector(a), ToVector(b))));
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
    const double ab = GetSquare(Subtract(ToVector(a), ToVector(b)));
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
    const double square = GetSquare(Subtract(away, ToVector(normal)));
    return std::acos(std::clamp((length * length + 1 - square) / 2 / length, -1.0, 1.0));
}

double GetDistancePointTriangle(const float* p, const Triangle* triangle)
{
    const float(*points)[3] = triangle->shape->points;
    const float* a = points[triangle->points[0]];
    const float* b = points[triangle->points[1]];
    const float* c = points[triangle->points[2]];
    const Block<Plane> plane = GetPlaneOfTriangle(triangle);
    float flat[2], flata[2], flatb[2], flatc[2];
    LayFlat(*plane, a, flata);
    LayFlat(*plane, b, flatb);
    LayFlat(*plane, c, flatc);
    double distance = LayFlat(*plane, p, flat);
    if (InTheTriangle2d(flat, flata, flatb, flatc) == 0) {
        distance = GetDistanceFromBorder(p, a, b, c);
    }
    constexpr double facingweight = 1e-6; // decides only between equal distances
    return std::fabs(distance) + facingweight * GetFacingAngle(p, a, b, plane->normal);
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
