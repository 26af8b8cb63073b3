// What the tests of the transforms share: the scene's shapes before and after a change, and the
// maps that a change stands for.
#pragma once

#include "tests/support/camera.h"

#include <functional>

namespace korvane::testing
{

// What a transform makes of an offset from its pivot.
using Map = std::function<Vector(const Vector&)>;

using PlainMap = Vector (*)(const Vector&);
extern const PlainMap turns[3];     // a quarter turn about each axis
extern const PlainMap doublings[4]; // a doubling along all axes and along each

constexpr Vector boxcenter = {0.2, 0.15, 0.05};
constexpr Vector origin = {0, 0, 0};

// World x goes up on the screen and world y to the left.
constexpr Columns quarterturn = {{{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}};

constexpr double rigid = 2e-6; // what turns and moves in place leave of rounding
constexpr double rebuilt = 0;  // what is derived anew is so to the bit

OwnedShape MakeBox(); // a cube of half edge 0.1 about boxcenter

void ExpectPoint(const float* actual, const Vector& expected);

// Every point is where the map takes its offset from a pivot.
void ExpectMapped(const Points& before, const Shape& shape, const Vector& pivot, const Map& map);

void ExpectNear(const float (*a)[3], const float (*b)[3], int n, double tolerance);

// Normals, bounds and the rounded version are what the points give, within a tolerance.
void ExpectDerived(int shape, double tolerance);

// The view copies are those of the present points.
void ExpectProjected(int shape);

// Begins as StartViewTest does; the scene is sound and without a selection at the end.
class Transforms : public StartViewTest
{
protected:
    void TearDown() override;

    static Points Remember(int shape);
};

} // namespace korvane::testing
