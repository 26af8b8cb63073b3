#include "view/edgesmoothing.h"

#include "scene/model.h"
#include "view/basestate.h"
#include "view/drawbatch.h"
#include "view/shownshapes.h"
#include "view/sidelook.h"

#include <GL/glew.h>

namespace korvane
{

static Batch lines; // kept between frames for its memory; empty outside SmoothEdges

static void AddEdge(const Shape* copy, const Edge& edge, double fade)
{
    const int front = GetFrontOfEdge(copy, &edge);
    if (front < 0) {
        return;
    }
    Rgba color = GetColorOfTriangle(&copy->sides[edge.sides[front]],
                                    copy->trianglenormals[edge.triangles[front]]);
    color[3] = float(color[3] * fade);
    AddLine(lines, copy->points[edge.points[0]], copy->points[edge.points[1]], 0, color);
}

void SmoothEdges(const MainView* view, const ShownShape& shown, const Shape* copy)
{
    const double fade = GetFadeOfSides(view, shown);
    for (int i = 0; i < copy->edgenumber; i++) {
        if (IsEdgeSmoothed(copy, &copy->edges[i])) {
            AddEdge(copy, copy->edges[i], fade);
        }
    }
    DrawBatch(GL_LINES, lines);
    AssertBaseState("SmoothEdges");
}

} // namespace korvane
