// Editing the outline of a shape in the view: points inserted, dragged and removed, borders
// dissolved. Elements are named by their indices in the active lists. Every procedure saves its
// shape for undo, changes it in `shapes` and makes all that is derived from it anew. An element
// that is gone, and an edit that would break the shape, change nothing and leave no undo step.
#pragma once

namespace korvane
{

// Inserts a point at gmouse into the segment of the stripe that is nearest to the mouse. Returns
// the new point's index in activepoints; -1 when the mouse is beside all segments. Deliberate: that
// leaves an undo step all the same.
int AddPoint(int activestripe);

// Moves a point to a place on the screen, at its depth. `first` is 1 at the first step of a drag,
// which alone saves the shape. A new point of a construction is moved too.
void PointMove(int activepoint, float x, float y, char first);

// Removes a point, and with a corner the borders that meet there. Four points stay.
void RemovePoint(int activepoint);

// Merges the two sides that a stripe separates.
void RemoveStripe(int activestripe);

} // namespace korvane
