// The view under the hand: real pointer and key events over a yellow box.
#include "tests/support/scenejourney.h"
#include "tests/support/scenetexts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <string>

using namespace korvane::testing;

static bool IsYellow(const Color& color)
{
    return color.red > 80 && color.green > 80 && color.blue < std::min(color.red, color.green) / 2;
}

// The middle of what is yellow, in pixels from the middle of the view, y up.
struct Spot {
    double x, y;
};

static Spot FindBox(const Screenshot& picture)
{
    double x = 0;
    double y = 0;
    int number = 0;
    for (int row = 0; row < picture.height; row++) {
        for (int column = 0; column < picture.width; column++) {
            if (IsYellow(picture.At(column, row))) {
                x += column + 0.5;
                y += row + 0.5;
                number++;
            }
        }
    }
    const double count = std::max(number, 1);
    return {x / count - picture.width / 2.0, picture.height / 2.0 - y / count};
}

class View : public SceneJourney
{
protected:
    void SetUp() override
    {
        Start(BoxScene());
    }

    bool WaitForChange(const Screenshot& from)
    {
        return WaitFor([&] { return from.CountDifferences(journey.Look()) > muchchanged; });
    }

    bool WaitForFirstPicture()
    {
        return WaitFor([&] { return first.CountDifferences(journey.Look()) == 0; });
    }

    // The pixels of a length in view coordinates.
    double GetLength(double length) const
    {
        return length * std::min(first.width, first.height);
    }

    // Escape closes what is open; its repeats come to the window when that has gone.
    void ExpectToStayUntilEscapeIsPressedAnew(const std::function<bool()>& isclosed)
    {
        journey.Hold("Escape");
        EXPECT_TRUE(WaitFor(isclosed));
        journey.LookWhenStill();
        ASSERT_TRUE(journey.IsRunning());
        journey.LetGo("Escape");
        journey.Key("Escape");
        EXPECT_EQ(journey.WaitForEnd(), 0);
    }

    static constexpr int muchchanged = 2000; // pixels; a lit edge or point has fewer
};

TEST_F(View, IsTurnedByALeftDragOnTheBackgroundAndSnapsToTheAxes)
{
    journey.MoveTo(X(-0.2), Y(-0.2));
    first = journey.LookWhenStill(); // the wall under the pointer is lit
    journey.Press(1);
    journey.MoveTo(X(0), Y(-0.15));
    EXPECT_TRUE(WaitForChange(first));
    journey.LookWhenStill();           // a step is taken for each drawn frame at most
    journey.MoveTo(X(-0.19), Y(-0.2)); // two degrees from where it began
    EXPECT_TRUE(WaitForFirstPicture());
    journey.Release(1);
    EXPECT_TRUE(WaitForFirstPicture());
}

TEST_F(View, KeepsThePlaceUnderThePointerWhenTheWheelZooms)
{
    constexpr int inside = 14; // pixels from the corner, beyond what marks the point
    const int x = X(0.1);
    const int y = Y(0.1);
    journey.MoveTo(x, y);
    for (int step = 0; step < 4; step++) { // twice as large
        journey.Click(x, y, 4);
    }
    // the box is 0.2 wide, and then 0.4: from 0.1 to 0.5
    EXPECT_TRUE(WaitFor([&] {
        const Screenshot picture = journey.Look();
        return IsYellow(picture.At(X(0.48), Y(0.15))) && !IsYellow(picture.At(X(0.52), Y(0.15)));
    }));
    const Screenshot zoomed = journey.LookWhenStill();
    EXPECT_TRUE(IsYellow(zoomed.At(X(0.3), Y(0.28)))); // and from 0.1 to 0.3 high
    EXPECT_FALSE(IsYellow(zoomed.At(X(0.3), Y(0.32))));
    EXPECT_TRUE(IsYellow(zoomed.At(x + inside, y - inside)));
    EXPECT_FALSE(IsYellow(zoomed.At(x - inside, y - inside)));
    EXPECT_FALSE(IsYellow(zoomed.At(x + inside, y + inside)));
}

// The left wall faces the viewer when it has been clicked, upright; clicked again it rolls.
TEST_F(View, FliesToAClickedWallAndRollsIt)
{
    journey.Click(20, Y(0));
    ASSERT_TRUE(WaitForChange(first));
    const Screenshot flown = journey.LookWhenStill();
    const Spot facing = FindBox(flown);
    // seen from +x: y still points up and the middle of the box in z, -0.05, lies to the side
    EXPECT_NEAR(facing.y, GetLength(0.15), 3);
    EXPECT_NEAR(std::abs(facing.x), GetLength(0.05), 3);

    journey.Click(X(-0.2), Y(-0.2));
    ASSERT_TRUE(WaitForChange(flown));
    const Spot rolled = FindBox(journey.LookWhenStill());
    EXPECT_NEAR(std::abs(rolled.x), GetLength(0.15), 3); // a quarter turn
    EXPECT_NEAR(std::abs(rolled.y), GetLength(0.05), 3);
}

TEST_F(View, FliesToAClickedSurface)
{
    journey.Click(X(0.15), Y(0.15)); // the side at z = 0.05 faces the viewer already
    ASSERT_TRUE(WaitForChange(first));
    const Spot box = FindBox(journey.LookWhenStill());
    EXPECT_NEAR(box.x, GetLength(0.05), 3); // its middle, 0.2 and 0.15, from the clicked spot
    EXPECT_NEAR(box.y, 0, 3);
}

TEST_F(View, PopsUpAMenuAtARightClickButNotAfterARightDrag)
{
    journey.MoveTo(X(-0.3), Y(-0.3));
    journey.Press(3);
    journey.MoveTo(X(-0.2), Y(-0.2));
    journey.MoveTo(X(-0.1), Y(-0.2));
    journey.Release(3);
    const Screenshot before = journey.LookWhenStill();
    journey.Key("plus"); // what the window, not a menu, hears
    EXPECT_TRUE(WaitForChange(before));
    EXPECT_FALSE(journey.HasMenu());

    journey.Click(X(-0.3), Y(-0.3), 3);
    EXPECT_TRUE(WaitFor([&] { return journey.HasMenu(); }));
    journey.Key("Escape"); // the menu goes, the program stays
    EXPECT_TRUE(WaitFor([&] { return !journey.HasMenu(); }));
    EXPECT_TRUE(journey.IsRunning());
}

TEST_F(View, StaysWhenEscapeIsHeldToCloseAMenu)
{
    journey.Click(X(-0.3), Y(-0.3), 3);
    ASSERT_TRUE(WaitFor([&] { return journey.HasMenu(); }));
    ExpectToStayUntilEscapeIsPressedAnew([&] { return !journey.HasMenu(); });
}

TEST_F(View, StaysWhenEscapeIsHeldToCloseADialog)
{
    journey.Key("ctrl+o");
    ASSERT_TRUE(journey.WaitForFront("Open scene"));
    ExpectToStayUntilEscapeIsPressedAnew([&] { return journey.WaitForFront("Vintra"); });
}

TEST_F(View, GoesWithTheProgramAtEscape)
{
    journey.Key("Escape");
    EXPECT_EQ(journey.WaitForEnd(), 0);
}
