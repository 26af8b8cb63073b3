#include "view/background.h"

#include "scene/model.h"
#include "tests/support/camera.h"
#include "tests/support/glwindow.h"
#include "tests/support/shapes.h"
#include "view/glsetup.h"
#include "view/mainview.h"
#include "view/navigation.h"
#include "view/picking.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <set>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

class Background : public GlWindowTest
{
protected:
    void SetUp() override
    {
        GlWindowTest::SetUp();
        mainview.bgshape = BACKGROUND_NONE;
        mainview.bgcubefade = 0;
    }

    Picture Draw() const
    {
        return window->Draw([] { BgDrawBefore(&mainview); });
    }

    Picture DrawAndCover(float depth) const
    {
        return window->DrawAndCover([] { BgDrawBefore(&mainview); }, depth);
    }
};

TEST_F(Background, IsEmptyWhileAllIsOff)
{
    ExpectEmpty(Draw());
    mainview.gradientfade = fadetarget; // on, and at its first level, which is invisible
    ExpectEmpty(Draw());
}

class BackgroundCube : public Background
{
protected:
    void SetUp() override
    {
        Background::SetUp();
        mainview.bgshape = BACKGROUND_CUBE;
        mainview.bgcubefade = fadefull;
    }

    static std::vector<int> GetActiveFaces()
    {
        std::vector<int> faces;
        for (int i = 0; i < 6; i++) {
            if (activebgcube[i].active != 0) {
                faces.push_back(i);
            }
        }
        return faces;
    }
};

static const Pixel zwall = MakePixel(0.4, 0.4, 0.4);
static const Pixel ywall = MakePixel(0.15, 0.4, 0.15);
static const Pixel xwall = MakePixel(0.4, 0.15, 0.15);

// The eye stands 1.5 before the middle: what lies at depth z is enlarged by 1.5 / (1.5 - z).
TEST_F(BackgroundCube, HasItsCornersWhereTheFullPerspectiveShowsThem)
{
    Draw();
    const float far = 0.4236111F;       // 0.61 * 1.5 / 2.16
    const float near = 1.0892857F;      // 0.61 * 1.5 / 0.84
    const float sidefar = 0.4336493F;   // 0.61 * 1.5 / 2.11
    const float floorfar = 0.4691943F;  // 0.66 * 1.5 / 2.11
    const float sidenear = 1.0280899F;  // 0.61 * 1.5 / 0.89
    const float floornear = 1.1123596F; // 0.66 * 1.5 / 0.89
    const float expected[][4] = {
        // corner, x, y, z
        {0, -far, far, -0.66F},           {1, -far, -far, -0.66F},
        {2, far, -far, -0.66F},           {3, far, far, -0.66F},
        {4, near, near, 0.66F},           {5, near, -near, 0.66F},
        {8, -sidefar, -floorfar, -0.61F}, {9, -sidenear, -floornear, 0.61F}};
    for (const float* row : expected) {
        const float* corner = cubepoints[int(row[0])];
        for (int k = 0; k < 3; k++) {
            EXPECT_NEAR(corner[k], row[k + 1], 1e-6) << row[0] << ", " << k;
        }
    }
}

// Undoing the perspective gives the corners back.
TEST_F(BackgroundCube, HasSixSquareWallsWithGapsBetweenThem)
{
    Draw();
    for (int i = 0; i < 24; i++) {
        const float* p = cubepoints[i];
        const double shrink = (1.5 - double(p[2])) / 1.5;
        const double corner[3] = {p[0] * shrink, p[1] * shrink, p[2]};
        const int axis = 2 - i / 8; // two walls across z, then y, then x
        const double sign = i / 4 % 2 == 0 ? -1 : 1;
        for (int k = 0; k < 3; k++) {
            if (k == axis) {
                EXPECT_NEAR(corner[k], 0.66 * sign, 1e-6) << i;
            } else {
                EXPECT_NEAR(std::abs(corner[k]), 0.61, 1e-6) << i;
            }
        }
    }
    for (int wall = 0; wall < 6; wall++) { // opposite corners differ in both their signs
        for (int i = 0; i < 2; i++) {
            const float* a = cubepoints[4 * wall + i];
            const float* b = cubepoints[4 * wall + i + 2];
            int differing = 0;
            for (int k = 0; k < 3; k++) {
                differing += (a[k] < 0) != (b[k] < 0) ? 1 : 0;
            }
            EXPECT_EQ(differing, 2) << wall;
        }
    }
}

