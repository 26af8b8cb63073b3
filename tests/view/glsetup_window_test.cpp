#include "view/glsetup.h"

#include "scene/model.h"
#include "tests/support/glwindow.h"
#include "tests/support/paintedshapes.h"
#include "view/basestate.h"
#include "view/mainview.h"
#include "view/textures.h"

#include <GL/glew.h>
#include <glib/gstdio.h>
#include <gtest/gtest.h>
#include <gtk/gtkgl.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

static int GetInteger(GLenum name)
{
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

template <std::size_t n> static std::array<float, n> GetFloats(GLenum name)
{
    std::array<float, n> values{};
    glGetFloatv(name, values.data());
    return values;
}

class OpenGlSetup : public ::testing::Test
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

    GlWindow window{200, 100};
};

TEST_F(OpenGlSetup, LeavesTheBaseState)
{
    window.Run([] {
        EXPECT_STREQ(FindStateFault(), nullptr);
        EXPECT_EQ(GetFloats<4>(GL_COLOR_CLEAR_VALUE), (std::array<float, 4>{0.3F, 0.3F, 0.3F, 0}));
        EXPECT_EQ(GetFloats<1>(GL_DEPTH_CLEAR_VALUE)[0], 1);
        EXPECT_EQ(GetFloats<1>(GL_POINT_SIZE)[0], 5);
        EXPECT_EQ(GetInteger(GL_DEPTH_FUNC), GL_LESS);
    });
}

TEST_F(OpenGlSetup, BlendsColorAndAlphaApart)
{
    window.Run([] {
        EXPECT_EQ(GetInteger(GL_BLEND_SRC_RGB), GL_SRC_ALPHA);
        EXPECT_EQ(GetInteger(GL_BLEND_DST_RGB), GL_ONE_MINUS_SRC_ALPHA);
        EXPECT_EQ(GetInteger(GL_BLEND_SRC_ALPHA), GL_SRC_ALPHA);
        EXPECT_EQ(GetInteger(GL_BLEND_DST_ALPHA), GL_DST_ALPHA);
    });
    EXPECT_EQ(antialiasingok, 1);
}

TEST_F(OpenGlSetup, FindsEveryFaultOfTheBaseState)
{
    window.Run([] {
        for (const GLenum name : {GL_DEPTH_TEST, GL_BLEND, GL_LINE_SMOOTH, GL_POINT_SMOOTH}) {
            glDisable(name);
            EXPECT_NE(FindStateFault(), nullptr) << name;
            glEnable(name);
        }
        for (const GLenum name : {GL_TEXTURE_2D, GL_LIGHTING, GL_LIGHT0, GL_LIGHT1,
                                  GL_VERTEX_PROGRAM_ARB, GL_FRAGMENT_PROGRAM_ARB}) {
            glEnable(name);
            EXPECT_NE(FindStateFault(), nullptr) << name;
            glDisable(name);
        }
        for (const GLenum name :
             {GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_TEXTURE_COORD_ARRAY}) {
            glEnableClientState(name);
            EXPECT_NE(FindStateFault(), nullptr) << name;
            glDisableClientState(name);
        }
        EXPECT_STREQ(FindStateFault(), nullptr);
    });
}

TEST_F(OpenGlSetup, FindsEveryChangedValueOfTheBaseState)
{
    window.Run([] {
        glLineWidth(2);
        EXPECT_STREQ(FindStateFault(), "the line width is not 1");
        glLineWidth(1);
        glDepthFunc(GL_LEQUAL);
        EXPECT_STREQ(FindStateFault(), "the depth test does not ask for less");
        glDepthFunc(GL_LESS);
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
        EXPECT_STREQ(FindStateFault(), "textures are not modulated");
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
        glTranslatef(1, 0, 0);
        EXPECT_STREQ(FindStateFault(), "the model-view matrix is not the identity");
        glLoadIdentity();
        glEnable(GL_LINE_WIDTH); // no capability: an error
        EXPECT_STREQ(FindStateFault(), "an OpenGL error is pending");
        EXPECT_STREQ(FindStateFault(), nullptr);
    });
}

TEST_F(OpenGlSetup, LoadsFourPrograms)
{
    EXPECT_EQ(shaderok, 1);
    window.Run([] {
        for (int place = 0; place < programnumber; place++) {
            EXPECT_TRUE(glIsProgramARB(arbid[place])) << place;
        }
        unsigned int names[programnumber] = {};
        EXPECT_TRUE(LoadPrograms(names)); // the driver accepts every text
        EXPECT_STREQ(FindStateFault(), nullptr);
        glDeleteProgramsARB(programnumber, names);
    });
}

