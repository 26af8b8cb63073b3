// The pointer over the view and the keys of the window: a click is told from a drag, and what
// happens depends on the button and on the element under the pointer. The widgets that the pointer
// and the keys work on are filled by GetMainWindow and null before.
#pragma once

typedef struct _GtkWidget GtkWidget;
typedef struct _GdkEventButton GdkEventButton;
typedef struct _GdkEventMotion GdkEventMotion;
typedef struct _GdkEventScroll GdkEventScroll;
typedef struct _GdkEventKey GdkEventKey;

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

// The transform tools that mainview.action can hold; 0 is none.
enum Tool {
    TOOL_NONE = 0,
    MOVE_SIDE = 1,
    ROTATE_SIDE = 2,
    SCALE_SIDE = 3,
    MOVE_SHAPE = 4,
    ROTATE_SHAPE = 5,
    SCALE_SHAPE = 6,
    MOVE_SELECTED = 7,
    ROTATE_SELECTED = 8,
    SCALE_SELECTED = 9
};

extern int mstate;         // a PointerState
extern float buttonpressx; // where the last press was, in pixels of the window
extern float buttonpressy;
extern float buttonpressgx; // and in view coordinates, as placed by gmouse
extern float buttonpressgy;
extern int presstime;               // runtime at the last press
extern int buttonpresspointactive;  // what was under the pointer then: an index into activepoints,
extern int buttonpressstripeactive; // activestripes
extern int buttonpresssideactive;   // or activesides; -1 for none
extern int srshapenumber;           // the shape that a move tool works on, -1 for none
extern int srsidenumber;            // and its side
extern char keyspace;               // 1 while the space bar is held
extern char toolsign; // 1 while a check item is set by the program, whose handler ignores it

extern GtkWidget* toolbutton_gradient; // the buttons that keys press
extern GtkWidget* toolbutton_full;
extern GtkWidget* toolbutton_wire;

// Handlers of the drawing area. Motion is passed on, the others are handled.
int ButtonPress(GtkWidget* widget, GdkEventButton* event);
int ButtonRelease(GtkWidget* widget, GdkEventButton* event);
int MouseMov(GtkWidget* widget, GdkEventMotion* event);
int MouseScroll(GtkWidget* widget, GdkEventScroll* event);

// Handlers of the main window, connected swapped. Keys that are bound are handled, others passed
// on.
int KeyPress(void* data, GdkEventKey* event);
int KeyRelease(void* data, GdkEventKey* event);

// Menu handler: takes up a transform tool, a Tool in the user data. A move waits for the next left
// drag.
void ActionType(GtkWidget* item, void* tool);

// A click that goes to the polygon or path under construction; `action` is a ClickAction. Asks for
// a redraw.
void ClickConstruction(int action);

// The shape of the side, the stripe or the point that was pressed last, asked for in this order; -1
// without one.
int GetPressedShape();

// The elements under the last press are no longer those of the lists.
void ForgetPressedElements();

// Ends whatever the pointer has begun: what is under construction, a tool, a drag. For those who
// take shapes away or put others into their places; they rebuild the active elements afterwards.
void EndPointerActions();

} // namespace korvane
