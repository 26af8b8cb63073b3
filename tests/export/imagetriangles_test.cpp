#include "export/imagetriangles.h"

#include "geometry/shapegeometry.h"
#include "tests/support/paintedshapes.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <random>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

// What is collected of a shape as it stands.
static std::vector<ImageTriangle> Collect(const OwnedShape& shape)
{
    std::vector<ImageTriangle> triangles(std::size_t(shape->trianglenumber));
    triangles.resize(std::size_t(AddTrianglesOfShape(triangles.data(), 0, shape.get())));
    return triangles;
}

// A square that the viewer sees from the front or from behind, shown as `visibility` says.
static std::size_t CountShown(int visibility, bool front)
{
    OwnedShape square = front ? MakeFlatShape({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}})
                              : MakeFlatShape({{0, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 0, 0}});
    square->sides[0].visibility = visibility;
    return Collect(square).size();
}

TEST(AddTrianglesOfShape, DropsWhatASideDoesNotShow)
{
    EXPECT_EQ(CountShown(VISIBLE_NOT, true), 0U);
    EXPECT_EQ(CountShown(VISIBLE_NOT, false), 0U);
    EXPECT_EQ(CountShown(VISIBLE_FRONT, true), 2U);
    EXPECT_EQ(CountShown(VISIBLE_FRONT, false), 0U);
    EXPECT_EQ(CountShown(VISIBLE_BACK, true), 0U);
    EXPECT_EQ(CountShown(VISIBLE_BACK, false), 2U);
    EXPECT_EQ(CountShown(VISIBLE_BOTH, true), 2U);
    EXPECT_EQ(CountShown(VISIBLE_BOTH, false), 2U);
}

// Seen on edge it does not face the viewer.
TEST(AddTrianglesOfShape, CountsATriangleSeenOnEdgeAsABack)
{
    OwnedShape wall = MakeFlatShape({{0, 0, 0}, {0, 1, 0}, {0, 1, 1}});
    ASSERT_EQ(wall->trianglenormals[0][2], 0);
    ASSERT_EQ(Collect(wall).size(), 1U);
    EXPECT_EQ(Collect(wall)[0].front, 0);
    wall->sides[0].visibility = VISIBLE_FRONT;
    EXPECT_EQ(Collect(wall).size(), 0U);
    wall->sides[0].visibility = VISIBLE_BACK;
    EXPECT_EQ(Collect(wall).size(), 1U);
}

TEST(AddTrianglesOfShape, TakesCornersNormalsFacingAndColors)
{
    OwnedShape shape = MakeFlatShape({{0, 0, 3}, {1, 0, 3}, {0, 1, 3}});
    for (int i = 0; i < colornumber; i++) {
        shape->sides[0].colors[i] = float(i) / 32;
    }
    std::vector<ImageTriangle> triangles(3);
    EXPECT_EQ(AddTrianglesOfShape(triangles.data(), 2, shape.get()), 3); // behind two others
    const ImageTriangle& triangle = triangles[2];
    EXPECT_EQ(triangle.front, 1);
    for (int i = 0; i < 3; i++) {
        const float* point = shape->points[shape->triangles[0].points[i]];
        EXPECT_TRUE(std::equal(point, point + 3, triangle.vertices[i]));
        EXPECT_EQ(triangle.normals[i][0], 0);
        EXPECT_EQ(triangle.normals[i][1], 0);
        EXPECT_EQ(triangle.normals[i][2], 1);
    }
    EXPECT_TRUE(std::equal(triangle.colors, triangle.colors + colornumber, shape->sides[0].colors));
}

TEST(EstimateTriangles, CountsNineForEachOfARoundedShapeAndOneForEachOfAPlainOne)
{
    StartEmptyScene();
    for (int i = 0; i < 3; i++) {
        AddToScene(Square(), "square" + std::to_string(i)); // two triangles, eighteen when rounded
    }
    showtable[0] = SHOW_ROUNDED;
    showtable[1] = SHOW_PLAIN;
    showtable[2] = SHOW_NOTHING;
    EXPECT_EQ(EstimateTriangles(), 9 * 18 + 18);
    StartEmptyScene();
    EXPECT_EQ(EstimateTriangles(), 0);
}

