#include "ui/mainwindow.h"

#include "scene/treehandlers.h"
#include "scene/treeselection.h"
#include "scene/treeview.h"
#include "ui/dialogs.h"
#include "ui/input.h"
#include "ui/keys.h"
#include "ui/menus.h"
#include "ui/toolbars.h"
#include "view/frameloop.h"
#include "view/glsetup.h"
#include "view/icons.h"

#include <gtk/gtk.h>
#include <gtk/gtkgl.h>

#include <cstdlib>

namespace korvane
{

const int config_attributes[] = {GDK_GL_DOUBLEBUFFER,    GDK_GL_RGBA, GDK_GL_RED_SIZE,   1,
                                 GDK_GL_GREEN_SIZE,      1,           GDK_GL_BLUE_SIZE,  1,
                                 GDK_GL_ALPHA_SIZE,      1,           GDK_GL_DEPTH_SIZE, 24,
                                 GDK_GL_ATTRIB_LIST_NONE};

static void SetWindowIcon()
{
    GdkPixbuf* picture = GetIconPixbuf("icon.png");
    if (picture != nullptr) {
        gtk_window_set_default_icon(picture);
        g_object_unref(picture);
    }
}

static GtkWidget* MakeWindow()
{
    SetWindowIcon();
    GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_widget_set_size_request(window, 640, 480);
    gtk_window_set_default_size(GTK_WINDOW(window), 900, 600);
    gtk_container_set_border_width(GTK_CONTAINER(window), 2);
    // Deliberate: the program's historical name, under which its users' window lists know it.
    gtk_window_set_title(GTK_WINDOW(window), "Vintra");
    return window;
}

static void AddTreeColumn()
{
    GtkTreeViewColumn* column = gtk_tree_view_column_new();
    GtkCellRenderer* icon = gtk_cell_renderer_pixbuf_new();
    gtk_tree_view_column_pack_start(column, icon, FALSE);
    gtk_tree_view_column_add_attribute(column, icon, "pixbuf", COLUMN_ICON);
    GtkCellRenderer* name = gtk_cell_renderer_text_new();
    gtk_tree_view_column_pack_end(column, name, FALSE);
    gtk_tree_view_column_add_attribute(column, name, "text", COLUMN_NAME);
    gtk_tree_view_append_column(GTK_TREE_VIEW(treeview), column);
}

static GtkWidget* MakeTreePane()
{
    MakeTree();
    treeview = gtk_tree_view_new_with_model(GTK_TREE_MODEL(store));
    gtk_tree_view_set_headers_visible(GTK_TREE_VIEW(treeview), FALSE); // the column has no title
    gtk_tree_view_set_reorderable(GTK_TREE_VIEW(treeview), TRUE);
    // A key that means nothing would open a search box, which deselects the row and swallows what
    // is pressed next; the view never takes the focus from the tree.
    gtk_tree_view_set_enable_search(GTK_TREE_VIEW(treeview), FALSE);
    AddTreeColumn();
    gtk_tree_selection_set_mode(gtk_tree_view_get_selection(GTK_TREE_VIEW(treeview)),
                                GTK_SELECTION_MULTIPLE);

    GtkWidget* pane = gtk_scrolled_window_new(nullptr, nullptr);
    gtk_widget_set_size_request(pane, 260, -1);
    gtk_container_set_border_width(GTK_CONTAINER(pane), 3);
    gtk_scrolled_window_set_shadow_type(GTK_SCROLLED_WINDOW(pane), GTK_SHADOW_IN);
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(pane), GTK_POLICY_AUTOMATIC,
                                   GTK_POLICY_AUTOMATIC);
    gtk_container_add(GTK_CONTAINER(pane), treeview);
    return pane;
}

static void LoadTreeIcons()
{
    pbfolderc = GetIconPixbuf("folder.png");
    pbfoldero = GetIconPixbuf("folder-open.png");
    pbside = GetIconPixbuf("side16.png");
    pbshape = GetIconPixbuf("shape16.png");
}

// What the program cannot do without: a display that draws with OpenGL.
static GdkGLConfig* GetGlConfig()
{
    GdkGLConfig* config = gdk_gl_config_new(config_attributes);
    if (config == nullptr) {
        ErrorDialog("This display cannot draw with OpenGL!");
        std::exit(1);
    }
    return config;
}

static GtkWidget* MakeDrawingArea()
{
    constexpr int events = GDK_POINTER_MOTION_MASK | GDK_BUTTON1_MOTION_MASK |
                           GDK_BUTTON2_MOTION_MASK | GDK_BUTTON_PRESS_MASK |
                           GDK_BUTTON_RELEASE_MASK | GDK_VISIBILITY_NOTIFY_MASK;
    GtkWidget* area = gtk_drawing_area_new();
    gtk_widget_set_gl_capability(area, GetGlConfig(), nullptr, TRUE, GDK_GL_RGBA_TYPE);
    gtk_widget_add_events(area, events);
    return area;
}

