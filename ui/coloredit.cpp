#include "ui/coloredit.h"

#include "scene/arrays.h"
#include "scene/locate.h"
#include "scene/model.h"
#include "scene/treeview.h"
#include "scene/undo.h"
#include "ui/input.h"
#include "ui/modaldialog.h"
#include "view/frameloop.h"
#include "view/picking.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <vector>

namespace korvane
{

Side** csides = nullptr;
int csidenumber = 0;
GtkWidget* getcvbox1 = nullptr;
GtkWidget* getcvbox2 = nullptr;

static constexpr int versions = 4; // entries of csides for each edited side
static constexpr double greatestchannel = 65535.0;

// What of a side the dialog edits.
struct Look {
    int visibility;
    float colors[colornumber];
};

static Look GetLook(const Side& side)
{
    Look look = {side.visibility, {}};
    std::copy_n(side.colors, colornumber, look.colors);
    return look;
}

static void SetLook(Side& side, const Look& look)
{
    side.visibility = look.visibility;
    std::copy_n(look.colors, colornumber, side.colors);
}

// The controls of the face on one page.
struct Page {
    GtkWidget* box;
    GtkToggleButton* visible;
    GtkColorSelection* light;
    GtkColorSelection* shadow;
    GtkRange* acuity;
};

static void AddEditedSide(int shape, int side)
{
    GrowArray(csides, csidenumber, csidenumber + versions);
    for (Shape** version : {shapes, round1, shapest, round1t}) {
        csides[csidenumber++] = &version[shape]->sides[side];
    }
}

static void AddEditedShape(int shape)
{
    for (int side = 0; side < shapes[shape]->sidenumber; side++) {
        AddEditedSide(shape, side);
    }
}

static void CollectSides(int shape, int side)
{
    if (shape >= 0 && side >= 0) {
        AddEditedSide(shape, side);
    } else if (shape >= 0) {
        AddEditedShape(shape);
    } else {
        int number = 0;
        const Block<int[]> indices = GetSelectedShapes(&number);
        for (int i = 0; i < number; i++) {
            AddEditedShape(indices[std::size_t(i)]);
        }
    }
}

static std::vector<Look> GetLooks()
{
    std::vector<Look> looks;
    for (int i = 0; i < csidenumber; i += versions) {
        looks.push_back(GetLook(*csides[i]));
    }
    return looks;
}

static void RestoreLooks(const std::vector<Look>& looks)
{
    for (int i = 0; i < csidenumber; i++) {
        SetLook(*csides[i], looks[std::size_t(i / versions)]);
    }
}

// The mean colours; the visibility is that of the first side.
static Look GetMeanLook(const std::vector<Look>& looks)
{
    Look mean = looks.front();
    for (int k = 0; k < colornumber; k++) {
        double sum = 0;
        for (const Look& look : looks) {
            sum += double(look.colors[k]);
        }
        mean.colors[k] = float(sum / double(looks.size()));
    }
    return mean;
}

void SetVisibilityAndColor()
{
    const Look look = GetLook(*csides[0]);
    for (int i = 1; i < csidenumber; i++) {
        SetLook(*csides[i], look);
    }
}

// What every change ends with.
static void ShowChange()
{
    SetVisibilityAndColor();
    rdstate |= redrawwanted;
}

void ToggledVisibility(GtkToggleButton* button, void* which)
{
    const bool front = GPOINTER_TO_INT(which) == 1;
    const int bit = front ? VISIBLE_FRONT : VISIBLE_BACK;
    const bool visible = gtk_toggle_button_get_active(button) != FALSE;
    Side& master = *csides[0];
    master.visibility = visible ? master.visibility | bit : master.visibility & ~bit;
    gtk_widget_set_sensitive(front ? getcvbox1 : getcvbox2, visible ? TRUE : FALSE);
    ShowChange();
}

void ChangeColor(GtkColorSelection* selection, void* which)
{
    static constexpr ColorPlace places[] = {FRONT_LIGHT, FRONT_SHADOW, BACK_LIGHT, BACK_SHADOW};
    GdkColor color;
    gtk_color_selection_get_current_color(selection, &color);
    const guint16 channels[] = {color.red, color.green, color.blue,
                                gtk_color_selection_get_current_alpha(selection)};
    float* place = csides[0]->colors + places[GPOINTER_TO_INT(which) - 1];
    for (guint16 channel : channels) {
        *place++ = float(channel / greatestchannel);
    }
    ShowChange();
}

int ChangeAcuity(GtkRange*, int, double value, void* which)
{
    const ColorPlace place = GPOINTER_TO_INT(which) == 1 ? FRONT_ACUITY : BACK_ACUITY;
    csides[0]->colors[place] =
        float(std::clamp(value, 0.0, 1.0)); // a key may lead out of the range
    ShowChange();
    return FALSE; // the slider moves
}

static GtkColorSelection* AddColorFrame(GtkWidget* page, const char* markup)
{
    constexpr guint border = 5;
    GtkWidget* selection = gtk_color_selection_new();
    gtk_container_set_border_width(GTK_CONTAINER(selection), border);
    gtk_color_selection_set_has_opacity_control(GTK_COLOR_SELECTION(selection), TRUE);

    GtkWidget* alignment = gtk_alignment_new(0.5F, 0.5F, 1, 1);
    gtk_container_add(GTK_CONTAINER(alignment), selection);

    GtkWidget* frame = gtk_frame_new(nullptr);
    gtk_container_set_border_width(GTK_CONTAINER(frame), border);
    gtk_frame_set_label_widget(GTK_FRAME(frame), MakeMarkupLabel(markup));
    gtk_container_add(GTK_CONTAINER(frame), alignment);
    gtk_box_pack_start(GTK_BOX(page), frame, FALSE, TRUE, 0);
    return GTK_COLOR_SELECTION(selection);
}

static GtkRange* AddAcuitySlider(GtkWidget* page)
{
    GtkObject* adjustment = gtk_adjustment_new(1, 0, 1, 0.01, 0.1, 0);
    GtkWidget* slider = gtk_hscale_new(GTK_ADJUSTMENT(adjustment));
    gtk_scale_set_draw_value(GTK_SCALE(slider), TRUE);
    gtk_scale_set_value_pos(GTK_SCALE(slider), GTK_POS_RIGHT);
    gtk_scale_set_digits(GTK_SCALE(slider), 3);

    GtkWidget* row = gtk_hbox_new(FALSE, 0);
    gtk_box_pack_start(GTK_BOX(row), MakeMarkupLabel("<b> Acuity: </b>"), FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(row), slider, TRUE, TRUE, 0);
    gtk_box_pack_start(GTK_BOX(page), row, TRUE, TRUE, 0);
    return GTK_RANGE(slider);
}

// The check button and its text beside it.
static GtkWidget* MakeTab(GtkWidget* check, const char* markup)
{
    GtkWidget* label = gtk_label_new(nullptr);
    gtk_label_set_markup_with_mnemonic(GTK_LABEL(label), markup);
    gtk_label_set_mnemonic_widget(GTK_LABEL(label), check);
    GtkWidget* tab = gtk_hbox_new(FALSE, 2);
    gtk_box_pack_start(GTK_BOX(tab), check, FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(tab), label, FALSE, FALSE, 0);
    gtk_widget_show_all(tab); // a notebook shows its pages, not their tabs
    return tab;
}

static Page AddPage(GtkWidget* notebook, const char* markup)
{
    Page page = {};
    page.box = gtk_vbox_new(FALSE, 0);
    gtk_container_set_border_width(GTK_CONTAINER(page.box), 5);
    page.light = AddColorFrame(page.box, "<b> Light: </b>");
    page.shadow = AddColorFrame(page.box, "<b> Shadow: </b>");
    gtk_color_selection_set_has_palette(page.shadow, TRUE);
    page.acuity = AddAcuitySlider(page.box);
    GtkWidget* check = gtk_check_button_new();
    page.visible = GTK_TOGGLE_BUTTON(check);
    gtk_notebook_append_page(GTK_NOTEBOOK(notebook), page.box, MakeTab(check, markup));
    return page;
}

// Rounded to the nearest step; 1 stays the greatest.
static guint16 GetChannel(float component)
{
    return guint16(std::clamp(double(component) * greatestchannel + 0.5, 0.0, greatestchannel));
}

static void ShowColor(GtkColorSelection* selection, const float color[4])
{
    GdkColor shown = {};
    shown.red = GetChannel(color[0]);
    shown.green = GetChannel(color[1]);
    shown.blue = GetChannel(color[2]);
    gtk_color_selection_set_current_color(selection, &shown);
    gtk_color_selection_set_current_alpha(selection, GetChannel(color[3]));
}

// `colors` are those of the page's face.
static void ShowFace(const Page& page, bool visible, const float* colors)
{
    gtk_toggle_button_set_active(page.visible, visible ? TRUE : FALSE);
    gtk_widget_set_sensitive(page.box, visible ? TRUE : FALSE);
    ShowColor(page.light, colors + FRONT_LIGHT);
    ShowColor(page.shadow, colors + FRONT_SHADOW);
    gtk_range_set_value(page.acuity, double(colors[FRONT_ACUITY]));
}

static void Connect(void* control, const char* signal, GCallback handler, int which)
{
    g_signal_connect(control, signal, handler, GINT_TO_POINTER(which));
}

// `face` is 1 for the front, 2 for the back.
static void ConnectPage(const Page& page, int face)
{
    Connect(page.visible, "toggled", G_CALLBACK(ToggledVisibility), face);
    Connect(page.light, "color-changed", G_CALLBACK(ChangeColor), 2 * face - 1);
    Connect(page.shadow, "color-changed", G_CALLBACK(ChangeColor), 2 * face);
    Connect(page.acuity, "change-value", G_CALLBACK(ChangeAcuity), face);
}

static Dialog MakeDialog(const char* title)
{
    Dialog dialog = MakeFixedDialog(title, GTK_STOCK_OK);
    // Deliberate: a menu's hint.
    gtk_window_set_type_hint(GTK_WINDOW(dialog.get()), GDK_WINDOW_TYPE_HINT_MENU);
    return dialog;
}

// Shows the master in a dialog, which changes the sides. True when they are to stay as they are
// then.
static bool EditMaster(const char* title)
{
    const Dialog dialog = MakeDialog(title);
    GtkWidget* notebook = gtk_notebook_new();
    gtk_notebook_set_tab_pos(GTK_NOTEBOOK(notebook), GTK_POS_LEFT);
    gtk_notebook_set_show_border(GTK_NOTEBOOK(notebook), TRUE);
    gtk_box_pack_start(GTK_BOX(GetContentOf(dialog)), notebook, TRUE, TRUE, 0);
    const Page front = AddPage(notebook, "<b> Front\n visibility </b>");
    const Page back = AddPage(notebook, "<b> Back\n visibility </b>");
    getcvbox1 = front.box;
    getcvbox2 = back.box;
    gtk_widget_show_all(notebook);

    const Side& master = *csides[0];
    ShowFace(front, (master.visibility & VISIBLE_FRONT) != 0, master.colors);
    ShowFace(back, (master.visibility & VISIBLE_BACK) != 0, master.colors + BACK_LIGHT);
    ConnectPage(front, 1); // last, so that showing the master calls nobody
    ConnectPage(back, 2);
    const int response = gtk_dialog_run(GTK_DIALOG(dialog.get()));
    getcvbox1 = nullptr;
    getcvbox2 = nullptr;
    return response == GTK_RESPONSE_OK;
}

static void SaveForUndo(int shape)
{
    if (shape < 0) {
        PushScene();
    } else {
        PushShape(shape);
    }
}

static void EditSides(const char* title, int shape)
{
    const std::vector<Look> before = GetLooks();
    SetLook(*csides[0], GetMeanLook(before));
    ShowChange();
    const bool kept = EditMaster(title);
    const Look after = GetLook(*csides[0]);
    RestoreLooks(before);
    if (kept) {
        SaveForUndo(shape); // the sides as they were
        SetLook(*csides[0], after);
        SetVisibilityAndColor();
    }
    rdstate |= redrawwanted;
}

void GetColor(const char* title, int shape, int side)
{
    if (shape >= shapenumber || (shape >= 0 && side >= shapes[shape]->sidenumber)) {
        return;
    }
    CollectSides(shape, side);
    if (csidenumber > 0) {
        EditSides(title, shape);
    }
    FreeArray(csides);
    csidenumber = 0;
}

void ColorSide()
{
    if (buttonpresssideactive < 0) {
        return;
    }
    const Location place = LocateSide(buttonpresssideactive);
    if (place.shape >= 0) {
        GetColor("Color of side", place.shape, place.index);
    } else {
        // Deliberate: the command answers for every index that is not "none". One beyond all sides,
        // which no press leaves, gets the scene's first side.
        GetColor("Color of side", 0, 0);
    }
}

void ColorShape()
{
    GetColor("Color of shape", GetPressedShape(), -1);
}

void ColorSelected()
{
    GetColor("Color of selected", -1, -1);
}

} // namespace korvane
