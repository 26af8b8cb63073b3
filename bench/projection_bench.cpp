// The projection, which every camera move runs over the whole scene: points on their way to the
// screen beside four plain passes over the same array, and whole scenes with their rounded copies
// and normals.
#include "bench/meshes.h"
#include "geometry/rotation.h"
#include "geometry/shapegeometry.h"
#include "geometry/stripes.h"
#include "view/mainview.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <vector>

namespace korvane::bench
{

struct Point {
    float xyz[3];
};

static std::vector<Point> MakeCloud(std::size_t number)
{
    std::vector<Point> cloud(number);
    for (std::size_t i = 0; i < number; i++) {
        const double a = 0.7 * double(i);
        cloud[i] = {{float(std::sin(a)), float(std::cos(1.3 * a)), float(0.4 * std::sin(2.1 * a))}};
    }
    return cloud;
}

// Turned, moved, zoomed, in full perspective.
static void TurnView(MainView& view)
{
    const float from[3] = {0, 0, 1};
    const float to[3] = {0.36F, 0.48F, 0.8F};
    VectorRotateExact(reinterpret_cast<float(*)[3]>(view.rotation), from, to);
    view.center[0] = 0.1F;
    view.center[1] = -0.2F;
    view.scale = 0.7F;
    view.perspective = fadedone;
}

static void MovePoints(const MainView& view, float (*points)[3], int32_t n)
{
    for (int32_t i = 0; i < n; i++) {
        for (int k = 0; k < 3; k++) {
            points[i][k] = float(double(points[i][k]) - double(view.center[k]));
        }
    }
}

static void ScalePoints(const MainView& view, float (*points)[3], int32_t n)
{
    for (int32_t i = 0; i < n; i++) {
        for (int k = 0; k < 3; k++) {
            points[i][k] = float(double(points[i][k]) * double(view.scale));
        }
    }
}

static void TurnPoints(const MainView& view, float (*points)[3], int32_t n)
{
    double r[9];
    std::copy(view.rotation, view.rotation + 9, r);
    for (int32_t i = 0; i < n; i++) {
        const double x = double(points[i][0]), y = double(points[i][1]), z = double(points[i][2]);
        for (int k = 0; k < 3; k++) {
            points[i][k] = float(x * r[k] + y * r[3 + k] + z * r[6 + k]);
        }
    }
}

static void DrawPointsTogether(const MainView& view, float (*points)[3], int32_t n)
{
    const double d = 1.5 / double(GetCosRate(view.perspective));
    for (int32_t i = 0; i < n; i++) {
        const double z = double(points[i][2]);
        if (z > -(d - 0.01) && z < d - 0.01) {
            const double f = d / (d - z);
            points[i][0] = float(double(points[i][0]) * f);
            points[i][1] = float(double(points[i][1]) * f);
        }
    }
}

static void ProjectInFourPasses(const MainView* view, float points[][3], int32_t n)
{
    MovePoints(*view, points, n);
    ScalePoints(*view, points, n);
    TurnPoints(*view, points, n);
    DrawPointsTogether(*view, points, n);
}

static void CountPoints(::benchmark::State& state, double points)
{
    state.counters["s/point"] = ::benchmark::Counter(
        points, ::benchmark::Counter::kIsIterationInvariantRate | ::benchmark::Counter::kInvert);
}

// Starts each time from the same points: projected again and again they would leave the range.
static void ProjectCloud(::benchmark::State& state,
                         void (*project)(const MainView*, float[][3], int32_t))
{
    const std::vector<Point> cloud = MakeCloud(std::size_t(state.range(0)));
    std::vector<Point> points = cloud;
    MainView view = mainview;
    TurnView(view);
    for (auto _ : state) {
        state.PauseTiming();
        points = cloud;
        state.ResumeTiming();
        project(&view, &points[0].xyz, int32_t(points.size()));
        ::benchmark::ClobberMemory();
    }
    CountPoints(state, double(points.size()));
}
BENCHMARK_CAPTURE(ProjectCloud, four_plain_passes, ProjectInFourPasses)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000);
BENCHMARK_CAPTURE(ProjectCloud, TransferPoints, TransferPoints)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000);

// A number of tori, all drawn rounded.
static void ProjectScene(::benchmark::State& state)
{
    DeleteAllShapes();
    double points = 0;
    for (int i = 0; i < state.range(0); i++) {
        OwnedShape torus = MakeQuadTorus(int(state.range(1)));
        SetStripesOfShape(torus.get());
        SetNormalsOfShape(torus.get());
        AddShape(torus.release());
        points += shapest[i]->pointnumber + round1t[i]->pointnumber;
    }
    const MainView startview = mainview;
    TurnView(mainview);
    mainview.scale = 10;
    cisign = 1; // so that nothing is culled
    for (auto _ : state) {
        TransferAllShape();
    }
    cisign = 0;
    mainview = startview;
    CountPoints(state, points);
    DeleteAllShapes();
}
BENCHMARK(ProjectScene)
    ->Args({1, 2000})
    ->Args({1, 20000})
    ->Args({1, 200000})
    ->Args({10000, 20})
    ->Unit(::benchmark::kMillisecond);

} // namespace korvane::bench
