#include "export/imageorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <random>

namespace korvane
{

static constexpr double pixel = tilespan / tilesize; // in view units

static ImageTriangle MakeTriangle(double left, double bottom, double right, double top,
                                  float color = 0)
{
    ImageTriangle triangle = {};
    const double corners[3][2] = {{left, bottom}, {right, bottom}, {left, top}};
    for (int i = 0; i < 3; i++) {
        triangle.vertices[i][0] = float(corners[i][0]);
        triangle.vertices[i][1] = float(corners[i][1]);
    }
    triangle.front = 1;
    triangle.colors[FRONT_LIGHT] = color;
    return triangle;
}

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

// A small triangle at a place of the first tile, in pixels from its corner.
static ImageTriangle SmallTriangle(double x, double y, float color)
{
    const double left = -0.625 + x * pixel;
    const double top = 0.5 - y * pixel;
    return MakeTriangle(left, top - 4 * pixel, left + 4 * pixel, top, color);
}

// Of tile 0, in the order in which they stand.
static int CountAffordableOf(const std::vector<ImageTriangle>& triangles)
{
    std::vector<int> order(triangles.size());
    std::iota(order.begin(), order.end(), 0);
    return CountAffordable(order, 0, triangles.data(),
                           GetLooks(triangles.data(), int(triangles.size())));
}

// One each, and 20 for each new look.
TEST(CountAffordable, CountsSmallTrianglesAndTheirLooks)
{
    std::vector<ImageTriangle> triangles(stepcost, SmallTriangle(20, 20, 0));
    EXPECT_EQ(CountAffordableOf(triangles), 79980);
    for (std::size_t i = 1; i < triangles.size(); i += 2) {
        triangles[i].colors[FRONT_LIGHT] = 1;
    }
    EXPECT_EQ(CountAffordableOf(triangles), 3810); // 3809 times 21 is less than 80000
}

// One more for every eight of the 64 x 64 cells.
TEST(CountAffordable, CountsWhatATriangleCovers)
{
    EXPECT_EQ(CountAffordableOf(std::vector(200, MakeTriangle(-30, -30, 30, 30))),
              156); // 20 and 155 times 513 is less than 80000
}

TEST(CountAffordable, IsAllWhereThereAreFew)
{
    EXPECT_EQ(CountAffordableOf({}), 0);
    EXPECT_EQ(CountAffordableOf({SmallTriangle(20, 20, 0)}), 1);
}

// In the tile of the upper left corner, which is tile 0.
static std::vector<int> Gather(const std::vector<ImageTriangle>& triangles)
{
    std::vector<int> order(triangles.size());
    std::iota(order.begin(), order.end(), 0);
    GatherLooks(order, 0, triangles.data(), GetLooks(triangles.data(), int(triangles.size())));
    return order;
}

TEST(GatherLooks, TellsWhatTheTrianglesCoverOfTheTile)
{
    const std::vector<ImageTriangle> triangles = {MakeTriangle(-30, -30, 30, 30),
                                                  SmallTriangle(20, 20, 0)};
    std::vector<int> order = {0, 1, 1};
    EXPECT_EQ(GatherLooks(order, 0, triangles.data(), GetLooks(triangles.data(), 2)), 513 + 1 + 1);
}

TEST(GatherLooks, DrawsTrianglesOfOneLookTogetherWhereTheyDoNotOverlap)
{
    EXPECT_EQ(Gather({SmallTriangle(20, 20, 0), SmallTriangle(60, 20, 1), SmallTriangle(100, 20, 0),
                      SmallTriangle(140, 20, 1)}),
              (std::vector<int>{0, 2, 1, 3}));
}

TEST(GatherLooks, KeepsTheOrderOfTrianglesThatOverlap)
{
    EXPECT_EQ(
        Gather({SmallTriangle(20, 20, 0), SmallTriangle(20, 20, 1), SmallTriangle(20, 20, 0)}),
        (std::vector<int>{0, 1, 2}));
    // the last covers the second, which covers the first
    EXPECT_EQ(
        Gather({SmallTriangle(20, 20, 0), SmallTriangle(23, 20, 1), SmallTriangle(26, 20, 0)}),
        (std::vector<int>{0, 1, 2}));
}

// A fifth of a pixel beside the tile, from where a pass moves them in.
TEST(GatherLooks, KeepsTheOrderOfTrianglesJustBesideTheTile)
{
    for (const auto& [x, y] :
         {std::pair{-4.2, 20.0}, {tilesize + 0.2, 20.0}, {20.0, -4.2}, {20.0, tilesize + 0.2}}) {
        EXPECT_EQ(Gather({SmallTriangle(x, y, 0), SmallTriangle(x, y, 1), SmallTriangle(x, y, 0)}),
                  (std::vector<int>{0, 1, 2}))
            << x << " " << y;
    }
}

// For every pixel, in which order it is drawn to by triangles that may reach it.
static std::vector<std::vector<int>> GetPixelOrders(const std::vector<ImageTriangle>& triangles,
                                                    const std::vector<int>& order)
{
    std::vector<std::vector<int>> pixels(std::size_t(tilesize) * tilesize);
    for (const int index : order) {
        const float(*corners)[3] = triangles[std::size_t(index)].vertices;
        const auto place = [](double distance) {
            return std::clamp(int(std::floor(distance / pixel)), 0, tilesize - 1);
        };
        for (int y = place(0.5 - corners[2][1]); y <= place(0.5 - corners[0][1]); y++) {
            for (int x = place(corners[0][0] + 0.625); x <= place(corners[1][0] + 0.625); x++) {
                pixels[std::size_t(y * tilesize + x)].push_back(index);
            }
        }
    }
    return pixels;
}

TEST(GatherLooks, ChangesTheOrderInNoPixel)
{
    std::mt19937 random(3);
    std::uniform_int_distribution<int> place(1, tilesize - 1);
    std::uniform_int_distribution<int> size(1, 30);
    std::uniform_int_distribution<int> look(0, 4);
    std::vector<ImageTriangle> triangles;
    std::vector<int> order;
    for (int i = 0; i < 2000; i++) {
        const double left = -0.625 + place(random) * pixel;
        const double bottom = 0.5 - place(random) * pixel;
        triangles.push_back(MakeTriangle(left, bottom, left + size(random) * pixel,
                                         bottom + size(random) * pixel, float(look(random))));
        order.push_back(i);
    }
    const std::vector<int> gathered = Gather(triangles);
    EXPECT_NE(gathered, order);
    EXPECT_TRUE(std::is_permutation(gathered.begin(), gathered.end(), order.begin(), order.end()));
    EXPECT_EQ(GetPixelOrders(triangles, gathered), GetPixelOrders(triangles, order));
}

TEST(GetLooks, NumbersAreTheSameWhereColorsAndFacingAre)
{
    std::vector<ImageTriangle> triangles = {SmallTriangle(0, 0, 0), SmallTriangle(9, 9, 0),
                                            SmallTriangle(0, 0, 1), SmallTriangle(0, 0, 0),
                                            SmallTriangle(0, 0, 1)};
    triangles[4].front = 0; // its back is not coloured like its front
    const Looks looks = GetLooks(triangles.data(), 5);
    const std::vector<int>& numbers = looks.oftriangle;
    EXPECT_EQ(looks.number, 3);
    EXPECT_EQ(numbers[0], numbers[1]);
    EXPECT_NE(numbers[0], numbers[2]);
    EXPECT_EQ(numbers[0], numbers[3]);
    EXPECT_NE(numbers[2], numbers[4]);
}

TEST(GetLook, TurnsABackThatIsColoredLikeItsFront)
{
    ImageTriangle triangle = {};
    triangle.front = 0;
    EXPECT_TRUE(GetLook(triangle).front);
    EXPECT_EQ(GetLook(triangle).direction, -1);
    triangle.colors[BACK_ACUITY] = 0.5F;
    EXPECT_FALSE(GetLook(triangle).front);
    EXPECT_EQ(GetLook(triangle).direction, 1);
    triangle.front = 1;
    EXPECT_TRUE(GetLook(triangle).front);
    EXPECT_EQ(GetLook(triangle).direction, 1);
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
