// The modal dialogs of the main window, as those who build them share them.
#pragma once

#include <gtk/gtk.h>

#include <memory>

namespace korvane
{

struct DialogDeleter {
    void operator()(GtkWidget* dialog) const
    {
        gtk_widget_destroy(dialog);
        g_object_unref(dialog);
    }
};
using Dialog = std::unique_ptr<GtkWidget, DialogDeleter>;

// Holds a reference beside the toolkit's: a dialog may be destroyed while it runs, by what it waits
// for or along with the main window.
inline Dialog HoldDialog(GtkWidget* dialog)
{
    g_object_ref(dialog);
    return Dialog(dialog);
}

// An empty one with a cancel button and, unless that is null, an accept button. It runs with
// gtk_dialog_run and goes with what is returned.
Dialog MakeModalDialog(const char* title, const char* acceptbutton);

// The same, of a size that stays, and in neither the task bar nor the pager.
Dialog MakeFixedDialog(const char* title, const char* acceptbutton);

GtkWidget* MakeMarkupLabel(const char* markup);

inline GtkContainer* GetContentOf(const Dialog& dialog)
{
    return GTK_CONTAINER(gtk_dialog_get_content_area(GTK_DIALOG(dialog.get())));
}

} // namespace korvane
