#include "export/imagepreview.h"

#include <cstddef>

namespace korvane
{

static int GetGrey(int x, int y)
{
    constexpr int square = 16; // pixels
    return x / square % 2 == y / square % 2 ? 100 : 116;
}

// A pixel of the preview from the 2 x 2 block whose upper left pixel is given.
static void LayOver(unsigned char* shown, const unsigned char* upper, int grey)
{
    const unsigned char* lower = upper + std::ptrdiff_t(imagewidth) * 4;
    const auto average = [=](int channel) {
        return (upper[channel] + upper[channel + 4] + lower[channel] + lower[channel + 4]) / 4;
    };
    const int alpha = average(3);
    for (int channel = 0; channel < 3; channel++) {
        const int color = average(channel) * alpha + (255 - alpha) * grey;
        shown[channel] = static_cast<unsigned char>(color / 255);
    }
}

std::vector<unsigned char> MakePreview(const unsigned char* image)
{
    std::vector<unsigned char> preview(std::size_t(previewwidth) * previewheight * 3);
    unsigned char* shown = preview.data();
    for (int y = 0; y < previewheight; y++) {
        for (int x = 0; x < previewwidth; x++, shown += 3) {
            LayOver(shown, image + std::ptrdiff_t(2 * y * imagewidth + 2 * x) * 4, GetGrey(x, y));
        }
    }
    return preview;
}

} // namespace korvane
