#include "export/imagecells.h"

#include "tests/support/imagetriangles.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <utility>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

bool operator==(const Reach& a, const Reach& b)
{
    return a.firstcolumn == b.firstcolumn && a.lastcolumn == b.lastcolumn &&
           a.firstrow == b.firstrow && a.lastrow == b.lastrow;
}

std::ostream& operator<<(std::ostream& stream, const Reach& reach)
{
    return stream << int(reach.firstcolumn) << ".." << int(reach.lastcolumn) << " "
                  << int(reach.firstrow) << ".." << int(reach.lastrow);
}

static TileTriangle TileTriangleOf(const ImageTriangle& triangle, int tile = 0)
{
    const std::vector<ImageTriangle> triangles = {triangle};
    return GetTileTriangles({0}, tile, DrawnOf(triangles)).front();
}

// A cell is four pixels wide and high.
TEST(GetTileTriangles, CountsCellsFromTheUpperLeft)
{
    EXPECT_EQ(TileTriangleOf(SmallTriangle(21, 10, 0)).reach, (Reach{5, 6, 2, 3}));
    EXPECT_EQ(TileTriangleOf(SmallTriangle(2 * 256 + 21, 256 + 10, 0), 7).reach,
              (Reach{5, 6, 2, 3})); // the second row's third tile
    EXPECT_EQ(TileTriangleOf(MakeTriangle(-30, -30, 30, 30), 7).reach, (Reach{0, 63, 0, 63}));
    EXPECT_EQ(CountCells(Reach{5, 6, 2, 4}), 6);
}

// A pass may move it in.
TEST(GetTileTriangles, PutsWhatLiesBesideTheTileIntoTheCellsOfItsBorder)
{
    EXPECT_EQ(TileTriangleOf(SmallTriangle(-4.2, 21, 0)).reach, (Reach{0, 0, 5, 6}));
    EXPECT_EQ(TileTriangleOf(SmallTriangle(tilesize + 0.2, 21, 0)).reach, (Reach{63, 63, 5, 6}));
    EXPECT_EQ(TileTriangleOf(SmallTriangle(21, -4.2, 0)).reach, (Reach{5, 6, 0, 0}));
    EXPECT_EQ(TileTriangleOf(SmallTriangle(21, tilesize + 0.2, 0)).reach, (Reach{5, 6, 63, 63}));
}

TEST(GetTileTriangles, TellsDepthsLooksAndPlaces)
{
    std::vector<ImageTriangle> triangles = {SmallTriangle(0, 0, 0), SmallTriangle(9, 9, 1, 0.5F)};
    triangles[1].vertices[0][2] = -1;
    triangles[1].vertices[2][2] = 2;
    const auto tiled = GetTileTriangles({1, 0}, 0, DrawnOf(triangles));
    ASSERT_EQ(tiled.size(), 2U);
    EXPECT_EQ(tiled[0].index, 1);
    EXPECT_EQ(tiled[0].look, 1);
    // it rises by 1.5 and by 3 on four pixels, and each corner may move by a 32nd of a pixel
    EXPECT_NEAR(tiled[0].farthest, -1 - 2 * 4.5 / 4 / 32, 1e-5);
    EXPECT_NEAR(tiled[0].nearest, 2 + 2 * 4.5 / 4 / 32, 1e-5);
    EXPECT_EQ(tiled[1].index, 0);
    EXPECT_EQ(tiled[1].farthest, 0);
    EXPECT_EQ(tiled[1].nearest, 0);
}

TEST(ForCells, VisitsTheCellsOfAReach)
{
    std::vector<int> cells(cellnumber, 0);
    ForCells(cells, Reach{5, 6, 2, 3}, [](int& cell) { cell++; });
    for (std::size_t i = 0; i < cellnumber; i++) {
        const bool within = i % 64 >= 5 && i % 64 <= 6 && i / 64 >= 2 && i / 64 <= 3;
        EXPECT_EQ(cells[i], within ? 1 : 0) << i;
    }
}

using Corners = std::array<std::array<float, 2>, 3>;

static TileTriangle TriangleOf(const Corners& corners)
{
    TileTriangle triangle = {};
    for (int i = 0; i < 3; i++) {
        triangle.corners[i][0] = corners[std::size_t(i)][0];
        triangle.corners[i][1] = corners[std::size_t(i)][1];
    }
    return triangle;
}

// Both ways round, and with either first.
static void ExpectApart(Corners a, Corners b, bool apart)
{
    for (int i = 0; i < 4; i++) {
        EXPECT_EQ(AreApart(TriangleOf(a), TriangleOf(b)), apart) << i;
        EXPECT_EQ(AreApart(TriangleOf(b), TriangleOf(a)), apart) << i;
        std::swap(i % 2 == 0 ? a[0] : b[0], i % 2 == 0 ? a[1] : b[1]);
    }
}

static constexpr Corners lower = {{{0, 0}, {4, 0}, {0, 4}}};

TEST(AreApart, WhenTheyTouchOrDoNotMeet)
{
    ExpectApart(lower, {{{4, 0}, {4, 4}, {0, 4}}}, true); // a common edge
    ExpectApart(lower, {{{4, 0}, {8, 0}, {8, 4}}}, true); // a common corner
    ExpectApart(lower, {{{3, 3}, {4, 4}, {3, 4}}}, true); // within the rectangle of the other
    ExpectApart(lower, {{{9, 9}, {9, 8}, {8, 9}}}, true);
}

static constexpr float part = float(pixel / 32);

// Rounding may move its corners over the edge.
TEST(AreApart, NotWhenTheyTouchWithoutACommonCorner)
{
    ExpectApart(lower, {{{3, 1}, {1, 3}, {4, 4}}}, false);
    ExpectApart(lower, {{{3, 1}, {4, 1}, {4, 4}}}, false);
    ExpectApart(lower, {{{3, 1 + part}, {1, 3 + part}, {4, 4}}}, false);
    ExpectApart(lower, {{{3, 1 + 16 * part}, {1, 3 + 16 * part}, {4, 4}}}, true);
}

// Rounding may turn it round.
TEST(AreApart, NotWhenOneIsNearlyALineAlongTheOther)
{
    ExpectApart(lower, {{{4, 0}, {0, 4}, {2 + part, 2}}}, false);
    ExpectApart(lower, {{{4, 0}, {0, 4}, {2 + 16 * part, 2}}}, true);
    ExpectApart(lower, {{{4, 0}, {0, 4}, {2, 2}}}, false);
}

TEST(AreApart, NotWhenTheyOverlap)
{
    ExpectApart(lower, lower, false);
    ExpectApart(lower, {{{1, 1}, {2, 1}, {1, 2}}}, false);       // within
    ExpectApart(lower, {{{-1, 1}, {9, 1}, {9, 2}}}, false);      // through, without a corner inside
    ExpectApart(lower, {{{4, 0}, {0, 4}, {1.5F, 1.5F}}}, false); // a common edge, the same side
}

} // namespace korvane
