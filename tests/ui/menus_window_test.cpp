#include "ui/menus.h"

#include "geometry/construction.h"
#include "geometry/duplicationclicks.h"
#include "geometry/marks.h"
#include "geometry/newpoints.h"
#include "scene/clipboard.h"
#include "scene/treeedit.h"
#include "scene/treeview.h"
#include "tests/support/widgets.h"
#include "ui/coloredit.h"
#include "ui/transform.h"
#include "ui/viewmenus.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace korvane;
using namespace korvane::testing;

struct Item {
    const char* label = nullptr; // null: a separator
    const char* stock = nullptr; // null: a check item
    GCallback handler = nullptr;
    void* data = nullptr;
    GtkWidget** global = nullptr;
};
using Items = std::vector<Item>;

static const char colour[] = "gtk-select-color";
static const char missing[] = "gtk-missing_image"; // with the underscore

static Item MakeTool(const char* label, int tool)
{
    return {label, missing, G_CALLBACK(ActionType), GINT_TO_POINTER(tool)};
}

static const Items sidegroup = {{"Set color of side", colour, G_CALLBACK(ColorSide)},
                                MakeTool("Move side", MOVE_SIDE),
                                MakeTool("Rotate side", ROTATE_SIDE),
                                MakeTool("Scale side", SCALE_SIDE),
                                {}};
// `source` is what the menu belongs to: 1 a side, 2 a point, 3 a stripe.
static Items MakeShapeGroup(int source)
{
    return {{"Set color of shape", colour, G_CALLBACK(ColorShape)},
            MakeTool("Move shape", MOVE_SHAPE),
            MakeTool("Rotate shape", ROTATE_SHAPE),
            MakeTool("Scale shape", SCALE_SHAPE),
            {"Delete Shape", "gtk-delete", G_CALLBACK(DelShape), GINT_TO_POINTER(source)},
            {}};
}

static const Items selectiongroup = {{"Set color of selected", colour, G_CALLBACK(ColorSelected)},
                                     MakeTool("Move selected", MOVE_SELECTED),
                                     MakeTool("Rotate selected", ROTATE_SELECTED),
                                     MakeTool("Scale selected", SCALE_SELECTED)};

static Items Join(const std::vector<Items>& groups)
{
    Items all;
    for (const Items& group : groups) {
        all.insert(all.end(), group.begin(), group.end());
    }
    return all;
}

static void ExpectImage(GtkWidget* item, const char* stock)
{
    GtkWidget* image = gtk_image_menu_item_get_image(GTK_IMAGE_MENU_ITEM(item));
    ASSERT_EQ(gtk_image_get_storage_type(GTK_IMAGE(image)), GTK_IMAGE_STOCK);
    char* id = nullptr;
    GtkIconSize size = GTK_ICON_SIZE_INVALID;
    gtk_image_get_stock(GTK_IMAGE(image), &id, &size);
    EXPECT_STREQ(id, stock);
    EXPECT_EQ(size, GTK_ICON_SIZE_MENU);
}

static void ExpectItem(GtkWidget* item, const Item& row)
{
    SCOPED_TRACE(row.label == nullptr ? "a separator" : row.label);
    EXPECT_TRUE(gtk_widget_get_visible(item));
    if (row.label == nullptr) {
        EXPECT_TRUE(GTK_IS_SEPARATOR_MENU_ITEM(item));
        return;
    }
    EXPECT_STREQ(gtk_menu_item_get_label(GTK_MENU_ITEM(item)), row.label);
    EXPECT_TRUE(gtk_menu_item_get_use_underline(GTK_MENU_ITEM(item)));
    if (row.stock == nullptr) {
        EXPECT_TRUE(GTK_IS_CHECK_MENU_ITEM(item));
    } else {
        ExpectImage(item, row.stock);
    }
    if (row.global != nullptr) {
        EXPECT_EQ(*row.global, item);
    }
    EXPECT_TRUE(gtk_widget_get_sensitive(item));
    if (row.handler != nullptr) {
        EXPECT_TRUE(IsConnected(item, row.stock == nullptr ? "toggled" : "activate", row.handler,
                                row.data));
    }
}

