// A hand on the pointer for the window tests: the events of the view, made by the test.
#pragma once

#include <gtest/gtest.h>
#include <gtk/gtk.h>

namespace korvane::testing
{

constexpr int left = 1;
constexpr int middle = 2;
constexpr int right = 3;

// An empty scene as the program begins with it, without the background cube. The drawing area is
// taken to be 1000 by 800 pixels, so that the shorter side is 800: the pixel (500, 400) is the
// origin, where the pointer is, and 80 pixels are 0.1 view units. No timer runs: ticks are set by
// hand.
class PointerTest : public ::testing::Test
{
protected:
    void SetUp() override;

    void Press(int button, GdkEventType type = GDK_BUTTON_PRESS);
    void Release(int button);
    void Move(double newx, double newy);
    void Click(int button, double newx, double newy);

    // What a menu or a dialog takes; later events tell that the button is down or up.
    void PressElsewhere(int button);
    void ReleaseElsewhere(int button);

    static void DrawFrame(); // one frame has been drawn, so that the next drag step may be taken
    static bool IsTurned();  // the camera, since the program began

    double x = 0;
    double y = 0;

private:
    guint held = 0; // the buttons that are down, as an event's `state` tells them
};

} // namespace korvane::testing
