#include "geometry/editing.h"

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "scene/treeview.h"
#include "scene/undo.h"
#include "tests/support/camera.h"
#include "tests/support/edits.h"
#include "tests/support/invariants.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <algorithm>

namespace korvane::testing
{

using Chain = std::vector<int>;

// Seen from the front, so that the screen's coordinates are the model's.
class Editing : public StartViewTest
{
protected:
    void TearDown() override
    {
        EXPECT_EQ(FindBrokenRule(), "");
        DelNewPoints();
    }

    // The pointer's place; a click would place a point there at this depth.
    static void PointAt(float x, float y, float depth)
    {
        mouse[0] = gmouse[0] = x;
        mouse[1] = gmouse[1] = y;
        gmouse[2] = depth;
    }

    // Two squares: in the lists four points, one stripe and one side of each.
    static void AddTwoSquares()
    {
        AddToView(Square());
        AddToView(Square());
    }
};

TEST_F(Editing, AddPointPutsAPointAtThePointerIntoTheNearestSegment)
{
    AddTwoSquares();
    PointAt(0.25F, 0.01F, 0.5F);
    EXPECT_EQ(AddPoint(1), 8); // four points of the first square, five of the second
    EXPECT_EQ(OutlinesOf(*shapes[1]), (Outlines{{0, 4, 1, 2, 3}}));
    EXPECT_EQ(StripesOf(*shapes[1]), (Outlines{{0, 4, 1, 2, 3, 0}}));
    EXPECT_FLOAT_EQ(shapes[1]->points[4][0], 0.25F);
    EXPECT_FLOAT_EQ(shapes[1]->points[4][1], 0.01F);
    EXPECT_FLOAT_EQ(shapes[1]->points[4][2], 0.5F);
    EXPECT_EQ(shapes[0]->pointnumber, 4);
    EXPECT_EQ(pindex, 1);
}

TEST_F(Editing, AddPointCarriesThePlaceIntoTheModel)
{
    mainview.scale = 0.5F;
    mainview.center[0] = 1;
    AddToView(Square()); // its lower edge runs from -0.5 to 0 on the screen
    PointAt(-0.25F, 0, 0.125F);
    EXPECT_EQ(AddPoint(0), 4);
    EXPECT_FLOAT_EQ(shapes[0]->points[4][0], 0.5F);
    EXPECT_FLOAT_EQ(shapes[0]->points[4][2], 0.25F);
}

TEST_F(Editing, AddPointBesideAllSegmentsInsertsNothingYetLeavesAnUndoStep)
{
    AddToView(Square());
    PointAt(1.1F, 1.1F, 0); // near the edge's line, but outside the circle over the edge
    EXPECT_EQ(AddPoint(0), -1);
    EXPECT_EQ(shapes[0]->pointnumber, 4);
    EXPECT_EQ(pindex, 1);
}

TEST_F(Editing, AddPointToAStripeThatIsGoneDoesNothing)
{
    AddToView(Square());
    PointAt(0.5F, 0, 0);
    EXPECT_EQ(AddPoint(1), -1);
    EXPECT_EQ(AddPoint(-1), -1);
    EXPECT_EQ(pindex, 0);
}

TEST_F(Editing, PointMoveKeepsThePointsDepth)
{
    AddToView(Cube());
    PointMove(6, 0.7F, 0.8F, 1); // (0.5, 0.5, 0.5)
    EXPECT_FLOAT_EQ(shapes[0]->points[6][0], 0.7F);
    EXPECT_FLOAT_EQ(shapes[0]->points[6][1], 0.8F);
    EXPECT_FLOAT_EQ(shapes[0]->points[6][2], 0.5F);
    EXPECT_FLOAT_EQ(shapest[0]->points[6][0], 0.7F);
    EXPECT_EQ(rdstate & redrawwanted, redrawwanted);
}

TEST_F(Editing, PointMoveKeepsThePointsDepthThoughItTakesItsShapeOutOfTheView)
{
    mainview.center[2] = 0.25F; // the triangle's depth is 0.25 less than its z
    AddToView(MakeFlatShape({{0.4F, 0, 0}, {0.9F, -0.1F, 0}, {0.9F, 0.1F, 0}}));
    PointMove(0, 2, 0, 1);
    ASSERT_EQ(showtable[0], SHOW_NOTHING);
    PointMove(0, 0.4F, 0, 0);
    EXPECT_EQ(showtable[0], SHOW_ROUNDED);
    EXPECT_FLOAT_EQ(shapes[0]->points[0][0], 0.4F);
    EXPECT_FLOAT_EQ(shapes[0]->points[0][2], 0);
}

TEST_F(Editing, PointMoveMovesThePointOfItsOwnShape)
{
    AddTwoSquares();
    PointMove(5, 0.75F, -0.25F, 1);
    EXPECT_FLOAT_EQ(shapes[1]->points[1][0], 0.75F);
    EXPECT_FLOAT_EQ(shapes[0]->points[1][0], 1);
}

TEST_F(Editing, PointMoveLeavesOneUndoStepForAWholeDrag)
{
    AddToView(Square());
    PointMove(2, 1.1F, 1, 1);
    PointMove(2, 1.2F, 1, 0);
    PointMove(2, 1.3F, 1, -1);
    EXPECT_EQ(pindex, 1);
    EXPECT_FLOAT_EQ(shapes[0]->points[2][0], 1.3F);
}

TEST_F(Editing, PointMoveCutsTheSidesOfThePointAgain)
{
    AddToView(Square());
    PointMove(2, 0.25F, 0.25F, 1); // now only 0-2 can be cut
    for (int k = 0; k < 2; k++) {
        const Corners corners = CornersOf(*shapes[0], 0, k);
        EXPECT_EQ(std::count(corners.begin(), corners.end(), 0), 1);
        EXPECT_EQ(std::count(corners.begin(), corners.end(), 2), 1);
    }
}

TEST_F(Editing, PointMoveOnNoPointDoesNothing)
{
    AddToView(Square());
    PointMove(-1, 0.1F, 0.1F, 1);
    PointMove(4, 0.1F, 0.1F, 1);
    EXPECT_EQ(pindex, 0);
    EXPECT_FLOAT_EQ(shapes[0]->points[0][0], 0);
}

TEST_F(Editing, PointMoveMovesANewPointOfAConstruction)
{
    mainview.scale = 0.5F;
    AddToView(Square());
    newsign = 1;
    const float first[3] = {0.1F, 0.2F, 0.3F};
    const float second[3] = {-0.1F, -0.2F, -0.3F};
    AddNewPoint(first);
    AddNewPoint(second);
    PointMove(5, 0.4F, 0.25F, 1); // behind the four points of the square and the first new one
    EXPECT_FLOAT_EQ(rotated[1][0], 0.4F);
    EXPECT_FLOAT_EQ(rotated[1][1], 0.25F);
    EXPECT_FLOAT_EQ(rotated[1][2], -0.3F);
    EXPECT_FLOAT_EQ(newpoints[1][0], 0.8F);
    EXPECT_FLOAT_EQ(newpoints[1][1], 0.5F);
    EXPECT_FLOAT_EQ(newpoints[1][2], -0.6F);
    EXPECT_FLOAT_EQ(newpoints[0][0], 0.2F);
    EXPECT_EQ(pindex, 0);
}

TEST_F(Editing, PointMoveNeverMovesACentre)
{
    AddToView(Square());
    duplicatesign = 1;
    const float centers[1][3] = {{0.5F, 0.5F, 0}};
    const float path[3] = {0.1F, 0.2F, 0.3F};
    AddCenterPoints(centers, 1);
    AddNewPoint(path);
    PointMove(4, 0.4F, 0.25F, 1);
    EXPECT_FLOAT_EQ(rcenterpoints[0][0], 0.5F);
    EXPECT_FLOAT_EQ(rotated[0][0], 0.1F);
    PointMove(5, 0.4F, 0.25F, 1);
    EXPECT_FLOAT_EQ(rotated[0][0], 0.4F);
}

TEST_F(Editing, RemovePointTakesAPointAwayAsOneUndoStep)
{
    AddToView(Square());
    AddToView(Pyramid());
    RemovePoint(4 + 4); // the apex: its stripes go one after the other
    EXPECT_EQ(OutlinesOf(*shapes[1]), (Outlines{{0, 3, 2, 1}}));
    EXPECT_EQ(pindex, 1);
    EXPECT_EQ(treeiters[2].type, NODE_SIDE);
}

TEST_F(Editing, RemovePointOfFourDoesNothing)
{
    AddToView(Square());
    RemovePoint(2);
    RemovePoint(4); // there is no such point
    RemovePoint(-1);
    EXPECT_EQ(shapes[0]->pointnumber, 4);
    EXPECT_EQ(pindex, 0);
}

TEST_F(Editing, RemovePointInTheMiddleOfAStripeOfThreeMergesItsTwoSides)
{
    AddToView(Cube());
    const float* end = shapes[0]->points[shapes[0]->stripes[3].points[1]];
    PointAt(0, end[1], end[2]);
    ASSERT_EQ(AddPoint(3), 8); // in the edge from 1 to 0
    RemovePoint(8);
    EXPECT_EQ(OutlinesOf(*shapes[0])[0], (Chain{0, 3, 2, 1, 5, 4}));
    EXPECT_EQ(shapes[0]->sidenumber, 5);
    EXPECT_EQ(shapes[0]->pointnumber, 8);
    EXPECT_EQ(pindex, 2);
}

TEST_F(Editing, RemoveStripeMergesTwoSidesAsOneUndoStep)
{
    AddToView(Square());
    AddToView(Cube());
    RemoveStripe(1 + 3);
    EXPECT_EQ(shapes[1]->sidenumber, 5);
    EXPECT_EQ(treeiters[2].type, NODE_SHAPE);
    EXPECT_EQ(pindex, 1);
}

TEST_F(Editing, RemoveStripeOfThreeSidesLeavesOneVisibleFromBothFaces)
{
    AddToView(Melon());
    EXPECT_EQ(treeiters[1].type, NODE_SHAPE);
    RemoveStripe(0);
    EXPECT_EQ(shapes[0]->sidenumber, 1);
    EXPECT_EQ(shapes[0]->sides[0].visibility, VISIBLE_BOTH);
    EXPECT_EQ(treeiters[1].type, NODE_SIDE);
}

TEST_F(Editing, RemoveStripeThatBordersOneSideDoesNothing)
{
    AddToView(Square());
    RemoveStripe(0);
    RemoveStripe(1); // there is no such stripe
    RemoveStripe(-1);
    EXPECT_EQ(shapes[0]->sidenumber, 1);
    EXPECT_EQ(pindex, 0);
}

} // namespace korvane::testing