// The far wall spans 0.4236 each way; the walls beside it begin at 0.4692.
TEST_F(BackgroundCube, ShowsItsWallsFromInside)
{
    const Picture picture = Draw();
    EXPECT_EQ(picture.AtView(0, 0), zwall);
    EXPECT_EQ(picture.AtView(0.415, -0.415), zwall);
    EXPECT_EQ(picture.AtView(0, 0.485), ywall);
    EXPECT_EQ(picture.AtView(0, -0.485), ywall);
    EXPECT_EQ(picture.AtView(0.485, 0), xwall);
    EXPECT_EQ(picture.AtView(-0.485, 0), xwall);
    EXPECT_EQ(picture.AtView(0, 0.445), cleared);
    EXPECT_EQ(picture.AtView(-0.445, 0), cleared);
    EXPECT_EQ(picture.AtView(0.485, 0.485), cleared);
    EXPECT_EQ(GetActiveFaces(), std::vector<int>({0, 2, 3, 4, 5}));
}

// The side walls end at 1.1124.
TEST_F(BackgroundCube, ShowsMoreOfItsWallsInAWideView)
{
    Open(600, 200);
    const Picture picture = Draw();
    EXPECT_EQ(picture.AtView(0, 0), zwall);
    EXPECT_EQ(picture.AtView(1.09, 0.4), xwall);
    EXPECT_EQ(picture.AtView(-0.8, -0.4), xwall);
    EXPECT_EQ(picture.AtView(1.14, 0), cleared);
    EXPECT_EQ(picture.AtView(0, 0.485), ywall);
}

struct TurnedView {
    Vector axis;
    double angle;
    int hidden; // the wall behind the viewer
    Pixel middle, above, right;
};

TEST_F(BackgroundCube, HasAColorForEveryPairOfWalls)
{
    const TurnedView views[] = {
        {{0, 1, 0}, 180, 0, zwall, ywall, xwall}, // z- comes to the viewer
        {{1, 0, 0}, 90, 3, ywall, zwall, xwall},  // y+ comes to the viewer
        {{1, 0, 0}, -90, 2, ywall, zwall, xwall},
        {{0, 1, 0}, -90, 5, xwall, ywall, zwall}, // x+ comes to the viewer
        {{0, 1, 0}, 90, 4, xwall, ywall, zwall},
        {{0, 0, 1}, 90, 1, zwall, xwall, ywall},
    };
    for (const TurnedView& view : views) {
        SetRotation(MakeTurn(view.axis, view.angle * degree));
        const Picture picture = Draw();
        EXPECT_EQ(picture.AtView(0, 0), view.middle) << view.hidden;
        EXPECT_EQ(picture.AtView(0, 0.485), view.above) << view.hidden;
        EXPECT_EQ(picture.AtView(0.485, 0), view.right) << view.hidden;
        std::set<int> shown = {0, 1, 2, 3, 4, 5};
        shown.erase(view.hidden);
        EXPECT_EQ(GetActiveFaces(), std::vector<int>(shown.begin(), shown.end()));
    }
}

TEST_F(BackgroundCube, FadesWithItsLevel)
{
    mainview.bgcubefade = 5; // a quarter: 0.25 * 0.4 + 0.75 * 0.3
    EXPECT_EQ(Draw().AtView(0, 0), MakePixel(0.325, 0.325, 0.325));
    mainview.bgcubefade = 0;
    ExpectEmpty(Draw());
}

