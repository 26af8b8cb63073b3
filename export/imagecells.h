// Where the triangles of an image's tile lie. The tile is cut into cells, and each of them is told
// which triangles reach into it: triangles that share no cell share no pixel, wherever a pass moves
// them to, for it moves them alike. No toolkit, no OpenGL.
#pragma once

#include "export/drawntriangles.h"

#include <cstddef>
#include <vector>

namespace korvane
{

constexpr int cellrow = 64; // cells in each direction
constexpr std::size_t cellnumber = std::size_t(cellrow) * cellrow;

// The cells from the first to the last column and row.
struct Reach {
    unsigned char firstcolumn, lastcolumn, firstrow, lastrow;
};

inline int CountCells(const Reach& reach)
{
    return (reach.lastcolumn - reach.firstcolumn + 1) * (reach.lastrow - reach.firstrow + 1);
}

// Calls `work` for each of those cells; `cells` has cellnumber elements, row by row.
template <class Cells, class Work> void ForCells(Cells& cells, const Reach& reach, Work work)
{
    for (int row = reach.firstrow; row <= reach.lastrow; row++) {
        for (int column = reach.firstcolumn; column <= reach.lastcolumn; column++) {
            work(cells[std::size_t(row * cellrow + column)]);
        }
    }
}

// What decides before which others a triangle can be drawn.
struct TileTriangle {
    int index; // in hszog
    int look;
    float corners[3][2];     // on the screen, in view coordinates
    float farthest, nearest; // the depths between which it is drawn; the greater is nearer
    Reach reach;
};

// The triangles of a tile, in their order.
std::vector<TileTriangle> GetTileTriangles(const std::vector<int>& order, int tile,
                                           const DrawnTriangles& drawn);

// Whether they surely cover no common pixel, however a driver rounds their corners. They may share
// corners and an edge: a pixel on a common edge belongs to one of them alone.
bool AreApart(const TileTriangle& a, const TileTriangle& b);

} // namespace korvane
