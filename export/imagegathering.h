// How the triangles of an image's tile are gathered into runs of one light state, because to set
// one costs more than to draw a triangle, and triangles that follow each other in depth seldom
// share it. No toolkit, no OpenGL.
#pragma once

#include "export/imagecells.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace korvane
{

// What one step can afford to gather, to compile or to draw, in small triangles.
constexpr int stepcost = 80000;

// A part of a tile that one step can afford to compile and to draw.
struct TilePart {
    std::vector<int> triangles; // indices into hszog, in drawing order
    bool nearestfirst;          // of two at one depth the later one is seen, else the earlier one
};

// Rearranges a sequence into long runs of one of so many looks, and adds it to the parts of a tile.
// Triangles that may share a pixel keep their order. Returns what that has cost: more for triangles
// that cover much of the tile.
std::int64_t GatherLooks(const std::vector<TileTriangle>& sequence, std::size_t looknumber,
                         bool nearestfirst, std::vector<TilePart>& parts);

} // namespace korvane
