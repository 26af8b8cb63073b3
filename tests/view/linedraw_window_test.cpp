#include "view/linedraw.h"

#include "scene/model.h"
#include "tests/support/glwindow.h"
#include "tests/support/paintedshapes.h"
#include "view/mainview.h"
#include "view/markers.h"
#include "view/picking.h"
#include "view/shownshapes.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane
{

using namespace korvane::testing;

// A pixel is 0.005 view units. The square's corners lie in the middles of pixels, at -0.2475 and
// 0.2525.
class LineDrawing : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyView();
        OwnedShape square = SquareAt(0.0025F, 0.0025F, 0);
        SetVertexes(square.get(), {0, 2});
        AddShape(square.release());
        ProjectScene();
    }

    void TearDown() override
    {
        StartEmptyView();
    }

    Picture Draw(float alpha)
    {
        const ShownShape shown = GetShownShapes().front();
        return window.Draw([&] { LineDraw(shown, GetMarkerSize(), alpha, shapest[0]); });
    }

    // The outer quarter of a corner's marker, which the lines leave free.
    static Pixel GetMarker(const Picture& picture, int point)
    {
        const float* corner = shapest[0]->points[point];
        const double outside = 0.006;
        return picture.AtView(corner[0] + (corner[0] < 0 ? -outside : outside),
                              corner[1] + (corner[1] < 0 ? -outside : outside));
    }

    // The height at which the square's cut passes 0.1025: it runs along one diagonal or the other.
    static double FindCut(const Picture& picture)
    {
        return picture.AtView(0.1025, 0.1025) == cleared ? -0.0975 : 0.1025;
    }

    GlWindow window{200, 200};
};

TEST_F(LineDrawing, DrawsStripesBlackAndHoveredOnesWhite)
{
    ASSERT_EQ(shapest[0]->stripenumber, 1); // the outline
    EXPECT_LT(Draw(1).AtView(0.0025, 0.2525).red, 60);
    activestripes[0].fade = fadefull;
    EXPECT_GT(Draw(1).AtView(0.0025, 0.2525).red, 200);
    activestripes[0].fade = 10; // grey 0.75
    const int red = Draw(1).AtView(0.0025, 0.2525).red;
    EXPECT_GT(red, 120);
    EXPECT_LT(red, 200);
}

TEST_F(LineDrawing, DrawsTheWholeStripe)
{
    const Picture picture = Draw(1);
    EXPECT_LT(picture.AtView(0.0025, -0.2475).red, 60);
    EXPECT_LT(picture.AtView(0.2525, 0.0025).red, 60);
    EXPECT_LT(picture.AtView(-0.2475, 0.0025).red, 60);
    EXPECT_EQ(picture.AtView(0.0025, 0.1525), cleared);
}

TEST_F(LineDrawing, DrawsTriangleEdgesInDarkBlue)
{
    // The cut from corner to corner is an edge and no stripe; the lines' alpha does not concern it.
    const Picture picture = Draw(0);
    const Pixel cut = picture.AtView(0.1025, FindCut(picture));
    EXPECT_LT(cut.red, 55);
    EXPECT_NEAR(cut.green, cut.red, 1);
    EXPECT_NEAR(cut.blue, 77, 2); // the background is as blue as the edge
}

TEST_F(LineDrawing, MarksInactivePointsGrey)
{
    SetActivesOff();
    const Picture picture = Draw(1);
    for (int point = 0; point < 4; point++) {
        EXPECT_EQ(GetMarker(picture, point), MakePixel(0.4, 0.4, 0.4)) << point;
    }
}

TEST_F(LineDrawing, MarksVertexesRedAndOtherPointsGreen)
{
    const Picture picture = Draw(1);
    EXPECT_EQ(GetMarker(picture, 0), MakePixel(1, 0.4, 0.4));
    EXPECT_EQ(GetMarker(picture, 1), MakePixel(0.4, 1, 0.4));
    EXPECT_EQ(GetMarker(picture, 2), MakePixel(1, 0.4, 0.4));
    EXPECT_EQ(GetMarker(picture, 3), MakePixel(0.4, 1, 0.4));
}

TEST_F(LineDrawing, MarksOnlyTheVertexesThatItMeetsInTheirOrder)
{
    std::swap(shapest[0]->vertexes[0], shapest[0]->vertexes[1]); // 2, then 0: 0 comes too late
    const Picture picture = Draw(1);
    EXPECT_EQ(GetMarker(picture, 0), MakePixel(0.4, 1, 0.4));
    EXPECT_EQ(GetMarker(picture, 2), MakePixel(1, 0.4, 0.4));
}

TEST_F(LineDrawing, BrightensAHoveredMarker)
{
    activepoints[0].fade = 10; // the faint colours: 0.4 + 0.6 * 0.75
    activepoints[1].fade = fadefull;
    const Picture picture = Draw(1);
    EXPECT_EQ(GetMarker(picture, 0), MakePixel(1, 0.85, 0.85));
    EXPECT_EQ(GetMarker(picture, 1), MakePixel(1, 1, 1));
}

TEST_F(LineDrawing, BlendsMarkersByItsAlpha)
{
    EXPECT_EQ(GetMarker(Draw(0.5F), 0), MakePixel((1 + 0.3) / 2, (0.4 + 0.3) / 2, (0.4 + 0.3) / 2));
}

TEST_F(LineDrawing, LiftsStripesAndMarkersInFrontOfTriangleEdges)
{
    const ShownShape shown = GetShownShapes().front();
    const Pixel sheet = MakePixel(1, 0, 0);
    const auto draw = [&](float depth) {
        return window.DrawAndCover([&] { LineDraw(shown, GetMarkerSize(), 1, shapest[0]); }, depth);
    };
    const double cut = FindCut(Draw(1));
    Picture picture = draw(0.0115F);
    EXPECT_FALSE(picture.AtView(0.1025, cut) == sheet); // a triangle edge at 0.012
    picture = draw(0.0125F);
    EXPECT_EQ(picture.AtView(0.1025, cut), sheet);
    picture = draw(0.0235F);
    EXPECT_FALSE(picture.AtView(0.0525, 0.2525) == sheet); // a stripe at 0.024
    EXPECT_FALSE(GetMarker(picture, 1) == sheet);          // a marker at 0.024
    picture = draw(0.0245F);
    EXPECT_EQ(picture.AtView(0.0525, 0.2525), sheet);
    EXPECT_EQ(GetMarker(picture, 1), sheet);
}

TEST_F(LineDrawing, PutsTicksRoundAHoveredMarkerAlone)
{
    activepoints[2].fade = fadefull; // at (0.2525, 0.2525)
    const Picture picture = Draw(1);
    for (const double x : {-0.015, 0.015}) { // the middle of a tick is three pixels off each way
        for (const double y : {-0.015, 0.015}) {
            EXPECT_GT(picture.AtView(0.2525 + x, 0.2525 + y).red, 200) << x << " " << y;
        }
    }
    EXPECT_EQ(picture.AtView(-0.2475 - 0.015, -0.2475 - 0.015), cleared);
}

} // namespace korvane
