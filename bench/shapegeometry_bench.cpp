// The normals and edges that every edit of a shape makes again, beside a half-edge mesh built from
// the same triangles with its vertex normals.
#include "bench/meshes.h"
#include "geometry/shapegeometry.h"
#include "geometry/stripes.h"
#include "scene/arrays.h"

#include <benchmark/benchmark.h>

#ifdef KORVANE_HAVE_OPENMESH
#include <OpenMesh/Core/Mesh/TriMesh_ArrayKernelT.hh>
#endif

#include <vector>

namespace korvane::bench
{

static void CountTriangles(benchmark::State& state, const Shape* shape)
{
    state.counters["s/triangle"] = benchmark::Counter(
        double(shape->trianglenumber),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

static void MeasureNormals(benchmark::State& state, Shape* shape)
{
    SetStripesOfShape(shape);
    for (auto _ : state) {
        SetNormalsOfShape(shape);
    }
    CountTriangles(state, shape);
}

static void SmoothTriangles(benchmark::State& state)
{
    const OwnedShape shape = MakeTriangleTorus(int(state.range(0)));
    MeasureNormals(state, shape.get());
}
BENCHMARK(SmoothTriangles)->RangeMultiplier(10)->Range(1000, 1000000);

static void SmoothRectangles(benchmark::State& state)
{
    const OwnedShape shape = MakeQuadTorus(int(state.range(0)));
    MeasureNormals(state, shape.get());
}
BENCHMARK(SmoothRectangles)->RangeMultiplier(10)->Range(1000, 1000000);

// Every point is a vertex, so every triangle corner has a normal of its own.
static void SharpRectangles(benchmark::State& state)
{
    const OwnedShape shape = MakeQuadTorus(int(state.range(0)));
    shape->vertexnumber = shape->pointnumber;
    shape->vertexes = NewArray<int>(shape->vertexnumber);
    for (int i = 0; i < shape->vertexnumber; i++) {
        shape->vertexes[i] = i;
    }
    MeasureNormals(state, shape.get());
}
BENCHMARK(SharpRectangles)->RangeMultiplier(10)->Range(1000, 1000000);

static void TriangleNormals(benchmark::State& state)
{
    const OwnedShape shape = MakeTriangleTorus(int(state.range(0)));
    for (auto _ : state) {
        SetTriangleNormalsOfShape(shape.get());
    }
    CountTriangles(state, shape.get());
}
BENCHMARK(TriangleNormals)->RangeMultiplier(10)->Range(1000, 1000000);

static void Stripes(benchmark::State& state)
{
    const OwnedShape shape = MakeTriangleTorus(int(state.range(0)));
    for (auto _ : state) {
        SetStripesOfShape(shape.get());
    }
    CountTriangles(state, shape.get());
}
BENCHMARK(Stripes)->RangeMultiplier(10)->Range(1000, 1000000);

#ifdef KORVANE_HAVE_OPENMESH

using PeerMesh = OpenMesh::TriMesh_ArrayKernelT<>;

static void PeerOpenMesh(benchmark::State& state)
{
    const OwnedShape shape = MakeTriangleTorus(int(state.range(0)));
    for (auto _ : state) {
        PeerMesh mesh;
        mesh.reserve(std::size_t(shape->pointnumber), std::size_t(shape->trianglenumber) * 3 / 2,
                     std::size_t(shape->trianglenumber));
        mesh.request_face_normals();
        mesh.request_vertex_normals();
        for (int i = 0; i < shape->pointnumber; i++) {
            const float* p = shape->points[i];
            mesh.add_vertex(PeerMesh::Point(p[0], p[1], p[2]));
        }
        for (int i = 0; i < shape->trianglenumber; i++) {
            const int* p = shape->triangles[i].points;
            mesh.add_face(PeerMesh::VertexHandle(p[0]), PeerMesh::VertexHandle(p[1]),
                          PeerMesh::VertexHandle(p[2]));
        }
        mesh.update_normals();
        benchmark::DoNotOptimize(mesh.n_edges());
    }
    CountTriangles(state, shape.get());
}
BENCHMARK(PeerOpenMesh)->RangeMultiplier(10)->Range(1000, 1000000);

#endif

} // namespace korvane::bench
