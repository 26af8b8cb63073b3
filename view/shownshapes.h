// The shapes that a frame draws. No OpenGL.
#pragma once

#include <vector>

namespace korvane
{

struct MainView;
struct Shape;

// A shape that is drawn, and where its records begin in the three lists of active elements.
struct ShownShape {
    int index;       // into the arrays of the scene
    int pointstart;  // in activepoints
    int stripestart; // in activestripes
    int sidestart;   // in activesides
};

// The shapes that the projection did not leave out, the farthest first; of equally far ones the
// first in the scene comes first. Reads shapes, shapest, showtable.
std::vector<ShownShape> GetShownShapes();

// The projected copy from which the sides of a shape are drawn: the plain or the rounded one.
const Shape* GetDrawnCopy(int shapeindex);

// The weight of the sides of a shown shape: their display fade and the shape's own.
double GetFadeOfSides(const MainView* view, const ShownShape& shown);

} // namespace korvane
