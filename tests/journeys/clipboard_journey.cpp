// A box is copied, the view turned, the box pasted at the same place of the screen; it is renamed,
// a folder made, the other box deleted, and all that walked back and forth.
#include "tests/support/journey.h"
#include "tests/support/scenetexts.h"
#include "tests/support/tempfolder.h"
#include "tests/support/treerows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <sstream>
#include <string>

using namespace korvane::testing;

static bool IsYellow(const Color& color)
{
    return color.red > 80 && color.green > 80 && color.blue < std::min(color.red, color.green) / 2;
}

class ClipboardJourney : public ::testing::Test
{
protected:
    void SetUp() override
    {
        const std::string scene = journey.GetFolder() + "/box.mrt";
        WriteText(scene, BoxScene());
        ASSERT_TRUE(journey.Start(scene));
        ASSERT_TRUE(WaitFor([&] { return journey.Look().Count(IsYellow) > 5000; }));
        rows = FindTreeRows(journey); // selects the box
    }

    Screenshot LookFromTheCorner()
    {
        journey.MoveTo(3, 3); // over no shape
        return journey.LookWhenStill();
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

    std::string Save()
    {
        const std::string path = journey.GetFolder() + "/saved.mrt";
        journey.Key("ctrl+shift+s");
        EXPECT_TRUE(journey.WaitForFront("Save scene"));
        journey.Key("ctrl+a");
        journey.Type(path);
        journey.Key("alt+s");
        EXPECT_TRUE(WaitFor([&] { return std::filesystem::exists(path); }));
        return ReadWholeFile(path);
    }

    static constexpr int fewchanged = 200; // pixels: lit edges and points have more or fewer

    Journey journey;
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
static void ExpectPointsOfPastedBox(const std::string& text)
{
    std::string coordinates = text.substr(text.find("Points:\n") + 8);
    coordinates.resize(coordinates.find("VertexNumber"));
    std::replace(coordinates.begin(), coordinates.end(), ',', '.');
    std::istringstream lines(coordinates);
    int points = 0;
    double x, y, z;
    for (std::string mark; lines >> x >> y >> z >> mark; points++) {
        EXPECT_NEAR(std::min(std::abs(x + 0.15), std::abs(x - 0.05)), 0, 1e-5) << x;
        EXPECT_NEAR(std::min(std::abs(y - 0.1), std::abs(y - 0.2)), 0, 1e-5) << y;
        EXPECT_NEAR(std::min(std::abs(std::abs(z) - 0.1), std::abs(std::abs(z) - 0.3)), 0, 1e-5);
    }
    EXPECT_EQ(points, 8);
}

TEST_F(ClipboardJourney, CarriesABoxAcrossTheSceneAndTheUndoSteps)
{
    const Screenshot copied = LookFromTheCorner();
    journey.Key("c");
    journey.Click(20, copied.height / 2); // the left wall: the view turns to face it
    ASSERT_TRUE(WaitFor([&] { return CountLost(copied, journey.Look()) > 5000; }));
    const Screenshot turned = LookFromTheCorner();
    ASSERT_GT(CountLost(copied, turned), 5000);

    journey.Key("v");
    ASSERT_TRUE(WaitFor([&] { return CountLost(copied, journey.Look()) < fewchanged; }));
    const Screenshot both = LookFromTheCorner();
    EXPECT_LT(CountLost(copied, both), fewchanged);
    EXPECT_LT(CountLost(turned, both), fewchanged); // the first is still there

    ClickRow(1); // the pasted box, alone: it alone is shown
    ASSERT_TRUE(WaitFor([&] { return CountLost(turned, journey.Look()) > 5000; }));
    const Screenshot pasted = LookFromTheCorner();
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

    const std::string text = Save();
    EXPECT_NE(text.find("ShapeNumber: 1\n"), std::string::npos);
    EXPECT_NE(text.find("/room\n\n"), std::string::npos);
    EXPECT_NE(text.find("Name:\n/cube\n"), std::string::npos);
    EXPECT_EQ(text.find("/box"), std::string::npos);
    ExpectPointsOfPastedBox(text);
    EXPECT_EQ(ReadWholeFile(journey.GetOutput()), ""); // no diagnostics
}
