#include "view/selectedfit.h"

#include "scene/model.h"
#include "scene/treeview.h"
#include "tests/support/camera.h"
#include "view/cameraflight.h"

#include <gtest/gtest.h>

namespace korvane
{

using namespace korvane::testing;

class FittingTheSelected : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartView();
        for (const float x : {0.0F, 5.0F, 9.0F}) { // squares of radius 1
            AddToView(MakeFlatShape({{x + 1, 0, 0}, {x, 1, 0}, {x - 1, 0, 0}, {x, -1, 0}}));
        }
    }
    void TearDown() override
    {
        SelectNodes({});
    }
};

TEST_F(FittingTheSelected, FramesASelectedShape)
{
    SelectNodes({2}); // the second shape's node
    SelectedFit();
    EXPECT_EQ(camtable[cameraframes - 1].scale, 0.6F);
    EXPECT_EQ(camtable[cameraframes - 1].center[0], 5);
    EXPECT_EQ(camposition, 0);
}

TEST_F(FittingTheSelected, FramesAllSelectedShapesFromTheToolbar)
{
    SelectNodes({2, 3});
    ZoomFit();
    EXPECT_FLOAT_EQ(camtable[cameraframes - 1].scale, 0.6F / (1 + 4));
    EXPECT_EQ(camtable[cameraframes - 1].center[0], 7);
}

TEST_F(FittingTheSelected, DoesNothingWhenNothingIsSelected)
{
    SelectedFit();
    EXPECT_EQ(camposition, cameraframes);
}

} // namespace korvane