TEST_F(BackgroundCube, BrightensTheWallUnderThePointer)
{
    activebgcube[0].fade = fadefull; // h is 1/6: 1/6 + 5/6 * 0.4
    activebgcube[2].fade = 5;        // a quarter: h is 1/24, so 1/24 + 23/24 * c
    const Picture picture = Draw();
    EXPECT_EQ(picture.AtView(0, 0), MakePixel(0.5, 0.5, 0.5));
    EXPECT_EQ(picture.AtView(0, -0.485), MakePixel(0.185417, 0.425, 0.185417));
    EXPECT_EQ(picture.AtView(0, 0.485), ywall);
}

// The border at -0.423611 is 30.56 pixels from the left: nearly all of that pixel is covered.
TEST_F(BackgroundCube, OutlinesTheWallUnderThePointerInWhite)
{
    EXPECT_LT(Draw().AtView(-0.4236, 0).red, 105);
    activebgcube[0].fade = fadefull;
    EXPECT_GT(Draw().AtView(-0.4236, 0).red, 225);
    activebgcube[0].fade = 5; // a quarter of the way from 0.425 to 1
    EXPECT_NEAR(Draw().AtView(-0.4236, 0).red, 255 * 0.56875, 12);
}

TEST_F(BackgroundCube, LiesBehindEverything)
{
    activebgcube[0].fade = fadefull;
    const Pixel sheet = MakePixel(1, 0, 0);
    EXPECT_EQ(DrawAndCover(-1.995F).AtView(0, 0), MakePixel(0.5, 0.5, 0.5));
    EXPECT_EQ(DrawAndCover(-1.985F).AtView(0, 0), sheet);
    EXPECT_GT(DrawAndCover(-1.97F).AtView(-0.4236, 0).green, 200); // the white outline
    EXPECT_EQ(DrawAndCover(-1.95F).AtView(-0.4236, 0), sheet);
}

TEST_F(BackgroundCube, IgnoresPlaceScaleAndPerspectiveOfTheView)
{
    mainview.center[0] = 4;
    mainview.scale = 9;
    mainview.perspective = fadedone;
    const Picture picture = Draw();
    EXPECT_EQ(picture.AtView(0.415, -0.415), zwall);
    EXPECT_EQ(picture.AtView(0.445, 0), cleared);
}

TEST_F(BackgroundCube, CanBePickedWhileItIsTheBackground)
{
    mouse[0] = mouse[1] = 0;
    Draw(); // finds out which walls are seen
    SearchActive();
    EXPECT_EQ(activepointer, &activebgcube[0]);
    mainview.bgshape = BACKGROUND_NONE; // at once, although it is still fading out
    SearchActive();
    EXPECT_EQ(activepointer, nullptr);
}

TEST_F(BackgroundCube, IsPickedAsItIsSeenInEveryFrame)
{
    mouse[0] = mouse[1] = 0;
    Draw();
    EXPECT_EQ(activepointer, &activebgcube[0]); // the back wall
    SetRotation({{{-1, 0, 0}, {0, 1, 0}, {0, 0, -1}}});
    Draw();
    EXPECT_EQ(activepointer, &activebgcube[1]); // as far back now; the other is in front
}

TEST_F(BackgroundCube, ProjectsTheSceneInEveryFrame)
{
    StartEmptyScene();   // makes the tree
    AddToView(Square()); // from (0, 0)
    mainview.bgshape = BACKGROUND_CUBE;
    mainview.bgcubefade = fadefull;
    mainview.center[0] = 0.25F;
    Draw();
    EXPECT_EQ(shapest[0]->points[0][0], -0.25F);
    mainview.bgcubefade = 0;
    mainview.center[0] = 0.5F;
    Draw();
    EXPECT_EQ(shapest[0]->points[0][0], -0.25F);
}

