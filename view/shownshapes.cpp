#include "view/shownshapes.h"

#include "scene/model.h"
#include "view/mainview.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvane
{

// The depth by which shapes are sorted. Coordinates so large that they overflow count as farthest.
static float GetDepth(const ShownShape& shown)
{
    const float z = shapest[shown.index]->center[2];
    return std::isnan(z) ? -std::numeric_limits<float>::infinity() : z;
}

static bool IsFarther(const ShownShape& a, const ShownShape& b)
{
    return GetDepth(a) < GetDepth(b); // strictly smaller: equal ones stay in the order of the scene
}

std::vector<ShownShape> GetShownShapes()
{
    std::vector<ShownShape> shown;
    ShownShape next = {};
    for (int i = 0; i < shapenumber; i++) {
        next.index = i;
        if (showtable[i] != SHOW_NOTHING) {
            shown.push_back(next);
        }
        next.pointstart += shapes[i]->pointnumber;
        next.stripestart += shapes[i]->stripenumber;
        next.sidestart += shapes[i]->sidenumber;
    }
    std::stable_sort(shown.begin(), shown.end(), IsFarther);
    return shown;
}

const Shape* GetDrawnCopy(int shapeindex)
{
    return showtable[shapeindex] == SHOW_PLAIN ? shapest[shapeindex] : round1t[shapeindex];
}

double GetFadeOfSides(const MainView* view, const ShownShape& shown)
{
    const auto level = int8_t(selected[shown.index] & selectedlevel);
    return double(GetCosRate(view->sidesfade)) * GetCosRate(level);
}

} // namespace korvane
