#include "view/scenedraw.h"

#include "geometry/construction.h"
#include "scene/model.h"
#include "tests/support/glwindow.h"
#include "tests/support/paintedshapes.h"
#include "view/glsetup.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace korvane
{

using namespace korvane::testing;

constexpr int windowsize = 200; // pixels; a pixel is 0.005 view units

static OwnedShape TurnOver(OwnedShape shape)
{
    Points points;
    for (int i = shape->pointnumber - 1; i >= 0; i--) {
        points.push_back({shape->points[i][0], shape->points[i][1], shape->points[i][2]});
    }
    return MakeFlatShape(points);
}

class SceneDrawing : public ::testing::Test
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

    // Adds a shape that is fully shown and not marked in the tree, so that its sides are drawn
    // alone.
    static int Add(OwnedShape shape)
    {
        AddShape(shape.release());
        selected[shapenumber - 1] = selectedfade;
        return shapenumber - 1;
    }

    // The scene projected, and drawn from the plain copies, whose corners stay where they are.
    Picture DrawPlain()
    {
        ProjectScene();
        std::fill_n(showtable, shapenumber, int(SHOW_PLAIN));
        return window.DrawScene();
    }

    GlWindow window{windowsize, windowsize};
};

// A normal straight to the viewer and the light from (1.5, -1, -1): the squared half distance is
// (1 + 1 / sqrt 4.25) / 2 = 0.74254, so that light 0.8 and shadow 0.2 give 0.64552 with acuity 1;
// squared, 0.55136 and 0.53082, with acuity 0.5; and the shadow alone with acuity 0.
TEST_F(SceneDrawing, ShadesADefaultSideThroughThePrograms)
{
    const int shape = Add(SquareAt(0, 0, 0));
    ASSERT_TRUE(UsesPrograms());
    EXPECT_EQ(DrawPlain().AtView(0.1, 0.05), MakePixel(0.64552, 0.64552, 0.64552)); // 165
    shapes[shape]->sides[0].colors[FRONT_ACUITY] = 0.5F;
    ChangeShape(shape);
    EXPECT_EQ(DrawPlain().AtView(0.1, 0.05), MakePixel(0.53082, 0.53082, 0.53082)); // 135
    shapes[shape]->sides[0].colors[FRONT_ACUITY] = 0;
    ChangeShape(shape);
    EXPECT_EQ(DrawPlain().AtView(0.1, 0.05), MakePixel(0.2, 0.2, 0.2)); // 51
}

// How much light a side straight before the viewer has in the fixed-function path: its normal and
// (-1, 1, 1) enclose an angle whose cosine is 1 / sqrt 3.
static double GetFlatWeight()
{
    return 1 - std::acos(1 / std::sqrt(3.0)) / std::numbers::pi;
}

TEST_F(SceneDrawing, ShadesADefaultSideWithoutThePrograms)
{
    Add(SquareAt(0, 0, 0));
    forcefixed = 1;
    const double grey = 0.2 + 0.6 * GetFlatWeight();
    EXPECT_EQ(DrawPlain().AtView(0.1, 0.05), MakePixel(grey, grey, grey));
}

TEST_F(SceneDrawing, ShowsTheBackOfATurnedSideInItsBackColors)
{
    OwnedShape square = TurnOver(SquareAt(0, 0, 0));
    Paint(square->sides[0], FRONT_LIGHT, {0, 1, 0, 1}, {0, 1, 0, 1});
    Paint(square->sides[0], BACK_LIGHT, {1, 0, 0, 1}, {0, 0, 1, 1});
    square->sides[0].colors[FRONT_ACUITY] = 0;
    Add(std::move(square));
    EXPECT_EQ(DrawPlain().AtView(0.1, 0.05), MakePixel(0.74254, 0, 1 - 0.74254));
    forcefixed = 1;
    const double t = GetFlatWeight();
    EXPECT_EQ(DrawPlain().AtView(0.1, 0.05), MakePixel(t, 0, 1 - t));
}

TEST_F(SceneDrawing, ShadesTheBackOfADefaultSideLikeItsFront)
{
    Add(TurnOver(SquareAt(0, 0, 0)));
    EXPECT_EQ(DrawPlain().AtView(0.1, 0.05), MakePixel(0.64552, 0.64552, 0.64552));
}

