// A shape is dragged into a folder with the mouse, and the saved scene has it there.

#include "tests/support/journey.h"
#include "tests/support/scenetexts.h"
#include "tests/support/tempfolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <unistd.h>

using namespace korvane::testing;

// A column of pixels inside the tree, which stands left of the view and begins near its top. It is
// right of the names.
static constexpr int column = -120;
static constexpr int columntop = -10;
static constexpr int columnheight = 300;
static constexpr int treeground = 200; // white pixels in a row that only the tree has

static bool IsWhite(const Color& color)
{
    return color == Color{255, 255, 255};
}

struct Rows {
    int top = 0;
    int height = 0;

    int GetMiddle(int row) const
    {
        return top + height * row + height / 2;
    }
};

static Screenshot LookAtColumn(const Journey& journey)
{
    return journey.LookAt(column, columntop, 1, columnheight);
}

// The place of the first row, found by selecting it: a bar at the top of the tree's white ground.
static Rows FindRows(Journey& journey)
{
    Rows rows;
    EXPECT_TRUE(WaitFor([&] {
        const std::vector<Color> pixels = LookAtColumn(journey).pixels;
        const std::vector<Color> ground(treeground, Color{255, 255, 255});
        const auto place = std::search(pixels.begin(), pixels.end(), ground.begin(), ground.end());
        rows.top = columntop + int(place - pixels.begin());
        return place != pixels.end();
    })) << "no tree";
    journey.Click(column, rows.top + 5);
    EXPECT_TRUE(WaitFor([&] {
        const std::vector<Color> pixels = LookAtColumn(journey).pixels;
        const auto first = pixels.begin() + (rows.top - columntop);
        rows.height = int(std::find_if(first, pixels.end(), IsWhite) - first);
        return rows.height > 0;
    })) << "no row is selected";
    return rows;
}

static void DragRow(Journey& journey, int from, int to)
{
    constexpr int steps = 10;
    journey.MoveTo(column, from);
    journey.Press(1);
    for (int i = 1; i <= steps; i++) {
        journey.MoveTo(column, from + (to - from) * i / steps);
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
    DragRow(journey, rows.GetMiddle(2), rows.GetMiddle(0));
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
