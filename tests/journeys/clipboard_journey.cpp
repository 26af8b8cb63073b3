// A box is copied, the view turned, the box pasted at the same place of the screen; it is renamed,
// a folder made, the other box deleted, and all that walked back and forth.
#include "tests/support/scenejourney.h"
#include "tests/support/scenetexts.h"
#include "tests/support/treerows.h"

#include <algorithm>
#include <cmath>
#include <string>

using namespace korvane::testing;

static bool IsYellow(const Color& color)
{
    return color.red > 80 && color.green > 80 && color.blue < std::min(color.red, color.green) / 2;
}

class ClipboardJourney : public SceneJourney
{
protected:
    void SetUp() override
    {
        Start(BoxScene());
        rows = FindTreeRows(journey); // selects the box
    }

    void ClickRow(int row, int button = 1)
    {
        journey.Click(treecolumn, rows.GetMiddle(row), button);
    }

    // Chooses the item that is `place` places above the end of the tree's menu.
    void ChooseFromTreeMenu(int row, int place)
    {
        ClickRow(row, 3);
        ASSERT_TRUE(WaitFor([&] { return journey.HasMenu(); }));
        for (int i = 0; i < place; i++) {
            journey.Key("Up");
        }
        journey.Key("Return");
    }

    void AnswerWithName(const std::string& name)
    {
        ASSERT_TRUE(journey.WaitForFront("New shape"));
        journey.Type(name); // over the selected text
        journey.Key("Return");
        ASSERT_TRUE(journey.WaitForFront("Vintra"));
    }

    static constexpr int fewchanged = 200; // pixels: lit edges and points have more or fewer

    TreeRows rows;
};

// How many pixels are yellow in one picture and not in the other.
static int CountLost(const Screenshot& before, const Screenshot& after)
{
    int number = 0;
    for (std::size_t i = 0; i < before.pixels.size(); i++) {
        number += IsYellow(before.pixels[i]) && !IsYellow(after.pixels[i]) ? 1 : 0;
    }
    return number;
}

// Seen from +x, what was x 0.1 to 0.3, y 0.1 to 0.2 and z -0.15 to 0.05 on the screen is z (to
// either side), y and x of the scene.
static void ExpectPastedBox(const korvane::Shape& box)
{
    ASSERT_EQ(box.pointnumber, 8);
    for (int i = 0; i < 8; i++) {
        const float* p = box.points[i];
        EXPECT_NEAR(std::abs(p[0] + 0.05), 0.1, 1e-5);
        EXPECT_NEAR(std::abs(p[1] - 0.15), 0.05, 1e-5);
        EXPECT_NEAR(std::abs(std::abs(p[2]) - 0.2), 0.1, 1e-5);
    }
}

TEST_F(ClipboardJourney, CarriesABoxAcrossTheSceneAndTheUndoSteps)
{
    const Screenshot copied = LookWithoutPointer();
    journey.Key("c");
    journey.Click(20, copied.height / 2); // the left wall: the view turns to face it
    ASSERT_TRUE(WaitFor([&] { return CountLost(copied, journey.Look()) > 5000; }));
    const Screenshot turned = LookWithoutPointer();
    ASSERT_GT(CountLost(copied, turned), 5000);

    journey.Key("v");
    ASSERT_TRUE(WaitFor([&] { return CountLost(copied, journey.Look()) < fewchanged; }));
    const Screenshot both = LookWithoutPointer();
    EXPECT_LT(CountLost(copied, both), fewchanged);
    EXPECT_LT(CountLost(turned, both), fewchanged); // the first is still there

    ClickRow(1); // the pasted box, alone: it alone is shown
    ASSERT_TRUE(WaitFor([&] { return CountLost(turned, journey.Look()) > 5000; }));
    const Screenshot pasted = LookWithoutPointer();
    EXPECT_LT(CountLost(copied, pasted), fewchanged);
    EXPECT_LT(CountLost(pasted, copied), fewchanged); // exactly where the other was

    ChooseFromTreeMenu(1, 3); // Rename
    AnswerWithName("cube");
    ChooseFromTreeMenu(1, 6); // New folder...
    AnswerWithName("room");

    ClickRow(1); // room, box, cube
    ASSERT_TRUE(WaitFor([&] { return CountLost(turned, journey.Look()) < fewchanged; }));
    journey.Key("Delete");
    ASSERT_TRUE(WaitFor([&] { return journey.Look().Count(IsYellow) == 0; }));
    journey.Key("z");
    ASSERT_TRUE(WaitFor([&] { return CountLost(both, journey.Look()) < fewchanged; }));
    journey.Key("y");
    ASSERT_TRUE(WaitFor([&] { return CountLost(turned, journey.Look()) > 5000; }));

    const korvane::SceneDraft saved = Save();
    ASSERT_EQ(saved.folders.size(), 1U);
    EXPECT_EQ(saved.folders[0].name, "room");
    ASSERT_EQ(saved.shapes.size(), 1U);
    EXPECT_EQ(saved.shapes[0].name, "cube");
    ExpectPastedBox(*saved.shapes[0].shape);
    EXPECT_EQ(ReadWholeFile(journey.GetOutput()), ""); // no diagnostics
}
