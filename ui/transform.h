// The transform tools' dialogs, whose sliders turn or scale the live shapes, and what every
// transform tool works on. mainview.action names the tool; a dialog puts it back to none.
#pragma once

typedef struct _GtkRange GtkRange;

namespace korvane
{

// Sets srshapenumber and srsidenumber for the tool in force: from what was under the pointer at the
// press that opened the menu, or to -1 for a tool that works on the selection. False when the press
// met nothing that the tool could work on.
bool FindTransformTarget();

// Run until they are answered. OK keeps what the sliders have done, as one undo step; every other
// answer restores the shapes. Without a target nothing is asked.
void RotateDialog();
void ScaleDialog();

// Handler of a slider's "change-value": applies what the value differs from the one that was
// applied last. The user data is a code: 1 to 3 turn the side about x, y and z, 4 to 6 the shape, 7
// to 9 the selection; 10 to 13 scale the side along all axes, x, y and z, 14 to 17 the shape, 18 to
// 21 the selection; 0 forgets the values applied. Always false: the slider moves.
int ScaleChangeValue(GtkRange* range, int scroll, double value, void* code);

} // namespace korvane
