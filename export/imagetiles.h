// The pixels of an image: tiles of 256 x 256, each rendered in four passes that lie a part of a
// pixel apart and are averaged. They are rendered beside the window, into a buffer of their own, so
// that the image depends on nothing that happens to the window; only without frame-buffer objects
// the window's hidden buffer serves. A context must be current. Every procedure expects the base
// state and the view's projection, and leaves them.
#pragma once

#include "export/imageorder.h"

namespace korvane
{

constexpr int tilepasses = 4;

void MakeTileBuffer();
void FreeTileBuffer(); // nothing when it has not been made

// Makes the display list of one tile: its triangles in their order.
void CompileTile(unsigned int list, const ImageTriangle* hszog, const std::vector<int>& order);

// Draws a display list through both programs of lit surfaces, if they are used.
void SceneHighDraw(unsigned int list);

// Renders a tile once more, `halfdepth` deep before and behind the view's middle, and adds it to
// its sum, which pass 0 begins.
void DrawTilePass(int tile, int pass, unsigned int list, double halfdepth);

// Puts the average of the four passes into its place in the image, rows from the top.
void StoreTile(int tile, unsigned char* image);

} // namespace korvane