TEST_F(SceneDrawing, TakesTheBackAcuityForTheBack)
{
    OwnedShape square = TurnOver(SquareAt(0, 0, 0));
    square->sides[0].colors[BACK_ACUITY] = 0;
    Add(std::move(square));
    EXPECT_EQ(DrawPlain().AtView(0.1, 0.05), MakePixel(0.2, 0.2, 0.2));
}

// Draws a square with each visibility in both paths and compares what is seen with the background.
static void ExpectShown(const std::function<Picture()>& draw, const std::array<bool, 4>& shown)
{
    for (const int visibility : {VISIBLE_NOT, VISIBLE_FRONT, VISIBLE_BACK, VISIBLE_BOTH}) {
        shapes[0]->sides[0].visibility = visibility;
        ChangeShape(0);
        for (const char fixed : {'\0', '\1'}) {
            forcefixed = fixed;
            EXPECT_EQ(!(draw().AtView(0.1, 0.05) == cleared), shown[std::size_t(visibility)])
                << "visibility " << visibility << ", fixed " << int(fixed);
        }
    }
}

TEST_F(SceneDrawing, ShowsOfASideOnlyTheFacesThatAreVisible)
{
    Add(SquareAt(0, 0, 0));
    ExpectShown([this] { return DrawPlain(); }, {false, true, false, true});
}

TEST_F(SceneDrawing, ShowsOfATurnedSideOnlyTheFacesThatAreVisible)
{
    Add(TurnOver(SquareAt(0, 0, 0)));
    ExpectShown([this] { return DrawPlain(); }, {false, false, true, true});
}

TEST_F(SceneDrawing, LeavesNoTraceOfAnInvisibleSide)
{
    OwnedShape square = SquareAt(0, 0, 0);
    square->sides[0].visibility = VISIBLE_NOT;
    Add(std::move(square));
    mainview.linesfade = 0;
    const Picture picture = DrawPlain(); // the border neither
    for (int i = 0; i < windowsize; i++) {
        EXPECT_EQ(picture.At(i, i), cleared);
        EXPECT_EQ(picture.At(i, windowsize / 2), cleared);
        EXPECT_EQ(picture.At(windowsize / 4, i), cleared);
    }
}

// Two squares over one another in one shape: side 0 near and translucent, side 1 far and opaque.
static OwnedShape MakeTwoLayers()
{
    constexpr float h = 0.25F;
    OwnedShape shape = MakeShape({{-h, -h, 0.2F},
                                  {h, -h, 0.2F},
                                  {h, h, 0.2F},
                                  {-h, h, 0.2F},
                                  {-h, -h, -0.2F},
                                  {h, -h, -0.2F},
                                  {h, h, -0.2F},
                                  {-h, h, -0.2F}},
                                 {{0, 1, 2, 3}, {4, 5, 6, 7}});
    PaintPlain(shape->sides[0], {1, 0, 0, 0.25F});
    PaintPlain(shape->sides[1], {0, 0, 1, 1});
    return shape;
}

TEST_F(SceneDrawing, DrawsTheOpaqueSidesOfAShapeFirst)
{
    Add(MakeTwoLayers());
    EXPECT_EQ(DrawPlain().AtView(0.1, 0.05), MakePixel(0.25, 0, 0.75));
    forcefixed = 1;
    EXPECT_EQ(DrawPlain().AtView(0.1, 0.05), MakePixel(0.25, 0, 0.75));
}

TEST_F(SceneDrawing, DrawsTranslucentSidesInTheirOrder)
{
    OwnedShape shape = MakeTwoLayers();
    PaintPlain(shape->sides[1], {0, 0, 1, 0.25F});
    Add(std::move(shape));
    // The near side is drawn first and writes its depth: the far one is lost behind it.
    const Pixel expected = MakePixel(0.3 * 0.75 + 0.25, 0.3 * 0.75, 0.3 * 0.75);
    EXPECT_EQ(DrawPlain().AtView(0.1, 0.05), expected);
    forcefixed = 1;
    EXPECT_EQ(DrawPlain().AtView(0.1, 0.05), expected);
}

