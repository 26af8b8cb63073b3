#include "view/sidedraw.h"

#include "scene/model.h"
#include "view/basestate.h"
#include "view/drawbatch.h"
#include "view/glsetup.h"
#include "view/litprograms.h"
#include "view/mainview.h"
#include "view/picking.h"
#include "view/shownshapes.h"
#include "view/sidelook.h"

#include <GL/glew.h>

#include <algorithm>
#include <array>

namespace korvane
{

static constexpr double outlinelift = 0.012; // puts the outline of a hovered side in front of it
static constexpr float outlinewidth = 0.3F;

struct LitCorner {
    float position[3];
    float normal[3];
};

// So many corners are drawn at once that a call's cost does not show, and so few that they stay in
// the processor's cache on their way.
static constexpr int litroom = 12288; // a multiple of 3

// Memory kept between frames; each is empty whenever nothing is being drawn.
static std::array<LitCorner, litroom> litcorners;
static Batch flattriangles;
static Batch outlines;

// Triangles that wait to be drawn together, and the light state that is loaded for them.
struct LitRun {
    double fade;         // the weight of every alpha
    const float* colors; // borrowed; the colours of a side, as loaded; null before the first
    bool front;          // the facing that is loaded
    int cornernumber;    // corners waiting in litcorners
};

template <class Draw> static void ForOpaqueSidesFirst(const Shape* copy, Draw draw)
{
    for (const bool opaque : {true, false}) {
        for (int i = 0; i < copy->sidenumber; i++) {
            if (IsSideOpaque(&copy->sides[i]) == opaque) {
                draw(i);
            }
        }
    }
}

// Adds a side's triangles in flat colours to the open triangle batch.
static void SideDraw(const Shape* copy, int side, double fade)
{
    const Side& drawn = copy->sides[side];
    for (int i = 0; i < drawn.trianglenumber; i++) {
        const int triangle = drawn.triangles[i];
        const float* normal = copy->trianglenormals[triangle];
        if (!IsTriangleShown(drawn.visibility, normal)) {
            continue;
        }
        Rgba color = GetColorOfTriangle(&drawn, normal);
        color[3] = float(color[3] * fade);
        for (const int point : copy->triangles[triangle].points) {
            AddCorner(flattriangles, copy->points[point], 0, color);
        }
    }
}

static void BeginLitCorners()
{
    BeginLitPrograms();
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glVertexPointer(3, GL_FLOAT, sizeof(LitCorner), litcorners.front().position);
    glNormalPointer(GL_FLOAT, sizeof(LitCorner), litcorners.front().normal);
}

static void EndLitCorners()
{
    glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
    EndLitPrograms();
}

static void DrawRun(LitRun& run)
{
    if (run.cornernumber > 0) {
        glDrawArrays(GL_TRIANGLES, 0, run.cornernumber);
        run.cornernumber = 0;
    }
}

// Makes the light state that of a side and a facing. What waits was added for the former state and
// is drawn first; sides of like colours share one state.
static void ChangeLight(LitRun& run, const float* colors, bool front)
{
    const bool like = run.colors != nullptr && std::equal(colors, colors + colornumber, run.colors);
    if (!like || front != run.front) {
        DrawRun(run);
        LoadControl(colors, front);
    }
    if (!like) {
        LoadColors(colors, run.fade);
    }
    run.colors = colors;
    run.front = front;
}

// Adds a triangle with its normals, or, `direction` being -1, with their opposites.
static void AddLitTriangle(LitRun& run, const Shape* copy, const Triangle& triangle,
                           float direction)
{
    if (run.cornernumber == litroom) {
        DrawRun(run);
    }
    for (int i = 0; i < 3; i++) {
        LitCorner& corner = litcorners[std::size_t(run.cornernumber)];
        const float* normal = copy->normals[triangle.normals[i]];
        std::copy_n(copy->points[triangle.points[i]], 3, corner.position);
        corner.normal[0] = direction * normal[0];
        corner.normal[1] = direction * normal[1];
        corner.normal[2] = direction * normal[2];
        run.cornernumber++;
    }
}

// Adds those of a side's triangles that face the viewer, or those that face away.
static void AddFacing(LitRun& run, const Shape* copy, const Side& side, bool front)
{
    const bool turned = !front && IsBackLikeFront(side.colors);
    const bool asfront = front || turned;
    const float direction = turned ? -1.0F : 1.0F;
    for (int i = 0; i < side.trianglenumber; i++) {
        const int triangle = side.triangles[i];
        const float z = copy->trianglenormals[triangle][2];
        if (front ? z > 0 : z < 0) {
            if (run.colors != side.colors || run.front != asfront) {
                ChangeLight(run, side.colors, asfront);
            }
            AddLitTriangle(run, copy, copy->triangles[triangle], direction);
        }
    }
}

// A loop round each of the side's triangles: a rounded copy keeps no outline.
static void AddOutline(const Shape* copy, const Side& side, unsigned char fade)
{
    const Rgba color = {1, 1, 1, GetCosRate(int8_t(fade))};
    for (int i = 0; i < side.trianglenumber; i++) {
        const int* points = copy->triangles[side.triangles[i]].points;
        for (int j = 0; j < 3; j++) {
            AddLine(outlines, copy->points[points[j]], copy->points[points[(j + 1) % 3]],
                    outlinelift, color);
        }
    }
}

// Adds a side to the run that is drawn through the programs: a front pass and a back pass.
static void SideDrawFragment(LitRun& run, const ShownShape& shown, const Shape* copy, int side)
{
    const Side& drawn = copy->sides[side];
    if ((drawn.visibility & VISIBLE_FRONT) != 0) {
        AddFacing(run, copy, drawn, true);
    }
    if ((drawn.visibility & VISIBLE_BACK) != 0) {
        AddFacing(run, copy, drawn, false);
    }
    const unsigned char fade = activesides[shown.sidestart + side].fade;
    if (fade != 0) {
        AddOutline(copy, drawn, fade);
    }
}

// The outlines are drawn with the programs off, which would shade them like sides.
static void DrawOutlines()
{
    glLineWidth(outlinewidth);
    DrawBatch(GL_LINES, outlines);
    glLineWidth(1);
}

static void DrawLitSides(const MainView* view, const ShownShape& shown, const Shape* copy)
{
    LitRun run = {GetFadeOfSides(view, shown), nullptr, true, 0};
    BeginLitCorners();
    ForOpaqueSidesFirst(copy, [&](int side) { SideDrawFragment(run, shown, copy, side); });
    DrawRun(run);
    EndLitCorners();
    DrawOutlines();
}

static void DrawFlatSides(const MainView* view, const ShownShape& shown, const Shape* copy)
{
    const double fade = GetFadeOfSides(view, shown);
    ForOpaqueSidesFirst(copy, [&](int side) { SideDraw(copy, side, fade); });
    DrawBatch(GL_TRIANGLES, flattriangles);
}

void DrawSides(const MainView* view, const ShownShape& shown, const Shape* copy)
{
    if (UsesPrograms()) {
        DrawLitSides(view, shown, copy);
    } else {
        DrawFlatSides(view, shown, copy);
    }
    AssertBaseState("DrawSides");
}

} // namespace korvane
