#include "ui/mainwindow.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/scenefile.h"
#include "scene/treehandlers.h"
#include "scene/treeselection.h"
#include "scene/treeview.h"
#include "tests/support/shapes.h"
#include "tests/support/treetexts.h"
#include "tests/support/widgets.h"
#include "ui/dialogs.h"
#include "ui/input.h"
#include "ui/keys.h"
#include "ui/toolbars.h"
#include "view/frameloop.h"
#include "view/glsetup.h"
#include "view/mainview.h"

#include <gdk/gdkkeysyms.h>
#include <gtest/gtest.h>
#include <gtk/gtkgl.h>

#include <iterator>
#include <string>
#include <vector>

using namespace korvane;
using namespace korvane::testing;

struct Size {
    int width;
    int height;
    bool operator==(const Size&) const = default;
};

static Size GetSizeRequest(GtkWidget* widget)
{
    Size size{};
    gtk_widget_get_size_request(widget, &size.width, &size.height);
    return size;
}

struct Packing {
    bool expand;
    bool fill;
    unsigned int padding;
    bool operator==(const Packing&) const = default;
};

static Packing GetPacking(GtkWidget* box, GtkWidget* child)
{
    gboolean expand = FALSE;
    gboolean fill = FALSE;
    unsigned int padding = 0;
    GtkPackType type = GTK_PACK_END;
    gtk_box_query_child_packing(GTK_BOX(box), child, &expand, &fill, &padding, &type);
    EXPECT_EQ(type, GTK_PACK_START);
    return {expand == TRUE, fill == TRUE, padding};
}

static void ExpectPlainBox(GtkWidget* box, std::size_t children)
{
    EXPECT_FALSE(gtk_box_get_homogeneous(GTK_BOX(box)));
    EXPECT_EQ(gtk_box_get_spacing(GTK_BOX(box)), 0);
    ASSERT_EQ(GetChildren(box).size(), children);
}

static GtkWidget* GetColumn()
{
    return gtk_bin_get_child(GTK_BIN(ShowMainWindow()));
}

static GtkWidget* GetMiddle()
{
    return GetChildren(GetColumn()).at(1);
}

static GtkWidget* GetViewport()
{
    return GetChildren(GetMiddle()).at(2);
}

static GtkWidget* GetArea()
{
    return gtk_bin_get_child(GTK_BIN(GetViewport()));
}

TEST(MainWindow, HasItsTitleItsIconAndItsSizes)
{
    GtkWidget* window = ShowMainWindow();
    EXPECT_EQ(window, mainwindow);
    EXPECT_STREQ(gtk_window_get_title(GTK_WINDOW(window)), "Vintra");
    EXPECT_EQ(GetSizeRequest(window), (Size{640, 480}));
    Size size{};
    gtk_window_get_default_size(GTK_WINDOW(window), &size.width, &size.height);
    EXPECT_EQ(size, (Size{900, 600}));
    EXPECT_EQ(gtk_container_get_border_width(GTK_CONTAINER(window)), 2U);
    EXPECT_TRUE(IsConnected(window, "destroy", G_CALLBACK(gtk_main_quit)));
    GList* icons = gtk_window_get_default_icon_list();
    ASSERT_EQ(g_list_length(icons), 1U);
    EXPECT_TRUE(IsIcon(GDK_PIXBUF(icons->data), "icon.png"));
    g_list_free(icons);
}

TEST(MainWindow, StacksTheNotebookTheMiddleAndTheStatusBar)
{
    GtkWidget* column = GetColumn();
    ASSERT_TRUE(GTK_IS_VBOX(column));
    ExpectPlainBox(column, 3);
    const auto children = GetChildren(column);
    EXPECT_TRUE(GTK_IS_NOTEBOOK(children[0]));
    EXPECT_TRUE(GTK_IS_HBOX(children[1]));
    EXPECT_EQ(children[2], statusbar);
    EXPECT_EQ(GetPacking(column, children[0]), (Packing{false, false, 0}));
    EXPECT_EQ(GetPacking(column, children[1]), (Packing{true, true, 5}));
    EXPECT_EQ(GetPacking(column, children[2]), (Packing{false, false, 0}));
    EXPECT_TRUE(IsConnected(children[0], "switch-page", G_CALLBACK(ChangeMenuTab)));
}

