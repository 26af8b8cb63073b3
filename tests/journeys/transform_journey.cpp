// A box moved, turned and scaled with its context menu, a drag and the sliders of the dialogs,
// judged by the saved file and the screen.
#include "tests/support/scenejourney.h"
#include "tests/support/scenetexts.h"

#include <gtest/gtest.h>

using namespace korvane;
using namespace korvane::testing;

// The places of the tools in the menu of a side, separators not counted.
enum MenuPlace { ITEM_SCALESIDE = 6, ITEM_MOVESHAPE = 8, ITEM_ROTATESHAPE = 9 };

// The box fills x from 0.1 to 0.3, y from 0.1 to 0.2 and z from -0.15 to 0.05; its point 6 is the
// upper right one of the side towards the viewer.
class Transform : public SceneJourney
{
protected:
    void Choose(int place)
    {
        Start(BoxScene());
        Click(0.2, 0.15, 3);
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
