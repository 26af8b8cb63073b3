#include "export/imagecells.h"

#include "export/imageorder.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

namespace korvane
{

// What lies beside the tile may be moved into it by a pass: it counts to the cells of the border.
static Range GetCells(const ImageTriangle& triangle, int axis, double start, double span)
{
    const Range range = GetRange(triangle, axis, {start, span / cellrow, cellrow}, 0);
    return {std::min(range.first, cellrow - 1), std::max(range.last, 0)};
}

static Reach GetReach(const ImageTriangle& triangle, int tile)
{
    const int column = tile % tilecolumns;
    const int row = tile / tilecolumns;
    const double left = tilespan * (column - tilecolumns / 2.0);
    const double top = tilespan * (tilerows / 2.0 - row);
    const Range columns = GetCells(triangle, 0, left, tilespan);
    const Range rows = GetCells(triangle, 1, top, -tilespan);
    using Byte = unsigned char;
    return {Byte(columns.first), Byte(columns.last), Byte(rows.first), Byte(rows.last)};
}

// OpenGL promises corners in 16 parts of a pixel at least: rounding moves them so far at most.
static constexpr double rounding = tilespan / tilesize / 32;

// Twice the area of a triangle on the screen, negative when it turns clockwise.
static double GetTurn(const float* a, const float* b, const float* c)
{
    return (double(b[0]) - a[0]) * (double(c[1]) - a[1]) -
           (double(b[1]) - a[1]) * (double(c[0]) - a[0]);
}

static double GetTaxicabDistance(const float* a, const float* b)
{
    return std::abs(double(b[0]) - a[0]) + std::abs(double(b[1]) - a[1]);
}

// Whether the triangle still turns that way when its corners have been rounded.
static bool TurnsSurely(const float* a, const float* b, const float* c, bool clockwise)
{
    const double turn = GetTurn(a, b, c);
    return (clockwise ? -turn : turn) >
           2 * rounding * (GetTaxicabDistance(a, b) + GetTaxicabDistance(a, c) + 4 * rounding);
}

// How far beyond the depths of its corners a triangle may be drawn. Where rounding lets it cover a
// pixel that it does not reach, its depth goes on with its slope: endlessly when it is a line.
static float GetDepthDoubt(const ImageTriangle& triangle)
{
    const auto& [a, b, c] = triangle.vertices;
    const double ab = double(b[2]) - a[2];
    const double ac = double(c[2]) - a[2];
    const double rise = std::abs(ab * (double(c[1]) - a[1]) - ac * (double(b[1]) - a[1])) +
                        std::abs(ac * (double(b[0]) - a[0]) - ab * (double(c[0]) - a[0]));
    return ab == 0 && ac == 0 ? 0 : float(2 * rounding * rise / std::abs(GetTurn(a, b, c)));
}

static TileTriangle GetTileTriangle(int index, int tile, const DrawnTriangles& drawn)
{
    const ImageTriangle& triangle = drawn.hszog[index];
    const auto& [a, b, c] = triangle.vertices;
    const auto [farthest, nearest] = std::minmax({a[2], b[2], c[2]});
    const float doubt = GetDepthDoubt(triangle);
    return {index,
            drawn.looks.oftriangle[std::size_t(index)],
            {{a[0], a[1]}, {b[0], b[1]}, {c[0], c[1]}},
            farthest - doubt,
            nearest + doubt,
            GetReach(triangle, tile)};
}

std::vector<TileTriangle> GetTileTriangles(const std::vector<int>& order, int tile,
                                           const DrawnTriangles& drawn)
{
    std::vector<TileTriangle> triangles;
    triangles.reserve(order.size());
    for (std::size_t i = 0; i < order.size(); i++) {
        PrefetchTriangle(drawn, order, i);
        triangles.push_back(GetTileTriangle(order[i], tile, drawn));
    }
    return triangles;
}

// Whether an edge lies between the triangle and all corners of the other but those that it has
// itself.
static bool HasEdgeBetween(const TileTriangle& triangle, const TileTriangle& other)
{
    const auto& corners = triangle.corners;
    const bool clockwise = GetTurn(corners[0], corners[1], corners[2]) < 0;
    for (std::size_t i = 0; i < 3; i++) {
        const float* p = corners[i];
        const float* q = corners[(i + 1) % 3];
        const float* opposite = corners[(i + 2) % 3];
        const auto liesbeyond = [&](const float(&corner)[2]) {
            return std::equal(corner, corner + 2, p) || std::equal(corner, corner + 2, q) ||
                   TurnsSurely(p, q, corner, !clockwise);
        };
        if (TurnsSurely(p, q, opposite, clockwise) &&
            std::all_of(std::begin(other.corners), std::end(other.corners), liesbeyond)) {
            return true;
        }
    }
    return false;
}

// Most of those that are apart are so along an axis, where rounding keeps their order.
static bool LiesBefore(const TileTriangle& triangle, const TileTriangle& other, int axis)
{
    const auto& [a, b, c] = triangle.corners;
    const auto& [d, e, f] = other.corners;
    return std::max({a[axis], b[axis], c[axis]}) <= std::min({d[axis], e[axis], f[axis]});
}

bool AreApart(const TileTriangle& a, const TileTriangle& b)
{
    return LiesBefore(a, b, 0) || LiesBefore(b, a, 0) || LiesBefore(a, b, 1) ||
           LiesBefore(b, a, 1) || HasEdgeBetween(a, b) || HasEdgeBetween(b, a);
}

} // namespace korvane
