// The rims of painted sides are jagged; this draws them once more as smooth lines in the colour of
// the side that is in front there.
#pragma once

namespace korvane
{

struct MainView;
struct Shape;
struct ShownShape;

// Draws the smoothed edges of a shown shape's drawn copy. Expects and leaves the base state.
void SmoothEdges(const MainView* view, const ShownShape& shown, const Shape* copy);

} // namespace korvane
