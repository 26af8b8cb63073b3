#include "scene/scenewriter.h"

#include "scene/model.h"
#include "scene/numbers.h"
#include "scene/tokenizer.h"

#include <cstring>

namespace korvane
{

void FlushText(SceneText& text)
{
    std::fwrite(text.buffer.data(), 1, text.used, text.file);
    text.used = 0;
}

static void Append(SceneText& text, std::string_view part)
{
    if (part.size() > text.buffer.size() - text.used) {
        FlushText(text);
    }
    if (part.size() > text.buffer.size()) {
        std::fwrite(part.data(), 1, part.size(), text.file);
        return;
    }
    std::memcpy(text.buffer.data() + text.used, part.data(), part.size());
    text.used += part.size();
}

// A number by one of the writers of numbers.h, and the text after it.
template <class Number, class Writer>
static void AppendNumber(SceneText& text, Writer write, Number value, std::string_view after)
{
    if (text.buffer.size() - text.used < std::size_t(numbersize)) {
        FlushText(text);
    }
    const char* end = write(text.buffer.data() + text.used, value);
    text.used = std::size_t(end - text.buffer.data());
    Append(text, after);
}

static void AppendInteger(SceneText& text, int value, std::string_view after)
{
    AppendNumber(text, WriteInteger, value, after);
}

static void AppendLabeled(SceneText& text, std::string_view label, int value,
                          std::string_view after)
{
    Append(text, label);
    AppendInteger(text, value, after);
}

static constexpr std::string_view blockline =
    "#~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~\n\n";
static constexpr std::string_view partline =
    "#----------------------------------------------------------------------\n";
static constexpr std::string_view sideline =
    "#- - - - - - - - - - - - - - - - - - - - - - - - - - - - - - - - - - - \n";

void WriteHeader(SceneText& text, int shapecount)
{
    Append(text, "Korvane v1.0\n\n#Created by Mirtal v1.0\n\n");
    Append(text, blockline);
    AppendLabeled(text, "ShapeNumber: ", shapecount, "\n\nFolders:\n\n");
}

void WriteFolderLine(SceneText& text, std::string_view name, int depth)
{
    for (int i = 0; i < depth; i++) {
        Append(text, "/");
    }
    Append(text, name);
    Append(text, "\n");
}

// Rows of ten. Deliberate: a count that is a multiple of ten leaves an empty row before what
// follows.
static void WriteRows(SceneText& text, const int* values, int count)
{
    constexpr int rowlength = 10;
    for (int i = 0; i < count; i++) {
        const bool endsrow = (i + 1) % rowlength == 0;
        AppendInteger(text, values[i], endsrow ? "\t\n" : "\t");
    }
}

static void WritePoints(SceneText& text, const Shape& shape)
{
    AppendLabeled(text, "PointNumber: ", shape.pointnumber, "\nPoints:\n");
    for (int i = 0; i < shape.pointnumber; i++) {
        AppendNumber(text, WriteReal, shape.points[i][0], "\t");
        AppendNumber(text, WriteReal, shape.points[i][1], "\t");
        AppendNumber(text, WriteReal, shape.points[i][2], "\t#");
        AppendInteger(text, i, ".\n");
    }
    Append(text, partline);
}

static void WriteVertexes(SceneText& text, const Shape& shape)
{
    if (shape.vertexnumber == 0) {
        return;
    }
    AppendLabeled(text, "VertexNumber: ", shape.vertexnumber, "\nVertexes:\n");
    WriteRows(text, shape.vertexes, shape.vertexnumber);
    Append(text, "\n");
    Append(text, partline);
}

static void WriteTriangles(SceneText& text, const Shape& shape)
{
    AppendLabeled(text, "TriangleNumber: ", shape.trianglenumber, "\nTriangles:\n");
    for (int i = 0; i < shape.trianglenumber; i++) {
        const int* points = shape.triangles[i].points;
        AppendInteger(text, points[0], "\t");
        AppendInteger(text, points[1], "\t");
        AppendInteger(text, points[2], "\t#");
        AppendInteger(text, i, ".\n");
    }
    Append(text, partline);
}

// Deliberate: a visibility with other bits has no word, and the line is not ended.
static std::string_view GetVisibilityWord(int visibility)
{
    switch (visibility) {
    case VISIBLE_NOT:
        return "invisible\n\n";
    case VISIBLE_FRONT:
        return "front\n\n";
    case VISIBLE_BACK:
        return "back\n\n";
    case VISIBLE_BOTH:
        return "frontback\n\n";
    default:
        return "";
    }
}

// Four components of a light or shadow colour in one line.
static void WriteColorLine(SceneText& text, const float* color)
{
    AppendNumber(text, WriteColor, color[0], " ");
    AppendNumber(text, WriteColor, color[1], " ");
    AppendNumber(text, WriteColor, color[2], " ");
    AppendNumber(text, WriteColor, color[3], "\n");
}

static void WriteColors(SceneText& text, const float* colors)
{
    Append(text, "Colors:\n");
    WriteColorLine(text, colors + FRONT_LIGHT);
    WriteColorLine(text, colors + FRONT_SHADOW);
    AppendNumber(text, WriteColor, colors[FRONT_ACUITY], "\n");
    WriteColorLine(text, colors + BACK_LIGHT);
    WriteColorLine(text, colors + BACK_SHADOW);
    AppendNumber(text, WriteColor, colors[BACK_ACUITY], "\n");
}

static void WriteSide(SceneText& text, const Side& side)
{
    Append(text, sideline);
    AppendLabeled(text, "PointNumber: ", side.pointnumber, "\nPoints:\n");
    WriteRows(text, side.points, side.pointnumber);
    AppendLabeled(text, "\n\nTriangleNumber: ", side.trianglenumber, "\nTriangles:\n");
    WriteRows(text, side.triangles, side.trianglenumber);
    Append(text, "\n\nVisibility: ");
    Append(text, GetVisibilityWord(side.visibility));
    WriteColors(text, side.colors);
}

void WriteShapeBlock(SceneText& text, std::string_view path, const Shape& shape)
{
    Append(text, blockline);
    Append(text, "Name:\n");
    Append(text, path);
    Append(text, "\n\n");
    WritePoints(text, shape);
    WriteVertexes(text, shape);
    WriteTriangles(text, shape);
    AppendLabeled(text, "SideNumber: ", shape.sidenumber, "\nSides:\n");
    for (int i = 0; i < shape.sidenumber; i++) {
        WriteSide(text, shape.sides[i]);
    }
}

// The length in bytes of the first character of a name that is not empty: that of a UTF-8 sequence,
// or 1 where the bytes are none.
static std::size_t GetCharacterLength(std::string_view name)
{
    const auto lead = static_cast<unsigned char>(name[0]);
    const std::size_t wanted = lead < 0xc0 ? 1 : lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
    std::size_t length = 1;
    while (length < wanted && length < name.size() && (name[length] & 0xc0) == 0x80) {
        length++;
    }
    return length;
}

std::string GetNameForFile(const char* name, const char* substitute)
{
    std::string result;
    std::string_view rest = name;
    while (!rest.empty()) {
        const bool carried =
            rest[0] != '/' && IsTokenCharacter(static_cast<unsigned char>(rest[0]));
        result += carried ? rest[0] : '-';
        rest.remove_prefix(GetCharacterLength(rest));
    }
    return result.empty() ? substitute : result;
}

} // namespace korvane
