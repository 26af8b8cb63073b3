// The text of a scene, gathered in a buffer and handed to a file in large pieces. Numbers carry a
// decimal comma whatever the locale. A failed write shows in the file's error flag, as with stdio.
#pragma once

#include <array>
#include <cstdio>
#include <string>
#include <string_view>

namespace korvane
{

struct Shape;

struct SceneText {
    explicit SceneText(FILE* target) : file(target)
    {
    }

    FILE* file;                     // borrowed
    std::size_t used = 0;           // bytes of buffer that wait to be written
    std::array<char, 65536> buffer; // unfilled from used on
};

void FlushText(SceneText& text); // hands what is buffered to the file

// A name as the format can carry it: "-" for each character that is no token character, or is "/",
// and `substitute` for an empty name.
std::string GetNameForFile(const char* name, const char* substitute);

void WriteHeader(SceneText& text, int shapecount);
void WriteFolderLine(SceneText& text, std::string_view name, int depth);
void WriteShapeBlock(SceneText& text, std::string_view path, const Shape& shape);

} // namespace korvane
