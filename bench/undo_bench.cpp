// Saving and restoring for undo, over scenes of growing numbers of small shapes in ten folders.
// What a whole scene costs must grow with its shapes alone. The peers do what cannot be left out:
// copying every shape, and adding a copy of every shape to the scene, without nodes or rows.
#include "scene/undo.h"

#include "bench/meshes.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/scenefile.h"
#include "scene/scenereader.h"
#include "scene/treeview.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace korvane::bench
{

static void MakeScene(int number)
{
    if (store == nullptr) {
        KeepFreedMemory();
        MakeTree();
    }
    NewMrt();
    constexpr int folders = 10;
    for (int i = 0; i < folders; i++) {
        AppendTreeIter(0, NODE_FOLDER, -1, CopyText(std::to_string(i)));
    }
    const OwnedShape shape = MakeTriangleTorus(18);
    DeriveLoadedShape(shape.get());
    for (int i = 0; i < number; i++) {
        AddShape(CopyShape(shape.get()));
        AppendTreeIter(1 + i % folders, NODE_SHAPE, i, CopyText("s" + std::to_string(i)));
    }
    SortAndShowTree();
    SetActives();
    RefreshView();
}

static void CountShapes(::benchmark::State& state)
{
    state.counters["s/shape"] = ::benchmark::Counter(
        double(state.range(0)),
        ::benchmark::Counter::kIsIterationInvariantRate | ::benchmark::Counter::kInvert);
}

static void SaveAndFree(::benchmark::State& state)
{
    MakeScene(int(state.range(0)));
    for (auto _ : state) {
        PushScene();
        DelPuffer();
    }
    CountShapes(state);
}

static void CopyAndFree(::benchmark::State& state)
{
    MakeScene(int(state.range(0)));
    std::vector<OwnedShape> copies;
    for (auto _ : state) {
        for (int i = 0; i < shapenumber; i++) {
            copies.emplace_back(CopyShape(shapes[i]));
        }
        copies.clear();
    }
    CountShapes(state);
}

static void Restore(::benchmark::State& state)
{
    MakeScene(int(state.range(0)));
    PushScene();
    for (auto _ : state) {
        RestoreRecord(puffer[0]);
    }
    CountShapes(state);
}

static void RemoveAndAdd(::benchmark::State& state)
{
    MakeScene(int(state.range(0)));
    PushScene();
    const UndoRecord& record = puffer[0];
    for (auto _ : state) {
        DeleteAllShapes();
        for (int i = 0; i < record.shapenumber; i++) {
            AddShape(CopyShape(record.shapes[i]));
        }
    }
    CountShapes(state);
    DelScene();
}

// One shape of a scene: what grows is the rebuilding of the active elements.
static void UndoOneShape(::benchmark::State& state)
{
    MakeScene(int(state.range(0)));
    PushShape(0);
    for (auto _ : state) {
        PopUndo();
        PopRedo();
    }
    CountShapes(state);
}

static void Sizes(::benchmark::internal::Benchmark* benchmark)
{
    benchmark->RangeMultiplier(10)->Range(100, 10000)->Unit(::benchmark::kMillisecond);
}

BENCHMARK(SaveAndFree)->Apply(Sizes);
BENCHMARK(CopyAndFree)->Apply(Sizes);
BENCHMARK(Restore)->Apply(Sizes);
BENCHMARK(RemoveAndAdd)->Apply(Sizes);
BENCHMARK(UndoOneShape)->Apply(Sizes);

} // namespace korvane::bench