// One horizontal band across the view at a depth, drawn through the fade programs.
static void DrawFadingBand(float depth)
{
    glEnable(GL_VERTEX_PROGRAM_ARB);
    glEnable(GL_FRAGMENT_PROGRAM_ARB);
    glBindProgramARB(GL_VERTEX_PROGRAM_ARB, arbid[FADE_VERTEX]);
    glBindProgramARB(GL_FRAGMENT_PROGRAM_ARB, arbid[FADE_FRAGMENT]);
    glColor4f(1, 1, 1, 1);
    glRectf(-1, -0.1F, 1, 0.1F);
    glDisable(GL_FRAGMENT_PROGRAM_ARB);
    glDisable(GL_VERTEX_PROGRAM_ARB);
    glBegin(GL_QUADS); // red, behind or in front of the band
    glColor4f(1, 0, 0, 1);
    for (const auto& [x, y] :
         {std::array{0.3F, -0.3F}, {0.6F, -0.3F}, {0.6F, 0.3F}, {0.3F, 0.3F}}) {
        glVertex3f(x, y, depth);
    }
    glEnd();
}

// The view is two units wide. Alpha falls from 1 at the origin to 0 at distance 1.
TEST_F(OpenGlSetup, FadesByTheDistanceFromTheOrigin)
{
    const Picture picture = window.Draw([] { DrawFadingBand(-1.99F); });
    for (const double x : {-0.705, -0.205, 0.105}) {
        const double alpha = 1 - std::hypot(x, 0.005);
        const double grey = 0.3 * (1 - alpha) + alpha;
        EXPECT_EQ(picture.AtView(x, 0.005), MakePixel(grey, grey, grey)) << x;
    }
}

// Depth 0.99 of 0..1 is 2 - 4 * 0.99 = -1.96 in the view, whatever the band's own depth.
TEST_F(OpenGlSetup, PutsWhatFadesBehindTheScene)
{
    Picture picture = window.Draw([] { DrawFadingBand(-1.95F); });
    EXPECT_EQ(picture.AtView(0.455, 0.005), MakePixel(1, 0, 0));
    picture = window.Draw([] { DrawFadingBand(-1.97F); });
    EXPECT_FALSE(picture.AtView(0.455, 0.005) == MakePixel(1, 0, 0));
}

TEST_F(OpenGlSetup, TakesTheFixedPathOnRequestAtAnyTime)
{
    EXPECT_TRUE(UsesPrograms());
    forcefixed = 1;
    EXPECT_FALSE(UsesPrograms());
    forcefixed = 0;
    shaderok = 0;
    EXPECT_FALSE(UsesPrograms());
    shaderok = 1;
}

TEST_F(OpenGlSetup, MatchesTheProjectionToTheArea)
{
    EXPECT_EQ(width, 200);
    EXPECT_EQ(height, 100);
    window.Run([] {
        EXPECT_EQ((GetFloats<4>(GL_VIEWPORT)), (std::array<float, 4>{0, 0, 200, 100}));
        // 1 / 1.0 across, 1 / 0.5 up, depth turned over and halved
        EXPECT_EQ((GetFloats<16>(GL_PROJECTION_MATRIX)),
                  (std::array<float, 16>{1, 0, 0, 0, 0, 2, 0, 0, 0, 0, -0.5F, 0, 0, 0, 0, 1}));
    });
}

TEST_F(OpenGlSetup, PutsTheShorterSideToOneAlsoInAHighArea)
{
    const GlWindow high(100, 150);
    high.Run([] {
        EXPECT_EQ((GetFloats<4>(GL_VIEWPORT)), (std::array<float, 4>{0, 0, 100, 150}));
        const auto matrix = GetFloats<16>(GL_PROJECTION_MATRIX);
        EXPECT_EQ(matrix[0], 2);
        EXPECT_FLOAT_EQ(matrix[5], 1 / 0.75F);
    });
}

TEST_F(OpenGlSetup, ProjectsTheSceneAgainAfterAResize)
{
    AddShape(SquareAt(0.9F, 0, 0).release()); // in sight of a wide view only
    ProjectScene();
    EXPECT_NE(showtable[0], SHOW_NOTHING);
    const GlWindow square(100, 100); // its ConfigGl is called
    EXPECT_EQ(showtable[0], SHOW_NOTHING);
}

