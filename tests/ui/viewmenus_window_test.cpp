#include "ui/viewmenus.h"

#include "geometry/construction.h"
#include "geometry/creation.h"
#include "geometry/duplication.h"
#include "geometry/marks.h"
#include "scene/model.h"
#include "scene/undo.h"
#include "tests/support/camera.h"
#include "tests/support/invariants.h"
#include "tests/support/pointer.h"
#include "tests/support/widgets.h"
#include "ui/coloredit.h"
#include "ui/transform.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <functional>
#include <string>
#include <vector>

namespace korvane
{

using namespace korvane::testing;

// A right click at the upper left corner of the window, the element under the pointer as the test
// says.
class ViewMenus : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ShowMainWindow();
        StartEmptyScene();
        EndNewShapeTool();
        duplicateshape = -1;
        duplicateside = -1;
        ForgetPressedElements();
        activepointer = nullptr;
        for (GtkWidget* item : {menuborder, menuvertex, menuedge}) {
            SetMark(item, false);
        }
    }

    void TearDown() override
    {
        for (GtkWidget* menu : GetMenus()) {
            gtk_menu_shell_cancel(GTK_MENU_SHELL(menu));
        }
        HandleEvents();
        activepointer = nullptr;
    }

    static std::vector<GtkWidget*> GetMenus()
    {
        return {sidemenu, pointmenu, stripemenu, bgmenu, bgmenu2};
    }

    static void SetMark(GtkWidget* item, bool marked)
    {
        toolsign = 1;
        gtk_check_menu_item_set_active(GTK_CHECK_MENU_ITEM(item), marked ? TRUE : FALSE);
        toolsign = 0;
    }

    static bool IsMarked(GtkWidget* item)
    {
        return gtk_check_menu_item_get_active(GTK_CHECK_MENU_ITEM(item)) != FALSE;
    }

    // The only menu that is shown, null when there is none or more than one. It is gone afterwards.
    static GtkWidget* ClickRight(ActiveElement* element)
    {
        activepointer = element;
        GdkEventButton event = {};
        event.button = 3;
        event.time = GDK_CURRENT_TIME;
        RightPressed(&event);
        HandleEvents();
        GtkWidget* found = nullptr;
        int number = 0;
        for (GtkWidget* menu : GetMenus()) {
            if (gtk_widget_get_mapped(menu)) {
                found = menu;
                number++;
                gtk_menu_shell_cancel(GTK_MENU_SHELL(menu));
            }
        }
        HandleEvents();
        EXPECT_EQ(toolsign, 0);
        return number == 1 ? found : nullptr;
    }
};

// A triangle, with one stripe, and behind it the cube whose points 0, 1 and 2 are marked. The
// sides of the cube are -z, +z, -y, +y, -x and +x.
static void AddTriangleAndCube()
{
    OwnedShape cube = Cube();
    const Side& side = cube->sides[0];
    const std::vector<int> marked(side.points, side.points + side.pointnumber);
    SetVertexes(cube.get(), marked);
    CompleteShape(cube.get());
    AddToScene(FlatTriangle(), "triangle");
    AddToScene(std::move(cube), "cube");
}

TEST_F(ViewMenus, OfAnEmptySceneHaveTheOneOfTheEmptyBackground)
{
    EXPECT_EQ(ClickRight(nullptr), bgmenu);
    EXPECT_EQ(ClickRight(&activebgcube[0]), bgmenu); // a wall is background too
}

TEST_F(ViewMenus, OfTheBackgroundOfASceneHaveTheOneForTheSelection)
{
    AddToScene(Square(), "square");
    EXPECT_EQ(ClickRight(nullptr), bgmenu2);
    EXPECT_EQ(ClickRight(&activebgcube[3]), bgmenu2);
}

TEST_F(ViewMenus, OfAPointSayWhetherItIsAVertex)
{
    AddTriangleAndCube();
    const int marked = shapes[0]->pointnumber + shapes[1]->vertexes[0];
    EXPECT_EQ(ClickRight(&activepoints[marked]), pointmenu);
    EXPECT_EQ(buttonpresspointactive, marked);
    EXPECT_TRUE(IsMarked(menuvertex));

    // point 0 of the triangle is not a vertex, whatever the cube's point 0 is
    EXPECT_EQ(ClickRight(&activepoints[0]), pointmenu);
    EXPECT_EQ(buttonpresspointactive, 0);
    EXPECT_FALSE(IsMarked(menuvertex));
}

