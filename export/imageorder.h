// In which order the triangles of an image are drawn in each of its tiles. Setting a light state
// costs more than drawing a triangle, and triangles that lie at like depths seldom share one: where
// they do not overlap, they are drawn in another order, which no pixel can tell. No toolkit, no
// OpenGL.
#pragma once

#include "export/imagetriangles.h"

#include <array>
#include <cstdint>
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

// The light state in which a triangle is drawn.
struct TriangleLook {
    const float* colors; // borrowed; colornumber of them
    bool front;          // whether it is drawn as facing the viewer
    float direction;     // 1, or -1 when its normals are turned
};

// A back that is coloured like its front is drawn as a front with turned normals, so that more
// triangles share a light state (IsBackLikeFront).
TriangleLook GetLook(const ImageTriangle& triangle);

bool ShareLightState(const TriangleLook& a, const TriangleLook& b);

// The different light states of the triangles, numbered.
struct Looks {
    std::vector<int> oftriangle;
    int number;
};
Looks GetLooks(const ImageTriangle* hszog, int number);

// For every triangle the tiles that may show it in any of their passes: a bit for each.
std::vector<unsigned int> GetTileSets(const ImageTriangle* hszog, int number);

// For every tile its triangles, in the order of zindex.
using TileOrders = std::array<std::vector<int>, tilenumber>;
TileOrders GetTileOrders(const std::vector<unsigned int>& tilesets, const int* zindex);

// What one step can afford to gather, to compile or to draw, in small triangles.
constexpr int stepcost = 80000;

// Rearranges the order of a tile into long runs of one look. Triangles that may share a pixel keep
// their order. Returns what it has cost: more for triangles that cover much of the tile.
std::int64_t GatherLooks(std::vector<int>& order, int tile, const ImageTriangle* hszog,
                         const Looks& looks);

// How many triangles of a tile's order, from its first on, one step can afford to draw: at least
// one if there is one.
int CountAffordable(const std::vector<int>& order, int tile, const ImageTriangle* hszog,
                    const Looks& looks);

// Half the depth that has to be drawn so that nothing of the tiles is cut off.
double GetHalfDepth(const std::vector<unsigned int>& tilesets, const ImageTriangle* hszog);

} // namespace korvane
