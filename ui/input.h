// The pointer over the view: a click is told from a drag, and what happens depends on the button
// and on the element under the pointer.
#pragma once

typedef struct _GtkWidget GtkWidget;
typedef struct _GdkEventButton GdkEventButton;
typedef struct _GdkEventMotion GdkEventMotion;
typedef struct _GdkEventScroll GdkEventScroll;

namespace korvane
{

// States of mstate: for each button, down but not yet a drag, released, and dragging.
enum PointerState {
    POINTER_IDLE = 0,
    LEFT_DOWN = 1,
    LEFT_RELEASED = 2,
    LEFT_DRAG = 3,
    RIGHT_DOWN = 4,
    RIGHT_RELEASED = 5,
    RIGHT_DRAG = 6,
    MIDDLE_DOWN = 7,
    MIDDLE_RELEASED = 8,
    MIDDLE_DRAG = 9
};

extern int mstate;         // a PointerState
extern float buttonpressx; // where the last press was, in pixels of the window
extern float buttonpressy;
extern float buttonpressgx; // and in view coordinates, as placed by gmouse
extern float buttonpressgy;
extern int presstime; // runtime at the last press

// Handlers of the drawing area. Motion is passed on, the others are handled.
int ButtonPress(GtkWidget* widget, GdkEventButton* event);
int ButtonRelease(GtkWidget* widget, GdkEventButton* event);
int MouseMov(GtkWidget* widget, GdkEventMotion* event);
int MouseScroll(GtkWidget* widget, GdkEventScroll* event);

// A click that goes to the polygon or path under construction; `action` is a ClickAction. Asks for
// a redraw.
void ClickConstruction(int action);

// The shape of the side, the stripe or the point that was pressed last, asked for in this order; -1
// without one.
int GetPressedShape();

// Ends whatever the pointer has begun: what is under construction, a tool, a drag. For those who
// take shapes away or put others into their places; they rebuild the active elements afterwards.
void EndPointerActions();

} // namespace korvane
