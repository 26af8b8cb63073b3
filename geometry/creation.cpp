#include "geometry/creation.h"

#include "geometry/construction.h"
#include "geometry/finishedit.h"
#include "geometry/normals.h"
#include "geometry/sidecut.h"
#include "geometry/surgery.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/treeselection.h"
#include "scene/treeview.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <cstring>
#include <numeric>
#include <utility>
#include <vector>

namespace korvane
{

// Of a new side: light grey in the light, dark grey in the shadow, of full acuity; both faces
// alike.
static constexpr float newcolors[colornumber] = {0.8F, 0.8F, 0.8F, 1, 0.2F, 0.2F, 0.2F, 1, 1,
                                                 0.8F, 0.8F, 0.8F, 1, 0.2F, 0.2F, 0.2F, 1, 1};

// A flat shape whose one side has all the points in order. The caller owns it.
static Shape* MakeOneSideShape(const float points[][3], int number)
{
    Shape* shape = NewArray<Shape>(1);
    AppendPoints(shape, points, number);
    std::vector<int> outline(std::size_t(number), 0);
    std::iota(outline.begin(), outline.end(), 0);
    Side pattern = {};
    pattern.visibility = VISIBLE_BOTH;
    std::copy_n(newcolors, colornumber, pattern.colors);
    AppendSide(shape, outline, pattern);
    CutSideAgain(shape, 0);
    outline.push_back(0); // the border comes back to its start
    AppendStripe(shape, outline);
    SetNormalsOfShape(shape);
    return shape;
}

bool CreateOneSideShape()
{
    const int first = GetPickedNewPoint();
    const int number = newpointnumber - 1 - first; // the last is the closing click
    if (first < 0 || number < 3) {
        return false;
    }
    AddShape(MakeOneSideShape(newpoints + first, number));
    TransferOneShape(shapenumber - 1);
    SetActives();
    return true;
}

void EndNewShapeTool()
{
    if (toolbutton_news != nullptr) {
        gtk_toggle_tool_button_set_active(GTK_TOGGLE_TOOL_BUTTON(toolbutton_news), FALSE);
    }
    DelNewPoints(); // a polygon can be started with the button up
}

void EndNewShape()
{
    Block<char[]> name(strdup("shape")); // not by NewArray, which ends the program without memory
    if (name == nullptr) {
        DeleteShapeByIndex(shapenumber - 1);
        EndNewShapeTool();
        return;
    }
    CreateTreeIter(NODE_SIDE, std::move(name));
    EndNewShapeTool();
    SetSelection(shapenumber - 1);
}

void CreateNewSide(int shapeindex, int startpoint, int endpoint)
{
    Shape* shape = shapes[shapeindex];
    const Chain chain = {startpoint, endpoint, newpoints, newpointnumber};
    if (!CanTakeChain(shape, chain)) {
        return;
    }
    if (IsFlatShape(shape)) {
        RaiseOverChain(shape, chain);
    } else {
        CutAlongChain(shape, chain);
    }
    FinishEdit(shapeindex);
}

} // namespace korvane
