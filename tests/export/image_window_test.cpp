// The pixels of the image.
#include "export/image.h"

#include "export/imageorder.h"
#include "geometry/shapegeometry.h"
#include "scene/model.h"
#include "tests/support/glwindow.h"
#include "tests/support/imagemaking.h"
#include "tests/support/paintedshapes.h"
#include "tests/support/plainimage.h"
#include "view/glsetup.h"
#include "view/mainview.h"

#include <GL/glew.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace korvane
{

using namespace korvane::testing;

static constexpr double pixel = 1.0 / 1024; // in view units

// A box with a face before the viewer that fills this rectangle, and deep behind it. All corners
// are marked, so that it stays a box when it is rounded.
static OwnedShape Box(double left, double bottom, double right, double top, const Colors& color)
{
    OwnedShape box = Cube();
    for (int i = 0; i < box->pointnumber; i++) {
        float* point = box->points[i];
        point[0] = float(point[0] < 0 ? left : right);
        point[1] = float(point[1] < 0 ? bottom : top);
    }
    SetVertexes(box.get(), {0, 1, 2, 3, 4, 5, 6, 7});
    for (int i = 0; i < box->sidenumber; i++) {
        PaintPlain(box->sides[i], color);
    }
    CompleteShape(box.get());
    return box;
}

static constexpr Colors red = {1, 0, 0, 1};
static constexpr Colors blue = {0, 0, 1, 1};
static constexpr Colors white = {1, 1, 1, 1};
static constexpr Colors clearred = {1, 0, 0, 0.5F};
static constexpr Colors clearblue = {0, 0, 1, 0.5F};

class ImagePixels : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyView();
    }
    void TearDown() override
    {
        StartEmptyView();
    }

    static int Add(OwnedShape shape)
    {
        AddShape(shape.release());
        selected[shapenumber - 1] = selectedfade;
        return shapenumber - 1;
    }

    Image MakeImage()
    {
        ProjectScene();
        return MakeImageIn(window);
    }

    // Sheets of many colours that cross each other, clear ones among them.
    static void AddCrossingSheets();

    GlWindow window{300, 300};
};

TEST_F(ImagePixels, AreClearedWithoutAnyShape)
{
    const Image image = MakeImage();
    ASSERT_EQ(image.pixels.size(), 1280U * 1024 * 4);
    for (std::size_t i = 0; i < image.pixels.size(); i += 4) {
        ASSERT_NEAR(image.pixels[i], 0.3 * 255, 1);
        ASSERT_EQ(image.pixels[i], image.pixels[i + 1]);
        ASSERT_EQ(image.pixels[i], image.pixels[i + 2]);
        ASSERT_EQ(image.pixels[i + 3], 0);
    }
}

TEST_F(ImagePixels, AreClearedWhenEveryShapeIsHidden)
{
    const Image empty = MakeImage();
    const int cube = Add(Cube());
    selected[cube] = 0;
    EXPECT_EQ(MakeImage(), empty);
}

// With the light from (1.5, -1, -1) the squared half distance is (1 + 1 / sqrt 4.25) / 2 = 0.74254:
// light 0.8 and shadow 0.2 give 0.64552.
TEST_F(ImagePixels, ShowADefaultSquareSeenSquareOn)
{
    Add(SquareAt(0, 0, 0));
    const Image image = MakeImage();
    EXPECT_EQ(image.At(640, 500), MakePixel(0.64552, 0.64552, 0.64552));
    EXPECT_EQ(image.AlphaAt(640, 500), 255);
}

// From -0.25 to 0.25 and from 0.125 to 0.25: columns 384 to 895, rows 256 to 383.
TEST_F(ImagePixels, LieWhereTheViewShowsThem)
{
    Add(Box(-0.25, 0.125, 0.25, 0.25, red));
    const Image image = MakeImage();
    for (const auto& [x, y] : {std::array{384, 256}, {895, 256}, {384, 383}, {895, 383}}) {
        EXPECT_EQ(image.At(x, y), (Pixel{255, 0, 0})) << x << " " << y;
        EXPECT_EQ(image.AlphaAt(x, y), 255);
    }
    for (const auto& [x, y] : {std::array{383, 300}, {896, 300}, {640, 255}, {640, 384}}) {
        EXPECT_EQ(image.At(x, y), cleared) << x << " " << y;
        EXPECT_EQ(image.AlphaAt(x, y), 0);
    }
}

