// Unit vectors, and the ways from one to another along the great circle through both.
#pragma once

#include <array>

namespace korvane
{

using Direction = std::array<float, 3>;

// A way, cut into equal pieces by its samples.
constexpr int arcend = 256; // index of the last sample
using Arc = std::array<Direction, arcend + 1>;

// Makes the vector one unit long; one that has no direction stays as it is.
void Normalise(float* v);

// Samples the shorter way between two directions. Between opposite ones every way is as short: it
// goes through `detour`.
Arc SampleArc(const Direction& from, const Direction& to, const Direction& detour);

// Turns the three columns as the arc goes from one of its samples to another.
void TurnAlong(float columns[][3], const Arc& arc, int first, int last);

} // namespace korvane
