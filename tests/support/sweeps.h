// Sweeps that are asked for the invariants when they are done.
#pragma once

#include "tests/support/shapes.h"

namespace korvane::testing
{

// The way round a cube of half edge 1 from the centre of its top to that of its bottom.
extern const Points handle;

// Sweeps, derives what is stale and expects a sound and closed body. Answers what SweepSide does.
bool SweepSoundly(Shape* shape, int side, const Points& path, int target, bool closed);

inline bool SweepOpen(const OwnedShape& shape, int side, const Points& path)
{
    return SweepSoundly(shape.get(), side, path, 0, false);
}

inline bool SweepClosed(const OwnedShape& shape, int side, const Points& path, int target)
{
    return SweepSoundly(shape.get(), side, path, target, true);
}

// Expects that nothing is built of such a sweep and that the shape is left as it was.
void ExpectNothingBuilt(const OwnedShape& shape, int side, const Points& path, int target,
                        bool closed);

// The centre of a side.
Points::value_type CenterOf(const Shape& shape, int side);

} // namespace korvane::testing
