// Rounding a closed shape, per triangle of the result: RoundShape with the normals it ends in,
// which runs on every step of a drag, against one uniform level of the peer's Loop subdivision.
#include "geometry/rounding.h"

#include "bench/meshes.h"
#include "geometry/normals.h"
#include "geometry/triangulation.h"
#include "scene/arrays.h"
#include "scene/model.h"

#include <benchmark/benchmark.h>

#ifdef KORVANE_HAVE_OPENSUBDIV
#include <opensubdiv/far/primvarRefiner.h>
#include <opensubdiv/far/topologyDescriptor.h>
#endif

#include <array>
#include <ctime>
#include <memory>
#include <vector>

namespace korvane::bench
{

// The heap is set as the program sets it, for the peer as well.
static const bool keeping = (KeepFreedMemory(), true);

static OwnedShape Complete(OwnedShape shape)
{
    SetStripesOfShape(shape.get());
    SetNormalsOfShape(shape.get());
    return shape;
}

static void MarkEveryPoint(Shape* shape)
{
    shape->vertexnumber = shape->pointnumber;
    shape->vertexes = NewArray<int>(shape->vertexnumber);
    for (int i = 0; i < shape->vertexnumber; i++) {
        shape->vertexes[i] = i;
    }
}

static double GetProcessorTime()
{
    timespec time;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

// Times an iteration without what it clears away at its end.
class Stopwatch
{
public:
    explicit Stopwatch(::benchmark::State& measured) : state(measured)
    {
    }

    void Stop() const
    {
        state.SetIterationTime(GetProcessorTime() - start);
    }

private:
    ::benchmark::State& state;
    double start = GetProcessorTime();
};

static void CountOutput(::benchmark::State& state, std::int64_t triangles)
{
    state.counters["s/triangle"] =
        ::benchmark::Counter(double(triangles), ::benchmark::Counter::kIsIterationInvariantRate |
                                                    ::benchmark::Counter::kInvert);
}

static void RoundRepeatedly(::benchmark::State& state, const Shape* shape)
{
    for (auto _ : state) {
        const Stopwatch watch(state);
        OwnedShape round(RoundShape(shape));
        watch.Stop();
    }
    CountOutput(state, 9 * std::int64_t(shape->trianglenumber));
}

static void RoundTriangles(::benchmark::State& state)
{
    const OwnedShape shape = Complete(MakeTriangleTorus(int(state.range(0))));
    RoundRepeatedly(state, shape.get());
}

static void RoundQuads(::benchmark::State& state)
{
    const OwnedShape shape = Complete(MakeQuadTorus(int(state.range(0))));
    RoundRepeatedly(state, shape.get());
}

static void RoundMarkedQuads(::benchmark::State& state)
{
    const OwnedShape shape = Complete(MakeQuadTorus(int(state.range(0))));
    MarkEveryPoint(shape.get());
    SetNormalsOfShape(shape.get());
    RoundRepeatedly(state, shape.get());
}

#ifdef KORVANE_HAVE_OPENSUBDIV

namespace Far = OpenSubdiv::Far;

struct PeerPoint {
    float position[3];

    void Clear()
    {
        position[0] = position[1] = position[2] = 0;
    }

    void AddWithWeight(const PeerPoint& source, float weight)
    {
        for (int i = 0; i < 3; i++) {
            position[i] += weight * source.position[i];
        }
    }
};

struct PeerMesh {
    std::vector<PeerPoint> points;
    std::vector<int> cornercounts;
    std::vector<int> corners;
};

static PeerMesh MakePeerMesh(const Shape& shape)
{
    PeerMesh mesh;
    for (int i = 0; i < shape.pointnumber; i++) {
        mesh.points.push_back({{shape.points[i][0], shape.points[i][1], shape.points[i][2]}});
    }
    mesh.cornercounts.assign(shape.trianglenumber, 3);
    for (int i = 0; i < shape.trianglenumber; i++) {
        mesh.corners.insert(mesh.corners.end(), shape.triangles[i].points,
                            shape.triangles[i].points + 3);
    }
    return mesh;
}

static std::unique_ptr<Far::TopologyRefiner> Refine(const PeerMesh& mesh)
{
    Far::TopologyDescriptor descriptor;
    descriptor.numVertices = int(mesh.points.size());
    descriptor.numFaces = int(mesh.cornercounts.size());
    descriptor.numVertsPerFace = mesh.cornercounts.data();
    descriptor.vertIndicesPerFace = mesh.corners.data();
    using Factory = Far::TopologyRefinerFactory<Far::TopologyDescriptor>;
    std::unique_ptr<Far::TopologyRefiner> refiner(Factory::Create(
        descriptor, Factory::Options(OpenSubdiv::Sdc::SCHEME_LOOP, OpenSubdiv::Sdc::Options())));
    refiner->RefineUniform(Far::TopologyRefiner::UniformOptions(1));
    return refiner;
}

static void OpenSubdivLoop(::benchmark::State& state)
{
    const OwnedShape shape = MakeTriangleTorus(int(state.range(0)));
    const PeerMesh mesh = MakePeerMesh(*shape);
    for (auto _ : state) {
        const Stopwatch watch(state);
        const std::unique_ptr<Far::TopologyRefiner> refiner = Refine(mesh);
        const Far::TopologyLevel& level = refiner->GetLevel(1);
        std::vector<PeerPoint> points(level.GetNumVertices());
        Far::PrimvarRefiner(*refiner).Interpolate(1, mesh.points, points);
        std::vector<std::array<int, 3>> triangles(level.GetNumFaces());
        for (int i = 0; i < level.GetNumFaces(); i++) {
            const Far::ConstIndexArray corners = level.GetFaceVertices(i);
            triangles[i] = {corners[0], corners[1], corners[2]};
        }
        watch.Stop();
        ::benchmark::DoNotOptimize(points.data());
        ::benchmark::DoNotOptimize(triangles.data());
    }
    CountOutput(state, 4 * std::int64_t(shape->trianglenumber));
}

BENCHMARK(OpenSubdivLoop)->RangeMultiplier(10)->Range(1000, 100000)->UseManualTime();

#endif

BENCHMARK(RoundTriangles)->RangeMultiplier(10)->Range(1000, 100000)->UseManualTime();
BENCHMARK(RoundQuads)->RangeMultiplier(10)->Range(1000, 100000)->UseManualTime();
BENCHMARK(RoundMarkedQuads)->RangeMultiplier(10)->Range(1000, 100000)->UseManualTime();

} // namespace korvane::bench
