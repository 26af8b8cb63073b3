// The lines of one shape: its stripes, the edges of its triangles, and the markers of its points.
#pragma once

namespace korvane
{

struct Shape;
struct ShownShape;

// Draws the lines of a shown shape from its plain copy, with markers of a size in view units. Reads
// activepoints and activestripes for what is hovered and what can be picked. Expects and leaves the
// base state.
void LineDraw(const ShownShape& shown, double size, float alpha, const Shape* plain);

} // namespace korvane