TEST_F(SceneDrawing, DrawsFartherShapesFirst)
{
    Add(PlainSquareAt(0, 0, 0.2F, {1, 0, 0, 0.25F}));
    Add(PlainSquareAt(0, 0, -0.2F, {0, 0, 1, 0.25F}));
    // Blue over the background, then red over both.
    const double under = 0.3 * 0.75;
    EXPECT_EQ(DrawPlain().AtView(0.1, 0.05),
              MakePixel(under * 0.75 + 0.25, under * 0.75, (under + 0.25) * 0.75));
}

TEST_F(SceneDrawing, KeepsTheColorsOfManySidesApart)
{
    // A row of eight strips, in four colours by turns and every other one turned over.
    constexpr Colors colors[4] = {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}, {1, 1, 0, 1}};
    Points points;
    Outlines sides;
    for (int i = 0; i < 8; i++) {
        const float x = -0.4F + 0.1F * float(i);
        const int first = int(points.size());
        for (const auto& corner : {std::array<float, 3>{x, -0.2F, 0},
                                   {x + 0.1F, -0.2F, 0},
                                   {x + 0.1F, 0.2F, 0},
                                   {x, 0.2F, 0}}) {
            points.push_back(corner);
        }
        sides.push_back(i % 2 == 0 ? std::vector<int>{first, first + 1, first + 2, first + 3}
                                   : std::vector<int>{first, first + 3, first + 2, first + 1});
    }
    OwnedShape row = MakeShape(points, sides);
    for (int i = 0; i < 8; i++) {
        PaintPlain(row->sides[i],
                   colors[i / 2]); // two neighbours share a light state but no facing
    }
    Add(std::move(row));
    const Picture picture = DrawPlain();
    for (int i = 0; i < 8; i++) {
        const Colors& color = colors[i / 2];
        EXPECT_EQ(picture.AtView(-0.35 + 0.1 * i, 0.05), MakePixel(color[0], color[1], color[2]))
            << i;
    }
}

TEST_F(SceneDrawing, ChangesTheLightWithTheFacing)
{
    OwnedShape sheet = CheckeredSheet(10); // every second square shows its back
    for (int i = 0; i < sheet->sidenumber; i++) {
        Paint(sheet->sides[i], FRONT_LIGHT, {0, 1, 0, 1}, {0, 1, 0, 1});
        Paint(sheet->sides[i], BACK_LIGHT, {1, 0, 0, 1}, {1, 0, 0, 1});
    }
    Add(std::move(sheet));
    const Picture picture = DrawPlain();
    for (int i = 0; i < 10; i++) { // a square is ten pixels wide
        for (int j = 0; j < 10; j++) {
            EXPECT_EQ(picture.At(53 + 10 * i, 56 + 10 * j),
                      (i + j) % 2 == 0 ? MakePixel(0, 1, 0) : MakePixel(1, 0, 0))
                << i << " " << j;
        }
    }
}

TEST_F(SceneDrawing, DrawsMoreTrianglesThanWaitTogether)
{
    OwnedShape sheet = CheckeredSheet(50); // 5000 triangles that share one light state
    for (int i = 0; i < sheet->sidenumber; i++) {
        PaintPlain(sheet->sides[i], {0, 1, 0, 1});
    }
    Add(std::move(sheet));
    antialiasingok = 0; // the borders of such small squares would cover them
    const Picture picture = DrawPlain();
    for (int x = 50; x < 150; x++) {
        for (int y = 50; y < 150; y++) {
            ASSERT_EQ(picture.At(x, y), MakePixel(0, 1, 0)) << x << " " << y;
        }
    }
}

TEST_F(SceneDrawing, FadesSidesByTheirDisplayAndTheirShape)
{
    Add(PlainSquareAt(0, 0, 0, {1, 0, 0, 1}));
    mainview.sidesfade = 5;           // weight 0.25
    selected[0] = selectedshown | 10; // weight 0.75
    const double alpha = 0.25 * 0.75;
    const Pixel expected =
        MakePixel(0.3 * (1 - alpha) + alpha, 0.3 * (1 - alpha), 0.3 * (1 - alpha));
    mainview.linesfade = 0;
    EXPECT_EQ(DrawPlain().AtView(0.1, 0.05), expected);
    forcefixed = 1;
    EXPECT_EQ(DrawPlain().AtView(0.1, 0.05), expected);
}

