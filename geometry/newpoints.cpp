#include "geometry/newpoints.h"

#include "geometry/clickdepth.h"
#include "geometry/construction.h"
#include "geometry/creation.h"
#include "geometry/surgery.h"
#include "scene/locate.h"
#include "scene/model.h"
#include "scene/undo.h"
#include "ui/dialogs.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <vector>

namespace korvane
{

// How a point of a shape hangs together with the one on which a new side starts.
enum Bond { NO_COMMON_SIDE, COMMON_SIDE, COMMON_EDGE, SAME_POINT };

// Of the polygon under construction, from its first point to its end.
static bool newshapesign = false; // a new shape; else a new side
static int shapei = 0;            // the shape that gets the new side
static int pstart = 0;            // the point of it on which the side starts
static ClickDepth clickdepth = {};

// The point of a shape under the pointer.
static Location GetPickedShapePoint()
{
    const bool point = activepointer != nullptr && activepointer->type == ELEMENT_POINT;
    return LocatePoint(point ? int(activepointer - activepoints) : -1);
}

// Of each point of the shape, the strongest that any side gives.
static std::vector<Bond> GetBonds()
{
    const Shape* shape = shapes[shapei];
    std::vector<Bond> bonds(std::size_t(shape->pointnumber), NO_COMMON_SIDE);
    for (int i = 0; i < shape->sidenumber; i++) {
        const Side& side = shape->sides[i];
        const int m = side.pointnumber;
        if (!HasCorner(side, pstart)) {
            continue;
        }
        for (int k = 0; k < m; k++) {
            const bool next =
                side.points[(k + 1) % m] == pstart || side.points[(k + m - 1) % m] == pstart;
            Bond& bond = bonds[std::size_t(side.points[k])];
            bond = std::max(bond, next ? COMMON_EDGE : COMMON_SIDE);
        }
    }
    bonds[std::size_t(pstart)] = SAME_POINT;
    return bonds;
}

// A chain straight from the start to its end must not run along an edge; one with points between
// may end on any other corner of the sides round its start.
static bool CanEndOn(Bond bond, bool straight)
{
    return bond == COMMON_SIDE || (bond == COMMON_EDGE && !straight);
}

// Makes those points of the shape pickable on which the new side may end.
static void MarkEnds(bool straight)
{
    int point = GetActivePoint({shapei, 0});
    for (const Bond bond : GetBonds()) {
        activepoints[point].active = CanEndOn(bond, straight) ? 1 : 0;
        point++;
    }
}

static void StartNewShape()
{
    PushScene();
    newshapesign = true;
    clickdepth = StartClickDepth(0, mainview.rotation);
    const float place[3] = {gmouse[0], gmouse[1], 0};
    AddNewPoint(place);
}

static void StartNewSide(const Location& place)
{
    SetActivesOff();
    PushShape(place.shape);
    newshapesign = false;
    shapei = place.shape;
    pstart = place.index;
    const float* picked = GetPointOfElement(activepointer);
    clickdepth = StartClickDepth(picked[2], mainview.rotation);
    AddNewPoint(picked);
    MarkEnds(true);
}

static void PutFirstPoint()
{
    const Location place = GetPickedShapePoint();
    if (place.shape >= 0) {
        StartNewSide(place);
    } else {
        StartNewShape();
    }
}

static void PutPointOnEmptySpace()
{
    const float place[3] = {gmouse[0], gmouse[1], clickdepth.zbasic};
    AddNewPoint(place);
    if (!newshapesign && newpointnumber == 2) {
        MarkEnds(false);
    }
    if (newshapesign && newpointnumber >= 3) {
        GetNewPointRecords()[newpointnumber - 3].active = 1;
    }
}

// What the pointer is on may have become pickable by other ways than the marks.
static bool IsOnClosingPoint()
{
    if (newshapesign) {
        return GetPickedNewPoint() >= 0;
    }
    const Location place = GetPickedShapePoint();
    return place.shape == shapei &&
           CanEndOn(GetBonds()[std::size_t(place.index)], newpointnumber == 1);
}

static void ClosePolygon()
{
    const int endpoint = GetPickedShapePoint().index;
    CloseLine(clickdepth.zindex);
    if (!newshapesign) {
        CreateNewSide(shapei, pstart, endpoint);
        DelNewPoints();
        return;
    }
    if (CreateOneSideShape()) {
        EndNewShape();
    } else {
        EndNewShapeTool();
    }
}

static void PutNextPoint()
{
    FollowCamera(clickdepth, mainview.rotation, rotated, newpointnumber);
    if (IsOnClosingPoint()) {
        ClosePolygon();
    } else {
        PutPointOnEmptySpace();
    }
}

static void TakeBackPoint()
{
    if (newpointnumber == 0) {
        return;
    }
    if (newpointnumber == 1) {
        DelNewPoints();
        return;
    }
    DropNewPoint();
    FollowTakeBack(clickdepth, rotated, newpointnumber);
    if (newshapesign && newpointnumber >= 2) {
        GetNewPointRecords()[newpointnumber - 2].active = 0;
    }
    if (!newshapesign && newpointnumber == 1) {
        MarkEnds(true);
    }
}

void PutNewPoints(int action)
{
    if (action == CLICK_FINISH) {
        DelNewPoints();
    } else if (action == CLICK_TAKEBACK) {
        TakeBackPoint();
    } else if (newpointnumber == 0) {
        PutFirstPoint();
    } else {
        PutNextPoint();
    }
    SearchActive(); // other points can be picked now
}

void NewShape(GtkWidget* button)
{
    DelNewPoints();
    if (gtk_toggle_tool_button_get_active(GTK_TOGGLE_TOOL_BUTTON(button))) {
        SetActivesOff();
        newsign = 1;
        SearchActive();
        PrintStatusBar(" Click the points of the new shape");
    }
    rdstate |= redrawwanted;
}

void NewShapeFromMenu(GtkWidget*, GtkWidget* button)
{
    GtkToggleToolButton* toggle = GTK_TOGGLE_TOOL_BUTTON(button);
    if (gtk_toggle_tool_button_get_active(toggle)) {
        NewShape(button); // it is down, and pressing it would tell nobody
    } else {
        gtk_toggle_tool_button_set_active(toggle, TRUE);
    }
}

void MenuNewShape()
{
    NewShapeFromMenu(nullptr, toolbutton_news);
}

} // namespace korvane
