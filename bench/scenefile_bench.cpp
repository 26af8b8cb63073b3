// Reading and writing scene files. Reading is measured from the file to the draft that OpenMrt puts
// into the scene, per point and per byte, against getc_unlocked and strtod over the same bytes;
// writing against fprintf of the same lines, which gives the same bytes but for the decimal comma.
// Loading and clearing many small shapes must cost the same for each.
#include "scene/scenefile.h"

#include "bench/meshes.h"
#include "scene/arrays.h"
#include "scene/filereplacement.h"
#include "scene/model.h"
#include "scene/scenereader.h"
#include "scene/scenewriter.h"
#include "scene/textbuffer.h"
#include "scene/tokenizer.h"
#include "scene/treeview.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <unistd.h>

namespace korvane::bench
{

struct FileCloser {
    void operator()(FILE* file) const
    {
        std::fclose(file);
    }
};
using File = std::unique_ptr<FILE, FileCloser>;

// A file that is gone afterwards, open for writing and reading.
static File OpenScratch()
{
    return File(std::tmpfile());
}

static std::string GetPath(const File& file)
{
    return "/proc/self/fd/" + std::to_string(fileno(file.get()));
}

static std::string ReadBytes(const File& file)
{
    FileBytes bytes;
    ReadRegularFile(GetPath(file).c_str(), bytes);
    return std::string(bytes.GetText());
}

static void WriteOneShape(FILE* file, const Shape& shape)
{
    TextBuffer text(file);
    WriteHeader(text, 1);
    WriteShapeBlock(text, "/shape", shape);
    FlushText(text);
}

static void CountWork(::benchmark::State& state, int points, std::size_t bytes)
{
    state.counters["s/point"] = ::benchmark::Counter(
        points, ::benchmark::Counter::kIsIterationInvariantRate | ::benchmark::Counter::kInvert);
    state.SetBytesProcessed(std::int64_t(bytes) * state.iterations());
}

// A torus of triangles has half as many points.
static OwnedShape MakeTorusOfPoints(::benchmark::State& state)
{
    return MakeTriangleTorus(2 * int(state.range(0)));
}

// One side with every point: nearly all of the file is coordinates.
static OwnedShape MakePolygonOfPoints(::benchmark::State& state)
{
    return MakeConvexPolygon(int(state.range(0)));
}

using ShapeMaker = OwnedShape (*)(::benchmark::State&);

static void ReadWithKorvane(::benchmark::State& state, ShapeMaker make)
{
    const OwnedShape shape = make(state);
    const File file = OpenScratch();
    WriteOneShape(file.get(), *shape);
    std::fflush(file.get());
    for (auto _ : state) {
        FileBytes bytes;
        ReadRegularFile(GetPath(file).c_str(), bytes);
        SceneDraft draft = ReadScene(bytes.GetText());
        state.PauseTiming(); // the scene keeps the shapes: freeing them is no part of reading
        if (draft.shapes.size() != 1 || draft.mismatched) {
            state.SkipWithError("the shape is not read");
        }
        draft.shapes.clear();
        state.ResumeTiming();
    }
    CountWork(state, shape->pointnumber, ReadBytes(file).size());
}

// Every token of the file; what starts like a number is converted, as the least that a reader does.
static double SumNumbers(FILE* file)
{
    double sum = 0;
    char token[tokensize];
    int length = 0;
    for (int c = getc_unlocked(file); c != EOF; c = getc_unlocked(file)) {
        if (IsTokenCharacter(c)) {
            token[length] = c == ',' ? '.' : char(c);
            length = std::min(length + 1, tokensize - 1);
            continue;
        }
        token[length] = 0;
        if (length > 0 && (token[0] == '-' || (token[0] >= '0' && token[0] <= '9'))) {
            sum += std::strtod(token, nullptr);
        }
        length = 0;
        while (c == '#' && c != EOF && (c = getc_unlocked(file)) != '\n') {
            c = c == EOF ? EOF : '#';
        }
    }
    return sum;
}

static void ReadWithStdio(::benchmark::State& state, ShapeMaker make)
{
    const OwnedShape shape = make(state);
    const File file = OpenScratch();
    WriteOneShape(file.get(), *shape);
    for (auto _ : state) {
        std::rewind(file.get());
        ::benchmark::DoNotOptimize(SumNumbers(file.get()));
    }
    CountWork(state, shape->pointnumber, ReadBytes(file).size());
}

static void WriteWithKorvane(::benchmark::State& state, ShapeMaker make)
{
    const OwnedShape shape = make(state);
    const File file = OpenScratch();
    for (auto _ : state) {
        std::rewind(file.get());
        WriteOneShape(file.get(), *shape);
        std::fflush(file.get());
    }
    CountWork(state, shape->pointnumber, ReadBytes(file).size());
}

static void PrintRows(FILE* file, const int* values, int count)
{
    for (int i = 0; i < count; i++) {
        std::fprintf(file, (i + 1) % 10 == 0 ? "%d\t\n" : "%d\t", values[i]);
    }
}

static void PrintSide(FILE* file, const Side& side)
{
    std::fprintf(file, "#");
    for (int i = 0; i < 35; i++) {
        std::fprintf(file, "- ");
    }
    std::fprintf(file, "\nPointNumber: %d\nPoints:\n", side.pointnumber);
    PrintRows(file, side.points, side.pointnumber);
    std::fprintf(file, "\n\nTriangleNumber: %d\nTriangles:\n", side.trianglenumber);
    PrintRows(file, side.triangles, side.trianglenumber);
    std::fprintf(file, "\n\nVisibility: frontback\n\nColors:\n");
    for (const float* set : {side.colors, side.colors + BACK_LIGHT}) {
        std::fprintf(file, "%f %f %f %f\n", double(set[0]), double(set[1]), double(set[2]),
                     double(set[3]));
        std::fprintf(file, "%f %f %f %f\n", double(set[4]), double(set[5]), double(set[6]),
                     double(set[7]));
        std::fprintf(file, "%f\n", double(set[8]));
    }
}

// The same lines by formatted output.
static void PrintOneShape(FILE* file, const Shape& shape)
{
    const std::string wave(70, '~');
    const std::string line(70, '-');
    std::fprintf(file, "Korvane v1.0\n\n#Created by Mirtal v1.0\n\n#%s\n\n", wave.c_str());
    std::fprintf(file, "ShapeNumber: 1\n\nFolders:\n\n#%s\n\nName:\n/shape\n\n", wave.c_str());
    std::fprintf(file, "PointNumber: %d\nPoints:\n", shape.pointnumber);
    for (int i = 0; i < shape.pointnumber; i++) {
        const float* p = shape.points[i];
        std::fprintf(file, "%.20g\t%.20g\t%.20g\t#%d.\n", double(p[0]), double(p[1]), double(p[2]),
                     i);
    }
    std::fprintf(file, "#%s\nTriangleNumber: %d\nTriangles:\n", line.c_str(), shape.trianglenumber);
    for (int i = 0; i < shape.trianglenumber; i++) {
        const int* p = shape.triangles[i].points;
        std::fprintf(file, "%d\t%d\t%d\t#%d.\n", p[0], p[1], p[2], i);
    }
    std::fprintf(file, "#%s\nSideNumber: %d\nSides:\n", line.c_str(), shape.sidenumber);
    for (int i = 0; i < shape.sidenumber; i++) {
        PrintSide(file, shape.sides[i]);
    }
}

static bool AreEqualButForCommas(std::string printed, const File& written)
{
    std::string text = ReadBytes(written);
    for (std::string* bytes : {&printed, &text}) { // comments and "v1.0" have points of their own
        std::replace(bytes->begin(), bytes->end(), ',', '.');
    }
    return printed == text;
}

static void WriteWithStdio(::benchmark::State& state, ShapeMaker make)
{
    const OwnedShape shape = make(state);
    const File file = OpenScratch();
    for (auto _ : state) {
        std::rewind(file.get());
        PrintOneShape(file.get(), *shape);
        std::fflush(file.get());
    }
    const File written = OpenScratch();
    WriteOneShape(written.get(), *shape);
    std::fflush(written.get());
    if (!AreEqualButForCommas(ReadBytes(file), written)) {
        state.SkipWithError("the bytes differ");
    }
    CountWork(state, shape->pointnumber, ReadBytes(file).size());
}

// A file of small shapes in ten folders.
static void WriteManyShapes(FILE* file, int number)
{
    const OwnedShape shape = MakeTriangleTorus(18);
    TextBuffer text(file);
    WriteHeader(text, number);
    for (int i = 0; i < 10; i++) {
        WriteFolderLine(text, std::to_string(i), 1);
    }
    for (int i = 0; i < number; i++) {
        WriteShapeBlock(text, "/" + std::to_string(i % 10) + "/s" + std::to_string(i), *shape);
    }
    FlushText(text);
    std::fflush(file);
}

static void LoadAndClear(::benchmark::State& state)
{
    const int number = int(state.range(0));
    if (store == nullptr) {
        MakeTree();
    }
    const File file = OpenScratch();
    WriteManyShapes(file.get(), number);
    for (auto _ : state) {
        OpenMrt(GetPath(file).c_str());
        if (shapenumber != number) {
            state.SkipWithError("the shapes are not loaded");
        }
        NewMrt();
    }
    state.counters["s/shape"] = ::benchmark::Counter(
        number, ::benchmark::Counter::kIsIterationInvariantRate | ::benchmark::Counter::kInvert);
}

static void Sizes(::benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier(10)->Range(1000, 100000)->Unit(::benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(ReadWithKorvane, torus, MakeTorusOfPoints)->Apply(Sizes);
BENCHMARK_CAPTURE(ReadWithStdio, torus, MakeTorusOfPoints)->Apply(Sizes);
BENCHMARK_CAPTURE(ReadWithKorvane, polygon, MakePolygonOfPoints)->Apply(Sizes);
BENCHMARK_CAPTURE(ReadWithStdio, polygon, MakePolygonOfPoints)->Apply(Sizes);
BENCHMARK_CAPTURE(WriteWithKorvane, torus, MakeTorusOfPoints)->Apply(Sizes);
BENCHMARK_CAPTURE(WriteWithStdio, torus, MakeTorusOfPoints)->Apply(Sizes);
BENCHMARK_CAPTURE(WriteWithKorvane, polygon, MakePolygonOfPoints)->Apply(Sizes);
BENCHMARK_CAPTURE(WriteWithStdio, polygon, MakePolygonOfPoints)->Apply(Sizes);
BENCHMARK(LoadAndClear)->RangeMultiplier(10)->Range(100, 10000)->Unit(::benchmark::kMillisecond);

} // namespace korvane::bench
