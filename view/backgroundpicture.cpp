#include "view/backgroundpicture.h"

#include "view/basestate.h"
#include "view/mainview.h"
#include "view/projection.h"

#include <GL/glew.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <bit>
#include <cstddef>

namespace korvane
{

unsigned int textid = 0;

static constexpr double strength = 0.3; // the picture's alpha when it is fully shown
static constexpr int corners = 4;
static constexpr int greatestsize = 4096; // of the square texture: 64 MB, more than a screen shows

// The picture that is shown; made when it first shows, until it has faded out or is replaced.
static float worldcorners[corners][3]; // bottom left, bottom right, top right, top left
static float usedpart[2];              // of the texture's width and height
static bool hasalpha = false;
static bool stale = false; // the texture shows a picture that has been replaced

static GdkPixbuf* GetPixels(const MainView* view)
{
    GtkImage* image = GTK_IMAGE(view->bgimage);
    return gtk_image_get_storage_type(image) == GTK_IMAGE_PIXBUF ? gtk_image_get_pixbuf(image)
                                                                 : nullptr;
}

bool SetBackgroundPicture(MainView* view, GtkWidget* image)
{
    if (view->bgimage != nullptr) {
        g_object_unref(view->bgimage);
    }
    view->bgimage = GTK_WIDGET(g_object_ref_sink(image));
    stale = true;
    const GdkPixbuf* pixels = GetPixels(view);
    return pixels != nullptr &&
           (gdk_pixbuf_get_n_channels(pixels) == 3 || gdk_pixbuf_get_n_channels(pixels) == 4);
}

static void DropTexture()
{
    glDeleteTextures(1, &textid);
    textid = 0;
    stale = false;
}

// The pixels at a size that the driver takes. The caller unrefs them.
static GdkPixbuf* GetFittingPixels(GdkPixbuf* pixels, int limit)
{
    const int w = gdk_pixbuf_get_width(pixels);
    const int h = gdk_pixbuf_get_height(pixels);
    const double shrink = std::min(1.0, double(limit) / std::max(w, h));
    if (shrink == 1.0) {
        return GDK_PIXBUF(g_object_ref(pixels));
    }
    return gdk_pixbuf_scale_simple(pixels, std::max(1, int(w * shrink)),
                                   std::max(1, int(h * shrink)), GDK_INTERP_BILINEAR);
}

// Fills the bound texture's first rows and columns with the picture. Its last row and column are
// repeated once, because the linear filter reads half a pixel beyond the picture's edges.
static void LoadPixels(const GdkPixbuf* pixels, GLenum format, int size)
{
    const int w = gdk_pixbuf_get_width(pixels);
    const int h = gdk_pixbuf_get_height(pixels);
    const auto rowstride = std::size_t(gdk_pixbuf_get_rowstride(pixels));
    const int lastpixel = (w - 1) * gdk_pixbuf_get_n_channels(pixels);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    const guchar* bytes = gdk_pixbuf_read_pixels(pixels);
    for (int row = 0; row < std::min(h + 1, size); row++) { // one by one: they may be padded
        const guchar* start = bytes + std::size_t(std::min(row, h - 1)) * rowstride;
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, row, w, 1, format, GL_UNSIGNED_BYTE, start);
        if (w < size) {
            glTexSubImage2D(GL_TEXTURE_2D, 0, w, row, 1, 1, format, GL_UNSIGNED_BYTE,
                            start + lastpixel);
        }
    }
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
}

// A square texture of the next power of two, with the picture in its first rows and columns.
static void MakeTexture(GdkPixbuf* source)
{
    GLint limit = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &limit);
    GdkPixbuf* pixels = GetFittingPixels(source, std::min(limit, greatestsize));
    const int w = gdk_pixbuf_get_width(pixels);
    const int h = gdk_pixbuf_get_height(pixels);
    hasalpha = gdk_pixbuf_get_n_channels(pixels) == 4;
    const GLenum format = hasalpha ? GL_RGBA : GL_RGB;
    const auto size = GLsizei(std::bit_ceil(unsigned(std::max(w, h))));
    glGenTextures(1, &textid);
    glBindTexture(GL_TEXTURE_2D, textid);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexImage2D(GL_TEXTURE_2D, 0, GLint(format), size, size, 0, format, GL_UNSIGNED_BYTE, nullptr);
    LoadPixels(pixels, format, size);
    glBindTexture(GL_TEXTURE_2D, 0);
    usedpart[0] = float(w) / float(size);
    usedpart[1] = float(h) / float(size);
    g_object_unref(pixels);
}

// Puts the picture, in its own proportions, into the middle of the screen at depth 0.
static void FixCorners(const MainView* view, const GdkPixbuf* pixels)
{
    float half[2];
    GetHalfView(&half[0], &half[1]);
    const double w = gdk_pixbuf_get_width(pixels);
    const double h = gdk_pixbuf_get_height(pixels);
    const double fit = std::min(half[0] / w, half[1] / h);
    const auto x = float(fit * w);
    const auto y = float(fit * h);
    const float screen[corners][3] = {{-x, -y, 0}, {x, -y, 0}, {x, y, 0}, {-x, y, 0}};
    std::copy_n(&screen[0][0], 3 * corners, &worldcorners[0][0]);
    ReTransferPoints(view, worldcorners, corners);
}

static void DrawQuad(const MainView* view)
{
    // The picture's top row is the texture's first.
    const float texture[corners][2] = {
        {0, usedpart[1]}, {usedpart[0], usedpart[1]}, {usedpart[0], 0}, {0, 0}};
    float points[corners][3];
    TransferPointsInto(view, worldcorners, points, corners);
    glColor4f(1, 1, 1, float(strength * GetCosRate(view->imagefade)));
    glBegin(GL_QUADS);
    for (int i = 0; i < corners; i++) {
        glTexCoord2fv(texture[i]);
        glVertex3fv(points[i]);
    }
    glEnd();
}

void DrawBackgroundPicture(MainView* view)
{
    if (textid != 0 && (view->imagefade == 0 || stale)) {
        DropTexture();
    }
    if (view->imagefade == 0 || view->bgimage == nullptr || GetPixels(view) == nullptr) {
        return;
    }
    if (textid == 0) {
        MakeTexture(GetPixels(view));
        FixCorners(view, GetPixels(view));
        stale = false;
    }
    glBindTexture(GL_TEXTURE_2D, textid);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, hasalpha ? GL_MODULATE : GL_REPLACE);
    glDepthMask(GL_FALSE);
    DrawQuad(view);
    glDepthMask(GL_TRUE);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glDisable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, 0);
    AssertBaseState("DrawBackgroundPicture");
}

} // namespace korvane
