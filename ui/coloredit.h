// The dialog that edits the colours and the visibility of sides: of one side, of a shape or of the
// selected shapes. Whatever is changed in it shows in the view at once. OK keeps it as one undo
// step, anything else brings every side back.
#pragma once

typedef struct _GtkWidget GtkWidget;
typedef struct _GtkToggleButton GtkToggleButton;
typedef struct _GtkColorSelection GtkColorSelection;
typedef struct _GtkRange GtkRange;

namespace korvane
{

struct Side;

// While the dialog is open.
extern Side** csides;        // owned array, borrowed sides; each edited side as in shapes, round1,
extern int csidenumber;      // shapest and round1t; the first is the master; and the array's length
extern GtkWidget* getcvbox1; // the page of the front face
extern GtkWidget* getcvbox2; // and of the back face

// Runs the dialog for a side of a shape, with side -1 for all sides of the shape, with shape -1 for
// all sides of the selected shapes. Returns at once when that is no side.
void GetColor(const char* title, int shape, int side);

// Gives every side of csides the master's visibility and colours.
void SetVisibilityAndColor();

// Handlers of the dialog; `which` is a number. Each changes the master and then all sides.
// 1 front, 2 back
void ToggledVisibility(GtkToggleButton* button, void* which);
// 1 and 2 light and shadow of the front, 3 and 4 those of the back
void ChangeColor(GtkColorSelection* selection, void* which);
// 1 front, 2 back
int ChangeAcuity(GtkRange* range, int scroll, double value, void* which);

// Menu handlers: the side that was pressed, the shape of what was pressed or else the selection,
// the selection.
void ColorSide();
void ColorShape();
void ColorSelected();

} // namespace korvane
