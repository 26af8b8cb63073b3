// Where the pixels of the image lie, what its edges look like, and what must not matter to them.
#include "export/image.h"

#include "geometry/shapegeometry.h"
#include "scene/model.h"
#include "tests/support/glwindow.h"
#include "tests/support/imagemaking.h"
#include "tests/support/paintedshapes.h"
#include "tests/support/plainimage.h"
#include "view/mainview.h"

#include <GL/glew.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

static constexpr double pixel = 1.0 / 1024; // in view units

static constexpr Colors red = {1, 0, 0, 1};
static constexpr Colors white = {1, 1, 1, 1};

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

// White in some of the four passes, the cleared colour in the others.
static void ExpectLevel(const Image& image, int x, int y, int passes)
{
    EXPECT_NEAR(image.At(x, y).red, (77.0 * (4 - passes) + 255 * passes) / 4, 1);
    EXPECT_NEAR(image.AlphaAt(x, y), 255.0 * passes / 4, 1);
}

// How much of a pixel's width or height an edge leaves before it, and the passes that see the box.
struct Cut {
    double part;
    int passes;
};

class ImageTiles : public ImageTest
{
protected:
    // For each cut, the pixel in which the edge of such a box lies and those beside it; `inward` is
    // the step from the edge into the box.
    void ExpectEdge(const std::vector<Cut>& cuts, OwnedShape (*makebox)(double part),
                    const std::array<int, 2>& edge, const std::array<int, 2>& inward);

    // The image is that of the plain method, with so many levels between two whole ones.
    void ExpectPlainMethod(int averagednumber) const;

    // Sheets of many colours that cross each other, clear ones among them.
    static void AddCrossingSheets();
};

// From -0.25 to 0.25 and from 0.125 to 0.25: columns 384 to 895, rows 256 to 383.
TEST_F(ImageTiles, LieWhereTheViewShowsThem)
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

TEST_F(ImageTiles, HaveTheUpperRowsOfTheViewFirst)
{
    Add(Box(-0.6, 0.3, -0.4, 0.45, red));
    const Image image = MakeImage();
    EXPECT_EQ(image.At(100, 100), (Pixel{255, 0, 0})); // x = -0.527, y = 0.402
    EXPECT_EQ(image.At(100, 923), cleared);
    EXPECT_EQ(image.At(1179, 100), cleared);
}

void ImageTiles::ExpectEdge(const std::vector<Cut>& cuts, OwnedShape (*makebox)(double part),
                            const std::array<int, 2>& edge, const std::array<int, 2>& inward)
{
    for (const auto& [part, passes] : cuts) {
        SCOPED_TRACE(part);
        StartEmptyView();
        Add(makebox(part));
        const Image image = MakeImage();
        ExpectLevel(image, edge[0], edge[1], passes);
        EXPECT_EQ(image.At(edge[0] + inward[0], edge[1] + inward[1]).red, 255);
        EXPECT_EQ(image.At(edge[0] - inward[0], edge[1] - inward[1]), cleared);
    }
}

// In the four passes the picture moves by -0.208, 0.204, -0.293 and 0.297 pixels to the right. A
// right edge covers the middle of the pixel in which it lies when it has moved beyond that.
TEST_F(ImageTiles, HaveEdgesWithIntermediateLevels)
{
    ExpectEdge({{0.17, 0}, {0.25, 1}, {0.32, 2}, {0.5, 2}, {0.75, 3}, {0.83, 4}, {1.0, 4}},
               [](double part) { return Box(-0.25, -0.25, 0.25 + part * pixel, 0.25, white); },
               {896, 500}, {-1, 0});
}

// A left edge covers it while it stays before the middle.
TEST_F(ImageTiles, HaveLeftEdgesWithIntermediateLevels)
{
    ExpectEdge({{0.17, 4}, {0.25, 3}, {0.32, 2}, {0.5, 2}, {0.75, 1}, {0.83, 0}},
               [](double part) { return Box(-0.25 + part * pixel, -0.25, 0.25, 0.25, white); },
               {384, 500}, {1, 0});
}

// Upward the passes move it by 0.354, -0.354, -0.150 and 0.150 pixels.
TEST_F(ImageTiles, HaveUpperEdgesWithIntermediateLevels)
{
    ExpectEdge({{0.1, 0}, {0.17, 1}, {0.32, 1}, {0.5, 2}, {0.75, 3}, {0.9, 4}, {1.0, 4}},
               [](double part) { return Box(-0.25, -0.25, 0.25, 0.25 + part * pixel, white); },
               {640, 255}, {0, 1});
}

TEST_F(ImageTiles, HaveLowerEdgesWithIntermediateLevels)
{
    ExpectEdge({{0.1, 4}, {0.17, 3}, {0.32, 3}, {0.5, 2}, {0.75, 1}, {0.9, 0}},
               [](double part) { return Box(-0.25, -0.25 + part * pixel, 0.25, 0.25, white); },
               {640, 767}, {0, -1});
}

