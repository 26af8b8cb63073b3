// One step of dragging a point, and its stages, over growing shapes in a scene of a thousand small
// ones. What a step costs must grow with the dragged shape alone; the records of the active
// elements, which are those of the whole scene, are the only stage that the other shapes touch.
#include "geometry/editing.h"

#include "bench/meshes.h"
#include "geometry/normals.h"
#include "geometry/pointremoval.h"
#include "geometry/sidemerge.h"
#include "geometry/surgery.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/scenefile.h"
#include "scene/scenereader.h"
#include "scene/treeview.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <benchmark/benchmark.h>

namespace korvane::bench
{

static constexpr int point = 0; // the one that is dragged, of the first shape

static void AppendShape(Shape* shape)
{
    AddShape(shape);
    AppendTreeIter(0, NODE_SHAPE, shapenumber - 1, CopyText("s"));
}

// A torus of about that many triangles, two in a side, and behind it a thousand small shapes.
static void MakeScene(const ::benchmark::State& state)
{
    constexpr int others = 1000;
    if (store == nullptr) {
        KeepFreedMemory();
        MakeTree();
    }
    NewMrt();
    Shape* torus = MakeQuadTorus(int(state.range(0))).release();
    DeriveLoadedShape(torus);
    AppendShape(torus);
    const OwnedShape small = MakeTriangleTorus(18);
    DeriveLoadedShape(small.get());
    for (int i = 0; i < others; i++) {
        AppendShape(CopyShape(small.get()));
    }
    SortAndShowTree();
    RefreshView();
    SetActives();
}

static void CountTriangles(::benchmark::State& state)
{
    state.counters["s/triangle"] = ::benchmark::Counter(
        double(shapes[0]->trianglenumber),
        ::benchmark::Counter::kIsIterationInvariantRate | ::benchmark::Counter::kInvert);
}

static void DragStep(::benchmark::State& state)
{
    MakeScene(state);
    float x = 0.5F;
    for (auto _ : state) {
        PointMove(point, x, 0.1F, 0);
        x = 1.01F - x;
    }
    CountTriangles(state);
}

static void CutSidesOfPoint(::benchmark::State& state)
{
    MakeScene(state);
    const float places[2][3] = {{1.2F, 0.1F, 0}, {1.3F, 0.1F, 0}};
    int next = 0;
    for (auto _ : state) {
        MovePoint(shapes[0], point, places[next]);
        next = 1 - next;
    }
    CountTriangles(state);
}

static void MakeNormals(::benchmark::State& state)
{
    MakeScene(state);
    for (auto _ : state) {
        SetNormalsOfShape(shapes[0]);
    }
    CountTriangles(state);
}

static void Smooth(::benchmark::State& state)
{
    MakeScene(state);
    for (auto _ : state) {
        ChangeShape(0);
    }
    CountTriangles(state);
}

static void Project(::benchmark::State& state)
{
    MakeScene(state);
    for (auto _ : state) {
        TransferOneShape(0);
    }
    CountTriangles(state);
}

static void MakeRecords(::benchmark::State& state)
{
    MakeScene(state);
    for (auto _ : state) {
        SetActives();
    }
    CountTriangles(state);
}

// The removals work on a copy, as they do in the program; the copy is measured too.
template <bool (*edit)(Shape*)> static void EditCopy(::benchmark::State& state)
{
    MakeScene(state);
    for (auto _ : state) {
        const OwnedShape copy(CopyShape(shapes[0]));
        benchmark::DoNotOptimize(edit(copy.get()));
    }
    CountTriangles(state);
}

static bool Leave(Shape*)
{
    return true;
}

static bool DissolveOne(Shape* shape)
{
    return DissolveStripe(shape, shape->stripenumber / 2);
}

static bool RemoveCorner(Shape* shape)
{
    return RemovePointOfShape(shape, shape->pointnumber / 2);
}

static void Sizes(::benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(1000)->Arg(10000)->Arg(100000)->Unit(::benchmark::kMillisecond);
}

BENCHMARK(DragStep)->Apply(Sizes);
BENCHMARK(CutSidesOfPoint)->Apply(Sizes);
BENCHMARK(MakeNormals)->Apply(Sizes);
BENCHMARK(Smooth)->Apply(Sizes);
BENCHMARK(Project)->Apply(Sizes);
BENCHMARK(MakeRecords)->Apply(Sizes);
BENCHMARK(EditCopy<Leave>)->Apply(Sizes);
BENCHMARK(EditCopy<DissolveOne>)->Apply(Sizes);
BENCHMARK(EditCopy<RemoveCorner>)->Apply(Sizes);

} // namespace korvane::bench
