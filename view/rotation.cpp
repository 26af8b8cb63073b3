#include "view/rotation.h"

#include <algorithm>
#include <cmath>

namespace korvane
{

// VectorRotate takes squares of lengths and components below this for zero.
static constexpr double turntolerance = 1e-6;

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

static Vector operator/(Vector a, double s)
{
    return {a.x / s, a.y / s, a.z / s};
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

static bool HasNan(Vector v)
{
    return std::isnan(v.x) || std::isnan(v.y) || std::isnan(v.z);
}

static bool IsZero(Vector v)
{
    return std::fabs(v.x) < turntolerance && std::fabs(v.y) < turntolerance &&
           std::fabs(v.z) < turntolerance;
}

// The axis farthest from `a`, through which a half turn goes in two steps. x wins over nothing it
// ties with, and z wins over y.
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
    const Vector across = Cross(a, b);
    const double s = std::sqrt(Dot(across, across));
    const double c = Dot(a, b);
    const Vector k = across / s;
    if (HasNan(k) || std::isnan(c) || std::isnan(s)) {
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
    const Vector across = Cross(a, b);
    if (Dot(across, across) < turntolerance) {
        // Deliberate: directions this near to each other leave the frame as it is.
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

// The direction square to the unit vector a in the plane of a and b; where they are opposite but
// for rounding, in that of a and the auxiliary axis.
static Vector GetSquareDirection(Vector a, Vector b)
{
    constexpr double roundingsquare = 1e-24;
    Vector square = b - a * Dot(a, b);
    if (Dot(square, square) < roundingsquare) {
        const Vector h = GetAuxiliaryAxis(a);
        square = h - a * Dot(a, h);
    }
    return square / std::sqrt(Dot(square, square));
}

// The turn that carries the direction a onto the direction b. False, and nothing is turned, when
// one of them is no direction.
static bool TurnExactly(Vector frame[3], Vector a, Vector b)
{
    a = a / std::sqrt(Dot(a, a));
    b = b / std::sqrt(Dot(b, b));
    if (HasNan(a) || HasNan(b)) {
        return false;
    }
    if (Dot(a, b) >= 0) {
        TurnByRightAngleAtMost(frame, a, b);
        return true;
    }
    const Vector halfway = GetSquareDirection(a, b);
    TurnByRightAngleAtMost(frame, a, halfway);
    TurnByRightAngleAtMost(frame, halfway, b);
    return true;
}

void VectorRotateExact(float frame[][3], const float from[3], const float to[3])
{
    const Vector a = Load(from);
    const Vector b = Load(to);
    Vector turned[3] = {Load(frame[0]), Load(frame[1]), Load(frame[2])};
    if (!TurnExactly(turned, a, b)) {
        return;
    }
    for (int i = 0; i < 3; i++) {
        const Vector v = Load(frame[i]);
        const bool isfrom = v.x == a.x && v.y == a.y && v.z == a.z;
        Store(frame[i], isfrom ? b : turned[i]);
    }
}

void GetInverseRotation(const float rotation[9], double inverse[9])
{
    Vector work[3] = {Load(rotation), Load(rotation + 3), Load(rotation + 6)};
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

} // namespace korvane
