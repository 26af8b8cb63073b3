// What is drawn of a scene. No toolkit, no OpenGL.
#pragma once

#include "export/imagelooks.h"

#include <cstddef>
#include <vector>

namespace korvane
{

struct DrawnTriangles {
    const ImageTriangle* hszog; // borrowed
    Looks looks;                // of these triangles
    double halfdepth;           // before and behind the view's middle
};

// Fetches into the cache the triangle that comes `ahead` places after place i of an order: in the
// order in which they are drawn, triangles lie anywhere in memory.
inline void PrefetchTriangle(const DrawnTriangles& drawn, const std::vector<int>& order,
                             std::size_t i)
{
    constexpr std::size_t ahead = 8;
    if (i + ahead < order.size()) {
        __builtin_prefetch(drawn.hszog + order[i + ahead]);
    }
}

} // namespace korvane
