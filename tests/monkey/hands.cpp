#include "tests/monkey/hands.h"

#include "geometry/construction.h"
#include "scene/model.h"
#include "ui/input.h"
#include "ui/keys.h"
#include "view/cameraflight.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gdk/gdkkeysyms.h>
#include <gtk/gtk.h>

#include <algorithm>

namespace korvane::testing
{

int Choose(std::mt19937& random, int number)
{
    return int(random() % unsigned(std::max(number, 1)));
}

double Fraction(std::mt19937& random)
{
    return double(random() % 1000001U) / 1000000;
}

static float Between(std::mt19937& random, double low, double high)
{
    return float(low + (high - low) * Fraction(random));
}

Place AnywhereOnScreen(std::mt19937& random)
{
    return {Between(random, -0.5, 0.5), Between(random, -0.5, 0.5), 0};
}

static Place ToPlace(const float* point)
{
    return {point[0], point[1], point[2]};
}

Place Mix(const Place& a, const Place& b, double t)
{
    return {float(a[0] + (b[0] - a[0]) * t), float(a[1] + (b[1] - a[1]) * t),
            float(a[2] + (b[2] - a[2]) * t)};
}

Place OnRecord(int activepoint)
{
    return ToPlace(GetPointOfElement(&activepoints[activepoint]));
}

Place OnSomePoint(std::mt19937& random)
{
    const int construction = std::min(newpointnumber, activepointnumber);
    if (construction > 0 && Choose(random, 3) == 0) { // those of a construction are few
        const int back = 1 + Choose(random, construction);
        return OnRecord(activepointnumber - back);
    }
    return OnRecord(Choose(random, activepointnumber));
}

static Place OnSomeStripe(std::mt19937& random)
{
    const Stripe* stripe = GetStripeOfElement(&activestripes[Choose(random, activestripenumber)]);
    const int k = Choose(random, stripe->pointnumber - 1);
    const auto point = [stripe](int i) {
        return ToPlace(stripe->shape->points[stripe->points[i]]);
    };
    return Mix(point(k), point(k + 1), Fraction(random));
}

Place OnSomeSide(std::mt19937& random)
{
    const Side* side = GetSideOfElement(&activesides[Choose(random, activesidenumber)]);
    const int index = side->triangles[Choose(random, side->trianglenumber)];
    const Triangle& triangle = side->shape->triangles[index];
    const auto corner = [&](int i) { return ToPlace(side->shape->points[triangle.points[i]]); };
    return Mix(Mix(corner(0), corner(1), 0.5), corner(2), 1.0 / 3);
}

Place SomePlace(std::mt19937& random)
{
    const int kind = Choose(random, 8);
    if (kind < 3 && activepointnumber > 0) {
        return OnSomePoint(random);
    }
    if (kind < 5 && activestripenumber > 0) {
        return OnSomeStripe(random);
    }
    if (kind < 7 && activesidenumber > 0) {
        return OnSomeSide(random);
    }
    return AnywhereOnScreen(random);
}

static double ToPixelX(const Place& place)
{
    return double(place[0]) * std::min(width, height) + width / 2.0;
}

static double ToPixelY(const Place& place)
{
    return height / 2.0 - double(place[1]) * std::min(width, height);
}

static unsigned held = 0; // the buttons that are down, as an event's `state` tells them

void MoveTo(const Place& place)
{
    rdstate = 0; // the frame that the last step asked for has been drawn
    GdkEventMotion event = {};
    event.type = GDK_MOTION_NOTIFY;
    event.state = held;
    event.x = ToPixelX(place);
    event.y = ToPixelY(place);
    MouseMov(nullptr, &event);
}

static GdkEventButton MakeButtonEvent(GdkEventType type, const Place& place, unsigned button)
{
    GdkEventButton event = {};
    event.type = type;
    event.x = ToPixelX(place);
    event.y = ToPixelY(place);
    event.button = button;
    event.state = held;
    return event;
}

void Press(const Place& place, unsigned button)
{
    GdkEventButton event = MakeButtonEvent(GDK_BUTTON_PRESS, place, button);
    ButtonPress(nullptr, &event);
    held |= GDK_BUTTON1_MASK << (button - 1);
}

void Release(const Place& place, unsigned button)
{
    GdkEventButton event = MakeButtonEvent(GDK_BUTTON_RELEASE, place, button);
    ButtonRelease(nullptr, &event);
    held &= ~(GDK_BUTTON1_MASK << (button - 1));
}

void Click(const Place& place, unsigned button)
{
    MoveTo(place);
    Press(place, button);
    Release(place, button);
}

void Scroll(const Place& place, bool up)
{
    GdkEventScroll event = {};
    event.type = GDK_SCROLL;
    event.x = ToPixelX(place);
    event.y = ToPixelY(place);
    event.state = held;
    event.direction = up ? GDK_SCROLL_UP : GDK_SCROLL_DOWN;
    MouseScroll(nullptr, &event);
}

void FinishFlight()
{
    while (camposition < cameraframes) {
        PlayCamera();
    }
}

void PressKey(unsigned key)
{
    GdkEventKey event = {};
    event.type = GDK_KEY_PRESS;
    event.keyval = key;
    KeyPress(nullptr, &event);
}

void LetGoOfSpace()
{
    GdkEventKey event = {};
    event.type = GDK_KEY_RELEASE;
    event.keyval = GDK_space;
    KeyRelease(nullptr, &event);
}

} // namespace korvane::testing
