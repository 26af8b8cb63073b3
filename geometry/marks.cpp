#include "geometry/marks.h"

#include "geometry/duplication.h"
#include "geometry/editing.h"
#include "geometry/finishedit.h"
#include "geometry/surgery.h"
#include "scene/locate.h"
#include "scene/model.h"
#include "scene/undo.h"
#include "view/frameloop.h"
#include "view/picking.h"

#include <gtk/gtk.h>

#include <vector>

namespace korvane
{

char toolsign = 0;

static void SetMarks(int shapeindex, const std::vector<int>& points, GtkWidget* checkitem)
{
    PushShape(shapeindex);
    const bool marked = gtk_check_menu_item_get_active(GTK_CHECK_MENU_ITEM(checkitem)) != FALSE;
    MarkPoints(shapes[shapeindex], points, marked);
    FinishEdit(shapeindex);
}

// True, once, when the program itself has set the item.
static bool TakeToolSign()
{
    const bool set = toolsign != 0;
    toolsign = 0;
    return set;
}

void SetVertex(GtkWidget* checkitem)
{
    if (TakeToolSign()) {
        return;
    }
    const Location place = LocatePoint(buttonpresspointactive);
    if (place.shape >= 0) {
        SetMarks(place.shape, {place.index}, checkitem);
    }
}

void SetEdge(GtkWidget* checkitem)
{
    if (TakeToolSign()) {
        return;
    }
    const Location place = LocateStripe(buttonpressstripeactive);
    if (place.shape >= 0) {
        const Stripe& stripe = shapes[place.shape]->stripes[place.index];
        SetMarks(place.shape, GetPointsOfStripe(stripe), checkitem);
    }
}

// The side of the menu, for which the check mark stands. The press may have met another one.
void SetBorder(GtkWidget* checkitem)
{
    if (TakeToolSign()) {
        return;
    }
    if (IsDuplicateSideThere()) {
        const Side& side = shapes[duplicateshape]->sides[duplicateside];
        SetMarks(duplicateshape, GetCornersOfSide(side), checkitem);
    }
}

void DelPoint()
{
    RemovePoint(buttonpresspointactive);
    rdstate |= redrawwanted;
}

void DelStripe()
{
    RemoveStripe(buttonpressstripeactive);
    rdstate |= redrawwanted;
}

void DelShape()
{
    // Deliberate: the item has no effect. Shapes are deleted in the tree or with the middle button.
}

} // namespace korvane
