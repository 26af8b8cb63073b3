#include "tests/support/treerows.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::testing
{

static constexpr int columntop = -10; // the tree begins near the top of the view
static constexpr int columnheight = 300;
static constexpr int treeground = 200; // white pixels in a row that only the tree has

static bool IsWhite(const Color& color)
{
    return color == Color{255, 255, 255};
}

static Screenshot LookAtColumn(const Journey& journey)
{
    return journey.LookAt(treecolumn, columntop, 1, columnheight);
}

// The first row shows as a bar at the top of the tree's white ground.
TreeRows FindTreeRows(Journey& journey)
{
    TreeRows rows;
    EXPECT_TRUE(WaitFor([&] {
        const std::vector<Color> pixels = LookAtColumn(journey).pixels;
        const std::vector<Color> ground(treeground, Color{255, 255, 255});
        const auto place = std::search(pixels.begin(), pixels.end(), ground.begin(), ground.end());
        rows.top = columntop + int(place - pixels.begin());
        return place != pixels.end();
    })) << "no tree";
    journey.Click(treecolumn, rows.top + 5);
    EXPECT_TRUE(WaitFor([&] {
        const std::vector<Color> pixels = LookAtColumn(journey).pixels;
        const auto first = pixels.begin() + (rows.top - columntop);
        rows.height = int(std::find_if(first, pixels.end(), IsWhite) - first);
        return rows.height > 0;
    })) << "no row is selected";
    return rows;
}

} // namespace korvane::testing
