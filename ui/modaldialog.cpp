#include "ui/modaldialog.h"

#include "ui/dialogs.h"

namespace korvane
{

Dialog MakeModalDialog(const char* title, const char* acceptbutton)
{
    const auto flags = GtkDialogFlags(GTK_DIALOG_MODAL | GTK_DIALOG_DESTROY_WITH_PARENT);
    return HoldDialog(gtk_dialog_new_with_buttons(title, GTK_WINDOW(mainwindow), flags,
                                                  GTK_STOCK_CANCEL, GTK_RESPONSE_CANCEL,
                                                  acceptbutton, GTK_RESPONSE_OK, nullptr));
}

Dialog MakeFixedDialog(const char* title, const char* acceptbutton)
{
    Dialog dialog = MakeModalDialog(title, acceptbutton);
    GtkWindow* window = GTK_WINDOW(dialog.get());
    gtk_window_set_resizable(window, FALSE);
    gtk_window_set_skip_taskbar_hint(window, TRUE);
    gtk_window_set_skip_pager_hint(window, TRUE);
    return dialog;
}

GtkWidget* MakeMarkupLabel(const char* markup)
{
    GtkWidget* label = gtk_label_new(nullptr);
    gtk_label_set_markup(GTK_LABEL(label), markup);
    return label;
}

} // namespace korvane
