#include "geometry/directions.h"

#include "geometry/rotation.h"

#include <cmath>

namespace korvane
{

static constexpr double opposite = 1e-6; // square of the distance to the opposite direction

void Normalise(float* v)
{
    const double x = double(v[0]);
    const double y = double(v[1]);
    const double z = double(v[2]);
    const double length = std::hypot(x, y, z);
    if (!(length > 0) || !std::isfinite(length)) {
        return;
    }
    v[0] = float(x / length);
    v[1] = float(y / length);
    v[2] = float(z / length);
}

static bool AreOpposite(const Direction& a, const Direction& b)
{
    const double x = double(a[0]) + double(b[0]);
    const double y = double(a[1]) + double(b[1]);
    const double z = double(a[2]) + double(b[2]);
    return x * x + y * y + z * z <= opposite;
}

static Direction GetHalfway(const Direction& a, const Direction& b)
{
    Direction middle;
    for (std::size_t i = 0; i < 3; i++) {
        middle[i] = float(double(a[i]) + double(b[i]));
    }
    Normalise(middle.data());
    return middle;
}

Arc SampleArc(const Direction& from, const Direction& to, const Direction& detour)
{
    Arc arc;
    arc.front() = from;
    arc.back() = to;
    for (std::size_t step = arcend / 2; step > 0; step /= 2) {
        for (std::size_t i = step; i < arcend; i += 2 * step) {
            const Direction& before = arc[i - step];
            const Direction& after = arc[i + step];
            arc[i] = AreOpposite(before, after) ? detour : GetHalfway(before, after);
        }
    }
    return arc;
}

// The turn passes through the middle sample: the ends of half a turn alone would not tell its axis.
void TurnAlong(float columns[][3], const Arc& arc, int first, int last)
{
    constexpr int middle = arcend / 2;
    if ((first < middle && middle < last) || (last < middle && middle < first)) {
        TurnAlong(columns, arc, first, middle);
        TurnAlong(columns, arc, middle, last);
        return;
    }
    VectorRotateExact(columns, arc[std::size_t(first)].data(), arc[std::size_t(last)].data());
}

} // namespace korvane
