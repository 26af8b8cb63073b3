#include "bench/meshes.h"

#include "scene/arrays.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <numbers>

namespace korvane::bench
{

static constexpr float defaultcolors[colornumber] = {0.8F, 0.8F, 0.8F, 1, 0.2F, 0.2F, 0.2F, 1, 1,
                                                     0.8F, 0.8F, 0.8F, 1, 0.2F, 0.2F, 0.2F, 1, 1};

static OwnedShape MakeEmptyShape(int pointnumber, int sidenumber, int trianglenumber)
{
    OwnedShape shape(NewArray<Shape>(1));
    shape->pointnumber = pointnumber;
    shape->sidenumber = sidenumber;
    shape->trianglenumber = trianglenumber;
    shape->points = NewArray<float[3]>(pointnumber);
    shape->sides = NewArray<Side>(sidenumber);
    shape->triangles = NewArray<Triangle>(trianglenumber);
    shape->stripes = NewArray<Stripe>(0);
    shape->edges = NewArray<Edge>(0);
    shape->normals = NewArray<float[3]>(0);
    shape->trianglenormals = NewArray<float[3]>(trianglenumber);
    return shape;
}

static void StartSide(Shape* shape, int index, int pointnumber, int firsttriangle)
{
    Side& side = shape->sides[index];
    side.pointnumber = pointnumber;
    side.trianglenumber = pointnumber - 2;
    side.visibility = VISIBLE_BOTH;
    std::copy_n(defaultcolors, colornumber, side.colors);
    side.points = NewArray<int>(pointnumber);
    side.triangles = NewArray<int>(pointnumber - 2);
    side.shape = shape;
    for (int k = 0; k < side.trianglenumber; k++) {
        side.triangles[k] = firsttriangle + k;
    }
}

// Cuts the side into a fan, which suits the convex sides of a torus.
static void SetSide(Shape* shape, int index, int firsttriangle, std::initializer_list<int> corners)
{
    StartSide(shape, index, int(corners.size()), firsttriangle);
    Side& side = shape->sides[index];
    std::copy(corners.begin(), corners.end(), side.points);
    for (int k = 0; k < side.trianglenumber; k++) {
        shape->triangles[firsttriangle + k] = {
            {side.points[0], side.points[k + 1], side.points[k + 2]}, {0, 0, 0}, shape};
    }
}

static void SetTorusPoints(Shape* shape, int rows, int columns)
{
    constexpr double turn = 2 * std::numbers::pi;
    constexpr double bigradius = 0.3;
    constexpr double smallradius = 0.1;
    for (int i = 0; i < rows; i++) {
        for (int k = 0; k < columns; k++) {
            const double u = turn * i / rows;
            const double v = turn * k / columns;
            const double reach = bigradius + smallradius * std::cos(v);
            float* point = shape->points[i * columns + k];
            point[0] = float(reach * std::cos(u));
            point[1] = float(reach * std::sin(u));
            point[2] = float(smallradius * std::sin(v));
        }
    }
}

// rows x columns rectangles, each cut in two; `sidesperrectangle` is 1 or 2.
static OwnedShape MakeTorus(int trianglenumber, int sidesperrectangle)
{
    const int rows = std::max(3, int(std::sqrt(trianglenumber / 2)));
    const int columns = std::max(3, trianglenumber / 2 / rows);
    const int rectangles = rows * columns;
    OwnedShape shape = MakeEmptyShape(rectangles, rectangles * sidesperrectangle, 2 * rectangles);
    SetTorusPoints(shape.get(), rows, columns);
    for (int i = 0; i < rows; i++) {
        for (int k = 0; k < columns; k++) {
            const int nextrow = (i + 1) % rows * columns;
            const int nextcolumn = (k + 1) % columns;
            const int a = i * columns + k;
            const int b = nextrow + k;
            const int c = nextrow + nextcolumn;
            const int d = i * columns + nextcolumn;
            if (sidesperrectangle == 1) {
                SetSide(shape.get(), a, 2 * a, {a, b, c, d});
            } else {
                SetSide(shape.get(), 2 * a, 2 * a, {a, b, c});
                SetSide(shape.get(), 2 * a + 1, 2 * a + 1, {a, c, d});
            }
        }
    }
    return shape;
}

OwnedShape MakeTriangleTorus(int trianglenumber)
{
    return MakeTorus(trianglenumber, 2);
}

OwnedShape MakeQuadTorus(int trianglenumber)
{
    return MakeTorus(trianglenumber, 1);
}

// The corners lie alternately on a circle and at `innerradius` of its centre, on a slanted plane.
static OwnedShape MakePolygon(int pointnumber, double innerradius)
{
    OwnedShape shape = MakeEmptyShape(pointnumber, 1, pointnumber - 2);
    StartSide(shape.get(), 0, pointnumber, 0);
    for (int i = 0; i < pointnumber; i++) {
        const double angle = 2 * std::numbers::pi * i / pointnumber;
        const double radius = i % 2 == 0 ? 0.4 : 0.4 * innerradius;
        float* point = shape->points[i];
        point[0] = float(radius * std::cos(angle));
        point[1] = float(radius * std::sin(angle));
        point[2] = 0.3F * point[0] + 0.2F * point[1];
        shape->sides[0].points[i] = i;
    }
    return shape;
}

OwnedShape MakeConvexPolygon(int pointnumber)
{
    return MakePolygon(pointnumber, 1);
}

OwnedShape MakeStarPolygon(int pointnumber)
{
    return MakePolygon(pointnumber, 0.4);
}

} // namespace korvane::bench
