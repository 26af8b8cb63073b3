#include "view/constructiondraw.h"

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "view/basestate.h"
#include "view/drawbatch.h"
#include "view/mainview.h"
#include "view/markers.h"
#include "view/picking.h"

#include <GL/glew.h>

namespace korvane
{

static constexpr Rgba pathcolor = {0, 0, 0.2F, 1};
static constexpr Rgba nextlinecolor = {0.2F, 0.2F, 0.2F, 1};
static constexpr Rgba inactivecolor = {0.4F, 0.4F, 0.4F, 1};
static constexpr Rgba centercolor = {1, 0.5F, 0, 1};
static constexpr Rgba cursorcolor = {1, 1, 0.4F, 1};
static constexpr float centertickwidth = 3.0F;

static bool IsPointUnderMouse()
{
    return activepointer != nullptr && activepointer->type == ELEMENT_POINT;
}

// The line that the next click would add.
static void DrawNextLine()
{
    const float snapped[3] = {gmouse[0], gmouse[1], 0};
    Batch batch;
    AddLine(batch, rotated[newpointnumber - 1],
            IsPointUnderMouse() ? GetPointOfElement(activepointer) : snapped, 0, nextlinecolor);
    DrawBatch(GL_LINES, batch);
}

static void DrawPath()
{
    Batch batch;
    for (int i = 0; i < newpointnumber; i++) {
        AddCorner(batch, rotated[i], 0, pathcolor);
    }
    DrawBatch(GL_LINE_STRIP, batch);
    if (keyspace == 0) {
        DrawNextLine();
    }
}

static Rgba GetNewPointColor(const ActiveElement& record)
{
    const float glow = GetGlow(record.fade);
    return record.active == 0 ? inactivecolor : Rgba{glow, 1, glow, 1};
}

static void DrawNewPoints()
{
    const ActiveElement* records = GetNewPointRecords();
    const double size = GetMarkerSize();
    DrawPath();
    Batch squares;
    for (int i = 0; i < newpointnumber; i++) {
        AddSquare(squares, rotated[i], markerlift, size, GetNewPointColor(records[i]));
    }
    DrawMarkers(squares);
    for (int i = 0; i < newpointnumber; i++) {
        if (records[i].fade != 0) {
            DrawDuplaTicks(rotated[i], size, records[i].fade);
        }
    }
}

static Rgba GetCenterColor(const ActiveElement& record)
{
    if (record.active == 0) {
        return inactivecolor;
    }
    const float glow = GetGlow(record.fade);
    return record.fade == 0 ? centercolor : Rgba{1, float(glow / 2 + 0.5), glow, 1};
}

static void AddPlainTicks(Batch& batch, const float* center, double size, unsigned char fade)
{
    const float f = GetCosRate(int8_t(fade));
    const Ticks ticks = GetTicks(center, size);
    for (const auto& tick : ticks.ends) {
        AddLine(batch, tick[0], tick[1], 0, {f, f, f, f});
    }
}

static void DrawCenters()
{
    const ActiveElement* records = GetCenterRecords();
    const double size = GetMarkerSize();
    Batch squares;
    Batch ticks;
    for (int i = 0; i < centernumber; i++) {
        AddSquare(squares, rcenterpoints[i], markerlift, size, GetCenterColor(records[i]));
        if (records[i].fade != 0) {
            AddPlainTicks(ticks, rcenterpoints[i], size, records[i].fade);
        }
    }
    DrawMarkers(squares);
    glLineWidth(centertickwidth);
    DrawBatch(GL_LINES, ticks);
    glLineWidth(1);
}

static void DrawPlacementCursor()
{
    const float place[3] = {gmouse[0], gmouse[1], 0};
    Batch squares;
    AddSquare(squares, place, 0, GetMarkerSize(), cursorcolor);
    DrawMarkers(squares);
}

void ConstructionDraw(const MainView* view)
{
    TransferConstruction(view);
    if (newpointnumber > 0) {
        DrawNewPoints();
    }
    if (centernumber > 0) {
        DrawCenters();
    }
    if (IsUnderConstruction() && keyspace == 0 && !IsPointUnderMouse()) {
        DrawPlacementCursor();
    }
    AssertBaseState("ConstructionDraw");
}

} // namespace korvane
