#include "view/overlays.h"

#include "geometry/construction.h"
#include "view/backgroundpicture.h"
#include "view/basestate.h"
#include "view/cubewalls.h"
#include "view/drawbatch.h"
#include "view/glsetup.h"
#include "view/mainview.h"
#include "view/projection.h"

#include <GL/glew.h>

namespace korvane
{

static constexpr int edges = 12;
static constexpr double overlaydepth = 1.5; // in front of every shape

static constexpr float smallhalfedge = 0.025F; // of the small cube, whose walls meet
static constexpr float smallcolors[wallnumber / 2][3] = {{0.8F, 0.8F, 0.8F}, {0, 1, 0}, {1, 0, 0}};

// The twelve edges, and the two faces that each borders.
struct CubeEdge {
    int ends[2]; // corners, named as corners of the z faces: 0..3 of z-, 4..7 of z+
    int faces[2];
};
static constexpr CubeEdge cubeedges[edges] = {
    {{0, 1}, {0, 4}}, {{1, 2}, {0, 2}}, {{2, 3}, {0, 5}}, {{3, 0}, {0, 3}}, // round z-
    {{4, 5}, {1, 5}}, {{5, 6}, {1, 2}}, {{6, 7}, {1, 4}}, {{7, 4}, {1, 3}}, // round z+
    {{0, 7}, {3, 4}}, {{1, 6}, {2, 4}}, {{2, 5}, {2, 5}}, {{3, 4}, {3, 5}}, // between them
};

// A place `distance` from the middle on the short axis, and as far from the edge on the long one.
static void GetCornerPlace(double distance, float place[2])
{
    GetHalfView(&place[0], &place[1]);
    place[0] = float(place[0] - 0.5 + distance);
    place[1] = float(place[1] - 0.5 + distance);
}

static void DrawSmallCube(const MainView* view)
{
    static constexpr double edgelift = 0.006;
    float points[wallnumber * wallcorners][3];
    SetWallCorners(smallhalfedge, smallhalfedge, points);
    Rotate(view, points, wallnumber * wallcorners);
    // Not SetPerspective: this cube is not picked, and the shapes of this frame are drawn already.
    ApplyPerspective(points, wallnumber * wallcorners, fadefull);
    float place[2];
    GetCornerPlace(0.45, place);
    for (float* point : points) {
        point[0] += place[0];
        point[1] += place[1];
        point[2] = float(point[2] + overlaydepth);
    }
    const float alpha = GetCosRate(view->smallcubefade);
    bool shown[wallnumber];
    Batch batch;
    for (int face = 0; face < wallnumber; face++) {
        const float(*corner)[3] = points + wallcorners * face;
        shown[face] = IsWallFacing(corner[0], corner[1], corner[2]);
        const float* color = smallcolors[face / 2];
        for (int i = 0; shown[face] && i < wallcorners; i++) {
            AddCorner(batch, corner[i], 0, {color[0], color[1], color[2], alpha});
        }
    }
    DrawBatch(GL_QUADS, batch);
    for (const CubeEdge& edge : cubeedges) {
        if (shown[edge.faces[0]] || shown[edge.faces[1]]) {
            AddLine(batch, points[edge.ends[0]], points[edge.ends[1]], edgelift, {0, 0, 0, alpha});
        }
    }
    DrawBatch(GL_LINES, batch);
    AssertBaseState("DrawSmallCube");
}

static void DrawCenterLines(const MainView* view)
{
    const Rgba color = {1, 0.2F, 0, GetCosRate(view->centerlinesfade)};
    const float ends[4][3] = {{-2, 0, 0}, {2, 0, 0}, {0, -2, 0}, {0, 2, 0}};
    Batch batch;
    AddLine(batch, ends[0], ends[1], overlaydepth, color);
    AddLine(batch, ends[2], ends[3], overlaydepth, color);
    DrawBatch(GL_LINES, batch);
    AssertBaseState("DrawCenterLines");
}

static void DrawNewShapeIndicator()
{
    static constexpr double size = 0.06;
    float place[2];
    GetCornerPlace(0.48 - size / 2, place);           // its outer edges are 0.48 from the middle
    const float center[3] = {-place[0], place[1], 0}; // the small cube has the other corner
    Batch batch;
    AddSquare(batch, center, overlaydepth, size, {1, 1, 1, 1});
    glBindTexture(GL_TEXTURE_2D, textidns);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    DrawBatch(GL_QUADS, batch);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glDisable(GL_TEXTURE_2D);
    AssertBaseState("DrawNewShapeIndicator");
}

void BgDrawAfter(MainView* view)
{
    DrawBackgroundPicture(view);
    if (view->smallcubefade != 0) {
        DrawSmallCube(view);
    }
    if (view->centerlinesfade != 0) {
        DrawCenterLines(view);
    }
    if (newsign != 0) {
        DrawNewShapeIndicator();
    }
}

} // namespace korvane
