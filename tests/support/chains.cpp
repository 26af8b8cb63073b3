#include "tests/support/chains.h"

#include "geometry/shapegeometry.h"
#include "geometry/sideplane.h"
#include "geometry/surgery.h"
#include "geometry/vectors.h"
#include "tests/support/invariants.h"

#include <algorithm>
#include <set>
#include <utility>

namespace korvane::testing
{

TestChain::TestChain(const Shape& shape, int first, const Points& inner, int last)
    : start(first), end(last), points(inner)
{
    const Points places = PointsOf(shape);
    points.insert(points.begin(), places[std::size_t(start)]);
    points.push_back(places[std::size_t(end)]);
}

Chain TestChain::Get() const
{
    const auto* places = reinterpret_cast<const float(*)[3]>(points.data());
    return {start, end, places, int(points.size())};
}

TestChain ArchOver(const Shape& shape, int start, int innernumber, float height, int end)
{
    Points inner;
    for (int i = 1; i <= innernumber; i++) {
        const float along = 0.2F * (float(i) / float(innernumber + 1) - 0.5F);
        std::array<float, 3> place = {shape.center[0], shape.center[1], height};
        for (std::size_t k = 0; k < 2; k++) {
            place[k] += along * (shape.points[end][k] - shape.points[start][k]);
        }
        inner.push_back(place);
    }
    return TestChain(shape, start, inner, end);
}

static int GetRandomIndex(int number, std::mt19937& random)
{
    return std::uniform_int_distribution<int>(0, number - 1)(random);
}

TestChain GetRandomChain(const Shape& shape, std::mt19937& random)
{
    const Side& side = shape.sides[GetRandomIndex(shape.sidenumber, random)];
    const Block<float[]> center = GetCenterOfSide(&side);
    std::uniform_real_distribution<float> offset(-0.2F, 0.2F);
    Points inner(std::size_t(GetRandomIndex(4, random)));
    for (std::array<float, 3>& place : inner) {
        for (std::size_t k = 0; k < 3; k++) {
            place[k] = center[k] + offset(random);
        }
    }
    const int start = side.points[GetRandomIndex(side.pointnumber, random)];
    return TestChain(shape, start, inner, side.points[GetRandomIndex(side.pointnumber, random)]);
}

OwnedShape GetRandomBody(std::mt19937& random)
{
    static constexpr std::array makers = {Tetrahedron, Cube,         TrianglePrism,
                                          Pyramid,     RaisedSquare, PlateWithHole};
    const OwnedShape body = makers[std::size_t(GetRandomIndex(int(makers.size()), random))]();
    const int number = body->pointnumber;
    return PlaceShape(*body, {GetRandomIndex(3, random), GetRandomIndex(2, random) == 1,
                              GetRandomIndex(number, random), number});
}

int Rename(int point, const Placing& placing)
{
    const bool isnew = point >= placing.pointnumber; // what a chain has brought keeps its place
    return isnew ? point : (point + placing.shift) % placing.pointnumber;
}

Points PlacePoints(const Points& points, const Placing& placing)
{
    Points placed = points;
    for (std::array<float, 3>& place : placed) {
        std::rotate(place.begin(), place.begin() + placing.turns, place.end());
        place[0] = placing.mirrored ? -place[0] : place[0];
    }
    return placed;
}

OwnedShape PlaceShape(const Shape& shape, const Placing& placing)
{
    Points points = PointsOf(shape);
    std::rotate(points.begin(), points.end() - placing.shift, points.end());
    Outlines outlines = OutlinesOf(shape);
    for (std::vector<int>& outline : outlines) {
        for (int& corner : outline) {
            corner = Rename(corner, placing);
        }
        if (placing.mirrored) {
            std::reverse(outline.begin(), outline.end());
        }
    }
    return MakeShape(PlacePoints(points, placing), outlines);
}

double GetVolume(const Shape& shape)
{
    const float origin[3] = {0, 0, 0};
    double volume = 0;
    for (int i = 0; i < shape.trianglenumber; i++) {
        const int* corners = shape.triangles[i].points;
        const Vector a = ToVector(shape.points[corners[0]]);
        const Vector cross = GetCross(origin, shape.points[corners[1]], shape.points[corners[2]]);
        volume += (a[0] * cross[0] + a[1] * cross[1] + a[2] * cross[2]) / 6;
    }
    return volume;
}

using EdgeSet = std::multiset<std::pair<int, int>>;

static EdgeSet GetEdgesOfOutlines(const Shape& shape)
{
    std::set<std::pair<int, int>> edges;
    for (const std::vector<int>& outline : OutlinesOf(shape)) {
        int before = outline.back();
        for (const int corner : outline) {
            edges.insert(std::minmax({before, corner}));
            before = corner;
        }
    }
    return {edges.begin(), edges.end()};
}

int GetCharacteristic(const Shape& shape)
{
    return shape.pointnumber - int(GetEdgesOfOutlines(shape).size()) + shape.sidenumber;
}

std::string FindBrokenRuleOfStripeCover(const Shape& shape)
{
    EdgeSet edges;
    for (const std::vector<int>& stripe : StripesOf(shape)) {
        for (std::size_t i = 1; i < stripe.size(); i++) {
            edges.insert(std::minmax({stripe[i - 1], stripe[i]}));
        }
    }
    return edges == GetEdgesOfOutlines(shape) ? "" : "every edge lies on exactly one stripe";
}

std::string FindBrokenRuleOfBody(Shape& shape)
{
    SetNormalsOfShape(&shape);
    for (auto rule :
         {FindBrokenRuleOfShape, FindBrokenRuleOfClosedBody, FindBrokenRuleOfStripeCover}) {
        const std::string broken = rule(shape);
        if (!broken.empty()) {
            return broken;
        }
    }
    return "";
}

} // namespace korvane::testing
