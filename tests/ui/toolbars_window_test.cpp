#include "ui/toolbars.h"

#include "export/image.h"
#include "geometry/construction.h"
#include "geometry/newpoints.h"
#include "scene/objexport.h"
#include "scene/scenefile.h"
#include "scene/treeedit.h"
#include "scene/undo.h"
#include "tests/support/widgets.h"
#include "ui/keys.h"
#include "ui/viewtoggles.h"
#include "view/cameraflight.h"
#include "view/mainview.h"
#include "view/selectedfit.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace korvane;
using namespace korvane::testing;

static GtkNotebook* GetNotebook()
{
    return GTK_NOTEBOOK(FindWidget(ShowMainWindow(), GTK_TYPE_NOTEBOOK));
}

static GtkWidget* GetToolbar(int page)
{
    return gtk_notebook_get_nth_page(GetNotebook(), page);
}

static GtkWidget* GetItem(int page, std::size_t place)
{
    return GetChildren(GetToolbar(page)).at(place);
}

struct Button {
    GType (*type)();
    const char* icon = nullptr;
    const char* tooltip = nullptr;
    bool pressed = false;
    GCallback handler = nullptr;
    int data = 0;
    GtkWidget** global = nullptr;
};

static std::string GetTooltip(GtkWidget* item)
{
    // The item hands its tooltip on to the button inside.
    char* text = gtk_widget_get_tooltip_text(gtk_bin_get_child(GTK_BIN(item)));
    const std::string copy = GetText(text);
    g_free(text);
    return copy;
}

static void ExpectIcon(GtkWidget* item, const std::string& icon)
{
    GtkImage* image = GTK_IMAGE(gtk_tool_button_get_icon_widget(GTK_TOOL_BUTTON(item)));
    if (icon.ends_with(".png")) {
        ASSERT_EQ(gtk_image_get_storage_type(image), GTK_IMAGE_PIXBUF);
        EXPECT_TRUE(IsIcon(gtk_image_get_pixbuf(image), icon));
        return;
    }
    ASSERT_EQ(gtk_image_get_storage_type(image), GTK_IMAGE_STOCK);
    char* stock = nullptr;
    GtkIconSize size = GTK_ICON_SIZE_INVALID;
    gtk_image_get_stock(image, &stock, &size);
    EXPECT_EQ(stock, icon);
    EXPECT_EQ(size, GTK_ICON_SIZE_LARGE_TOOLBAR);
}

static void ExpectButton(GtkWidget* item, const Button& row)
{
    SCOPED_TRACE(row.tooltip == nullptr ? "a separator" : row.tooltip);
    ASSERT_EQ(G_OBJECT_TYPE(item), row.type());
    if (row.type() == GTK_TYPE_SEPARATOR_TOOL_ITEM) {
        return;
    }
    ExpectIcon(item, row.icon);
    EXPECT_EQ(GetTooltip(item), row.tooltip);
    EXPECT_EQ(gtk_tool_button_get_label(GTK_TOOL_BUTTON(item)), nullptr);
    if (row.global != nullptr) {
        EXPECT_EQ(*row.global, item);
    }
    const bool toggles = GTK_IS_TOGGLE_TOOL_BUTTON(item);
    if (toggles) {
        EXPECT_EQ(gtk_toggle_tool_button_get_active(GTK_TOGGLE_TOOL_BUTTON(item)), row.pressed);
    }
    const bool hasnothingtodo = item == toolbutton_undo; // at the start
    EXPECT_EQ(gtk_widget_get_sensitive(item), !hasnothingtodo);
    if (row.handler != nullptr) {
        EXPECT_TRUE(IsConnected(item, toggles ? "toggled" : "clicked", row.handler,
                                GINT_TO_POINTER(row.data)));
    }
}

static void ExpectToolbar(int page, const std::vector<Button>& rows)
{
    const auto items = GetChildren(GetToolbar(page));
    ASSERT_EQ(items.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); i++) {
        ExpectButton(items[i], rows[i]);
    }
}

static constexpr auto plain = gtk_tool_button_get_type;
static constexpr auto toggle = gtk_toggle_tool_button_get_type;
static constexpr auto radio = gtk_radio_tool_button_get_type;
static constexpr auto separator = gtk_separator_tool_item_get_type;

