// The transform tools: how one is taken up, what it works on, and the dialogs whose sliders turn or
// scale the live shapes. mainview.action names the tool in force. A dialog puts it away when it is
// answered, a move at the end of the next left drag; while it is in force no element of a shape can
// be picked.
#pragma once

typedef struct _GtkRange GtkRange;
typedef struct _GtkWidget GtkWidget;

namespace korvane
{

// What mainview.action can hold.
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

extern int srshapenumber; // the shape that the tool works on, -1 for none or for the selection
extern int srsidenumber;  // and its side

// Menu handler: takes up a tool, a Tool in the user data, for what was under the pointer at the
// press that opened the menu. A move saves its target and waits for the next left drag; the others
// run a dialog until it is answered: OK keeps what the sliders have done, as one undo step, every
// other answer restores the shapes. A tool that finds no target is put away at once.
void ActionType(GtkWidget* item, void* tool);

// What a slider does: the first of three codes that turn about x, y and z, or of four that scale
// along all axes, x, y and z.
enum SliderCode {
    FORGET_VALUES = 0,
    TURN_SIDE = 1,
    TURN_SHAPE = 4,
    TURN_SELECTED = 7,
    STRETCH_SIDE = 10,
    STRETCH_SHAPE = 14,
    STRETCH_SELECTED = 18,
    CODES_END = 22 // this one and those above do nothing
};

// Handler of a slider's "change-value": applies what the value differs from the one that was
// applied last. The user data is a SliderCode, or one of those that follow it. Always false: the
// slider moves.
int ScaleChangeValue(GtkRange* range, int scroll, double value, void* code);

} // namespace korvane
