// Cutting one side into triangles, beside the tessellator of the OpenGL utility library.
#include "bench/meshes.h"
#include "geometry/triangulation.h"

#include <benchmark/benchmark.h>

#ifdef KORVANE_HAVE_GLU
#include <GL/glu.h>
#endif

#include <vector>

namespace korvane::bench
{

static void CountCorners(benchmark::State& state)
{
    state.counters["s/corner"] =
        benchmark::Counter(double(state.range(0)), benchmark::Counter::kIsIterationInvariantRate |
                                                       benchmark::Counter::kInvert);
}

static void Sizes(benchmark::internal::Benchmark* benchmark)
{
    for (int corners : {4, 8, 32, 128, 1024, 8192}) {
        benchmark->Arg(corners);
    }
}

static void MeasureCutting(benchmark::State& state, Shape* shape)
{
    for (auto _ : state) {
        SetTrianglesOfSide(&shape->sides[0], 0);
        benchmark::DoNotOptimize(shape->triangles[0].points[0]);
    }
    CountCorners(state);
}

static void ConvexSide(benchmark::State& state)
{
    const OwnedShape shape = MakeConvexPolygon(int(state.range(0)));
    MeasureCutting(state, shape.get());
}
BENCHMARK(ConvexSide)->Apply(Sizes);

static void StarSide(benchmark::State& state)
{
    const OwnedShape shape = MakeStarPolygon(int(state.range(0)));
    MeasureCutting(state, shape.get());
}
BENCHMARK(StarSide)->Apply(Sizes);

#ifdef KORVANE_HAVE_GLU

struct PeerTriangles {
    std::vector<int> corners;
};

static void TakeVertex(void* vertex, void* triangles)
{
    static_cast<PeerTriangles*>(triangles)->corners.push_back(*static_cast<int*>(vertex));
}

// With an edge-flag callback the tessellator gives single triangles, never strips or fans.
static void TakeEdgeFlag(GLboolean)
{
}

static void MeasurePeer(benchmark::State& state, Shape* shape)
{
    const Side& side = shape->sides[0];
    std::vector<GLdouble> points(std::size_t(side.pointnumber) * 3);
    for (std::size_t i = 0; i < points.size(); i++) {
        points[i] = shape->points[i / 3][i % 3];
    }
    PeerTriangles triangles;
    GLUtesselator* tessellator = gluNewTess();
    gluTessCallback(tessellator, GLU_TESS_VERTEX_DATA, reinterpret_cast<_GLUfuncptr>(TakeVertex));
    gluTessCallback(tessellator, GLU_TESS_EDGE_FLAG, reinterpret_cast<_GLUfuncptr>(TakeEdgeFlag));
    for (auto _ : state) {
        triangles.corners.clear();
        gluTessBeginPolygon(tessellator, &triangles);
        gluTessBeginContour(tessellator);
        for (int i = 0; i < side.pointnumber; i++) {
            gluTessVertex(tessellator, &points[std::size_t(i) * 3], &side.points[i]);
        }
        gluTessEndContour(tessellator);
        gluTessEndPolygon(tessellator);
    }
    gluDeleteTess(tessellator);
    if (int(triangles.corners.size()) != side.trianglenumber * 3) {
        state.SkipWithError("the peer cut another number of triangles");
    }
    CountCorners(state);
}

static void PeerConvexSide(benchmark::State& state)
{
    const OwnedShape shape = MakeConvexPolygon(int(state.range(0)));
    MeasurePeer(state, shape.get());
}
BENCHMARK(PeerConvexSide)->Apply(Sizes);

static void PeerStarSide(benchmark::State& state)
{
    const OwnedShape shape = MakeStarPolygon(int(state.range(0)));
    MeasurePeer(state, shape.get());
}
BENCHMARK(PeerStarSide)->Apply(Sizes);

#endif

} // namespace korvane::bench
