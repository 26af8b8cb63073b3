// The smooth form of a shape: one step of a one-into-nine subdivision of its triangles, in which
// marked points stay corners and marked chains stay creases. It is made again on every step of a
// drag, so its cost is linear in the shape.
#pragma once

namespace korvane
{

struct Shape;

// The rounded version of a shape, whose edges, triangles, stripes (of two points at least) and
// vertexes must be current; the shape is not changed. Every triangle gives nine, every edge two
// points, every triangle one. The sides of the result have no outlines. The caller owns the result
// (DeleteShape).
Shape* RoundShape(const Shape* shape);

} // namespace korvane
