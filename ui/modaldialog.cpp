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

} // namespace korvane
