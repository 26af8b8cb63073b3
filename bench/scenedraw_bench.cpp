// Drawing one frame of 1200 x 900 on an X server of its own in software: SceneDraw against client
// vertex arrays of the same triangles, in one call, through the same programs. A torus fills the
// view; half of its triangles face the viewer.
#include "view/scenedraw.h"

#include "bench/meshes.h"
#include "bench/window.h"
#include "geometry/shapegeometry.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "view/glsetup.h"
#include "view/mainview.h"
#include "view/picking.h"
#include "view/programs.h"
#include "view/projection.h"

#include <GL/glew.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace korvane::bench
{

static constexpr float torusradius = 0.45F;

// Deals the triangles of a torus, each a side until now, out to `sidenumber` sides in equal runs.
static void RegroupSides(Shape* shape, int sidenumber)
{
    Side* sides = NewArray<Side>(sidenumber);
    for (int i = 0; i < sidenumber; i++) {
        const int first = int(std::int64_t(shape->trianglenumber) * i / sidenumber);
        const int after = int(std::int64_t(shape->trianglenumber) * (i + 1) / sidenumber);
        sides[i] = shape->sides[first];
        sides[i].trianglenumber = after - first;
        sides[i].points = CopyArray(shape->sides[first].points, 3);
        sides[i].triangles = NewArray<int>(after - first);
        for (int j = first; j < after; j++) {
            sides[i].triangles[j - first] = j;
        }
    }
    for (int i = 0; i < shape->sidenumber; i++) {
        FreeArray(shape->sides[i].points);
        FreeArray(shape->sides[i].triangles);
    }
    FreeArray(shape->sides);
    shape->sides = sides;
    shape->sidenumber = sidenumber;
}

static void TurnAndFit(Shape* shape)
{
    SetCenterPointOfShape(shape);
    SetRadiusOfShape(shape);
    for (int i = 0; i < shape->pointnumber; i++) {
        float* point = shape->points[i];
        const double x = (double(point[0]) - shape->center[0]) * torusradius / shape->radius;
        const double y = (double(point[1]) - shape->center[1]) * torusradius / shape->radius;
        const double z = (double(point[2]) - shape->center[2]) * torusradius / shape->radius;
        point[0] = float(x);
        point[1] = float(0.8 * y - 0.6 * z); // seen from above
        point[2] = float(0.6 * y + 0.8 * z);
    }
}

// Lets neighbouring sides differ, so that every side has a light state of its own.
static void ColorSidesApart(Shape* shape)
{
    for (int i = 0; i < shape->sidenumber; i++) {
        shape->sides[i].colors[FRONT_LIGHT] = float(i % 2) / 2;
    }
}

// A scene of one torus whose sides are drawn alone, from the plain copy.
static void SetScene(int trianglenumber, int sidenumber, bool apart)
{
    DeleteAllShapes();
    OwnedShape torus = MakeTriangleTorus(trianglenumber);
    TurnAndFit(torus.get());
    RegroupSides(torus.get(), sidenumber);
    if (apart) {
        ColorSidesApart(torus.get());
    }
    SetNormalsOfShape(torus.get());
    AddShape(torus.release());
    selected[0] = selectedfade;
    SetActives();
    TransferAllShape();
    showtable[0] = SHOW_PLAIN;
    mainview.sidesfade = fadefull;
    mainview.linesfade = 0;
    forcefixed = 0;
    antialiasingok = 1;
}

static void CountTriangles(::benchmark::State& state)
{
    state.counters["s/triangle"] = ::benchmark::Counter(
        shapest[0]->trianglenumber,
        ::benchmark::Counter::kIsIterationInvariantRate | ::benchmark::Counter::kInvert);
}

// Measures whole frames: cleared, drawn and finished.
template <class Draw> static void MeasureFrames(::benchmark::State& state, Draw draw)
{
    for (auto _ : state) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        draw();
        glFinish();
    }
    CountTriangles(state);
}

static void MeasureScene(::benchmark::State& state)
{
    MeasureFrames(state, [] { SceneDraw(&mainview); });
}

struct Corner {
    float position[3];
    float normal[3];
};

static std::vector<Corner> GetCorners(const Shape* shape)
{
    std::vector<Corner> corners;
    for (int i = 0; i < shape->trianglenumber; i++) {
        for (int j = 0; j < 3; j++) {
            Corner corner;
            std::copy_n(shape->points[shape->triangles[i].points[j]], 3, corner.position);
            std::copy_n(shape->normals[shape->triangles[i].normals[j]], 3, corner.normal);
            corners.push_back(corner);
        }
    }
    return corners;
}