// Each test is run with the programs and without. The view is 301 pixels high, so that the lines
// through the middle lie on the middle of a pixel.
class BackgroundPlane : public Background, public ::testing::WithParamInterface<char>
{
protected:
    void SetUp() override
    {
        Background::SetUp();
        Open(301, 301);
        mainview.bgshape = BACKGROUND_PLANE;
        mainview.bgplanefade = fadefull;
        forcefixed = GetParam();
    }

    // A line of blue 0.3 changes the red of the grey 0.3 alone, and a black one the blue as well.
    static void ExpectBlue(const Pixel& pixel, double alpha)
    {
        EXPECT_NEAR(pixel.red, 76.5 * (1 - alpha), 4);
        EXPECT_NEAR(pixel.green, 76.5 * (1 - alpha), 4);
        EXPECT_NEAR(pixel.blue, 76.5, 1);
    }
    static void ExpectBlack(const Pixel& pixel, double alpha)
    {
        EXPECT_NEAR(pixel.red, 76.5 * (1 - alpha), 4);
        EXPECT_NEAR(pixel.blue, 76.5 * (1 - alpha), 4);
    }
};

INSTANTIATE_TEST_SUITE_P(WithProgramsAndWithout, BackgroundPlane, ::testing::Values(0, 1));

TEST_P(BackgroundPlane, FadesWithTheDistanceFromTheMiddle)
{
    const Picture picture = Draw(); // lines 0.1 apart
    ExpectBlue(picture.AtView(0, 0.05), 0.95);
    ExpectBlue(picture.AtView(0, -0.25), 0.75);
    ExpectBlue(picture.AtView(0.45, 0), 0.55);
    EXPECT_EQ(picture.AtView(0.05, 0.05), cleared);
    EXPECT_EQ(picture.AtView(-0.35, 0.25), cleared);
    EXPECT_LT(picture.AtView(0.1, 0.05).red, 30);
    EXPECT_LT(picture.AtView(-0.05, -0.3).red, 60);
}

TEST_P(BackgroundPlane, EndsAtTheDistanceOfOne)
{
    Open(903, 301);
    const Picture picture = Draw();
    ExpectBlue(picture.AtView(0.75, 0), 0.25);
    ExpectBlue(picture.AtView(-0.95, 0), 0.05);
    EXPECT_EQ(picture.AtView(1.05, 0), cleared);
    EXPECT_EQ(picture.AtView(0.95, 0.4), cleared);
}

TEST_P(BackgroundPlane, LosesItsRimWhileItFades)
{
    mainview.bgplanefade = 5; // a quarter
    const Picture picture = Draw();
    ExpectBlue(picture.AtView(0, 0.05), 0.2);
    EXPECT_EQ(picture.AtView(0, 0.3), cleared);
    mainview.bgplanefade = 0;
    ExpectEmpty(Draw());
}

TEST_P(BackgroundPlane, IsBlackFromBehind)
{
    SetRotation(MakeTurn({0, 1, 0}, 180 * degree));
    const Picture picture = Draw();
    ExpectBlack(picture.AtView(0, 0.05), 0.95);
    ExpectBlack(picture.AtView(0.45, 0), 0.55);
}

// Turned by 60 degrees about x, the line at y = 0.45 is seen at 0.225.
TEST_P(BackgroundPlane, TurnsWithTheView)
{
    SetRotation(MakeTurn({1, 0, 0}, 60 * degree));
    const Picture picture = Draw();
    ExpectBlue(picture.AtView(0, 0.225), 0.55);
    ExpectBlue(picture.AtView(0, -0.225), 0.55);
    EXPECT_EQ(picture.AtView(0.05, 0.075), cleared);
    EXPECT_LT(picture.AtView(0.05, 0.1).red, 50); // y = 0.2
}

