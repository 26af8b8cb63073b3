// A shape is dragged into a folder with the mouse, and the saved scene has it there; or the drag is
// broken off.

#include "tests/support/journey.h"
#include "tests/support/scenetexts.h"
#include "tests/support/tempfolder.h"
#include "tests/support/treerows.h"

#include <gtest/gtest.h>

#include <unistd.h>

using namespace korvane::testing;

// The button stays down.
static void DragRow(Journey& journey, int from, int to)
{
    constexpr int steps = 10;
    journey.MoveTo(treecolumn, from);
    journey.Press(1);
    for (int i = 1; i <= steps; i++) {
        journey.MoveTo(treecolumn, from + (to - from) * i / steps);
        usleep(50000); // the program answers each step before the next
    }
}

TEST(DraggingARow, PutsAShapeIntoAFolderOfTheSavedScene)
{
    Journey journey;
    const std::string opened = journey.GetFolder() + "/opened.mrt";
    const std::string saved = journey.GetFolder() + "/saved.mrt";
    WriteText(opened, SceneHead(2) + "/box\n\n" + TriangleBlock("/one") + TetrahedronBlock("/two"));
    ASSERT_TRUE(journey.Start(opened));

    const TreeRows rows = FindTreeRows(journey); // box, one, two
    DragRow(journey, rows.GetMiddle(2), rows.GetMiddle(0));
    journey.Release(1);
    journey.Key("ctrl+s");
    ASSERT_TRUE(journey.WaitForFront("Save scene"));
    journey.Key("ctrl+a");
    journey.Type(saved);
    journey.Key("alt+s");
    ASSERT_TRUE(journey.WaitForFront("Vintra"));
    EXPECT_TRUE(WaitFor([&] {
        return ReadWholeFile(saved).find("Name:\n/box/two\n") != std::string::npos;
    })) << ReadWholeFile(saved);
    const std::string text = ReadWholeFile(saved);
    EXPECT_NE(text.find("Name:\n/one\n"), std::string::npos);
    EXPECT_NE(text.find("/box\n\n"), std::string::npos);
    EXPECT_EQ(ReadWholeFile(journey.GetOutput()), ""); // no diagnostics
}

TEST(DraggingARow, IsBrokenOffByAHeldEscapeThatLeavesTheProgramRunning)
{
    Journey journey;
    const std::string opened = journey.GetFolder() + "/opened.mrt";
    WriteText(opened, SceneHead(2) + "/box\n\n" + TriangleBlock("/one") + TetrahedronBlock("/two"));
    ASSERT_TRUE(journey.Start(opened));

    const TreeRows rows = FindTreeRows(journey);
    DragRow(journey, rows.GetMiddle(2), rows.GetMiddle(0));
    journey.Hold("Escape");
    journey.LookWhenStill();
    ASSERT_TRUE(journey.IsRunning());
    journey.LetGo("Escape");
    journey.Release(1);
    journey.Key("Escape");
    EXPECT_EQ(journey.WaitForEnd(), 0);
}
