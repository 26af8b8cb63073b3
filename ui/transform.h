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

// Handler of a slider's "change-value": applies what the value differs from the one that was
// applied last. The user data is a code: 1 to 3 turn the side about x, y and z, 4 to 6 the shape, 7
// to 9 the selection; 10 to 13 scale the side along all axes, x, y and z, 14 to 17 the shape, 18 to
// 21 the selection; 0 forgets the values applied. Always false: the slider moves.
int ScaleChangeValue(GtkRange* range, int scroll, double value, void* code);

} // namespace korvane
