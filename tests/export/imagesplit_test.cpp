#include "export/imagesplit.h"

#include "tests/support/imagetriangles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

static std::vector<int> IndicesOf(const std::vector<TileTriangle>& triangles)
{
    std::vector<int> indices;
    for (const TileTriangle& triangle : triangles) {
        indices.push_back(triangle.index);
    }
    return indices;
}

struct Indices {
    std::vector<int> opaque, rest;
    bool operator==(const Indices&) const = default;
};

// In tile 0, in the order in which they stand.
static Indices Split(const std::vector<ImageTriangle>& triangles)
{
    const SplitTriangles split = SplitOrder(OrderOf(triangles), 0, DrawnOf(triangles));
    return {IndicesOf(split.opaque), IndicesOf(split.rest)};
}

TEST(SplitOrder, TurnsWhatIsOpaqueRound)
{
    EXPECT_EQ(Split({SmallTriangle(20, 20, 0), SmallTriangle(20, 20, 1), SmallTriangle(20, 20, 0)}),
              (Indices{{2, 1, 0}, {}}));
}

TEST(SplitOrder, LeavesWhatIsClear)
{
    EXPECT_EQ(Split({Clear(SmallTriangle(20, 20, 0)), Clear(SmallTriangle(20, 20, 1))}),
              (Indices{{}, {0, 1}}));
}

TEST(SplitOrder, TakesWhatHidesAClearOneFromBehindIt)
{
    EXPECT_EQ(Split({Clear(SmallTriangle(20, 20, 0, 0)), SmallTriangle(20, 20, 1, 0.1F)}),
              (Indices{{1}, {0}}));
}

// Equal depths, or those that a depth buffer may round to equal ones, and lesser ones.
TEST(SplitOrder, LeavesWhatDoesNotSurelyHideAClearOne)
{
    for (const float depth : {0.0F, 1e-6F, -0.1F}) {
        EXPECT_EQ(Split({Clear(SmallTriangle(20, 20, 0, 0)), SmallTriangle(20, 20, 1, depth)}),
                  (Indices{{}, {0, 1}}))
            << depth;
    }
    ImageTriangle leaning = SmallTriangle(20, 20, 1, 0.1F);
    leaning.vertices[2][2] = -0.1F;
    EXPECT_EQ(Split({Clear(SmallTriangle(20, 20, 0, 0)), leaning}), (Indices{{}, {0, 1}}));
}

TEST(SplitOrder, TakesWhatLiesBesideAClearOne)
{
    EXPECT_EQ(Split({Clear(SmallTriangle(20, 20, 0)), SmallTriangle(24, 20, 1)}),
              (Indices{{1}, {0}}));
}

// The second one has to wait for the first, and the third for the second.
TEST(SplitOrder, LeavesWhatDoesNotSurelyHideAnOpaqueOneThatIsLeft)
{
    EXPECT_EQ(Split({Clear(SmallTriangle(20, 20, 0)), SmallTriangle(22, 20, 1),
                     SmallTriangle(25, 20, 2)}),
              (Indices{{}, {0, 1, 2}}));
}

// Of many in a cell only the depth is kept in mind.
TEST(SplitOrder, GoesByTheDepthOfManyClearOnes)
{
    std::vector<ImageTriangle> triangles(20, Clear(SmallTriangle(24, 20, 0)));
    triangles.push_back(SmallTriangle(20, 20, 1, 0.1F)); // in cells of the others, before them
    triangles.push_back(SmallTriangle(20, 20, 1, -0.1F));
    const Indices split = Split(triangles);
    EXPECT_EQ(split.opaque, std::vector{20});
    EXPECT_EQ(split.rest.back(), 21);
}

// On a grid that is finer than the pixels.
static bool Overlap(const ImageTriangle& a, const ImageTriangle& b)
{
    for (int k = 0; k < 40 * 40; k++) {
        const double x = a.vertices[0][0] + (k % 40 + 0.5) * pixel / 2;
        const double y = a.vertices[0][1] + (k / 40 + 0.5) * pixel / 2;
        if (Covers(a, x, y) && Covers(b, x, y)) {
            return true;
        }
    }
    return false;
}

// Random ones of up to 15 pixels, some of them clear.
static std::vector<ImageTriangle> RandomTriangles(int number)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> place(0, 100);
    std::uniform_real_distribution<double> size(1, 15);
    std::uniform_real_distribution<float> depth(-0.3F, 0.3F);
    std::vector<ImageTriangle> triangles;
    for (int i = 0; i < number; i++) {
        const double left = -0.625 + place(random) * pixel;
        const double bottom = 0.5 - place(random) * pixel;
        ImageTriangle triangle = MakeTriangle(left, bottom, left + size(random) * pixel,
                                              bottom + size(random) * pixel, float(i % 4));
        const float middle = 2.0F * float(i) / float(number) - 1;
        for (float* corner : triangle.vertices) {
            corner[2] = middle + depth(random);
        }
        triangles.push_back(i % 3 == 0 ? Clear(triangle) : triangle);
    }
    return triangles;
}

static float NearestOf(const ImageTriangle& triangle)
{
    return std::max({triangle.vertices[0][2], triangle.vertices[1][2], triangle.vertices[2][2]});
}

static float FarthestOf(const ImageTriangle& triangle)
{
    return std::min({triangle.vertices[0][2], triangle.vertices[1][2], triangle.vertices[2][2]});
}

TEST(SplitOrder, BringsForwardOnlyWhatHidesAllThatItOverlaps)
{
    const std::vector<ImageTriangle> triangles = RandomTriangles(600);
    const Indices split = Split(triangles);
    EXPECT_TRUE(std::is_sorted(split.opaque.rbegin(), split.opaque.rend()));
    EXPECT_TRUE(std::is_sorted(split.rest.begin(), split.rest.end()));
    EXPECT_EQ(split.opaque.size() + split.rest.size(), triangles.size());
    EXPECT_GT(split.opaque.size(), 100U);
    int overlapping = 0;
    for (const int first : split.opaque) {
        EXPECT_NE(first % 3, 0); // not a clear one
        for (const int left : split.rest) {
            const ImageTriangle& nearer = triangles[std::size_t(first)];
            const ImageTriangle& farther = triangles[std::size_t(left)];
            if (left < first && Overlap(nearer, farther)) {
                EXPECT_GT(FarthestOf(nearer), NearestOf(farther)) << first << " " << left;
                overlapping++;
            }
        }
    }
    EXPECT_GT(overlapping, 200);
}

} // namespace korvane
