#include "view/navigation.h"

#include "scene/model.h"
#include "tests/support/camera.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace korvane
{

using namespace korvane::testing;

using MouseRotating = StartViewTest;
using ZoomingAtThePointer = StartViewTest;
using ZoomingAtTheCenter = StartViewTest;
using Panning = StartViewTest;
using SettingTheGradientMouse = StartViewTest;

// Drags from the middle of the view so that the ball turns by an angle towards the right or
// upwards: the pointer at x touches the ball where the sine of its angle from the middle is 2x.
static void DragRight(double angle)
{
    MouseRotate(0, 0, float(std::sin(angle) / 2), 0);
}

static void DragUp(double angle)
{
    MouseRotate(0, 0, 0, float(std::sin(angle) / 2));
}

static float GetScreen(const float* world, int coordinate)
{
    float point[1][3];
    std::copy_n(world, 3, point[0]);
    TransferPoints(&mainview, point, 1);
    return point[0][coordinate];
}

TEST_F(MouseRotating, LeavesTheCameraAloneWhileThePointerStands)
{
    MouseRotate(0, 0, 0, 0);
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), identity, 0));
    EXPECT_TRUE(AreColumns(ToColumns(mainview.freerotation), identity, 0));
}

TEST_F(MouseRotating, DoesNotSnapWhileThePointerStands)
{
    const Columns near = MakeTurn({0, 1, 0}, 5 * degree); // a flight may have ended here
    SetRotation(near);
    MouseRotate(0.1F, 0.2F, 0.1F, 0.2F);
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), near, 0));
}

TEST_F(MouseRotating, TurnsTheBallWithThePointer)
{
    DragRight(30 * degree); // what faces the viewer moves to the right: a turn about the y axis
    const Columns turn = MakeTurn({0, 1, 0}, 30 * degree);
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), turn, 1e-6));
    EXPECT_TRUE(AreColumns(ToColumns(mainview.freerotation), turn, 1e-6));
}

TEST_F(MouseRotating, RollsTheViewBesideTheBall)
{
    MouseRotate(0.8F, 0, 0, 0.7F); // both beside the ball, from its rightmost to its topmost point
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), {{{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}}, 0));
}

TEST_F(MouseRotating, TouchesTheRimOfTheBallFromInside)
{
    // The distance from the middle rounds to exactly 1, and yet the sum of the squares exceeds 1:
    // the depth is 0 there and not the root of a negative number, which would turn nothing.
    constexpr float x = 0.0699999258F;
    constexpr float y = 0.495075762F;
    MouseRotate(x, y, -y, x);
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), {{{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}}, 0));
}

TEST_F(MouseRotating, SnapsToAnAxisWithin8Point1Degrees)
{
    DragRight(8.1 * degree); // its cosine is 0.99002
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), identity, 0));
    EXPECT_TRUE(
        AreColumns(ToColumns(mainview.freerotation), MakeTurn({0, 1, 0}, 8.1 * degree), 1e-6));
}

TEST_F(MouseRotating, DoesNotSnapBeyond8Point12Degrees)
{
    DragRight(8.12 * degree); // its cosine is 0.98997
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), MakeTurn({0, 1, 0}, 8.12 * degree), 1e-6));
}

TEST_F(MouseRotating, LeavesTheSnapWhenDraggedOn)
{
    for (int i = 0; i < 4; i++) {
        DragRight(2 * degree);
        EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), identity, 0));
    }
    DragRight(2 * degree); // ten degrees in all, none of them lost
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), MakeTurn({0, 1, 0}, 10 * degree), 1e-6));
}

TEST_F(MouseRotating, SnapsOneColumnAloneWhenTheOthersAreFar)
{
    DragRight(30 * degree);
    DragUp(5 * degree); // y and z tilt by 5 degrees; x, 30 degrees off, is not near any axis
    const Columns rotation = ToColumns(mainview.rotation);
    EXPECT_TRUE(AreColumns(rotation, MakeTurn({0, 1, 0}, 30 * degree), 1e-6));
    EXPECT_EQ(rotation[1], Columns::value_type({0, 1, 0}));
}