TEST_F(OpenGlSetup, PointsWithOneCrossHairThatIsMadeOnce)
{
    GdkWindow* area = gtk_widget_get_window(window.GetArea());
    GdkCursor* crosshair = gdk_window_get_cursor(area);
    EXPECT_NE(crosshair, nullptr);
    ConfigGl(window.GetArea(), nullptr);
    EXPECT_EQ(gdk_window_get_cursor(area), crosshair);
}

// The pixels of a texture, red first.
static std::vector<unsigned char> ReadTexture(unsigned int name, int size)
{
    std::vector<unsigned char> pixels(std::size_t(size * size) * 4);
    glBindTexture(GL_TEXTURE_2D, name);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    glBindTexture(GL_TEXTURE_2D, 0);
    return pixels;
}

static int GetTextureSize(unsigned int name)
{
    GLint size = 0;
    glBindTexture(GL_TEXTURE_2D, name);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &size);
    glBindTexture(GL_TEXTURE_2D, 0);
    return size;
}

// A working directory of its own with an "icons" folder.
class IconFiles : public OpenGlSetup
{
protected:
    void SetUp() override
    {
        OpenGlSetup::SetUp();
        before = std::filesystem::current_path();
        char* name = g_dir_make_tmp("korvane-icons-XXXXXX", nullptr);
        folder = name;
        g_free(name);
        std::filesystem::create_directory(folder / "icons");
        std::filesystem::current_path(folder);
    }

    void TearDown() override
    {
        std::filesystem::current_path(before);
        std::filesystem::remove_all(folder);
        OpenGlSetup::TearDown();
    }

    // Writes a picture whose upper half is red and whose lower half is blue.
    static void WriteIcon(const char* name, int size, bool alpha)
    {
        GdkPixbuf* pixbuf = gdk_pixbuf_new(GDK_COLORSPACE_RGB, alpha, 8, size, size);
        gdk_pixbuf_fill(pixbuf, 0x0000FFFF);
        GdkPixbuf* upper = gdk_pixbuf_new_subpixbuf(pixbuf, 0, 0, size, size / 2);
        gdk_pixbuf_fill(upper, 0xFF0000FF);
        g_object_unref(upper);
        gdk_pixbuf_save(pixbuf, (std::string("icons/") + name).c_str(), "png", nullptr, nullptr);
        g_object_unref(pixbuf);
    }

    std::filesystem::path before, folder;
};

TEST_F(IconFiles, AreFoundInTheWorkingDirectoryFirst)
{
    WriteIcon("pont.png", 16, true);
    char* path = GetIconPath("pont.png");
    EXPECT_STREQ(path, "icons/pont.png");
    g_free(path);
    path = GetIconPath("new.png");
    EXPECT_STREQ(path, KORVANE_DATADIR "/icons/new.png");
    g_free(path);
}

TEST_F(IconFiles, BecomeTexturesOfTheirSize)
{
    WriteIcon("pont.png", 16, true);
    window.Run([] {
        const unsigned int texture = CreateIconTexture("pont.png", 16);
        EXPECT_EQ(GetTextureSize(texture), 16);
        const std::vector<unsigned char> pixels = ReadTexture(texture, 16);
        EXPECT_EQ(pixels[0], 255); // the first row is the upper one
        EXPECT_EQ(pixels[2], 0);
        EXPECT_EQ(pixels[16 * 16 * 4 - 4], 0);
        EXPECT_EQ(pixels[16 * 16 * 4 - 2], 255);
        EXPECT_EQ(pixels[16 * 16 * 4 - 1], 255);
        glDeleteTextures(1, &texture);
    });
}

TEST_F(IconFiles, OfAnotherSizeOrWithoutAlphaAreFitted)
{
    WriteIcon("pont.png", 37, false); // rows of 111 bytes, padded to 112
    window.Run([] {
        const unsigned int texture = CreateIconTexture("pont.png", 16);
        EXPECT_EQ(GetTextureSize(texture), 16);
        const std::vector<unsigned char> pixels = ReadTexture(texture, 16);
        EXPECT_EQ(pixels[0], 255);
        EXPECT_EQ(pixels[3], 255);
        EXPECT_EQ(pixels[16 * 16 * 4 - 2], 255);
        glDeleteTextures(1, &texture);
    });
}

static void ExpectWhiteTexture(const char* name)
{
    const unsigned int texture = CreateIconTexture(name, 16);
    ASSERT_EQ(GetTextureSize(texture), 1);
    EXPECT_EQ(ReadTexture(texture, 1), (std::vector<unsigned char>{255, 255, 255, 255}));
    EXPECT_STREQ(FindStateFault(), nullptr);
    glDeleteTextures(1, &texture);
}

