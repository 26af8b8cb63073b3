#include "export/imagecells.h"

#include "export/imageorder.h"

#include <algorithm>

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

static TileTriangle GetTileTriangle(int index, int tile, const DrawnTriangles& drawn)
{
    const ImageTriangle& triangle = drawn.hszog[index];
    const auto& [a, b, c] = triangle.vertices;
    const auto [back, front] = std::minmax({a[2], b[2], c[2]});
    return {index,
            drawn.looks.oftriangle[std::size_t(index)],
            {{a[0], a[1]}, {b[0], b[1]}, {c[0], c[1]}},
            back,
            front,
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

// Twice the area of a triangle on the screen, negative when it turns clockwise. Coordinates of like
// size have differences and products without rounding, so that the sign is right.
static double GetTurn(const float* a, const float* b, const float* c)
{
    return (double(b[0]) - a[0]) * (double(c[1]) - a[1]) -
           (double(b[1]) - a[1]) * (double(c[0]) - a[0]);
}

static bool LiesBeyondAnEdge(const TileTriangle& triangle, const TileTriangle& other)
{
    const auto& corners = triangle.corners;
    const double area = GetTurn(corners[0], corners[1], corners[2]);
    for (int i = 0; i < 3; i++) {
        const auto lieswithin = [&](const float(&corner)[2]) {
            return area * GetTurn(corners[i], corners[(i + 1) % 3], corner) > 0;
        };
        if (std::none_of(std::begin(other.corners), std::end(other.corners), lieswithin)) {
            return true;
        }
    }
    return false;
}

// Most of those that are apart are so along an axis, which is soon found out.
static bool LiesBefore(const TileTriangle& triangle, const TileTriangle& other, int axis)
{
    const auto& [a, b, c] = triangle.corners;
    const auto& [d, e, f] = other.corners;
    return std::max({a[axis], b[axis], c[axis]}) <= std::min({d[axis], e[axis], f[axis]});
}

bool AreApart(const TileTriangle& a, const TileTriangle& b)
{
    return LiesBefore(a, b, 0) || LiesBefore(b, a, 0) || LiesBefore(a, b, 1) ||
           LiesBefore(b, a, 1) || LiesBeyondAnEdge(a, b) || LiesBeyondAnEdge(b, a);
}

} // namespace korvane