TEST_F(MouseRotating, SnapsHoweverNearTheAxisIs)
{
    // Half a thousandth of a radian: so small a turn is none to VectorRotate, which keeps the free
    // rotation as it is here, but the snap must not leave the view askew.
    const Columns askew = MakeTurn({0, 1, 0}, 0.0005);
    SetRotation(askew);
    MouseRotate(0, 0, 0.0002F, 0);
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), identity, 0));
    EXPECT_TRUE(AreColumns(ToColumns(mainview.freerotation), askew, 0));
}

static bool IsOnAxis(const Columns::value_type& column)
{
    return std::count(column.begin(), column.end(), 0.0F) == 2 &&
           std::count_if(column.begin(), column.end(), [](float x) { return std::fabs(x) == 1; }) ==
               1;
}

TEST_F(MouseRotating, PutsWhatSnapsExactlyOnItsAxis)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<float> position(-0.2F, 0.2F);
    int snaps = 0;
    for (int i = 0; i < 5000; i++) {
        MouseRotate(position(random), position(random), position(random), position(random));
        const Columns rotation = ToColumns(mainview.rotation);
        const auto first =
            ToColumns(mainview.freerotation)[0]; // the column that is looked at first
        const bool near = std::any_of(first.begin(), first.end(),
                                      [](float x) { return std::fabs(x) > 0.99001F; });
        EXPECT_TRUE(!near || IsOnAxis(rotation[0]));
        EXPECT_NE(std::count_if(rotation.begin(), rotation.end(), IsOnAxis), 2);
        snaps += near ? 1 : 0;
    }
    EXPECT_GT(snaps, 0);
}

TEST_F(MouseRotating, KeepsItsColumnsSquareAndOfUnitLength)
{
    std::mt19937 random(2);
    std::uniform_real_distribution<float> position(-0.6F, 0.6F);
    for (int i = 0; i < 5000; i++) {
        MouseRotate(position(random), position(random), position(random), position(random));
    }
    for (const float* rotation : {mainview.rotation, mainview.freerotation}) {
        const Columns columns = ToColumns(rotation);
        for (std::size_t i = 0; i < 3; i++) {
            for (std::size_t k = 0; k < 3; k++) {
                const double dot = std::inner_product(columns[i].begin(), columns[i].end(),
                                                      columns[k].begin(), 0.0);
                EXPECT_NEAR(dot, i == k ? 1 : 0, 1e-4);
            }
        }
    }
}

TEST_F(MouseRotating, ProjectsTheSceneAndLooksAgainWhatIsUnderThePointer)
{
    mainview.scale = 0.4F; // the square covers 0..0.4 in both directions
    AddToView(Square());
    mouse[0] = 0.2F;
    mouse[1] = 0.2F;
    SearchActive();
    ASSERT_EQ(activepointer, &activesides[0]);
    MouseRotate(0.8F, 0, 0, 0.8F); // a quarter turn to the left: now it covers -0.4..0 in x
    EXPECT_EQ(activepointer, nullptr);
    EXPECT_NEAR(shapest[0]->points[1][0], 0, 1e-6); // the corner (1, 0)
    EXPECT_NEAR(shapest[0]->points[1][1], 0.4, 1e-6);
}

TEST_F(ZoomingAtThePointer, KeepsWhatIsUnderItInItsPlace)
{
    gmouse[0] = 0.2F;
    gmouse[1] = 0.1F;
    ChangeScale(true);
    EXPECT_FLOAT_EQ(mainview.scale, 1.1892071F);
    // anchor - anchor / 1.1892071 = anchor * (1 - 0.8408964)
    EXPECT_NEAR(mainview.center[0], 0.2 * 0.1591036, 1e-7);
    EXPECT_NEAR(mainview.center[1], 0.1 * 0.1591036, 1e-7);
    EXPECT_EQ(mainview.center[2], 0);
    const float anchor[3] = {0.2F, 0.1F, 0};
    EXPECT_NEAR(GetScreen(anchor, 0), 0.2, 1e-6);
    EXPECT_NEAR(GetScreen(anchor, 1), 0.1, 1e-6);
}