TEST(SetTriangleKeys, AddsTheDepthsOfTheCorners)
{
    std::array<ImageTriangle, 2> triangles = {};
    triangles[0].vertices[0][2] = 1;
    triangles[0].vertices[1][2] = 2;
    triangles[0].vertices[2][2] = -4.5F;
    triangles[1].vertices[2][2] = 8;
    float keys[2];
    int order[2];
    SetTriangleKeys(triangles.data(), 2, keys, order);
    EXPECT_EQ(keys[0], -1.5F);
    EXPECT_EQ(keys[1], 8);
    EXPECT_EQ(order[0], 0);
    EXPECT_EQ(order[1], 1);
}

class SetTriangleSequenceTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        cisign = 1;
    }
    void TearDown() override
    {
        cisign = 0;
    }

    // The order of the keys' places after sorting.
    static std::vector<int> Sort(std::vector<float>& keys)
    {
        std::vector<int> order(keys.size());
        std::iota(order.begin(), order.end(), 0);
        SetTriangleSequence(keys.data(), order.data(), int(keys.size()));
        return order;
    }

    static std::vector<int> GetOrder(std::vector<float> keys)
    {
        return Sort(keys);
    }
};

using Order = std::vector<int>;

TEST_F(SetTriangleSequenceTest, SortsUpToThreeByExchange)
{
    EXPECT_EQ(GetOrder({}), Order{});
    EXPECT_EQ(GetOrder({5}), Order{0});
    EXPECT_EQ(GetOrder({1, 2}), (Order{0, 1}));
    EXPECT_EQ(GetOrder({2, 1}), (Order{1, 0}));
    EXPECT_EQ(GetOrder({1, 1, 1}), (Order{0, 1, 2})); // not greater: not exchanged
    // the first exchange takes the 2 in front to the end, behind its equal
    EXPECT_EQ(GetOrder({2, 2, 1}), (Order{2, 1, 0}));
}

TEST_F(SetTriangleSequenceTest, TakesTheRightRunFirstOnEqualKeys)
{
    EXPECT_EQ(GetOrder({1, 1, 1, 1}), (Order{2, 3, 0, 1}));
    // halves of 2 and 3
    EXPECT_EQ(GetOrder({1, 1, 1, 1, 1}), (Order{2, 3, 4, 0, 1}));
    // halves of 4, each sorted from halves of 2
    EXPECT_EQ(GetOrder({1, 1, 1, 1, 1, 1, 1, 1}), (Order{6, 7, 4, 5, 2, 3, 0, 1}));
    // 3 and 7 | 3 and 5: the right 3, the left 3, 5, 7
    EXPECT_EQ(GetOrder({7, 3, 5, 3}), (Order{3, 1, 2, 0}));
}

TEST_F(SetTriangleSequenceTest, SortsManyAndMovesTheIndicesAlong)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<int> number(-500, 500);
    for (const int count : {4, 7, 100, 1001, 4096}) {
        std::vector<float> keys(std::size_t(count), 0);
        std::generate(keys.begin(), keys.end(), [&] { return float(number(random)); });
        const std::vector<float> before = keys;
        Order order = Sort(keys);
        EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end())) << count;
        for (std::size_t i = 0; i < order.size(); i++) {
            ASSERT_EQ(keys[i], before[std::size_t(order[i])]) << count;
        }
        std::sort(order.begin(), order.end());
        for (int i = 0; i < count; i++) {
            ASSERT_EQ(order[std::size_t(i)], i) << count;
        }
    }
}

TEST_F(SetTriangleSequenceTest, LeavesAllAsItIsOnceTheImageIsCancelled)
{
    cisign = 0;
    EXPECT_EQ(GetOrder({2, 1}), (Order{0, 1}));
    EXPECT_EQ(GetOrder({5, 4, 3, 2, 1}), (Order{0, 1, 2, 3, 4}));
}

} // namespace korvane
