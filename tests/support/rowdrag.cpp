#include "tests/support/rowdrag.h"

#include "scene/model.h"
#include "scene/treeview.h"

#include <gtest/gtest.h>

namespace korvane::testing
{

bool DragRow(int node, GtkTreePath* goal)
{
    GtkSelectionData data{};
    data.target = gdk_atom_intern("GTK_TREE_MODEL_ROW", FALSE);
    GtkTreeModel* model = GTK_TREE_MODEL(store);
    GtkTreePath* start = gtk_tree_model_get_path(model, &treeiters[node].iter);
    gtk_tree_set_row_drag_data(&data, model, start);
    GtkTreeDragDest* dest = GTK_TREE_DRAG_DEST(store);
    const bool possible = gtk_tree_drag_dest_row_drop_possible(dest, goal, &data) == TRUE;
    if (possible) {
        GtkTreeRowReference* row = gtk_tree_row_reference_new(model, start);
        EXPECT_TRUE(gtk_tree_drag_dest_drag_data_received(dest, goal, &data));
        GtkTreePath* now = gtk_tree_row_reference_get_path(row);
        EXPECT_TRUE(gtk_tree_drag_source_drag_data_delete(GTK_TREE_DRAG_SOURCE(store), now));
        gtk_tree_path_free(now);
        gtk_tree_row_reference_free(row);
    }
    gtk_tree_path_free(start);
    g_free(data.data);
    return possible;
}

} // namespace korvane::testing