TEST(Toolbars, ShowIconsAloneAndTooltips)
{
    ASSERT_EQ(gtk_notebook_get_n_pages(GetNotebook()), 3);
    for (int page = 0; page < 3; page++) {
        GtkToolbar* toolbar = GTK_TOOLBAR(GetToolbar(page));
        EXPECT_EQ(gtk_toolbar_get_style(toolbar), GTK_TOOLBAR_ICONS);
        EXPECT_EQ(gtk_toolbar_get_icon_size(toolbar), GTK_ICON_SIZE_LARGE_TOOLBAR);
        EXPECT_TRUE(gtk_toolbar_get_tooltips(toolbar));
    }
}

TEST(Toolbars, OfferTheFileCommandsFirst)
{
    ExpectToolbar(0, {{plain, "gtk-new", "New", false, G_CALLBACK(New)},
                      {plain, "gtk-open", "Open", false, G_CALLBACK(Open)},
                      {plain, "gtk-save", "Save", false, G_CALLBACK(Save)},
                      {plain, "gtk-save-as", "Save as...", false, G_CALLBACK(SaveAs)},
                      {separator},
                      {plain, "image2.png", "Create image...", false, G_CALLBACK(CreateImage)},
                      {plain, "gtk-convert", "Export selected wavefront obj format...", false,
                       G_CALLBACK(SaveObj)}});
}

TEST(Toolbars, OfferTheEditCommandsSecond)
{
    ExpectToolbar(
        1, {{toggle, "gtk-new", "New shape... Key: N", false, G_CALLBACK(NewShape), 0,
             &toolbutton_news},
            {plain, "gtk-directory", "New folder...", false, G_CALLBACK(NewFolder)},
            {plain, "gtk-delete", "Delete selected Key: Del", false, G_CALLBACK(DelSelected)},
            {separator},
            {plain, "gtk-undo", "Undo", false, G_CALLBACK(Undo), 0, &toolbutton_undo}});
}

TEST(Toolbars, OfferTheViewCommandsThird)
{
    ExpectToolbar(
        2,
        {{radio, "cube.png", "Background cube", true, G_CALLBACK(BgShape), 0},
         {radio, "plane.png", "Background plane", false, G_CALLBACK(BgShape), 1},
         {radio, "empty.png", "Background empty", false, G_CALLBACK(BgShape), 2},
         {separator},
         {toggle, "gradient.png", "Gradient", false, G_CALLBACK(Gradient), 0, &toolbutton_gradient},
         {toggle, "image.png", "Background image...", false, G_CALLBACK(ImageBg)},
         {toggle, "smallcube.png", "Show small cube", true, G_CALLBACK(SmallCube)},
         {toggle, "centerlines.png", "Show centerlines", false, G_CALLBACK(CenterLines)},
         {separator},
         {radio, "shapeandwire.png", "Show shape and wire", true, G_CALLBACK(ShowShape), 2,
          &toolbutton_full},
         {radio, "shape.png", "Show only shape", false, G_CALLBACK(ShowShape), 0},
         {radio, "wire.png", "Show only wire", false, G_CALLBACK(ShowShape), 1, &toolbutton_wire},
         {separator},
         {toggle, "selected.png", "Show only selected shape", true, G_CALLBACK(OnlySelected)},
         {toggle, "perspective.png", "Perspective", false, G_CALLBACK(Perspective)},
         {separator},
         {plain, "zoomfit.png", "Zoom fit", false, G_CALLBACK(ZoomFit)},
         {plain, "startposition.png", "Set start position", false, G_CALLBACK(SetStart)}});
}

static GSList* GetGroup(std::size_t place)
{
    return gtk_radio_tool_button_get_group(GTK_RADIO_TOOL_BUTTON(GetItem(2, place)));
}

TEST(Toolbars, KeepTheBackgroundsAndTheDisplayModesInTwoGroups)
{
    EXPECT_EQ(g_slist_length(GetGroup(0)), 3U);
    EXPECT_EQ(GetGroup(0), GetGroup(1));
    EXPECT_EQ(GetGroup(0), GetGroup(2));
    EXPECT_EQ(g_slist_length(GetGroup(9)), 3U);
    EXPECT_EQ(GetGroup(9), GetGroup(10));
    EXPECT_EQ(GetGroup(9), GetGroup(11));
    EXPECT_NE(GetGroup(0), GetGroup(9));
}

