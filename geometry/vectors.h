// Vector arithmetic: float triples come in and go out, doubles between them.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>

namespace korvane
{

using Vector = std::array<double, 3>;

inline Vector ToVector(const float* v)
{
    return {v[0], v[1], v[2]};
}

inline Vector operator+(const Vector& a, const Vector& b)
{
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}

inline Vector operator-(const Vector& a, const Vector& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

inline Vector operator*(const Vector& v, double factor)
{
    return {v[0] * factor, v[1] * factor, v[2] * factor};
}

inline Vector operator/(const Vector& v, double divisor)
{
    return {v[0] / divisor, v[1] / divisor, v[2] / divisor};
}

inline double GetDot(const Vector& a, const Vector& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline Vector GetCross(const Vector& a, const Vector& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

inline double GetSquare(const Vector& v)
{
    return GetDot(v, v);
}

// Adds a float triple to a sum.
inline void AddTo(Vector& sum, const float* v)
{
    sum[0] += v[0];
    sum[1] += v[1];
    sum[2] += v[2];
}

// (b - a) x (c - a)
inline Vector GetCross(const float* a, const float* b, const float* c)
{
    const double ax = a[0], ay = a[1], az = a[2];
    const double bx = b[0], by = b[1], bz = b[2];
    const double cx = c[0], cy = c[1], cz = c[2];
    return {ay * (bz - cz) + by * (cz - az) + cy * (az - bz),
            az * (bx - cx) + bz * (cx - ax) + cz * (ax - bx),
            ax * (by - cy) + bx * (cy - ay) + cx * (ay - by)};
}

inline void Store(const Vector& v, float* target)
{
    target[0] = float(v[0]);
    target[1] = float(v[1]);
    target[2] = float(v[2]);
}

// Stores v divided by its length. Answers whether that gave numbers: a zero vector has no
// direction.
inline bool StoreUnit(const Vector& v, float* target)
{
    const double length = std::sqrt(GetSquare(v));
    Store(v / length, target);
    return !std::isnan(target[0]) && !std::isnan(target[1]) && !std::isnan(target[2]);
}

} // namespace korvane
