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

// The places of what makes a front opaque, and of what makes a back so.
static constexpr int ofdrawn[2][3] = {{BACK_LIGHT + 3, BACK_SHADOW + 3, BACK_ACUITY},
                                      {FRONT_LIGHT + 3, FRONT_SHADOW + 3, FRONT_ACUITY}};

// One face is opaque, the other is not.
static std::vector<float> OpaqueFace(int front)
{
    std::vector<float> colors(colornumber, 0);
    for (const int place : ofdrawn[front]) {
        colors[std::size_t(place)] = 1;
    }
    return colors;
}

TEST(IsOpaque, GoesByTheFaceThatIsDrawn)
{
    for (const int front : {0, 1}) {
        const std::vector<float> colors = OpaqueFace(front);
        EXPECT_EQ(IsOpaque({colors.data(), true}), front == 1);
        EXPECT_EQ(IsOpaque({colors.data(), false}), front == 0);
    }
}

TEST(IsOpaque, NeedsBothColorsFullyOpaqueAndSomeAcuity)
{
    for (const int front : {0, 1}) {
        for (const int place : ofdrawn[front]) {
            std::vector<float> colors = OpaqueFace(front);
            colors[std::size_t(place)] = place == ofdrawn[front][2] ? 0 : 0.999F;
            EXPECT_FALSE(IsOpaque({colors.data(), front == 1})) << place;
        }
    }
}

} // namespace korvane
