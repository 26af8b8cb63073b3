// Which triangles of an image's tile can be drawn nearest first, so that what they hide need not be
// shaded. No toolkit, no OpenGL.
#pragma once

#include "export/imagecells.h"

#include <vector>

namespace korvane
{

struct SplitTriangles {
    std::vector<TileTriangle> opaque; // nearest first; of two at one depth the later one is seen
    std::vector<TileTriangle> rest;   // farthest first; of two at one depth the earlier one is seen
};

// Splits the order of a tile, which is drawn farthest first. When the opaque ones are drawn before
// the rest, the pixels are the same: the nearest opaque one wins as before, what is left from
// before it lies behind it, and what comes after it meets the same colour and depth.
SplitTriangles SplitOrder(const std::vector<int>& order, int tile, const DrawnTriangles& drawn);

} // namespace korvane