TEST_F(ZoomingAtThePointer, DoublesAndHalvesTheScaleInFourSteps)
{
    for (int i = 0; i < 4; i++) {
        ChangeScale(true);
    }
    EXPECT_NEAR(mainview.scale, 2, 1e-6);
    for (int i = 0; i < 8; i++) {
        ChangeScale(false);
    }
    EXPECT_NEAR(mainview.scale, 0.5, 1e-6);
}

TEST_F(ZoomingAtThePointer, ComesBackWhenItGoesInAndOut)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<float> coordinate(-0.5F, 0.5F);
    for (int i = 0; i < 100; i++) {
        SetRotation(GetRandomRotation(random));
        mainview.scale = 3;
        mainview.perspective = int8_t(16 + i % 16);
        const float center[3] = {coordinate(random), coordinate(random), coordinate(random)};
        std::copy_n(center, 3, mainview.center);
        std::generate_n(gmouse, 3, [&] { return coordinate(random); });
        float anchor[1][3];
        std::copy_n(gmouse, 3, anchor[0]);
        ReTransferPoints(&mainview, anchor, 1);
        ChangeScale(true);
        for (int k = 0; k < 3; k++) {
            EXPECT_NEAR(GetScreen(anchor[0], k), gmouse[k], 3e-6);
        }
        ChangeScale(false);
        EXPECT_NEAR(mainview.scale, 3, 3e-6);
        for (int k = 0; k < 3; k++) {
            EXPECT_NEAR(mainview.center[k], center[k], 1e-6);
        }
    }
}

TEST_F(ZoomingAtThePointer, PrefersThePointUnderIt)
{
    ActiveElement point = {.active = 1,
                           .hover = 1,
                           .fade = 0,
                           .reserved = 0,
                           .type = ELEMENT_POINT,
                           .position = {0.3F, 0.2F, 0.1F},
                           .element = nullptr};
    activepointer = &point;
    gmouse[0] = 0.29F;
    gmouse[1] = 0.21F;
    ChangeScale(false);
    // anchor - anchor / 0.8408964 = anchor * (1 - 1.1892071)
    EXPECT_NEAR(mainview.center[0], 0.3 * -0.1892071, 1e-7);
    EXPECT_NEAR(mainview.center[1], 0.2 * -0.1892071, 1e-7);
    EXPECT_NEAR(mainview.center[2], 0.1 * -0.1892071, 1e-7);
}

TEST_F(ZoomingAtThePointer, TakesGmouseOverASide)
{
    ActiveElement side = {.active = 1,
                          .hover = 1,
                          .fade = 0,
                          .reserved = 0,
                          .type = ELEMENT_SIDE,
                          .position = {0.3F, 0.2F, 0.1F},
                          .element = nullptr};
    activepointer = &side;
    gmouse[0] = 0.1F;
    ChangeScale(true);
    EXPECT_NEAR(mainview.center[0], 0.1 * 0.1591036, 1e-7);
    EXPECT_EQ(mainview.center[1], 0);
}

TEST_F(ZoomingAtThePointer, TakesTheSnappedPlaceWhileTheGridIsShown)
{
    mainview.gradientfade = fadedone;
    mouse[0] = 0.104F; // 6.24 steps of 1/60
    SetGradientMouse();
    ChangeScale(true);
    EXPECT_NEAR(mainview.center[0], 0.1 * 0.1591036, 1e-7);
}

TEST_F(ZoomingAtThePointer, StopsAtTheEndsOfTheRangeOfScales)
{
    gmouse[0] = 0.4F;
    for (int i = 0; i < 200; i++) { // 50 doublings; the range ends at 1e9, after 30
        ChangeScale(true);
    }
    EXPECT_EQ(mainview.scale, greatestscale);
    for (int i = 0; i < 400; i++) {
        ChangeScale(false);
    }
    EXPECT_EQ(mainview.scale, smallestscale);
    const float center = mainview.center[0];
    ChangeScale(false);
    EXPECT_FLOAT_EQ(mainview.center[0], center); // the view does not creep away from the pointer
}

