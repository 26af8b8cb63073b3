// Turning, scaling and moving a side, a shape or all selected shapes of the scene. All of it works
// in view coordinates: the axes are those of the screen (x to the right, y up, z towards the
// viewer), wherever the camera looks from. What stays rigid takes its rounded version along; what
// is deformed is derived anew. The radius is right after each of them, and so is the centre but for
// a shape that has been turned under perspective: its centre remains the pivot until ChangeShape.
// Every procedure ends with the projection of what it changed, and does nothing for a shape or a
// side that is not there. They read mainview and shapest.
#pragma once

namespace korvane
{

// About an axis of the screen, 0 for x, 1 for y and 2 for z: a side about its centre with every
// point that it shares with others, a shape about its centre, the selection about the middle of the
// view.
void SideRotate(int shape, int side, double degrees, int axis);
void ShapeRotate(int shape, double degrees, int axis);
void SelectedRotate(double degrees, int axis);

// From the same points, along the axis 1 for x, 2 for y and 3 for z, or along all three for 0.
void SideScale(int shape, int side, double factor, int axis);
void ShapeScale(int shape, double factor, int axis);
void SelectedScale(double factor, int axis);

// One step of a drag in the view plane, from (x0, y0) to (x1, y1).
void SideMove(int shape, int side, float x0, float y0, float x1, float y1);
void ShapeMove(int shape, float x0, float y0, float x1, float y1);
void SelectedMove(float x0, float y0, float x1, float y1);

} // namespace korvane
