// A whole image, from collecting to the last tile, against the plain method: one list of all
// triangles that sets the light state for each of them, drawn 20 x 4 times; and against the same
// without any change of the light state, which draws the wrong colours. Tori of four colours, one
// of them clear, fill the image and cross each other; or a single one fills it, which is collected
// in one step; or all of them lie in a single tile. The sizes are those of what is collected.
#include "export/imageprogress.h"

#include "bench/meshes.h"
#include "bench/window.h"
#include "geometry/shapegeometry.h"
#include "scene/model.h"
#include "tests/support/plainimage.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <benchmark/benchmark.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <cmath>
#include <ctime>

namespace korvane::bench
{

struct Scene {
    int across; // tori in each direction
    double radius;
    bool striped;
    int collectedfromone; // triangles: 81 where the image rounds once more, else 9
    double spread;        // of the tori, as a share of the image
    double up;            // from the middle of the image
};
static constexpr Scene apart = {10, 0.085, false,
                                81, 1,     0}; // still large enough to be drawn rounded
static constexpr Scene crossing = {5, 0.2, true, 81, 1, 0};
static constexpr Scene rounded = {1, 0.9, true, 81, 1, 0};
static constexpr Scene plain = {1, 0.45, true, 9, 1, 0}; // too finely cut to be drawn rounded
static constexpr Scene together = {5, 0.1, true, 9, 0.02, 0.125};

static void Place(Shape* shape, int k, const Scene& scene)
{
    SetCenterPointOfShape(shape);
    SetRadiusOfShape(shape);
    const double turn = 2.4 * k;
    const double middle = (scene.across - 1) / 2.0;
    const double column = scene.spread * (k % scene.across - middle) / scene.across;
    const double row = scene.up + scene.spread * (k / scene.across - middle) / scene.across;
    for (int i = 0; i < shape->pointnumber; i++) {
        float* point = shape->points[i];
        double from[3];
        for (int j = 0; j < 3; j++) {
            from[j] = (double(point[j]) - shape->center[j]) * scene.radius / shape->radius;
        }
        point[0] = float(from[0] + 1.1 * column);
        point[1] = float(std::cos(turn) * from[1] - std::sin(turn) * from[2] + row);
        point[2] =
            float(std::sin(turn) * from[1] + std::cos(turn) * from[2] + 0.1 * (k * 7 % 11 - 5));
    }
}

static void PaintSide(Side& side, double share, bool clear)
{
    for (const int set : {int(FRONT_LIGHT), int(BACK_LIGHT)}) {
        float* colors = side.colors + set;
        colors[0] = float(share);
        colors[2] = float(1 - share);
        colors[3] = clear ? 0.5F : 1;
    }
}

static void Paint(Shape* shape, int k, const Scene& scene)
{
    for (int i = 0; i < shape->sidenumber; i++) {
        const int stripe = 8 * i / shape->sidenumber % 4;
        if (scene.striped) {
            PaintSide(shape->sides[i], stripe / 3.0, stripe == 0);
        } else {
            PaintSide(shape->sides[i], double(k) / (scene.across * scene.across), k % 4 == 0);
        }
    }
}

static void SetScene(const Scene& scene, int collected)
{
    const int torusnumber = scene.across * scene.across;
    DeleteAllShapes();
    for (int k = 0; k < torusnumber; k++) {
        OwnedShape torus = MakeTriangleTorus(collected / torusnumber / scene.collectedfromone);
        Place(torus.get(), k, scene);
        Paint(torus.get(), k, scene);
        SetNormalsOfShape(torus.get());
        AddShape(torus.release());
        selected[k] = selectedfade;
    }
    SetActives();
    RefreshView();
}

// Milliseconds that the processor has worked for the program.
static double GetTime()
{
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return 1e3 * double(time.tv_sec) + 1e-6 * double(time.tv_nsec);
}

// In percent; all of them when the last step has destroyed the bar.
static double GetProgress()
{
    return ciprogress == nullptr
               ? 100
               : 100 * gtk_progress_bar_get_fraction(GTK_PROGRESS_BAR(ciprogress));
}

// Counters, in milliseconds: the sorting, the longest step of compiling with what goes before it,
// and the longest of all other steps. The bar tells them apart.
static void CreateOneImage(::benchmark::State& state, const Scene& scene)
{
    SetScene(scene, int(state.range(0)));
    double sort = 0;
    double compile = 0;
    double other = 0;
    for (auto _ : state) {
        ciprogress = gtk_progress_bar_new();
        g_object_ref_sink(ciprogress);
        cisign = 1;
        while (cisign != 0) {
            const double start = GetTime();
            CreateImageProgress();
            const double time = GetTime() - start;
            const double progress = GetProgress();
            double& longest = progress < 32.9 || progress > 40.1 ? other
                              : progress < 33.1                  ? sort
                                                                 : compile;
            longest = std::max(longest, time);
        }
        FreeImage();
    }
    state.counters["sort"] = sort;
    state.counters["compile step"] = compile;
    state.counters["other step"] = other;
}

static void DrawPlainly(::benchmark::State& state, const Scene& scene, testing::LightStates states)
{
    SetScene(scene, int(state.range(0)));
    std::size_t number = 0;
    for (auto _ : state) {
        const auto triangles = testing::CollectTriangles();
        number = triangles.size();
        ::benchmark::DoNotOptimize(testing::DrawPlainly(triangles, states));
    }
    state.counters["triangles"] = double(number);
}

static void PlainMethod(::benchmark::State& state, const Scene& scene)
{
    DrawPlainly(state, scene, testing::LIGHT_PERTRIANGLE);
}

static void PlainMethodInOneLight(::benchmark::State& state, const Scene& scene)
{
    DrawPlainly(state, scene, testing::LIGHT_ONCE);
}

static void SetUp(::benchmark::internal::Benchmark* measured)
{
    measured->Arg(50000)->Arg(500000)->Iterations(1)->Unit(::benchmark::kMillisecond);
    measured->MeasureProcessCPUTime()->UseRealTime();
}

BENCHMARK_CAPTURE(CreateOneImage, apart, apart)->Apply(SetUp);
BENCHMARK_CAPTURE(PlainMethodInOneLight, apart, apart)->Apply(SetUp);
BENCHMARK_CAPTURE(PlainMethod, apart, apart)->Apply(SetUp);
BENCHMARK_CAPTURE(CreateOneImage, crossing, crossing)->Apply(SetUp);
BENCHMARK_CAPTURE(PlainMethodInOneLight, crossing, crossing)->Apply(SetUp);
BENCHMARK_CAPTURE(PlainMethod, crossing, crossing)->Apply(SetUp);
BENCHMARK_CAPTURE(CreateOneImage, rounded, rounded)->Apply(SetUp);
BENCHMARK_CAPTURE(PlainMethodInOneLight, rounded, rounded)->Apply(SetUp);
BENCHMARK_CAPTURE(CreateOneImage, plain, plain)->Apply(SetUp);
BENCHMARK_CAPTURE(PlainMethodInOneLight, plain, plain)->Apply(SetUp);
BENCHMARK_CAPTURE(CreateOneImage, together, together)->Apply(SetUp);
BENCHMARK_CAPTURE(PlainMethodInOneLight, together, together)->Apply(SetUp);

} // namespace korvane::bench

int main(int argc, char** argv)
{
    return korvane::bench::RunInWindow(argc, argv);
}
