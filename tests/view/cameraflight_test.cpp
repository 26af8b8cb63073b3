#include "view/cameraflight.h"

#include "scene/model.h"
#include "tests/support/camera.h"
#include "view/frameloop.h"
#include "view/mainview.h"
#include "view/navigation.h"
#include "view/picking.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace korvane
{

using namespace korvane::testing;

static constexpr float origin[3] = {0, 0, 0};
static constexpr double half = 3.14159265358979323846; // half a turn

using ChangingTheCamera = StartViewTest;
using SettingTheStart = StartViewTest;
using RotatingTheCube = StartViewTest;

static std::array<float, 3> ToFloats(const Vector& v)
{
    return {float(v[0]), float(v[1]), float(v[2])};
}

// The greatest turn from one view to the next, the present view included.
static double GetGreatestStep()
{
    double greatest = GetTurnAngle(ToColumns(mainview.rotation), RotationOfFrame(0));
    for (int k = 1; k < cameraframes; k++) {
        greatest = std::max(greatest, GetTurnAngle(RotationOfFrame(k - 1), RotationOfFrame(k)));
    }
    return greatest;
}

// Of 256 pieces of a way no frame takes more than 26: 256.5 (cos(7 pi / 16) - cos(pi / 2)) / 2
// = 25.02.
static constexpr double greatestshare = 26.0 / 256;

static const int positionatstart = camposition; // before any test has run

TEST(Camera, IsIdleAtTheStart)
{
    EXPECT_EQ(positionatstart, cameraframes);
}

TEST_F(ChangingTheCamera, MovesCentreAndScaleByTheCosineLaw)
{
    const float center[3] = {1, 2, -3};
    ChangeCamera(nullptr, nullptr, center, 3);
    EXPECT_EQ(camposition, 0);
    // Frame 7 is half of the way; frame 3 lies at (1 - cos 45 degrees) / 2 = 0.1464466 of it, and
    // frame 0 at (1 - cos 11.25 degrees) / 2 = 0.0096074.
    EXPECT_FLOAT_EQ(camtable[7].center[0], 0.5F);
    EXPECT_FLOAT_EQ(camtable[7].center[1], 1);
    EXPECT_FLOAT_EQ(camtable[7].center[2], -1.5F);
    EXPECT_FLOAT_EQ(camtable[7].scale, 2);
    EXPECT_NEAR(camtable[3].center[1], 2 * 0.1464466, 1e-6);
    EXPECT_NEAR(camtable[3].scale, 1 + 2 * 0.1464466, 1e-6);
    EXPECT_NEAR(camtable[0].center[0], 0.0096074, 1e-6);
    EXPECT_EQ(LastFrame().center[1], 2);
    EXPECT_EQ(LastFrame().scale, 3);
}

TEST_F(ChangingTheCamera, EndsAtTheGivenCentreAndScaleToTheBit)
{
    mainview.center[0] = 1e9F; // of so long a way, its end cannot be computed to the bit
    mainview.scale = 1e8F;
    const float center[3] = {1.1e-9F, 0.3F, 0.7F};
    ChangeCamera(nullptr, nullptr, center, 1.2345678e-8F);
    EXPECT_TRUE(std::equal(center, center + 3, LastFrame().center));
    EXPECT_EQ(LastFrame().scale, 1.2345678e-8F);
}

TEST_F(ChangingTheCamera, KeepsTheScaleInItsRange)
{
    ChangeCamera(nullptr, nullptr, origin, std::numeric_limits<float>::infinity());
    EXPECT_EQ(LastFrame().scale, greatestscale);
    ChangeCamera(nullptr, nullptr, origin, 0);
    EXPECT_EQ(LastFrame().scale, smallestscale);
}

TEST_F(ChangingTheCamera, KeepsTheOrientationWithoutDirections)
{
    const Columns askew = MakeTurn({1, 2, 3}, 1);
    SetRotation(askew);
    ChangeCamera(nullptr, nullptr, origin, 1);
    for (int k = 0; k < cameraframes; k++) {
        EXPECT_TRUE(AreColumns(RotationOfFrame(k), askew, 1e-6));
    }
}

TEST_F(ChangingTheCamera, KeepsTheOrientationForADirectionThatPointsNowhere)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float nowhere[2][3] = {{0, 0, 0}, {nan, 0, 1}};
    const float center[3] = {1, 0, 0};
    for (const float* dir : nowhere) {
        ChangeCamera(dir, dir, center, 1);
        EXPECT_TRUE(AreColumns(LastRotation(), identity, 0));
        EXPECT_EQ(LastFrame().center[0], 1);
    }
}

