// Small named shapes for the tests, and the builder behind them. A built shape is complete:
// triangles, stripes, normals, centre and radius; its sides are front and back visible with the
// default colours.
#pragma once

#include "scene/model.h"

#include <array>
#include <string>
#include <vector>

namespace korvane::testing
{

using Points = std::vector<std::array<float, 3>>;
using Outlines = std::vector<std::vector<int>>;
using Corners = std::array<int, 3>;

// A shape without derived fields: points and sides with room for their triangles, no stripes.
OwnedShape MakeRawShape(const Points& points, const Outlines& sides);

// Triangles, stripes, normals, centre and radius of a raw shape.
void CompleteShape(Shape* shape);

OwnedShape MakeShape(const Points& points, const Outlines& sides);
OwnedShape MakeFlatShape(const Points& points); // one side with all points in order

void SetVertexes(Shape* shape,
                 const std::vector<int>& vertexes); // marks; the normals are not rebuilt

Points PointsOf(const Shape& shape);
Outlines OutlinesOf(const Shape& shape); // the corners of every side
Outlines StripesOf(const Shape& shape);  // the points of every stripe

// The corners of a side's k-th triangle.
Corners CornersOf(const Shape& shape, int side, int k);
inline Corners CornersOf(const OwnedShape& shape, int k)
{
    return CornersOf(*shape, 0, k);
}

OwnedShape FlatTriangle(); // (0,0) (1,0) (0,1), counter-clockwise seen from +z
OwnedShape Square();       // (0,0) (1,0) (1,1) (0,1), likewise
OwnedShape ConcaveL();     // an L of six corners, likewise
OwnedShape Star();         // a five-pointed star of ten corners, likewise
OwnedShape Tetrahedron();  // 4 triangles
OwnedShape Cube();         // edge 1, centred on the origin; sides -z, +z, -y, +y, -x, +x, which
                           // are cut along the diagonals 1-3, 5-7, 1-4, 7-2, 4-3 and 2-5
OwnedShape CubeOfHalfEdge(float h); // the same in another size
OwnedShape TrianglePrism();         // two triangles, three rectangles
OwnedShape Pyramid();               // a square and four triangles
OwnedShape RaisedSquare();          // the square, raised to (0.5, 0.5, 1) over its diagonal 0-2
OwnedShape PlateWithHole();         // a square hole, cut free from corner 0 to corner 4 by a slit
                                    // in the front; the back is the front reversed
OwnedShape Ring();                  // four bars round a square hole, 16 sides, volume 12
OwnedShape RingOfOneSide();         // a ring whose sides have all been joined, 5 points, 6 edges
OwnedShape BridgedCube();           // a cube with a handle from its top to its bottom, 24 sides,
                                    // volume 11

// Adds a shape to the scene with its node below `parent` and its active records; it is not yet
// projected. Returns the shape's index.
int AddToScene(OwnedShape shape, const std::string& name, int parent = 0);

// The nodes whose rows are selected, put there without a tree view.
void SelectNodes(const std::vector<int>& nodes);

// A scene without shapes, folders and undo steps. Makes the tree the first time.
void StartEmptyScene();

} // namespace korvane::testing
