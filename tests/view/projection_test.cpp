#include "view/projection.h"

#include "geometry/rotation.h"
#include "view/mainview.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

namespace korvane
{

struct Point {
    float xyz[3];
};

static float (*ToPoints(std::vector<Point>& points))[3]
{
    return &points[0].xyz;
}

static void SetRotation(MainView& view, std::array<float, 9> columns)
{
    std::copy(columns.begin(), columns.end(), view.rotation);
}

// About an axis of any length by an angle.
static std::array<float, 9> GetRotationAbout(double x, double y, double z, double angle)
{
    const double length = std::sqrt(x * x + y * y + z * z);
    x /= length;
    y /= length;
    z /= length;
    const double c = std::cos(angle), s = std::sin(angle), d = 1 - c;
    return {float(x * x * d + c),     float(y * x * d + z * s), float(z * x * d - y * s),
            float(x * y * d - z * s), float(y * y * d + c),     float(z * y * d + x * s),
            float(x * z * d + y * s), float(y * z * d - x * s), float(z * z * d + c)};
}

// Center (1, 2, 3), scale 2, and a quarter turn that carries x onto y.
static MainView GetQuarterTurnedView()
{
    MainView view = {};
    SetRotation(view, {0, 1, 0, -1, 0, 0, 0, 0, 1});
    view.center[0] = 1;
    view.center[1] = 2;
    view.center[2] = 3;
    view.scale = 2;
    return view;
}

static std::vector<Point> MakeCloud(int number, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> coordinate(-0.8F, 0.8F);
    std::vector<Point> cloud;
    for (int i = 0; i < number; i++) {
        cloud.push_back({{coordinate(random), coordinate(random), coordinate(random)}});
    }
    return cloud;
}

TEST(Rotate, AddsUpTheColumns)
{
    MainView view = {};
    SetRotation(view, {1, 2, 3, 10, 20, 30, 100, 200, 300}); // no rotation, but it shows the order
    view.center[0] = 7;
    view.scale = 5; // neither is used
    float points[2][3] = {{1, 1, 1}, {1, 0, 2}};
    Rotate(&view, points, 2);
    EXPECT_EQ(points[0][0], 111);
    EXPECT_EQ(points[0][1], 222);
    EXPECT_EQ(points[0][2], 333);
    EXPECT_EQ(points[1][0], 201);
    EXPECT_EQ(points[1][1], 402);
    EXPECT_EQ(points[1][2], 603);
}

TEST(TransferPoints, MovesScalesAndTurns)
{
    const MainView view = GetQuarterTurnedView();
    float points[1][3] = {{2, 4, 3.25F}};
    TransferPoints(&view, points, 1); // (1, 2, 0.25) from the centre, twice as far, x to y, y to -x
    EXPECT_EQ(points[0][0], -4);
    EXPECT_EQ(points[0][1], 2);
    EXPECT_EQ(points[0][2], 0.5F);
}

TEST(TransferPoints, AppliesThePerspectiveAndKeepsTheDepth)
{
    MainView view = GetQuarterTurnedView();
    view.perspective = fadedone;
    float points[1][3] = {{2, 4, 3.25F}};
    TransferPoints(&view, points, 1); // d = 1.5, z = 0.5: f = 1.5
    EXPECT_EQ(points[0][0], -6);
    EXPECT_EQ(points[0][1], 3);
    EXPECT_EQ(points[0][2], 0.5F);
}

TEST(TransferPoints, TakesTheLowFourBitsOfThePerspectiveForItsLevel)
{
    MainView view = GetQuarterTurnedView();
    view.perspective = fadetarget; // wanted, but its level is still 0
    float points[1][3] = {{2, 4, 3.25F}};
    TransferPoints(&view, points, 1);
    EXPECT_EQ(points[0][0], -4);
}

static float GetProjectedX(int8_t level, float depth)
{
    float points[1][3] = {{1, 1, depth}};
    ApplyPerspective(points, 1, level);
    EXPECT_EQ(points[0][0], points[0][1]);
    EXPECT_EQ(points[0][2], depth);
    return points[0][0];
}

TEST(ApplyPerspective, DividesByTheDistanceFromTheEye)
{
    EXPECT_EQ(GetProjectedX(15, 0), 1);
    EXPECT_EQ(GetProjectedX(15, 0.75F), 2);                               // 1.5 / 0.75
    EXPECT_FLOAT_EQ(GetProjectedX(15, -1), 0.6F);                         // 1.5 / 2.5
    EXPECT_FLOAT_EQ(GetProjectedX(15, 1.484375F), 96);                    // 1.5 / 0.015625
    const double d = 1.5 / (0.5 - 0.5 * std::cos(std::numbers::pi / 15)); // 137.3
    EXPECT_FLOAT_EQ(GetProjectedX(1, 1), float(d / (d - 1)));
}

TEST(ApplyPerspective, LeavesPointsOutsideItsRange)
{
    EXPECT_EQ(GetProjectedX(15, 1.49F), 1); // 1.49F is a little more than 1.49
    EXPECT_EQ(GetProjectedX(15, 1.5F), 1);
    EXPECT_EQ(GetProjectedX(15, 2), 1);
    EXPECT_EQ(GetProjectedX(15, -1.49F), 1);
    EXPECT_EQ(GetProjectedX(15, -3), 1);
}

TEST(ApplyPerspective, DoesNothingAtLevelZero)
{
    EXPECT_EQ(GetProjectedX(0, 0.5F), 1);
    EXPECT_EQ(GetProjectedX(16, 0.5F), 1);
}

TEST(TransferPoints, IsTheTurnedPointAndThenThePerspective)
{
    MainView view = GetQuarterTurnedView();
    SetRotation(view, GetRotationAbout(1, 2, 3, 0.7));
    std::vector<Point> both = MakeCloud(1000, 1);
    std::vector<Point> steps = both;
    TransferPoints(&view, ToPoints(steps), 1000);
    ApplyPerspective(ToPoints(steps), 1000, 9);
    view.perspective = 9;
    TransferPoints(&view, ToPoints(both), 1000);
    for (std::size_t i = 0; i < both.size(); i++) {
        EXPECT_TRUE(std::equal(both[i].xyz, both[i].xyz + 3, steps[i].xyz)) << i;
    }
}

// Points go through it in blocks: none may depend on how many there are or where it stands among
// them.
TEST(TransferPoints, TreatsEveryPointAlikeHoweverManyThereAre)
{
    MainView view = GetQuarterTurnedView();
    SetRotation(view, GetRotationAbout(3, 1, -2, 1.1));
    view.perspective = 12;
    const std::vector<Point> cloud = MakeCloud(200, 2);
    for (const int number : {0, 1, 2, 63, 64, 65, 127, 128, 129, 200}) {
        std::vector<Point> together = cloud;
        TransferPoints(&view, ToPoints(together), number);
        for (int i = 0; i < 200; i++) {
            Point alone = cloud[std::size_t(i)];
            if (i < number) {
                TransferPoints(&view, &alone.xyz, 1);
            }
            const float* p = together[std::size_t(i)].xyz;
            EXPECT_TRUE(std::equal(p, p + 3, alone.xyz)) << number << " " << i;
        }
    }
}

TEST(TransferPointsInto, GivesWhatCopyingAndTransferringInPlaceGive)
{
    MainView view = GetQuarterTurnedView();
    SetRotation(view, GetRotationAbout(-1, 4, 2, 2.1));
    for (const int8_t level : {int8_t(0), int8_t(fadedone)}) {
        view.perspective = level;
        std::vector<Point> source = MakeCloud(300, 3);
        std::vector<Point> target(300), inplace = source;
        TransferPointsInto(&view, ToPoints(source), ToPoints(target), 300);
        TransferPoints(&view, ToPoints(inplace), 300);
        for (std::size_t i = 0; i < 300; i++) {
            EXPECT_TRUE(std::equal(target[i].xyz, target[i].xyz + 3, inplace[i].xyz)) << i;
        }
    }
}

TEST(ReTransferPoints, UndoesEachStep)
{
    MainView view = GetQuarterTurnedView();
    view.perspective = fadedone;
    float points[1][3] = {{-6, 3, 0.5F}};
    ReTransferPoints(&view, points, 1);
    EXPECT_FLOAT_EQ(points[0][0], 2);
    EXPECT_FLOAT_EQ(points[0][1], 4);
    EXPECT_FLOAT_EQ(points[0][2], 3.25F);
}

TEST(ReTransferPoints, LeavesThePerspectiveOfPointsOutsideItsRange)
{
    MainView view = GetQuarterTurnedView();
    view.perspective = fadedone;
    float points[1][3] = {{-4, 2, 1.5F}};
    ReTransferPoints(&view, points, 1);
    EXPECT_FLOAT_EQ(points[0][0], 2);
    EXPECT_FLOAT_EQ(points[0][1], 4);
    EXPECT_FLOAT_EQ(points[0][2], 3.75F);
}

// All 24 axis positions and all rotations near to one, half turns among them, and many others.
static std::vector<std::array<float, 9>> GetManyRotations()
{
    std::vector<std::array<float, 9>> rotations;
    std::mt19937 random(7);
    std::normal_distribution<double> normal;
    std::uniform_real_distribution<double> anyangle(0, 2 * std::numbers::pi);
    for (int i = 0; i < 1000; i++) {
        rotations.push_back(
            GetRotationAbout(normal(random), normal(random), normal(random), anyangle(random)));
    }
    for (int x = -1; x <= 1; x++) {
        for (int y = -1; y <= 1; y++) {
            for (int z = -1; z <= 1; z++) {
                for (int part = 1; part <= 6 && (x != 0 || y != 0 || z != 0); part++) {
                    for (const double off : {0.0, 1e-7, 1e-5, 1e-4, 5e-4, 9e-4, 1.1e-3}) {
                        const double angle = std::numbers::pi * part / 6 + off;
                        rotations.push_back(GetRotationAbout(x, y, z, angle));
                        rotations.push_back(GetRotationAbout(x + off, y - off, z + 2 * off,
                                                             std::numbers::pi * part / 6));
                    }
                }
            }
        }
    }
    for (const double off : {0.0, 1e-7, 1e-5, 1e-4, 5e-4, 9e-4, 1.1e-3}) { // near to no turn at all
        rotations.push_back(GetRotationAbout(normal(random), normal(random), normal(random), off));
    }
    return rotations;
}

TEST(ReRotate, UndoesRotateForEveryRotation)
{
    const std::vector<Point> cloud = MakeCloud(5, 4);
    for (const std::array<float, 9>& rotation : GetManyRotations()) {
        MainView view = {};
        SetRotation(view, rotation);
        std::vector<Point> points = cloud;
        Rotate(&view, ToPoints(points), 5);
        ReRotate(&view, ToPoints(points), 5);
        for (std::size_t i = 0; i < 5; i++) {
            for (int k = 0; k < 3; k++) {
                // A float rotation is square and of unit length but for 1e-7; what a cut-off would
                // leave is a thousand times as much.
                ASSERT_NEAR(points[i].xyz[k], cloud[i].xyz[k], 5e-7F)
                    << rotation[0] << " " << rotation[1] << " " << rotation[2] << " / "
                    << rotation[3] << " " << rotation[4] << " " << rotation[5];
            }
        }
    }
}

TEST(ReTransferPoints, UndoesTransferPointsForEveryRotationScaleAndLevel)
{
    const std::vector<Point> cloud = MakeCloud(5, 5);
    int turn = 0;
    for (const std::array<float, 9>& rotation : GetManyRotations()) {
        MainView view = {};
        SetRotation(view, rotation);
        view.center[0] = 0.5F;
        view.center[1] = -0.25F;
        view.perspective = int8_t(turn++ % 16);
        view.scale = std::array{0.001F, 0.1F, 0.7F}[std::size_t(turn % 3)]; // within the range
        std::vector<Point> points = cloud;
        TransferPoints(&view, ToPoints(points), 5);
        ReTransferPoints(&view, ToPoints(points), 5);
        for (std::size_t i = 0; i < 5; i++) {
            for (int k = 0; k < 3; k++) {
                ASSERT_NEAR(points[i].xyz[k], cloud[i].xyz[k], 1e-6F) << int(view.perspective);
            }
        }
    }
}

TEST(GetPerspectiveFactor, IsThatOfThePointsInTheirRange)
{
    EXPECT_DOUBLE_EQ(GetPerspectiveFactor(15, 0.75), 2);
    EXPECT_DOUBLE_EQ(GetPerspectiveFactor(15, -1.5), 0.5);
    EXPECT_DOUBLE_EQ(GetPerspectiveFactor(15, -13.5), 0.1); // also far behind the screen
    EXPECT_EQ(GetPerspectiveFactor(0, 0.75), 1);
}

TEST(GetPerspectiveFactor, GrowsNoMoreJustBeforeTheEye)
{
    EXPECT_NEAR(GetPerspectiveFactor(15, 1.49), 150, 1e-9); // 1.5 / 0.01
    EXPECT_NEAR(GetPerspectiveFactor(15, 1.5), 150, 1e-9);
    EXPECT_NEAR(GetPerspectiveFactor(15, 100), 150, 1e-9);
    EXPECT_NEAR(GetPerspectiveFactor(15, std::nan("")), 150, 1e-9);
}

} // namespace korvane