// y = 0.5 comes to (0.25, depth 0.433), which the factor 1.5 / 1.067 shows at 0.3515; y = 0.4 to
// 0.26.
TEST_P(BackgroundPlane, TakesThePerspectiveOfTheView)
{
    SetRotation(MakeTurn({1, 0, 0}, 60 * degree));
    mainview.perspective = fadedone;
    const Picture picture = Draw();
    EXPECT_LT(picture.AtView(0.05, 0.3515).red, 62);
    EXPECT_EQ(picture.AtView(0.05, 0.25), cleared);
    ExpectBlue(picture.AtView(0, 0.305), 0.504); // y = 0.4511: 1 - hypot(0.305, 0.3907)
}

// The power of two at 0.75 is 0.5: lines are 0.5 / 7.5 apart, and again at 1.5.
TEST_P(BackgroundPlane, IsHalvedAndDoubledWithTheScale)
{
    for (const float scale : {0.75F, 1.5F, 3.0F}) {
        mainview.scale = scale;
        const Picture picture = Draw();
        EXPECT_LT(picture.AtView(0.0333, 0.0667).red, 30);
        EXPECT_EQ(picture.AtView(0.0333, 0.1), cleared);
        EXPECT_LT(picture.AtView(0.0333, 0.1333).red, 40);
    }
    mainview.scale = 2;
    EXPECT_LT(Draw().AtView(0.05, 0.1).red, 40);
    EXPECT_EQ(Draw().AtView(0.05, 0.0667), cleared);
}

TEST_P(BackgroundPlane, GoesThroughTheMiddleOfTheViewWhereverThatIs)
{
    mainview.center[0] = 0.037F;
    mainview.center[2] = 5;
    ExpectBlue(Draw().AtView(0, 0.05), 0.95);
}

TEST_P(BackgroundPlane, LiesBehindTheShapes)
{
    const Pixel sheet = MakePixel(1, 0, 0);
    EXPECT_LT(DrawAndCover(-1.97F).AtView(0, 0.05).red, 40);
    EXPECT_EQ(DrawAndCover(-1.97F).AtView(0.05, 0.05), sheet);
    EXPECT_EQ(DrawAndCover(-1.95F).AtView(0, 0.05), sheet);
}

// 600 pixels: at the scale 1.5 the grid's lines are 15 pixels apart and lie between two pixels.
class GradientGrid : public Background
{
protected:
    void SetUp() override
    {
        Background::SetUp();
        Open(600, 600);
        mainview.gradientfade = fadedone;
        mainview.scale = 1.5F;
    }

    // How much brighter than the background the five pixels around a column or row are together.
    static int GetLight(const Picture& picture, double x, double y, int axis)
    {
        const double pixel = 1.0 / std::min(picture.width, picture.height);
        int light = 0;
        for (int i = -2; i <= 2; i++) {
            const double aside = i * pixel;
            light += std::max(
                0, picture.AtView(axis == 0 ? x + aside : x, axis == 1 ? y + aside : y).red -
                       cleared.red - 1);
        }
        return light;
    }

    // The pointer snaps to lines that are seen, and to each: beside them is nothing.
    void ExpectLinesWhereThePointerSnaps() const
    {
        const Picture picture = Draw();
        const double step = GetGradientStep(double(mainview.scale)) * double(mainview.scale);
        for (const float place : {-0.41F, -0.2F, 0.03F, 0.3F, 0.37F}) {
            mouse[0] = place;
            mouse[1] = place * 0.7F;
            SetGradientMouse();
            const double x = double(gmouse[0]);
            const double y = double(gmouse[1]);
            EXPECT_GT(GetLight(picture, x, y + step / 2, 0), 4) << place;
            EXPECT_GT(GetLight(picture, x + step, y + step / 2, 0), 4) << place;
            EXPECT_GT(GetLight(picture, x + step / 2, y, 1), 4) << place;
            EXPECT_EQ(picture.AtView(x + step / 2, y + step / 2), cleared) << place;
        }
    }
};

