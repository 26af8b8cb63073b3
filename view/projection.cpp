#include "view/projection.h"

#include "geometry/rotation.h"
#include "view/mainview.h"

#include <algorithm>

namespace korvane
{

static constexpr double fulleyedistance = 1.5; // from the plane z = 0, at the full perspective
static constexpr double eyemargin = 0.01;      // what comes as near to the eye is not projected

// Compiled also for wider vectors; the processor picks at the start. The results are the same to
// the bit.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__)
#define KORVANE_WIDE_VECTORS                                                                       \
    __attribute__((target_clones("arch=x86-64-v4", "arch=x86-64-v3", "default")))
#else
#define KORVANE_WIDE_VECTORS
#endif

// Moves by -center, scales, turns, and applies the perspective of an eye at a distance; 0 is none.
struct Transform {
    double center[3];
    double scale;
    double rotation[9];
    double eye;
};

static double GetEyeDistance(int8_t level)
{
    return (level & fadefull) == 0 ? 0 : fulleyedistance / double(GetCosRate(level));
}

static Transform GetTurn(const double rotation[9])
{
    Transform t = {{0, 0, 0}, 1, {}, 0}; // moving by 0 and scaling by 1 change no bit
    std::copy_n(rotation, 9, t.rotation);
    return t;
}

static Transform GetTurn(const MainView* view)
{
    double rotation[9];
    std::copy_n(view->rotation, 9, rotation);
    return GetTurn(rotation);
}

static Transform GetTransform(const MainView* view)
{
    Transform t = GetTurn(view);
    std::copy_n(view->center, 3, t.center);
    t.scale = double(view->scale);
    t.eye = GetEyeDistance(view->perspective);
    return t;
}

// What the perspective multiplies x and y with at a depth: exactly 1 for points too near to the eye
// or as far behind the screen. Deliberate: those are left as they are, not clamped.
static inline double GetPointFactor(double eye, float depth)
{
    const double z = double(depth);
    const double limit = eye - eyemargin;
    return eye / (eye - (z > -limit && z < limit ? z : 0.0));
}

// `from` and `to` may be the same array. Points go in blocks, coordinate by coordinate, because
// three plain arrays are what the compiler turns into vector arithmetic.
KORVANE_WIDE_VECTORS
static void TransformPoints(const Transform& transform, const float from[][3], float to[][3],
                            int32_t n)
{
    constexpr int32_t blocksize = 64;
    const Transform t = transform;
    const double* r = t.rotation;
    float x[blocksize], y[blocksize], z[blocksize];
    for (int32_t first = 0; first < n; first += blocksize) {
        const int32_t count = std::min(blocksize, n - first);
        for (int32_t i = 0; i < count; i++) {
            x[i] = from[first + i][0];
            y[i] = from[first + i][1];
            z[i] = from[first + i][2];
        }
        for (int32_t i = 0; i < count; i++) {
            const double a = (double(x[i]) - t.center[0]) * t.scale;
            const double b = (double(y[i]) - t.center[1]) * t.scale;
            const double c = (double(z[i]) - t.center[2]) * t.scale;
            x[i] = float(a * r[0] + b * r[3] + c * r[6]);
            y[i] = float(a * r[1] + b * r[4] + c * r[7]);
            z[i] = float(a * r[2] + b * r[5] + c * r[8]);
        }
        for (int32_t i = 0; t.eye > 0 && i < count; i++) {
            const double factor = GetPointFactor(t.eye, z[i]);
            x[i] = float(double(x[i]) * factor);
            y[i] = float(double(y[i]) * factor);
        }
        for (int32_t i = 0; i < count; i++) {
            to[first + i][0] = x[i];
            to[first + i][1] = y[i];
            to[first + i][2] = z[i];
        }
    }
}

void RotateInto(const MainView* view, const float from[][3], float to[][3], int32_t n)
{
    TransformPoints(GetTurn(view), from, to, n);
}

void Rotate(const MainView* view, float points[][3], int32_t n)
{
    RotateInto(view, points, points, n);
}

void ReRotate(const MainView* view, float points[][3], int32_t n)
{
    double inverse[9];
    GetInverseRotation(view->rotation, inverse);
    TransformPoints(GetTurn(inverse), points, points, n);
}

void TransferPointsInto(const MainView* view, const float from[][3], float to[][3], int32_t n)
{
    TransformPoints(GetTransform(view), from, to, n);
}

void TransferPoints(const MainView* view, float points[][3], int32_t n)
{
    TransferPointsInto(view, points, points, n);
}

void ReTransferPoints(const MainView* view, float points[][3], int32_t n)
{
    const Transform t = GetTransform(view);
    double r[9];
    GetInverseRotation(view->rotation, r);
    for (int32_t i = 0; i < n; i++) {
        float* p = points[i];
        const double factor = t.eye > 0 ? GetPointFactor(t.eye, p[2]) : 1;
        const double x = double(p[0]) / factor;
        const double y = double(p[1]) / factor;
        const double z = double(p[2]);
        for (int k = 0; k < 3; k++) {
            const double turned = x * r[k] + y * r[k + 3] + z * r[k + 6];
            p[k] = float(turned / t.scale + t.center[k]);
        }
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
    const double nearest = eye - eyemargin;
    return eye == 0 ? 1 : eye / (eye - std::min(nearest, depth)); // NaN counts as nearest
}

} // namespace korvane
