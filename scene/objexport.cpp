#include "scene/objexport.h"

#include "scene/arrays.h"
#include "scene/filereplacement.h"
#include "scene/model.h"
#include "scene/textbuffer.h"
#include "scene/treeview.h"
#include "ui/dialogs.h"
#include "view/mainview.h"

#include <charconv>
#include <string_view>

namespace korvane
{

// "v " and three floats of 39 digits and six decimals.
static constexpr std::size_t longestline = 160;
static constexpr double objscale = 10.0; // of the mesh against the screen

// Where the next line goes; there is room for it.
static char* BeginLine(TextBuffer& text)
{
    return MakeRoom(text, longestline);
}

static void EndLine(TextBuffer& text, char* end)
{
    *end++ = '\n';
    TakeText(text, end);
}

// The digits of "%f".
static char* WriteCoordinate(char* out, double value)
{
    *out++ = ' ';
    return std::to_chars(out, out + longestline, value, std::chars_format::fixed, 6).ptr;
}

static void WriteVertices(TextBuffer& text, const Shape* shape)
{
    for (int i = 0; i < shape->pointnumber; i++) {
        const float* p = shape->points[i];
        char* out = BeginLine(text);
        *out++ = 'v';
        out = WriteCoordinate(out, objscale * p[0]);
        out = WriteCoordinate(out, objscale * p[2]);
        out = WriteCoordinate(out, -objscale * p[1]);
        EndLine(text, out);
    }
}

// `base` is the number of the shape's first vertex in the file.
static void WriteFaces(TextBuffer& text, const Shape* shape, int base)
{
    for (int i = 0; i < shape->trianglenumber; i++) {
        char* out = BeginLine(text);
        *out++ = 'f';
        for (const int point : shape->triangles[i].points) {
            *out++ = ' ';
            out = std::to_chars(out, out + longestline, base + point).ptr;
        }
        EndLine(text, out);
    }
}

static void WriteLine(TextBuffer& text, std::string_view line)
{
    AppendText(text, line);
    AppendText(text, "\n");
}

void WriteObj(FILE* file, const int* indices, int count)
{
    TextBuffer text(file);
    // Deliberate: not the version of the program, but the line by which its meshes are known.
    WriteLine(text, "#Created by Korvane v1.0");
    WriteLine(text, "mtllib untitled.mtl");
    for (int i = 0; i < count; i++) {
        WriteVertices(text, round1t[indices[i]]);
    }
    WriteLine(text, "usemtl (null)");
    WriteLine(text, "s off");
    int base = 1;
    for (int i = 0; i < count; i++) {
        WriteFaces(text, round1t[indices[i]], base);
        base += round1t[indices[i]]->pointnumber;
    }
    FlushText(text);
}

// Shapes outside the view are projected too while an export renders.
static void ProjectForExport()
{
    cisign = 1;
    TransferAllShape();
    cisign = 0;
}

void SaveObj()
{
    const Block<char[]> name = FileDialog(FILE_EXPORTOBJ);
    if (name == nullptr) {
        return;
    }
    ProjectForExport();
    int count = 0;
    const Block<int[]> indices = GetSelectedShapes(&count);
    const bool written =
        ReplaceFile(name.get(), [&](FILE* file) { WriteObj(file, indices.get(), count); });
    TransferAllShape(); // what is shown follows the view again
    if (!written) {
        ErrorDialog("Can't export the scene!");
    }
}

} // namespace korvane
