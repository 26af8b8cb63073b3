#include "view/markers.h"

#include "tests/support/glwindow.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane
{

using namespace korvane::testing;

class Markers : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyView();
    }

    GlWindow window{200, 200};
};

// A pixel is 0.005 view units. A line 8 pixels wide covers 4 on either side of its middle; its
// outline runs 5 pixels beside the middle and is 2 wide.
TEST_F(Markers, AreLinesWithAnOutlineInTheComplementaryColor)
{
    const Picture picture =
        window.Draw([] { DuplaLineDraw(-0.2F, 0, 0, 0.2F, 0, 0, 8, 1, 0.2F, 0, 1, 1); });
    EXPECT_EQ(picture.AtView(0, 0.0075), MakePixel(1, 0.2, 0));
    EXPECT_EQ(picture.AtView(0, -0.0075), MakePixel(1, 0.2, 0));
    EXPECT_LT(picture.AtView(0, 0.0275).red, 40); // complement (0, 0.8, 1)
    EXPECT_GT(picture.AtView(0, 0.0275).blue, 180);
    EXPECT_LT(picture.AtView(0, -0.0275).red, 40);
    EXPECT_EQ(picture.AtView(0, 0.04), cleared);
}

TEST_F(Markers, GiveLineAndOutlineTheirOwnAlpha)
{
    Picture picture =
        window.Draw([] { DuplaLineDraw(-0.2F, 0, 0, 0.2F, 0, 0, 8, 1, 1, 1, 0.5F, 0); });
    EXPECT_EQ(picture.AtView(0, 0.0075), MakePixel(0.65, 0.65, 0.65));
    EXPECT_EQ(picture.AtView(0, 0.0275), cleared);
    picture = window.Draw([] { DuplaLineDraw(-0.2F, 0, 0, 0.2F, 0, 0, 8, 1, 1, 1, 0, 1); });
    EXPECT_EQ(picture.AtView(0, 0.0075), cleared);
    EXPECT_LT(picture.AtView(0, 0.0275).red, 40);
}

TEST_F(Markers, HaveTheirOutlineFiveEighthsOfTheWidthAside)
{
    // 5 * 8 / 8 pixels of 1/200 each
    const OutlineOffset along = GetOutlineOffset(-0.2F, 0, 0.2F, 0, 8);
    EXPECT_FLOAT_EQ(along.x, 0);
    EXPECT_FLOAT_EQ(along.y, -0.025F);
    const OutlineOffset slanted = GetOutlineOffset(0, 0, 0.3F, 0.4F, 8); // across: (0.8, -0.6)
    EXPECT_FLOAT_EQ(slanted.x, 0.025F * 0.8F);
    EXPECT_FLOAT_EQ(slanted.y, -0.025F * 0.6F);
}

TEST_F(Markers, HaveNoOffsetBesideALineWithoutLength)
{
    const OutlineOffset offset = GetOutlineOffset(0.1F, 0.1F, 0.1F, 0.1F, 3);
    EXPECT_EQ(offset.x, 0); // a plain division would give no number
    EXPECT_EQ(offset.y, 0);
    window.Draw([] { DuplaLineDraw(0.1F, 0.1F, -0.5F, 0.1F, 0.1F, 0.5F, 3, 1, 1, 1, 1, 1); });
}

TEST_F(Markers, AreFourPixelsWideOnTheShorterSide)
{
    EXPECT_DOUBLE_EQ(GetMarkerSize(), 0.02);
    width = 800;
    EXPECT_DOUBLE_EQ(GetMarkerSize(), 0.02);
    height = 100;
    EXPECT_DOUBLE_EQ(GetMarkerSize(), 0.04);
}

TEST_F(Markers, HaveTicksFromTwiceTheCornersToTheCorners)
{
    const float center[3] = {0.5F, 0.25F, 0};
    const Ticks ticks = GetTicks(center, 0.5); // corners at 0.25 each way
    int seen = 0;                              // a bit for each quarter
    for (const auto& tick : ticks.ends) {
        const float sx = tick[0][0] > center[0] ? 1.0F : -1.0F;
        const float sy = tick[0][1] > center[1] ? 1.0F : -1.0F;
        EXPECT_EQ(tick[0][0], center[0] + 0.5F * sx);
        EXPECT_EQ(tick[0][1], center[1] + 0.5F * sy);
        EXPECT_EQ(tick[1][0], center[0] + 0.25F * sx);
        EXPECT_EQ(tick[1][1], center[1] + 0.25F * sy);
        EXPECT_FLOAT_EQ(tick[0][2], 0.024F);
        EXPECT_FLOAT_EQ(tick[1][2], 0.024F);
        seen |= 1 << ((sx > 0 ? 1 : 0) + (sy > 0 ? 2 : 0));
    }
    EXPECT_EQ(seen, 15);
}

} // namespace korvane
