#include "geometry/creation.h"

#include "geometry/construction.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "scene/treeselection.h"
#include "scene/treeview.h"
#include "tests/support/camera.h"
#include "tests/support/invariants.h"
#include "tests/support/widgets.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace korvane
{

using namespace korvane::testing;
using ::testing::ElementsAre;

class Creation : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ShowMainWindow();
        StartView();
        newsign = 1;
    }

    void TearDown() override
    {
        EXPECT_EQ(FindBrokenRule(), "");
        EndNewShapeTool();
        StartView();
    }

    // Clicks at these places, in the plane of the screen, which is the world's z = 0.
    void Click(const Points& places)
    {
        for (const std::array<float, 3>& place : places) {
            AddNewPoint(place.data());
        }
    }

    // Clicks at these places and closes the polygon on one of them.
    void Close(const Points& places, int picked)
    {
        Click(places);
        Click({places[std::size_t(picked)]});
        activepointer = GetNewPointRecords() + picked;
    }

    // Clicks from one point of a shape over these places to another point of it.
    void ClickChain(const Shape& shape, int start, const Points& places, int end)
    {
        AddNewPoint(shape.points[start]);
        Click(places);
        AddNewPoint(shape.points[end]);
    }

    int AddFolder(const char* name)
    {
        return AddTreeIter(0, NODE_FOLDER, CopyText(name));
    }

    std::vector<int> GetSelectedNodes()
    {
        return {treeselected, treeselected + treeselectednumber};
    }
};

static const Points triangle = {{-0.2F, -0.2F, 0}, {0.2F, -0.2F, 0}, {0, 0.2F, 0}};

static void ExpectPlaces(const Shape& shape, const Points& places)
{
    ASSERT_EQ(shape.pointnumber, int(places.size()));
    for (std::size_t i = 0; i < places.size(); i++) {
        for (std::size_t k = 0; k < 3; k++) {
            EXPECT_NEAR(shape.points[i][k], places[i][k], 1e-6) << "point " << i;
        }
    }
}

TEST_F(Creation, MakesAFlatShapeOfALoop)
{
    Close(triangle, 0);
    ASSERT_TRUE(CreateOneSideShape());
    ASSERT_EQ(shapenumber, 1);
    const Shape& shape = *shapes[0];
    ExpectPlaces(shape, triangle);
    EXPECT_EQ(shape.vertexnumber, 0);
    EXPECT_THAT(OutlinesOf(shape), ElementsAre(ElementsAre(0, 1, 2)));
    EXPECT_THAT(StripesOf(shape), ElementsAre(ElementsAre(0, 1, 2, 0)));
    EXPECT_EQ(shape.trianglenumber, 1);
    EXPECT_NEAR(shape.center[1], -0.2 / 3, 1e-6);
    EXPECT_NEAR(shape.radius, 0.2 + 0.2 / 3, 1e-6); // to the upper corner
    EndNewShape();
}

TEST_F(Creation, ShowsBothFacesOfANewShapeInGrey)
{
    Close(triangle, 0);
    ASSERT_TRUE(CreateOneSideShape());
    const Side& side = shapes[0]->sides[0];
    EXPECT_EQ(side.visibility, VISIBLE_BOTH);
    EXPECT_THAT(std::vector<float>(side.colors, side.colors + BACK_LIGHT),
                ElementsAre(0.8F, 0.8F, 0.8F, 1, 0.2F, 0.2F, 0.2F, 1, 1));
    EXPECT_TRUE(std::equal(side.colors, side.colors + BACK_LIGHT, side.colors + BACK_LIGHT));
    EndNewShape();
}

TEST_F(Creation, DropsThePointsBeforeTheOneOnWhichItIsClosed)
{
    // Six clicks, of which the sixth closes on the third.
    Close({{-0.4F, 0, 0}, {-0.3F, 0.1F, 0}, triangle[0], triangle[1], triangle[2]}, 2);
    ASSERT_EQ(newpointnumber, 6);
    ASSERT_TRUE(CreateOneSideShape());
    ExpectPlaces(*shapes[0], triangle);
    EndNewShape();
}

TEST_F(Creation, MakesNothingOfFewerThanThreePoints)
{
    Close(triangle, 1);
    EXPECT_FALSE(CreateOneSideShape());
    activepointer = nullptr;
    EXPECT_FALSE(CreateOneSideShape());
    EXPECT_EQ(shapenumber, 0);
}

