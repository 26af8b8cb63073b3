#include "view/shownshapes.h"

#include "scene/model.h"
#include "tests/support/shapes.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

#include <limits>

namespace korvane
{

using namespace korvane::testing;

class ShownShapes : public ::testing::Test
{
protected:
    void SetUp() override
    {
        DeleteAllShapes();
    }

    void TearDown() override
    {
        DeleteAllShapes();
    }

    // Adds a shape whose projected centre lies at a depth.
    static void Add(OwnedShape shape, float depth, int state = SHOW_PLAIN)
    {
        AddShape(shape.release());
        showtable[shapenumber - 1] = state;
        shapest[shapenumber - 1]->center[2] = depth;
    }

    static std::vector<int> GetOrder()
    {
        std::vector<int> order;
        for (const ShownShape& shown : GetShownShapes()) {
            order.push_back(shown.index);
        }
        return order;
    }
};

TEST_F(ShownShapes, AreNoneInAnEmptyScene)
{
    EXPECT_TRUE(GetShownShapes().empty());
}

TEST_F(ShownShapes, ComeFarthestFirst)
{
    Add(Square(), 0.5F);
    Add(Square(), -0.5F);
    Add(Square(), 0);
    EXPECT_EQ(GetOrder(), (std::vector<int>{1, 2, 0}));
}

TEST_F(ShownShapes, KeepTheOrderOfTheSceneAtEqualDepth)
{
    Add(Square(), 0.25F);
    Add(Square(), 0);
    Add(Square(), 0.25F);
    Add(Square(), 0);
    Add(Square(), 0.25F);
    EXPECT_EQ(GetOrder(), (std::vector<int>{1, 3, 0, 2, 4}));
}

TEST_F(ShownShapes, LeaveOutWhatTheProjectionLeftOut)
{
    Add(Square(), 0.5F, SHOW_NOTHING);
    Add(Square(), 0, SHOW_ROUNDED);
    EXPECT_EQ(GetOrder(), (std::vector<int>{1}));
}

TEST_F(ShownShapes, CountADepthThatIsNoNumberAsFarthest)
{
    Add(Square(), -0.5F);
    Add(Square(), std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(GetOrder(), (std::vector<int>{1, 0}));
}

TEST_F(ShownShapes, KnowWhereTheirActiveRecordsBegin)
{
    Add(Square(), 0);                // 4 points, 1 stripe, 1 side
    Add(Pyramid(), 0, SHOW_NOTHING); // 5 points, 8 stripes, 5 sides: counts although it is hidden
    Add(Square(), 0);
    const std::vector<ShownShape> shown = GetShownShapes();
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_EQ(shown[0].pointstart, 0);
    EXPECT_EQ(shown[0].stripestart, 0);
    EXPECT_EQ(shown[0].sidestart, 0);
    EXPECT_EQ(shown[1].pointstart, 9);
    EXPECT_EQ(shown[1].stripestart, 1 + shapes[1]->stripenumber);
    EXPECT_EQ(shown[1].sidestart, 6);
}

TEST_F(ShownShapes, AreDrawnFromTheCopyThatTheProjectionChose)
{
    Add(Square(), 0, SHOW_PLAIN);
    EXPECT_EQ(GetDrawnCopy(0), shapest[0]);
    showtable[0] = SHOW_ROUNDED;
    EXPECT_EQ(GetDrawnCopy(0), round1t[0]);
}

TEST_F(ShownShapes, HaveTheProductOfBothFades)
{
    Add(Square(), 0);
    MainView view = {};
    view.sidesfade = 5;                                // 0.5 - 0.5 cos 60 degrees = 0.25
    selected[0] = selectedintree | selectedshown | 10; // 0.5 - 0.5 cos 120 degrees = 0.75
    EXPECT_NEAR(GetFadeOfSides(&view, {0, 0, 0, 0}), 0.25 * 0.75, 1e-6);
}

} // namespace korvane