TEST_F(ImagePixels, TakeTheFixedColorsWithoutThePrograms)
{
    Add(SquareAt(0, 0, 0));
    forcefixed = 1;
    const double t = 1 - std::acos(1 / std::sqrt(3.0)) / std::numbers::pi; // seen from (-1, 1, 1)
    const double grey = 0.2 + 0.6 * t;
    EXPECT_EQ(MakeImage().At(640, 500), MakePixel(grey, grey, grey));
}

TEST_F(ImagePixels, HaveTheUpperRowsOfTheViewFirst)
{
    Add(Box(-0.6, 0.3, -0.4, 0.45, red));
    const Image image = MakeImage();
    EXPECT_EQ(image.At(100, 100), (Pixel{255, 0, 0})); // x = -0.527, y = 0.402
    EXPECT_EQ(image.At(100, 923), cleared);
    EXPECT_EQ(image.At(1179, 100), cleared);
}

// Half of red over blue; the alphas' squares add up.
TEST_F(ImagePixels, LayClearOverOpaque)
{
    Add(PlainSquareAt(0, 0, 0.1F, clearred));
    Add(PlainSquareAt(0, 0, -0.1F, blue));
    const Image image = MakeImage();
    EXPECT_EQ(image.At(640, 500), MakePixel(0.5, 0, 0.5));
    EXPECT_EQ(image.AlphaAt(640, 500), 255); // 0.25 + 1, cut off
}

TEST_F(ImagePixels, LayClearOverTheClearedColor)
{
    Add(PlainSquareAt(0, 0, 0.1F, clearred));
    const Image image = MakeImage();
    EXPECT_EQ(image.At(640, 500), MakePixel(0.65, 0.15, 0.15));
    EXPECT_NEAR(image.AlphaAt(640, 500), 0.25 * 255, 1);
}

// The farther one is drawn first, whatever their order in the scene, so both are seen.
TEST_F(ImagePixels, LayClearOverClear)
{
    const Pixel mixed = MakePixel(0.5 + 0.25 * 0.3, 0.25 * 0.3, 0.25 + 0.25 * 0.3);
    Add(PlainSquareAt(0, 0, 0.1F, clearred));
    Add(PlainSquareAt(0, 0, -0.1F, clearblue));
    EXPECT_EQ(MakeImage().At(640, 500), mixed);
    StartEmptyView();
    Add(PlainSquareAt(0, 0, -0.1F, clearblue));
    Add(PlainSquareAt(0, 0, 0.1F, clearred));
    EXPECT_EQ(MakeImage().At(640, 500), mixed);
}

TEST_F(ImagePixels, TellSheetsApartThatLieCloselyTogether)
{
    Add(PlainSquareAt(0, 0, 0.0001F, red));
    Add(PlainSquareAt(0, 0, -0.0001F, blue));
    const Image image = MakeImage();
    for (int x = 450; x < 830; x++) { // well within the rounded outline
        ASSERT_EQ(image.At(x, 500), (Pixel{255, 0, 0})) << x;
    }
}

TEST_F(ImagePixels, ShowNothingOfAOneSidedSideFromBehind)
{
    const int square = Add(PlainSquareAt(0, 0, 0, red));
    for (const auto& [visibility, seen] : {std::pair{VISIBLE_FRONT, true}, {VISIBLE_BACK, false}}) {
        shapes[square]->sides[0].visibility = visibility;
        ChangeShape(square);
        const Image image = MakeImage();
        EXPECT_EQ(image.At(640, 500), (seen ? Pixel{255, 0, 0} : cleared));
        EXPECT_EQ(image.AlphaAt(640, 500), seen ? 255 : 0);
    }
}

TEST_F(ImagePixels, ShowABackInItsOwnColors)
{
    OwnedShape square = PlainSquareAt(0, 0, 0, {0, 1, 0, 1});
    Paint(square->sides[0], BACK_LIGHT, {1, 0, 0, 1}, {0, 0, 1, 1});
    Add(std::move(square));
    mainview.rotation[0] = -1; // half a turn about the upright axis
    mainview.rotation[8] = -1;
    EXPECT_EQ(MakeImage().At(640, 500), MakePixel(0.74254, 0, 1 - 0.74254));
}

