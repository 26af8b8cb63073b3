// The window without a readable icon, which needs a process to itself.
#include "scene/arrays.h"
#include "scene/scenefile.h"
#include "scene/treeview.h"
#include "tests/support/widgets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

using namespace korvane;
using namespace korvane::testing;

namespace fs = std::filesystem;

// A working directory with an icon file of every name, none of them a picture. They hide those of
// an installed program.
static void EnterFolderOfBrokenIcons()
{
    char name[] = "/tmp/korvane-icons-XXXXXX";
    const fs::path folder = mkdtemp(name);
    fs::create_directory(folder / "icons");
    for (const auto& icon : fs::directory_iterator(fs::path(KORVANE_SOURCE_DIR) / "icons")) {
        std::ofstream(folder / "icons" / icon.path().filename()) << "no picture\n";
    }
    fs::current_path(folder);
}

static int CountBrokenButtons(GtkWidget* toolbar)
{
    int broken = 0;
    for (GtkWidget* item : GetChildren(toolbar)) {
        if (!GTK_IS_TOOL_BUTTON(item)) {
            continue;
        }
        GtkImage* image = GTK_IMAGE(gtk_tool_button_get_icon_widget(GTK_TOOL_BUTTON(item)));
        char* stock = nullptr;
        gtk_image_get_stock(image, &stock, nullptr);
        broken += GetText(stock) == GTK_STOCK_MISSING_IMAGE ? 1 : 0;
    }
    return broken;
}

TEST(MainWindow, StartsWithoutASingleIcon)
{
    EnterFolderOfBrokenIcons();
    ::testing::internal::CaptureStdout();
    GtkWidget* window = ShowMainWindow();
    const std::string output = ::testing::internal::GetCapturedStdout();

    GtkNotebook* notebook = GTK_NOTEBOOK(FindWidget(window, GTK_TYPE_NOTEBOOK));
    EXPECT_EQ(CountBrokenButtons(gtk_notebook_get_nth_page(notebook, 0)), 1);
    EXPECT_EQ(CountBrokenButtons(gtk_notebook_get_nth_page(notebook, 1)), 0);
    EXPECT_EQ(CountBrokenButtons(gtk_notebook_get_nth_page(notebook, 2)), 14);
    for (GdkPixbuf* icon : {pbfolderc, pbfoldero, pbside, pbshape}) {
        EXPECT_EQ(icon, nullptr);
    }
    // A line for each of the window's icon, the fifteen buttons and the four kinds of row, and one
    // for each of the view's three pictures.
    EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 1 + 15 + 4 + 3);

    AddTreeIter(0, NODE_FOLDER, CopyText("cellar")); // a row without a picture
    HandleEvents();
    fs::remove_all(fs::current_path());
}
