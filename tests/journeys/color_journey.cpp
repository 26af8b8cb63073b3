// A box is painted in the dialog with the keyboard: seen at once, kept, undone, redone, cancelled,
// saved. One side of it is painted with the mouse.
#include "tests/support/scenejourney.h"
#include "tests/support/scenetexts.h"
#include "tests/support/screencontrols.h"
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
    const korvane::OwnedShape saved = SaveShape();
    for (int i = 0; i < saved->sidenumber; i++) {
        const float* colors = saved->sides[i].colors;
        EXPECT_EQ(std::vector<float>(colors, colors + korvane::FRONT_ACUITY), red);
    }
}

// The side towards the viewer is the second of the box. At first its front alone is visible.
TEST_F(ColorJourney, PaintsASideWithTheMouse)
{
    Click(0.2, 0.15, 3);
    ChooseItem(3); // "Set color of side"
    ASSERT_TRUE(journey.WaitForFront("Color of side"));
    DragSlider(journey, 3, 0, 0); // the opacity of the light
    DragSlider(journey, 3, 2, 1); // the acuity
    const auto boxes = FindEmptyCheckBoxes(journey);
    ASSERT_EQ(boxes.size(), 1U); // of the back
    journey.Click(boxes[0].x, boxes[0].y);
    EXPECT_TRUE(WaitFor([&] { return FindEmptyCheckBoxes(journey).empty(); }));
    const Screenshot firstpage = journey.LookWhenStill();
    journey.Click(boxes[0].x + 40, boxes[0].y); // the text beside it
    EXPECT_TRUE(WaitFor([&] { return firstpage.CountDifferences(journey.Look()) > 0; }));
    journey.LookWhenStill();
    DragSlider(journey, 3, 1, 0); // the opacity of the shadow
    DragSlider(journey, 3, 2, 0.5);
    journey.Key("alt+o");
    ASSERT_TRUE(journey.WaitForFront("Vintra"));

    const korvane::OwnedShape saved = SaveShape();
    const float untouched[] = {0.9F, 0.9F, 0, 1, 0.7F, 0.7F, 0, 1, 0.1F,
                               0.9F, 0.9F, 0, 1, 0.7F, 0.7F, 0, 1, 0.1F};
    const float painted[] = {0.9F, 0.9F, 0, 0, 0.7F, 0.7F, 0, 1, 1,
                             0.9F, 0.9F, 0, 1, 0.7F, 0.7F, 0, 0, 0.5F};
    for (int i = 0; i < saved->sidenumber; i++) {
        const korvane::Side& side = saved->sides[i];
        EXPECT_EQ(side.visibility, i == 1 ? korvane::VISIBLE_BOTH : korvane::VISIBLE_FRONT);
        const float* expected = i == 1 ? painted : untouched;
        for (int k = 0; k < korvane::colornumber; k++) {
            EXPECT_NEAR(side.colors[k], expected[k], 0.005F) << "side " << i << ", float " << k;
        }
    }
}
