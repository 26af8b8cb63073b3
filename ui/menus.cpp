#include "ui/menus.h"

#include "geometry/construction.h"
#include "geometry/duplicationclicks.h"
#include "geometry/marks.h"
#include "geometry/newpoints.h"
#include "scene/clipboard.h"
#include "scene/treeedit.h"
#include "scene/treeview.h"
#include "ui/coloredit.h"
#include "ui/iconimage.h"
#include "ui/transform.h"
#include "ui/viewmenus.h"

#include <gtk/gtk.h>

#include <span>

namespace korvane
{

enum ItemKind { ITEM_IMAGE, ITEM_CHECK, ITEM_SEPARATOR };

struct ItemRow {
    ItemKind kind;
    const char* label = nullptr;  // a constant, with mnemonic; null: a separator
    const char* icon = nullptr;   // a constant, for MakeIconImage; null: a check item
    GCallback handler = nullptr;  // of "activate", or "toggled" for a check item
    gpointer data = nullptr;      // borrowed; handed to the handler: a number or a widget
    GtkWidget** global = nullptr; // borrowed; where other modules find the item
};

// Deliberate: the underscore. No stock picture of the toolkit is called so; the program gives the
// name the toolkit's missing-image icon, since the toolkit itself would show nothing at all.
static constexpr const char* missingimage = "gtk-missing_image";

static void AddMissingImage()
{
    GtkIconFactory* factory = gtk_icon_factory_new();
    gtk_icon_factory_add(factory, missingimage,
                         gtk_icon_factory_lookup_default(GTK_STOCK_MISSING_IMAGE));
    gtk_icon_factory_add_default(factory);
    g_object_unref(factory);
}

static gpointer Number(int number)
{
    return GINT_TO_POINTER(number);
}

static GtkWidget* MakeItemOfKind(const ItemRow& row)
{
    if (row.kind == ITEM_SEPARATOR) {
        return gtk_separator_menu_item_new();
    }
    if (row.kind == ITEM_CHECK) {
        return gtk_check_menu_item_new_with_mnemonic(row.label);
    }
    GtkWidget* item = gtk_image_menu_item_new_with_mnemonic(row.label);
    gtk_image_menu_item_set_image(GTK_IMAGE_MENU_ITEM(item),
                                  MakeIconImage(row.icon, GTK_ICON_SIZE_MENU));
    return item;
}

static void ConnectItem(GtkWidget* item, const ItemRow& row)
{
    if (row.global != nullptr) {
        *row.global = item;
    }
    g_signal_connect(item, row.kind == ITEM_CHECK ? "toggled" : "activate", row.handler, row.data);
}

static void AddItems(GtkWidget* menu, std::span<const ItemRow> rows)
{
    for (const ItemRow& row : rows) {
        GtkWidget* item = MakeItemOfKind(row);
        if (row.kind != ITEM_SEPARATOR) {
            ConnectItem(item, row);
        }
        gtk_menu_shell_append(GTK_MENU_SHELL(menu), item);
    }
    gtk_widget_show_all(menu); // what it holds; the menu itself waits to be popped up
}

// An item belongs to one menu only, so each menu gets a group of its own.
static void AddSideGroup(GtkWidget* menu)
{
    const ItemRow rows[] = {
        {ITEM_IMAGE, "Set color of side", "gtk-select-color", G_CALLBACK(ColorSide)},
        {ITEM_IMAGE, "Move side", missingimage, G_CALLBACK(ActionType), Number(MOVE_SIDE)},
        {ITEM_IMAGE, "Rotate side", missingimage, G_CALLBACK(ActionType), Number(ROTATE_SIDE)},
        {ITEM_IMAGE, "Scale side", missingimage, G_CALLBACK(ActionType), Number(SCALE_SIDE)},
        {ITEM_SEPARATOR},
    };
    AddItems(menu, rows);
}

// `source` goes with the delete command: 1 below a side, 2 a point, 3 a stripe. Nobody reads it.
static void AddShapeGroup(GtkWidget* menu, int source)
{
    const ItemRow rows[] = {
        {ITEM_IMAGE, "Set color of shape", "gtk-select-color", G_CALLBACK(ColorShape)},
        {ITEM_IMAGE, "Move shape", missingimage, G_CALLBACK(ActionType), Number(MOVE_SHAPE)},
        {ITEM_IMAGE, "Rotate shape", missingimage, G_CALLBACK(ActionType), Number(ROTATE_SHAPE)},
        {ITEM_IMAGE, "Scale shape", missingimage, G_CALLBACK(ActionType), Number(SCALE_SHAPE)},
        {ITEM_IMAGE, "Delete Shape", "gtk-delete", G_CALLBACK(DelShape), Number(source)},
        {ITEM_SEPARATOR},
    };
    AddItems(menu, rows);
}

static void AddSelectionGroup(GtkWidget* menu)
{
    const ItemRow rows[] = {
        {ITEM_IMAGE, "Set color of selected", "gtk-select-color", G_CALLBACK(ColorSelected)},
        {ITEM_IMAGE, "Move selected", missingimage, G_CALLBACK(ActionType), Number(MOVE_SELECTED)},
        {ITEM_IMAGE, "Rotate selected", missingimage, G_CALLBACK(ActionType),
         Number(ROTATE_SELECTED)},
        {ITEM_IMAGE, "Scale selected", missingimage, G_CALLBACK(ActionType),
         Number(SCALE_SELECTED)},
    };
    AddItems(menu, rows);
}

static void MakeTreeMenu()
{
    const ItemRow rows[] = {
        {ITEM_IMAGE, "New shape...", "gtk-new", G_CALLBACK(NewShapeFromMenu), toolbutton_news},
        {ITEM_IMAGE, "New folder...", "gtk-directory", G_CALLBACK(NewFolder)},
        {ITEM_IMAGE, "Copy", "gtk-copy", G_CALLBACK(CopySelected), nullptr, &menucopys},
        {ITEM_IMAGE, "Paste", "gtk-paste", G_CALLBACK(PasteSelected), nullptr, &menupastes},
        {ITEM_IMAGE, "Rename", "gtk-refresh", G_CALLBACK(RenameSelected), nullptr, &menurename},
        {ITEM_IMAGE, "Delete", "gtk-delete", G_CALLBACK(DelSelected), nullptr, &menudels},
        {ITEM_IMAGE, "Set color", "gtk-select-color", G_CALLBACK(ColorSelected), nullptr,
         &menucolor},
    };
    treemenu = gtk_menu_new();
    AddItems(treemenu, rows);
}

static void MakeSideMenu()
{
    const ItemRow rows[] = {
        {ITEM_CHECK, "Border of side set edge", nullptr, G_CALLBACK(SetBorder), nullptr,
         &menuborder},
        {ITEM_IMAGE, "Duplicate side", "gtk-copy", G_CALLBACK(Duplicate), nullptr, &menuduplicate},
        {ITEM_SEPARATOR},
    };
    sidemenu = gtk_menu_new();
    AddItems(sidemenu, rows);
    AddSideGroup(sidemenu);
    AddShapeGroup(sidemenu, 1);
    AddSelectionGroup(sidemenu);
}

static void MakePointMenu()
{
    const ItemRow rows[] = {
        {ITEM_CHECK, "Set vertex", nullptr, G_CALLBACK(SetVertex), nullptr, &menuvertex},
        {ITEM_IMAGE, "Delete point", "gtk-delete", G_CALLBACK(DelPoint), nullptr, &menupointdel},
        {ITEM_SEPARATOR},
    };
    pointmenu = gtk_menu_new();
    AddItems(pointmenu, rows);
    AddShapeGroup(pointmenu, 2);
    AddSelectionGroup(pointmenu);
}

static void MakeStripeMenu()
{
    const ItemRow rows[] = {
        {ITEM_CHECK, "Set edge", nullptr, G_CALLBACK(SetEdge), nullptr, &menuedge},
        {ITEM_IMAGE, "Delete stripe", "gtk-delete", G_CALLBACK(DelStripe), nullptr, &menustripedel},
        {ITEM_SEPARATOR},
    };
    stripemenu = gtk_menu_new();
    AddItems(stripemenu, rows);
    AddShapeGroup(stripemenu, 3);
    AddSelectionGroup(stripemenu);
}

static void MakeBackgroundMenus()
{
    const ItemRow rows[] = {
        {ITEM_IMAGE, "New Shape", "gtk-new", G_CALLBACK(MenuNewShape)},
        {ITEM_SEPARATOR},
    };
    bgmenu = gtk_menu_new();
    AddItems(bgmenu, std::span(rows).first(1));
    bgmenu2 = gtk_menu_new();
    AddItems(bgmenu2, rows);
    AddSelectionGroup(bgmenu2);
}

void MakeMenus()
{
    AddMissingImage();
    MakeTreeMenu();
    MakeSideMenu();
    MakePointMenu();
    MakeStripeMenu();
    MakeBackgroundMenus();
}

} // namespace korvane
