// The image at half its size on a checkerboard, which shows through where the image does. No
// toolkit, no OpenGL.
#pragma once

#include "export/imageorder.h"

#include <vector>

namespace korvane
{

constexpr int previewwidth = imagewidth / 2;
constexpr int previewheight = imageheight / 2;

// Red, green and blue of the preview, rows from the top, of an image of twice that size.
std::vector<unsigned char> MakePreview(const unsigned char* image);

} // namespace korvane
