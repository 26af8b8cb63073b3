// A box moved, turned and scaled with context menus, a drag and the sliders of the dialogs,
// judged by the saved file and the screen.
#include "tests/support/scenejourney.h"
#include "tests/support/scenetexts.h"
#include "tests/support/screencontrols.h"

#include <gtest/gtest.h>

using namespace korvane;
using namespace korvane::testing;

// The places of the tools in the menu of a side, separators not counted, and of one in that of the
// background.
enum MenuPlace {
    ITEM_MOVESIDE = 4,
    ITEM_SCALESIDE = 6,
    ITEM_MOVESHAPE = 8,
    ITEM_ROTATESHAPE = 9,
    ITEM_SCALESHAPE = 10,
    ITEM_ROTATESELECTED = 4
};

// The box fills x from 0.1 to 0.3, y from 0.1 to 0.2 and z from -0.15 to 0.05; its point 6 is the
// upper right one of the side towards the viewer.
class Transform : public SceneJourney
{
protected:
    void Choose(int place, double x = 0.2, double y = 0.15)
    {
        Start(BoxScene());
        Click(x, y, 3);
        ChooseItem(place);
    }
};

TEST_F(Transform, MovesAShapeWithTheNextDrag)
{
    Choose(ITEM_MOVESHAPE);
    Drag({{-0.3, -0.3}, {-0.35, -0.35}, {-0.4, -0.4}}); // from anywhere
    ExpectPoint(*SaveShape(), 6, 0.2, 0.1, 0.05);
    Drag({{-0.3, -0.3}, {-0.3, -0.25}}); // this one turns the view
    ExpectPoint(*SaveShape(), 6, 0.2, 0.1, 0.05);
}

TEST_F(Transform, TurnsAShapeWithASliderAndUndoesIt)
{
    Choose(ITEM_ROTATESHAPE);
    ASSERT_TRUE(journey.WaitForFront("Rotate shape"));
    journey.Key("Tab");
    journey.Key("Tab"); // to the z axis
    journey.Key("End"); // a half turn, about (0.2, 0.15)
    journey.Key("alt+o");
    ASSERT_TRUE(journey.WaitForFront("Vintra"));
    const auto shape = SaveShape();
    ExpectPoint(*shape, 6, 0.1, 0.1, 0.05);
    ExpectPoint(*shape, 0, 0.3, 0.2, -0.15);
    LookWithoutPointer();
    journey.Key("z");
    EXPECT_TRUE(WaitFor([&] { return first.CountDifferences(journey.Look()) == 0; }));
    ExpectPoint(*SaveShape(), 6, 0.3, 0.2, 0.05);
}

// 2 to the power -4: the front side shrinks to its sixteenth about (0.2, 0.15, 0.05).
TEST_F(Transform, ScalesASideAndCancels)
{
    Choose(ITEM_SCALESIDE);
    ASSERT_TRUE(journey.WaitForFront("Scale selected"));
    journey.Key("Home");
    EXPECT_TRUE(WaitFor([&] { return first.CountDifferences(journey.Look()) > 1000; }));
    journey.Key("Escape");
    ASSERT_TRUE(journey.WaitForFront("Vintra"));
    EXPECT_EQ(first.CountDifferences(LookWithoutPointer()), 0);
    ExpectPoint(*SaveShape(), 6, 0.3, 0.2, 0.05);
}

TEST_F(Transform, ScalesASideForGood)
{
    Choose(ITEM_SCALESIDE);
    ASSERT_TRUE(journey.WaitForFront("Scale selected"));
    journey.Key("Home");
    journey.Key("alt+o");
    ASSERT_TRUE(journey.WaitForFront("Vintra"));
    const auto shape = SaveShape();
    ExpectPoint(*shape, 6, 0.20625, 0.153125, 0.05);
    ExpectPoint(*shape, 2, 0.3, 0.2, -0.15); // behind it
}

// The side towards the viewer goes 0.1 to the left and 0.05 up.
TEST_F(Transform, MovesASideWithTheNextDrag)
{
    Choose(ITEM_MOVESIDE);
    Drag({{-0.3, -0.3}, {-0.4, -0.25}});
    const auto shape = SaveShape();
    ExpectPoint(*shape, 6, 0.2, 0.25, 0.05);
    ExpectPoint(*shape, 2, 0.3, 0.2, -0.15); // behind it
}

// From -180 to 180 degrees, three quarters of the way are a quarter turn, about the view's middle.
TEST_F(Transform, TurnsTheSelectionWithTheMouse)
{
    Choose(ITEM_ROTATESELECTED, -0.2, -0.2);
    ASSERT_TRUE(journey.WaitForFront("Rotate selected"));
    DragSlider(journey, 3, 2, 0.75); // z
    journey.Key("alt+o");
    ASSERT_TRUE(journey.WaitForFront("Vintra"));
    const auto shape = SaveShape();
    ExpectPoint(*shape, 6, -0.2, 0.3, 0.05);
    ExpectPoint(*shape, 0, -0.1, 0.1, -0.15);
}

// From -4 to 4, five eighths of the way are 1: twice as large, about (0.2, 0.15, -0.05).
TEST_F(Transform, ScalesAShapeAlongAllAxesWithTheMouse)
{
    Choose(ITEM_SCALESHAPE);
    ASSERT_TRUE(journey.WaitForFront("Scale selected"));
    DragSlider(journey, 4, 0, 0.625); // A
    journey.Key("alt+o");
    ASSERT_TRUE(journey.WaitForFront("Vintra"));
    const auto shape = SaveShape();
    ExpectPoint(*shape, 6, 0.4, 0.25, 0.15);
    ExpectPoint(*shape, 0, 0, 0.05, -0.25);
}
