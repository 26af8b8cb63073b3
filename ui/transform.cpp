#include "ui/transform.h"

#include "geometry/transforms.h"
#include "scene/arrays.h"
#include "scene/locate.h"
#include "scene/model.h"
#include "scene/treeview.h"
#include "scene/undo.h"
#include "ui/dialogs.h"
#include "ui/input.h"
#include "ui/modaldialog.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace korvane
{

int srshapenumber = -1;
int srsidenumber = -1;

static constexpr int marknumber = 9; // below each slider

// What the sliders of a dialog have in common.
struct SliderKind {
    double reach; // from -reach to reach
    double step;
    int digits;
    double markstep;
    const char* marks[marknumber];
};

static constexpr SliderKind anglekind = {
    180,
    0.1,
    1,
    45,
    {"<small><small>-180°</small></small>", "<small><small><small>-135°</small></small></small>",
     "<small><small>-90°</small></small>", "<small><small><small>-45°</small></small></small>",
     "<small>0°</small>", "<small><small><small>45°</small></small></small>",
     "<small><small>90°</small></small>", "<small><small><small>135°</small></small></small>",
     "<small><small>180°</small></small>"}};

// Deliberate: degree signs on exponents.
static constexpr SliderKind exponentkind = {
    4,
    0.01,
    2,
    1,
    {"<small><small>-4°</small></small>", "<small><small><small>-3°</small></small></small>",
     "<small><small>-2°</small></small>", "<small><small><small>-1°</small></small></small>",
     "<small>0°</small>", "<small><small><small>1°</small></small></small>",
     "<small><small>2°</small></small>", "<small><small><small>3°</small></small></small>",
     "<small><small>4°</small></small>"}};

// A shape as it was before the dialog.
struct FormerShape {
    int index;
    OwnedShape shape;
    OwnedShape round; // its rounded version
};

static bool IsOneOf(int tool, int a, int b, int c)
{
    return tool == a || tool == b || tool == c;
}

// False when the press met nothing that the tool in force could work on.
static bool FindTransformTarget()
{
    srshapenumber = -1;
    srsidenumber = -1;
    const int tool = mainview.action;
    if (IsOneOf(tool, MOVE_SELECTED, ROTATE_SELECTED, SCALE_SELECTED)) {
        return true;
    }
    srsidenumber = LocateSide(buttonpresssideactive).index;
    srshapenumber = GetPressedShape();
    const bool needsside = IsOneOf(tool, MOVE_SIDE, ROTATE_SIDE, SCALE_SIDE);
    return needsside ? srsidenumber >= 0 : srshapenumber >= 0;
}

static void RotateByCode(int code, double degrees, int axis)
{
    if (code < TURN_SHAPE) {
        SideRotate(srshapenumber, srsidenumber, degrees, axis);
    } else if (code < TURN_SELECTED) {
        ShapeRotate(srshapenumber, degrees, axis);
    } else {
        SelectedRotate(degrees, axis);
    }
}

static void ScaleByCode(int code, double factor, int axis)
{
    if (code < STRETCH_SHAPE) {
        SideScale(srshapenumber, srsidenumber, factor, axis);
    } else if (code < STRETCH_SELECTED) {
        ShapeScale(srshapenumber, factor, axis);
    } else {
        SelectedScale(factor, axis);
    }
}

int ScaleChangeValue(GtkRange*, int, double value, void* data)
{
    static double remembered[4] = {}; // applied last: the slider of all axes, then x, y and z
    const int code = GPOINTER_TO_INT(data);
    if (code == FORGET_VALUES) {
        std::fill_n(remembered, 4, 0.0);
        return FALSE;
    }
    if (code < STRETCH_SIDE) {
        const int axis = (code - TURN_SIDE) % 3;
        RotateByCode(code, value - remembered[axis + 1], axis);
        remembered[axis + 1] = value;
    } else if (code < CODES_END) {
        const int axis = (code - STRETCH_SIDE) % 4;
        ScaleByCode(code, std::exp2(value - remembered[axis]), axis);
        remembered[axis] = value;
    }
    rdstate |= redrawwanted;
    return FALSE;
}

static void AddSlider(GtkWidget* box, const SliderKind& kind, const char* markup, int code)
{
    GtkWidget* slider = gtk_hscale_new_with_range(-kind.reach, kind.reach, kind.step);
    gtk_range_set_value(GTK_RANGE(slider), 0);
    gtk_scale_set_digits(GTK_SCALE(slider), kind.digits);
    gtk_widget_set_size_request(slider, 360, -1);
    for (int i = 0; i < marknumber; i++) {
        gtk_scale_add_mark(GTK_SCALE(slider), -kind.reach + i * kind.markstep, GTK_POS_BOTTOM,
                           kind.marks[i]);
    }
    g_signal_connect(slider, "change-value", G_CALLBACK(ScaleChangeValue), GINT_TO_POINTER(code));
    GtkWidget* row = gtk_hbox_new(FALSE, 0);
    gtk_container_add(GTK_CONTAINER(row), MakeMarkupLabel(markup));
    gtk_container_add(GTK_CONTAINER(row), slider);
    gtk_container_add(GTK_CONTAINER(box), row);
}

// A dialog with an empty vertical box, which is handed over through `box`.
static Dialog MakeTransformDialog(const char* title, bool homogeneous, int spacing, GtkWidget** box)
{
    Dialog dialog = MakeFixedDialog(title, GTK_STOCK_OK);
    gtk_window_set_type_hint(GTK_WINDOW(dialog.get()), GDK_WINDOW_TYPE_HINT_NORMAL);
    *box = gtk_vbox_new(homogeneous, spacing);
    gtk_container_set_border_width(GTK_CONTAINER(*box), 10);
    gtk_container_add(GetContentOf(dialog), *box);
    return dialog;
}

static std::vector<FormerShape> CopyTargets()
{
    int count = 1;
    const Block<int[]> selection = srshapenumber < 0 ? GetSelectedShapes(&count) : nullptr;
    std::vector<FormerShape> former;
    for (int i = 0; i < count; i++) {
        const int index = selection != nullptr ? selection[std::size_t(i)] : srshapenumber;
        former.push_back(
            {index, OwnedShape(CopyShape(shapes[index])), OwnedShape(CopyShape(round1[index]))});
    }
    return former;
}

static void TradePlaces(Shape*& live, OwnedShape& copy)
{
    OwnedShape former(live);
    live = copy.release();
    copy = std::move(former);
}

// The live shapes and the copies trade places, their rounded versions too.
static void TradePlaces(std::vector<FormerShape>& former)
{
    for (FormerShape& one : former) {
        TradePlaces(shapes[one.index], one.shape);
        TradePlaces(round1[one.index], one.round);
    }
}

// The view copies of a shape and of its rounded version that came back as they had been: deriving
// them anew could change their last bits.
static void CopyVersionsForView(int index)
{
    DeleteShape(shapest[index]);
    DeleteShape(round1t[index]);
    shapest[index] = CopyShape(shapes[index]);
    round1t[index] = CopyShape(round1[index]);
}

// Saves the scene as it was before the dialog, then takes up the transformed shapes again.
static void KeepTransformed(std::vector<FormerShape>& former)
{
    if (srshapenumber < 0) {
        PushScene();
    } else {
        PushShape(srshapenumber);
    }
    TradePlaces(former);
    for (const FormerShape& one : former) {
        ChangeShape(one.index);
    }
}

static void EndTransform(std::vector<FormerShape>& former, bool keep)
{
    TradePlaces(former);
    if (keep) {
        KeepTransformed(former);
    }
    for (const FormerShape& one : former) {
        if (!keep) {
            CopyVersionsForView(one.index);
        }
    }
    mainview.action = TOOL_NONE; // before the records, which could not be picked otherwise
    if (srshapenumber < 0) {
        TransferAllShape();
    } else {
        TransferOneShape(srshapenumber);
    }
    SetActives();
    rdstate |= redrawwanted;
}

static void RunTransform(Dialog dialog)
{
    ScaleChangeValue(nullptr, 0, 0, GINT_TO_POINTER(FORGET_VALUES));
    std::vector<FormerShape> former = CopyTargets();
    rdstate |= redrawwanted;
    gtk_widget_show_all(dialog.get());
    const bool keep = gtk_dialog_run(GTK_DIALOG(dialog.get())) == GTK_RESPONSE_OK;
    dialog.reset();
    EndTransform(former, keep);
}

static void RotateDialog()
{
    const int tool = mainview.action;
    const char* title = tool == ROTATE_SIDE    ? "Rotate side"
                        : tool == ROTATE_SHAPE ? "Rotate shape"
                                               : "Rotate selected";
    const int code = tool == ROTATE_SIDE    ? TURN_SIDE
                     : tool == ROTATE_SHAPE ? TURN_SHAPE
                                            : TURN_SELECTED;
    GtkWidget* box;
    Dialog dialog = MakeTransformDialog(title, true, 10, &box);
    AddSlider(box, anglekind, "<b> X axis: </b>", code);
    AddSlider(box, anglekind, "<b> Y axis: </b>", code + 1);
    AddSlider(box, anglekind, "<b> Z axis: </b>", code + 2);
    RunTransform(std::move(dialog));
}

static void ScaleDialog()
{
    const int tool = mainview.action;
    const int code = tool == SCALE_SIDE    ? STRETCH_SIDE
                     : tool == SCALE_SHAPE ? STRETCH_SHAPE
                                           : STRETCH_SELECTED;
    GtkWidget* box;
    // Deliberate: the title names the selection for a side and for a shape too.
    Dialog dialog = MakeTransformDialog("Scale selected", false, 0, &box);
    AddSlider(box, exponentkind, "<b> A: </b>", code);
    gtk_container_add(GTK_CONTAINER(box), gtk_hseparator_new());
    AddSlider(box, exponentkind, "<b> X: </b>", code + 1);
    AddSlider(box, exponentkind, "<b> Y: </b>", code + 2);
    AddSlider(box, exponentkind, "<b> Z: </b>", code + 3);
    RunTransform(std::move(dialog));
}

static void StartMove()
{
    if (mainview.action == MOVE_SELECTED) {
        PushScene();
    } else {
        PushShape(srshapenumber);
    }
    PrintStatusBar(" Drag with the left button to move");
}

void ActionType(GtkWidget*, void* data)
{
    const int tool = GPOINTER_TO_INT(data);
    mainview.action = tool;
    SetActivesOff();
    if (!FindTransformTarget()) {
        mainview.action = TOOL_NONE;
        SetActives();
    } else if (IsOneOf(tool, ROTATE_SIDE, ROTATE_SHAPE, ROTATE_SELECTED)) {
        RotateDialog();
    } else if (IsOneOf(tool, SCALE_SIDE, SCALE_SHAPE, SCALE_SELECTED)) {
        ScaleDialog();
    } else {
        StartMove();
    }
}

} // namespace korvane
