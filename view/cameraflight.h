// Flights of the camera: a jump to another view is prepared as frames, which the timer plays one
// per tick. A new flight takes the place of the one that is playing and starts from the view of
// that moment.
#pragma once

namespace korvane
{

struct CameraFrame {
    float rotation[9];
    float center[3];
    float scale;
};

constexpr int cameraframes = 16;

// The frames of the current flight, written by ChangeCamera, and the next of them to play:
// cameraframes when idle.
extern CameraFrame camtable[cameraframes];
extern int camposition;

// Prepares a flight that turns the screen direction `dir` to face the viewer and the screen
// direction `up` to point up; null for either leaves it out, and without both the view does not
// turn. At its end the world point `center` is at the screen's origin, at `scale`: both are always
// given.
void ChangeCamera(const float* dir, const float* up, const float* center, float scale);

void SetStart(); // flies to the view in which the program starts

// The face of the background cube under the pointer turns to face the viewer, upright on the
// nearest of its edges; when it does so already, the view rolls by a quarter turn.
void CubeRotate();

// The side under the pointer turns to face the viewer, and the spot under the pointer becomes the
// centre.
void JumpSurface();

// The shapes with the given indices fill the view. Does nothing when there are none.
void FitShapes(const int* indices, int count);

} // namespace korvane
