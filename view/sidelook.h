// How the sides of a projected shape look to the viewer: which of their triangles are shown, in
// which flat colour, and which of the two sides that meet at an edge is in front there. Everything
// is in view coordinates, where a face with a normal of positive z looks at the viewer. No OpenGL.
#pragma once

#include <array>

namespace korvane
{

struct Edge;
struct Shape;
struct Side;

using Rgba = std::array<float, 4>;

// Opaque sides are drawn before the others.
bool IsSideOpaque(const Side* side);

// Whether a side's visibility shows a triangle with this normal.
bool IsTriangleShown(int visibility, const float* normal);

// Whether both faces of a side with these colours are coloured alike. Its back is then drawn as a
// front with turned normals, which is what the lit program makes of a back: the light state need
// not change with the facing.
bool IsBackLikeFront(const float* colors);

// The flat colour of a side's triangle with this normal, lit from (-1, 1, 1); fades are the
// caller's.
Rgba GetColorOfTriangle(const Side* side, const float* normal);

// Whether the rim of the painted sides runs along an edge: a border, a silhouette, or two sides
// that are coloured differently. Such an edge is drawn once more as a smooth line.
bool IsEdgeSmoothed(const Shape* copy, const Edge* edge);

// Which of an edge's two triangles is in front, 0 or 1; -1 when neither of them is shown.
int GetFrontOfEdge(const Shape* copy, const Edge* edge);

} // namespace korvane