TEST_F(GradientGrid, IsWhereThePointerSnaps)
{
    ExpectLinesWhereThePointerSnaps();
}

TEST_F(GradientGrid, FollowsCenterScaleAndRotation)
{
    mainview.center[0] = 0.0371F;
    mainview.center[1] = -0.0113F;
    mainview.center[2] = 0.7F;
    ExpectLinesWhereThePointerSnaps();
    SetRotation(MakeTurn({1, 2, 3}, 50 * degree));
    ExpectLinesWhereThePointerSnaps();
    mainview.scale = 3.9F;
    ExpectLinesWhereThePointerSnaps();
    mainview.scale = 0.3F;
    ExpectLinesWhereThePointerSnaps();
}

TEST_F(GradientGrid, FillsTheViewFarFromTheOrigin)
{
    mainview.center[0] = 1e7F; // where floats are whole numbers
    mainview.center[1] = -1e7F;
    ExpectLinesWhereThePointerSnaps();
}

TEST_F(GradientGrid, FillsAWideView)
{
    Open(900, 300); // lines every 7.5 pixels: even ones lie between two pixels
    const Picture picture = Draw();
    EXPECT_GT(GetLight(picture, 1.4, 0.0375, 0), 4);    // column 56
    EXPECT_GT(GetLight(picture, 1.4875, 0.1, 1), 4);    // row 4, up to the edge
    EXPECT_GT(GetLight(picture, -1.4875, -0.45, 1), 4); // row 18
}

// (0.6, 0.6, 0.65) with 0.35 on 0.3 is 0.405 full, twice as wide as the next.
TEST_F(GradientGrid, HasThreeWidths)
{
    const Picture picture = Draw();
    const double between = 0.0125;
    for (const int index : {-4, 0, 4, 8}) {
        EXPECT_EQ(picture.AtView(index * 0.025 + 0.0005, between), MakePixel(0.405, 0.405, 0.4225));
        EXPECT_EQ(picture.AtView(index * 0.025 - 0.0005, between), MakePixel(0.405, 0.405, 0.4225));
    }
    for (const int index : {-6, -2, 2, 6, 10}) { // half of two pixels
        EXPECT_NEAR(picture.AtView(index * 0.025 + 0.0005, between).red, 90, 3);
        EXPECT_NEAR(picture.AtView(index * 0.025 - 0.0005, between).red, 90, 3);
    }
    for (const int index : {-3, -1, 1, 3, 7}) {
        EXPECT_GT(picture.AtView(index * 0.025 + 0.0005, between).red, 78);
        EXPECT_LT(picture.AtView(index * 0.025 + 0.0005, between).red,
                  93); // drivers may draw no smooth line narrower than 1
    }
}

TEST_F(GradientGrid, FadesWithItsByte)
{
    mainview.gradientfade = 5; // 0.35 / 4 of the way from 0.3 to 0.6
    EXPECT_EQ(Draw().AtView(0.0005, 0.0125), MakePixel(0.32625, 0.32625, 0.330625));
    mainview.gradientfade = 0;
    ExpectEmpty(Draw());
}

TEST_F(GradientGrid, LiesInThreeDepths)
{
    const Pixel sheet = MakePixel(1, 0, 0);
    const auto isseen = [&](float depth, double x) {
        return !(DrawAndCover(depth).AtView(x + 0.0005, 0.0125) == sheet);
    };
    const double fine = 0.025, middle = 0.05, broad = 0.1;
    EXPECT_TRUE(isseen(-1.965F, fine)); // at -1.96, -1.935 and -1.91
    EXPECT_FALSE(isseen(-1.955F, fine));
    EXPECT_TRUE(isseen(-1.94F, middle));
    EXPECT_FALSE(isseen(-1.93F, middle));
    EXPECT_TRUE(isseen(-1.915F, broad));
    EXPECT_FALSE(isseen(-1.905F, broad));
}

} // namespace korvane
