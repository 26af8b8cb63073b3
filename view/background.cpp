#include "view/background.h"

#include "view/basestate.h"
#include "view/cubewalls.h"
#include "view/drawbatch.h"
#include "view/glsetup.h"
#include "view/mainview.h"
#include "view/navigation.h"
#include "view/picking.h"
#include "view/projection.h"

#include <GL/glew.h>

#include <algorithm>
#include <cmath>

namespace korvane
{

static constexpr float walldepth = -1.99F;  // behind everything but the clip plane
static constexpr float hoverdepth = -1.96F; // of a hovered wall's outline
static constexpr float planedepth = -1.96F; // of the plane where no program pins its depth

static constexpr float halfedge = 0.61F;     // of a wall of the background cube
static constexpr float walldistance = 0.66F; // from the middle: the walls leave gaps
static constexpr float cubecolors[wallnumber / 2][3] = {
    {0.4F, 0.4F, 0.4F}, {0.15F, 0.4F, 0.15F}, {0.4F, 0.15F, 0.15F}};

static void AddWall(Batch& batch, int wall, float depth, const Rgba& color)
{
    for (int i = 0; i < wallcorners; i++) {
        const float* corner = cubepoints[wallcorners * wall + i];
        const float place[3] = {corner[0], corner[1], depth};
        AddCorner(batch, place, 0, color);
    }
}

static void DrawWall(int wall, float weight, unsigned char hoverfade)
{
    const float hover = GetCosRate(int8_t(hoverfade));
    const float light = hover / 6;
    const float* base = cubecolors[wall / 2];
    const Rgba color = {light + (1 - light) * base[0], light + (1 - light) * base[1],
                        light + (1 - light) * base[2], weight};
    Batch batch;
    AddWall(batch, wall, walldepth, color);
    DrawBatch(GL_QUADS, batch);
    AddWall(batch, wall, walldepth, color);
    DrawBatch(GL_LINE_LOOP, batch);
    if (hoverfade != 0) {
        AddWall(batch, wall, hoverdepth, {1, 1, 1, hover});
        DrawBatch(GL_LINE_LOOP, batch);
    }
}

// Marks the walls that face the viewer. True when they are others than before.
static bool SetFacingWalls()
{
    bool changed = false;
    for (int wall = 0; wall < wallnumber; wall++) {
        const float(*corner)[3] = cubepoints + wallcorners * wall;
        const unsigned char facing = IsWallFacing(corner[0], corner[1], corner[2]) ? 1 : 0;
        changed = changed || activebgcube[wall].active != facing;
        activebgcube[wall].active = facing;
    }
    return changed;
}

static void DrawCube(MainView* view)
{
    SetWallCorners(halfedge, walldistance, cubepoints);
    Rotate(view, cubepoints, wallnumber * wallcorners);
    SetPerspective(cubepoints, wallnumber * wallcorners, fadefull);
    if (SetFacingWalls()) {
        SearchActive(); // the search just done took the marks of another view
    }
    for (int wall = 0; wall < wallnumber; wall++) {
        if (activebgcube[wall].active != 0) {
            DrawWall(wall, GetCosRate(view->bgcubefade), activebgcube[wall].fade);
        }
    }
    AssertBaseState("DrawCube");
}

// One line of the plane as a strip with a corner at every crossing, so that the fade that depends
// on the distance is right between them on the fixed path too.
static void AddPlaneLine(Batch& batch, const MainView* view, double place, double step, int n,
                         bool alongx, const Rgba& color)
{
    const bool programs = UsesPrograms();
    for (int i = -n; i <= n; i++) {
        const float along = float(i * step);
        const float across = float(place);
        float point[1][3] = {{alongx ? along : across, alongx ? across : along, 0}};
        Rotate(view, point, 1);
        ApplyPerspective(point, 1, view->perspective);
        Rgba faded = color;
        if (!programs) {
            const double distance = std::hypot(point[0][0], point[0][1], point[0][2]);
            faded[3] = float(std::max(0.0, color[3] - distance));
            point[0][2] = planedepth;
        }
        AddCorner(batch, point[0], 0, faded);
    }
}

static void BeginFadePrograms()
{
    if (UsesPrograms()) {
        glEnable(GL_VERTEX_PROGRAM_ARB);
        glEnable(GL_FRAGMENT_PROGRAM_ARB);
        glBindProgramARB(GL_VERTEX_PROGRAM_ARB, arbid[FADE_VERTEX]);
        glBindProgramARB(GL_FRAGMENT_PROGRAM_ARB, arbid[FADE_FRAGMENT]);
    }
}

static void EndFadePrograms()
{
    if (UsesPrograms()) {
        glDisable(GL_FRAGMENT_PROGRAM_ARB);
        glDisable(GL_VERTEX_PROGRAM_ARB);
    }
}

static void DrawPlane(const MainView* view)
{
    const double step = GetPowerOfTwo(view->scale) / (10.0 * view->scale);
    const int n = int(std::lround(1 / step));
    const float blue = view->rotation[8] > 0 ? 0.3F : 0; // seen from +z it is blue, from -z black
    const Rgba color = {0, 0, blue, GetCosRate(view->bgplanefade)};
    BeginFadePrograms();
    Batch batch;
    for (int line = -n; line <= n; line++) {
        AddPlaneLine(batch, view, line * step, step, n, true, color);
        DrawBatch(GL_LINE_STRIP, batch);
        AddPlaneLine(batch, view, line * step, step, n, false, color);
        DrawBatch(GL_LINE_STRIP, batch);
    }
    EndFadePrograms();
    AssertBaseState("DrawPlane");
}

// Three levels of lines: every other one is fine, every fourth broad. The index is a whole number,
// and a double because far from the origin it outgrows every integer type.
static int GetLevelOfLine(double index)
{
    if (std::fmod(index, 2) != 0) {
        return 0;
    }
    return std::fmod(index, 4) != 0 ? 1 : 2;
}

// The grid's lines across one axis: those on which the pointer snaps, from edge to edge of the
// view.
static void AddGradientLines(Batch (&levels)[3], const MainView* view, int axis, const Rgba& color)
{
    float center[1][3] = {{view->center[0], view->center[1], view->center[2]}};
    Rotate(view, center, 1);
    float half[2];
    GetHalfView(&half[0], &half[1]);
    const double scale = double(view->scale);
    const double middle = double(center[0][axis]);
    const double reach = double(half[axis]) / scale;
    const double step = GetGradientStep(scale);
    const double first = std::ceil((middle - reach) / step);
    const double more = std::floor((middle + reach) / step) - first;
    for (int i = 0; i <= more; i++) {
        const double index = first + i;
        const int level = GetLevelOfLine(index);
        const auto place = float((index * step - middle) * scale);
        float start[3];
        float end[3];
        start[axis] = end[axis] = place;
        start[1 - axis] = -half[1 - axis];
        end[1 - axis] = half[1 - axis];
        start[2] = end[2] = float(-1.96 + level / 40.0);
        AddLine(levels[level], start, end, 0, color);
    }
}

static void DrawGradient(const MainView* view)
{
    static constexpr float linewidths[3] = {0.5F, 1.0F, 2.0F};
    const Rgba color = {0.6F, 0.6F, 0.65F, 0.35F * GetCosRate(view->gradientfade)};
    Batch levels[3];
    AddGradientLines(levels, view, 0, color);
    AddGradientLines(levels, view, 1, color);
    for (int level = 0; level < 3; level++) {
        glLineWidth(linewidths[level]);
        DrawBatch(GL_LINES, levels[level]);
    }
    glLineWidth(1);
    AssertBaseState("DrawGradient");
}

void BgDrawBefore(MainView* view)
{
    if (view->bgcubefade != 0) {
        DrawCube(view);
    }
    if (view->bgplanefade != 0) {
        DrawPlane(view);
    }
    if (view->gradientfade != 0) {
        DrawGradient(view);
    }
}

} // namespace korvane
