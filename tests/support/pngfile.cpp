#include "tests/support/pngfile.h"

#include "tests/support/tempfolder.h"

#include <string_view>

namespace korvane::testing
{

static unsigned int GetNumber(std::string_view bytes)
{
    unsigned int number = 0;
    for (const char byte : bytes.substr(0, 4)) {
        number = number << 8 | static_cast<unsigned char>(byte);
    }
    return number;
}

// The cyclic redundancy check of the standard, bit by bit.
static unsigned int GetChecksum(std::string_view bytes)
{
    unsigned int sum = ~0U;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; bit++) {
            sum = (sum & 1) != 0 ? sum >> 1 ^ 0xEDB88320U : sum >> 1;
        }
    }
    return ~sum;
}

static void ReadHeader(std::string_view content, PngLook& look)
{
    look.width = GetNumber(content);
    look.height = GetNumber(content.substr(4));
    look.depth = content[8];
    look.colortype = content[9];
}

PngLook ReadPng(const std::string& path)
{
    PngLook look;
    const std::string file = ReadText(path);
    std::string_view rest = file;
    if (!rest.starts_with("\x89PNG\r\n\x1A\n")) {
        return look;
    }
    rest.remove_prefix(8);
    while (rest.size() >= 12) { // length, name and content, checksum
        const std::size_t length = GetNumber(rest);
        if (length > rest.size() - 12) {
            return look;
        }
        const std::string_view chunk = rest.substr(4, length + 4);
        if (GetChecksum(chunk) != GetNumber(rest.substr(length + 8))) {
            return look;
        }
        if (chunk.starts_with("IHDR") && length == 13) {
            ReadHeader(chunk.substr(4), look);
        }
        rest.remove_prefix(length + 12);
        look.whole = chunk == "IEND" && rest.empty();
    }
    return look;
}

} // namespace korvane::testing