static void ExpectMenu(GtkWidget* menu, const Items& rows)
{
    ASSERT_TRUE(GTK_IS_MENU(menu));
    EXPECT_FALSE(gtk_widget_get_visible(menu)); // it waits to be popped up
    const auto items = GetChildren(menu);
    ASSERT_EQ(items.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); i++) {
        ExpectItem(items[i], rows[i]);
    }
}

TEST(Menus, OfferTheCommandsOfTheTree)
{
    ShowMainWindow();
    ExpectMenu(treemenu,
               {{"New shape...", "gtk-new", G_CALLBACK(NewShapeFromMenu), toolbutton_news},
                {"New folder...", "gtk-directory", G_CALLBACK(NewFolder)},
                {"Copy", "gtk-copy", G_CALLBACK(CopySelected), nullptr, &menucopys},
                {"Paste", "gtk-paste", G_CALLBACK(PasteSelected), nullptr, &menupastes},
                {"Rename", "gtk-refresh", G_CALLBACK(RenameSelected), nullptr, &menurename},
                {"Delete", "gtk-delete", G_CALLBACK(DelSelected), nullptr, &menudels},
                {"Set color", colour, G_CALLBACK(ColorSelected), nullptr, &menucolor}});
}

TEST(Menus, OfferTheCommandsOfASideWithItsShapeAndTheSelection)
{
    ShowMainWindow();
    ExpectMenu(
        sidemenu,
        Join({{{"Border of side set edge", nullptr, G_CALLBACK(SetBorder), nullptr, &menuborder},
               {"Duplicate side", "gtk-copy", G_CALLBACK(Duplicate), nullptr, &menuduplicate},
               {}},
              sidegroup,
              MakeShapeGroup(1),
              selectiongroup}));
}

TEST(Menus, OfferTheCommandsOfAPointWithItsShapeAndTheSelection)
{
    ShowMainWindow();
    ExpectMenu(pointmenu,
               Join({{{"Set vertex", nullptr, G_CALLBACK(SetVertex), nullptr, &menuvertex},
                      {"Delete point", "gtk-delete", G_CALLBACK(DelPoint), nullptr, &menupointdel},
                      {}},
                     MakeShapeGroup(2),
                     selectiongroup}));
}

TEST(Menus, OfferTheCommandsOfAStripeWithItsShapeAndTheSelection)
{
    ShowMainWindow();
    ExpectMenu(
        stripemenu,
        Join({{{"Set edge", nullptr, G_CALLBACK(SetEdge), nullptr, &menuedge},
               {"Delete stripe", "gtk-delete", G_CALLBACK(DelStripe), nullptr, &menustripedel},
               {}},
              MakeShapeGroup(3),
              selectiongroup}));
}

TEST(Menus, OfferANewShapeOverTheBackground)
{
    ShowMainWindow();
    const Item newshape = {"New Shape", "gtk-new", G_CALLBACK(MenuNewShape)};
    ExpectMenu(bgmenu, {newshape});
    ExpectMenu(bgmenu2, Join({{newshape, {}}, selectiongroup}));
}

TEST(Menus, HaveNothingCheckedAtTheStart)
{
    ShowMainWindow();
    for (GtkWidget* item : {menuborder, menuvertex, menuedge}) {
        EXPECT_FALSE(gtk_check_menu_item_get_active(GTK_CHECK_MENU_ITEM(item)));
    }
}

static GdkPixbuf* Render(GtkWidget* widget, const char* stock)
{
    return gtk_widget_render_icon(widget, stock, GTK_ICON_SIZE_MENU, nullptr);
}

TEST(Menus, ShowTheMissingPictureForTheTransformTools)
{
    ShowMainWindow();
    GtkStockItem item;
    EXPECT_FALSE(gtk_stock_lookup(missing, &item)); // not one of the toolkit's, which has a "-"
    GdkPixbuf* shown = Render(pointmenu, missing);
    GdkPixbuf* wanted = Render(pointmenu, GTK_STOCK_MISSING_IMAGE);
    ASSERT_NE(shown, nullptr);
    EXPECT_TRUE(AreAlike(shown, wanted));
    g_object_unref(shown);
    g_object_unref(wanted);
}
