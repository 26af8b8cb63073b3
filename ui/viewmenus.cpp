#include "ui/viewmenus.h"

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "geometry/marks.h"
#include "scene/locate.h"
#include "scene/model.h"
#include "ui/input.h"
#include "view/picking.h"

#include <gtk/gtk.h>

#include <algorithm>

namespace korvane
{

GtkWidget* sidemenu = nullptr;
GtkWidget* menuborder = nullptr;
GtkWidget* menuduplicate = nullptr;
GtkWidget* pointmenu = nullptr;
GtkWidget* menuvertex = nullptr;
GtkWidget* menupointdel = nullptr;
GtkWidget* stripemenu = nullptr;
GtkWidget* menuedge = nullptr;
GtkWidget* menustripedel = nullptr;
GtkWidget* bgmenu = nullptr;
GtkWidget* bgmenu2 = nullptr;

static bool IsVertex(const Shape* shape, int point)
{
    const int* end = shape->vertexes + shape->vertexnumber;
    return std::find(static_cast<const int*>(shape->vertexes), end, point) != end;
}

static bool AreVertexes(const Shape* shape, const int* points, int number)
{
    return std::all_of(points, points + number,
                       [shape](int point) { return IsVertex(shape, point); });
}

// Shows the mark that the scene has, without running the item's own handler.
static void SetCheckItem(GtkWidget* item, bool checked)
{
    toolsign = 1;
    gtk_check_menu_item_set_active(GTK_CHECK_MENU_ITEM(item), checked ? TRUE : FALSE);
    toolsign = 0;
}

static GtkWidget* PrepareStripeMenu()
{
    buttonpressstripeactive = int(activepointer - activestripes);
    const Location place = LocateStripe(buttonpressstripeactive);
    const Shape* shape = shapes[place.shape];
    const Stripe& stripe = shape->stripes[place.index];
    SetCheckItem(menuedge, AreVertexes(shape, stripe.points, stripe.pointnumber));
    return stripemenu;
}

static GtkWidget* PreparePointMenu()
{
    buttonpresspointactive = int(activepointer - activepoints);
    const Location place = LocatePoint(buttonpresspointactive);
    SetCheckItem(menuvertex, IsVertex(shapes[place.shape], place.index));
    return pointmenu;
}

// Deliberate: buttonpresssideactive stays what the press recorded, for the tools and the colours.
static GtkWidget* PrepareSideMenu()
{
    const Location place = LocateSide(int(activepointer - activesides));
    duplicateshape = place.shape;
    duplicateside = place.index;
    const Shape* shape = shapes[place.shape];
    const Side& side = shape->sides[place.index];
    SetCheckItem(menuborder, AreVertexes(shape, side.points, side.pointnumber));
    return sidemenu;
}

static GtkWidget* PrepareMenu()
{
    switch (activepointer == nullptr ? ELEMENT_CUBEFACE : activepointer->type) {
    case ELEMENT_STRIPE:
        return PrepareStripeMenu();
    case ELEMENT_POINT:
        return PreparePointMenu();
    case ELEMENT_SIDE:
        return PrepareSideMenu();
    default:
        return shapenumber == 0 ? bgmenu : bgmenu2;
    }
}

// False when the button is up already. Its handler ends the tool.
static bool ReleaseNewShapeButton()
{
    GtkToggleToolButton* button = GTK_TOGGLE_TOOL_BUTTON(toolbutton_news);
    const bool pressed = gtk_toggle_tool_button_get_active(button) != FALSE;
    gtk_toggle_tool_button_set_active(button, FALSE);
    return pressed;
}

void RightPressed(GdkEventButton* event)
{
    if (newsign != 0 && ReleaseNewShapeButton()) {
        return;
    }
    if (IsUnderConstruction()) {
        ClickConstruction(CLICK_FINISH);
        return;
    }
    gtk_menu_popup(GTK_MENU(PrepareMenu()), nullptr, nullptr, nullptr, nullptr, event->button,
                   event->time);
}

} // namespace korvane
