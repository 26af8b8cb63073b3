#include "scene/locate.h"

#include "tests/support/shapes.h"

#include <gtest/gtest.h>

namespace korvane
{

using namespace korvane::testing;

// A square (4 points, 1 stripe, 1 side) and then a cube (8 points, 12 stripes, 6 sides).
class Locate : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyScene();
        AddToScene(Square(), "square");
        AddToScene(Cube(), "cube");
    }
};

static void ExpectPlace(const Location& place, int shape, int index)
{
    EXPECT_EQ(place.shape, shape);
    EXPECT_EQ(place.index, index);
}

TEST_F(Locate, GivesThePlaceOfAPointInTheActiveList)
{
    EXPECT_EQ(GetActivePoint({0, 0}), 0);
    EXPECT_EQ(GetActivePoint({0, 3}), 3);
    EXPECT_EQ(GetActivePoint({1, 0}), 4); // behind the square's four
    EXPECT_EQ(GetActivePoint({1, 7}), 11);
}

TEST_F(Locate, FindsTheFirstShapeWhoseRunningSumExceedsTheIndex)
{
    ExpectPlace(LocatePoint(0), 0, 0);
    ExpectPlace(LocatePoint(3), 0, 3);
    ExpectPlace(LocatePoint(4), 1, 0);
    ExpectPlace(LocatePoint(11), 1, 7);
    ExpectPlace(LocateStripe(0), 0, 0);
    ExpectPlace(LocateStripe(12), 1, 11);
    ExpectPlace(LocateSide(0), 0, 0);
    ExpectPlace(LocateSide(6), 1, 5);
}

TEST_F(Locate, FindsNothingOutsideTheShapes)
{
    ExpectPlace(LocatePoint(12), -1, -1);
    ExpectPlace(LocatePoint(-1), -1, -1);
    ExpectPlace(LocateStripe(13), -1, -1);
    ExpectPlace(LocateSide(7), -1, -1);
}

} // namespace korvane
