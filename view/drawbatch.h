// Many lines, triangles or quads drawn in one call. A batch collects coloured corners; drawing it
// empties it and keeps its memory, so that a batch that lives on costs nothing in the next frame.
#pragma once

#include "view/sidelook.h"

#include <vector>

namespace korvane
{

struct BatchCorner {
    float position[3];
    float color[4];
    float texture[2]; // read only while texturing is on
};

using Batch = std::vector<BatchCorner>;

// Adds a corner `lift` nearer to the viewer than its position.
void AddCorner(Batch& batch, const float* position, double lift, const Rgba& color);

void AddLine(Batch& batch, const float* start, const float* end, double lift, const Rgba& color);

// Adds a textured square around a position.
void AddSquare(Batch& batch, const float* center, double lift, double size, const Rgba& color);

// Draws the corners as an OpenGL primitive of this mode and empties the batch. Expects and leaves
// the base state, but for what the caller has turned on for the batch.
void DrawBatch(unsigned int mode, Batch& batch);

} // namespace korvane
