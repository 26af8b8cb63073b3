// Renders every example with the program's own "Create image..." and lays the images side by side
// for the documents: all of them, in the order of their names, and a row of three.
//   render [FOLDER]
// What is clear in an image shows here the grey that the program has blended it with.

#include "export/imageorder.h"
#include "scene/scenefile.h"
#include "tests/support/imagemaking.h"
#include "tests/support/widgets.h"
#include "tests/support/xserver.h"
#include "view/frameloop.h"

#include <gtk/gtk.h>
#include <gtk/gtkgl.h>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace korvane;
using namespace korvane::testing;

struct PixbufDeleter {
    void operator()(GdkPixbuf* pixbuf) const
    {
        g_object_unref(pixbuf);
    }
};
using Pixbuf = std::unique_ptr<GdkPixbuf, PixbufDeleter>;

static constexpr int lineshade = 0x30; // of the grey lines between the images

static Pixbuf MakePixbuf(int pixelwidth, int pixelheight)
{
    return Pixbuf(gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, pixelwidth, pixelheight));
}

// The toolkit's scaling would blend the clear parts again.
static Pixbuf DropAlpha(const Image& image)
{
    Pixbuf opaque = MakePixbuf(imagewidth, imageheight);
    const int rowstride = gdk_pixbuf_get_rowstride(opaque.get());
    for (int y = 0; y < imageheight; y++) {
        guchar* row = gdk_pixbuf_get_pixels(opaque.get()) + std::ptrdiff_t(y) * rowstride;
        for (int x = 0; x < imagewidth; x++) {
            std::copy_n(&image.pixels[std::size_t(y * imagewidth + x) * 4], 3, row + x * 3);
        }
    }
    return opaque;
}

static Pixbuf Render(const std::string& scene)
{
    GtkWidget* area = FindWidget(ShowMainWindow(), GTK_TYPE_DRAWING_AREA);
    OpenMrt(scene.c_str());
    Image image;
    RunCreateImage([&] { ReDraw(area, nullptr); },
                   [&](GtkDialog* dialog) {
                       image = CopyImage();
                       gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL);
                   });
    return DropAlpha(image);
}

// The square in the middle of each image, `size` pixels wide.
static Pixbuf LayOut(const std::vector<const GdkPixbuf*>& images, int columns, int size)
{
    const int rows = (int(images.size()) + columns - 1) / columns;
    Pixbuf gallery = MakePixbuf(columns * (size + 1) - 1, rows * (size + 1) - 1);
    gdk_pixbuf_fill(gallery.get(), lineshade << 24 | lineshade << 16 | lineshade << 8);
    const double scale = double(size) / imageheight;
    const double margin = (imagewidth - imageheight) / 2.0;
    for (int i = 0; i < int(images.size()); i++) {
        const int left = i % columns * (size + 1);
        const int top = i / columns * (size + 1);
        gdk_pixbuf_scale(images[std::size_t(i)], gallery.get(), left, top, size, size,
                         left - margin * scale, top, scale, scale, GDK_INTERP_HYPER);
    }
    return gallery;
}

static void Save(const Pixbuf& picture, const std::string& path)
{
    if (!gdk_pixbuf_save(picture.get(), path.c_str(), "png", nullptr, "compression", "9",
                         nullptr)) {
        std::fprintf(stderr, "render: %s cannot be written\n", path.c_str());
        std::exit(1);
    }
}

static void RenderInto(const std::string& folder)
{
    std::map<std::string, Pixbuf> images;
    for (const auto& file : std::filesystem::directory_iterator(KORVANE_SOURCE_DIR "/examples")) {
        if (file.path().extension() == ".mrt") {
            const std::string name = file.path().stem();
            images[name] = Render(file.path());
            Save(images[name], folder + "/" + name + ".png");
        }
    }
    std::vector<const GdkPixbuf*> all;
    for (const auto& [name, image] : images) {
        all.push_back(image.get());
    }
    Save(LayOut(all, 4, 210), folder + "/gallery.png");
    Save(LayOut({images["chess"].get(), images["vessels"].get(), images["house"].get()}, 3, 300),
         folder + "/gallery-row.png");
}

int main(int argc, char** argv)
{
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1); // the same pixels on every machine
    const XServer server(1280, 1024);
    gtk_init(&argc, &argv);
    gtk_gl_init(&argc, &argv);
    std::setlocale(LC_NUMERIC, "C");
    RenderInto(argc > 1 ? argv[1] : ".");
    return 0;
}