static GtkWidget* MakeViewport(GtkWidget* area)
{
    GtkWidget* viewport = gtk_viewport_new(nullptr, nullptr);
    gtk_container_set_border_width(GTK_CONTAINER(viewport), 3);
    gtk_container_set_reallocate_redraws(GTK_CONTAINER(viewport), TRUE);
    gtk_container_add(GTK_CONTAINER(viewport), area);
    return viewport;
}

static void StopTimer(GtkWidget*, gpointer timer)
{
    g_source_remove(GPOINTER_TO_UINT(timer));
}

static void StartTimer(GtkWidget* area)
{
    const guint timer = g_timeout_add(tickmilliseconds, TimeLoop, area);
    // A tick that is due while the window closes must not meet an area that is gone.
    g_signal_connect(area, "destroy", G_CALLBACK(StopTimer), GUINT_TO_POINTER(timer));
}

static void ConnectSignals(GtkWidget* notebook, GtkWidget* area)
{
    g_signal_connect(treeview, "row-collapsed", G_CALLBACK(TreeCollapsed), nullptr);
    g_signal_connect(treeview, "row-expanded", G_CALLBACK(TreeExpanded), nullptr);
    g_signal_connect(treeview, "row-activated", G_CALLBACK(TreeActivated), nullptr);
    g_signal_connect(treeview, "button_press_event", G_CALLBACK(TreeButtonPress), nullptr);
    g_signal_connect(treeview, "button_release_event", G_CALLBACK(TreeButtonRelease), nullptr);
    g_signal_connect(gtk_tree_view_get_selection(GTK_TREE_VIEW(treeview)), "changed",
                     G_CALLBACK(TreeSelectedChange), nullptr);
    g_signal_connect(store, "row-deleted", G_CALLBACK(TreeDeleted), nullptr);
    g_signal_connect(store, "row-inserted", G_CALLBACK(TreeInserted), nullptr);
    g_signal_connect(store, "row-has-child-toggled", G_CALLBACK(TreeRowHasChild), nullptr);
    g_signal_connect(notebook, "switch-page", G_CALLBACK(ChangeMenuTab), nullptr);
    g_signal_connect_after(area, "realize", G_CALLBACK(InitGl), nullptr);
    g_signal_connect(area, "configure_event", G_CALLBACK(ConfigGl), nullptr);
    g_signal_connect(area, "expose_event", G_CALLBACK(ReDraw), nullptr);
    g_signal_connect(area, "motion_notify_event", G_CALLBACK(MouseMov), nullptr);
    g_signal_connect(area, "scroll-event", G_CALLBACK(MouseScroll), nullptr);
    g_signal_connect(area, "button_press_event", G_CALLBACK(ButtonPress), nullptr);
    g_signal_connect(area, "button_release_event", G_CALLBACK(ButtonRelease), nullptr);
    g_signal_connect_swapped(mainwindow, "key_press_event", G_CALLBACK(KeyPress), nullptr);
    g_signal_connect_swapped(mainwindow, "key_release_event", G_CALLBACK(KeyRelease), nullptr);
    g_signal_connect_swapped(mainwindow, "focus_out_event", G_CALLBACK(KeysLost), nullptr);
    g_signal_connect_swapped(mainwindow, "focus_in_event", G_CALLBACK(KeysGained), nullptr);
    g_signal_connect_swapped(mainwindow, "grab_notify", G_CALLBACK(KeysGrabbed), nullptr);
    g_signal_connect(mainwindow, "destroy", G_CALLBACK(gtk_main_quit), nullptr);
}

GtkWidget* GetMainWindow()
{
    mainwindow = MakeWindow();
    GtkBox* column = GTK_BOX(gtk_vbox_new(FALSE, 0));
    gtk_container_add(GTK_CONTAINER(mainwindow), GTK_WIDGET(column));
    GtkWidget* notebook = MakeNotebook();
    gtk_box_pack_start(column, notebook, FALSE, FALSE, 0);

    GtkBox* middle = GTK_BOX(gtk_hbox_new(FALSE, 0));
    gtk_box_pack_start(column, GTK_WIDGET(middle), TRUE, TRUE, 5);
    gtk_box_pack_start(middle, MakeTreePane(), FALSE, TRUE, 0);
    LoadTreeIcons();
    MakeMenus();
    gtk_box_pack_start(middle, gtk_vseparator_new(), FALSE, FALSE, 0);
    GtkWidget* area = MakeDrawingArea();
    gtk_container_add(GTK_CONTAINER(middle), MakeViewport(area));

    statusbar = gtk_statusbar_new();
    gtk_box_pack_start(column, statusbar, FALSE, FALSE, 0);
    ConnectSignals(notebook, area);
    StartTimer(area);
    rdstate = 0;
    gtk_widget_show_all(notebook);
    gtk_notebook_set_current_page(GTK_NOTEBOOK(notebook), 0);
    return mainwindow;
}

} // namespace korvane
