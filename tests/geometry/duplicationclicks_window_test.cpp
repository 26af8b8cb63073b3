#include "geometry/duplicationclicks.h"

#include "geometry/construction.h"
#include "geometry/duplication.h"
#include "geometry/newpoints.h"
#include "geometry/sideplane.h"
#include "scene/undo.h"
#include "scene/undorecord.h"
#include "tests/support/constructionscene.h"
#include "tests/support/invariants.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/navigation.h"
#include "view/picking.h"

#include <gmock/gmock.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace korvane
{

using namespace korvane::testing;
using ::testing::FloatNear;
using ::testing::Pointwise;

using Place = std::array<float, 3>;

static void ExpectPlace(const float actual[3], const Place& expected)
{
    EXPECT_THAT((Place{actual[0], actual[1], actual[2]}), Pointwise(FloatNear(1e-6F), expected));
}

// The sides of a cube.
enum CubeSide { BACK = 0, FRONT = 1, BOTTOM = 2, TOP = 3, LEFT = 4, RIGHT = 5 };

class DuplicationClicks : public ConstructionScene
{
protected:
    static void Start(int shape, int side)
    {
        duplicateshape = shape;
        duplicateside = side;
        Duplicate();
        EXPECT_EQ(FindBrokenRule(), "");
    }

    static void ClickAt(float x, float y)
    {
        PointAt(x, y);
        Put(CLICK_ADD);
    }

    static void Put(int action)
    {
        PutDPoints(duplicateshape, duplicateside, action);
        EXPECT_EQ(FindBrokenRule(), "");
    }

    static int AddFlatSquare()
    {
        return AddProjected(MakeFlatShape(
            {{-0.1F, -0.1F, 0.2F}, {0.1F, -0.1F, 0.2F}, {0.1F, 0.1F, 0.2F}, {-0.1F, 0.1F, 0.2F}}));
    }

    static std::string GetMarksOfCenters()
    {
        std::string marks;
        for (int i = 0; i < centernumber; i++) {
            marks += GetCenterRecords()[i].active != 0 ? '1' : '0';
        }
        return marks;
    }

    // A side of a shape whose corners have this mean.
    static bool HasSideAt(const Shape* shape, const Place& center)
    {
        return std::any_of(shape->sides, shape->sides + shape->sidenumber, [&](const Side& side) {
            const Block<float[]> mean = GetCenterOfSide(&side);
            return std::equal(center.begin(), center.end(), mean.get(),
                              [](float a, float b) { return std::abs(a - b) < 1e-6F; });
        });
    }
};

TEST_F(DuplicationClicks, StartInTheMiddleOfTheSide)
{
    AddFlatSquare();
    PointAt(0, 0);
    ASSERT_EQ(activepointer, &activesides[0]);
    const int before = pindex;
    rdstate = 0;
    Start(0, 0);
    EXPECT_EQ(duplicatesign, 1);
    EXPECT_EQ(activepointer, nullptr); // the side cannot be picked any more
    EXPECT_EQ(rdstate, redrawwanted);
    ASSERT_EQ(newpointnumber, 1);
    ExpectPlace(newpoints[0], {0, 0, 0.2F});
    EXPECT_EQ(GetMarks(), "0");
    EXPECT_EQ(centernumber, 0);
    EXPECT_EQ(GetMarksOfShape(0), "0000");
    EXPECT_EQ(activesides[0].active, 0);
    ASSERT_EQ(pindex, before + 1);
    EXPECT_EQ(puffer[before].kind, UNDO_SHAPE);
    EXPECT_EQ(puffer[before].shapeindex, 0);
}

TEST_F(DuplicationClicks, StartExactlyInTheMiddleWhateverTheCamera)
{
    AddFlatSquare();
    TurnToTheSide(); // the screen's x is the world's z
    mainview.scale = 0.7F;
    mainview.center[2] = 3;
    mainview.perspective = fadedone;
    TransferAllShape();
    Start(0, 0);
    EXPECT_EQ((Place{newpoints[0][0], newpoints[0][1], newpoints[0][2]}), (Place{0, 0, 0.2F}));
    ExpectPlace(rotated[0], {-1.96F, 0, 0}); // 0.7 * (0.2 - 3)
}

TEST_F(DuplicationClicks, OfferTheCentresOfTheOtherSidesOfABody)
{
    AddProjected(CubeOfHalfEdge(0.1F));
    Start(0, RIGHT);
    ASSERT_EQ(centernumber, 5);
    const Place centers[] = {
        {0, 0, -0.1F}, {0, 0, 0.1F}, {0, -0.1F, 0}, {0, 0.1F, 0}, {-0.1F, 0, 0}};
    for (int i = 0; i < 5; i++) {
        ExpectPlace(centerpoints[i], centers[i]);
    }
    ExpectPlace(newpoints[0], {0.1F, 0, 0});
    EXPECT_EQ(GetMarksOfCenters(), "00000");
    EXPECT_EQ(GetMarks(), "0");
    ClickAt(0.3F, 0);
    EXPECT_EQ(GetMarksOfCenters(), "11111");
    ClickAt(0.3F, 0.2F);
    EXPECT_EQ(GetMarks(), "000");
    Put(CLICK_TAKEBACK);
    EXPECT_EQ(GetMarksOfCenters(), "11111");
    Put(CLICK_TAKEBACK);
    EXPECT_EQ(GetMarksOfCenters(), "00000");
}

TEST_F(DuplicationClicks, OfferOnlySidesWithAsManyCorners)
{
    AddProjected(TrianglePrism());
    const Shape* prism = shapes[0];
    int triangle = 0;
    while (prism->sides[triangle].pointnumber != 3) {
        triangle++;
    }
    Start(0, triangle);
    EXPECT_EQ(centernumber, 1);
    Put(CLICK_FINISH);
    int square = 0;
    while (prism->sides[square].pointnumber != 4) {
        square++;
    }
    Start(0, square);
    EXPECT_EQ(centernumber, 2);
}

TEST_F(DuplicationClicks, EndWithoutAPathByTheRightOrTheMiddleButton)
{
    AddFlatSquare();
    for (const int action : {CLICK_FINISH, CLICK_TAKEBACK}) {
        Start(0, 0);
        Put(action);
        EXPECT_EQ(duplicatesign, 0);
        EXPECT_EQ(newpointnumber, 0);
        EXPECT_EQ(shapes[0]->sidenumber, 1);
        EXPECT_EQ(GetMarksOfShape(0), "1111");
    }
}

TEST_F(DuplicationClicks, SweepAnOpenPathByTheRightButton)
{
    AddFlatSquare();
    Start(0, 0);
    ClickAt(0.3F, 0);
    ClickAt(0.3F, 0.3F);
    ExpectPlace(newpoints[2], {0.3F, 0.3F, 0.2F}); // as deep as the start
    Put(CLICK_FINISH);
    EXPECT_EQ(duplicatesign, 0);
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_EQ(shapes[0]->pointnumber, 3 * 4);
    EXPECT_EQ(shapes[0]->sidenumber, 2 * 4 + 2);
    EXPECT_EQ(FindBrokenRuleOfClosedBody(*shapes[0]), "");
}

TEST_F(DuplicationClicks, LeaveOutWhatHasBeenTakenBack)
{
    AddFlatSquare();
    Start(0, 0);
    ClickAt(0.3F, 0);
    ClickAt(0.3F, 0.3F);
    Put(CLICK_TAKEBACK);
    EXPECT_EQ(newpointnumber, 2);
    Put(CLICK_FINISH);
    EXPECT_EQ(shapes[0]->pointnumber, 2 * 4);
}

TEST_F(DuplicationClicks, CloseARingFromTheThirdPlaceOn)
{
    AddFlatSquare();
    Start(0, 0);
    EXPECT_EQ(GetMarks(), "0");
    ClickAt(0.3F, 0);
    EXPECT_EQ(GetMarks(), "00");
    ClickAt(0.3F, 0.3F);
    EXPECT_EQ(GetMarks(), "100");
    ClickAt(0, 0.4F);
    EXPECT_EQ(GetMarks(), "1000");
    Put(CLICK_TAKEBACK);
    EXPECT_EQ(GetMarks(), "100");
    Put(CLICK_TAKEBACK);
    EXPECT_EQ(GetMarks(), "00");
    ClickAt(0.3F, 0.3F);
    ClickAt(0, 0);
    EXPECT_EQ(duplicatesign, 0);
    EXPECT_EQ(shapes[0]->pointnumber, 3 * 4);
    EXPECT_EQ(shapes[0]->sidenumber, 3 * 4);
    EXPECT_EQ(FindBrokenRuleOfClosedBody(*shapes[0]), "");
}

// A double click puts two points into one place.
TEST_F(DuplicationClicks, CountTheSamePlaceOnceTowardsARing)
{
    AddFlatSquare();
    Start(0, 0);
    ClickAt(0.3F, 0);
    ClickAt(0.3F, 0);
    EXPECT_EQ(GetMarks(), "000");
    ClickAt(0.3F, 0.3F);
    EXPECT_EQ(GetMarks(), "1000");
    Put(CLICK_TAKEBACK);
    EXPECT_EQ(GetMarks(), "000");
    Put(CLICK_FINISH);
    EXPECT_EQ(shapes[0]->pointnumber, 2 * 4);
}

TEST_F(DuplicationClicks, BridgeToTheCentreThatIsPicked)
{
    AddProjected(CubeOfHalfEdge(0.1F));
    Start(0, BACK);
    ClickAt(0.3F, 0);
    ClickAt(0.3F, 0.3F);
    ClickAt(0, 0.3F);
    ClickAt(0, 0.1F);
    EXPECT_EQ(duplicatesign, 0);
    const Shape* shape = shapes[0];
    EXPECT_EQ(shape->sidenumber, 6 - 2 + 4 * 4); // walls between five places
    EXPECT_FALSE(HasSideAt(shape, {0, 0.1F, 0}));
    EXPECT_FALSE(HasSideAt(shape, {0, 0, -0.1F}));
    EXPECT_TRUE(HasSideAt(shape, {-0.1F, 0, 0}));
    EXPECT_TRUE(HasSideAt(shape, {0, -0.1F, 0}));
    EXPECT_EQ(FindBrokenRuleOfClosedBody(*shape), "");
}

// Seen from the side, depth is the opposite of the world's x, and the screen's x its z.
TEST_F(DuplicationClicks, TakeTheDepthOfTheLastPlaceAfterATurn)
{
    AddFlatSquare();
    Start(0, 0);
    ClickAt(0.3F, 0.1F);
    TurnToTheSide();
    ClickAt(0.1F, 0.3F);
    ExpectPlace(newpoints[2], {0.3F, 0.3F, 0.1F});
    Put(CLICK_TAKEBACK);
    Put(CLICK_TAKEBACK);
    ClickAt(0.1F, 0.3F);
    ExpectPlace(newpoints[1], {0, 0.3F, 0.1F}); // as deep as the start again
}

// Zoomed in twice about depth 0, the start at 0.2 shows at 0.4.
TEST_F(DuplicationClicks, StayInThePlaneOfTheStartWhenTheViewIsZoomed)
{
    AddFlatSquare();
    Start(0, 0);
    mainview.scale = 2;
    RefreshView();
    ClickAt(0.6F, 0.2F);
    ExpectPlace(rotated[1], {0.6F, 0.2F, 0.4F});
    ExpectPlace(newpoints[1], {0.3F, 0.1F, 0.2F});
    Put(CLICK_FINISH);
    EXPECT_TRUE(HasSideAt(shapes[0], {0.3F, 0.1F, 0.2F})); // the cap at the end
}

TEST_F(DuplicationClicks, StayInThePlaneOfTheStartWhenTheViewIsMovedForward)
{
    AddFlatSquare();
    Start(0, 0);
    ChangePosition(0, 0, 0, 0, 0, 0.3F);
    ClickAt(0.3F, 0.1F);
    ExpectPlace(rotated[1], {0.3F, 0.1F, 0.5F});
    ExpectPlace(newpoints[1], {0.3F, 0.1F, 0.2F});
}

// From the right centre, depth 0 at x = 0.1, to the front one, depth 0.1 at x = 0, both level: by
// width, as far on the other side.
TEST_F(DuplicationClicks, GiveThePathOfABridgeTheDepthsBetweenItsEnds)
{
    AddProjected(CubeOfHalfEdge(0.1F));
    Start(0, RIGHT);
    ClickAt(0.3F, 0.2F);
    ClickAt(0.2F, 0.3F);
    ClickAt(0, 0);
    const Shape* shape = shapes[0];
    ASSERT_EQ(shape->pointnumber, 8 + 2 * 4);
    float means[2][3] = {};
    for (int i = 0; i < 8; i++) {
        for (int k = 0; k < 3; k++) {
            means[i / 4][k] += shape->points[8 + i][k] / 4;
        }
    }
    ExpectPlace(means[0], {0.3F, 0.2F, -0.2F});
    ExpectPlace(means[1], {0.2F, 0.3F, -0.1F});
}

TEST_F(DuplicationClicks, CountAClickOnAnythingElseAsEmptySpace)
{
    AddProjected(CubeOfHalfEdge(0.1F));
    Start(0, RIGHT);
    MakeAllPickable();
    ClickAt(0.1F, 0.1F);
    EXPECT_EQ(newpointnumber, 2);
    ClickAt(0.05F, 0.05F);
    EXPECT_EQ(newpointnumber, 3);
}

TEST_F(DuplicationClicks, AreGivenUpForANewShape)
{
    AddProjected(CubeOfHalfEdge(0.1F));
    Start(0, RIGHT);
    ClickAt(0.3F, 0.2F);
    gtk_toggle_tool_button_set_active(GTK_TOGGLE_TOOL_BUTTON(toolbutton_news), TRUE);
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(duplicatesign, 0);
    EXPECT_EQ(newsign, 1);
    EXPECT_EQ(newpointnumber, 0);
    EXPECT_EQ(centernumber, 0);
}

TEST_F(DuplicationClicks, GiveUpAShapeThatIsBeingDrawn)
{
    AddFlatSquare();
    newsign = 1;
    PointAt(0.3F, 0.3F);
    PutNewPoints(CLICK_ADD);
    Start(0, 0);
    EXPECT_EQ(newsign, 0);
    ASSERT_EQ(newpointnumber, 1);
    ExpectPlace(newpoints[0], {0, 0, 0.2F});
}

TEST_F(DuplicationClicks, DoNotStartOnASideThatIsGone)
{
    AddFlatSquare();
    const int before = pindex;
    for (const auto& [shape, side] : {std::pair(1, 0), std::pair(-1, 0), std::pair(0, 1)}) {
        Start(shape, side);
        EXPECT_EQ(duplicatesign, 0);
        EXPECT_EQ(newpointnumber, 0);
        EXPECT_EQ(pindex, before);
    }
}

} // namespace korvane
