// Finding the element under the pointer, at the places of a grid over the whole view, beside a
// plain loop that tests every element in order; and the refresh of a frame that shows the
// background cube.
#include "bench/meshes.h"
#include "geometry/shapegeometry.h"
#include "geometry/stripes.h"
#include "tests/support/plainsearch.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <random>
#include <vector>

namespace korvane::bench
{

enum Layout { ONE_TORUS, SHUFFLED_TORUS, HUNDRED_TORI }; // the tori of a hundred cover each other

constexpr int placesperrow = 20;

// Numbers the points and the sides of a shape at random.
static void Shuffle(Shape* shape)
{
    std::mt19937 random(1);
    std::vector<int> place(std::size_t(shape->pointnumber));
    std::iota(place.begin(), place.end(), 0);
    std::shuffle(place.begin(), place.end(), random);
    const OwnedShape before(CopyShape(shape));
    for (std::size_t i = 0; i < place.size(); i++) {
        std::copy_n(before->points[i], 3, shape->points[place[i]]);
    }
    const auto renumber = [&](int& point) { point = place[std::size_t(point)]; };
    for (int i = 0; i < shape->sidenumber; i++) {
        std::for_each_n(shape->sides[i].points, shape->sides[i].pointnumber, renumber);
    }
    for (int i = 0; i < shape->trianglenumber; i++) {
        std::for_each_n(shape->triangles[i].points, 3, renumber);
    }
    std::shuffle(shape->sides, shape->sides + shape->sidenumber, random);
}

// In rectangles: n triangles have n / 2 points, n stripes and n / 2 sides.
static void AddTorus(int elements, bool shuffled)
{
    OwnedShape torus = MakeQuadTorus(elements / 2);
    if (shuffled) {
        Shuffle(torus.get());
    }
    SetStripesOfShape(torus.get());
    SetNormalsOfShape(torus.get());
    AddShape(torus.release());
}

// The whole scene is projected and can be picked, however small its triangles are on the screen. It
// is kept from one benchmark to the next.
static void MakeScene(int elements, int layout)
{
    static std::array<int, 2> current = {};
    if (current == std::array{elements, layout}) {
        return;
    }
    current = {elements, layout};
    DeleteAllShapes();
    const int number = layout == HUNDRED_TORI ? 100 : 1;
    for (int i = 0; i < number; i++) {
        AddTorus(elements / number, layout == SHUFFLED_TORUS);
    }
    width = height = 800;
    cisign = 1;
    TransferAllShape();
    cisign = 0;
    std::fill_n(showtable, shapenumber, int(SHOW_ROUNDED));
    SetActives();
}

static void MoveMouse(int place)
{
    mouse[0] = (float(place % placesperrow) + 0.5F) / placesperrow - 0.5F;
    mouse[1] = (float(place / placesperrow % placesperrow) + 0.5F) / placesperrow - 0.5F;
    mouse[2] = 0;
}

// One different answer makes every figure worthless.
static void CheckAnswers()
{
    for (int place = 0; place < placesperrow * placesperrow; place++) {
        MoveMouse(place);
        const testing::PlainSearch plain = testing::SearchPlainly();
        SearchActive();
        if (activepointer != plain.found ||
            (plain.found != nullptr && mouse[2] != plain.place[2])) {
            std::printf("the answers differ at place %d\n", place);
            std::exit(1);
        }
    }
}

static void SearchInPlainLoop()
{
    ::benchmark::DoNotOptimize(testing::SearchPlainly());
}

static void SearchAfterProjection()
{
    for (int i = 0; i < shapenumber; i++) {
        ForgetScreenBoxes(i);
    }
    SearchActive();
}

static void Search(::benchmark::State& state, void (*search)())
{
    MakeScene(int(state.range(0)), int(state.range(1)));
    CheckAnswers();
    int place = 0;
    for (auto _ : state) {
        MoveMouse(place);
        place += 7; // has no divisor in common with their number: all are visited
        search();
    }
    state.counters["elements"] = activepointnumber + activestripenumber + activesidenumber;
}

static void AddScenes(::benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgsProduct({{100000, 1000000}, {ONE_TORUS, SHUFFLED_TORUS, HUNDRED_TORI}})
        ->Unit(::benchmark::kMicrosecond);
}
BENCHMARK_CAPTURE(Search, plain_loop, SearchInPlainLoop)->Apply(AddScenes);
BENCHMARK_CAPTURE(Search, SearchActive, SearchActive)->Apply(AddScenes);
BENCHMARK_CAPTURE(Search, SearchActive_first_after_projection, SearchAfterProjection)
    ->Apply(AddScenes);

static void RefreshWithCube(::benchmark::State& state)
{
    MakeScene(4 * int(state.range(0)), ONE_TORUS); // every fourth element is a point
    const MainView startview = mainview;
    mainview.scale = 20; // large enough to be drawn rounded
    float corners[24][3] = {};
    for (auto _ : state) {
        SetPerspective(corners, 24, fadefull);
    }
    mainview = startview;
    state.counters["points"] = activepointnumber;
}
BENCHMARK(RefreshWithCube)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(::benchmark::kMillisecond);

} // namespace korvane::bench
