#include "scene/scenewriter.h"

#include "scene/model.h"
#include "scene/numbers.h"
#include "scene/textbuffer.h"
#include "scene/tokenizer.h"

namespace korvane
{

// A number by one of the writers of numbers.h, and the text after it.
template <class Number, class Writer>
static void AppendNumber(TextBuffer& text, Writer write, Number value, std::string_view after)
{
    TakeText(text, write(MakeRoom(text, numbersize), value));
    AppendText(text, after);
}

static void AppendInteger(TextBuffer& text, int value, std::string_view after)
{
    AppendNumber(text, WriteInteger, value, after);
}

static void AppendLabeled(TextBuffer& text, std::string_view label, int value,
                          std::string_view after)
{
    AppendText(text, label);
    AppendInteger(text, value, after);
}

static constexpr std::string_view blockline =
    "#~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~\n\n";
static constexpr std::string_view partline =
    "#----------------------------------------------------------------------\n";
static constexpr std::string_view sideline =
    "#- - - - - - - - - - - - - - - - - - - - - - - - - - - - - - - - - - - \n";

void WriteHeader(TextBuffer& text, int shapecount)
{
    // Deliberate: the comment has the program's historical name. All files carry it, and a scene
    // that is saved unchanged stays the same to the byte.
    AppendText(text, "Korvane v1.0\n\n#Created by Mirtal v1.0\n\n");
    AppendText(text, blockline);
    AppendLabeled(text, "ShapeNumber: ", shapecount, "\n\nFolders:\n\n");
}

void WriteFolderLine(TextBuffer& text, std::string_view name, int depth)
{
    for (int i = 0; i < depth; i++) {
        AppendText(text, "/");
    }
    AppendText(text, name);
    AppendText(text, "\n");
}

// Rows of ten. Deliberate: a count that is a multiple of ten leaves an empty row before what
// follows.
static void WriteRows(TextBuffer& text, const int* values, int count)
{
    constexpr int rowlength = 10;
    for (int i = 0; i < count; i++) {
        const bool endsrow = (i + 1) % rowlength == 0;
        AppendInteger(text, values[i], endsrow ? "\t\n" : "\t");
    }
}

static void WritePoints(TextBuffer& text, const Shape& shape)
{
    AppendLabeled(text, "PointNumber: ", shape.pointnumber, "\nPoints:\n");
    for (int i = 0; i < shape.pointnumber; i++) {
        AppendNumber(text, WriteReal, shape.points[i][0], "\t");
        AppendNumber(text, WriteReal, shape.points[i][1], "\t");
        AppendNumber(text, WriteReal, shape.points[i][2], "\t#");
        AppendInteger(text, i, ".\n");
    }
    AppendText(text, partline);
}

static void WriteVertexes(TextBuffer& text, const Shape& shape)
{
    if (shape.vertexnumber == 0) {
        return;
    }
    AppendLabeled(text, "VertexNumber: ", shape.vertexnumber, "\nVertexes:\n");
    WriteRows(text, shape.vertexes, shape.vertexnumber);
    AppendText(text, "\n");
    AppendText(text, partline);
}

static void WriteTriangles(TextBuffer& text, const Shape& shape)
{
    AppendLabeled(text, "TriangleNumber: ", shape.trianglenumber, "\nTriangles:\n");
    for (int i = 0; i < shape.trianglenumber; i++) {
        const int* points = shape.triangles[i].points;
        AppendInteger(text, points[0], "\t");
        AppendInteger(text, points[1], "\t");
        AppendInteger(text, points[2], "\t#");
        AppendInteger(text, i, ".\n");
    }
    AppendText(text, partline);
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
static void WriteColorLine(TextBuffer& text, const float* color)
{
    AppendNumber(text, WriteColor, color[0], " ");
    AppendNumber(text, WriteColor, color[1], " ");
    AppendNumber(text, WriteColor, color[2], " ");
    AppendNumber(text, WriteColor, color[3], "\n");
}

static void WriteColors(TextBuffer& text, const float* colors)
{
    AppendText(text, "Colors:\n");
    WriteColorLine(text, colors + FRONT_LIGHT);
    WriteColorLine(text, colors + FRONT_SHADOW);
    AppendNumber(text, WriteColor, colors[FRONT_ACUITY], "\n");
    WriteColorLine(text, colors + BACK_LIGHT);
    WriteColorLine(text, colors + BACK_SHADOW);
    AppendNumber(text, WriteColor, colors[BACK_ACUITY], "\n");
}

static void WriteSide(TextBuffer& text, const Side& side)
{
    AppendText(text, sideline);
    AppendLabeled(text, "PointNumber: ", side.pointnumber, "\nPoints:\n");
    WriteRows(text, side.points, side.pointnumber);
    AppendLabeled(text, "\n\nTriangleNumber: ", side.trianglenumber, "\nTriangles:\n");
    WriteRows(text, side.triangles, side.trianglenumber);
    AppendText(text, "\n\nVisibility: ");
    AppendText(text, GetVisibilityWord(side.visibility));
    WriteColors(text, side.colors);
}

void WriteShapeBlock(TextBuffer& text, std::string_view path, const Shape& shape)
{
    AppendText(text, blockline);
    AppendText(text, "Name:\n");
    AppendText(text, path);
    AppendText(text, "\n\n");
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
