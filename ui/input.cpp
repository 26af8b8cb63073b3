#include "ui/input.h"

#include "geometry/construction.h"
#include "geometry/creation.h"
#include "geometry/duplication.h"
#include "geometry/duplicationclicks.h"
#include "geometry/editing.h"
#include "geometry/newpoints.h"
#include "geometry/transforms.h"
#include "scene/locate.h"
#include "scene/model.h"
#include "scene/treeedit.h"
#include "ui/dialogs.h"
#include "ui/transform.h"
#include "ui/viewmenus.h"
#include "view/cameraflight.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/navigation.h"
#include "view/picking.h"
#include "view/projection.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace korvane
{

int mstate = POINTER_IDLE;
float buttonpressx = 0;
float buttonpressy = 0;
float buttonpressgx = 0;
float buttonpressgy = 0;
int presstime = 0;

static constexpr double dragdistance = 6.0; // pixels from the press at which a click becomes a drag
static constexpr int dragticks = 32;        // and ticks after it
static constexpr double smallstep = 0.001;  // view units: a drag step that is not worth taking
enum Button : guint { LEFT = 1, MIDDLE = 2, RIGHT = 3 };

// Where the present step of a button's drag began, in view coordinates.
struct DragStart {
    float startx, starty;
};

// From one press to the next.
static float pressdepth = 0;       // the depth of gmouse at the press
static bool presstaken = false;    // an edit of the drag has saved its shape
static bool pressmissed = false;   // the drag began on a stripe beside all its segments
static DragStart leftstart = {};   // of LeftDraw
static DragStart middlestart = {}; // of MiddleDraw

// The buttons whose press the view got and whose release it may still get, as an event's `state`
// tells them. Menus and dialogs take one without the other.
static guint heldbuttons = 0;

void EndPointerActions()
{
    EndNewShapeTool();
    mainview.action = TOOL_NONE;
    mstate = POINTER_IDLE;
    ForgetPressedElements();
}

// The place of activepointer in a list, when it is of the list's type; else -1.
static int GetPressedIndex(const ActiveElement* list, int type)
{
    const bool hit = activepointer != nullptr && activepointer->type == type;
    return hit ? int(activepointer - list) : -1;
}

// Takes the pointer to a pixel: finds the element there and the place that a click would give a
// point.
static void PointAt(double x, double y)
{
    const double shorter = 2.0 * std::min(width, height);
    mouse[0] = float((2 * x - width) / shorter);
    mouse[1] = float((height - 2 * y) / shorter);
    mouse[2] = 0;
    SearchActive();
    SetGradientMouse();
}

static void RecordPressedElement()
{
    buttonpresspointactive = GetPressedIndex(activepoints, ELEMENT_POINT);
    buttonpressstripeactive = GetPressedIndex(activestripes, ELEMENT_STRIPE);
    buttonpresssideactive = GetPressedIndex(activesides, ELEMENT_SIDE);
}

// The bit of a button in an event's `state`; 0 for buttons that do nothing here.
static guint GetButtonBit(guint button)
{
    return button >= LEFT && button <= RIGHT ? guint(GDK_BUTTON1_MASK) << (button - LEFT) : 0;
}

// What a button has begun is over when it went up over a menu or a dialog.
static void EndLostPresses(guint state)
{
    if ((heldbuttons & ~state) != 0) {
        heldbuttons &= state;
        mstate = POINTER_IDLE;
    }
}

int ButtonPress(GtkWidget*, GdkEventButton* event)
{
    if (event->type != GDK_BUTTON_PRESS) { // a double click comes as an extra press of its own type
        return TRUE;
    }
    EndLostPresses(event->state);
    heldbuttons |= GetButtonBit(event->button);
    // Since the last motion what was there may have been edited, and the pointer gone on in a menu.
    PointAt(event->x, event->y);
    buttonpressx = float(event->x);
    buttonpressy = float(event->y);
    buttonpressgx = gmouse[0];
    buttonpressgy = gmouse[1];
    presstime = runtime;
    pressdepth = gmouse[2];
    presstaken = false;
    pressmissed = false;
    if (mainview.action == TOOL_NONE) {
        RecordPressedElement();
    }
    if (event->button == LEFT) {
        mstate = LEFT_DOWN;
        leftstart = {buttonpressgx, buttonpressgy};
    } else if (event->button == MIDDLE) {
        mstate = MIDDLE_DOWN;
        middlestart = {buttonpressgx, buttonpressgy};
    } else if (event->button == RIGHT) {
        mstate = RIGHT_DOWN;
    }
    return TRUE;
}

void ClickConstruction(int action)
{
    if (newsign != 0) {
        PutNewPoints(action);
    } else {
        PutDPoints(duplicateshape, duplicateside, action);
    }
    rdstate |= redrawwanted;
}

static void LeftPressed()
{
    if (IsUnderConstruction() && keyspace == 0) {
        ClickConstruction(CLICK_ADD);
        return;
    }
    if (activepointer == nullptr) {
        return;
    }
    if (activepointer->type == ELEMENT_POINT) {
        if (!IsUnderConstruction()) { // a new side starts here
            newsign = 1;
            PrintStatusBar(" Click the points of the new side");
        }
        ClickConstruction(CLICK_ADD);
    } else if (activepointer->type == ELEMENT_STRIPE) {
        AddPoint(int(activepointer - activestripes));
        rdstate |= redrawwanted;
    } else if (activepointer->type == ELEMENT_SIDE) {
        JumpSurface();
    } else if (activepointer->type == ELEMENT_CUBEFACE) {
        CubeRotate();
    }
}

static void MiddlePressed()
{
    if (IsUnderConstruction()) {
        ClickConstruction(CLICK_TAKEBACK);
        return;
    }
    if (activepointer == nullptr) {
        return;
    }
    if (activepointer->type == ELEMENT_POINT) {
        RemovePoint(int(activepointer - activepoints));
    } else if (activepointer->type == ELEMENT_STRIPE) {
        RemoveStripe(int(activepointer - activestripes));
    } else if (activepointer->type == ELEMENT_SIDE) {
        RemoveShape(int(activepointer - activesides));
    } else {
        return;
    }
    rdstate |= redrawwanted;
}

// False for NaN.
static bool IsFarEnough(const DragStart& from)
{
    return std::hypot(gmouse[0] - from.startx, gmouse[1] - from.starty) > smallstep;
}

static void StartNextStep(DragStart& start)
{
    start = {gmouse[0], gmouse[1]};
}

// Moves the pressed point. The first step of a press that is taken saves the shape.
static void DragPoint()
{
    PointMove(buttonpresspointactive, gmouse[0], gmouse[1], presstaken ? 0 : 1);
    presstaken = true;
}

// Inserts a point into the pressed stripe, which the rest of the drag then moves. Where there is
// nothing to insert into, the rest of the drag does nothing.
static void DragStripe()
{
    if (activepointer != activestripes + buttonpressstripeactive) {
        gmouse[2] = pressdepth; // the pointer has left the stripe and has another depth
    }
    const int point = AddPoint(buttonpressstripeactive);
    buttonpresspointactive = point;
    buttonpressstripeactive = -1;
    presstaken = true;
    pressmissed = point < 0;
}

static void MoveByTool(const DragStart& from)
{
    const float x = gmouse[0];
    const float y = gmouse[1];
    if (mainview.action == MOVE_SIDE) {
        SideMove(srshapenumber, srsidenumber, from.startx, from.starty, x, y);
    } else if (mainview.action == MOVE_SHAPE) {
        ShapeMove(srshapenumber, from.startx, from.starty, x, y);
    } else if (mainview.action == MOVE_SELECTED) {
        SelectedMove(from.startx, from.starty, x, y);
    }
}

// A step of a drag, or the last one at its release. At most one is taken per drawn frame.
static void LeftDraw(bool release)
{
    if (!release && (!IsFarEnough(leftstart) || rdstate != 0)) {
        return;
    }
    if (mainview.action != TOOL_NONE) {
        MoveByTool(leftstart);
        if (release) {
            mainview.action = TOOL_NONE;
            SetActives();
        }
    } else if (buttonpresspointactive >= 0) {
        DragPoint();
    } else if (buttonpressstripeactive >= 0) {
        DragStripe();
    } else if (!pressmissed) {
        MouseRotate(leftstart.startx, leftstart.starty, mouse[0], mouse[1]);
    }
    rdstate |= redrawwanted;
    StartNextStep(leftstart);
}

static void MiddleDraw()
{
    if (IsFarEnough(middlestart)) {
        ChangePosition(middlestart.startx, middlestart.starty, 0, gmouse[0], gmouse[1], 0);
        StartNextStep(middlestart);
    }
}

int ButtonRelease(GtkWidget*, GdkEventButton* event)
{
    const guint button = GetButtonBit(event->button);
    const bool pressed = (heldbuttons & button) != 0; // else a menu took the press and went with it
    heldbuttons &= ~button;
    if (!pressed || mstate == POINTER_IDLE) {
        return TRUE;
    }
    if (event->button == LEFT) {
        if (mstate == LEFT_DOWN) {
            LeftPressed();
        } else {
            LeftDraw(true);
        }
        mstate = LEFT_RELEASED;
    } else if (event->button == MIDDLE) {
        if (mstate == MIDDLE_DOWN) {
            MiddlePressed();
        }
        mstate = MIDDLE_RELEASED;
    } else if (event->button == RIGHT) {
        if (mstate == RIGHT_DOWN) {
            RightPressed(event);
        }
        mstate = RIGHT_RELEASED; // a right drag thus suppresses the menu
    }
    return TRUE;
}

static void PrintPosition()
{
    const bool overpoint = activepointer != nullptr && activepointer->type == ELEMENT_POINT;
    float place[1][3];
    std::copy_n(overpoint ? activepointer->position : gmouse, 3, place[0]);
    ReTransferPoints(&mainview, place, 1);
    char text[160];
    std::snprintf(text, sizeof text, " X: %8.4f\t Y: %8.4f\t Z: %8.4f", place[0][0], place[0][1],
                  place[0][2]);
    PrintStatusBar(text);
}

// Motion without a drag.
static void LetConstructionFollow()
{
    if (IsUnderConstruction()) {
        rdstate |= redrawwanted;
    }
}

// Turns a press into a drag when it has gone far or lasted long. False while it may still be a
// click.
static bool BecomesDrag(const GdkEventMotion* event)
{
    const double distance = std::hypot(event->x - buttonpressx, event->y - buttonpressy);
    return distance > dragdistance || runtime - presstime > dragticks;
}

static void StepPointerState(const GdkEventMotion* event)
{
    switch (mstate) {
    case LEFT_DOWN:
        if (BecomesDrag(event)) {
            mstate = LEFT_DRAG;
            LeftDraw(false);
        }
        break;
    case RIGHT_DOWN:
        if (BecomesDrag(event)) {
            mstate = RIGHT_DRAG;
        }
        break;
    case MIDDLE_DOWN:
        if (BecomesDrag(event)) {
            mstate = MIDDLE_DRAG;
            MiddleDraw();
        }
        break;
    case LEFT_DRAG:
        LeftDraw(false);
        break;
    case MIDDLE_DRAG:
        MiddleDraw();
        break;
    case RIGHT_DRAG: // a right drag does nothing
        break;
    default:
        LetConstructionFollow();
    }
}

int MouseMov(GtkWidget*, GdkEventMotion* event)
{
    PointAt(event->x, event->y);
    PrintPosition();
    EndLostPresses(event->state);
    StepPointerState(event);
    return FALSE;
}

int MouseScroll(GtkWidget*, GdkEventScroll* event)
{
    if (event->direction == GDK_SCROLL_UP || event->direction == GDK_SCROLL_DOWN) {
        PointAt(event->x, event->y); // no motion need have come before
        ChangeScale(event->direction == GDK_SCROLL_UP);
    }
    rdstate |= redrawwanted;
    return TRUE;
}

int GetPressedShape()
{
    for (const Location& place :
         {LocateSide(buttonpresssideactive), LocateStripe(buttonpressstripeactive),
          LocatePoint(buttonpresspointactive)}) {
        if (place.shape >= 0) {
            return place.shape;
        }
    }
    return -1;
}

} // namespace korvane