static int CountLines(const std::string& text)
{
    return int(std::count(text.begin(), text.end(), '\n'));
}

TEST_F(IconFiles, ThatCannotBeReadAreWhiteAndToldInALine)
{
    g_file_set_contents("icons/broken.png", "no picture", -1, nullptr);
    std::filesystem::create_directory("icons/folder.png");
    for (const char* name : {"no such icon.png", "broken.png", "folder.png"}) {
        ::testing::internal::CaptureStdout();
        window.Run([&] { ExpectWhiteTexture(name); });
        const std::string output = ::testing::internal::GetCapturedStdout();
        EXPECT_EQ(CountLines(output), 1) << output;
        EXPECT_NE(output.find(name), std::string::npos) << output;
    }
}

TEST_F(IconFiles, HaveLinearFilters)
{
    window.Run([] {
        for (const unsigned int texture : {textidns, textidpont}) {
            GLint minification = 0;
            GLint magnification = 0;
            glBindTexture(GL_TEXTURE_2D, texture);
            glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &minification);
            glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, &magnification);
            EXPECT_EQ(minification, GL_LINEAR);
            EXPECT_EQ(magnification, GL_LINEAR);
        }
        EXPECT_NE(textidns, textidpont);
    });
}

// What an older driver has is only known to a new process, which opens a display of its own.
class OlderDriver : public ::testing::Test
{
protected:
    void SetUp() override
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
    }
};

static void ExitWith(bool passed)
{
    std::exit(passed ? 0 : 1);
}

TEST_F(OlderDriver, WithoutSeparateBlendingBlendsAlikeAndSmoothsNoEdges)
{
    EXPECT_EXIT(
        {
            setenv("MESA_GL_VERSION_OVERRIDE", "1.3", 1);
            const GlWindow window(100, 100);
            bool alike = false;
            window.Run([&] {
                alike = GetInteger(GL_BLEND_SRC) == GL_SRC_ALPHA &&
                        GetInteger(GL_BLEND_DST) == GL_ONE_MINUS_SRC_ALPHA &&
                        GetInteger(GL_BLEND_DST_ALPHA) == GL_ONE_MINUS_SRC_ALPHA;
            });
            ExitWith(alike && antialiasingok == 0 && shaderok == 1);
        },
        ::testing::ExitedWithCode(0), "");
}

static void ExpectFixedPathWithout(const char* extension)
{
    EXPECT_EXIT(
        {
            setenv("MESA_EXTENSION_OVERRIDE", extension, 1);
            const GlWindow window(100, 100);
            AddShape(SquareAt(0, 0, 0).release());
            selected[0] = selectedfade;
            ProjectScene();
            // The fixed-function grey: 0.2 + 0.6 (1 - acos(1 / sqrt 3) / pi) = 0.61755
            const Pixel grey = window.DrawScene().AtView(0.1, 0.05);
            ExitWith(shaderok == 0 && !UsesPrograms() &&
                     grey == MakePixel(0.61755, 0.61755, 0.61755));
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(OlderDriver, WithoutEitherProgramDrawsTheFixedPath)
{
    ExpectFixedPathWithout("-GL_ARB_vertex_program");
    ExpectFixedPathWithout("-GL_ARB_fragment_program");
}

// Answers the open message dialog and prints what it says.
static int AnswerMessage(void* /*data*/)
{
    GList* windows = gtk_window_list_toplevels();
    for (GList* node = windows; node != nullptr; node = node->next) {
        if (GTK_IS_MESSAGE_DIALOG(node->data)) {
            char* text = nullptr;
            g_object_get(node->data, "text", &text, nullptr);
            std::fprintf(stderr, "dialog: %s\n", text);
            g_free(text);
            gtk_dialog_response(GTK_DIALOG(node->data), GTK_RESPONSE_CLOSE);
        }
    }
    g_list_free(windows);
    return TRUE;
}

TEST_F(OlderDriver, WithoutAnyContextEndsTheProgramWithADialog)
{
    EXPECT_EXIT(
        {
            GtkWidget* toplevel = gtk_window_new(GTK_WINDOW_TOPLEVEL);
            GtkWidget* area = gtk_drawing_area_new(); // not OpenGL-capable
            gtk_container_add(GTK_CONTAINER(toplevel), area);
            gtk_widget_realize(area);
            g_timeout_add(20, AnswerMessage, nullptr);
            InitGl(area);
        },
        ::testing::ExitedWithCode(1), "dialog: Missing GL version");
}

} // namespace korvane
