// The camera under the hand: every step of a drag turns the view, projects the whole scene and
// finds the element under the pointer; a zoom does the same. And the preparation of a flight, which
// must not be felt at the click that starts it.
#include "bench/meshes.h"

#include "geometry/shapegeometry.h"
#include "geometry/stripes.h"
#include "scene/model.h"
#include "view/cameraflight.h"
#include "view/mainview.h"
#include "view/navigation.h"
#include "view/picking.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace korvane
{

// A cube of tori of 72 triangles side by side, which the view is zoomed to hold. Every one is drawn
// rounded while there are no more than a few thousand: then all of it is projected.
static void MakeScene(int number)
{
    DeleteAllShapes();
    mainview.scale = 1;
    width = 600;
    height = 600;
    const int row = int(std::ceil(std::cbrt(number)));
    for (int i = 0; i < number; i++) {
        Shape* shape = bench::MakeQuadTorus(72).release();
        for (int k = 0; k < shape->pointnumber; k++) {
            shape->points[k][0] += float(4 * (i % row) - 2 * row);
            shape->points[k][1] += float(4 * (i / row % row) - 2 * row);
            shape->points[k][2] += float(4 * (i / row / row) - 2 * row);
        }
        SetStripesOfShape(shape);
        SetNormalsOfShape(shape);
        AddShape(shape);
    }
    mainview.scale = float(0.3 / (2 * row));
    TransferAllShape();
    SetActives();
}

static void CountShapes(benchmark::State& state)
{
    state.counters["us/shape"] = benchmark::Counter(double(state.range(0)) * 1e-6,
                                                    benchmark::Counter::kIsIterationInvariantRate |
                                                        benchmark::Counter::kInvert);
}

static void DragToTurn(benchmark::State& state)
{
    MakeScene(int(state.range(0)));
    bool back = false;
    for (auto _ : state) {
        if (back) {
            MouseRotate(0.02F, 0.01F, 0, 0);
        } else {
            MouseRotate(0, 0, 0.02F, 0.01F);
        }
        back = !back;
    }
    CountShapes(state);
    DeleteAllShapes();
}
BENCHMARK(DragToTurn)->RangeMultiplier(10)->Range(10, 1000)->Unit(benchmark::kMillisecond);

static void Zoom(benchmark::State& state)
{
    MakeScene(int(state.range(0)));
    bool in = true;
    for (auto _ : state) {
        ChangeScale(in);
        in = !in;
    }
    CountShapes(state);
    DeleteAllShapes();
}
BENCHMARK(Zoom)->RangeMultiplier(10)->Range(10, 1000)->Unit(benchmark::kMillisecond);

static void PrepareFlight(benchmark::State& state)
{
    for (auto _ : state) {
        SetStart();
        benchmark::ClobberMemory();
    }
}
BENCHMARK(PrepareFlight)->Unit(benchmark::kMicrosecond);

} // namespace korvane
