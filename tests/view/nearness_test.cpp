#include "view/nearness.h"

#include "tests/support/shapes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <utility>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

static constexpr float nan = std::numeric_limits<float>::quiet_NaN();
static constexpr float untouched = 9;

// A stripe through the points of a shape in their order.
struct TestStripe {
    TestStripe(const Points& points) : shape(MakeRawShape(points, {}))
    {
        for (int i = 0; i < int(points.size()); i++) {
            order.push_back(i);
        }
        stripe = {int(order.size()), order.data(), shape.get()};
    }

    OwnedShape shape;
    std::vector<int> order;
    Stripe stripe;
};

// The depth at which the mouse meets the stripe, or `untouched`.
static float DepthOnStripe(const Points& points, float x, float y)
{
    const TestStripe test(points);
    float mouse[3] = {x, y, untouched};
    const bool near = StripeNear2d(mouse, &test.stripe);
    EXPECT_EQ(near, mouse[2] != untouched);
    EXPECT_EQ(mouse[0], x);
    EXPECT_EQ(mouse[1], y);
    return mouse[2];
}

static float DepthInTriangle(const Points& corners, float x, float y)
{
    const OwnedShape shape = MakeRawShape(corners, {});
    const Triangle triangle = {{0, 1, 2}, {0, 0, 0}, shape.get()};
    float mouse[3] = {x, y, untouched};
    const bool inside = InTheTriangle2dSetZ(mouse, &triangle);
    EXPECT_EQ(inside, mouse[2] != untouched);
    return mouse[2];
}

static bool IsNear(float mx, float my, float px, float py)
{
    const float mouse[3] = {mx, my, 0};
    const float point[3] = {px, py, 5}; // its depth does not matter
    return PointNear2d(mouse, point);
}

TEST(PointNear2d, IsStrictAtItsDistance)
{
    EXPECT_FALSE(IsNear(0.016F, 0, 0, 0)); // the float is a little more than 0.016
    EXPECT_TRUE(IsNear(std::nextafter(0.016F, 0.0F), 0, 0, 0)); // and this a little less
    EXPECT_TRUE(IsNear(0.1F, 0.1F, 0.1F, 0.1F));
}

TEST(PointNear2d, MeasuresTheDistanceInBothDirections)
{
    EXPECT_TRUE(IsNear(0.01F, 0.01F, 0, 0));    // 0.0141
    EXPECT_FALSE(IsNear(0.012F, 0.012F, 0, 0)); // 0.0170
    EXPECT_TRUE(IsNear(-0.01F, 0.01F, 0, 0));
    EXPECT_FALSE(IsNear(0.6F, 0, 0, 0)); // rejected at once
    EXPECT_FALSE(IsNear(0, -0.6F, 0, 0));
}

TEST(StripeNear2d, FindsAHorizontalSegmentAndItsDepth)
{
    const Points points = {{0, 0.1F, 1}, {0.4F, 0.1F, 3}};
    EXPECT_FLOAT_EQ(DepthOnStripe(points, 0.1F, 0.11F), 1.5F); // a quarter of the way
    EXPECT_FLOAT_EQ(DepthOnStripe(points, 0.3F, 0.1F), 2.5F);
    EXPECT_EQ(DepthOnStripe(points, 0.2F, 0.117F), untouched);
}

TEST(StripeNear2d, FindsAVerticalSegmentAndItsDepth)
{
    const Points points = {{0.1F, 0, 1}, {0.1F, 0.4F, 3}};
    EXPECT_FLOAT_EQ(DepthOnStripe(points, 0.11F, 0.1F), 1.5F);
    EXPECT_EQ(DepthOnStripe(points, 0.117F, 0.2F), untouched);
}

TEST(StripeNear2d, FindsASlantedSegmentAtTheFootOfThePerpendicular)
{
    // The foot of (0.11, 0.09) on the line y = x is (0.1, 0.1), a quarter of the way; 0.0141 away.
    const Points points = {{0, 0, 1}, {0.4F, 0.4F, 3}};
    EXPECT_FLOAT_EQ(DepthOnStripe(points, 0.11F, 0.09F), 1.5F);
    EXPECT_EQ(DepthOnStripe(points, 0.112F, 0.088F), untouched); // 0.0170 away
}

