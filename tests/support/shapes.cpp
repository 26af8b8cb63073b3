#include "tests/support/shapes.h"

#include "geometry/shapegeometry.h"
#include "geometry/surgery.h"
#include "scene/arrays.h"
#include "scene/scenefile.h"
#include "scene/scenereader.h"
#include "scene/treeview.h"
#include "view/picking.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace korvane::testing
{

static constexpr float defaultcolors[colornumber] = {0.8F, 0.8F, 0.8F, 1, 0.2F, 0.2F, 0.2F, 1, 1,
                                                     0.8F, 0.8F, 0.8F, 1, 0.2F, 0.2F, 0.2F, 1, 1};

static void FillSide(Side& side, const std::vector<int>& outline, Shape* shape)
{
    side.pointnumber = int(outline.size());
    side.trianglenumber = side.pointnumber - 2;
    side.visibility = VISIBLE_BOTH;
    std::copy_n(defaultcolors, colornumber, side.colors);
    side.points = CopyArray(outline.data(), side.pointnumber);
    side.triangles = NewArray<int>(side.trianglenumber);
    side.shape = shape;
}

OwnedShape MakeRawShape(const Points& points, const Outlines& sides)
{
    Shape* shape = NewArray<Shape>(1);
    shape->pointnumber = int(points.size());
    shape->points = NewArray<float[3]>(shape->pointnumber);
    for (int i = 0; i < shape->pointnumber; i++) {
        std::copy_n(points[std::size_t(i)].data(), 3, shape->points[i]);
    }
    shape->sidenumber = int(sides.size());
    shape->sides = NewArray<Side>(shape->sidenumber);
    for (int i = 0; i < shape->sidenumber; i++) {
        FillSide(shape->sides[i], sides[std::size_t(i)], shape);
        shape->trianglenumber += shape->sides[i].trianglenumber;
    }
    shape->triangles = NewArray<Triangle>(shape->trianglenumber);
    for (int i = 0; i < shape->trianglenumber; i++) {
        shape->triangles[i].shape = shape;
    }
    return OwnedShape(shape);
}

void CompleteShape(Shape* shape)
{
    DeriveLoadedShape(shape);
    SetCenterPointOfShape(shape);
    SetRadiusOfShape(shape);
}

OwnedShape MakeShape(const Points& points, const Outlines& sides)
{
    OwnedShape shape = MakeRawShape(points, sides);
    CompleteShape(shape.get());
    return shape;
}

OwnedShape MakeFlatShape(const Points& points)
{
    std::vector<int> outline(points.size());
    for (std::size_t i = 0; i < outline.size(); i++) {
        outline[i] = int(i);
    }
    return MakeShape(points, {outline});
}

void SetVertexes(Shape* shape, const std::vector<int>& vertexes)
{
    FreeArray(shape->vertexes);
    shape->vertexnumber = int(vertexes.size());
    if (!vertexes.empty()) {
        shape->vertexes = CopyArray(vertexes.data(), shape->vertexnumber);
    }
}

Points PointsOf(const Shape& shape)
{
    Points points;
    for (int i = 0; i < shape.pointnumber; i++) {
        const float* place = shape.points[i];
        points.push_back({place[0], place[1], place[2]});
    }
    return points;
}

Outlines OutlinesOf(const Shape& shape)
{
    Outlines outlines;
    for (int i = 0; i < shape.sidenumber; i++) {
        outlines.push_back(GetCornersOfSide(shape.sides[i]));
    }
    return outlines;
}

Outlines StripesOf(const Shape& shape)
{
    Outlines stripes;
    for (int i = 0; i < shape.stripenumber; i++) {
        const Stripe& stripe = shape.stripes[i];
        stripes.emplace_back(stripe.points, stripe.points + stripe.pointnumber);
    }
    return stripes;
}

Corners CornersOf(const Shape& shape, int side, int k)
{
    const Triangle& triangle = shape.triangles[shape.sides[side].triangles[k]];
    return {triangle.points[0], triangle.points[1], triangle.points[2]};
}

OwnedShape FlatTriangle()
{
    return MakeFlatShape({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
}

OwnedShape Square()
{
    return MakeFlatShape({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}});
}

OwnedShape ConcaveL()
{
    return MakeFlatShape({{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 1, 0}, {1, 2, 0}, {0, 2, 0}});
}

OwnedShape Star()
{
    constexpr double tenth = 3.14159265358979323846 / 5; // the angle between neighbouring corners
    Points points;
    for (int i = 0; i < 10; i++) {
        const double r = i % 2 == 0 ? 1.0 : 0.4;
        points.push_back({float(r * std::cos(tenth * i)), float(r * std::sin(tenth * i)), 0});
    }
    return MakeFlatShape(points);
}

OwnedShape Tetrahedron()
{
    return MakeShape({{1, 1, 1}, {-1, -1, 1}, {-1, 1, -1}, {1, -1, -1}},
                     {{0, 2, 1}, {0, 1, 3}, {0, 3, 2}, {1, 2, 3}});
}

OwnedShape CubeOfHalfEdge(float h)
{
    return MakeShape(
        {{-h, -h, -h},
         {h, -h, -h},
         {h, h, -h},
         {-h, h, -h},
         {-h, -h, h},
         {h, -h, h},
         {h, h, h},
         {-h, h, h}},
        {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4}, {3, 7, 6, 2}, {0, 4, 7, 3}, {1, 2, 6, 5}});
}

OwnedShape Cube()
{
    return CubeOfHalfEdge(0.5F);
}

OwnedShape TrianglePrism()
{
    return MakeShape({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}},
                     {{0, 2, 1}, {3, 4, 5}, {0, 1, 4, 3}, {1, 2, 5, 4}, {2, 0, 3, 5}});
}

