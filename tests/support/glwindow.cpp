#include "tests/support/glwindow.h"

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "view/basestate.h"
#include "view/cameraflight.h"
#include "view/frameloop.h"
#include "view/glsetup.h"
#include "view/mainview.h"
#include "view/picking.h"
#include "view/scenedraw.h"

#include <GL/glew.h>
#include <gtest/gtest.h>
#include <gtk/gtkgl.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ostream>

namespace korvane::testing
{

bool operator==(const Pixel& a, const Pixel& b)
{
    return std::abs(a.red - b.red) <= 1 && std::abs(a.green - b.green) <= 1 &&
           std::abs(a.blue - b.blue) <= 1;
}

std::ostream& operator<<(std::ostream& stream, const Pixel& pixel)
{
    return stream << "(" << pixel.red << ", " << pixel.green << ", " << pixel.blue << ")";
}

Pixel MakePixel(double red, double green, double blue)
{
    const auto byte = [](double component) { return int(std::lround(255 * component)); };
    return {byte(red), byte(green), byte(blue)};
}

Pixel Picture::At(int x, int y) const
{
    const unsigned char* pixel = &pixels.at(std::size_t(y * width + x) * 4);
    return {pixel[0], pixel[1], pixel[2]};
}

Pixel Picture::AtView(double x, double y) const
{
    const int shorter = std::min(width, height);
    return At(int(std::floor(x * shorter + width / 2.0)),
              int(std::floor(y * shorter + height / 2.0)));
}

void Picture::Save(const std::string& name) const
{
    GdkPixbuf* upsidedown = gdk_pixbuf_new_from_data(pixels.data(), GDK_COLORSPACE_RGB, TRUE, 8,
                                                     width, height, width * 4, nullptr, nullptr);
    GdkPixbuf* pixbuf = gdk_pixbuf_flip(upsidedown, FALSE);
    unsigned char* bytes = gdk_pixbuf_get_pixels(pixbuf);
    for (int i = 0; i < width * height; i++) {
        bytes[i * 4 + 3] = 255; // a frame's alpha is no opacity
    }
    gdk_pixbuf_save(pixbuf, name.c_str(), "png", nullptr, nullptr);
    g_object_unref(pixbuf);
    g_object_unref(upsidedown);
}

static bool exposed = false; // the newest window has drawn its first frame

static int NoteExpose(GtkWidget* /*area*/, GdkEventExpose* /*event*/)
{
    exposed = true;
    return FALSE;
}

static GtkWidget* MakeArea(int areawidth, int areaheight)
{
    static const int attributes[] = {GDK_GL_DOUBLEBUFFER,    GDK_GL_RGBA, GDK_GL_RED_SIZE,   1,
                                     GDK_GL_GREEN_SIZE,      1,           GDK_GL_BLUE_SIZE,  1,
                                     GDK_GL_ALPHA_SIZE,      1,           GDK_GL_DEPTH_SIZE, 24,
                                     GDK_GL_ATTRIB_LIST_NONE};
    GtkWidget* area = gtk_drawing_area_new();
    gtk_widget_set_size_request(area, areawidth, areaheight);
    GdkGLConfig* config = gdk_gl_config_new(attributes);
    gtk_widget_set_gl_capability(area, config, nullptr, TRUE, GDK_GL_RGBA_TYPE);
    g_signal_connect(area, "expose_event", G_CALLBACK(NoteExpose), nullptr);
    g_signal_connect_after(area, "realize", G_CALLBACK(InitGl), nullptr);
    g_signal_connect(area, "configure_event", G_CALLBACK(ConfigGl), nullptr);
    g_signal_connect(area, "expose_event", G_CALLBACK(ReDraw), nullptr);
    return area;
}

// Point markers in the plain colours that the code gives them, whatever the icon looks like.
static void LoadWhiteMarker()
{
    static const unsigned char white[4] = {255, 255, 255, 255};
    glBindTexture(GL_TEXTURE_2D, textidpont);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, white);
}

