// Writing the OBJ mesh of a shape of 1e3 to 1e5 points, per point, against fprintf of the same
// lines, which gives the same bytes.
#include "scene/objexport.h"

#include "bench/meshes.h"
#include "scene/model.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace korvane::bench
{

struct FileCloser {
    void operator()(FILE* file) const
    {
        std::fclose(file);
    }
};
using File = std::unique_ptr<FILE, FileCloser>;

using Writer = void (*)(FILE* file, Shape* shape);

// From the place that the export reads: the rounded copy of the scene's only shape.
static void WriteWithKorvane(FILE* file, Shape* shape)
{
    static const int index = 0;
    Shape* only[] = {shape};
    round1t = only;
    WriteObj(file, &index, 1);
    round1t = nullptr;
}

static void WriteWithStdio(FILE* file, Shape* shape)
{
    std::fprintf(file, "#Created by Korvane v1.0\nmtllib untitled.mtl\n");
    for (int i = 0; i < shape->pointnumber; i++) {
        const float* p = shape->points[i];
        std::fprintf(file, "v %f %f %f\n", 10.0 * double(p[0]), 10.0 * double(p[2]),
                     -10.0 * double(p[1]));
    }
    std::fprintf(file, "usemtl (null)\ns off\n");
    for (int i = 0; i < shape->trianglenumber; i++) {
        const int* p = shape->triangles[i].points;
        std::fprintf(file, "f %d %d %d\n", p[0] + 1, p[1] + 1, p[2] + 1);
    }
}

static std::string GetBytes(Writer write, Shape* shape)
{
    char* bytes = nullptr;
    std::size_t length = 0;
    FILE* file = open_memstream(&bytes, &length);
    write(file, shape);
    std::fclose(file);
    std::string text(bytes, length);
    std::free(bytes);
    return text;
}

static void WriteMesh(::benchmark::State& state, Writer write)
{
    // a torus of triangles has half as many points
    const OwnedShape shape = MakeTriangleTorus(2 * int(state.range(0)));
    const std::string bytes = GetBytes(WriteWithStdio, shape.get());
    if (GetBytes(write, shape.get()) != bytes) {
        state.SkipWithError("the bytes differ");
    }
    const File file(std::tmpfile());
    for (auto _ : state) {
        std::rewind(file.get());
        write(file.get(), shape.get());
        std::fflush(file.get());
    }
    state.counters["s/point"] =
        ::benchmark::Counter(shape->pointnumber, ::benchmark::Counter::kIsIterationInvariantRate |
                                                     ::benchmark::Counter::kInvert);
    state.SetBytesProcessed(std::int64_t(bytes.size()) * state.iterations());
}

static void Sizes(::benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier(10)->Range(1000, 100000)->Unit(::benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(WriteMesh, korvane, WriteWithKorvane)->Apply(Sizes);
BENCHMARK_CAPTURE(WriteMesh, stdio, WriteWithStdio)->Apply(Sizes);

} // namespace korvane::bench
