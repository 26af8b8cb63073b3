// Where the rings of a sweep stand. A ring is a copy of a side's outline, turned from across the
// start of a path to across the path at one of its points, and moved there. Nothing here knows of
// the shape that the rings become points of.
#pragma once

#include <array>
#include <vector>

namespace korvane
{

struct Side;

using Place = std::array<float, 3>; // a point or a direction in model coordinates
using Places = std::vector<Place>;

inline Place ToPlace(const float* p)
{
    return {p[0], p[1], p[2]};
}

struct Sweep {
    Places path;       // no point equals the one before it
    Places directions; // for each ring the unit direction of the path, zero where it has none
    Places profile;    // the outline, relative to the side's centre
    Place along;       // the unit normal of the profile on the side to which the path leaves
};

// The path without its still steps: points that equal the one before them.
Places DropStillSteps(const Places& path);

// The unit direction from one point to another; zero when they are the same.
Place GetDirection(const Place& from, const Place& to);

// The direction at every point: the chord from the point before to the point after, the first and
// the last step at the ends.
Places GetDirectionsOfPath(const Places& path);

// The same for a path whose last point is its first again: it has one direction fewer, all chords.
Places GetDirectionsOfLoop(const Places& path);

// The side's corners, in its own order, relative to its centre.
Places GetProfileOfSide(const Side* side);

// The points of ring i.
Places PlaceRing(const Sweep& sweep, int i);

// By how many positions the ring `target` is turned back to lie nearest to `ring`, which has as
// many points: corner j of the ring goes with corner j + shift of the target. The lowest of equally
// good shifts.
int FindShift(const Places& ring, const Places& target);

} // namespace korvane
