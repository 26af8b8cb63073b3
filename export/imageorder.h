// The tiles of an image, and which triangles each of them shows, in drawing order. No toolkit, no
// OpenGL.
#pragma once

#include "export/imagetriangles.h"

#include <array>
#include <vector>

namespace korvane
{

// The image, cut into tiles, each of which is 0.25 x 0.25 of the view. Columns count from the left,
// rows from the top.
constexpr int imagewidth = 1280;
constexpr int imageheight = 1024;
constexpr int tilesize = 256; // pixels
constexpr int tilecolumns = imagewidth / tilesize;
constexpr int tilerows = imageheight / tilesize;
constexpr int tilenumber = tilecolumns * tilerows; // row by row
constexpr double tilespan = 0.25;                  // in view units

// A row of equal places in view coordinates; `span` is negative when they count downwards.
struct Places {
    double start, span;
    int number;
};

struct Range {
    int first, last; // none when first is greater
};

// The places over which a triangle reaches along an axis, and those less than `margin` places away.
Range GetRange(const ImageTriangle& triangle, int axis, const Places& places, double margin);

// For every triangle the tiles that may show it in any of their passes: a bit for each.
std::vector<unsigned int> GetTileSets(const ImageTriangle* hszog, int number);

// For every tile its triangles, in the order of zindex.
using TileOrders = std::array<std::vector<int>, tilenumber>;
TileOrders GetTileOrders(const std::vector<unsigned int>& tilesets, const int* zindex);

// Half the depth that has to be drawn so that nothing of the tiles is cut off.
double GetHalfDepth(const std::vector<unsigned int>& tilesets, const ImageTriangle* hszog);

} // namespace korvane