OwnedShape Pyramid()
{
    return MakeShape({{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}, {0, 0, 1}},
                     {{0, 3, 2, 1}, {0, 1, 4}, {1, 2, 4}, {2, 3, 4}, {3, 0, 4}});
}

OwnedShape RaisedSquare()
{
    return MakeShape({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0.5F, 0.5F, 1}},
                     {{3, 2, 1, 0}, {0, 1, 2, 4}, {2, 3, 0, 4}});
}

OwnedShape PlateWithHole()
{
    return MakeShape(
        {{0, 0, 0}, {3, 0, 0}, {3, 3, 0}, {0, 3, 0}, {1, 1, 0}, {2, 1, 0}, {2, 2, 0}, {1, 2, 0}},
        {{0, 1, 2, 3, 0, 4, 7, 6, 5, 4}, {4, 5, 6, 7, 4, 0, 3, 2, 1, 0}});
}

// A ring through stations of four points; walls of four corners join each to the next, the last to
// the first. Seen along the way, the points of a station run counter-clockwise.
static OwnedShape MakeRingThrough(const Points& points)
{
    const int number = int(points.size());
    Outlines walls;
    for (int station = 0; station < number; station += 4) {
        const int next = (station + 4) % number;
        for (int k = 0; k < 4; k++) {
            const int after = (k + 1) % 4;
            walls.push_back({station + after, station + k, next + k, next + after});
        }
    }
    return MakeShape(points, walls);
}

OwnedShape Ring()
{
    Points points;
    for (const auto& [x, y] : {std::pair{1, 1}, {-1, 1}, {-1, -1}, {1, -1}}) {
        const float a = float(x);
        const float b = float(y);
        points.insert(points.end(),
                      {{2 * a, 2 * b, -0.5F}, {2 * a, 2 * b, 0.5F}, {a, b, 0.5F}, {a, b, -0.5F}});
    }
    return MakeRingThrough(points);
}

OwnedShape RingOfOneSide()
{
    return MakeShape({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {0, 1, 0}, {0, 2, 1}},
                     {{0, 1, 2, 0, 3, 4, 0, 2, 1, 0, 4, 3}});
}

OwnedShape BridgedCube()
{
    // x and z of the outer and of the inner border at each station, from the cube's top face
    constexpr float borders[6][4] = {
        {-0.5F, 0.5F, 0.5F, 0.5F}, {-0.5F, 2, 0.5F, 1},        {3, 2, 2, 1}, {3, -2, 2, -1},
        {-0.5F, -2, 0.5F, -1},     {-0.5F, -0.5F, 0.5F, -0.5F}};
    Points points;
    for (const auto& [x, z, innerx, innerz] : borders) {
        points.insert(
            points.end(),
            {{x, -0.5F, z}, {x, 0.5F, z}, {innerx, 0.5F, innerz}, {innerx, -0.5F, innerz}});
    }
    return MakeRingThrough(points);
}

int AddToScene(OwnedShape shape, const std::string& name, int parent)
{
    const int type = GetTypeOfShape(shape.get());
    AddShape(shape.release());
    AddTreeIter(parent, type, CopyText(name));
    SetActives();
    return shapenumber - 1;
}

void SelectNodes(const std::vector<int>& nodes)
{
    FreeArray(treeselected);
    treeselectednumber = int(nodes.size());
    if (!nodes.empty()) {
        treeselected = CopyArray(nodes.data(), treeselectednumber);
    }
}

void StartEmptyScene()
{
    if (store == nullptr) {
        MakeTree();
    }
    NewMrt();
}

} // namespace korvane::testing
