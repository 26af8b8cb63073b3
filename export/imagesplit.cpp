#include "export/imagesplit.h"

#include <algorithm>
#include <limits>

namespace korvane
{

// What has been left in a cell for later.
class Backdrop
{
public:
    // Whether an opaque triangle hides it wherever they overlap.
    bool IsHiddenBy(const TileTriangle& triangle, float margin) const
    {
        const float limit = triangle.farthest - margin;
        const std::size_t known = std::min(number, remembered);
        return nearest < limit && std::all_of(latest, latest + known, [&](const auto* other) {
                   return other->nearest < limit || AreApart(*other, triangle);
               });
    }

    // The triangle has to outlive the backdrop.
    void Add(const TileTriangle& triangle)
    {
        const TileTriangle*& place = latest[number % remembered];
        if (number >= remembered) {
            nearest = std::max(nearest, place->nearest);
        }
        place = &triangle;
        number++;
    }

private:
    static constexpr std::size_t remembered = 8;

    const TileTriangle* latest[remembered] = {};
    std::size_t number = 0;                                  // how many have been added
    float nearest = -std::numeric_limits<float>::infinity(); // of those that are not remembered
};

// An opaque triangle can be drawn before those that it hides. Where it does not surely hide what
// was left for later, it is left itself.
SplitTriangles SplitOrder(const std::vector<int>& order, int tile, const DrawnTriangles& drawn)
{
    const auto margin = float(drawn.halfdepth * 1e-5); // many steps of the depth buffer
    const std::vector<TileTriangle> triangles = GetTileTriangles(order, tile, drawn);
    std::vector<Backdrop> backdrops(cellnumber);
    SplitTriangles split;
    for (const TileTriangle& triangle : triangles) {
        bool first = IsOpaque(drawn.looks.states[std::size_t(triangle.look)]);
        ForCells(backdrops, triangle.reach, [&](const Backdrop& backdrop) {
            first = first && backdrop.IsHiddenBy(triangle, margin);
        });
        if (first) {
            split.opaque.push_back(triangle);
        } else {
            split.rest.push_back(triangle);
            ForCells(backdrops, triangle.reach,
                     [&](Backdrop& backdrop) { backdrop.Add(triangle); });
        }
    }
    std::reverse(split.opaque.begin(), split.opaque.end());
    return split;
}

} // namespace korvane
