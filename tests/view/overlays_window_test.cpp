#include "view/overlays.h"

#include "geometry/construction.h"
#include "tests/support/camera.h"
#include "tests/support/glwindow.h"
#include "view/glsetup.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <GL/glew.h>
#include <gtest/gtest.h>

namespace korvane
{

using namespace korvane::testing;

// Four colours as a texture of 2 by 2 pixels; its first row is the upper one of a picture.
static void LoadQuarters()
{
    static const unsigned char pixels[16] = {255, 0, 0,   255, 0,   255, 0,   255,
                                             0,   0, 255, 255, 255, 255, 255, 0};
    glBindTexture(GL_TEXTURE_2D, textidns);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 2, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glBindTexture(GL_TEXTURE_2D, 0);
}

class Overlays : public GlWindowTest
{
protected:
    void SetUp() override
    {
        GlWindowTest::SetUp();
        mainview.smallcubefade = 0;
    }

    Picture Draw() const
    {
        return window->Draw([] { BgDrawAfter(&mainview); });
    }
};

TEST_F(Overlays, AreNothingWhileAllAreOff)
{
    ExpectEmpty(Draw());
    mainview.smallcubefade = fadetarget; // on, and at its first level, which is invisible
    mainview.centerlinesfade = fadetarget;
    ExpectEmpty(Draw());
}

class SmallCube : public Overlays
{
protected:
    void SetUp() override
    {
        Overlays::SetUp();
        mainview.smallcubefade = fadedone;
    }
};

// It stands at (0.45, 0.45) with half an edge of 0.025. Its far wall, at depth -0.025, is seen by
// the factor 1.5 / 1.525: half of it is 0.0246; the near one's by 1.5 / 1.475: 0.0254. A pixel is
// 0.0025.
TEST_F(SmallCube, ShowsItsFarFaceFromInside)
{
    const Picture picture = Draw();
    EXPECT_EQ(picture.AtView(0.45, 0.45), MakePixel(0.8, 0.8, 0.8));
    EXPECT_EQ(picture.AtView(0.432, 0.468), MakePixel(0.8, 0.8, 0.8));
    EXPECT_EQ(picture.AtView(0.468, 0.432), MakePixel(0.8, 0.8, 0.8));
    EXPECT_EQ(picture.AtView(0.42, 0.45), cleared);
    EXPECT_EQ(picture.AtView(0.48, 0.45), cleared);
    EXPECT_EQ(picture.AtView(0.45, 0.42), cleared);
    EXPECT_EQ(picture.AtView(0.45, 0.48), cleared);
    EXPECT_LT(picture.AtView(0.475, 0.45).red, 60); // the edges, between 0.4746 and 0.4754
    EXPECT_LT(picture.AtView(0.45, 0.4249).red, 60);
}

// The world's axis that points away from the viewer leads to the wall that is seen.
TEST_F(SmallCube, HasAColorForEveryPairOfFaces)
{
    struct Look {
        Vector axis;
        double angle;
        Pixel color;
    };
    const Look looks[] = {
        {{1, 0, 0}, 90, MakePixel(0, 1, 0)},        // y to the viewer: the wall at -y
        {{1, 0, 0}, -90, MakePixel(0, 1, 0)},       // the wall at +y
        {{0, 1, 0}, 90, MakePixel(1, 0, 0)},        // the wall at +x
        {{0, 1, 0}, -90, MakePixel(1, 0, 0)},       // the wall at -x
        {{0, 1, 0}, 180, MakePixel(0.8, 0.8, 0.8)}, // the wall at +z
    };
    for (const Look& look : looks) {
        SetRotation(MakeTurn(look.axis, look.angle * degree));
        EXPECT_EQ(Draw().AtView(0.45, 0.45), look.color) << look.angle;
    }
}

// Turned by 45 degrees about the vertical: x and z go to (x + z, z - x) / sqrt 2, so that the edge
// x+ z- is farthest, with the wall x+ on its right and z- on its left.
TEST_F(SmallCube, ShowsTwoWallsAndTheirEdgeWhenTurned)
{
    SetRotation(MakeTurn({0, 1, 0}, 45 * degree));
    const Picture picture = Draw();
    EXPECT_EQ(picture.AtView(0.437, 0.451), MakePixel(0.8, 0.8, 0.8));
    EXPECT_EQ(picture.AtView(0.465, 0.451), MakePixel(1, 0, 0));
    // The black edge lies on the border between two columns of pixels and covers half of each.
    EXPECT_NEAR(picture.AtView(0.449, 0.451).red, 102, 12);
    EXPECT_NEAR(picture.AtView(0.451, 0.451).red, 128, 12);
}

TEST_F(SmallCube, FadesWithItsByte)
{
    mainview.smallcubefade = 5; // 0.5 - 0.5 cos(60 degrees) = 0.25
    EXPECT_EQ(Draw().AtView(0.45, 0.45), MakePixel(0.425, 0.425, 0.425)); // 0.25 * 0.8 + 0.75 * 0.3
}

TEST_F(SmallCube, StandsInTheUpperRightCornerOfAnyView)
{
    Open(800, 400); // 2 wide, 1 high
    EXPECT_EQ(Draw().AtView(0.95, 0.45), MakePixel(0.8, 0.8, 0.8));
    Open(200, 300); // 1 wide, 1.5 high
    EXPECT_EQ(Draw().AtView(0.45, 0.7), MakePixel(0.8, 0.8, 0.8));
}

TEST_F(SmallCube, StandsBeforeEverything)
{
    const auto draw = [] { BgDrawAfter(&mainview); };
    const Pixel sheet = MakePixel(1, 0, 0);
    EXPECT_EQ(window->DrawAndCover(draw, 1.47F).AtView(0.45, 0.45), MakePixel(0.8, 0.8, 0.8));
    EXPECT_EQ(window->DrawAndCover(draw, 1.48F).AtView(0.45, 0.45), sheet); // -0.025 + 1.5 = 1.475
    EXPECT_NE(window->DrawAndCover(draw, 1.48F).AtView(0.4249, 0.45), sheet);
    const int edge = window->DrawAndCover(draw, 1.528F).AtView(0.475, 0.45).red;
    EXPECT_LT(edge, 200); // 0.006 nearer than the corners at 1.525
    EXPECT_EQ(window->DrawAndCover(draw, 1.532F).AtView(0.475, 0.45), sheet);
}

TEST_F(SmallCube, IgnoresPlaceAndScale)
{
    mainview.scale = 7;
    mainview.center[0] = 3;
    EXPECT_EQ(Draw().AtView(0.45, 0.45), MakePixel(0.8, 0.8, 0.8));
    EXPECT_EQ(Draw().AtView(0.42, 0.45), cleared);
}

class CenterLines : public Overlays
{
protected:
    void SetUp() override
    {
        Overlays::SetUp();
        mainview.centerlinesfade = fadedone;
    }
};

// The smooth line lies on the border between two rows of pixels, and covers half of each.
static constexpr Pixel halfline = {166, 64, 38}; // of (1, 0.2, 0) on 0.3: (0.65, 0.25, 0.15)

static void ExpectCenterLines(const Picture& picture, double halfwidth, double halfheight)
{
    for (const double end : {-0.99, -0.3, 0.4, 0.99}) {
        const Pixel along = picture.AtView(end * halfwidth, 0.001);
        EXPECT_NEAR(along.red, halfline.red, 12);
        EXPECT_NEAR(along.green, halfline.green, 12);
        EXPECT_NEAR(along.blue, halfline.blue, 12);
        const Pixel up = picture.AtView(0.001, end * halfheight);
        EXPECT_NEAR(up.red, halfline.red, 12);
        EXPECT_EQ(picture.AtView(end * halfwidth, 0.02), cleared);
        EXPECT_EQ(picture.AtView(0.02, end * halfheight), cleared);
    }
}

TEST_F(CenterLines, CrossTheWholeView)
{
    ExpectCenterLines(Draw(), 0.5, 0.5);
}

TEST_F(CenterLines, CrossAWideViewToo)
{
    Open(600, 200);
    ExpectCenterLines(Draw(), 1.5, 0.5);
}

TEST_F(CenterLines, StayWhateverTheCameraDoes)
{
    SetRotation(MakeTurn({1, 2, 3}, 50 * degree));
    mainview.center[0] = 5;
    mainview.scale = 3;
    mainview.perspective = fadedone;
    ExpectCenterLines(Draw(), 0.5, 0.5);
}

TEST_F(CenterLines, FadeWithTheirByte)
{
    mainview.centerlinesfade = 5; // a quarter
    EXPECT_NEAR(Draw().AtView(0.3, 0.001).red, 77 + (166 - 77) / 4, 6);
}

TEST_F(CenterLines, LieBeforeTheShapes)
{
    const auto draw = [] { BgDrawAfter(&mainview); };
    EXPECT_LT(window->DrawAndCover(draw, 1.49F).AtView(0.3, 0.001).red, 200);
    EXPECT_EQ(window->DrawAndCover(draw, 1.51F).AtView(0.3, 0.001), MakePixel(1, 0, 0));
}

class NewShapeIndicator : public Overlays
{
protected:
    void SetUp() override
    {
        Overlays::SetUp();
        newsign = 1;
    }

