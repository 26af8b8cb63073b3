// The projection: points on their way to the screen beside four plain passes over the same array,
// and a whole scene of tori with its rounded copies.
#include "bench/meshes.h"

#include "geometry/rounding.h"
#include "geometry/shapegeometry.h"
#include "geometry/stripes.h"
#include "scene/model.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

namespace korvane
{

struct Point {
    float xyz[3];
};

static std::vector<Point> MakeCloud(std::size_t number)
{
    std::vector<Point> cloud(number);
    for (std::size_t i = 0; i < number; i++) {
        const double a = 0.7 * double(i);
        cloud[i] = {float(std::sin(a)), float(std::cos(1.3 * a)), float(0.4 * std::sin(2.1 * a))};
    }
    return cloud;
}

// A turned, moved, zoomed view in full perspective, in which every point keeps its range.
static MainView MakeTurnedView()
{
    MainView view = mainview;
    const float to[3] = {0.6F, 0.0F, 0.8F};
    const float from[3] = {0.0F, 0.0F, 1.0F};
    VectorRotateExact(reinterpret_cast<float(*)[3]>(view.rotation), from, to);
    view.center[0] = 0.1F;
    view.center[1] = -0.2F;
    view.scale = 0.7F;
    view.perspective = fadedone;
    return view;
}

static void ProjectInFourPasses(const MainView& view, float (*points)[3], int32_t n)
{
    for (int32_t i = 0; i < n; i++) {
        for (int k = 0; k < 3; k++) {
            points[i][k] -= view.center[k];
        }
    }
    for (int32_t i = 0; i < n; i++) {
        for (int k = 0; k < 3; k++) {
            points[i][k] *= view.scale;
        }
    }
    const float* r = view.rotation;
    for (int32_t i = 0; i < n; i++) {
        const float x = points[i][0], y = points[i][1], z = points[i][2];
        points[i][0] = x * r[0] + y * r[3] + z * r[6];
        points[i][1] = x * r[1] + y * r[4] + z * r[7];
        points[i][2] = x * r[2] + y * r[5] + z * r[8];
    }
    const float d = 1.5F / GetCosRate(view.perspective);
    for (int32_t i = 0; i < n; i++) {
        const float z = points[i][2];
        if (z > -(d - 0.01F) && z < d - 0.01F) {
            points[i][0] *= d / (d - z);
            points[i][1] *= d / (d - z);
        }
    }
}

static void CountPoints(benchmark::State& state)
{
    state.counters["ns/point"] = benchmark::Counter(double(state.range(0)) * 1e-9,
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}

// Both start each time from the same points: projected again and again they would leave the range.
static void FourPlainPasses(benchmark::State& state)
{
    const std::vector<Point> cloud = MakeCloud(std::size_t(state.range(0)));
    std::vector<Point> points = cloud;
    const MainView view = MakeTurnedView();
    for (auto _ : state) {
        state.PauseTiming();
        points = cloud;
        state.ResumeTiming();
        ProjectInFourPasses(view, &points[0].xyz + 0, int32_t(points.size()));
        benchmark::ClobberMemory();
    }
    CountPoints(state);
}
BENCHMARK(FourPlainPasses)->RangeMultiplier(10)->Range(10000, 1000000);

static void ProjectPoints(benchmark::State& state)
{
    const std::vector<Point> cloud = MakeCloud(std::size_t(state.range(0)));
    std::vector<Point> points = cloud;
    const MainView view = MakeTurnedView();
    for (auto _ : state) {
        state.PauseTiming();
        points = cloud;
        state.ResumeTiming();
        TransferPoints(&view, &points[0].xyz + 0, int32_t(points.size()));
        benchmark::ClobberMemory();
    }
    CountPoints(state);
}
BENCHMARK(ProjectPoints)->RangeMultiplier(10)->Range(10000, 1000000);

} // namespace korvane
