// The camera under the hand: every step of a drag turns the view, projects the whole scene and
// finds the element under the pointer. And the preparation of a flight, which must not be felt at
// the click that starts it.
#include "bench/meshes.h"

#include "geometry/shapegeometry.h"
#include "geometry/stripes.h"
#include "scene/model.h"
#include "view/cameraflight.h"
#include "view/mainview.h"
#include "view/navigation.h"
#include "view/picking.h"

#include <benchmark/benchmark.h>

#include <algorithm>

namespace korvane
{

// Rows, layers and a cube of ten tori each way that fill the view. Each is large enough on the
// screen, its radius squared over 18 triangles, to be drawn rounded: all of it is projected.
static void MakeScene(int number)
{
    constexpr int row = 10;
    constexpr float size = 0.125F; // makes the torus, of radius 0.4, a tenth of the view wide
    width = 600;
    height = 600;
    for (int i = 0; i < number; i++) {
        const int place[3] = {i % row, i / row % row, i / row / row};
        Shape* shape = bench::MakeTriangleTorus(18).release();
        for (int k = 0; k < shape->pointnumber; k++) {
            for (int c = 0; c < 3; c++) {
                shape->points[k][c] = shape->points[k][c] * size + 0.1F * float(place[c]) - 0.45F;
            }
        }
        SetStripesOfShape(shape);
        SetNormalsOfShape(shape);
        AddShape(shape);
    }
    TransferAllShape();
    SetActives();
}

static void CountShapes(benchmark::State& state)
{
    state.counters["rounded"] =
        double(std::count(showtable, showtable + shapenumber, SHOW_ROUNDED));
    state.counters["ns/shape"] = benchmark::Counter(double(state.range(0)) * 1e-9,
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

static void PrepareFlight(benchmark::State& state)
{
    for (auto _ : state) {
        SetStart();
        benchmark::ClobberMemory();
    }
}
BENCHMARK(PrepareFlight)->Unit(benchmark::kMicrosecond);

} // namespace korvane
