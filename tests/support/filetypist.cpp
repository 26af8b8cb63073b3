#include "tests/support/filetypist.h"

#include "tests/support/widgets.h"

#include <utility>

namespace korvane::testing
{

GtkFileChooser* GetChooser(GtkDialog* dialog)
{
    return GTK_FILE_CHOOSER(FindWidget(GTK_WIDGET(dialog), GTK_TYPE_FILE_CHOOSER_WIDGET));
}

std::string TakeText(char* text)
{
    const std::string copy = GetText(text);
    g_free(text);
    return copy;
}

void Press(GtkDialog* dialog, int response)
{
    gtk_button_clicked(GTK_BUTTON(gtk_dialog_get_widget_for_response(dialog, response)));
}

// Types a path as a user does, who begins with "/": into the location entry, or that of the name.
// True when the path is the chooser's answer.
static bool TypeOnce(GtkDialog* dialog, const std::string& path)
{
    GtkWidget* inside = FindWidget(GTK_WIDGET(dialog), g_type_from_name("GtkFileChooserDefault"));
    const GType entrytype = g_type_from_name("GtkFileChooserEntry");
    GtkWidget* entry = FindWidget(inside, entrytype);
    if (entry == nullptr || !gtk_widget_get_mapped(entry)) {
        g_signal_emit_by_name(inside, "location-popup", "/");
        return false;
    }
    gtk_widget_grab_focus(entry);
    if (gtk_entry_get_text(GTK_ENTRY(entry)) != path) {
        gtk_entry_set_text(GTK_ENTRY(entry), path.c_str());
        return false;
    }
    return TakeText(gtk_file_chooser_get_filename(GetChooser(dialog))) == path;
}

Typist::Typist(std::string wanted) : path(std::move(wanted))
{
}

bool Typist::Type(GtkDialog* dialog)
{
    constexpr int enough = 10; // looks, a fifth of a second
    steady = TypeOnce(dialog, path) ? steady + 1 : 0;
    return steady >= enough;
}

} // namespace korvane::testing
