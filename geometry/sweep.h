// Sweeping a side of a shape along a path into a body. Rings, copies of the side's outline, stand
// along the path (geometry/sweeprings.h); walls of four corners join each ring to the next.
//
//     ring above   hi[k-1] ---> hi[k]     A wall runs the ring below it backward and the ring
//                     |           |       above it forward, so that it meets the wall above, the
//     ring below   lo[k-1] <--- lo[k]     wall below and its two neighbours the other way round.
#pragma once

#include "geometry/sweeprings.h"

namespace korvane
{

struct Shape;

// Sweeps a side along `path`, which begins at its centre. A flat shape becomes a tube with a
// cap at either end, or, when `closed`, a ring, whose last path point is its first again. On a body
// the side is drawn out, or, when `closed`, bridged to the side `target`, which has as many corners
// and on whose centre the path ends. Writes points, outlines and triangles; stripes and normals are
// stale afterwards. Answers false, and the shape is as it was, when the path is too short or the
// sides are no such sides.
bool SweepSide(Shape* shape, int side, const Places& path, int target, bool closed);

} // namespace korvane
