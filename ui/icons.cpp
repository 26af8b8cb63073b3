#include "ui/icons.h"

#include "scene/treeview.h"
#include "view/glsetup.h"

#include <cstdio>
#include <string_view>

namespace korvane
{

// The picture of a file under "icons"; null when it cannot be had. The caller unrefs it.
static GdkPixbuf* LoadIcon(const char* name)
{
    char* path = GetIconPath(name);
    GdkPixbuf* picture = gdk_pixbuf_new_from_file(path, nullptr);
    g_free(path);
    if (picture == nullptr) {
        std::printf("Can't load the icon %s\n", name);
    }
    return picture;
}

GtkWidget* MakeIconImage(const char* icon, GtkIconSize size)
{
    if (!std::string_view(icon).ends_with(".png")) {
        return gtk_image_new_from_stock(icon, size);
    }
    GdkPixbuf* picture = LoadIcon(icon);
    if (picture == nullptr) {
        return gtk_image_new_from_stock(GTK_STOCK_MISSING_IMAGE, size);
    }
    GtkWidget* image = gtk_image_new_from_pixbuf(picture);
    g_object_unref(picture);
    return image;
}

void SetWindowIcon()
{
    GdkPixbuf* picture = LoadIcon("icon.png");
    if (picture != nullptr) {
        gtk_window_set_default_icon(picture);
        g_object_unref(picture);
    }
}

void LoadTreeIcons()
{
    pbfolderc = LoadIcon("folder.png");
    pbfoldero = LoadIcon("folder-open.png");
    pbside = LoadIcon("side16.png");
    pbshape = LoadIcon("shape16.png");
}

} // namespace korvane
