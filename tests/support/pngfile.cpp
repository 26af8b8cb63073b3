#include "tests/support/pngfile.h"

#include "tests/support/tempfolder.h"

#include <zlib.h>

#include <cstdlib>
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
    look.interlaced = content[12] != 0;
}

static constexpr std::size_t pixelbytes = 4;

// Of the pixel to the left, the one above and the one between them, the one that lies nearest to
// the plane through them; left wins before above.
static int PredictByPaeth(int left, int above, int corner)
{
    const int toleft = std::abs(above - corner);
    const int toabove = std::abs(left - corner);
    const int tocorner = std::abs(left + above - 2 * corner);
    if (toleft <= toabove && toleft <= tocorner) {
        return left;
    }
    return toabove <= tocorner ? above : corner;
}

// What a row's filter has taken away from a byte.
static int Predict(char filter, int left, int above, int corner)
{
    switch (filter) {
    case 1:
        return left;
    case 2:
        return above;
    case 3:
        return (left + above) / 2;
    case 4:
        return PredictByPaeth(left, above, corner);
    default:
        return 0;
    }
}

// Every row begins with its filter. Outside the picture everything is 0.
static void UndoFilters(std::string_view rows, PngLook& look)
{
    const std::size_t rowbytes = look.width * pixelbytes;
    look.pixels.resize(look.height * rowbytes);
    for (std::size_t i = 0; i < look.pixels.size(); i++) {
        const std::size_t row = i / rowbytes;
        const bool first = i % rowbytes < pixelbytes;
        const int left = first ? 0 : look.pixels[i - pixelbytes];
        const int above = row == 0 ? 0 : look.pixels[i - rowbytes];
        const int corner = first || row == 0 ? 0 : look.pixels[i - rowbytes - pixelbytes];
        const int difference = static_cast<unsigned char>(rows[i + row + 1]);
        const int value = difference + Predict(rows[row * (rowbytes + 1)], left, above, corner);
        look.pixels[i] = static_cast<unsigned char>(value);
    }
}

static void Unpack(const std::string& packed, PngLook& look)
{
    if (packed.size() < 2 || look.depth != 8 || look.colortype != 6 || look.interlaced) {
        return;
    }
    look.effort = static_cast<unsigned char>(packed[1]) >> 6;
    std::string rows(look.height * (look.width * pixelbytes + 1), 0);
    uLongf size = rows.size();
    if (uncompress(reinterpret_cast<Bytef*>(rows.data()), &size,
                   reinterpret_cast<const Bytef*>(packed.data()), packed.size()) == Z_OK &&
        size == rows.size()) {
        UndoFilters(rows, look);
    }
}

PngLook ReadPng(const std::string& path)
{
    PngLook look;
    std::string packed;
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
        if (chunk.starts_with("IDAT")) {
            packed += chunk.substr(4);
        }
        rest.remove_prefix(length + 12);
        look.whole = chunk == "IEND" && rest.empty();
    }
    Unpack(packed, look);
    return look;
}

} // namespace korvane::testing
