#include "view/linedraw.h"

#include "scene/model.h"
#include "view/basestate.h"
#include "view/drawbatch.h"
#include "view/mainview.h"
#include "view/markers.h"
#include "view/picking.h"
#include "view/shownshapes.h"

#include <GL/glew.h>

namespace korvane
{

static constexpr double edgelift = 0.012; // in front of the sides, behind the stripes
static constexpr float edgewidth = 0.5F;
static constexpr Rgba edgecolor = {0.1F, 0.1F, 0.3F, 1};

static Batch batch; // kept between frames for its memory; empty outside LineDraw

static void DrawStripes(const ActiveElement* records, float alpha, const Shape* plain)
{
    for (int i = 0; i < plain->stripenumber; i++) {
        const Stripe& stripe = plain->stripes[i];
        const float grey = GetCosRate(int8_t(records[i].fade));
        const Rgba color = {grey, grey, grey, alpha};
        for (int j = 1; j < stripe.pointnumber; j++) {
            AddLine(batch, plain->points[stripe.points[j - 1]], plain->points[stripe.points[j]],
                    markerlift, color);
        }
    }
    DrawBatch(GL_LINES, batch);
}

static void DrawTriangleEdges(const Shape* plain)
{
    for (int i = 0; i < plain->edgenumber; i++) {
        const int* ends = plain->edges[i].points;
        AddLine(batch, plain->points[ends[0]], plain->points[ends[1]], edgelift, edgecolor);
    }
    glLineWidth(edgewidth);
    DrawBatch(GL_LINES, batch);
    glLineWidth(1);
}

static Rgba GetMarkerColor(const ActiveElement& record, bool vertex, float alpha)
{
    if (record.active == 0) {
        return {0.4F, 0.4F, 0.4F, alpha};
    }
    const float glow = GetGlow(record.fade);
    return vertex ? Rgba{1, glow, glow, alpha} : Rgba{glow, 1, glow, alpha};
}

static void DrawPointMarkers(const ActiveElement* records, double size, float alpha,
                             const Shape* plain)
{
    int next = 0; // the vertex that is met next
    for (int i = 0; i < plain->pointnumber; i++) {
        const bool vertex = plain->vertexnumber > 0 && plain->vertexes[next] == i;
        if (vertex) {
            next = (next + 1) % plain->vertexnumber;
        }
        AddSquare(batch, GetPointOfElement(&records[i]), markerlift, size,
                  GetMarkerColor(records[i], vertex, alpha));
    }
    DrawMarkers(batch);
    for (int i = 0; i < plain->pointnumber; i++) {
        if (records[i].fade != 0) {
            DrawDuplaTicks(GetPointOfElement(&records[i]), size, records[i].fade);
        }
    }
}

void LineDraw(const ShownShape& shown, double size, float alpha, const Shape* plain)
{
    DrawStripes(activestripes + shown.stripestart, alpha, plain);
    DrawTriangleEdges(plain);
    DrawPointMarkers(activepoints + shown.pointstart, size, alpha, plain);
    AssertBaseState("LineDraw");
}

} // namespace korvane