TEST_F(SceneDrawing, DrawsPlainAndRoundedCopies)
{
    Add(PlainSquareAt(0, 0, 0, {1, 0, 0, 1}));
    ProjectScene();
    ASSERT_EQ(showtable[0], SHOW_ROUNDED);
    // The corner (0.25, 0.25) is rounded away by a sixteenth of the square's side or more.
    EXPECT_EQ(window.DrawScene().AtView(0.2425, 0.2425), cleared);
    showtable[0] = SHOW_PLAIN;
    EXPECT_EQ(window.DrawScene().AtView(0.2425, 0.2425), MakePixel(1, 0, 0));
}

TEST_F(SceneDrawing, OutlinesTheTrianglesOfAHoveredSideInWhite)
{
    Add(PlainSquareAt(0.0025F, 0.0025F, 0, {1, 0, 0, 1})); // edges through the middles of pixels
    ProjectScene();
    showtable[0] = SHOW_PLAIN;
    activesides[0].fade = fadefull;
    Picture picture = window.DrawScene();
    EXPECT_GT(picture.AtView(0.1025, 0.2525).green, 128); // the upper edge
    // The side is cut from corner to corner at its first corner; the cut runs through the middle.
    EXPECT_GT(picture.AtView(0.0025, 0.0025).green, 128);
    EXPECT_EQ(picture.AtView(0.1, 0.05), MakePixel(1, 0, 0));
    const auto draw = [] { SceneDraw(&mainview); };
    EXPECT_GT(window.DrawAndCover(draw, 0.0115F).AtView(0.0025, 0.0025).green, 128); // at 0.012
    EXPECT_EQ(window.DrawAndCover(draw, 0.0125F).AtView(0.0025, 0.0025), MakePixel(1, 0, 0));
    activesides[0].fade = 0;
    picture = window.DrawScene();
    EXPECT_EQ(picture.AtView(0.0025, 0.0025), MakePixel(1, 0, 0));
}

// The lines of the picture whose pixels mix background and side.
static int CountMixedPixels(const Picture& picture)
{
    int number = 0;
    for (int y = 0; y < picture.height; y++) {
        for (int x = 0; x < picture.width; x++) {
            const Pixel pixel = picture.At(x, y);
            number += pixel.green > 2 && pixel.green < cleared.green - 2 ? 1 : 0;
        }
    }
    return number;
}

TEST_F(SceneDrawing, SmoothsTheBorderInTheColorOfTheSide)
{
    OwnedShape triangle = MakeFlatShape({{-0.3F, -0.3F, 0}, {0.35F, -0.2F, 0}, {0, 0.3F, 0}});
    PaintPlain(triangle->sides[0], {1, 0, 0, 1});
    Add(std::move(triangle));
    mainview.linesfade = 0;
    for (const char fixed : {'\0', '\1'}) {
        forcefixed = fixed;
        antialiasingok = 0;
        EXPECT_EQ(CountMixedPixels(DrawPlain()), 0);
        antialiasingok = 1;
        const Picture smooth = DrawPlain();
        EXPECT_GT(CountMixedPixels(smooth),
                  windowsize); // along three edges of more than 100 pixels
        for (int y = 0; y < windowsize; y++) {
            for (int x = 0; x < windowsize; x++) { // every pixel lies between grey and pure red
                const Pixel pixel = smooth.At(x, y);
                const double weight = 1 - pixel.green / (0.3 * 255);
                EXPECT_NEAR(pixel.red, 0.3 * 255 * (1 - weight) + 255 * weight, 3);
                EXPECT_NEAR(pixel.blue, pixel.green, 1);
            }
        }
    }
}

TEST_F(SceneDrawing, LeavesEdgesBetweenLikeSidesUnsmoothed)
{
    // A translucent roof seen from above. Its ridge runs between two columns of pixels, nearer than
    // both: a line on it would cover them a second time.
    constexpr float h = 0.25F;
    OwnedShape roof = MakeShape({{-h, -h, -0.2F},
                                 {0, -h, 0.2F},
                                 {h, -h, -0.2F},
                                 {h, h, -0.2F},
                                 {0, h, 0.2F},
                                 {-h, h, -0.2F}},
                                {{0, 1, 4, 5}, {1, 2, 3, 4}});
    PaintPlain(roof->sides[0], {1, 0, 0, 0.5F});
    PaintPlain(roof->sides[1], {1, 0, 0, 0.5F});
    Add(std::move(roof));
    Picture picture = DrawPlain();
    EXPECT_EQ(picture.AtView(0.0025, 0.1), picture.AtView(0.1, 0.1));
    EXPECT_EQ(picture.AtView(-0.0025, 0.1), picture.AtView(0.1, 0.1));
    shapes[0]->sides[1].colors[BACK_ACUITY] = 0.5F; // now the sides differ, if only at the back
    ChangeShape(0);
    picture = DrawPlain();
    EXPECT_GT(picture.AtView(0.0025, 0.1).red, picture.AtView(0.1, 0.1).red + 10);
}

