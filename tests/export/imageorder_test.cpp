#include "export/imageorder.h"

#include "tests/support/imagetriangles.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace korvane
{

using testing::MakeTriangle;
using testing::pixel;

// The tiles of a triangle.
static std::vector<int> TilesOf(const ImageTriangle& triangle)
{
    const int zindex = 0;
    const TileOrders orders = GetTileOrders(GetTileSets(&triangle, 1), &zindex);
    std::vector<int> tiles;
    for (int tile = 0; tile < tilenumber; tile++) {
        if (!orders[std::size_t(tile)].empty()) {
            tiles.push_back(tile);
        }
    }
    return tiles;
}

using Tiles = std::vector<int>;

// The image reaches from -0.625 to 0.625 and from 0.5 down to -0.5.
TEST(GetTileOrders, CountsTilesFromTheUpperLeft)
{
    EXPECT_EQ(TilesOf(MakeTriangle(-0.5, 0.3, -0.45, 0.4)), Tiles{0});
    EXPECT_EQ(TilesOf(MakeTriangle(0.5, 0.3, 0.55, 0.4)), Tiles{4});
    EXPECT_EQ(TilesOf(MakeTriangle(-0.5, 0.05, -0.45, 0.2)), Tiles{5});
    EXPECT_EQ(TilesOf(MakeTriangle(0.5, -0.4, 0.55, -0.3)), Tiles{19});
}

TEST(GetTileOrders, PutsATriangleIntoEveryTileThatItMayTouchInAPass)
{
    EXPECT_EQ(TilesOf(MakeTriangle(-0.5, 0.2, -0.3, 0.3)), (Tiles{0, 1, 5, 6}));
    // less than a pixel from the border between the columns, which the passes may move it over
    EXPECT_EQ(TilesOf(MakeTriangle(-0.5, 0.3, -0.375 - 0.4 * pixel, 0.4)), (Tiles{0, 1}));
    EXPECT_EQ(TilesOf(MakeTriangle(-0.5, 0.3, -0.375 - 3 * pixel, 0.4)), (Tiles{0}));
    EXPECT_EQ(TilesOf(MakeTriangle(-30, -30, 30, 30)).size(), 20U);
}

TEST(GetTileOrders, LeavesOutWhatLiesBesideTheImage)
{
    EXPECT_EQ(TilesOf(MakeTriangle(-0.9, 0, -0.7, 0.1)), Tiles{});
    EXPECT_EQ(TilesOf(MakeTriangle(0.7, 0, 0.9, 0.1)), Tiles{});
    EXPECT_EQ(TilesOf(MakeTriangle(0, 0.6, 0.1, 0.7)), Tiles{});
    EXPECT_EQ(TilesOf(MakeTriangle(0, -0.7, 0.1, -0.6)), Tiles{});
    EXPECT_EQ(TilesOf(MakeTriangle(1e30, 0, 2e30, 0.1)), Tiles{});
    constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(TilesOf(MakeTriangle(nowhere, nowhere, nowhere, nowhere)), Tiles{});
}

TEST(GetTileOrders, KeepsTheDrawingOrder)
{
    const std::vector<ImageTriangle> triangles(4, MakeTriangle(-0.5, 0.3, -0.45, 0.4));
    const std::vector<int> zindex = {2, 0, 3, 1};
    EXPECT_EQ(GetTileOrders(GetTileSets(triangles.data(), 4), zindex.data())[0], zindex);
}

// The depth of an image whose only triangle has a corner there.
static double DepthOf(float z)
{
    ImageTriangle triangle = MakeTriangle(0, 0, 0.1, 0.1);
    triangle.vertices[1][2] = z;
    return GetHalfDepth(GetTileSets(&triangle, 1), &triangle);
}

TEST(GetHalfDepth, ReachesBeyondEveryTriangleButNoFartherThanTheLimit)
{
    EXPECT_GE(DepthOf(0), 2);
    EXPECT_LE(DepthOf(0), 3);
    EXPECT_GT(DepthOf(-70), 70);
    EXPECT_LT(DepthOf(-70), 80);
    EXPECT_GT(DepthOf(19000), 19000);
    EXPECT_EQ(DepthOf(1e6F), 20000);
    ImageTriangle beside = MakeTriangle(3, 3, 4, 4); // not in the image
    beside.vertices[0][2] = 70;
    EXPECT_LE(GetHalfDepth(GetTileSets(&beside, 1), &beside), 3);
}

} // namespace korvane