TEST_F(ViewMenus, OfAStripeSayWhetherAllItsPointsAreVertexes)
{
    AddTriangleAndCube();
    const Shape* cube = shapes[1];
    for (int i = 0; i < cube->stripenumber; i++) {
        int marks = 0;
        const Stripe& stripe = cube->stripes[i];
        for (int k = 0; k < stripe.pointnumber; k++) {
            for (int v = 0; v < cube->vertexnumber; v++) {
                marks += cube->vertexes[v] == stripe.points[k] ? 1 : 0;
            }
        }
        const int record = shapes[0]->stripenumber + i;
        EXPECT_EQ(ClickRight(&activestripes[record]), stripemenu);
        EXPECT_EQ(buttonpressstripeactive, record);
        EXPECT_EQ(IsMarked(menuedge), marks == stripe.pointnumber) << "stripe " << i;
    }
    EXPECT_EQ(ClickRight(&activestripes[0]), stripemenu); // of the triangle
    EXPECT_EQ(buttonpressstripeactive, 0);
    EXPECT_FALSE(IsMarked(menuedge));
}

TEST_F(ViewMenus, OfASideNameItAndSayWhetherItsBorderIsAnEdge)
{
    AddTriangleAndCube();
    EXPECT_EQ(ClickRight(&activesides[1]), sidemenu); // the cube's first: all its corners
    EXPECT_EQ(buttonpresssideactive, -1);             // the press's alone
    EXPECT_EQ(duplicateshape, 1);
    EXPECT_EQ(duplicateside, 0);
    EXPECT_TRUE(IsMarked(menuborder));

    EXPECT_EQ(ClickRight(&activesides[3]), sidemenu); // -y: only two of its corners
    EXPECT_EQ(duplicateshape, 1);
    EXPECT_EQ(duplicateside, 2);
    EXPECT_FALSE(IsMarked(menuborder));

    EXPECT_EQ(ClickRight(&activesides[0]), sidemenu); // of the triangle
    EXPECT_EQ(duplicateshape, 0);
    EXPECT_EQ(duplicateside, 0);
    EXPECT_FALSE(IsMarked(menuborder));
}

TEST_F(ViewMenus, MarkTheirItemsWithoutBeingHeard)
{
    AddTriangleAndCube();
    ClickRight(&activesides[1]);
    ClickRight(&activesides[0]);
    ClickRight(&activepoints[shapes[0]->pointnumber + shapes[1]->vertexes[0]]);
    ClickRight(&activepoints[0]);
    EXPECT_EQ(pindex, 0); // nothing was edited
    SetMark(menuvertex, false);
    EXPECT_EQ(pindex, 0);
    gtk_check_menu_item_set_active(GTK_CHECK_MENU_ITEM(menuvertex), TRUE);
    EXPECT_EQ(pindex, 1);
    EXPECT_EQ(shapes[0]->vertexnumber, 1);
}

TEST_F(ViewMenus, StayAwayWhileAShapeOrADuplicateIsUnderConstruction)
{
    AddToScene(Square(), "square");
    newsign = 1;
    EXPECT_EQ(ClickRight(nullptr), nullptr);
    EXPECT_EQ(newsign, 0); // it is given up instead
    duplicatesign = 1;
    EXPECT_EQ(ClickRight(&activesides[0]), nullptr);
    EXPECT_EQ(duplicatesign, 0);
    EXPECT_EQ(ClickRight(&activesides[0]), sidemenu);
}

TEST_F(ViewMenus, LetTheNewShapeButtonUpInstead)
{
    GtkToggleToolButton* button = GTK_TOGGLE_TOOL_BUTTON(toolbutton_news);
    gtk_toggle_tool_button_set_active(button, TRUE);
    rdstate = 0;
    EXPECT_EQ(ClickRight(nullptr), nullptr);
    EXPECT_FALSE(gtk_toggle_tool_button_get_active(button));
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(rdstate, redrawwanted);
    EXPECT_EQ(ClickRight(nullptr), bgmenu);
}

// A right click whose press and release meet different elements: the square behind, side 0, reaches
// from (260, 640) to (740, 160) on the screen, the one before it, side 1, from (500, 560) to
// (660, 240).
class DriftingClick : public PointerTest
{
protected:
    void SetUp() override
    {
        PointerTest::SetUp();
        AddToView(MakeSquare(-0.3F, 0.3F, 0.3F, 0));
        AddToView(MakeSquare(0, 0.2F, 0.2F, 0.1F));
        duplicateshape = -1;
        duplicateside = -1;
    }

    void TearDown() override
    {
        EXPECT_EQ(FindBrokenRule(), "");
        ForgetPressedElements();
    }

    // From one x to another, as high as the middle or some reach of it.
    static OwnedShape MakeSquare(float left, float right, float reach, float depth)
    {
        return MakeFlatShape({{left, -reach, depth},
                              {right, -reach, depth},
                              {right, reach, depth},
                              {left, reach, depth}});
    }

