// A slider of the rotate dialog under the hand: every step turns all points and normals of a shape
// and of its rounded version in place, and projects the shape. Beside the whole step stand its
// stages.
#include "bench/meshes.h"

#include "geometry/shapegeometry.h"
#include "geometry/stripes.h"
#include "geometry/transforms.h"
#include "scene/model.h"
#include "ui/transform.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <benchmark/benchmark.h>

namespace korvane
{

// A torus of so many triangles when rounded, which makes nine of each. It is drawn rounded.
static void MakeScene(int roundedtriangles)
{
    DeleteAllShapes();
    width = 600;
    height = 600;
    mainview.scale = 4;
    mainview.action = ROTATE_SHAPE; // so that nothing can be picked
    Shape* shape = bench::MakeTriangleTorus(roundedtriangles / 9).release();
    SetStripesOfShape(shape);
    SetNormalsOfShape(shape);
    AddShape(shape);
    TransferAllShape();
    SetActives();
}

static void CountTriangles(benchmark::State& state)
{
    state.counters["triangles"] = showtable[0] == SHOW_ROUNDED ? round1[0]->trianglenumber : 0;
}

static void WholeStep(benchmark::State& state)
{
    MakeScene(int(state.range(0)));
    int axis = 0;
    for (auto _ : state) {
        ShapeRotate(0, 1.5, axis);
        axis = (axis + 1) % 3;
    }
    CountTriangles(state);
}
BENCHMARK(WholeStep)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

static void Projection(benchmark::State& state)
{
    MakeScene(int(state.range(0)));
    for (auto _ : state) {
        TransferOneShape(0);
    }
    CountTriangles(state);
}
BENCHMARK(Projection)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// Of both versions, as in a step.
template <void (*change)(const MainView*, float (*)[3], int)>
static void ChangePoints(benchmark::State& state)
{
    MakeScene(int(state.range(0)));
    for (auto _ : state) {
        for (const Shape* version : {shapes[0], round1[0]}) {
            change(&mainview, version->points, version->pointnumber);
        }
    }
}
BENCHMARK(ChangePoints<TransferPoints>)
    ->Name("PointsIntoTheView")
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ChangePoints<ReTransferPoints>)
    ->Name("PointsBack")
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);

template <void (*change)(const MainView*, float (*)[3], int)>
static void ChangeNormals(benchmark::State& state)
{
    MakeScene(int(state.range(0)));
    for (auto _ : state) {
        for (const Shape* version : {shapes[0], round1[0]}) {
            change(&mainview, version->normals, version->normalnumber);
        }
    }
}
BENCHMARK(ChangeNormals<Rotate>)
    ->Name("NormalsIntoTheView")
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ChangeNormals<ReRotate>)->Name("NormalsBack")->Arg(100000)->Unit(benchmark::kMillisecond);

// What a motion of the pointer costs while it drags the shape: the step, and what is under it.
static void MoveAndSearch(benchmark::State& state)
{
    MakeScene(int(state.range(0)));
    mouse[0] = 0;
    mouse[1] = 0;
    float step = 0.01F;
    for (auto _ : state) {
        ShapeMove(0, 0, 0, step, 0);
        step = -step;
        SearchActive();
    }
    CountTriangles(state);
}
BENCHMARK(MoveAndSearch)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace korvane
