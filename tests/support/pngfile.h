// What a PNG file says of itself, and its pixels, read chunk by chunk as its standard lays down:
// by other means than those that wrote it.
#pragma once

#include <string>
#include <vector>

namespace korvane::testing
{

struct PngLook {
    bool whole = false; // signature, every chunk's checksum, and the end are right
    unsigned int width = 0, height = 0;
    int depth = 0;     // bits of a channel
    int colortype = 0; // 6: red, green, blue and alpha
    bool interlaced = false;
    int effort = -1; // of packing, 0 to 3, as the packed pixels tell
    // Unpacked, rows from the top; none when they are not four channels of 8 bits, row by row.
    std::vector<unsigned char> pixels;
};

PngLook ReadPng(const std::string& path);

} // namespace korvane::testing
