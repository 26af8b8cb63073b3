#include "scene/undo.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/treeview.h"

#include <gtk/gtk.h>

namespace korvane
{

UndoRecord* puffer = nullptr;
int pnumber = 0;
int pindex = 0;
UndoRecord* repuffer = nullptr;
int repnumber = 0;
int repindex = 0;

GtkWidget* toolbutton_undo = nullptr;

static void FreeRecord(UndoRecord& record)
{
    const int savedshapes = record.kind == 0 ? 1 : record.shapenumber;
    for (int i = 0; i < savedshapes; i++) {
        DeleteShape(record.shapes[i]);
    }
    FreeArray(record.shapes);
    for (int i = 0; i < record.treeiternumber; i++) {
        FreeArray(record.treeiters[i].name);
        FreeArray(record.treeiters[i].children);
    }
    FreeArray(record.treeiters);
}

void DelPuffer()
{
    for (int i = 0; i < pnumber; i++) {
        FreeRecord(puffer[i]);
    }
    pnumber = 0;
    pindex = 0;
    if (toolbutton_undo != nullptr) {
        gtk_widget_set_sensitive(toolbutton_undo, FALSE);
    }
}

} // namespace korvane
