#include "view/scenedraw.h"

#include "scene/model.h"
#include "view/constructiondraw.h"
#include "view/edgesmoothing.h"
#include "view/glsetup.h"
#include "view/linedraw.h"
#include "view/mainview.h"
#include "view/markers.h"
#include "view/shownshapes.h"
#include "view/sidedraw.h"

#include <algorithm>

namespace korvane
{

static void DrawShape(const MainView* view, const ShownShape& shown, double markersize)
{
    const int8_t sides = view->sidesfade;
    const int8_t lines = view->linesfade;
    const unsigned char state = selected[shown.index];
    const Shape* copy = GetDrawnCopy(shown.index);
    const Shape* plain = shapest[shown.index];
    if (lines > 0 && lines > sides) {
        LineDraw(shown, markersize, GetCosRate(int8_t(lines - sides)), plain);
    }
    if (sides > 0 && (state & selectedfade) != 0) {
        DrawSides(view, shown, copy);
        if (antialiasingok != 0) {
            SmoothEdges(view, shown, copy);
        }
    }
    if (lines > 0 && sides > 0 && (state & selectedintree) != 0) {
        LineDraw(shown, markersize, GetCosRate(int8_t(std::min(sides, lines))), plain);
    }
}

void SceneDraw(const MainView* view)
{
    const double markersize = GetMarkerSize();
    for (const ShownShape& shown : GetShownShapes()) {
        DrawShape(view, shown, markersize);
    }
    ConstructionDraw(view);
}

} // namespace korvane