// The right edge is beyond the middle of its pixel in the last pass alone, the left edge before it
// in the third alone. The upper edge is beyond the middle of its own in the first and the last, the
// lower one below it in the two others.
TEST_F(ImageTiles, MoveInBothDirectionsFromPassToPass)
{
    Add(Box(-0.25 + 0.75 * pixel, -0.25 + 0.5 * pixel, 0.25 + 0.25 * pixel, 0.25 + 0.5 * pixel,
            white));
    const Image image = MakeImage();
    ExpectLevel(image, 896, 255, 1); // the last
    ExpectLevel(image, 896, 767, 0);
    ExpectLevel(image, 384, 255, 0);
    ExpectLevel(image, 384, 767, 1); // the third
}

void ImageTiles::AddCrossingSheets()
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
void ImageTiles::ExpectPlainMethod(int averagednumber) const
{
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
    EXPECT_GT(averaged, averagednumber); // the scene has edges enough
}

TEST_F(ImageTiles, AreThoseOfThePlainMethod)
{
    AddCrossingSheets();
    ExpectPlainMethod(10000);
}

// A back that is coloured like its front.
TEST_F(ImageTiles, AreThoseOfThePlainMethodFromBehind)
{
    Add(SquareAt(0, 0, 0));
    LookFromBehind();
    ExpectPlainMethod(1000);
}

// One after the other in a single plane, where none is nearer. They keep their corners.
TEST_F(ImageTiles, AreThoseOfThePlainMethodWhereDepthsAreEqual)
{
    for (int i = 0; i < 6; i++) {
        const float place = 0.06F * float(i);
        const float alpha = i == 3 ? 0.5F : 1;
        OwnedShape square =
            PlainSquareAt(place - 0.1F, 0.4F * place, 0, {place * 3, 0.5F, 0, alpha});
        SetVertexes(square.get(), {0, 1, 2, 3});
        CompleteShape(square.get());
        Add(std::move(square));
    }
    ExpectPlainMethod(1000);
}

// In such a sheet the lit program comes to no number at all: what lies behind it is seen.
TEST_F(ImageTiles, AreThoseOfThePlainMethodWithoutAcuity)
{
    Add(PlainSquareAt(0, 0, -1, red));
    OwnedShape sheet = PlainSquareAt(0, 0, 0, white);
    sheet->sides[0].colors[FRONT_ACUITY] = 0;
    for (int i = 0; i < sheet->pointnumber; i++) {
        float* point = sheet->points[i];
        point[2] = 1.5F * point[0] - point[1]; // square to the light
    }
    CompleteShape(sheet.get());
    Add(std::move(sheet));
    ExpectPlainMethod(1000);
}

TEST_F(ImageTiles, DoNotDependOnTheWindow)
{
    AddCrossingSheets();
    const Image image = MakeImage();
    const GlWindow other(700, 270);
    EXPECT_EQ(MakeImageIn(other), image);
}

// A green window on the screen, as long as it lives.
class Cover
{
public:
    Cover(int x, int y) : cover(gtk_window_new(GTK_WINDOW_POPUP))
    {
        const GdkColor green = {0, 0, 65535, 0};
        gtk_widget_modify_bg(cover, GTK_STATE_NORMAL, &green);
        gtk_window_move(GTK_WINDOW(cover), x, y);
        gtk_widget_set_size_request(cover, 100, 100);
        gtk_widget_show(cover);
    }
    ~Cover()
    {
        gtk_widget_destroy(cover);
        HandleEvents();
    }
    Cover(const Cover&) = delete;
    Cover& operator=(const Cover&) = delete;

private:
    GtkWidget* cover;
};

static Pixel ReadScreen(int x, int y)
{
    GdkPixbuf* shown = gdk_pixbuf_get_from_drawable(nullptr, gdk_get_default_root_window(),
                                                    gdk_colormap_get_system(), x, y, 0, 0, 1, 1);
    const unsigned char* bytes = gdk_pixbuf_get_pixels(shown);
    const Pixel read = {bytes[0], bytes[1], bytes[2]};
    g_object_unref(shown);
    return read;
}

// A window need not have pixels where it is off the screen or covered.
TEST_F(ImageTiles, DoNotDependOnWhereTheWindowIs)
{
    AddCrossingSheets();
    const Image image = MakeImage();
    gtk_window_move(GTK_WINDOW(gtk_widget_get_toplevel(window.GetArea())), -100, -130);
    ASSERT_TRUE(HandleEventsUntil([&] {
        int x = 0;
        int y = 0;
        gdk_window_get_origin(gtk_widget_get_window(window.GetArea()), &x, &y);
        return x == -100 && y == -130;
    }));
    const Cover cover(20, 10); // the window ends at (200, 170)
    ASSERT_TRUE(HandleEventsUntil([] { return ReadScreen(70, 60) == Pixel{0, 255, 0}; }));
    EXPECT_EQ(MakeImage(), image);
    EXPECT_EQ(ReadScreen(70, 60), (Pixel{0, 255, 0}));
    EXPECT_FALSE(ReadScreen(10, 60) == (Pixel{0, 255, 0})); // beside the cover
}

// Some driver may have none: the hidden buffer of a window that is large enough serves too.
TEST_F(ImageTiles, AreTheSameWithoutFrameBufferObjects)
{
    AddCrossingSheets();
    const Image image = MakeImage();
    __GLEW_ARB_framebuffer_object = GL_FALSE;
    EXPECT_EQ(MakeImage(), image);
    __GLEW_ARB_framebuffer_object = GL_TRUE;
}

TEST_F(ImageTiles, IncludeShapesThatTheViewCulls)
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
