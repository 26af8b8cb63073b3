#include "export/imagelooks.h"

#include "tests/support/imagetriangles.h"

#include <gtest/gtest.h>

#include <vector>

namespace korvane
{

using testing::SmallTriangle;

TEST(GetLooks, NumbersAreTheSameWhereColorsAndFacingAre)
{
    std::vector<ImageTriangle> triangles = {SmallTriangle(0, 0, 0), SmallTriangle(9, 9, 0),
                                            SmallTriangle(0, 0, 1), SmallTriangle(0, 0, 0),
                                            SmallTriangle(0, 0, 1)};
    triangles[4].front = 0; // its back is not coloured like its front
    const Looks looks = GetLooks(triangles.data(), 5);
    EXPECT_EQ(looks.oftriangle, (std::vector{0, 0, 1, 0, 2}));
    ASSERT_EQ(looks.states.size(), 3U);
    EXPECT_EQ(looks.states[1].colors[FRONT_LIGHT], 1);
    EXPECT_TRUE(looks.states[1].front);
    EXPECT_FALSE(looks.states[2].front);
}

TEST(GetLook, TakesABackThatIsColoredLikeItsFrontForAFront)
{
    ImageTriangle triangle = {};
    triangle.front = 0;
    EXPECT_TRUE(GetLook(triangle).front);
    triangle.colors[BACK_ACUITY] = 0.5F;
    EXPECT_FALSE(GetLook(triangle).front);
    triangle.front = 1;
    EXPECT_TRUE(GetLook(triangle).front);
}

// The front is opaque, the back is not.
static std::vector<float> OpaqueFront()
{
    std::vector<float> colors(colornumber, 0);
    colors[FRONT_LIGHT + 3] = colors[FRONT_SHADOW + 3] = colors[FRONT_ACUITY] = 1;
    return colors;
}

TEST(IsOpaque, GoesByTheFaceThatIsDrawn)
{
    const std::vector<float> colors = OpaqueFront();
    EXPECT_TRUE(IsOpaque({colors.data(), true}));
    EXPECT_FALSE(IsOpaque({colors.data(), false}));
    std::vector<float> turned(colornumber, 0);
    turned[BACK_LIGHT + 3] = turned[BACK_SHADOW + 3] = turned[BACK_ACUITY] = 1;
    EXPECT_FALSE(IsOpaque({turned.data(), true}));
    EXPECT_TRUE(IsOpaque({turned.data(), false}));
}

TEST(IsOpaque, NeedsBothColorsFullyOpaqueAndSomeAcuity)
{
    for (const int place : {FRONT_LIGHT + 3, FRONT_SHADOW + 3}) {
        std::vector<float> colors = OpaqueFront();
        colors[std::size_t(place)] = 0.999F;
        EXPECT_FALSE(IsOpaque({colors.data(), true})) << place;
    }
    std::vector<float> colors = OpaqueFront();
    colors[FRONT_ACUITY] = 0;
    EXPECT_FALSE(IsOpaque({colors.data(), true}));
}

} // namespace korvane
