// The text of a scene. Numbers carry a decimal comma whatever the locale.
#pragma once

#include <string>
#include <string_view>

namespace korvane
{

struct Shape;
struct TextBuffer;

// A name as the format can carry it: "-" for each character that is no token character, or is "/",
// and `substitute` for an empty name.
std::string GetNameForFile(const char* name, const char* substitute);

void WriteHeader(TextBuffer& text, int shapecount);
void WriteFolderLine(TextBuffer& text, std::string_view name, int depth);
void WriteShapeBlock(TextBuffer& text, std::string_view path, const Shape& shape);

} // namespace korvane
