#include "ui/viewtoggles.h"

#include "scene/model.h"
#include "scene/treeview.h"
#include "tests/support/filetypist.h"
#include "tests/support/shapes.h"
#include "tests/support/widgets.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <unistd.h>

using namespace korvane;
using namespace korvane::testing;

static GtkToggleToolButton* GetToggle(std::size_t place)
{
    GtkWidget* notebook = FindWidget(ShowMainWindow(), GTK_TYPE_NOTEBOOK);
    GtkWidget* toolbar = gtk_notebook_get_nth_page(GTK_NOTEBOOK(notebook), 2);
    return GTK_TOGGLE_TOOL_BUTTON(GetChildren(toolbar).at(place));
}

static void SetPressed(std::size_t place, bool pressed)
{
    gtk_toggle_tool_button_set_active(GetToggle(place), pressed);
}

static constexpr std::size_t imagebutton = 5;
static constexpr std::size_t onlyselectedbutton = 13;

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

// Presses the picture button and types this path into the dialog that it opens.
static void ChoosePicture(const std::string& path)
{
    ShowMainWindow();
    Typist typist(path);
    AnswerDialog([=](GtkDialog* dialog) mutable {
        if (!typist.Type(dialog)) {
            return false;
        }
        Press(dialog, GTK_RESPONSE_OK);
        return true;
    });
    SetPressed(imagebutton, true);
}

TEST(ViewToggles, ShowAChosenPictureUntilTheyAreSwitchedOff)
{
    ChoosePicture(std::string(KORVANE_SOURCE_DIR) + "/icons/cube.png");
    EXPECT_TRUE(gtk_toggle_tool_button_get_active(GetToggle(imagebutton)));
    EXPECT_EQ(mainview.imagefade & fadetarget, fadetarget);
    EXPECT_NE(mainview.bgimage, nullptr);
    SetPressed(imagebutton, false);
    EXPECT_EQ(mainview.imagefade & fadetarget, 0);
}

TEST(ViewToggles, GoUpAgainWhenNoPictureIsChosen)
{
    ShowMainWindow();
    AnswerDialog(GTK_RESPONSE_CANCEL);
    SetPressed(imagebutton, true);
    EXPECT_FALSE(gtk_toggle_tool_button_get_active(GetToggle(imagebutton)));
    EXPECT_EQ(mainview.imagefade, 0);
}

TEST(ViewToggles, GoUpAgainWhenTheFileIsNoPicture)
{
    char name[] = "/tmp/korvane-picture-XXXXXX";
    const int file = mkstemp(name);
    ASSERT_EQ(write(file, "no picture\n", 11), 11);
    close(file);
    ChoosePicture(name);
    EXPECT_FALSE(gtk_toggle_tool_button_get_active(GetToggle(imagebutton)));
    EXPECT_EQ(mainview.imagefade, 0);
    std::remove(name);
}

// A shape in a folder and one beside it, all shown and none marked.
static void MakeTwoShapes()
{
    ShowMainWindow();
    StartEmptyScene();
    const int folder = AddTreeIter(0, NODE_FOLDER, CopyText("f"));
    AddToScene(Square(), "inside", folder);
    AddToScene(Square(), "beside");
    selected[0] = selectedshown;
    selected[1] = selectedshown;
}

TEST(ViewToggles, ShowWhatIsSelectedInTheTreeAloneOrAll)
{
    MakeTwoShapes();
    SetPressed(onlyselectedbutton, false);
    SelectNodes({1}); // the folder
    SetPressed(onlyselectedbutton, true);
    EXPECT_EQ(mainview.onlyselected, 1);
    EXPECT_EQ(selected[0] & selectedshown, selectedshown);
    EXPECT_EQ(selected[1] & selectedshown, 0);
    SetPressed(onlyselectedbutton, false);
    EXPECT_EQ(mainview.onlyselected, 0);
    EXPECT_EQ(selected[1] & selectedshown, selectedshown);
}

TEST(ViewToggles, HideEverythingWhenOnlyNothingIsSelected)
{
    MakeTwoShapes();
    SetPressed(onlyselectedbutton, false);
    SelectNodes({});
    SetPressed(onlyselectedbutton, true);
    EXPECT_EQ(selected[0] & selectedshown, 0);
    EXPECT_EQ(selected[1] & selectedshown, 0);
}
