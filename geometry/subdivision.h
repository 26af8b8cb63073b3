// The mesh that rounding makes of a shape, all but where its points lie: how they are numbered, and
// the nine triangles, stripes, vertexes and sides that refer to them.
//
// Points of the result, for P points, T triangles and E edges of the shape:
//
//     0 ..            P ..                        P + T ..                   P + T + 2E
//     | points, moved | a face point per triangle | two edge points per edge |
//
// The ends of the edges are numbered as their edge points are: end 2e is edge e's points[0], end 2e
// + 1 its points[1], end ^ 1 the other end of the same edge, and firstedge + end the edge point
// near it.
#pragma once

#include "geometry/creases.h"

#include <array>
#include <vector>

namespace korvane
{

struct Shape;
struct Edge;

constexpr int noend = -1;

struct Subdivision {
    const Shape* shape;                   // borrowed; what is cut
    Shape* round;                         // borrowed; what comes of it, which is its maker's
    int firstface;                        // index of the first face point
    int firstedge;                        // index of the first edge point
    std::vector<std::array<int, 3>> ends; // per triangle and corner the end, there, of the edge to
                                          // the next corner; noend when there is none
};

// The points from which the nine triangles of one are made: its corners, its face point, and on the
// way from each corner to the next the two edge points, the near one first.
//
//                  C
//              CA1   BC2
//          CA2     M     BC1
//       A     AB1     AB2     B
enum LocalPoint { A, B, C, M, AB1, AB2, BC1, BC2, CA1, CA2, localpoints };
using LocalPoints = std::array<int, localpoints>;

constexpr LocalPoint ninetriangles[9][3] = {{A, AB1, CA2}, {AB1, AB2, M}, {AB2, B, BC1},
                                            {M, CA2, AB1}, {BC1, M, AB2}, {CA2, M, CA1},
                                            {M, BC1, BC2}, {BC2, CA1, M}, {CA1, BC2, C}};

// The result with its counts, back-pointers, looks and empty points, and the ends of every
// triangle.
Subdivision StartSubdivision(const Shape* shape);

// Looks up the points of triangle t. Where an edge is missing, those of the triangle before stay in
// `local`, which is zero before the first.
void SetLocalPoints(LocalPoints& local, const Subdivision& work, int t);

void SetNineTriangles(Subdivision& work);
void SetRoundSides(Subdivision& work);

// The stripes, and the vertexes along those that run from flagged point to flagged point.
void SetRoundStripes(Subdivision& work, const Creases& creases);

} // namespace korvane
