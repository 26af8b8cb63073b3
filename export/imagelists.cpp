#include "export/imagelists.h"

#include "export/imagegathering.h"
#include "export/imagesplit.h"
#include "export/imagetiles.h"

#include <GL/glew.h>
#include <gtk/gtkgl.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace korvane
{

// How a tile is gathered: each of it takes long when a tile has most of the triangles.
enum GatherStep { SPLIT_TILE, GATHER_OPAQUE, GATHER_REST, gatherstepnumber };
static constexpr int allsteps = gatherstepnumber * tilenumber;

// From StartLists to FreeLists.
static DrawnTriangles drawn;
static TileOrders tileorders;
static int gathersteps = 0;                                      // so many have been made
static SplitTriangles split;                                     // of the tile that is gathered
static std::array<std::vector<TilePart>, tilenumber> tileparts;  // of each tile
static int compiled = 0;                                         // so many tiles are
static std::array<std::vector<unsigned int>, tilenumber> gllist; // of each tile

void StartLists(TileOrders orders, DrawnTriangles triangles)
{
    tileorders = std::move(orders);
    drawn = std::move(triangles);
}

// Makes the next step of gathering. Returns how much of a step of the image that has cost.
static std::int64_t GatherTile()
{
    const auto tile = std::size_t(gathersteps / gatherstepnumber);
    const int step = gathersteps % gatherstepnumber;
    const std::size_t looknumber = drawn.looks.states.size();
    std::vector<TilePart>& parts = tileparts[tile];
    gathersteps++;
    switch (step) {
    case SPLIT_TILE:
        split = SplitOrder(tileorders[tile], int(tile), drawn);
        return std::int64_t(tileorders[tile].size());
    case GATHER_OPAQUE:
        return GatherLooks(split.opaque, looknumber, true, parts);
    default:
        tileorders[tile] = {};
        return GatherLooks(std::exchange(split, {}).rest, looknumber, false, parts);
    }
}

// Makes the next list; that of a tile without triangles is empty. Returns how much of a step of the
// image that has cost.
static std::int64_t CompilePart()
{
    std::vector<TilePart>& parts = tileparts[std::size_t(compiled)];
    std::vector<unsigned int>& lists = gllist[std::size_t(compiled)];
    parts.resize(std::max(parts.size(), std::size_t(1)));
    const TilePart& next = parts[lists.size()];
    lists.push_back(glGenLists(1));
    CompileTriangles(lists.back(), drawn, next);
    compiled += lists.size() == parts.size() ? 1 : 0;
    return std::int64_t(next.triangles.size());
}

// The lists are compiled when all tiles are gathered, so that a tile with most of the triangles is
// gathered and compiled in different steps.
double MakeLists()
{
    std::int64_t cost = 0;
    while (gathersteps < allsteps && cost < stepcost) {
        cost += GatherTile();
    }
    while (gathersteps == allsteps && compiled < tilenumber && cost < stepcost) {
        cost += CompilePart();
    }
    return (double(gathersteps) / allsteps + double(compiled) / tilenumber) / 2;
}

const std::vector<unsigned int>& GetLists(int tile)
{
    return gllist[std::size_t(tile)];
}

void FreeLists()
{
    if (gdk_gl_context_get_current() != nullptr) {
        for (const std::vector<unsigned int>& lists : gllist) {
            for (const unsigned int list : lists) {
                glDeleteLists(list, 1);
            }
        }
    }
    drawn = {};
    tileorders = {};
    gathersteps = 0;
    split = {};
    tileparts = {};
    compiled = 0;
    gllist = {};
}

} // namespace korvane