static bool IsPressed(std::size_t place)
{
    return gtk_toggle_tool_button_get_active(GTK_TOGGLE_TOOL_BUTTON(GetItem(2, place)));
}

TEST(Toolbars, StartAsTheViewStarts)
{
    ShowMainWindow();
    EXPECT_EQ(IsPressed(0), mainview.bgshape == BACKGROUND_CUBE);
    EXPECT_EQ(IsPressed(4), (mainview.gradientfade & fadetarget) != 0);
    EXPECT_EQ(IsPressed(5), (mainview.imagefade & fadetarget) != 0);
    EXPECT_EQ(IsPressed(6), (mainview.smallcubefade & fadetarget) != 0);
    EXPECT_EQ(IsPressed(7), (mainview.centerlinesfade & fadetarget) != 0);
    EXPECT_EQ(IsPressed(9), mainview.showshape == SHAPE_BOTH);
    EXPECT_EQ(IsPressed(13), mainview.onlyselected != 0);
    EXPECT_EQ(IsPressed(14), (mainview.perspective & fadetarget) != 0);
}

TEST(Toolbars, HaveNothingToUndoAtTheStart)
{
    ShowMainWindow();
    EXPECT_FALSE(gtk_widget_get_sensitive(toolbutton_undo));
}

static std::vector<std::string> GetTabMarkup()
{
    return {gtk_label_get_label(GTK_LABEL(labelfile)), gtk_label_get_label(GTK_LABEL(labeledit)),
            gtk_label_get_label(GTK_LABEL(labelview))};
}

using Markup = std::vector<std::string>;

static const char blackfile[] =
    "<span font='Courier New Bold 12' foreground ='#000000'> File </span>";
static const char blackedit[] =
    "<span font='Courier New Bold 12' foreground ='#000000'> Edit </span>";
static const char blackview[] =
    "<span font='Courier New Bold 12' foreground ='#000000'> View </span>";
static const char greyfile[] =
    "<span font='Courier New Bold 12' foreground ='#909090'> File </span>";
static const char greyedit[] =
    "<span font='Courier New Bold 12' foreground ='#909090'> Edit </span>";
static const char greyview[] =
    "<span font='Courier New Bold 12' foreground ='#909090'> View </span>";

TEST(Tabs, CarryTheThreeLabelsWithFileInFront)
{
    GtkNotebook* notebook = GetNotebook();
    EXPECT_EQ(gtk_notebook_get_tab_label(notebook, GetToolbar(0)), labelfile);
    EXPECT_EQ(gtk_notebook_get_tab_label(notebook, GetToolbar(1)), labeledit);
    EXPECT_EQ(gtk_notebook_get_tab_label(notebook, GetToolbar(2)), labelview);
    EXPECT_EQ(gtk_notebook_get_current_page(notebook), 0);
    EXPECT_EQ(GetTabMarkup(), (Markup{blackfile, greyedit, greyview}));
    EXPECT_STREQ(gtk_label_get_text(GTK_LABEL(labelfile)), " File ");
}

TEST(Tabs, BlackenTheLabelOfThePageInFront)
{
    GtkNotebook* notebook = GetNotebook();
    gtk_notebook_set_current_page(notebook, 1);
    EXPECT_EQ(GetTabMarkup(), (Markup{greyfile, blackedit, greyview}));
    gtk_notebook_set_current_page(notebook, 2);
    EXPECT_EQ(GetTabMarkup(), (Markup{greyfile, greyedit, blackview}));
    gtk_notebook_set_current_page(notebook, 0);
    EXPECT_EQ(GetTabMarkup(), (Markup{blackfile, greyedit, greyview}));
}

TEST(Tabs, KeepTheirColoursForAnyOtherPageNumber)
{
    GtkNotebook* notebook = GetNotebook();
    gtk_widget_hide(labeledit);
    ChangeMenuTab(notebook, nullptr, 3);
    EXPECT_EQ(GetTabMarkup(), (Markup{blackfile, greyedit, greyview}));
    EXPECT_TRUE(gtk_widget_get_visible(labeledit)); // the labels are shown all the same
}
