// The depths of points that are clicked one after the other. A click on empty space has no depth of
// its own: its point takes `zbasic`, and once the polygon or path is closed on a point that has
// one, the points since the last fixed depth are laid between the two. Coordinates are those of the
// view.
#pragma once

namespace korvane
{

struct ClickDepth {
    float zbasic;  // the depth given to points clicked on empty space
    int zindex;    // the last clicked point whose depth is fixed
    int coordsign; // the camera's signature when zbasic was last fixed
};

// Tells one orientation of the camera from another. Turns that differ by less than a thousandth may
// share a signature.
int GetCameraSignature(const float rotation[9]);

// For the first point, whose depth is fixed.
ClickDepth StartClickDepth(float zbasic, const float rotation[9]);

// Before a point is added to `number` others: when the view has been turned since the depth was
// fixed, that of the last point is taken from now on. When it has been zoomed or moved along the
// line of sight, the depth goes with the point at which it was fixed.
void FollowCamera(ClickDepth& depth, const float rotation[9], const float points[][3], int number);

// After the last point has been taken back: the depth goes back with it to the last of the `number`
// points that remain.
void FollowTakeBack(ClickDepth& depth, const float points[][3], int number);

// Gives the points between `first` and `last` depths between those of the two, by where they lie
// along the line on the screen from one to the other.
void InterpolateDepths(float points[][3], int first, int last);

} // namespace korvane