TEST_F(ZoomingAtTheCenter, ChangesTheScaleAlone)
{
    mainview.center[0] = 0.3F;
    gmouse[0] = 0.2F;
    ChangeScaleFromOrigo(true);
    EXPECT_FLOAT_EQ(mainview.scale, 1.1892071F);
    EXPECT_EQ(mainview.center[0], 0.3F);
    ChangeScaleFromOrigo(false);
    ChangeScaleFromOrigo(false);
    EXPECT_NEAR(mainview.scale, 0.8408964, 1e-6);
    EXPECT_EQ(mainview.center[0], 0.3F);
}

TEST_F(ZoomingAtTheCenter, ProjectsTheScene)
{
    AddToView(Cube());
    ChangeScaleFromOrigo(true);
    EXPECT_NEAR(shapest[0]->points[6][0], 0.5 * 1.1892071, 1e-6);
    ChangeScale(false);
    EXPECT_NEAR(shapest[0]->points[6][0], 0.5, 1e-6);
}

TEST_F(ZoomingAtTheCenter, MakesPickableWhatHasBecomeLargeEnough)
{
    // The cube's radius is 0.866 and it has 12 triangles: its size on the screen, 0.0625 times the
    // square of the scale, exceeds 0.0001 above a scale of 0.04.
    mainview.scale = 0.038F;
    AddToView(Cube());
    EXPECT_EQ(activepoints[0].active, 0);
    ChangeScaleFromOrigo(true);
    EXPECT_EQ(activepoints[0].active, 1);
}

TEST_F(Panning, MovesTheCentreAgainstThePointer)
{
    mainview.scale = 2;
    ChangePosition(0, 0, 0, 0.5F, 0, 0); // the Left key
    EXPECT_EQ(mainview.center[0], -0.25F);
    ChangePosition(0, 0, 0, 0, -0.5F, 0); // the Up key
    EXPECT_EQ(mainview.center[0], -0.25F);
    EXPECT_EQ(mainview.center[1], 0.25F);
    ChangePosition(0, 0, 0, 0, 0, 0.02F); // the F key
    EXPECT_FLOAT_EQ(mainview.center[2], -0.01F);
}

TEST_F(Panning, AsksForARedraw)
{
    ChangePosition(0, 0, 0, 0.5F, 0, 0);
    EXPECT_EQ(rdstate, redrawwanted);
}

TEST_F(Panning, CarriesAlongWhatWasUnderThePointer)
{
    std::mt19937 random(4);
    SetRotation(GetRandomRotation(random));
    mainview.scale = 3;
    mainview.center[1] = 0.7F;
    float held[1][3] = {{0.1F, 0.2F, 0}};
    ReTransferPoints(&mainview, held, 1);
    ChangePosition(0.1F, 0.2F, 0, -0.3F, 0.4F, 0);
    EXPECT_NEAR(GetScreen(held[0], 0), -0.3, 1e-6);
    EXPECT_NEAR(GetScreen(held[0], 1), 0.4, 1e-6);
    EXPECT_NEAR(GetScreen(held[0], 2), 0, 1e-6);
}

TEST_F(Panning, ProjectsTheScene)
{
    AddToView(Cube());
    ChangePosition(0, 0, 0, 0.2F, 0, 0);
    EXPECT_FLOAT_EQ(shapest[0]->points[6][0], 0.7F);
}

TEST(GetPowerOfTwo, IsTheGreatestThatIsNotGreaterThanTheScale)
{
    EXPECT_EQ(GetPowerOfTwo(1), 1);
    EXPECT_EQ(GetPowerOfTwo(1.9999), 1);
    EXPECT_EQ(GetPowerOfTwo(2), 2);
    EXPECT_EQ(GetPowerOfTwo(0.9999), 0.5);
    EXPECT_EQ(GetPowerOfTwo(0.5), 0.5);
    EXPECT_EQ(GetPowerOfTwo(1000), 512);
    EXPECT_EQ(GetPowerOfTwo(0.001), 1.0 / 1024);
}

TEST(GetGradientStep, IsASixtiethOverThePowerOfTwo)
{
    EXPECT_DOUBLE_EQ(GetGradientStep(1), 1.0 / 60);
    EXPECT_DOUBLE_EQ(GetGradientStep(3), 1.0 / 120);
    EXPECT_DOUBLE_EQ(GetGradientStep(0.3), 4.0 / 60);
    for (double scale = 1e-3; scale < 1e3; scale *= 1.07) {
        const double onscreen = GetGradientStep(scale) * scale;
        EXPECT_GE(onscreen, 1.0 / 60 - 1e-12);
        EXPECT_LT(onscreen, 1.0 / 30);
    }
}