static void LoadLight()
{
    static constexpr float light[4] = {0.8F, 0.8F, 0.8F, 1};
    static constexpr float shadow[4] = {0.2F, 0.2F, 0.2F, 1};
    static constexpr float control[4] = {1, 1, 1, 0};
    for (const GLenum name : {GL_LIGHT0, GL_LIGHT1}) {
        glLightfv(name, GL_DIFFUSE, light);
        glLightfv(name, GL_SPECULAR, shadow);
    }
    glLightfv(GL_LIGHT0, GL_AMBIENT, control);
}

static void DrawCorners(const std::vector<Corner>& corners)
{
    glEnable(GL_VERTEX_PROGRAM_ARB);
    glEnable(GL_FRAGMENT_PROGRAM_ARB);
    glBindProgramARB(GL_VERTEX_PROGRAM_ARB, arbid[LIT_VERTEX]);
    glBindProgramARB(GL_FRAGMENT_PROGRAM_ARB, arbid[LIT_FRAGMENT]);
    LoadLight();
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glVertexPointer(3, GL_FLOAT, sizeof(Corner), corners.front().position);
    glNormalPointer(GL_FLOAT, sizeof(Corner), corners.front().normal);
    glDrawArrays(GL_TRIANGLES, 0, GLsizei(corners.size()));
    glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisable(GL_FRAGMENT_PROGRAM_ARB);
    glDisable(GL_VERTEX_PROGRAM_ARB);
}

static void PeerVertexArrays(::benchmark::State& state)
{
    SetScene(int(state.range(0)), 1, false);
    const std::vector<Corner> corners = GetCorners(shapest[0]);
    MeasureFrames(state, [&] { DrawCorners(corners); });
}

static void DrawOneSide(::benchmark::State& state)
{
    SetScene(int(state.range(0)), 1, false);
    MeasureScene(state);
}

static void DrawThousandLikeSides(::benchmark::State& state)
{
    SetScene(int(state.range(0)), 1000, false);
    MeasureScene(state);
}

// The seams between unlike sides are drawn once more as smooth lines: measured apart.
static void DrawThousandUnlikeSides(::benchmark::State& state)
{
    SetScene(int(state.range(0)), 1000, true);
    antialiasingok = 0;
    MeasureScene(state);
}

static void SmoothThousandUnlikeSides(::benchmark::State& state)
{
    SetScene(int(state.range(0)), 1000, true);
    MeasureScene(state);
}

static void DrawWithoutPrograms(::benchmark::State& state)
{
    SetScene(int(state.range(0)), 1000, false);
    forcefixed = 1;
    MeasureScene(state);
}

// Stripes, triangle edges and point markers over the sides.
static void DrawLinesToo(::benchmark::State& state)
{
    SetScene(int(state.range(0)), 1000, false);
    mainview.linesfade = fadefull;
    selected[0] |= selectedintree;
    MeasureScene(state);
}

// Ten thousand small shapes, sorted by depth anew in every frame.
static void DrawManyShapes(::benchmark::State& state)
{
    const int number = int(state.range(0));
    DeleteAllShapes();
    for (int i = 0; i < number; i++) {
        OwnedShape torus = MakeTriangleTorus(18);
        TurnAndFit(torus.get());
        for (int j = 0; j < torus->pointnumber; j++) {
            for (float& coordinate : torus->points[j]) {
                coordinate *= 0.02F;
            }
            torus->points[j][0] += float((i * 37) % 100) / 100 - 0.5F;
            torus->points[j][1] += float((i * 53) % 97) / 97 - 0.5F;
            torus->points[j][2] += float((i * 71) % 89) / 89 - 0.5F;
        }
        SetNormalsOfShape(torus.get());
        AddShape(torus.release());
        selected[i] = selectedfade;
    }
    SetActives();
    TransferAllShape();
    mainview.linesfade = 0;
    forcefixed = 0;
    antialiasingok = 1;
    MeasureScene(state);
}

static constexpr auto unit = ::benchmark::kMillisecond;
BENCHMARK(PeerVertexArrays)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(unit)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(DrawOneSide)->Arg(10000)->Arg(100000)->Unit(unit)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(DrawThousandLikeSides)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(unit)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(DrawThousandUnlikeSides)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(unit)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(SmoothThousandUnlikeSides)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(unit)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(DrawWithoutPrograms)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(unit)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(DrawLinesToo)->Arg(10000)->Arg(66666)->Unit(unit)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(DrawManyShapes)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(unit)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

} // namespace korvane::bench

int main(int argc, char** argv)
{
    return korvane::bench::RunInWindow(argc, argv);
}
