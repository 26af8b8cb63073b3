// The pixels of an image: tiles of 256 x 256, each rendered in four passes that lie a part of a
// pixel apart and are averaged. They are rendered beside the window, into a buffer of their own, so
// that the image depends on nothing that happens to the window; only without frame-buffer objects
// the window's hidden buffer serves. A context must be current. Every procedure expects the base
// state and the view's projection, and leaves them.
#pragma once

#include "export/imagegathering.h"

namespace korvane
{

constexpr int tilepasses = 4;

void MakeTileBuffer();
void FreeTileBuffer(); // nothing when it has not been made

// Makes a display list of a part of a tile.
void CompileTriangles(unsigned int list, const DrawnTriangles& drawn, const TilePart& part);

// Draws a display list through both programs of lit surfaces, if they are used.
void SceneHighDraw(unsigned int list);

// Whether a pass that is drawn in several steps survives what happens to the window between them.
bool KeepsTile();

struct TilePass {
    int tile, pass;
    double halfdepth; // of what is drawn before and behind the view's middle
};

// Draws a part of a pass. The first part clears the tile, the last adds it to the tile's sum, which
// pass 0 begins.
void DrawTilePart(const TilePass& tilepass, unsigned int list, bool first, bool last);

// Puts the average of the four passes into its place in the image, rows from the top.
void StoreTile(int tile, unsigned char* image);

} // namespace korvane
