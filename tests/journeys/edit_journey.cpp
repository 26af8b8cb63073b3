// A yellow box under the hand: its points, edges and creases edited with the pointer and the
// context menus, judged by the saved file.
#include "tests/support/scenejourney.h"
#include "tests/support/scenetexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace korvane;
using namespace korvane::testing;

static bool IsYellow(const Color& color)
{
    return color.red > 80 && color.green > 80 && color.blue < std::min(color.red, color.green) / 2;
}

// The box without its marks: it is drawn as a round body.
static std::string RoundBoxScene()
{
    std::string text = BoxScene();
    const std::string marks = "VertexNumber: 8\nVertexes:\n0 1 2 3 4 5 6 7\n";
    text.erase(text.find(marks), marks.size());
    return text;
}

// The box fills x from 0.1 to 0.3, y from 0.1 to 0.2 and z from -0.15 to 0.05; the points 4, 5, 6
// and 7 are those of the side towards the viewer, from its lower left corner round by the right.
using Edit = SceneJourney;

TEST_F(Edit, InsertsAPointByDraggingAnEdge)
{
    Start(BoxScene());
    Drag({{0.2, 0.1}, {0.2, 0.088}, {0.2, 0}}); // at first still on the edge, whose depth it takes
    const auto shape = SaveShape();
    ASSERT_EQ(shape->pointnumber, 9);
    ExpectPoint(*shape, 8, 0.2, 0, 0.05);
    const Outlines outlines = OutlinesOf(*shape);
    EXPECT_EQ(outlines[1], (std::vector<int>{4, 8, 5, 6, 7}));
    EXPECT_EQ(outlines[2], (std::vector<int>{0, 1, 5, 8, 4}));
}

TEST_F(Edit, MovesAPointByDraggingItAtItsDepth)
{
    Start(BoxScene());
    Drag({{0.3, 0.2}, {0.35, 0.25}, {0.4, 0.3}});
    const auto shape = SaveShape();
    ASSERT_EQ(shape->pointnumber, 8);
    ExpectPoint(*shape, 6, 0.4, 0.3, 0.05);
    ExpectPoint(*shape, 2, 0.3, 0.2, -0.15); // the one behind it
    journey.Key("z");                        // the whole drag is one undo step
    journey.LookWhenStill();
    ExpectPoint(*SaveShape(), 6, 0.3, 0.2, 0.05);
}

TEST_F(Edit, RemovesAnEdgeAndThenACornerWithTheMiddleButton)
{
    Start(BoxScene());
    Click(0.2, 0.1, 2); // the lower edge towards the viewer
    auto shape = SaveShape();
    EXPECT_EQ(shape->sidenumber, 5);
    EXPECT_EQ(shape->pointnumber, 8);
    EXPECT_EQ(OutlinesOf(*shape)[1], (std::vector<int>{4, 0, 1, 5, 6, 7}));
    journey.MoveTo(3, 3);
    Click(0.3, 0.2, 2); // corner 6: the edge 1, 5, 6 goes with 5, and then 2, 6, 7 with 6
    shape = SaveShape();
    EXPECT_EQ(shape->sidenumber, 3);
    EXPECT_EQ(shape->pointnumber, 6);
}

TEST_F(Edit, RemovesAShapeWithTheMiddleButtonOnASide)
{
    Start(BoxScene());
    Click(0.2, 0.15, 2);
    EXPECT_EQ(LookWithoutPointer().Count(IsYellow), 0);
    EXPECT_TRUE(Save().shapes.empty());
    journey.Key("z");
    EXPECT_TRUE(WaitFor([&] { return journey.Look().Count(IsYellow) > 5000; }));
    EXPECT_EQ(SaveShape()->sidenumber, 6);
}

TEST_F(Edit, MarksAnEdgeAsACreaseWithItsMenu)
{
    Start(RoundBoxScene());
    Click(0.2, 0.1, 3);
    ChooseItem(1);
    const Screenshot creased = LookWithoutPointer();
    EXPECT_GT(first.CountDifferences(creased), 200);
    auto shape = SaveShape();
    ASSERT_EQ(shape->vertexnumber, 2);
    EXPECT_EQ(shape->vertexes[0], 4);
    EXPECT_EQ(shape->vertexes[1], 5);

    Click(0.2, 0.1, 3); // the item is checked now
    ChooseItem(1);
    EXPECT_EQ(first.CountDifferences(LookWithoutPointer()), 0);
    EXPECT_EQ(SaveShape()->vertexnumber, 0);
}