TEST(MainWindow, SetsTheTreeBesideTheView)
{
    GtkWidget* middle = GetMiddle();
    ExpectPlainBox(middle, 3);
    const auto children = GetChildren(middle);
    EXPECT_TRUE(GTK_IS_SCROLLED_WINDOW(children[0]));
    EXPECT_TRUE(GTK_IS_VSEPARATOR(children[1]));
    EXPECT_TRUE(GTK_IS_VIEWPORT(children[2]));
    EXPECT_EQ(GetPacking(middle, children[0]), (Packing{false, true, 0}));
    EXPECT_EQ(GetPacking(middle, children[1]), (Packing{false, false, 0}));
    EXPECT_EQ(GetPacking(middle, children[2]), (Packing{true, true, 0}));
}

TEST(TreePane, IsNarrowAndScrollsWhenItHasTo)
{
    GtkWidget* pane = GetChildren(GetMiddle()).at(0);
    EXPECT_EQ(GetSizeRequest(pane), (Size{260, -1}));
    EXPECT_EQ(gtk_container_get_border_width(GTK_CONTAINER(pane)), 3U);
    EXPECT_EQ(gtk_scrolled_window_get_shadow_type(GTK_SCROLLED_WINDOW(pane)), GTK_SHADOW_IN);
    GtkPolicyType across = GTK_POLICY_ALWAYS;
    GtkPolicyType along = GTK_POLICY_ALWAYS;
    gtk_scrolled_window_get_policy(GTK_SCROLLED_WINDOW(pane), &across, &along);
    EXPECT_EQ(across, GTK_POLICY_AUTOMATIC);
    EXPECT_EQ(along, GTK_POLICY_AUTOMATIC);
    EXPECT_EQ(gtk_bin_get_child(GTK_BIN(pane)), treeview);
}

TEST(TreePane, ShowsTheStoreWithItsThreeColumns)
{
    ShowMainWindow();
    GtkTreeModel* model = GTK_TREE_MODEL(store);
    EXPECT_EQ(gtk_tree_view_get_model(GTK_TREE_VIEW(treeview)), model);
    ASSERT_EQ(gtk_tree_model_get_n_columns(model), 3);
    EXPECT_EQ(gtk_tree_model_get_column_type(model, 0), GDK_TYPE_PIXBUF);
    EXPECT_EQ(gtk_tree_model_get_column_type(model, 1), G_TYPE_STRING);
    EXPECT_EQ(gtk_tree_model_get_column_type(model, 2), G_TYPE_INT);
}

TEST(TreePane, SelectsSeveralRowsAndReordersThemWithoutAHeader)
{
    ShowMainWindow();
    GtkTreeSelection* selection = gtk_tree_view_get_selection(GTK_TREE_VIEW(treeview));
    EXPECT_EQ(gtk_tree_selection_get_mode(selection), GTK_SELECTION_MULTIPLE);
    EXPECT_TRUE(gtk_tree_view_get_reorderable(GTK_TREE_VIEW(treeview)));
    EXPECT_FALSE(gtk_tree_view_get_headers_visible(GTK_TREE_VIEW(treeview)));
}

TEST(TreePane, DrawsTheIconOfARowBeforeItsName)
{
    ShowMainWindow();
    const int node = AddTreeIter(0, NODE_FOLDER, CopyText("cellar"));
    GList* columns = gtk_tree_view_get_columns(GTK_TREE_VIEW(treeview));
    ASSERT_EQ(g_list_length(columns), 1U);
    GtkTreeViewColumn* column = GTK_TREE_VIEW_COLUMN(columns->data);
    g_list_free(columns);
    gtk_tree_view_column_cell_set_cell_data(column, GTK_TREE_MODEL(store), &treeiters[node].iter,
                                            FALSE, FALSE);
    GList* cells = gtk_cell_layout_get_cells(GTK_CELL_LAYOUT(column));
    ASSERT_EQ(g_list_length(cells), 2U);
    GdkPixbuf* picture = nullptr;
    char* name = nullptr;
    g_object_get(cells->data, "pixbuf", &picture, nullptr);
    g_object_get(cells->next->data, "text", &name, nullptr);
    EXPECT_EQ(picture, pbfolderc);
    EXPECT_STREQ(name, "cellar");
    g_object_unref(picture);
    g_free(name);
    g_list_free(cells);
    ClearTree();
}