TEST_F(ChangingTheCamera, TiltsADirectionToTheViewerInEasedSteps)
{
    const float dir[3] = {1, 0, 0}; // to (0, 0, 1): a right angle about -y
    ChangeCamera(dir, nullptr, origin, 1);
    const auto tilt = [](double pieces) {
        return MakeTurn({0, -1, 0}, 90 * degree * pieces / 256);
    };
    EXPECT_TRUE(AreColumns(RotationOfFrame(0), tilt(2), 1e-6));    // 0.0096074 * 256.5 = 2.46
    EXPECT_TRUE(AreColumns(RotationOfFrame(1), tilt(9), 1e-6));    // 0.0380602 * 256.5 = 9.76
    EXPECT_TRUE(AreColumns(RotationOfFrame(7), tilt(128), 1e-6));  // 0.5 * 256.5 = 128.25
    EXPECT_TRUE(AreColumns(RotationOfFrame(14), tilt(254), 1e-6)); // 0.9903926 * 256.5 = 254.04
    EXPECT_TRUE(AreColumns(LastRotation(), {{{0, 0, 1}, {0, 1, 0}, {-1, 0, 0}}}, 0));
}

TEST_F(ChangingTheCamera, TurnsADirectionAwayFromTheViewerOverTheTop)
{
    const float dir[3] = {0, 0, -1};
    ChangeCamera(dir, nullptr, origin, 1);
    // In the middle of the flight dir points up: a quarter turn about x, then another.
    EXPECT_TRUE(AreColumns(RotationOfFrame(7), {{{1, 0, 0}, {0, 0, 1}, {0, -1, 0}}}, 1e-6));
    EXPECT_TRUE(AreColumns(LastRotation(), {{{1, 0, 0}, {0, -1, 0}, {0, 0, -1}}}, 0));
}

TEST_F(ChangingTheCamera, TurnsANearlyOppositeDirectionThroughTheAxisFartherFromIt)
{
    const float dir[3] = {0, 0.0005F, -1}; // y is nearer than x
    ChangeCamera(dir, nullptr, origin, 1);
    const Vector middle = Apply(RotationOfFrame(7), {0, 0.0005, -1});
    EXPECT_NEAR(middle[0], 1, 1e-5);
    EXPECT_NEAR(Apply(LastRotation(), {0, 0.0005, -1})[2], 1, 1e-6);
    EXPECT_LT(GetGreatestStep(), greatestshare * half + 1e-3);
}

TEST_F(ChangingTheCamera, RollsAnUpsideDownViewAboutTheViewingAxis)
{
    const float up[3] = {0, -1, 0};
    ChangeCamera(nullptr, up, origin, 1);
    for (int k = 0; k < cameraframes; k++) {
        EXPECT_NEAR(camtable[k].rotation[8], 1, 1e-6); // the z axis faces the viewer all the way
    }
    EXPECT_NEAR(std::fabs(camtable[7].rotation[3]), 1, 1e-6); // half way the y axis lies aside
    EXPECT_TRUE(AreColumns(LastRotation(), {{{-1, 0, 0}, {0, -1, 0}, {0, 0, 1}}}, 0));
    EXPECT_LT(GetGreatestStep(), greatestshare * half + 1e-3);
}

