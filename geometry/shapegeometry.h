// What drawing and rounding need to know of a shape: triangle normals, the table of edges, shading
// normals, centre and radius; and small numeric functions used all over the program. Sums and
// products are computed in double and stored as float. A triangle a, b, c faces along
// (b - a) x (c - a).
#pragma once

#include "geometry/normals.h" // part of what is told of shapes here
#include "geometry/plane.h"
#include "scene/arrays.h"

namespace korvane
{

struct Shape;
struct Triangle;

// Recomputes trianglenormals in place. A degenerate triangle gets its raw cross product here and
// (1, 0, 0) from SetNormalsOfShape.
void SetTriangleNormalsOfShape(Shape* shape);

void SetCenterPointOfShape(Shape* shape); // center: the arithmetic mean of all points
void SetRadiusOfShape(Shape* shape);      // radius: the greatest distance from center to a point

// The unit normal of a triangle, NaN when it is degenerate. The caller owns the float triple.
Block<float[]> GetNormal(const float* a, const float* b, const float* c);

// The unit normal of a triangle of a shape, or its raw cross product when it is degenerate.
Block<float[]> GetNormalOfTriangle(const Triangle* triangle);

// The plane of a triangle, through the mean of its corners.
Block<Plane> GetPlaneOfTriangle(const Triangle* triangle);

double GetDistanceOfTwoPoints(const float* a, const float* b);
double GetDistanceOfTwoPointsIn2d(const float* a, const float* b); // of the first two coordinates

// The angle between two vectors in radians, 0..pi; 1.0 when one of them is zero.
double GetAlfaOfTwoVectors(const float* a, const float* b);

// The distance from a point to a triangle of a shape, with a bias of a millionth of the angle at
// which the triangle sees the point: of two triangles at the same distance the one that faces it is
// nearer.
double GetDistancePointTriangle(const float* p, const Triangle* triangle);

// 1 when x is not a number, else 0.
int CheckNan(float x);

// Wraps an index once into 0..n-1, to step round a closed polygon.
int IndexLoop(int i, int n);

} // namespace korvane