static void Focus(GtkWidget* widget)
{
    GdkEvent* event = gdk_event_new(GDK_FOCUS_CHANGE);
    event->focus_change.window = GDK_WINDOW(g_object_ref(gtk_widget_get_window(mainwindow)));
    event->focus_change.in = TRUE;
    gtk_widget_event(mainwindow, event);
    gdk_event_free(event);
    gtk_widget_grab_focus(widget);
    ASSERT_TRUE(gtk_widget_has_focus(widget));
}

static void PressKey(guint key)
{
    GdkEvent* event = gdk_event_new(GDK_KEY_PRESS);
    event->key.window = GDK_WINDOW(g_object_ref(gtk_widget_get_window(mainwindow)));
    event->key.keyval = key;
    gtk_widget_event(mainwindow, event);
    gdk_event_free(event);
}

TEST(TreePane, KeepsItsSelectionWhenAKeyWithoutAMeaningIsPressed)
{
    ShowMainWindow();
    StartEmptyScene();
    const int square = AddShapeRow(Square(), "square", 0);
    AddShapeRow(Cube(), "cube", 0);
    SelectRows({square});
    Focus(treeview);
    PressKey(GDK_KEY_k);
    PressKey(GDK_KEY_1);
    HandleEvents();
    EXPECT_EQ(GetSelectedNodes(), std::vector<int>{square});
    EXPECT_TRUE(gtk_widget_has_focus(treeview)); // no box has come up
    StartEmptyScene();
}

TEST(TreePane, HasItsIcons)
{
    ShowMainWindow();
    EXPECT_TRUE(IsIcon(pbfolderc, "folder.png"));
    EXPECT_TRUE(IsIcon(pbfoldero, "folder-open.png"));
    EXPECT_TRUE(IsIcon(pbside, "side16.png"));
    EXPECT_TRUE(IsIcon(pbshape, "shape16.png"));
}

TEST(TreePane, StartsWithTheRootAlone)
{
    ShowMainWindow();
    ASSERT_EQ(treeiternumber, 1);
    const TreeIter& root = treeiters[0];
    EXPECT_STREQ(root.name, "scene");
    EXPECT_EQ(root.type, NODE_FOLDER);
    EXPECT_EQ(root.parent, -1);
    EXPECT_EQ(root.shapeindex, -1);
    EXPECT_EQ(root.childnumber, 0);
    EXPECT_NE(root.children, nullptr);
    EXPECT_EQ(gtk_tree_model_iter_n_children(GTK_TREE_MODEL(store), nullptr), 0);
}

TEST(ViewPane, RedrawsWhenItIsGivenAnotherSize)
{
    GtkWidget* viewport = GetViewport();
    EXPECT_EQ(gtk_container_get_border_width(GTK_CONTAINER(viewport)), 3U);
    EXPECT_TRUE(GTK_CONTAINER(viewport)->reallocate_redraws);
    EXPECT_TRUE(GTK_IS_DRAWING_AREA(GetArea()));
}

TEST(ViewPane, HearsThePointerButAsksForNoWheel)
{
    EXPECT_EQ(gtk_widget_get_events(GetArea()), 0x20364);
}

TEST(ViewPane, AsksForADeepDoubleBufferedFrame)
{
    const std::vector<int> wanted{GDK_GL_DOUBLEBUFFER,    GDK_GL_RGBA, GDK_GL_RED_SIZE,   1,
                                  GDK_GL_GREEN_SIZE,      1,           GDK_GL_BLUE_SIZE,  1,
                                  GDK_GL_ALPHA_SIZE,      1,           GDK_GL_DEPTH_SIZE, 24,
                                  GDK_GL_ATTRIB_LIST_NONE};
    EXPECT_EQ(std::vector<int>(config_attributes, config_attributes + wanted.size()), wanted);
    GtkWidget* area = GetArea();
    ASSERT_TRUE(gtk_widget_is_gl_capable(area));
    GdkGLConfig* config = gtk_widget_get_gl_config(area);
    EXPECT_TRUE(gdk_gl_config_is_double_buffered(config));
    EXPECT_TRUE(gdk_gl_config_is_rgba(config));
    EXPECT_TRUE(gdk_gl_config_has_alpha(config));
    EXPECT_TRUE(gdk_gl_config_has_depth_buffer(config));
    GdkGLContext* context = gtk_widget_get_gl_context(area);
    EXPECT_EQ(gdk_gl_context_get_share_list(context), nullptr);
    EXPECT_EQ(gdk_gl_context_get_render_type(context), GDK_GL_RGBA_TYPE);
}