// In the four passes the picture moves by -0.21, 0.20, -0.29 and 0.30 pixels to the right. A right
// edge before, in or behind the middle of a pixel covers it in one, two or three of them.
TEST_F(ImagePixels, HaveEdgesWithIntermediateLevels)
{
    for (const auto& [part, passes] : {std::pair{0.25, 1}, {0.5, 2}, {0.75, 3}, {1.0, 4}}) {
        StartEmptyView();
        Add(Box(-0.25, -0.25, 0.25 + part * pixel, 0.25, white));
        const Image image = MakeImage();
        const double level = (77.0 * (4 - passes) + 255 * passes) / 4;
        EXPECT_NEAR(image.At(896, 500).red, level, 1) << part;
        EXPECT_NEAR(image.AlphaAt(896, 500), 255.0 * passes / 4, 1) << part;
        EXPECT_EQ(image.At(895, 500).red, 255);
        EXPECT_EQ(image.At(897, 500), cleared);
    }
}

// Up and down the passes move it by 0.35, -0.35, -0.15 and 0.15 pixels.
TEST_F(ImagePixels, HaveUpperEdgesWithIntermediateLevels)
{
    for (const auto& [part, passes] : {std::pair{0.25, 1}, {0.5, 2}, {0.75, 3}, {1.0, 4}}) {
        StartEmptyView();
        Add(Box(-0.25, -0.25, 0.25, 0.25 + part * pixel, white));
        const double level = (77.0 * (4 - passes) + 255 * passes) / 4;
        EXPECT_NEAR(MakeImage().At(640, 255).red, level, 1) << part;
    }
}

// Nine triangles of one, and nine of each of them.
TEST_F(ImagePixels, ShowARoundedShapeOneSubdivisionFiner)
{
    Add(SquareAt(0, 0, 0));
    ProjectScene();
    ASSERT_EQ(showtable[0], SHOW_ROUNDED);
    EXPECT_EQ(CollectTriangles().size(), 2U * 9 * 9);
}

void ImagePixels::AddCrossingSheets()
{
    for (int i = 0; i < 3; i++) {
        OwnedShape sheet = CheckeredSheet(6);
        for (int k = 0; k < sheet->sidenumber; k++) {
            const float alpha = (k + i) % 3 == 0 ? 0.4F : 1;
            Paint(sheet->sides[k], FRONT_LIGHT, {float(k % 5) / 5, 0.7F, float(i) / 3, alpha},
                  {0.1F, float(k % 2), 0.2F, alpha});
            sheet->sides[k].colors[FRONT_ACUITY] = 0.5F;
        }
        for (int k = 0; k < sheet->pointnumber; k++) {
            float* point = sheet->points[k];
            point[2] = float(i - 1) * point[0] + 0.3F * point[1];
        }
        CompleteShape(sheet.get());
        Add(std::move(sheet));
    }
}

// The rounding of the average is all that may differ.
TEST_F(ImagePixels, AreThoseOfThePlainMethod)
{
    AddCrossingSheets();
    const Image image = MakeImage();
    std::vector<float> plain;
    window.Run([&] { plain = DrawPlainly(CollectTriangles(), LIGHT_PERTRIANGLE); });
    ASSERT_EQ(plain.size(), image.pixels.size());
    float difference = 0;
    int averaged = 0;
    for (std::size_t i = 0; i < plain.size(); i++) {
        difference = std::max(difference, std::abs(float(image.pixels[i]) - plain[i]));
        averaged += plain[i] != std::floor(plain[i]) ? 1 : 0;
    }
    EXPECT_LE(difference, 0.5F);
    EXPECT_GT(averaged, 10000); // the scene has edges enough
}

TEST_F(ImagePixels, DoNotDependOnTheWindow)
{
    AddCrossingSheets();
    const Image image = MakeImage();
    const GlWindow other(700, 270);
    EXPECT_EQ(MakeImageIn(other), image);
}

// Some driver may have none: the hidden buffer of a window that is large enough serves too.
TEST_F(ImagePixels, AreTheSameWithoutFrameBufferObjects)
{
    AddCrossingSheets();
    const Image image = MakeImage();
    __GLEW_ARB_framebuffer_object = GL_FALSE;
    EXPECT_EQ(MakeImage(), image);
    __GLEW_ARB_framebuffer_object = GL_TRUE;
}

TEST_F(ImagePixels, IncludeShapesThatTheViewCulls)
{
    OwnedShape box = Box(0.55, -0.02, 0.6, 0.02, red); // beside a square view
    for (int i = 0; i < box->pointnumber; i++) {
        box->points[i][2] *= 0.04F;
    }
    CompleteShape(box.get());
    Add(std::move(box));
    ProjectScene();
    ASSERT_EQ(showtable[0], SHOW_NOTHING);
    EXPECT_EQ(MakeImage().At(1225, 512), (Pixel{255, 0, 0})); // x = 0.571
    EXPECT_EQ(showtable[0], SHOW_NOTHING);                    // the view's projection is back
}

} // namespace korvane