    // Its quarters are in the middle of (x, y) at 0.015 each way.
    static void ExpectQuartersAt(const Picture& picture, double x, double y)
    {
        EXPECT_EQ(picture.AtView(x - 0.015, y + 0.015), MakePixel(1, 0, 0));
        EXPECT_EQ(picture.AtView(x + 0.015, y + 0.015), MakePixel(0, 1, 0));
        EXPECT_EQ(picture.AtView(x - 0.015, y - 0.015), MakePixel(0, 0, 1));
        EXPECT_EQ(picture.AtView(x + 0.015, y - 0.015), cleared); // its own alpha is 0
        EXPECT_EQ(picture.AtView(x - 0.034, y), cleared);
        EXPECT_EQ(picture.AtView(x, y + 0.034), cleared);
    }
};

// Its outer edges are 0.48 from the middle and it is 0.06 wide: the middle is at (-0.45, 0.45).
TEST_F(NewShapeIndicator, StandsUprightInTheUpperLeftCorner)
{
    window->Run(LoadQuarters);
    ExpectQuartersAt(Draw(), -0.45, 0.45);
}

TEST_F(NewShapeIndicator, KeepsItsDistanceFromTheEdgesOfAnyView)
{
    Open(800, 400);
    window->Run(LoadQuarters);
    ExpectQuartersAt(Draw(), -0.95, 0.45);
    Open(400, 600);
    window->Run(LoadQuarters);
    ExpectQuartersAt(Draw(), -0.45, 0.7);
}

// The icon's plus sign, which is orange, is in its lower right quarter.
TEST_F(NewShapeIndicator, ShowsTheIcon)
{
    const Picture picture = Draw();
    const Pixel plus = picture.AtView(-0.4335, 0.4335);
    EXPECT_GT(plus.red, plus.blue + 80) << plus;
    const Pixel above = picture.AtView(-0.4335, 0.4665);
    EXPECT_LE(above.red, above.blue + 10) << above;
}

TEST_F(NewShapeIndicator, IsThereOnlyWhileAShapeIsBegun)
{
    newsign = 0;
    ExpectEmpty(Draw());
}

TEST_F(NewShapeIndicator, LiesAtItsDepth)
{
    window->Run(LoadQuarters);
    const auto draw = [] { BgDrawAfter(&mainview); };
    const Picture behind = window->DrawAndCover(draw, 1.49F);
    EXPECT_EQ(behind.AtView(-0.465, 0.435), MakePixel(0, 0, 1));
    const Picture before = window->DrawAndCover(draw, 1.51F);
    EXPECT_EQ(before.AtView(-0.465, 0.435), MakePixel(1, 0, 0));
}

} // namespace korvane