TEST_F(ChangingTheCamera, RollsAboutAGivenDirectionThatFacesTheViewer)
{
    const float dir[3] = {0, 0, 1};
    const float up[3] = {0, -1, 0};
    ChangeCamera(dir, up, origin, 1);
    EXPECT_NEAR(camtable[7].rotation[8], 1, 1e-6);
    EXPECT_TRUE(AreColumns(LastRotation(), {{{-1, 0, 0}, {0, -1, 0}, {0, 0, 1}}}, 0));
}

TEST_F(ChangingTheCamera, TurnsUpAloneTheShortestWay)
{
    const float up[3] = {0, 0, 1}; // to (0, 1, 0): a right angle about -x
    ChangeCamera(nullptr, up, origin, 1);
    EXPECT_TRUE(AreColumns(RotationOfFrame(7), MakeTurn({-1, 0, 0}, 45 * degree), 1e-6));
    EXPECT_TRUE(AreColumns(LastRotation(), {{{1, 0, 0}, {0, 0, -1}, {0, 1, 0}}}, 0));
}

TEST_F(ChangingTheCamera, BringsBothDirectionsHome)
{
    const float dir[3] = {1, 0, 0};
    const float up[3] = {0, 0, 1};
    ChangeCamera(dir, up, origin, 1); // x goes to z, z to y, and so y to x
    EXPECT_TRUE(AreColumns(LastRotation(), {{{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}}, 0));
}

TEST_F(ChangingTheCamera, TurnsTheViewThatIsThere)
{
    SetRotation(MakeTurn({0, 0, 1}, 90 * degree)); // x is up, y points to the left
    const float up[3] = {-1, 0, 0};                // what is on the left
    ChangeCamera(nullptr, up, origin, 1);
    EXPECT_TRUE(AreColumns(LastRotation(), identity, 0));
}

TEST_F(ChangingTheCamera, EndsExactlyOnComponentsThatItHasReachedWithinATenThousandth)
{
    SetRotation({{{1, 0.00009F, 0.00011F}, {-0.00009F, 1, 0}, {-0.00011F, 0, 1}}});
    ChangeCamera(nullptr, nullptr, origin, 1);
    EXPECT_NEAR(camtable[14].rotation[1], 0.00009, 1e-8); // the last frame alone does so
    const Columns last = LastRotation();
    EXPECT_EQ(last[0][0], 1);
    EXPECT_EQ(last[0][1], 0);
    EXPECT_NEAR(last[0][2], 0.00011, 1e-8);
    EXPECT_EQ(last[1][0], 0);
    EXPECT_NEAR(last[2][0], -0.00011, 1e-8);
}

TEST_F(ChangingTheCamera, MakesEveryColumnOneUnitLong)
{
    SetRotation({{{1.01F, 0, 0}, {0, 0.99F, 0}, {0, 0, 1.001F}}});
    ChangeCamera(nullptr, nullptr, origin, 1);
    for (int k = 0; k < cameraframes; k++) {
        EXPECT_TRUE(AreColumns(RotationOfFrame(k), identity, 1e-7));
    }
}

TEST_F(ChangingTheCamera, StartsAgainFromTheViewOfTheMoment)
{
    const float dir[3] = {1, 0, 0};
    ChangeCamera(dir, nullptr, origin, 3);
    for (int k = 0; k < 8; k++) {
        PlayCamera();
    }
    const float sideways[3] = {0, 1, 0};
    ChangeCamera(sideways, nullptr, origin, 1);
    EXPECT_EQ(camposition, 0);
    EXPECT_LT(GetTurnAngle(RotationOfFrame(0), MakeTurn({0, -1, 0}, 45 * degree)), degree);
    EXPECT_NEAR(camtable[7].scale, 1.5, 1e-6); // half way from 2, where the first flight was
    PlayFlight();
    EXPECT_TRUE(AreColumns(ToColumns(mainview.freerotation), LastRotation(), 0));
    EXPECT_EQ(mainview.scale, 1);
}

TEST_F(ChangingTheCamera, PlaysOnOverWhatTheHandDoesMeanwhile)
{
    const float dir[3] = {1, 0, 0};
    ChangeCamera(dir, nullptr, origin, 3);
    PlayCamera();
    MouseRotate(0, 0, 0.3F, 0.1F);
    ChangeScale(true);
    PlayCamera();
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), RotationOfFrame(1), 0));
    EXPECT_TRUE(AreColumns(ToColumns(mainview.freerotation), RotationOfFrame(1), 0));
    EXPECT_EQ(mainview.scale, camtable[1].scale);
}

