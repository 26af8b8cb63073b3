#include "ui/iconimage.h"

#include "view/icons.h"

#include <string_view>

namespace korvane
{

GtkWidget* MakeIconImage(const char* icon, GtkIconSize size)
{
    if (!std::string_view(icon).ends_with(".png")) {
        return gtk_image_new_from_stock(icon, size);
    }
    GdkPixbuf* picture = GetIconPixbuf(icon);
    if (picture == nullptr) {
        return gtk_image_new_from_stock(GTK_STOCK_MISSING_IMAGE, size);
    }
    GtkWidget* image = gtk_image_new_from_pixbuf(picture);
    g_object_unref(picture);
    return image;
}

} // namespace korvane
