// The colours of the image.
#include "export/image.h"

#include "scene/model.h"
#include "tests/support/glwindow.h"
#include "tests/support/imagemaking.h"
#include "tests/support/paintedshapes.h"
#include "tests/support/plainimage.h"
#include "view/glsetup.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace korvane
{

using namespace korvane::testing;

static constexpr Colors red = {1, 0, 0, 1};
static constexpr Colors blue = {0, 0, 1, 1};
static constexpr Colors clearred = {1, 0, 0, 0.5F};
static constexpr Colors clearblue = {0, 0, 1, 0.5F};

using ImagePixels = ImageTest;

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

// The share of the light without the programs, on a face that looks at the viewer or away from
// him: the light comes from (-1, 1, 1).
static const double fixedlight = 1 - std::acos(1 / std::sqrt(3.0)) / std::numbers::pi;

TEST_F(ImagePixels, TakeTheFixedColorsWithoutThePrograms)
{
    Add(SquareAt(0, 0, 0));
    forcefixed = 1;
    const double grey = 0.2 + 0.6 * fixedlight;
    EXPECT_EQ(MakeImage().At(640, 500), MakePixel(grey, grey, grey));
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

// A square whose front is green all over, while its back goes from red in the light to blue.
static OwnedShape TwoFacedSquare()
{
    OwnedShape square = PlainSquareAt(0, 0, 0, {0, 1, 0, 1});
    Paint(square->sides[0], BACK_LIGHT, {1, 0, 0, 1}, {0, 0, 1, 1});
    return square;
}

// The turned normal is that of the front, and so is the share of the light.
static const Pixel litback = MakePixel(0.74254, 0, 1 - 0.74254);

TEST_F(ImagePixels, ShowABackInItsOwnColors)
{
    Add(TwoFacedSquare());
    LookFromBehind();
    EXPECT_EQ(MakeImage().At(640, 500), litback);
}

TEST_F(ImagePixels, ShowNothingOfAFrontToACameraBehindIt)
{
    const Image empty = MakeImage();
    OwnedShape square = TwoFacedSquare();
    square->sides[0].visibility = VISIBLE_FRONT;
    Add(std::move(square));
    LookFromBehind();
    EXPECT_EQ(MakeImage(), empty);
}

TEST_F(ImagePixels, ShowABackAloneToACameraBehindIt)
{
    OwnedShape square = TwoFacedSquare();
    square->sides[0].visibility = VISIBLE_BACK;
    Add(std::move(square));
    LookFromBehind();
    const Image image = MakeImage();
    EXPECT_EQ(image.At(640, 500), litback);
    EXPECT_EQ(image.AlphaAt(640, 500), 255);
}

TEST_F(ImagePixels, TakeTheFixedColorsOfABackWithoutThePrograms)
{
    Add(TwoFacedSquare());
    LookFromBehind();
    forcefixed = 1;
    EXPECT_EQ(MakeImage().At(640, 500), MakePixel(fixedlight, 0, 1 - fixedlight));
}

TEST_F(ImagePixels, LayClearOverOpaqueWithoutThePrograms)
{
    Add(PlainSquareAt(0, 0, -0.1F, blue));
    Add(PlainSquareAt(0.25F, 0, 0.1F, clearred)); // the left half of the blue one stays free
    forcefixed = 1;
    const Image image = MakeImage();
    EXPECT_EQ(image.At(740, 500), MakePixel(0.5, 0, 0.5));
    EXPECT_EQ(image.AlphaAt(740, 500), 255);
    EXPECT_EQ(image.At(540, 500), (Pixel{0, 0, 255}));
    EXPECT_EQ(image.At(1040, 500), MakePixel(0.65, 0.15, 0.15)); // over the cleared colour
    EXPECT_NEAR(image.AlphaAt(1040, 500), 0.25 * 255, 1);
}

// Nine triangles of one, and nine of each of them.
TEST_F(ImagePixels, ShowARoundedShapeOneSubdivisionFiner)
{
    Add(SquareAt(0, 0, 0));
    ProjectScene();
    ASSERT_EQ(showtable[0], SHOW_ROUNDED);
    EXPECT_EQ(CollectTriangles().size(), 2U * 9 * 9);
}

} // namespace korvane
