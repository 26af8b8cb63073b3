#include "geometry/rotation.h"

#include "geometry/vectors.h"

#include <algorithm>
#include <cmath>

namespace korvane
{

// VectorRotate takes squares of lengths and components below this for zero.
static constexpr double turntolerance = 1e-6;

static bool HasNan(Vector v)
{
    return std::isnan(v[0]) || std::isnan(v[1]) || std::isnan(v[2]);
}

static bool IsZero(Vector v)
{
    return std::fabs(v[0]) < turntolerance && std::fabs(v[1]) < turntolerance &&
           std::fabs(v[2]) < turntolerance;
}

// The axis farthest from `a`, through which a half turn goes in two steps. x wins over nothing it
// ties with, and z wins over y.
static Vector GetAuxiliaryAxis(Vector a)
{
    const double sx = a[1] * a[1] + a[2] * a[2];
    const double sy = a[0] * a[0] + a[2] * a[2];
    const double sz = a[0] * a[0] + a[1] * a[1];
    if (sx > sy && sx > sz) {
        return {1, 0, 0};
    }
    return sy > sz ? Vector{0, 1, 0} : Vector{0, 0, 1};
}

// Rodrigues' rotation about the axis a x b.
static void TurnFrame(float frame[][3], const Vector& a, const Vector& b)
{
    const Vector across = GetCross(a, b);
    const double s = std::sqrt(GetSquare(across));
    const double c = GetDot(a, b);
    const Vector k = across / s;
    if (HasNan(k) || std::isnan(c) || std::isnan(s)) {
        return;
    }
    for (int i = 0; i < 3; i++) {
        const Vector v = ToVector(frame[i]);
        Store(GetCross(k, v) * s + k * (GetDot(k, v) * (1 - c)) + v * c, frame[i]);
    }
}

void VectorRotate(float frame[][3], const float from[3], const float to[3])
{
    const Vector a = ToVector(from); // copies: the caller's vectors may belong to the frame
    const Vector b = ToVector(to);
    const Vector across = GetCross(a, b);
    if (GetSquare(across) < turntolerance) {
        // Deliberate: directions this near to each other leave the frame as it is.
        if (GetSquare(a - b) < turntolerance || IsZero(a) || IsZero(b)) {
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
static void TurnByRightAngleAtMost(Vector frame[3], const Vector& a, const Vector& b)
{
    const Vector k = GetCross(a, b);
    const double c = GetDot(a, b);
    for (int i = 0; i < 3; i++) {
        const Vector v = frame[i];
        frame[i] = GetCross(k, v) + k * (GetDot(k, v) / (1 + c)) + v * c;
    }
}

// The direction square to the unit vector a in the plane of a and b; where they are opposite but
// for rounding, in that of a and the auxiliary axis.
static Vector GetSquareDirection(const Vector& a, const Vector& b)
{
    constexpr double roundingsquare = 1e-24;
    Vector square = b - a * GetDot(a, b);
    if (GetSquare(square) < roundingsquare) {
        const Vector h = GetAuxiliaryAxis(a);
        square = h - a * GetDot(a, h);
    }
    return square / std::sqrt(GetSquare(square));
}

// The turn that carries the direction a onto the direction b. False, and nothing is turned, when
// one of them is no direction.
static bool TurnExactly(Vector frame[3], Vector a, Vector b)
{
    a = a / std::sqrt(GetSquare(a));
    b = b / std::sqrt(GetSquare(b));
    if (HasNan(a) || HasNan(b)) {
        return false;
    }
    if (GetDot(a, b) >= 0) {
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
    const Vector a = ToVector(from);
    const Vector b = ToVector(to);
    Vector turned[3] = {ToVector(frame[0]), ToVector(frame[1]), ToVector(frame[2])};
    if (!TurnExactly(turned, a, b)) {
        return;
    }
    for (int i = 0; i < 3; i++) {
        const Vector v = ToVector(frame[i]);
        Store(v == a ? b : turned[i], frame[i]);
    }
}

void GetInverseRotation(const float rotation[9], double inverse[9])
{
    Vector work[3] = {ToVector(rotation), ToVector(rotation + 3), ToVector(rotation + 6)};
    Vector result[3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    const Vector first = work[0];
    TurnExactly(work, first, {1, 0, 0});
    TurnExactly(result, first, {1, 0, 0});
    // The second column is now square to the x axis but for rounding. Without that remainder the
    // second turn is one about the x axis, however near to a half turn it is.
    TurnExactly(result, {0, work[1][1], work[1][2]}, {0, 1, 0});
    for (int i = 0; i < 3; i++) {
        inverse[3 * i] = result[i][0];
        inverse[3 * i + 1] = result[i][1];
        inverse[3 * i + 2] = result[i][2];
    }
}

} // namespace korvane
