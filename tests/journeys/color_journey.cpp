// A box is painted in the dialog with the keyboard: seen at once, kept, undone, redone, cancelled,
// saved.
#include "tests/support/scenejourney.h"
#include "tests/support/scenetexts.h"
#include "tests/support/treerows.h"

#include <string>
#include <vector>

using namespace korvane::testing;

static bool IsYellow(const Color& color)
{
    return color.red > 150 && color.green > 150 && color.blue < 60;
}

static bool IsRed(const Color& color)
{
    return color.red > 150 && color.green < 60 && color.blue < 60;
}

static bool IsBlue(const Color& color)
{
    return color.red < 60 && color.green < 60 && color.blue > 150;
}

class ColorJourney : public SceneJourney
{
protected:
    void SetUp() override
    {
        Start(BoxScene());
        ASSERT_TRUE(Shows(IsYellow));
        rows = FindTreeRows(journey); // selects the box
    }

    // The dialog leaves the right part of the box free.
    bool Shows(bool (*wanted)(const Color&))
    {
        return WaitFor([&] { return journey.Look().Count(wanted) > 3000; });
    }

    // "Set color" is the last item of the tree's menu.
    void OpenDialog()
    {
        journey.Click(treecolumn, rows.GetMiddle(0), 3);
        ASSERT_TRUE(WaitFor([&] { return journey.HasMenu(); }));
        journey.Key("Up");
        journey.Key("Return");
        ASSERT_TRUE(journey.WaitForFront("Color of selected"));
    }

    // Of the light and the shadow, one after the other.
    void SetColors(const std::string& name)
    {
        for (int i = 0; i < 2; i++) {
            journey.Key("alt+n"); // "Color name:", the next one
            journey.Key("ctrl+a");
            journey.Type(name);
            journey.Key("Return");
        }
    }

    TreeRows rows;
};

TEST_F(ColorJourney, PaintsABox)
{
    OpenDialog();
    SetColors("#FF0000");
    EXPECT_TRUE(Shows(IsRed)); // while the dialog is open
    journey.Key("alt+o");      // "OK"
    ASSERT_TRUE(journey.WaitForFront("Vintra"));
    EXPECT_TRUE(Shows(IsRed));
    journey.Key("z");
    EXPECT_TRUE(Shows(IsYellow));
    journey.Key("y");
    EXPECT_TRUE(Shows(IsRed));

    OpenDialog();
    SetColors("#0000FF");
    EXPECT_TRUE(Shows(IsBlue));
    journey.Key("Escape");
    ASSERT_TRUE(journey.WaitForFront("Vintra"));
    EXPECT_TRUE(Shows(IsRed));
    const std::vector<float> red = {1, 0, 0, 1, 1, 0, 0, 1}; // light and shadow of the front
    const OwnedShape saved = SaveShape();
    for (int i = 0; i < saved->sidenumber; i++) {
        const float* colors = saved->sides[i].colors;
        EXPECT_EQ(std::vector<float>(colors, colors + korvane::FRONT_ACUITY), red);
    }
}