TEST(ViewPane, HandsItsEventsToTheView)
{
    GtkWidget* area = GetArea();
    EXPECT_TRUE(IsConnected(area, "realize", G_CALLBACK(InitGl)));
    EXPECT_TRUE(IsConnected(area, "configure-event", G_CALLBACK(ConfigGl)));
    EXPECT_TRUE(IsConnected(area, "expose-event", G_CALLBACK(ReDraw)));
    EXPECT_TRUE(IsConnected(area, "motion-notify-event", G_CALLBACK(MouseMov)));
    EXPECT_TRUE(IsConnected(area, "scroll-event", G_CALLBACK(MouseScroll)));
    EXPECT_TRUE(IsConnected(area, "button-press-event", G_CALLBACK(ButtonPress)));
    EXPECT_TRUE(IsConnected(area, "button-release-event", G_CALLBACK(ButtonRelease)));
}

TEST(MainWindow, HearsTheKeysWhereverTheFocusIs)
{
    GtkWidget* window = ShowMainWindow();
    EXPECT_TRUE(IsConnected(window, "key-press-event", G_CALLBACK(KeyPress)));
    EXPECT_TRUE(IsConnected(window, "key-release-event", G_CALLBACK(KeyRelease)));
    EXPECT_TRUE(IsConnected(window, "focus-out-event", G_CALLBACK(KeysLost)));
    EXPECT_TRUE(IsConnected(window, "focus-in-event", G_CALLBACK(KeysGained)));
    EXPECT_TRUE(IsConnected(window, "grab-notify", G_CALLBACK(KeysGrabbed)));
}

TEST(TreePane, HandsItsEventsToTheTree)
{
    ShowMainWindow();
    EXPECT_TRUE(IsConnected(treeview, "row-collapsed", G_CALLBACK(TreeCollapsed)));
    EXPECT_TRUE(IsConnected(treeview, "row-expanded", G_CALLBACK(TreeExpanded)));
    EXPECT_TRUE(IsConnected(treeview, "row-activated", G_CALLBACK(TreeActivated)));
    EXPECT_TRUE(IsConnected(treeview, "button-press-event", G_CALLBACK(TreeButtonPress)));
    EXPECT_TRUE(IsConnected(treeview, "button-release-event", G_CALLBACK(TreeButtonRelease)));
    EXPECT_TRUE(IsConnected(gtk_tree_view_get_selection(GTK_TREE_VIEW(treeview)), "changed",
                            G_CALLBACK(TreeSelectedChange)));
    EXPECT_TRUE(IsConnected(store, "row-deleted", G_CALLBACK(TreeDeleted)));
    EXPECT_TRUE(IsConnected(store, "row-inserted", G_CALLBACK(TreeInserted)));
    EXPECT_TRUE(IsConnected(store, "row-has-child-toggled", G_CALLBACK(TreeRowHasChild)));
}

TEST(MainWindow, TicksAsLongAsItIsThere)
{
    ShowMainWindow();
    const int before = runtime;
    EXPECT_TRUE(HandleEventsUntil([=] { return runtime > before + 1; }));
}

static int CountExposes(GtkWidget*, GdkEvent* event, int* exposes)
{
    *exposes += event->type == GDK_EXPOSE ? 1 : 0;
    return FALSE;
}

// The timer runs on; every fade has ended after fifteen of its ticks.
TEST(MainWindow, DrawsNothingWhileNothingMoves)
{
    ShowMainWindow();
    StartEmptyScene();
    AddToScene(Cube(), "cube");
    RefreshView();
    const auto wait = [](int ticks) {
        const int until = runtime + ticks;
        EXPECT_TRUE(HandleEventsUntil([=] { return runtime >= until; }));
    };
    wait(30);
    int exposes = 0;
    const gulong counter = g_signal_connect(GetArea(), "event", G_CALLBACK(CountExposes), &exposes);
    wait(30);
    EXPECT_EQ(exposes, 0);
    rdstate |= redrawwanted;
    wait(5);
    EXPECT_EQ(exposes, 1);
    g_signal_handler_disconnect(GetArea(), counter);
    StartEmptyScene();
}
