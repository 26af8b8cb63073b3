// Painting the sides of one shape, through the shader programs or, where they cannot be had, in
// flat colours. Expects and leaves the base state.
#pragma once

namespace korvane
{

struct MainView;
struct Shape;
struct ShownShape;

// Draws the sides of a shown shape from its drawn copy, the opaque ones first. Reads activesides
// for the outlines of hovered sides.
void DrawSides(const MainView* view, const ShownShape& shown, const Shape* copy);

} // namespace korvane