TEST_F(Creation, ProjectsTheNewShapeAndKeepsTheRecordsOfItsPoints)
{
    Close(triangle, 0);
    ASSERT_TRUE(CreateOneSideShape());
    EXPECT_NE(showtable[0], SHOW_NOTHING);
    EXPECT_EQ(activepointnumber, 3 + 4); // the four clicks stay until the tool ends
    EndNewShape();
    EXPECT_EQ(activepointnumber, 3);
}

TEST_F(Creation, NamesAndSelectsTheNewShapeAndEndsTheTool)
{
    GtkToggleToolButton* button = GTK_TOGGLE_TOOL_BUTTON(toolbutton_news);
    gtk_toggle_tool_button_set_active(button, TRUE);
    newsign = 1;
    Close(triangle, 0);
    ASSERT_TRUE(CreateOneSideShape());
    EndNewShape();
    ASSERT_EQ(treeiternumber, 2);
    EXPECT_STREQ(treeiters[1].name, "shape");
    EXPECT_EQ(treeiters[1].type, NODE_SIDE);
    EXPECT_EQ(treeiters[1].shapeindex, 0);
    EXPECT_EQ(treeiters[1].parent, 0);
    EXPECT_THAT(GetSelectedNodes(), ElementsAre(1));
    EXPECT_FALSE(gtk_toggle_tool_button_get_active(button));
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(newpointnumber, 0);
}

TEST_F(Creation, EndsTheToolAlsoWithTheButtonUp)
{
    Close(triangle, 0);
    ASSERT_TRUE(CreateOneSideShape());
    EndNewShape();
    EXPECT_EQ(newsign, 0);
    EXPECT_EQ(newpointnumber, 0);
}

TEST_F(Creation, KeepsTheShapesDrawnBeforeSelected)
{
    for (int i = 0; i < 2; i++) {
        Close(triangle, 0);
        ASSERT_TRUE(CreateOneSideShape());
        EndNewShape();
    }
    EXPECT_EQ(treeselectednumber, 2);
    EXPECT_TRUE((selected[0] & selectedintree) != 0 && (selected[1] & selectedintree) != 0);
}

TEST_F(Creation, PutsTheNewShapeIntoTheSelectedFolder)
{
    AddFolder("other");
    const int folder = AddFolder("folder");
    SelectRow(folder);
    Close(triangle, 0);
    ASSERT_TRUE(CreateOneSideShape());
    EndNewShape();
    EXPECT_EQ(treeiters[3].parent, folder);
    EXPECT_THAT(GetSelectedNodes(), ElementsAre(folder)); // which holds the shape already
}

TEST_F(Creation, CutsASideOfABody)
{
    const int body = AddToView(Cube());
    rdstate = 0;
    ClickChain(*shapes[body], 4, {{0.2F, -0.2F, 0.5F}}, 6);
    CreateNewSide(body, 4, 6);
    const Shape& cut = *shapes[body];
    EXPECT_THAT(OutlinesOf(cut)[1], ElementsAre(4, 5, 6, 8));
    EXPECT_THAT(OutlinesOf(cut)[6], ElementsAre(6, 7, 4, 8));
    EXPECT_EQ(FindBrokenRuleOfClosedBody(cut), "");
    EXPECT_EQ(cut.edgenumber, 3 * 14 / 2); // every edge is one of two triangles
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
}

TEST_F(Creation, RaisesAFlatShapeIntoABodyAndItsNodeFollows)
{
    const int index = AddToView(Square());
    ASSERT_EQ(treeiters[1].type, NODE_SIDE);
    ClickChain(*shapes[index], 0, {{0.5F, 0.5F, 1}}, 2);
    CreateNewSide(index, 0, 2);
    EXPECT_EQ(OutlinesOf(*shapes[index]), OutlinesOf(*RaisedSquare()));
    EXPECT_EQ(FindBrokenRuleOfClosedBody(*shapes[index]), "");
    EXPECT_EQ(treeiters[1].type, NODE_SHAPE);
    EXPECT_FLOAT_EQ(shapes[index]->center[2], 0.2F); // one of five points at height 1
}

TEST_F(Creation, LeavesAShapeAloneThatCannotTakeTheChain)
{
    const int body = AddToView(Cube());
    ClickChain(*shapes[body], 4, {}, 5);
    CreateNewSide(body, 4, 5);
    EXPECT_EQ(OutlinesOf(*shapes[body]), OutlinesOf(*Cube()));
    EXPECT_EQ(StripesOf(*shapes[body]), StripesOf(*Cube()));
    EXPECT_EQ(shapes[body]->pointnumber, 8);
}

} // namespace korvane
