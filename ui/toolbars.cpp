#include "ui/toolbars.h"

#include "export/image.h"
#include "geometry/construction.h"
#include "geometry/newpoints.h"
#include "scene/objexport.h"
#include "scene/scenefile.h"
#include "scene/treeedit.h"
#include "scene/undo.h"
#include "ui/iconimage.h"
#include "ui/keys.h"
#include "ui/viewtoggles.h"
#include "view/cameraflight.h"
#include "view/mainview.h"
#include "view/selectedfit.h"

#include <gtk/gtk.h>

#include <span>
#include <string>

namespace korvane
{

GtkWidget* labelfile = nullptr;
GtkWidget* labeledit = nullptr;
GtkWidget* labelview = nullptr;

enum ButtonKind {
    BUTTON_PLAIN,
    BUTTON_TOGGLE,
    BUTTON_PRESSED,    // a toggle that is pressed at the start
    BUTTON_FIRSTRADIO, // opens a group, and is the one that is pressed at the start
    BUTTON_RADIO,      // of the same group as the button before it
    BUTTON_SEPARATOR
};

struct ButtonRow {
    ButtonKind kind;
    const char* icon = nullptr;    // a constant, for MakeIconImage
    const char* tooltip = nullptr; // a constant
    GCallback handler = nullptr;   // of "clicked" for a plain button, else of "toggled"
    int data = 0;                  // handed to the handler
    GtkWidget** global = nullptr;  // borrowed; where other modules find the button
};

static const ButtonRow filebuttons[] = {
    {BUTTON_PLAIN, "gtk-new", "New", G_CALLBACK(New)},
    {BUTTON_PLAIN, "gtk-open", "Open", G_CALLBACK(Open)},
    {BUTTON_PLAIN, "gtk-save", "Save", G_CALLBACK(Save)},
    {BUTTON_PLAIN, "gtk-save-as", "Save as...", G_CALLBACK(SaveAs)},
    {BUTTON_SEPARATOR},
    {BUTTON_PLAIN, "image2.png", "Create image...", G_CALLBACK(CreateImage)},
    {BUTTON_PLAIN, "gtk-convert", "Export selected wavefront obj format...", G_CALLBACK(SaveObj)},
};

static const ButtonRow editbuttons[] = {
    {BUTTON_TOGGLE, "gtk-new", "New shape... Key: N", G_CALLBACK(NewShape), 0, &toolbutton_news},
    {BUTTON_PLAIN, "gtk-directory", "New folder...", G_CALLBACK(NewFolder)},
    {BUTTON_PLAIN, "gtk-delete", "Delete selected Key: Del", G_CALLBACK(DelSelected)},
    {BUTTON_SEPARATOR},
    {BUTTON_PLAIN, "gtk-undo", "Undo", G_CALLBACK(Undo), 0, &toolbutton_undo},
};

static const ButtonRow viewbuttons[] = {
    {BUTTON_FIRSTRADIO, "cube.png", "Background cube", G_CALLBACK(BgShape), BACKGROUND_CUBE},
    {BUTTON_RADIO, "plane.png", "Background plane", G_CALLBACK(BgShape), BACKGROUND_PLANE},
    {BUTTON_RADIO, "empty.png", "Background empty", G_CALLBACK(BgShape), BACKGROUND_NONE},
    {BUTTON_SEPARATOR},
    {BUTTON_TOGGLE, "gradient.png", "Gradient", G_CALLBACK(Gradient), 0, &toolbutton_gradient},
    {BUTTON_TOGGLE, "image.png", "Background image...", G_CALLBACK(ImageBg)},
    {BUTTON_PRESSED, "smallcube.png", "Show small cube", G_CALLBACK(SmallCube)},
    {BUTTON_TOGGLE, "centerlines.png", "Show centerlines", G_CALLBACK(CenterLines)},
    {BUTTON_SEPARATOR},
    {BUTTON_FIRSTRADIO, "shapeandwire.png", "Show shape and wire", G_CALLBACK(ShowShape),
     SHAPE_BOTH, &toolbutton_full},
    {BUTTON_RADIO, "shape.png", "Show only shape", G_CALLBACK(ShowShape), SHAPE_SIDES},
    {BUTTON_RADIO, "wire.png", "Show only wire", G_CALLBACK(ShowShape), SHAPE_LINES,
     &toolbutton_wire},
    {BUTTON_SEPARATOR},
    {BUTTON_PRESSED, "selected.png", "Show only selected shape", G_CALLBACK(OnlySelected)},
    {BUTTON_TOGGLE, "perspective.png", "Perspective", G_CALLBACK(Perspective)},
    {BUTTON_SEPARATOR},
    {BUTTON_PLAIN, "zoomfit.png", "Zoom fit", G_CALLBACK(ZoomFit)},
    {BUTTON_PLAIN, "startposition.png", "Set start position", G_CALLBACK(SetStart)},
};

static GtkToolItem* MakeItemOfKind(ButtonKind kind, GtkToolItem* before)
{
    switch (kind) {
    case BUTTON_SEPARATOR:
        return gtk_separator_tool_item_new();
    case BUTTON_PLAIN:
        return gtk_tool_button_new(nullptr, nullptr);
    case BUTTON_FIRSTRADIO:
        return gtk_radio_tool_button_new(nullptr);
    case BUTTON_RADIO:
        return gtk_radio_tool_button_new_from_widget(GTK_RADIO_TOOL_BUTTON(before));
    default:
        return gtk_toggle_tool_button_new();
    }
}

// Dresses the button and connects its command, last, so that being pressed at the start calls
// nobody.
static void SetUpButton(GtkToolItem* item, const ButtonRow& row)
{
    gtk_tool_button_set_icon_widget(GTK_TOOL_BUTTON(item),
                                    MakeIconImage(row.icon, GTK_ICON_SIZE_LARGE_TOOLBAR));
    gtk_tool_item_set_tooltip_text(item, row.tooltip);
    if (row.kind == BUTTON_PRESSED) {
        gtk_toggle_tool_button_set_active(GTK_TOGGLE_TOOL_BUTTON(item), TRUE);
    }
    if (row.global != nullptr) {
        *row.global = GTK_WIDGET(item);
    }
    g_signal_connect(item, row.kind == BUTTON_PLAIN ? "clicked" : "toggled", row.handler,
                     GINT_TO_POINTER(row.data));
}

static GtkWidget* MakeToolbar(std::span<const ButtonRow> rows)
{
    GtkToolbar* toolbar = GTK_TOOLBAR(gtk_toolbar_new());
    gtk_toolbar_set_style(toolbar, GTK_TOOLBAR_ICONS);
    gtk_toolbar_set_tooltips(toolbar, TRUE);
    gtk_toolbar_set_icon_size(toolbar, GTK_ICON_SIZE_LARGE_TOOLBAR);
    GtkToolItem* before = nullptr;
    for (const ButtonRow& row : rows) {
        GtkToolItem* item = MakeItemOfKind(row.kind, before);
        if (row.kind != BUTTON_SEPARATOR) {
            SetUpButton(item, row);
        }
        gtk_toolbar_insert(toolbar, item, -1);
        before = item;
    }
    return GTK_WIDGET(toolbar);
}

static void SetTabLabel(GtkWidget* label, const char* text, bool front)
{
    const std::string markup = std::string("<span font='Courier New Bold 12' foreground ='") +
                               (front ? "#000000" : "#909090") + "'> " + text + " </span>";
    gtk_label_set_markup(GTK_LABEL(label), markup.c_str());
}

static void SetTabLabels(unsigned int front)
{
    SetTabLabel(labelfile, "File", front == 0);
    SetTabLabel(labeledit, "Edit", front == 1);
    SetTabLabel(labelview, "View", front == 2);
}

void ChangeMenuTab(GtkNotebook*, void*, unsigned int pagenumber)
{
    if (pagenumber <= 2) {
        SetTabLabels(pagenumber);
    }
    gtk_widget_show(labelfile);
    gtk_widget_show(labeledit);
    gtk_widget_show(labelview);
}

GtkWidget* MakeNotebook()
{
    GtkNotebook* notebook = GTK_NOTEBOOK(gtk_notebook_new());
    labelfile = gtk_label_new(nullptr);
    labeledit = gtk_label_new(nullptr);
    labelview = gtk_label_new(nullptr);
    gtk_notebook_append_page(notebook, MakeToolbar(filebuttons), labelfile);
    gtk_notebook_append_page(notebook, MakeToolbar(editbuttons), labeledit);
    gtk_notebook_append_page(notebook, MakeToolbar(viewbuttons), labelview);
    SetTabLabels(0);
    gtk_widget_set_sensitive(toolbutton_undo, FALSE); // until something can be undone
    return GTK_WIDGET(notebook);
}

} // namespace korvane