TEST(StripeNear2d, LooksOnlyInsideTheCircleOverASegment)
{
    const Points points = {{0, 0, 1}, {0.4F, 0, 3}};
    EXPECT_EQ(DepthOnStripe(points, 0, 0), untouched); // on the circle is not inside
    EXPECT_EQ(DepthOnStripe(points, 0.4F, 0), untouched);
    EXPECT_EQ(DepthOnStripe(points, -0.01F, 0), untouched);                     // beyond its end
    EXPECT_EQ(DepthOnStripe({{0.1F, 0, 1}, {0.1F, 0, 3}}, 0.1F, 0), untouched); // no length
}

TEST(StripeNear2d, LetsTheFirstNearSegmentDecide)
{
    // The second segment leads back over the first one, nearer to the viewer.
    const Points points = {{0, 0, 1}, {0.4F, 0, 1}, {0, 0, 2}, {0, 0.4F, 2}};
    EXPECT_FLOAT_EQ(DepthOnStripe(points, 0.2F, 0), 1);
    EXPECT_FLOAT_EQ(DepthOnStripe(points, 0, 0.2F), 2); // the third: the first two are far
}

TEST(StripeNear2d, TakesTheFirstEndsDepthWhenThereIsNone)
{
    EXPECT_EQ(DepthOnStripe({{0, 0, 1}, {0.4F, 0, nan}}, 0.1F, 0), 1);
}

TEST(StripeNear2d, FindsNothingOnAStripeWithoutSegments)
{
    EXPECT_EQ(DepthOnStripe({{0, 0, 1}}, 0, 0), untouched);
}

TEST(InTheTriangle2dSetZ, InterpolatesTheDepthOfThePlane)
{
    const Points corners = {{0, 0, 1}, {1, 0, 2}, {0, 1, 5}}; // z = 1 + x + 4 y
    EXPECT_FLOAT_EQ(DepthInTriangle(corners, 0.25F, 0.5F), 3.25F);
    EXPECT_FLOAT_EQ(DepthInTriangle({corners[0], corners[2], corners[1]}, 0.25F, 0.5F),
                    3.25F); // whichever way it runs
}

TEST(InTheTriangle2dSetZ, CountsTheBorderAsInside)
{
    const Points corners = {{0, 0, 1}, {1, 0, 2}, {0, 1, 5}};
    EXPECT_FLOAT_EQ(DepthInTriangle(corners, 0.5F, 0), 1.5F);
    EXPECT_FLOAT_EQ(DepthInTriangle(corners, 0.5F, 0.5F), 3.5F);
    EXPECT_FLOAT_EQ(DepthInTriangle(corners, 0, 1), 5);
    const Points clockwise = {corners[0], corners[2], corners[1]};
    EXPECT_FLOAT_EQ(DepthInTriangle(clockwise, 0.5F, 0), 1.5F);
    EXPECT_FLOAT_EQ(DepthInTriangle(clockwise, 0.5F, 0.5F), 3.5F);
}

TEST(InTheTriangle2dSetZ, RejectsWhatIsOutside)
{
    const Points corners = {{0, 0, 1}, {1, 0, 2}, {0, 1, 5}};
    EXPECT_EQ(DepthInTriangle(corners, 0.6F, 0.6F), untouched); // inside its box
    EXPECT_EQ(DepthInTriangle(corners, -0.1F, 0.5F), untouched);
    EXPECT_EQ(DepthInTriangle(corners, 1.1F, 0), untouched);
    EXPECT_EQ(DepthInTriangle(corners, 0.5F, -0.1F), untouched);
    EXPECT_EQ(DepthInTriangle(corners, 0, 1.1F), untouched);
}

TEST(InTheTriangle2dSetZ, TakesTheGreatestDepthOfATriangleSeenEdgeOn)
{
    const Points edgeon = {{0, 0, 1}, {0.5F, 0.5F, 7}, {1, 1, 2}};
    EXPECT_EQ(DepthInTriangle(edgeon, 0.25F, 0.25F), 7);
    EXPECT_EQ(DepthInTriangle(edgeon, 0.25F, 0.5F), untouched);             // not on it
    EXPECT_EQ(DepthInTriangle({{1, 1, 3}, {1, 1, 4}, {1, 1, 2}}, 1, 1), 4); // a single place
}