// A flight from a random view that brings random perpendicular directions home.
static void PrepareRandomFlight(std::mt19937& random, Vector& dir, Vector& up)
{
    SetRotation(GetRandomRotation(random));
    const Columns goal = GetRandomRotation(random);
    dir = Apply(goal, {0, 0, 1});
    up = Apply(goal, {0, 1, 0});
}

TEST_F(ChangingTheCamera, ArrivesFromEverywhereWithoutAJump)
{
    std::mt19937 random(5);
    for (int i = 0; i < 3000; i++) {
        Vector dir;
        Vector up;
        PrepareRandomFlight(random, dir, up);
        ChangeCamera(ToFloats(dir).data(), ToFloats(up).data(), origin, 1);
        // The turn is a tilt by the angle of dir and a roll by half a turn at most.
        EXPECT_LT(GetGreatestStep(), greatestshare * (GetAngle(dir, {0, 0, 1}) + half) + 1e-3);
        EXPECT_LT(GetGreatestStep(), 40 * degree);
        // What was at dir and up in the first view faces the viewer and points up in the last.
        const Columns turned = Compose(LastRotation(), MakeInverse(ToColumns(mainview.rotation)));
        EXPECT_LT(GetAngle(Apply(turned, dir), {0, 0, 1}), 2e-4);
        EXPECT_LT(GetAngle(Apply(turned, up), {0, 1, 0}), 2e-4);
    }
}

TEST_F(ChangingTheCamera, LeadsTheDirectionAlongItsArc)
{
    std::mt19937 random(6);
    for (int i = 0; i < 500; i++) {
        Vector dir;
        Vector up;
        PrepareRandomFlight(random, dir, up);
        ChangeCamera(ToFloats(dir).data(), ToFloats(up).data(), origin, 1);
        const double whole = GetAngle(dir, {0, 0, 1});
        for (int k = 0; k < cameraframes; k++) {
            const Columns turned =
                Compose(RotationOfFrame(k), MakeInverse(ToColumns(mainview.rotation)));
            const Vector now = Apply(turned, dir);
            const double share =
                std::trunc((0.5 - 0.5 * std::cos(half * (k + 1) / 16)) * 256.5) / 256;
            EXPECT_NEAR(GetAngle(dir, now), whole * share, 1e-3);
            EXPECT_NEAR(GetAngle(now, {0, 0, 1}), whole * (1 - share), 1e-3);
        }
    }
}

TEST_F(ChangingTheCamera, TakesSmallStepsForASmallTurn)
{
    std::mt19937 random(7);
    for (int i = 0; i < 500; i++) {
        const Columns turn = MakeTurn(GetRandomDirection(random), 0.1);
        ChangeCamera(turn[2].data(), turn[1].data(), origin, 1);
        EXPECT_LT(GetGreatestStep(),
                  greatestshare * 0.15); // tilt and roll: less than sqrt(2) of it
    }
}