    // Pops up a menu, which is put away again.
    void Drift(double fromx, double fromy, double tox, double toy, GtkWidget* menu)
    {
        Move(fromx, fromy);
        Press(right);
        Move(tox, toy);
        Release(right);
        EXPECT_TRUE(HandleEventsUntil([=] { return gtk_widget_get_mapped(menu) != FALSE; }));
        gtk_menu_shell_cancel(GTK_MENU_SHELL(menu));
        HandleEvents();
    }

    static void Choose(GtkWidget* menu, const std::string& label)
    {
        for (GtkWidget* item : GetChildren(menu)) {
            if (GetText(gtk_menu_item_get_label(GTK_MENU_ITEM(item))) == label) {
                gtk_menu_item_activate(GTK_MENU_ITEM(item));
                return;
            }
        }
        ADD_FAILURE() << "no item " << label;
    }

    // Runs the dialog of an item to see what it works on.
    static void ExpectWork(GtkWidget* menu, const std::string& label,
                           const std::function<void()>& look)
    {
        SCOPED_TRACE(label);
        bool opened = false;
        AnswerDialog([&](GtkDialog* dialog) {
            opened = true;
            look();
            gtk_dialog_response(dialog, GTK_RESPONSE_CANCEL);
            return true;
        });
        Choose(menu, label);
        EXPECT_TRUE(opened);
    }
};

TEST_F(DriftingClick, WorksOnThePressedSideAndMarksTheOneOfTheMenu)
{
    mainview.linesfade = 0; // or the edge between them would be pressed
    Drift(498, 400, 503, 400, sidemenu);
    const auto looktransform = [] {
        EXPECT_EQ(srshapenumber, 0);
        EXPECT_EQ(srsidenumber, 0);
    };
    ExpectWork(sidemenu, "Rotate side", looktransform);
    ExpectWork(sidemenu, "Scale side", looktransform);
    ExpectWork(sidemenu, "Rotate shape", looktransform);
    const auto lookcolor = [] { EXPECT_EQ(csides[0], &shapes[0]->sides[0]); };
    ExpectWork(sidemenu, "Set color of side", lookcolor);
    ExpectWork(sidemenu, "Set color of shape", lookcolor);
    EXPECT_EQ(pindex, 0);

    Choose(sidemenu, "Border of side set edge");
    EXPECT_EQ(shapes[0]->vertexnumber, 0);
    EXPECT_EQ(shapes[1]->vertexnumber, 4);
    Choose(sidemenu, "Duplicate side"); // from the middle of the side before
    ASSERT_EQ(newpointnumber, 1);
    EXPECT_NEAR(double(newpoints[0][0]), 0.1, 1e-6);
    EndNewShapeTool();
}

TEST_F(DriftingClick, MovesThePressedSide)
{
    mainview.linesfade = 0;
    Drift(498, 400, 503, 400, sidemenu);
    Choose(sidemenu, "Move side");
    Move(500, 700);
    Press(left);
    Move(580, 700); // 0.1 to the right
    Release(left);
    EXPECT_NEAR(double(shapes[0]->points[0][0]), -0.2, 1e-6);
    EXPECT_EQ(shapes[1]->points[0][0], 0);
}

TEST_F(DriftingClick, OfABackgroundWorksOnNoSide)
{
    mainview.linesfade = 0;
    Drift(258, 400, 263, 400, sidemenu);
    for (const char* label : {"Set color of side", "Move side", "Rotate side", "Scale side",
                              "Move shape", "Rotate shape", "Scale shape"}) {
        Choose(sidemenu, label); // a dialog would run for ever
        EXPECT_EQ(mainview.action, TOOL_NONE) << label;
    }
    EXPECT_EQ(pindex, 0);
    ExpectWork(sidemenu, "Set color of shape", [] { EXPECT_EQ(csidenumber, 4 * 2); }); // both
    Choose(sidemenu, "Border of side set edge");
    EXPECT_EQ(shapes[0]->vertexnumber, 4);
}

// The pointer comes to the lower left corner of the square before.
TEST_F(DriftingClick, OfASideWorksOnItThoughThePointHasTheMenu)
{
    Drift(490, 570, 494, 566, pointmenu);
    ExpectWork(pointmenu, "Rotate shape", [] { EXPECT_EQ(srshapenumber, 0); });
    ExpectWork(pointmenu, "Set color of shape", [] { EXPECT_EQ(csides[0], &shapes[0]->sides[0]); });
    Choose(pointmenu, "Set vertex");
    EXPECT_EQ(shapes[0]->vertexnumber, 0);
    ASSERT_EQ(shapes[1]->vertexnumber, 1);
    EXPECT_EQ(shapes[1]->vertexes[0], 0);
}

} // namespace korvane