TEST_F(SettingTheGradientMouse, CopiesThePointerWhileNoGridIsShown)
{
    mouse[0] = 0.104F;
    mouse[1] = -0.333F;
    mouse[2] = 0.25F;
    SetGradientMouse();
    EXPECT_TRUE(std::equal(mouse, mouse + 3, gmouse));
}

TEST_F(SettingTheGradientMouse, SnapsWhileTheGridFadesOutAndKeepsTheDepth)
{
    mainview.gradientfade = 1; // switched off, and all but faded
    mouse[0] = 0.104F;
    mouse[1] = -0.112F;
    mouse[2] = 0.25F;
    SetGradientMouse();
    EXPECT_FLOAT_EQ(gmouse[0], 0.1F);          // 6.24 steps of 1/60
    EXPECT_FLOAT_EQ(gmouse[1], -7.0F / 60.0F); // -6.72 steps
    EXPECT_EQ(gmouse[2], 0.25F);
}

TEST_F(SettingTheGradientMouse, RoundsHalvesAwayFromZero)
{
    mainview.gradientfade = fadedone;
    mouse[0] = 0.125F; // 7.5 steps of 1/60
    mouse[1] = -0.125F;
    SetGradientMouse();
    EXPECT_FLOAT_EQ(gmouse[0], 8.0F / 60.0F);
    EXPECT_FLOAT_EQ(gmouse[1], -8.0F / 60.0F);
    mouse[0] = 0.375F; // 22.5 steps: not to the even neighbour either
    mouse[1] = -0.375F;
    SetGradientMouse();
    EXPECT_FLOAT_EQ(gmouse[0], 23.0F / 60.0F);
    EXPECT_FLOAT_EQ(gmouse[1], -23.0F / 60.0F);
}

TEST_F(SettingTheGradientMouse, SnapsToLinesThatStandInTheWorld)
{
    mainview.gradientfade = fadedone;
    mainview.scale = 3; // a step of 1/120
    mainview.center[0] = 0.003F;
    mainview.center[1] = -0.007F;
    mouse[0] = 0.1F;  // (0.1 / 3 + 0.003) * 120 = 4.36
    mouse[1] = -0.2F; // (-0.2 / 3 - 0.007) * 120 = -8.84
    SetGradientMouse();
    EXPECT_NEAR(gmouse[0], (4.0 / 120 - 0.003) * 3, 1e-6);
    EXPECT_NEAR(gmouse[1], (-9.0 / 120 + 0.007) * 3, 1e-6);
}

TEST_F(SettingTheGradientMouse, TurnsTheLinesWithTheView)
{
    mainview.gradientfade = fadedone;
    mainview.center[2] = 0.003F;
    SetRotation(MakeTurn({0, 1, 0}, 90 * degree)); // the world's z axis points to the right
    mouse[0] = 0.1F;                               // (0.1 + 0.003) * 60 = 6.18
    SetGradientMouse();
    EXPECT_NEAR(gmouse[0], 0.1 - 0.003, 1e-6);
}

TEST_F(SettingTheGradientMouse, FindsTheNearestLineAtEveryScale)
{
    mainview.gradientfade = fadedone;
    mainview.center[0] = 0.0123F;
    mainview.center[1] = -0.4567F;
    for (float scale = 1e-3F; scale < 1e3F; scale *= 1.3F) {
        mainview.scale = scale;
        const double step = GetGradientStep(double(scale));
        for (float position = -0.5F; position <= 0.5F; position += 0.037F) {
            mouse[0] = position;
            mouse[1] = -position;
            SetGradientMouse();
            for (int k = 0; k < 2; k++) {
                const double line =
                    (double(gmouse[k]) / double(scale) + double(mainview.center[k])) / step;
                EXPECT_NEAR(line, std::round(line), 1e-3);
                EXPECT_LE(std::fabs(gmouse[k] - mouse[k]), step * double(scale) / 2 + 1e-6);
            }
        }
    }
}

} // namespace korvane
