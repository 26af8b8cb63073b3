#include "export/imagegathering.h"

#include "tests/support/imagetriangles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

struct Gathered {
    std::vector<TilePart> parts;
    std::int64_t cost;
};

// In tile 0, in the order in which they stand.
static Gathered GatherInto(const std::vector<ImageTriangle>& triangles)
{
    const DrawnTriangles drawn = DrawnOf(triangles);
    Gathered gathered = {};
    gathered.cost = GatherLooks(GetTileTriangles(OrderOf(triangles), 0, drawn),
                                drawn.looks.states.size(), true, gathered.parts);
    return gathered;
}

static std::vector<std::size_t> SizesOf(const std::vector<TilePart>& parts)
{
    std::vector<std::size_t> sizes;
    for (const TilePart& part : parts) {
        sizes.push_back(part.triangles.size());
        EXPECT_TRUE(part.nearestfirst);
    }
    return sizes;
}

using Sizes = std::vector<std::size_t>;

TEST(GatherLooks, MakesNoPartOfNothing)
{
    const Gathered gathered = GatherInto({});
    EXPECT_TRUE(gathered.parts.empty());
    EXPECT_EQ(gathered.cost, 0);
}

// One each, and 20 for each new look.
TEST(GatherLooks, CutsPartsBySmallTrianglesAndTheirLooks)
{
    std::vector<ImageTriangle> triangles(stepcost, SmallTriangle(20, 20, 0));
    EXPECT_EQ(SizesOf(GatherInto(triangles).parts), (Sizes{79980, 20}));
    triangles.resize(8000);
    for (std::size_t i = 1; i < triangles.size(); i += 2) {
        triangles[i].colors[FRONT_LIGHT] = 1;
    }
    EXPECT_EQ(SizesOf(GatherInto(triangles).parts),
              (Sizes{3810, 3810, 380})); // 3809 times 21 is less than 80000
}

// One more for every eight of the 64 x 64 cells.
TEST(GatherLooks, CutsPartsByWhatTheTrianglesCover)
{
    const std::vector<ImageTriangle> triangles(200, MakeTriangle(-30, -30, 30, 30));
    const Gathered gathered = GatherInto(triangles);
    EXPECT_EQ(SizesOf(gathered.parts), (Sizes{156, 44})); // 20 and 155 times 513 is less than 80000
    EXPECT_EQ(gathered.cost, 200 * 513);
}

TEST(GatherLooks, AddsBehindThePartsThatAreThere)
{
    const std::vector<ImageTriangle> triangles = {SmallTriangle(20, 20, 0)};
    const DrawnTriangles drawn = DrawnOf(triangles);
    std::vector<TilePart> parts = {{{7}, true}};
    GatherLooks(GetTileTriangles({0}, 0, drawn), 1, false, parts);
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(parts[0].triangles, std::vector{7});
    EXPECT_EQ(parts[1].triangles, std::vector{0});
    EXPECT_FALSE(parts[1].nearestfirst);
}

static std::vector<int> Gather(const std::vector<ImageTriangle>& triangles)
{
    return GatherInto(triangles).parts.front().triangles;
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

// Neighbours on a surface, which share the cells at their common edge.
TEST(GatherLooks, DrawsTrianglesOfOneLookTogetherWhereTheyOnlyTouch)
{
    EXPECT_EQ(Gather({SmallTriangle(20, 20, 0), SmallTriangle(24, 20, 1), SmallTriangle(28, 20, 0),
                      SmallTriangle(32, 20, 1)}),
              (std::vector<int>{0, 2, 1, 3}));
}

static ImageTriangle NarrowTriangle(double x, float look)
{
    const double left = -0.625 + x * pixel;
    return MakeTriangle(left, 0.5 - 23 * pixel, left + 0.2 * pixel, 0.5 - 21 * pixel, look);
}

// A group of a cell has eight triangles at most.
TEST(GatherLooks, KeepsTheOrderOfManyInACell)
{
    std::vector<ImageTriangle> triangles;
    for (int i = 0; i < 12; i++) {
        triangles.push_back(NarrowTriangle(20 + 0.3 * i, float(i % 2)));
    }
    triangles.push_back(NarrowTriangle(20, 0)); // over the first
    EXPECT_EQ(Gather(triangles), (std::vector<int>{0, 2, 4, 6, 1, 3, 5, 7, 9, 11, 8, 10, 12}));
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

// For the middle of every pixel, which triangles are drawn over it, and in which order.
static std::vector<std::vector<int>> GetPixelOrders(const std::vector<ImageTriangle>& triangles,
                                                    const std::vector<int>& order)
{
    std::vector<std::vector<int>> pixels(std::size_t(tilesize) * tilesize);
    for (const int index : order) {
        for (std::size_t i = 0; i < pixels.size(); i++) {
            const double x = -0.625 + (double(i % tilesize) + 0.5) * pixel;
            const double y = 0.5 - (double(i / tilesize) + 0.5) * pixel;
            if (Covers(triangles[std::size_t(index)], x, y)) {
                pixels[i].push_back(index);
            }
        }
    }
    return pixels;
}

TEST(GatherLooks, ChangesTheOrderInNoPixel)
{
    std::mt19937 random(3);
    std::uniform_int_distribution<int> place(1, 60);
    std::uniform_int_distribution<int> size(1, 9);
    std::uniform_int_distribution<int> look(0, 4);
    std::vector<ImageTriangle> triangles;
    for (int i = 0; i < 600; i++) {
        const double left = -0.625 + place(random) * pixel;
        const double bottom = 0.5 - place(random) * pixel;
        triangles.push_back(MakeTriangle(left, bottom, left + size(random) * pixel,
                                         bottom + size(random) * pixel, float(look(random))));
    }
    const std::vector<int> order = OrderOf(triangles);
    const std::vector<int> gathered = Gather(triangles);
    EXPECT_NE(gathered, order);
    EXPECT_TRUE(std::is_permutation(gathered.begin(), gathered.end(), order.begin(), order.end()));
    EXPECT_EQ(GetPixelOrders(triangles, gathered), GetPixelOrders(triangles, order));
}

} // namespace korvane
