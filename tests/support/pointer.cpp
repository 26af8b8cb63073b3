#include "tests/support/pointer.h"

#include "geometry/creation.h"
#include "tests/support/shapes.h"
#include "tests/support/widgets.h"
#include "ui/input.h"
#include "view/cameraflight.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <algorithm>

namespace korvane::testing
{

static const MainView start = mainview; // as the program begins

void PointerTest::SetUp()
{
    ShowMainWindow();
    StartEmptyScene();
    mainview = start;
    mainview.bgshape = BACKGROUND_NONE;
    width = 1000;
    height = 800;
    camposition = cameraframes;
    EndNewShapeTool();
    keyspace = 0;
    mstate = POINTER_IDLE;
    runtime = 0;
    rdstate = 0;
    Move(500, 400);
}

static guint GetBit(int button)
{
    return guint(GDK_BUTTON1_MASK) << (button - 1);
}

void PointerTest::Press(int button, GdkEventType type)
{
    GdkEventButton event = {};
    event.state = held; // as before the press
    event.type = type;
    event.button = guint(button);
    event.x = x;
    event.y = y;
    EXPECT_EQ(ButtonPress(nullptr, &event), TRUE);
    PressElsewhere(button);
}

void PointerTest::Release(int button)
{
    GdkEventButton event = {};
    event.type = GDK_BUTTON_RELEASE;
    event.button = guint(button);
    event.state = held; // as before the release
    EXPECT_EQ(ButtonRelease(nullptr, &event), TRUE);
    ReleaseElsewhere(button);
}

void PointerTest::PressElsewhere(int button)
{
    held |= GetBit(button);
}

void PointerTest::ReleaseElsewhere(int button)
{
    held &= ~GetBit(button);
}

void PointerTest::Move(double newx, double newy)
{
    x = newx;
    y = newy;
    GdkEventMotion event = {};
    event.state = held;
    event.x = x;
    event.y = y;
    EXPECT_EQ(MouseMov(nullptr, &event), FALSE);
}

void PointerTest::Click(int button, double newx, double newy)
{
    Move(newx, newy);
    Press(button);
    Release(button);
}

void PointerTest::DrawFrame()
{
    rdstate = 0;
}

bool PointerTest::IsTurned()
{
    return !std::equal(mainview.freerotation, mainview.freerotation + 9, start.freerotation);
}

} // namespace korvane::testing
