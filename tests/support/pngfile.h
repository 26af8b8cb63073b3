// What a PNG file says of itself, read chunk by chunk as its standard lays down.
#pragma once

#include <string>

namespace korvane::testing
{

struct PngLook {
    bool whole = false; // signature, every chunk's checksum, and the end are right
    unsigned int width = 0, height = 0;
    int depth = 0;     // bits of a channel
    int colortype = 0; // 6: red, green, blue and alpha
};

PngLook ReadPng(const std::string& path);

} // namespace korvane::testing
