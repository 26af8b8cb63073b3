#include "view/icons.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <cstdio>

namespace korvane
{

const char* datafolder = KORVANE_DATADIR;

char* GetIconPath(const char* name)
{
    char* path = g_build_filename("icons", name, nullptr);
    if (g_file_test(path, G_FILE_TEST_EXISTS)) {
        return path;
    }
    g_free(path);
    return g_build_filename(datafolder, "icons", name, nullptr);
}

GdkPixbuf* GetIconPixbuf(const char* name)
{
    char* path = GetIconPath(name);
    GError* error = nullptr;
    GdkPixbuf* pixbuf = gdk_pixbuf_new_from_file(path, &error);
    if (pixbuf == nullptr) {
        std::printf("Can't read the icon %s: %s\n", path, error->message);
        g_error_free(error);
    }
    g_free(path);
    return pixbuf;
}

} // namespace korvane
