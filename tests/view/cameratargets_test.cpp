#include "scene/model.h"
#include "tests/support/camera.h"
#include "view/cameraflight.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace korvane
{

using namespace korvane::testing;

using JumpingToASurface = StartViewTest;
using FittingShapes = StartViewTest;

// The square moved to the screen: it covers -0.2..0.2 at a depth of 0.1.
static OwnedShape MakeSmallSquare()
{
    return MakeFlatShape(
        {{-0.2F, -0.2F, 0.1F}, {0.2F, -0.2F, 0.1F}, {0.2F, 0.2F, 0.1F}, {-0.2F, 0.2F, 0.1F}});
}

static void JumpToSide(int record, float x, float y)
{
    mouse[0] = x;
    mouse[1] = y;
    activepointer = &activesides[record];
    JumpSurface();
}

TEST_F(JumpingToASurface, MakesTheClickedSpotTheCentre)
{
    AddToView(MakeSmallSquare());
    JumpToSide(0, 0.05F, -0.03F);
    EXPECT_EQ(camposition, 0);
    EXPECT_NEAR(LastFrame().center[0], 0.05, 1e-6);
    EXPECT_NEAR(LastFrame().center[1], -0.03, 1e-6);
    EXPECT_NEAR(LastFrame().center[2], 0.1 + 1.0 / 80, 1e-6); // a little before the surface
    EXPECT_EQ(LastFrame().scale, 1);
    EXPECT_TRUE(AreColumns(LastRotation(), identity, 0)); // it faced the viewer already
}

TEST_F(JumpingToASurface, LiftsTheCentreOnTheScreenByTheScaleToo)
{
    mainview.scale = 2;
    AddToView(MakeSmallSquare());
    JumpToSide(0, 0.1F, 0.04F);
    // On the screen the surface is at 0.2 and the lift is 1/160; both are halved on the way back.
    EXPECT_NEAR(LastFrame().center[0], 0.05, 1e-6);
    EXPECT_NEAR(LastFrame().center[1], 0.02, 1e-6);
    EXPECT_NEAR(LastFrame().center[2], 0.1 + 1.0 / 320, 1e-6);
    EXPECT_EQ(LastFrame().scale, 2);
}

TEST_F(JumpingToASurface, TurnsATiltedSurfaceToTheViewer)
{
    SetRotation(MakeTurn({0, 1, 0}, 40 * degree));
    AddToView(MakeSmallSquare());
    JumpToSide(0, 0.06F, 0.01F);
    PlayFlight();
    EXPECT_TRUE(AreColumns(ToColumns(mainview.rotation), identity, 0));
    // The pointer met the square where x cos 40 + 0.1 sin 40 = 0.06.
    EXPECT_NEAR(mainview.center[0], (0.06 - 0.1 * std::sin(40 * degree)) / std::cos(40 * degree),
                1e-6);
    EXPECT_NEAR(mainview.center[1], 0.01, 1e-6);
}

// The perspective narrows what is far away: the square's picture is that of a face turned farther.
TEST_F(JumpingToASurface, TurnsASurfaceSeenInPerspectiveToTheViewer)
{
    mainview.perspective = fadedone;
    const Vector normal = {std::sin(70 * degree), 0, std::cos(70 * degree)};
    const float x = 0.2F * float(normal[2]);
    const float z = 0.2F * float(normal[0]);
    AddToView(MakeFlatShape({{0.25F - x, -0.1F, z},
                             {0.25F + x, -0.1F, -z},
                             {0.25F + x, 0.3F, -z},
                             {0.25F - x, 0.3F, z}}));
    JumpToSide(0, 0.25F, 0.1F); // its middle, at depth 0, where the perspective moves nothing
    PlayFlight();
    const Vector seen = Apply(ToColumns(mainview.rotation), normal);
    EXPECT_NEAR(seen[0], 0, 1e-5);
    EXPECT_NEAR(seen[1], 0, 1e-5);
    EXPECT_NEAR(seen[2], 1, 1e-5);
}

TEST_F(JumpingToASurface, FindsTheShapeOfTheRecordByItsPlace)
{
    AddToView(MakeSmallSquare());
    AddToView(
        MakeFlatShape({{0.3F, -0.1F, 0}, {0.4F, -0.1F, 0}, {0.4F, 0.1F, 0}, {0.3F, 0.1F, 0}}));
    JumpToSide(1, 0.35F, 0);
    EXPECT_NEAR(LastFrame().center[0], 0.35, 1e-6);
    EXPECT_NEAR(LastFrame().center[2], 1.0 / 80, 1e-6);
}

TEST_F(JumpingToASurface, LooksAtTheCopyThatIsDrawn)
{
    AddToView(MakeSmallSquare());
    JumpToSide(0, 0.199F, 0.199F); // just inside the corner, which the rounded square has lost
    EXPECT_EQ(camposition, cameraframes);
    showtable[0] = SHOW_PLAIN;
    JumpToSide(0, 0.199F, 0.199F);
    EXPECT_EQ(camposition, 0);
}

TEST_F(JumpingToASurface, TakesTheTriangleNearestToTheViewer)
{
    AddToView(MakeSmallSquare());
    showtable[0] = SHOW_PLAIN;
    // The square's triangles, (3, 0, 1) and (1, 2, 3), share the diagonal from 1 to 3. Folded along
    // it they lie over each other; the one whose free corner is raised is nearer, whichever it is.
    float(*points)[3] = shapest[0]->points;
    for (const int raised : {0, 2}) {
        const int other = 2 - raised;
        std::copy_n(std::array<float, 3>{-0.2F, -0.2F, 0.1F}.data(), 3, points[other]);
        std::copy_n(std::array<float, 3>{-0.2F, -0.2F, 0.3F}.data(), 3, points[raised]);
        camposition = cameraframes;
        JumpToSide(0, -0.1F, -0.1F); // half way from the diagonal to the corners: 0.1 and 0.2
        ASSERT_EQ(camposition, 0);
        EXPECT_NEAR(LastFrame().center[2], 0.2 + 1.0 / 80, 1e-6);
    }
}

TEST_F(JumpingToASurface, DoesNothingBesideTheSide)
{
    AddToView(MakeSmallSquare());
    JumpToSide(0, 0.3F, 0);
    EXPECT_EQ(camposition, cameraframes);
    activepointer = nullptr;
    JumpSurface();
    EXPECT_EQ(camposition, cameraframes);
}

TEST_F(JumpingToASurface, DoesNothingForARecordWhoseSideIsGone)
{
    AddToView(MakeSmallSquare());
    AddToView(MakeSmallSquare());
    shapes[1]->sidenumber = 0; // and the records are not made anew yet
    JumpToSide(1, 0, 0);
    EXPECT_EQ(camposition, cameraframes);
    shapes[1]->sidenumber = 1;
}

// A square of radius 1.
static OwnedShape MakeUnitSquare(float x)
{
    return MakeFlatShape({{x + 1, 0, 0}, {x, 1, 0}, {x - 1, 0, 0}, {x, -1, 0}});
}

TEST_F(FittingShapes, GivesAShapeOfRadiusOneTheScale0Point6)
{
    AddToView(MakeUnitSquare(5));
    const int indices[] = {0};
    FitShapes(indices, 1);
    EXPECT_EQ(LastFrame().scale, 0.6F);
    EXPECT_EQ(LastFrame().center[0], 5);
    EXPECT_TRUE(AreColumns(LastRotation(), identity, 0));
}

TEST_F(FittingShapes, AddsTheGreatestRadiusAndTheGreatestDistance)
{
    AddToView(MakeUnitSquare(0));
    AddToView(MakeUnitSquare(100)); // not asked for
    AddToView(MakeUnitSquare(2));
    AddToView(MakeFlatShape({{11, 2, 0}, {10, 3, 0}, {7, 2, 0}, {10, 1, 0}})); // centre (9.5, 2, 0)
    const int indices[] = {2, 0, 3};
    FitShapes(indices, 3);
    // The last shape's radius is 2.5; it is hypot(9.5, 2) away from the first.
    EXPECT_FLOAT_EQ(LastFrame().scale, float(0.6 / (2.5 + std::hypot(9.5, 2.0))));
    EXPECT_FLOAT_EQ(LastFrame().center[0], 11.5F / 3);
    EXPECT_FLOAT_EQ(LastFrame().center[1], 2.0F / 3);
}

TEST_F(FittingShapes, KeepsTheScaleForASingleSpot)
{
    AddToView(MakeUnitSquare(5));
    shapes[0]->radius = 0;
    mainview.scale = 3;
    const int indices[] = {0};
    FitShapes(indices, 1);
    EXPECT_EQ(LastFrame().scale, 3);
    EXPECT_EQ(LastFrame().center[0], 5);
}

TEST_F(FittingShapes, DoesNothingWithoutShapes)
{
    FitShapes(nullptr, 0);
    EXPECT_EQ(camposition, cameraframes);
}

} // namespace korvane
