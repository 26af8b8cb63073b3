#include "view/backgroundpicture.h"

#include "tests/support/camera.h"
#include "tests/support/glwindow.h"
#include "view/mainview.h"
#include "view/overlays.h"

#include <GL/glew.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>

namespace korvane
{

using namespace korvane::testing;

struct Ink {
    unsigned char red, green, blue, alpha;
};

constexpr Ink red = {255, 0, 0, 255};
constexpr Ink green = {0, 255, 0, 255};
constexpr Ink blue = {0, 0, 255, 255};
constexpr Ink white = {255, 255, 255, 255};

// An image widget of w by h pixels, coloured by column and row; rows run from top to bottom.
static GtkWidget* MakeImage(int w, int h, bool alpha, const std::function<Ink(int, int)>& color)
{
    GdkPixbuf* pixels = gdk_pixbuf_new(GDK_COLORSPACE_RGB, alpha, 8, w, h);
    const int channels = alpha ? 4 : 3;
    for (int y = 0; y < h; y++) {
        guchar* place = gdk_pixbuf_get_pixels(pixels) + y * gdk_pixbuf_get_rowstride(pixels);
        for (int x = 0; x < w; x++, place += channels) {
            const Ink ink = color(x, y);
            const unsigned char bytes[4] = {ink.red, ink.green, ink.blue, ink.alpha};
            std::copy_n(bytes, channels, place);
        }
    }
    GtkWidget* image = gtk_image_new_from_pixbuf(pixels);
    g_object_unref(pixels);
    return image;
}

static GtkWidget* MakePlain(int w, int h, const Ink& ink)
{
    return MakeImage(w, h, ink.alpha != 255, [=](int, int) { return ink; });
}

// Red and green above, blue and white below.
static GtkWidget* MakeQuarters(int w, int h)
{
    return MakeImage(w, h, false, [=](int x, int y) {
        if (y < h / 2) {
            return x < w / 2 ? red : green;
        }
        return x < w / 2 ? blue : white;
    });
}

// What a colour with an alpha leaves on the cleared grey of 0.3.
static Pixel Blend(const Ink& ink, double alpha)
{
    const auto mix = [=](unsigned char component) {
        return alpha * component / 255 + (1 - alpha) * 0.3;
    };
    return MakePixel(mix(ink.red), mix(ink.green), mix(ink.blue));
}

class BackgroundPicture : public GlWindowTest
{
protected:
    void SetUp() override
    {
        GlWindowTest::SetUp();
        Open(200, 200);
        mainview.smallcubefade = 0;
        mainview.imagefade = fadedone;
    }

    void TearDown() override
    {
        mainview.imagefade = 0;
        Draw(); // gives the texture back
        EXPECT_EQ(textid, 0U);
        if (mainview.bgimage != nullptr) {
            g_object_unref(mainview.bgimage);
        }
        GlWindowTest::TearDown();
    }

