// Triangles of an image, made by hand.
#pragma once

#include "export/drawntriangles.h"
#include "export/imageorder.h"

#include <numeric>
#include <vector>

namespace korvane::testing
{

constexpr double pixel = tilespan / tilesize; // in view units

// With the right angle at its lower left corner, facing the viewer. Opaque; the look is told by a
// component of its colour.
inline ImageTriangle MakeTriangle(double left, double bottom, double right, double top,
                                  float look = 0)
{
    ImageTriangle triangle = {};
    const double corners[3][2] = {{left, bottom}, {right, bottom}, {left, top}};
    for (int i = 0; i < 3; i++) {
        triangle.vertices[i][0] = float(corners[i][0]);
        triangle.vertices[i][1] = float(corners[i][1]);
    }
    triangle.front = 1;
    float* colors = triangle.colors;
    colors[FRONT_LIGHT] = look;
    colors[FRONT_LIGHT + 3] = colors[FRONT_SHADOW + 3] = colors[FRONT_ACUITY] = 1;
    return triangle;
}

// Four pixels wide and high, at a place of the first tile, in pixels from its upper left corner.
inline ImageTriangle SmallTriangle(double x, double y, float look, float depth = 0)
{
    const double left = -0.625 + x * pixel;
    const double top = 0.5 - y * pixel;
    ImageTriangle triangle = MakeTriangle(left, top - 4 * pixel, left + 4 * pixel, top, look);
    for (float* corner : triangle.vertices) {
        corner[2] = depth;
    }
    return triangle;
}

inline ImageTriangle Clear(ImageTriangle triangle)
{
    triangle.colors[FRONT_LIGHT + 3] = 0.5F;
    return triangle;
}

// Of those that are made here.
inline bool Covers(const ImageTriangle& triangle, double x, double y)
{
    const float(*corners)[3] = triangle.vertices;
    const double right = (x - corners[0][0]) / (double(corners[1][0]) - corners[0][0]);
    const double up = (y - corners[0][1]) / (double(corners[2][1]) - corners[0][1]);
    return right > 0 && up > 0 && right + up < 1;
}

inline DrawnTriangles DrawnOf(const std::vector<ImageTriangle>& triangles)
{
    return {triangles.data(), GetLooks(triangles.data(), int(triangles.size())), 2};
}

// 0, 1, 2, ...: the order in which the triangles stand.
inline std::vector<int> OrderOf(const std::vector<ImageTriangle>& triangles)
{
    std::vector<int> order(triangles.size());
    std::iota(order.begin(), order.end(), 0);
    return order;
}

} // namespace korvane::testing