TEST(InTheTriangle2dSetZ, IsNotHitWhereACornerIsNotANumber)
{
    EXPECT_EQ(DepthInTriangle({{0, 0, 1}, {1, nan, 2}, {0, 1, 5}}, 0.25F, 0.25F), untouched);
}

// Along the common edge of two triangles no place may fall between them.
TEST(InTheTriangle2dSetZ, LeavesNoGapBetweenNeighbours)
{
    const Points left = {{0.1F, 0.3F, 0}, {0.7F, 0.9F, 0}, {0.1F, 0.9F, 0}};
    const Points right = {{0.1F, 0.3F, 0}, {0.7F, 0.3F, 0}, {0.7F, 0.9F, 0}};
    for (int i = 1; i < 1000; i++) {
        const float x = 0.1F + 0.6F * float(i) / 1000;
        const float y = 0.3F + 0.6F * float(i) / 1000;
        EXPECT_TRUE(DepthInTriangle(left, x, y) == 0 || DepthInTriangle(right, x, y) == 0) << i;
    }
}

static int SegmentNearestTo(const Points& points, float x, float y)
{
    const TestStripe test(points);
    const float mouse[2] = {x, y};
    return FindNearestSegment(mouse, &test.stripe);
}

TEST(FindNearestSegment, NamesTheSegmentByItsSecondPoint)
{
    const Points corner = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 2, 0}};
    EXPECT_EQ(SegmentNearestTo(corner, 0.5F, 0.1F), 1);
    EXPECT_EQ(SegmentNearestTo(corner, 0.9F, 0.5F), 2);
    EXPECT_EQ(SegmentNearestTo(corner, 0.4F, 1.5F), 3);
}

TEST(FindNearestSegment, IsNothingOnTheCircleOverASegmentAndOutsideIt)
{
    const Points line = {{0, 0, 0}, {1, 0, 0}};
    EXPECT_EQ(SegmentNearestTo(line, 0.5F, 0.5F), -1);
    EXPECT_EQ(SegmentNearestTo(line, 0.5F, 0.49F), 1);
    EXPECT_EQ(SegmentNearestTo(line, 1, 0), -1);
    EXPECT_EQ(SegmentNearestTo(line, 1.01F, 0), -1);
    EXPECT_EQ(SegmentNearestTo({{0, 0, 0}, {0, 0, 1}}, 0, 0), -1); // a segment seen end-on
}

TEST(FindNearestSegment, TakesTheMagnitudeOfDistancesOnEitherSide)
{
    // right of the upright segment and above the level one; the slanted one is nearer
    EXPECT_EQ(SegmentNearestTo({{-0.5F, -1, 0}, {-0.5F, 1, 0}, {-1, 1, 0}, {1, -1.1F, 0}}, 0, 0),
              3);
    EXPECT_EQ(SegmentNearestTo({{-1, -0.5F, 0}, {1, -0.5F, 0}, {1, -1, 0}, {-1, 1.1F, 0}}, 0, 0),
              3);
    EXPECT_EQ(SegmentNearestTo({{-1, -0.2F, 0}, {1, -0.2F, 0}, {1, 0.1F, 0}, {-1, 0.1F, 0}}, 0, 0),
              3);
}

TEST(FindNearestSegment, MeasuresASlantedSegmentByItsPerpendicular)
{
    // the line y = x lies 0.1 * sqrt(0.5) from (0.5, 0.6), the level one 0.1: the slanted is nearer
    EXPECT_EQ(SegmentNearestTo({{0, 0.7F, 0}, {1, 0.7F, 0}, {0, 0, 0}, {1, 1, 0}}, 0.5F, 0.6F), 3);
    // 0.06 from (0.5, 0.6) the level one is
    EXPECT_EQ(SegmentNearestTo({{0, 0, 0}, {1, 1, 0}, {1, 0.66F, 0}, {0, 0.66F, 0}}, 0.5F, 0.6F),
              3);
}

TEST(FindNearestSegment, KeepsTheFirstOfSegmentsEquallyNear)
{
    EXPECT_EQ(
        SegmentNearestTo({{0, 0.25F, 0}, {1, 0.25F, 0}, {1, -0.25F, 0}, {0, -0.25F, 0}}, 0.5F, 0),
        1);
}

} // namespace korvane
