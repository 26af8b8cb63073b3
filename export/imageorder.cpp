#include "export/imageorder.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace korvane
{

Range GetRange(const ImageTriangle& triangle, int axis, const Places& places, double margin)
{
    double low = places.number;
    double high = -1;
    for (const float* corner : triangle.vertices) {
        const double place = (double(corner[axis]) - places.start) * (1 / places.span);
        low = std::min(low, place - margin);
        high = std::max(high, place + margin);
    }
    return {low < 0 ? 0 : int(low), high < 0 ? -1 : int(std::min(high, places.number - 1.0))};
}

static unsigned int GetTileSet(const ImageTriangle& triangle)
{
    // The passes move the image by less than a pixel; another one is for the rounding on its way.
    constexpr double margin = 2.0 / tilesize;
    constexpr Places across = {-tilespan * tilecolumns / 2, tilespan, tilecolumns};
    constexpr Places down = {tilespan * tilerows / 2, -tilespan, tilerows};
    const Range columns = GetRange(triangle, 0, across, margin);
    const Range rows = GetRange(triangle, 1, down, margin);
    unsigned int set = 0;
    for (int row = rows.first; row <= rows.last; row++) {
        for (int column = columns.first; column <= columns.last; column++) {
            set |= 1U << (row * tilecolumns + column);
        }
    }
    return set;
}

std::vector<unsigned int> GetTileSets(const ImageTriangle* hszog, int number)
{
    std::vector<unsigned int> sets;
    sets.reserve(std::size_t(number));
    for (int i = 0; i < number; i++) {
        sets.push_back(GetTileSet(hszog[i]));
    }
    return sets;
}

TileOrders GetTileOrders(const std::vector<unsigned int>& tilesets, const int* zindex)
{
    TileOrders orders;
    for (std::size_t i = 0; i < tilesets.size(); i++) {
        unsigned int rest = tilesets[std::size_t(zindex[i])];
        for (; rest != 0; rest &= rest - 1) { // takes the lowest bit away
            orders[std::size_t(std::countr_zero(rest))].push_back(zindex[i]);
        }
    }
    return orders;
}

// Deliberate: no deeper than it has to be. A depth buffer of 24 bits that is as deep as the
// greatest tells surfaces apart only when they lie more than two pixels from each other.
double GetHalfDepth(const std::vector<unsigned int>& tilesets, const ImageTriangle* hszog)
{
    constexpr double least = 2; // as deep as the view is drawn
    constexpr double greatest = 20000;
    double depth = least;
    for (std::size_t i = 0; i < tilesets.size(); i++) {
        for (const float* corner : hszog[i].vertices) {
            depth = tilesets[i] == 0 ? depth : std::max(depth, std::abs(double(corner[2])));
        }
    }
    return std::min(1.01 * depth, greatest);
}

} // namespace korvane