// All rotations that carry axes onto axes.
static std::vector<Columns> GetAxisPositions()
{
    std::vector<Columns> positions;
    for (const Vector& facing : {Vector{0, 0, 1}, Vector{0, 0, -1}}) {
        const Columns flip = facing[2] > 0 ? identity : MakeTurn({1, 0, 0}, half);
        for (int quarter = 0; quarter < 4; quarter++) {
            const Columns roll = Compose(MakeTurn({0, 0, 1}, quarter * half / 2), flip);
            for (int third = 0; third < 3; third++) { // x to y to z to x
                positions.push_back(Compose(MakeTurn({1, 1, 1}, third * half * 2 / 3), roll));
            }
        }
    }
    return positions;
}

TEST_F(SettingTheStart, ArrivesFromAll24AxisPositions)
{
    const std::vector<Columns> positions = GetAxisPositions();
    ASSERT_EQ(positions.size(), 24U);
    for (Columns position : positions) {
        for (auto& column : position) {
            std::transform(column.begin(), column.end(), column.begin(),
                           [](float x) { return std::round(x); });
        }
        SetRotation(position);
        SetStart();
        EXPECT_TRUE(AreColumns(LastRotation(), identity, 0));
        EXPECT_LT(GetGreatestStep(), 40 * degree);
    }
}

TEST_F(SettingTheStart, ArrivesFromAxisPositionsThatAreSlightlyOff)
{
    std::mt19937 random(8);
    for (const Columns& position : GetAxisPositions()) {
        for (const double off : {1e-7, 1e-5, 5e-4, 1e-3, 2e-3}) {
            SetRotation(Compose(MakeTurn(GetRandomDirection(random), off), position));
            SetStart();
            EXPECT_TRUE(AreColumns(LastRotation(), identity, 0));
            EXPECT_LT(GetGreatestStep(), 40 * degree);
        }
    }
}

TEST_F(SettingTheStart, ArrivesFromHalfTurnsAboutAnyAxis)
{
    std::mt19937 random(9);
    for (int i = 0; i < 2000; i++) {
        SetRotation(MakeTurn(GetRandomDirection(random), half));
        SetStart();
        EXPECT_TRUE(AreColumns(LastRotation(), identity, 0));
        EXPECT_LT(GetGreatestStep(), 40 * degree);
    }
}

TEST_F(SettingTheStart, GoesBackToTheOriginAtScaleOne)
{
    mainview.center[1] = 0.3F;
    mainview.scale = 7;
    SetRotation(MakeTurn({1, 2, 3}, 2));
    SetStart();
    PlayFlight();
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), identity, 0));
    EXPECT_TRUE(AreColumns(ToColumns(mainview.freerotation), identity, 0));
    EXPECT_TRUE(std::equal(origin, origin + 3, mainview.center));
    EXPECT_EQ(mainview.scale, 1);
}

static void ClickWall(int wall)
{
    activebgcube[wall].type = ELEMENT_CUBEFACE;
    activepointer = &activebgcube[wall];
    CubeRotate();
    activepointer = nullptr;
    PlayFlight();
}

TEST_F(RotatingTheCube, TurnsAWallToTheViewer)
{
    // Wall, and the screen images of the world's axes after the click from the start view.
    const struct {
        int wall;
        Columns expected;
    } clicks[] = {
        {2, {{{1, 0, 0}, {0, 0, 1}, {0, -1, 0}}}}, // y to z; -z is nearest to up then
        {3, {{{1, 0, 0}, {0, 0, -1}, {0, 1, 0}}}}, // -y to z; z is nearest to up
        {4, {{{0, 0, 1}, {0, 1, 0}, {-1, 0, 0}}}}, // x to z; y stays up
        {5, {{{0, 0, -1}, {0, 1, 0}, {1, 0, 0}}}}, // -x to z; y stays up
    };
    for (const auto& click : clicks) {
        StartView();
        ClickWall(click.wall);
        EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), click.expected, 0)) << click.wall;
    }
}

