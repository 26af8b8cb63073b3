// A shape's normals and the table of its edges, made together in one walk over its triangles.
#pragma once

namespace korvane
{

struct Shape;

// Rebuilds trianglenormals, edges, normals and the normal indices of every triangle; frees what
// they held before. Needs points, vertexes, stripes, triangles and the sides' triangle runs.
//
// The sides' triangles are walked side by side, each along its three edges. An edge is matched with
// the earliest one that was walked the other way and still has one triangle; without one it becomes
// a new edge. A smooth point has one normal; a crease point has two, one for its first side and one
// for the others; a corner has one for every triangle on it.
void SetNormalsOfShape(Shape* shape);

// The same for a shape whose edges are known to be what that walk would give: they are kept.
void SetNormalsOverEdges(Shape* shape);

} // namespace korvane