// Which of the two kinds of drawing a picture of a red square shows: sides at its middle, lines at
// its left edge, where the stripe is black.
struct Kinds {
    bool sides, lines;
    bool operator==(const Kinds&) const = default;
};

static Kinds FindKinds(const Picture& picture)
{
    return {picture.AtView(0.05, 0.1).red > 200, picture.AtView(-0.2475, 0.1).red < 70};
}

TEST_F(SceneDrawing, ChoosesSidesAndLinesByTheirFadesAndTheTree)
{
    Add(PlainSquareAt(0.0025F, 0.0025F, 0, {1, 0, 0, 1}));
    struct Case {
        int8_t sidesfade, linesfade;
        bool intree;
        Kinds kinds;
    };
    for (const Case& expected : {
             Case{15, 0, true, {true, false}},
             Case{
                 15, 15, false, {true, false}}, // lines over the sides only when marked in the tree
             Case{15, 15, true, {true, true}},
             Case{0, 15, false, {false, true}}, // lines alone whatever the mark
             Case{0, 15, true, {false, true}},
             Case{0, 0, true, {false, false}},
         }) {
        mainview.sidesfade = expected.sidesfade;
        mainview.linesfade = expected.linesfade;
        selected[0] = selectedfade | (expected.intree ? selectedintree : 0);
        const Kinds kinds = FindKinds(DrawPlain());
        EXPECT_EQ(kinds, expected.kinds)
            << int(expected.sidesfade) << " " << int(expected.linesfade) << " " << expected.intree;
    }
}

TEST_F(SceneDrawing, DrawsNoSideOfAShapeThatIsFadedOut)
{
    Add(SquareAt(0.0025F, 0.0025F, 0));
    ProjectScene();
    selected[0] = selectedintree; // its level and its target are 0
    showtable[0] = SHOW_PLAIN;
    // Invisible sides would still write their depth and hide a sheet behind them.
    const Picture picture = window.DrawAndCover([] { SceneDraw(&mainview); }, -0.5F);
    EXPECT_EQ(picture.AtView(0.1, 0.05), MakePixel(1, 0, 0));
}

TEST_F(SceneDrawing, DrawsLinesUnderFadingSides)
{
    Add(PlainSquareAt(0.0025F, 0.0025F, 0, {1, 0, 0, 1}));
    mainview.sidesfade = 5; // weight 0.25
    mainview.linesfade = 15;
    // Lines under the sides with weight GetCosRate(10) = 0.75, and in front of them in depth: black
    // on the background. The shape is not marked, so nothing comes over the sides.
    EXPECT_LT(DrawPlain().AtView(-0.2475, 0.1).red, 70);
}

TEST_F(SceneDrawing, DrawsTheConstructionWhereNoShapeIsVisible)
{
    const int shape = Add(SquareAt(0, 0, 0));
    mainview.center[0] = 5; // the square lies beside the view
    ProjectScene();
    ASSERT_EQ(showtable[shape], SHOW_NOTHING);
    newsign = 1;
    gmouse[0] = 0.1025F;
    gmouse[1] = 0.0525F;
    EXPECT_EQ(window.DrawScene().AtView(0.1025, 0.0525), MakePixel(1, 1, 0.4));
}

TEST_F(SceneDrawing, IsUnchangedByASecondFrame)
{
    Add(Cube());
    mainview.scale = 0.5F;
    selected[0] |= selectedintree;
    ProjectScene();
    activesides[1].fade = 9;
    activepoints[6].fade = 9;
    activestripes[3].fade = 9;
    const Picture first = window.DrawScene();
    EXPECT_EQ(window.DrawScene().pixels, first.pixels);
}

} // namespace korvane