TEST_F(RotatingTheCube, TurnsEveryWallToTheViewerFromAnywhere)
{
    const Vector directions[6] = {{0, 0, 1},  {0, 0, -1}, {0, 1, 0},
                                  {0, -1, 0}, {1, 0, 0},  {-1, 0, 0}};
    std::mt19937 random(10);
    for (int i = 0; i < 300; i++) {
        for (int wall = 0; wall < 6; wall++) {
            SetRotation(GetRandomRotation(random));
            ClickWall(wall);
            const Columns rotation = ToColumns(mainview.rotation);
            EXPECT_EQ(Apply(rotation, directions[wall]), Vector({0, 0, 1}));
            for (const auto& column : rotation) { // and an edge of the wall lies level
                EXPECT_EQ(std::count(column.begin(), column.end(), 0.0F), 2);
            }
        }
    }
}

TEST_F(RotatingTheCube, KeepsCentreAndScale)
{
    mainview.center[0] = 0.3F;
    mainview.scale = 2.5F;
    ClickWall(4);
    EXPECT_EQ(mainview.center[0], 0.3F);
    EXPECT_EQ(mainview.scale, 2.5F);
}

TEST_F(RotatingTheCube, RollsAFacingWallByAQuarterTurn)
{
    ClickWall(0); // faces the viewer at the start, with y up; x is on the right and goes up
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), {{{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}}, 0));
    ClickWall(0);
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), {{{-1, 0, 0}, {0, -1, 0}, {0, 0, 1}}}, 0));
}

TEST_F(RotatingTheCube, RollsOnTheSecondClickOfTheSameWall)
{
    ClickWall(4); // x to the viewer, y up, -z on the right
    ClickWall(4); // -z up
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), {{{0, 0, 1}, {-1, 0, 0}, {0, -1, 0}}}, 0));
}

TEST_F(RotatingTheCube, ComesRoundInFourClicks)
{
    for (int wall = 0; wall < 6; wall++) {
        ClickWall(wall);
        const Columns before = ToColumns(mainview.rotation);
        for (int i = 0; i < 4; i++) {
            ClickWall(wall);
            EXPECT_EQ(AreColumns(ToColumns(mainview.rotation), before, 0), i == 3);
        }
    }
}

TEST_F(RotatingTheCube, TakesTheFirstOfTwoEquallyNearEdges)
{
    SetRotation(MakeTurn({0, 0, 1}, 45 * degree)); // x and y are both 45 degrees from up
    ClickWall(0);
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), identity, 0)); // y is first in the table
}

TEST_F(RotatingTheCube, StraightensAFacingWallBeforeItRollsIt)
{
    SetRotation(MakeTurn({0, 0, 1}, 0.002)); // twice what counts as upright
    ClickWall(0);
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), identity, 0));
    SetRotation(MakeTurn({0, 0, 1}, 0.0005)); // upright: the click rolls
    ClickWall(0);
    EXPECT_NEAR(mainview.rotation[1], 1, 1e-6);
}

TEST_F(RotatingTheCube, StartsFromTheViewAsItIsSeen)
{
    // Snapped to the start view, with a free rotation that is elsewhere: the wall must not end
    // askew.
    const float snapped[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    SetRotation(MakeTurn({1, 1, 0}, 6 * degree));
    std::copy_n(snapped, 9, mainview.rotation);
    activebgcube[4].type = ELEMENT_CUBEFACE;
    activepointer = &activebgcube[4];
    CubeRotate();
    EXPECT_TRUE(AreColumns(ToColumns(mainview.freerotation), identity, 0));
    EXPECT_TRUE(AreColumns(LastRotation(), {{{0, 0, 1}, {0, 1, 0}, {-1, 0, 0}}}, 0));
}

TEST_F(RotatingTheCube, DoesNothingWithoutAWallUnderThePointer)
{
    CubeRotate();
    EXPECT_EQ(camposition, cameraframes);
}

} // namespace korvane