    Picture Draw() const
    {
        return window->Draw([] { BgDrawAfter(&mainview); });
    }
};

TEST_F(BackgroundPicture, StandsUprightWithThreeTenthsOfItsColor)
{
    EXPECT_TRUE(SetBackgroundPicture(&mainview, MakeQuarters(64, 64)));
    const Picture picture = Draw();
    EXPECT_EQ(picture.AtView(-0.25, 0.25), Blend(red, 0.3));
    EXPECT_EQ(picture.AtView(0.25, 0.25), Blend(green, 0.3));
    EXPECT_EQ(picture.AtView(-0.25, -0.25), Blend(blue, 0.3));
    EXPECT_EQ(picture.AtView(0.25, -0.25), Blend(white, 0.3));
}

TEST_F(BackgroundPicture, FadesWithItsByte)
{
    SetBackgroundPicture(&mainview, MakePlain(64, 64, white));
    mainview.imagefade = fadetarget; // level 0: there already, and invisible
    EXPECT_EQ(Draw().AtView(0.1, 0.1), cleared);
    EXPECT_NE(textid, 0U);
    mainview.imagefade = 5; // on its way out: 0.5 - 0.5 cos(60 degrees) = 0.25
    EXPECT_EQ(Draw().AtView(0.1, 0.1), Blend(white, 0.3 * 0.25));
    mainview.imagefade = 0;
    EXPECT_EQ(Draw().AtView(0.1, 0.1), cleared);
    EXPECT_EQ(textid, 0U);
}

TEST_F(BackgroundPicture, CountsItsOwnAlphaToo)
{
    EXPECT_TRUE(SetBackgroundPicture(&mainview, MakeImage(64, 64, true, [](int x, int) {
        return x < 32 ? Ink{255, 0, 0, 128} : Ink{0, 0, 0, 0};
    })));
    const Picture picture = Draw();
    EXPECT_EQ(picture.AtView(-0.25, 0), Blend(red, 0.3 * 128 / 255));
    EXPECT_EQ(picture.AtView(0.25, 0), cleared);
}

TEST_F(BackgroundPicture, KeepsItsProportions)
{
    SetBackgroundPicture(&mainview, MakePlain(100, 50, white)); // 1 wide, so 0.5 high
    const Picture picture = Draw();
    for (const double x : {-0.49, 0.0, 0.49}) {
        EXPECT_EQ(picture.AtView(x, 0.24), Blend(white, 0.3));
        EXPECT_EQ(picture.AtView(x, -0.24), Blend(white, 0.3));
        EXPECT_EQ(picture.AtView(x, 0.26), cleared);
        EXPECT_EQ(picture.AtView(x, -0.26), cleared);
    }
}

TEST_F(BackgroundPicture, FillsTheShorterWayOfAWideView)
{
    Open(300, 100);
    SetBackgroundPicture(&mainview, MakePlain(200, 100, white)); // 1 high, so 2 wide in a view of 3
    const Picture picture = Draw();
    EXPECT_EQ(picture.AtView(0.98, 0.48), Blend(white, 0.3));
    EXPECT_EQ(picture.AtView(-0.98, -0.48), Blend(white, 0.3));
    EXPECT_EQ(picture.AtView(1.02, 0), cleared);
    EXPECT_EQ(picture.AtView(-1.02, 0), cleared);
}

// The texture is 8 wide and the picture 5 by 3: nothing of the padding may be seen, nor the
// opposite edge.
TEST_F(BackgroundPicture, HasCleanEdges)
{
    SetBackgroundPicture(&mainview, MakePlain(5, 3, white));
    Picture picture = Draw(); // half 0.3 high
    for (const double x : {-0.4975, 0.0025, 0.4975}) {
        for (const double y : {-0.2925, 0.0025, 0.2925}) {
            EXPECT_EQ(picture.AtView(x, y), Blend(white, 0.3)) << x << ", " << y;
        }
    }
    SetBackgroundPicture(&mainview, MakeQuarters(4, 4)); // it fills its texture
    picture = Draw();
    EXPECT_EQ(picture.AtView(-0.4975, 0.4975), Blend(red, 0.3));
    EXPECT_EQ(picture.AtView(0.4975, 0.4975), Blend(green, 0.3));
    EXPECT_EQ(picture.AtView(-0.4975, -0.4975), Blend(blue, 0.3));
    EXPECT_EQ(picture.AtView(0.4975, -0.4975), Blend(white, 0.3));
}

TEST_F(BackgroundPicture, TakesRowsOfAnyLength) // 3, 9 and 27 bytes, padded to fours
{
    for (const int size : {1, 3, 9}) {
        SetBackgroundPicture(&mainview, MakeImage(size, size, false, [=](int x, int y) {
            const bool middle =
                std::abs(x - size / 2) <= size / 6 && std::abs(y - size / 2) <= size / 6;
            return middle ? red : white;
        }));
        EXPECT_EQ(Draw().AtView(0, 0), Blend(red, 0.3)) << size;
    }
}

TEST_F(BackgroundPicture, StaysWhereItIsInTheWorld)
{
    SetBackgroundPicture(&mainview, MakePlain(64, 64, white));
    Draw();
    mainview.scale = 0.5; // now it spans 0.25 each way
    Picture picture = Draw();
    EXPECT_EQ(picture.AtView(0.24, 0.24), Blend(white, 0.3));
    EXPECT_EQ(picture.AtView(0.26, 0), cleared);
    mainview.center[0] = 0.4F; // moves it by 0.2 to the left: from -0.45 to 0.05
    picture = Draw();
    EXPECT_EQ(picture.AtView(-0.44, 0), Blend(white, 0.3));
    EXPECT_EQ(picture.AtView(0.04, 0), Blend(white, 0.3));
    EXPECT_EQ(picture.AtView(-0.46, 0), cleared);
    EXPECT_EQ(picture.AtView(0.06, 0), cleared);
}

TEST_F(BackgroundPicture, IsPutOnTheScreenAsItIsWhenItFirstShows)
{
    mainview.scale = 4;
    mainview.center[1] = 7;
    SetRotation(MakeTurn({1, 2, 3}, 70 * degree));
    mainview.perspective = fadedone;
    SetBackgroundPicture(&mainview, MakeQuarters(64, 64));
    const Picture picture = Draw();
    EXPECT_EQ(picture.AtView(-0.48, 0.48), Blend(red, 0.3));
    EXPECT_EQ(picture.AtView(0.48, -0.48), Blend(white, 0.3));
}

TEST_F(BackgroundPicture, IsPutOnTheScreenAgainAfterItHasFadedOut)
{
    SetBackgroundPicture(&mainview, MakePlain(64, 64, white));
    Draw();
    mainview.scale = 0.5;
    mainview.imagefade = 0;
    Draw();
    mainview.imagefade = fadedone;
    EXPECT_EQ(Draw().AtView(0.48, 0.48), Blend(white, 0.3));
}

TEST_F(BackgroundPicture, GivesWayToANewOne)
{
    SetBackgroundPicture(&mainview, MakePlain(64, 64, red));
    EXPECT_EQ(Draw().AtView(0, 0.3), Blend(red, 0.3));
    GtkWidget* former = mainview.bgimage;
    g_object_add_weak_pointer(G_OBJECT(former), reinterpret_cast<gpointer*>(&former));
    SetBackgroundPicture(&mainview, MakePlain(128, 64, blue));
    EXPECT_EQ(former, nullptr); // it was ours, and is gone
    const Picture picture = Draw();
    EXPECT_EQ(picture.AtView(0, 0.2), Blend(blue, 0.3));
    EXPECT_EQ(picture.AtView(0, 0.3), cleared); // with proportions of its own
}

TEST_F(BackgroundPicture, LiesAtDepthZeroAndWritesNone)
{
    SetBackgroundPicture(&mainview, MakePlain(64, 64, white));
    const auto drawsheet = [](float depth) {
        const float corners[4][2] = {{-2, -2}, {2, -2}, {2, 2}, {-2, 2}};
        glColor4f(0, 0, 0, 1);
        glBegin(GL_QUADS);
        for (const float* corner : corners) {
            glVertex3f(corner[0], corner[1], depth);
        }
        glEnd();
    };
    const auto drawbehind = [&](float depth) {
        return window->Draw([&] {
            drawsheet(depth);
            BgDrawAfter(&mainview);
        });
    };
    EXPECT_EQ(drawbehind(0.01F).AtView(0.1, 0.1), MakePixel(0, 0, 0));
    EXPECT_EQ(drawbehind(-0.01F).AtView(0.1, 0.1), MakePixel(0.3, 0.3, 0.3));
    const Picture covered =
        window->DrawAndCover([] { BgDrawAfter(&mainview); }, -1); // farther than the picture
    EXPECT_EQ(covered.AtView(0.1, 0.1), MakePixel(1, 0, 0));
}

TEST_F(BackgroundPicture, IsNoneWithoutPixels)
{
    SetBackgroundPicture(&mainview, MakePlain(64, 64, red));
    Draw();
    EXPECT_FALSE(SetBackgroundPicture(
        &mainview, gtk_image_new_from_stock(GTK_STOCK_MISSING_IMAGE, GTK_ICON_SIZE_MENU)));
    EXPECT_EQ(Draw().AtView(0.1, 0.1), cleared);
    EXPECT_EQ(textid, 0U);
    EXPECT_FALSE(SetBackgroundPicture(&mainview, gtk_image_new()));
    EXPECT_EQ(Draw().AtView(0.1, 0.1), cleared);
}

// Red on the left and blue on the right, wider than the texture may be.
TEST_F(BackgroundPicture, IsScaledDownToTheGreatestTexture)
{
    constexpr int limit = 4096;
    constexpr int wide = 2 * limit;
    SetBackgroundPicture(&mainview, MakeImage(wide, limit / 8, false, [=](int x, int) {
        return x < wide / 2 ? red : blue;
    })); // a sixteenth as high as wide
    const Picture picture = Draw();
    EXPECT_EQ(picture.AtView(-0.48, 0.0275), Blend(red, 0.3));
    EXPECT_EQ(picture.AtView(0.48, -0.0275), Blend(blue, 0.3));
    EXPECT_EQ(picture.AtView(0.25, 0.0375), cleared);
    EXPECT_EQ(picture.AtView(0.25, -0.0375), cleared);
    window->Run([&] {
        GLint size = 0;
        glBindTexture(GL_TEXTURE_2D, textid);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &size);
        EXPECT_EQ(size, limit);
        glBindTexture(GL_TEXTURE_2D, 0);
    });
}

} // namespace korvane