GlWindow::GlWindow(int areawidth, int areaheight)
    : window(gtk_window_new(GTK_WINDOW_TOPLEVEL)), area(MakeArea(areawidth, areaheight))
{
    exposed = false;
    gtk_container_add(GTK_CONTAINER(window), area);
    gtk_widget_show_all(window);
    while (!exposed) {
        gtk_main_iteration();
    }
    HandleEvents();
    Run(LoadWhiteMarker);
}

GlWindow::~GlWindow()
{
    gtk_widget_destroy(window);
    HandleEvents();
}

void GlWindow::Run(const std::function<void()>& work) const
{
    GdkGLDrawable* drawable = gtk_widget_get_gl_drawable(area);
    ASSERT_TRUE(gdk_gl_drawable_gl_begin(drawable, gtk_widget_get_gl_context(area)));
    work();
    gdk_gl_drawable_gl_end(drawable);
}

static Picture MakePicture()
{
    return {width, height, std::vector<unsigned char>(std::size_t(width * height) * 4)};
}

Picture GlWindow::Draw(const std::function<void()>& draw) const
{
    Picture picture{};
    Run([&] {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        draw();
        EXPECT_STREQ(FindStateFault(), nullptr);
        picture = MakePicture();
        glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, picture.pixels.data());
    });
    return picture;
}

Picture GlWindow::DrawScene() const
{
    return Draw([] { SceneDraw(&mainview); });
}

static void DrawRedSheet(float depth)
{
    glColor4f(1, 0, 0, 1);
    glBegin(GL_QUADS);
    glVertex3f(-2, -2, depth);
    glVertex3f(2, -2, depth);
    glVertex3f(2, 2, depth);
    glVertex3f(-2, 2, depth);
    glEnd();
}

Picture GlWindow::DrawAndCover(const std::function<void()>& draw, float depth) const
{
    return Draw([&] {
        draw();
        DrawRedSheet(depth);
    });
}

// From the X server: OpenGL need not know what the window shows.
Picture GlWindow::ReadWindow() const
{
    HandleEvents();
    GdkPixbuf* shown = gdk_pixbuf_get_from_drawable(nullptr, gtk_widget_get_window(area), nullptr,
                                                    0, 0, 0, 0, width, height);
    const int rowstride = gdk_pixbuf_get_rowstride(shown);
    Picture picture = MakePicture();
    for (int y = 0; y < height; y++) {
        const unsigned char* row = gdk_pixbuf_get_pixels(shown) + (height - 1 - y) * rowstride;
        for (int x = 0; x < width; x++) {
            std::copy_n(row + x * 3, 3, &picture.pixels[std::size_t(y * width + x) * 4]);
        }
    }
    g_object_unref(shown);
    return picture;
}

static const MainView startview = mainview;

static void EndConstruction()
{
    newsign = 0;
    duplicatesign = 0;
    newpointnumber = 0;
    FreeArray(newpoints);
    FreeArray(rotated);
    centernumber = 0;
    FreeArray(centerpoints);
    FreeArray(rcenterpoints);
    keyspace = 0;
}

void StartEmptyView()
{
    EndConstruction();
    DeleteAllShapes();
    mainview = startview;
    camposition = cameraframes;
    std::fill(std::begin(activebgcube), std::end(activebgcube), ActiveElement{});
    std::fill_n(mouse, 3, 10.0F); // outside the view
    std::fill_n(gmouse, 3, 10.0F);
    activepointer = nullptr;
    rdstate = 0;
    forcefixed = 0;
    antialiasingok = 1;
}

void ProjectScene()
{
    SetActives();
    TransferAllShape();
    ChangeActives();
}

void ExpectEmpty(const Picture& picture)
{
    for (int y = 0; y < picture.height; y++) {
        for (int x = 0; x < picture.width; x++) {
            ASSERT_EQ(picture.At(x, y), cleared) << x << ", " << y;
        }
    }
}

} // namespace korvane::testing
