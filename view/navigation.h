// Camera transitions: the frames of the one that is playing.
#pragma once

namespace korvane
{

struct CameraFrame {
    float rotation[9];
    float center[3];
    float scale;
};

constexpr int cameraframes = 16;

extern CameraFrame camtable[cameraframes]; // the frames of the current transition
extern int camposition;                    // the next frame to play; cameraframes when idle

} // namespace korvane
