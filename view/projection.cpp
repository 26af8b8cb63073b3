#include "view/projection.h"

#include "view/mainview.h"

#include <algorithm>
#include <cmath>

namespace korvane
{

// Below this the squares and components of vectors count as zero in VectorRotate.
static constexpr double turntolerance = 1e-6;
static constexpr double eyedistance = 1.5; // of the full perspective, from the plane z = 0
static constexpr double eyemargin = 0.01;  // points that come as near to the eye are not projected

struct Vector {
    double x, y, z;
};

static Vector operator+(Vector a, Vector b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

static Vector operator-(Vector a, Vector b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

static Vector operator*(Vector a, double s)
{
    return {a.x * s, a.y * s, a.z * s};
}

static double Dot(Vector a, Vector b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

static Vector Cross(Vector a, Vector b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

static Vector Load(const float* v)
{
    return {double(v[0]), double(v[1]), double(v[2])};
}

static void Store(float* to, Vector v)
{
    to[0] = float(v.x);
    to[1] = float(v.y);
    to[2] = float(v.z);
}

static bool IsZero(Vector v)
{
    return std::fabs(v.x) < turntolerance && std::fabs(v.y) < turntolerance &&
           std::fabs(v.z) < turntolerance;
}

// The axis through which a half turn of `a` goes in two steps: the one farthest from it. On a tie
// of the farthest x loses to y and to z, and y loses to z.
static Vector GetAuxiliaryAxis(Vector a)
{
    const double sx = a.y * a.y + a.z * a.z;
    const double sy = a.x * a.x + a.z * a.z;
    const double sz = a.x * a.x + a.y * a.y;
    if (sx > sy && sx > sz) {
        return {1, 0, 0};
    }
    return sy > sz ? Vector{0, 1, 0} : Vector{0, 0, 1};
}

// Rodrigues' rotation about the axis a x b.
static void TurnFrame(float frame[][3], Vector a, Vector b)
{
    Vector k = Cross(a, b);
    const double s = std::sqrt(Dot(k, k));
    const double c = Dot(a, b);
    k = {k.x / s, k.y / s, k.z / s};
    if (std::isnan(k.x) || std::isnan(k.y) || std::isnan(k.z) || std::isnan(c) || std::isnan(s)) {
        return;
    }
    for (int i = 0; i < 3; i++) {
        const Vector v = Load(frame[i]);
        Store(frame[i], Cross(k, v) * s + k * (Dot(k, v) * (1 - c)) + v * c);
    }
}

void VectorRotate(float frame[][3], const float from[3], const float to[3])
{
    const Vector a = Load(from); // copies: the caller's vectors may belong to the frame
    const Vector b = Load(to);
    const Vector k = Cross(a, b);
    if (Dot(k, k) < turntolerance) { // Deliberate: nearly parallel vectors do not turn the frame
        if (Dot(a - b, a - b) < turntolerance || IsZero(a) || IsZero(b)) {
            return;
        }
        const Vector h = GetAuxiliaryAxis(a);
        TurnFrame(frame, a, h);
        TurnFrame(frame, h, b);
        return;
    }
    TurnFrame(frame, a, b);
}

static bool Normalise(Vector& v)
{
    const double length = std::sqrt(Dot(v, v));
    v = v * (1 / length);
    return length > 0 && std::isfinite(length);
}

// The turn that carries the unit vector a onto the unit vector b, at most a right angle away:
// Rodrigues' formula with k = a x b left as long as it is, so that nothing small is divided by.
static void TurnByRightAngleAtMost(Vector frame[3], Vector a, Vector b)
{
    const Vector k = Cross(a, b);
    const double c = Dot(a, b);
    for (int i = 0; i < 3; i++) {
        const Vector v = frame[i];
        frame[i] = Cross(k, v) + k * (Dot(k, v) / (1 + c)) + v * c;
    }
}

// The turn that carries the direction a onto the direction b. A turn by more than a right angle
// goes by way of the direction square to a in the plane of both; when they are opposite, in that of
// the axis.
static void TurnExactly(Vector frame[3], Vector a, Vector b)
{
    constexpr double opposite = 1e-24; // square of a sine that only rounding has left
    if (!Normalise(a) || !Normalise(b)) {
        return;
    }
    if (Dot(a, b) >= 0) {
        TurnByRightAngleAtMost(frame, a, b);
        return;
    }
    Vector middle = b - a * Dot(a, b);
    if (Dot(middle, middle) < opposite) {
        middle = GetAuxiliaryAxis(a);
        middle = middle - a * Dot(a, middle);
    }
    Normalise(middle);
    TurnByRightAngleAtMost(frame, a, middle);
    TurnByRightAngleAtMost(frame, middle, b);
}

void VectorRotateExact(float frame[][3], const float from[3], const float to[3])
{
    const Vector a = Load(from);
    const Vector b = Load(to);
    Vector turned[3] = {Load(frame[0]), Load(frame[1]), Load(frame[2])};
    bool isfrom[3];
    for (int i = 0; i < 3; i++) {
        isfrom[i] = std::equal(frame[i], frame[i] + 3, from);
    }
    TurnExactly(turned, a, b);
    for (int i = 0; i < 3; i++) {
        Store(frame[i], isfrom[i] ? b : turned[i]);
    }
}

// The columns of the inverse of the view's rotation: the turn that carries its columns onto the
// axes.
static void GetInverseRotation(const MainView* view, double inverse[9])
{
    Vector work[3] = {Load(view->rotation), Load(view->rotation + 3), Load(view->rotation + 6)};
    Vector result[3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    const Vector first = work[0];
    TurnExactly(work, first, {1, 0, 0});
    TurnExactly(result, first, {1, 0, 0});
    // The second column is now square to the x axis but for rounding. Without that remainder the
    // second turn is one about the x axis, however near to a half turn it is.
    TurnExactly(result, {0, work[1].y, work[1].z}, {0, 1, 0});
    for (int i = 0; i < 3; i++) {
        inverse[3 * i] = result[i].x;
        inverse[3 * i + 1] = result[i].y;
        inverse[3 * i + 2] = result[i].z;
    }
}

// A view's numbers as the arithmetic needs them.
struct ViewTransform {
    double center[3];
    double scale;
    double rotation[9];
    double eye; // the eye's distance from the plane z = 0; 0 without perspective
};

static double GetEyeDistance(int8_t level)
{
    return (level & fadefull) == 0 ? 0 : eyedistance / double(GetCosRate(level));
}

static ViewTransform GetViewTransform(const MainView* view)
{
    ViewTransform t;
    std::copy(view->center, view->center + 3, t.center);
    std::copy(view->rotation, view->rotation + 9, t.rotation);
    t.scale = double(view->scale);
    t.eye = GetEyeDistance(view->perspective);
    return t;
}

static Vector Turn(const double* rotation, double x, double y, double z)
{
    return {x * rotation[0] + y * rotation[3] + z * rotation[6],
            x * rotation[1] + y * rotation[4] + z * rotation[7],
            x * rotation[2] + y * rotation[5] + z * rotation[8]};
}

// The perspective of an eye's distance at the depth of a stored point; exactly 1 out of its range.
static double GetPointFactor(double eye, float depth)
{
    const double z = double(depth);
    const double limit = eye - eyemargin;
    return z > -limit && z < limit ? eye / (eye - z)
                                   : 1.0; // Deliberate: not clamped beyond the range
}

static void RotateAll(const double* rotation, const float from[][3], float to[][3], int32_t n)
{
    for (int32_t i = 0; i < n; i++) {
        Store(to[i], Turn(rotation, double(from[i][0]), double(from[i][1]), double(from[i][2])));
    }
}

void RotateInto(const MainView* view, const float from[][3], float to[][3], int32_t n)
{
    const ViewTransform t = GetViewTransform(view);
    RotateAll(t.rotation, from, to, n);
}

void Rotate(const MainView* view, float points[][3], int32_t n)
{
    RotateInto(view, points, points, n);
}

void ReRotate(const MainView* view, float points[][3], int32_t n)
{
    double inverse[9];
    GetInverseRotation(view, inverse);
    RotateAll(inverse, points, points, n);
}

void TransferPointsInto(const MainView* view, const float from[][3], float to[][3], int32_t n)
{
    const ViewTransform t = GetViewTransform(view);
    for (int32_t i = 0; i < n; i++) {
        Vector v = Turn(t.rotation, (double(from[i][0]) - t.center[0]) * t.scale,
                        (double(from[i][1]) - t.center[1]) * t.scale,
                        (double(from[i][2]) - t.center[2]) * t.scale);
        const float depth = float(v.z);
        const double factor = t.eye > 0 ? GetPointFactor(t.eye, depth) : 1.0;
        to[i][0] = float(v.x * factor);
        to[i][1] = float(v.y * factor);
        to[i][2] = depth;
    }
}

void TransferPoints(const MainView* view, float points[][3], int32_t n)
{
    TransferPointsInto(view, points, points, n);
}

void ReTransferPoints(const MainView* view, float points[][3], int32_t n)
{
    const ViewTransform t = GetViewTransform(view);
    double inverse[9];
    GetInverseRotation(view, inverse);
    for (int32_t i = 0; i < n; i++) {
        float* p = points[i];
        const double factor = t.eye > 0 ? GetPointFactor(t.eye, p[2]) : 1.0;
        const Vector v = Turn(inverse, double(p[0]) / factor, double(p[1]) / factor, double(p[2]));
        Store(p, {v.x / t.scale + t.center[0], v.y / t.scale + t.center[1],
                  v.z / t.scale + t.center[2]});
    }
}

void ApplyPerspective(float points[][3], int32_t n, int8_t level)
{
    const double eye = GetEyeDistance(level);
    if (eye == 0) {
        return;
    }
    for (int32_t i = 0; i < n; i++) {
        const double factor = GetPointFactor(eye, points[i][2]);
        points[i][0] = float(double(points[i][0]) * factor);
        points[i][1] = float(double(points[i][1]) * factor);
    }
}

double GetPerspectiveFactor(int8_t level, double depth)
{
    const double eye = GetEyeDistance(level);
    return eye == 0 ? 1.0 : eye / (eye - std::min(depth, eye - eyemargin));
}

} // namespace korvane
