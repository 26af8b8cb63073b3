#include "view/textures.h"

#include "view/icons.h"

#include <GL/glew.h>
#include <gdk-pixbuf/gdk-pixbuf.h>

namespace korvane
{

// The icon with an alpha channel and in the size told, or null. The caller unrefs it.
static GdkPixbuf* GetSquareIcon(const char* name, int size)
{
    GdkPixbuf* icon = GetIconPixbuf(name);
    if (icon == nullptr) {
        return nullptr;
    }
    GdkPixbuf* scaled = gdk_pixbuf_scale_simple(icon, size, size, GDK_INTERP_BILINEAR);
    g_object_unref(icon);
    if (scaled == nullptr) { // the toolkit found no memory for it
        return nullptr;
    }
    GdkPixbuf* square = gdk_pixbuf_add_alpha(scaled, FALSE, 0, 0, 0);
    g_object_unref(scaled);
    return square;
}

static void LoadWhite()
{
    static const unsigned char white[4] = {255, 255, 255, 255};
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, white);
}

static void LoadPixbuf(const GdkPixbuf* pixbuf)
{
    glPixelStorei(GL_UNPACK_ROW_LENGTH, gdk_pixbuf_get_rowstride(pixbuf) / 4);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, gdk_pixbuf_get_width(pixbuf),
                 gdk_pixbuf_get_height(pixbuf), 0, GL_RGBA, GL_UNSIGNED_BYTE,
                 gdk_pixbuf_read_pixels(pixbuf));
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
}

unsigned int CreateIconTexture(const char* name, int size)
{
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    GdkPixbuf* icon = GetSquareIcon(name, size);
    if (icon == nullptr) {
        LoadWhite();
    } else {
        LoadPixbuf(icon);
        g_object_unref(icon);
    }
    glBindTexture(GL_TEXTURE_2D, 0);
    return texture;
}

} // namespace korvane