// A press that a menu takes, which has gone when the button goes up: the view gets the release.
TEST_F(Edit, LeavesTheScenesPointsAloneAtTheReleaseOfAPressInAMenu)
{
    Start(BoxScene());
    Click(0.3, 0.2, 3); // the menu of point 6
    ASSERT_TRUE(WaitFor([&] { return journey.HasMenu(); }));
    journey.MoveTo(X(-0.2), Y(0.1));
    journey.Press(1);
    journey.Key("Escape");
    ASSERT_TRUE(WaitFor([&] { return !journey.HasMenu(); }));
    journey.MoveTo(X(-0.2), Y(0));
    journey.LookWhenStill();
    journey.Release(1);
    LookWithoutPointer();
    ExpectPoint(*SaveShape(), 6, 0.3, 0.2, 0.05);
}

TEST_F(Edit, TakesALongPressForADragHoweverLittleThePointerMoves)
{
    Start(BoxScene());
    const int x = X(0.3);
    const int y = Y(0.2);
    journey.MoveTo(x, y);
    journey.LookWhenStill();
    const Screenshot lit = journey.Look();
    journey.Press(1);
    journey.MoveTo(x + 3, y); // half of what makes a drag at once
    bool back = false;
    EXPECT_TRUE(WaitFor([&] { // until the press has lasted long enough
        back = !back;
        journey.MoveTo(back ? x : x + 4, y);
        return lit.CountDifferences(journey.Look()) > 0;
    }));
    journey.MoveTo(x + 4, y);
    journey.LookWhenStill();
    journey.Release(1);
    journey.LookWhenStill();
    const auto shape = SaveShape();
    ExpectPoint(*shape, 6, 0.3 + 4.0 / std::min(first.width, first.height), 0.2, 0.05);
    EXPECT_GT(shape->points[6][0], 0.302F);
}

TEST_F(Edit, TakesAShortPressForAClickThoughThePointerMovesALittle)
{
    Start(BoxScene());
    const int x = X(0.15);
    const int y = Y(0.15);
    journey.MoveTo(x, y);
    journey.LookWhenStill();
    journey.ClickTrembling(x, y, 5);
    // a click flies to the side: what is around its middle is yellow, and as large as the view
    EXPECT_TRUE(WaitFor([&] {
        const Screenshot picture = journey.Look();
        return IsYellow(picture.At(X(0), Y(0)));
    }));
}

TEST_F(Edit, IsUndoneFromWhereItWasMadeAndRedone)
{
    Start(BoxScene());
    Drag({{0.3, 0.2}, {0.35, 0.25}, {0.4, 0.3}});
    const Screenshot edited = LookWithoutPointer();
    ASSERT_GT(first.CountDifferences(edited), 2000);
    journey.Click(X(-0.2), Y(-0.1), 4); // the wheel
    ASSERT_TRUE(WaitFor([&] { return edited.CountDifferences(journey.Look()) > 2000; }));
    LookWithoutPointer();

    const auto looks = [&](const Screenshot& picture) {
        return [&] { return picture.CountDifferences(journey.Look()) == 0; };
    };
    journey.Key("z");
    EXPECT_TRUE(WaitFor(looks(edited))); // it has only flown back
    ExpectPoint(*SaveShape(), 6, 0.4, 0.3, 0.05);
    LookWithoutPointer();
    journey.Key("BackSpace");
    EXPECT_TRUE(WaitFor(looks(first)));
    ExpectPoint(*SaveShape(), 6, 0.3, 0.2, 0.05);
    LookWithoutPointer();
    journey.Key("y");
    EXPECT_TRUE(WaitFor(looks(edited)));
    ExpectPoint(*SaveShape(), 6, 0.4, 0.3, 0.05);
}
