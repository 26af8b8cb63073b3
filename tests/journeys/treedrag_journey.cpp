// A shape is dragged into a folder with the mouse, and the saved scene has it there.

#include "tests/support/journey.h"
#include "tests/support/scenetexts.h"
#include "tests/support/tempfolder.h"

#include <gtest/gtest.h>

#include <unistd.h>

using namespace korvane::testing;

static constexpr int column = 200; // inside the tree, right of the names

static bool IsWhite(const Color& color)
{
    return color.red == 255 && color.green == 255 && color.blue == 255;
}

struct Rows {
    int top = 0;
    int height = 0;

    int GetMiddle(int row) const
    {
        return top + height * row + height / 2;
    }
};

// The tree's first row, found by selecting it: a bar on the white ground of the tree, which begins
// where a long run of white begins.
static Rows FindRows(Journey& journey)
{
    constexpr int longrun = 200;
    Rows rows;
    const bool found = WaitFor([&] {
        const Picture picture = journey.Look();
        rows.top = 0;
        while (rows.top + longrun < picture.height &&
               picture.Count(column, rows.top, column + 1, rows.top + longrun, IsWhite) < longrun) {
            rows.top++;
        }
        return rows.top + longrun < picture.height;
    });
    EXPECT_TRUE(found) << "no tree";
    journey.Click(column, rows.top + 5);
    EXPECT_TRUE(WaitFor([&] {
        const Picture picture = journey.Look();
        rows.height = 0;
        while (rows.height < longrun && !IsWhite(picture.At(column, rows.top + rows.height))) {
            rows.height++;
        }
        return rows.height > 0;
    })) << "no row is selected";
    return rows;
}

static void Drag(Journey& journey, int x, int from, int to)
{
    constexpr int steps = 10;
    journey.MoveTo(x, from);
    journey.Press(1);
    for (int i = 1; i <= steps; i++) {
        journey.MoveTo(x, from + (to - from) * i / steps);
        usleep(50000); // the program answers each step before the next
    }
    journey.Release(1);
}

TEST(DraggingARow, PutsAShapeIntoAFolderOfTheSavedScene)
{
    Journey journey;
    const std::string opened = journey.GetFolder() + "/opened.mrt";
    const std::string saved = journey.GetFolder() + "/saved.mrt";
    WriteText(opened, SceneHead(2) + "/box\n\n" + TriangleBlock("/one") + TetrahedronBlock("/two"));
    ASSERT_TRUE(journey.Start(opened));

    const Rows rows = FindRows(journey); // box, one, two
    Drag(journey, 50, rows.GetMiddle(2), rows.GetMiddle(0));
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
