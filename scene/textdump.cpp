#include "scene/textdump.h"

#include "scene/model.h"

#include <cstdio>
#include <string>

namespace korvane
{

static constexpr int rulelength = 68;

static void WriteRule(FILE* file, char sign)
{
    std::fprintf(file, "\n%s\n", std::string(rulelength, sign).c_str());
}

static void WriteSectionRule(FILE* file)
{
    WriteRule(file, '~');
}

static void WriteItemRule(FILE* file)
{
    WriteRule(file, '-');
}

// Writes the indices on one line that ends in `end`; of an empty list only that.
static void WriteIndices(FILE* file, const int* indices, int number, const char* end)
{
    for (int i = 0; i < number; i++) {
        std::fprintf(file, i == 0 ? "%d" : ", %d", indices[i]);
    }
    std::fputs(end, file);
}

static void WritePoints(FILE* file, const Shape& shape)
{
    std::fprintf(file, "Pointnumber: %d\n\n", shape.pointnumber);
    for (int i = 0; i < shape.pointnumber; i++) {
        const float* point = shape.points[i];
        std::fprintf(file, "%d: %f, %f, %f\n", i, double(point[0]), double(point[1]),
                     double(point[2]));
    }
    WriteSectionRule(file);
}

static void WriteVertexes(FILE* file, const Shape& shape)
{
    if (shape.vertexnumber == 0) {
        return;
    }
    std::fprintf(file, "Vertexnumber: %d\n\nVertexes: ", shape.vertexnumber);
    WriteIndices(file, shape.vertexes, shape.vertexnumber, "\n");
    WriteSectionRule(file);
}

static void WriteTriangles(FILE* file, const Shape& shape)
{
    std::fprintf(file, "Trianglenumber: %d\n\n", shape.trianglenumber);
    for (int i = 0; i < shape.trianglenumber; i++) {
        const int* corners = shape.triangles[i].points;
        std::fprintf(file, "%d: %d, %d, %d\n", i, corners[0], corners[1], corners[2]);
    }
    WriteSectionRule(file);
}

static void WriteStripes(FILE* file, const Shape& shape)
{
    std::fprintf(file, "Stripenumber: %d\n", shape.stripenumber);
    WriteItemRule(file);
    for (int i = 0; i < shape.stripenumber; i++) {
        const Stripe& stripe = shape.stripes[i];
        std::fprintf(file, "%d: Pointnumber: %d\nPoints: ", i, stripe.pointnumber);
        WriteIndices(file, stripe.points, stripe.pointnumber, "\n");
        WriteItemRule(file);
    }
    WriteSectionRule(file);
}

static void WriteSides(FILE* file, const Shape& shape)
{
    std::fprintf(file, "Sidenumber: %d\n", shape.sidenumber);
    WriteItemRule(file);
    for (int i = 0; i < shape.sidenumber; i++) {
        const Side& side = shape.sides[i];
        std::fprintf(file, "%d: Pointnumber: %d\nPoints: ", i, side.pointnumber);
        WriteIndices(file, side.points, side.pointnumber, "\n\n");
        std::fprintf(file, "%d: Trianglenumber: %d\nTriangles: ", i, side.trianglenumber);
        WriteIndices(file, side.triangles, side.trianglenumber, "\n");
        WriteItemRule(file);
    }
}

int SaveShapeInTxt(int index, const char* path)
{
    if (!IsShapeThere(index)) {
        return 0;
    }
    FILE* file = std::fopen(path, "w");
    if (file == nullptr) {
        return 0;
    }
    const Shape& shape = *shapes[index];
    WritePoints(file, shape);
    WriteVertexes(file, shape);
    WriteTriangles(file, shape);
    WriteStripes(file, shape);
    WriteSides(file, shape);
    std::fclose(file);
    return 0;
}

int PrintOk()
{
    static int n = 0;
    std::printf("ok %d\n", n);
    n++;
    std::fflush(stdout);
    return 0;
}

} // namespace korvane
