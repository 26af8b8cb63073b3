#include "ui/viewtoggles.h"

#include "tests/support/widgets.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

using namespace korvane;
using namespace korvane::testing;

static void SetPressed(std::size_t place, bool pressed)
{
    GtkWidget* notebook = FindWidget(ShowMainWindow(), GTK_TYPE_NOTEBOOK);
    GtkWidget* toolbar = gtk_notebook_get_nth_page(GTK_NOTEBOOK(notebook), 2);
    GtkWidget* item = GetChildren(toolbar).at(place);
    gtk_toggle_tool_button_set_active(GTK_TOGGLE_TOOL_BUTTON(item), pressed);
}

TEST(ViewToggles, ChooseTheBackgroundAndTheDisplay)
{
    SetPressed(1, true);
    EXPECT_EQ(mainview.bgshape, BACKGROUND_PLANE);
    SetPressed(2, true);
    EXPECT_EQ(mainview.bgshape, BACKGROUND_NONE);
    SetPressed(0, true);
    EXPECT_EQ(mainview.bgshape, BACKGROUND_CUBE);
    SetPressed(10, true);
    EXPECT_EQ(mainview.showshape, SHAPE_SIDES);
    SetPressed(11, true);
    EXPECT_EQ(mainview.showshape, SHAPE_LINES);
    SetPressed(9, true);
    EXPECT_EQ(mainview.showshape, SHAPE_BOTH);
}

// The level stays where it is: the timer alone moves it.
TEST(ViewToggles, SetTheTargetOfTheirByteAlone)
{
    struct Row {
        std::size_t place;
        int8_t* fade;
    };
    const Row rows[] = {{4, &mainview.gradientfade},
                        {6, &mainview.smallcubefade},
                        {7, &mainview.centerlinesfade},
                        {14, &mainview.perspective}};
    for (const Row& row : rows) {
        SetPressed(row.place, false);
        *row.fade = 7;
        SetPressed(row.place, true);
        EXPECT_EQ(*row.fade, 23);
        SetPressed(row.place, false);
        EXPECT_EQ(*row.fade, 7);
    }
}
