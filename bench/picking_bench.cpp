// Finding the element under the pointer, at the places of a grid over the whole view, among the
// elements of one torus or of a hundred that cover each other: beside a plain loop over every
// element, and anew after each projection.
#include "bench/meshes.h"
#include "geometry/shapegeometry.h"
#include "geometry/stripes.h"
#include "tests/support/plainsearch.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <random>
#include <algorithm>
#include <array>
#include <vector>
#include <cstdlib>

namespace korvane::bench
{

constexpr int placesperrow = 20;

static int currentelements =
    0; // of the scene that stands; it is kept from one benchmark to the next
static int currentshapes = 0;

// A torus of n triangles in rectangles has n / 2 points, n stripes and n / 2 sides.
static void AddTorus(int elements)
{
    OwnedShape torus = MakeQuadTorus(elements / 2);
    if (getenv("SHUF")) {
        std::mt19937 g(1);
        Shape* t = torus.get();
        std::vector<int> perm(t->pointnumber);
        for (int i = 0; i < t->pointnumber; i++)
            perm[i] = i;
        std::shuffle(perm.begin(), perm.end(), g);
        std::vector<std::array<float, 3>> np(t->pointnumber);
        for (int i = 0; i < t->pointnumber; i++)
            std::copy_n(t->points[i], 3, np[perm[i]].data());
        for (int i = 0; i < t->pointnumber; i++)
            std::copy_n(np[i].data(), 3, t->points[i]);
        for (int i = 0; i < t->sidenumber; i++)
            for (int k = 0; k < t->sides[i].pointnumber; k++)
                t->sides[i].points[k] = perm[t->sides[i].points[k]];
        for (int i = 0; i < t->trianglenumber; i++)
            for (int k = 0; k < 3; k++)
                t->triangles[i].points[k] = perm[t->triangles[i].points[k]];
        std::shuffle(t->sides, t->sides + t->sidenumber, g);
    }
    SetStripesOfShape(torus.get());
    SetNormalsOfShape(torus.get());
    AddShape(torus.release());
}

// All of it is projected and can be picked, however small its triangles are on the screen.
static void MakeScene(int elements, int number)
{
    if (currentelements == elements && currentshapes == number) {
        return;
    }
    DeleteAllShapes();
    for (int i = 0; i < number; i++) {
        AddTorus(elements / number);
    }
    const float from[3] = {0, 0, 1};
    const float to[3] = {0.36F, 0.48F, 0.8F};
    VectorRotateExact(reinterpret_cast<float(*)[3]>(mainview.rotation), from, to);
    width = height = 800;
    cisign = 1;
    TransferAllShape();
    cisign = 0;
    std::fill_n(showtable, shapenumber, int(SHOW_ROUNDED));
    SetActives();
    currentelements = elements;
    currentshapes = number;
}

static void MoveMouse(int place)
{
    mouse[0] = -0.5F + float(place % placesperrow + 0.5) / placesperrow;
    mouse[1] = -0.5F + float(place / placesperrow % placesperrow + 0.5) / placesperrow;
    mouse[2] = 0;
}

// A difference makes every figure worthless.
static void CheckAnswers()
{
    for (int place = 0; place < placesperrow * placesperrow; place++) {
        MoveMouse(place);
        const testing::PlainSearch plain = testing::SearchPlainly();
        SearchActive();
        if (activepointer != plain.found ||
            (plain.found != nullptr && mouse[2] != plain.place[2])) {
            std::printf("place %d: the answers differ\n", place);
            std::exit(1);
        }
    }
}

static void CountElements(::benchmark::State& state)
{
    state.counters["elements"] = activepointnumber + activestripenumber + activesidenumber;
}

static void SearchPlainLoop(::benchmark::State& state)
{
    MakeScene(int(state.range(0)), int(state.range(1)));
    CheckAnswers();
    int place = 0;
    for (auto _ : state) {
        MoveMouse(place++ * 7);
        ::benchmark::DoNotOptimize(testing::SearchPlainly());
    }
    CountElements(state);
}
BENCHMARK(SearchPlainLoop)
    ->ArgsProduct({{100000, 1000000}, {1, 100}})
    ->Unit(::benchmark::kMicrosecond);

static void SearchUnderPointer(::benchmark::State& state)
{
    MakeScene(int(state.range(0)), int(state.range(1)));
    int place = 0;
    for (auto _ : state) {
        MoveMouse(place++ * 7);
        SearchActive();
    }
    CountElements(state);
}
BENCHMARK(SearchUnderPointer)
    ->ArgsProduct({{100000, 1000000}, {1, 100}})
    ->Unit(::benchmark::kMicrosecond);

static void SearchAfterProjection(::benchmark::State& state)
{
    MakeScene(int(state.range(0)), int(state.range(1)));
    int place = 0;
    for (auto _ : state) {
        MoveMouse(place++ * 7);
        for (int i = 0; i < shapenumber; i++) {
            ForgetScreenBoxes(i);
        }
        SearchActive();
    }
    CountElements(state);
}
BENCHMARK(SearchAfterProjection)
    ->ArgsProduct({{100000, 1000000}, {1, 100}})
    ->Unit(::benchmark::kMicrosecond);

} // namespace korvane::bench
