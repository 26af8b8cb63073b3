#include "tests/support/imagemaking.h"

#include "export/image.h"
#include "export/imageorder.h"
#include "view/frameloop.h"
#include "view/mainview.h"

namespace korvane::testing
{

static const unsigned char* GetPixel(const Image& image, int x, int y)
{
    return &image.pixels.at(std::size_t(y * imagewidth + x) * 4);
}

Pixel Image::At(int x, int y) const
{
    const unsigned char* pixel = GetPixel(*this, x, y);
    return {pixel[0], pixel[1], pixel[2]};
}

int Image::AlphaAt(int x, int y) const
{
    return GetPixel(*this, x, y)[3];
}

void RunCreateImage(const std::function<void()>& step,
                    const std::function<void(GtkDialog*)>& preview)
{
    AnswerDialog([&](GtkDialog*) {
        while (cisign != 0) {
            step();
        }
        AnswerDialog([&](GtkDialog* dialog) {
            preview(dialog);
            return true;
        });
        return true;
    });
    CreateImage();
}

Image CopyImage()
{
    if (imagebuffer == nullptr) {
        return {};
    }
    return {std::vector<unsigned char>(imagebuffer, imagebuffer + imagewidth * imageheight * 4)};
}

Image MakeImageIn(const GlWindow& window)
{
    Image image;
    RunCreateImage([&] { ReDraw(window.GetArea(), nullptr); },
                   [&](GtkDialog* dialog) {
                       image = CopyImage();
                       gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL);
                   });
    return image;
}

void CancelAfter(const GlWindow& window, int steps)
{
    AnswerDialog([&](GtkDialog* dialog) {
        for (int i = 0; i < steps; i++) {
            ReDraw(window.GetArea(), nullptr);
        }
        gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL);
        return true;
    });
    CreateImage();
}

int ImageTest::Add(OwnedShape shape)
{
    AddShape(shape.release());
    selected[shapenumber - 1] = selectedfade;
    return shapenumber - 1;
}

void ImageTest::LookFromBehind()
{
    mainview.rotation[0] = -1;
    mainview.rotation[8] = -1;
}

Image ImageTest::MakeImage() const
{
    ProjectScene();
    return MakeImageIn(window);
}

} // namespace korvane::testing
