#include "tests/support/edits.h"

#include "geometry/normals.h"
#include "tests/support/chains.h"
#include "tests/support/invariants.h"

#include <algorithm>
#include <set>

namespace korvane::testing
{

std::vector<int> GetMarks(const Shape& shape)
{
    return {shape.vertexes, shape.vertexes + shape.vertexnumber};
}

// With the sides in the opposite order, each from another corner on.
static OwnedShape RotateSides(const Shape& shape)
{
    Points points;
    for (int i = 0; i < shape.pointnumber; i++) {
        points.push_back({shape.points[i][0], shape.points[i][1], shape.points[i][2]});
    }
    Outlines sides = OutlinesOf(shape);
    std::reverse(sides.begin(), sides.end());
    for (std::vector<int>& side : sides) {
        std::rotate(side.begin(), side.begin() + 2, side.end());
    }
    return MakeShape(points, sides);
}

static void AddVariants(std::vector<OwnedShape>& bodies, OwnedShape body)
{
    const int number = body->pointnumber;
    const Placing placings[] = {{1, false, 0, number}, {0, true, 0, number}, {2, false, 2, number}};
    for (const Placing& placing : placings) {
        bodies.push_back(PlaceShape(*body, placing));
    }
    bodies.push_back(RotateSides(*body));
    bodies.push_back(std::move(body));
}

OwnedShape PrismWithSlit()
{
    return MakeShape({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}},
                     {{0, 2, 1}, {3, 4, 5}, {0, 1, 2, 5, 4, 3, 5, 2}});
}

OwnedShape HouseWithSlit()
{
    return MakeShape(
        {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {0.3F, 0.3F, 2}},
        {{0, 2, 1}, {0, 1, 2, 5, 4, 3, 5, 2}, {3, 4, 6}, {4, 5, 6}, {5, 3, 6}});
}

OwnedShape PrismWithoutEdge()
{
    return MakeShape({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}},
                     {{0, 2, 1}, {3, 4, 5}, {0, 1, 4, 3, 5, 2}, {1, 2, 5, 4}});
}

OwnedShape Melon()
{
    return MakeShape({{0, 0, 1}, {0, 0, -1}, {1, 0, 0}, {-1, 1, 0}, {-1, -1, 0}},
                     {{0, 2, 1, 3}, {0, 3, 1, 4}, {0, 4, 1, 2}});
}

OwnedShape SquareWithHole()
{
    return MakeShape({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {1, 1, 0}, {1, 2, 0}, {2, 1, 0}},
                     {{0, 1, 2, 3, 0, 4, 5, 6, 4}});
}

std::vector<OwnedShape> GetBodies()
{
    std::vector<OwnedShape> bodies;
    for (const auto& make : {Tetrahedron, Cube, TrianglePrism, Pyramid, PrismWithSlit, RaisedSquare,
                             PlateWithHole, Ring, BridgedCube}) {
        AddVariants(bodies, make());
    }
    return bodies;
}

static std::string FindBrokenRuleOfWalk(const std::vector<int>& outline)
{
    const std::size_t n = outline.size();
    for (std::size_t i = 0; i < n; i++) {
        if (outline[i] == outline[(i + 1) % n]) {
            return "no two neighbouring corners of a side are one point";
        }
        if (outline[i] == outline[(i + 2) % n]) {
            return "no corner of a side stands between two that are one point";
        }
    }
    return "";
}

static bool IsEveryPointUsed(const Shape& shape)
{
    std::set<int> used;
    for (const std::vector<int>& outline : OutlinesOf(shape)) {
        used.insert(outline.begin(), outline.end());
    }
    return int(used.size()) == shape.pointnumber;
}

std::string FindBrokenRuleAfterEdit(Shape* shape)
{
    SetNormalsOfShape(shape);
    std::string broken = FindBrokenRuleOfShape(*shape);
    for (const std::vector<int>& outline : OutlinesOf(*shape)) {
        if (broken.empty()) {
            broken = FindBrokenRuleOfWalk(outline);
        }
    }
    if (broken.empty() && !IsEveryPointUsed(*shape)) {
        broken = "every point is a corner of a side";
    }
    return broken;
}

std::string FindBrokenRuleOfEditedBody(Shape* shape)
{
    const std::string broken = FindBrokenRuleAfterEdit(shape);
    return broken.empty() ? FindBrokenRuleOfClosedBody(*shape) : broken;
}

} // namespace korvane::testing
