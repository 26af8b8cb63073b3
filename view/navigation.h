// Moving the camera by hand: turning, zooming and panning change mainview at once and end with the
// scene projected again and the element under the pointer found anew. Positions are view
// coordinates. The placement position of the pointer, which snaps to the gradient grid, is kept
// here too.
#pragma once

namespace korvane
{

// The pointer went from the first position to the second, dragging the virtual ball round the
// scene: turns freerotation; rotation is that turn snapped to the axes.
void MouseRotate(float x1, float y1, float x2, float y2);

// Zooms by one step about the point under the pointer, or else about gmouse, which stays in its
// place on the screen.
void ChangeScale(bool in);

// Zooms by one step about the centre of the view.
void ChangeScaleFromOrigo(bool in);

// Moves the scene so that what is seen at the first position comes to the second; asks for a
// redraw.
void ChangePosition(float x1, float y1, float z1, float x2, float y2, float z2);

// The power of two that is not greater than `scale`, and greater than half of it. Grids follow it.
double GetPowerOfTwo(double scale);

// The distance in world units between neighbouring places to which the pointer snaps at a scale: on
// the screen they are between 1/60 and 1/30 of the view's shorter side apart.
double GetGradientStep(double scale);

// Keeps gmouse: the pointer itself, or the crossing of the gradient grid that is nearest to it
// while anything of the grid is shown. Call it after every motion of the pointer; each frame calls
// it too, for what the grid has done meanwhile.
void SetGradientMouse();

} // namespace korvane
