#include "view/mainview.h"

#include "geometry/rotation.h"
#include "geometry/shapegeometry.h"
#include "scene/model.h"
#include "tests/support/shapes.h"
#include "view/picking.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace korvane
{

using namespace korvane::testing;

static const MainView startview = mainview; // before any test has changed it

static void StartScene()
{
    DeleteAllShapes();
    mainview = startview;
    width = 600;
    height = 600;
    cisign = 0;
}

// A square on its corner with radius 0.25 round its centre, in two triangles.
static int AddDiamond(float x, float y, float z)
{
    AddShape(
        MakeFlatShape({{x - 0.25F, y, z}, {x, y - 0.25F, z}, {x + 0.25F, y, z}, {x, y + 0.25F, z}})
            .release());
    return shapenumber - 1;
}

static int ShowStateOf(float x, float y, float z)
{
    const int i = AddDiamond(x, y, z);
    TransferOneShape(i);
    return showtable[i];
}

TEST(MainView, StartsAsTheProgramStarts)
{
    EXPECT_EQ(startview.bgshape, 0);
    EXPECT_EQ(startview.bgcubefade, 15);
    EXPECT_EQ(startview.bgplanefade, 0);
    EXPECT_EQ(startview.gradientfade, 0);
    EXPECT_EQ(startview.imagefade, 0);
    EXPECT_EQ(startview.bgimage, nullptr);
    EXPECT_EQ(startview.smallcubefade, 31);
    EXPECT_EQ(startview.centerlinesfade, 0);
    EXPECT_EQ(startview.showshape, 2);
    EXPECT_EQ(startview.sidesfade, 15);
    EXPECT_EQ(startview.linesfade, 15);
    EXPECT_EQ(startview.onlyselected, 1);
    EXPECT_EQ(startview.perspective, 0);
    EXPECT_EQ(startview.action, 0);
    for (int k = 0; k < 9; k++) {
        EXPECT_EQ(startview.rotation[k], k % 4 == 0 ? 1 : 0);
        EXPECT_EQ(startview.freerotation[k], k % 4 == 0 ? 1 : 0);
    }
    for (const float c : startview.center) {
        EXPECT_EQ(c, 0);
    }
    EXPECT_EQ(startview.scale, 1);
}

TEST(GetCosRate, RunsFromZeroToOneAndCountsTheLowFourBitsAlone)
{
    EXPECT_EQ(GetCosRate(0), 0.0F);
    EXPECT_EQ(GetCosRate(15), 1.0F);
    EXPECT_EQ(GetCosRate(16), 0.0F);
    EXPECT_EQ(GetCosRate(31), 1.0F);
    EXPECT_FLOAT_EQ(GetCosRate(5), 0.25F); // 0.5 - 0.5 cos 60 degrees
    EXPECT_FLOAT_EQ(GetCosRate(10), 0.75F);
}

TEST(SetScale, KeepsOutWhatIsNoScale)
{
    StartScene();
    for (const float wrong : {0.0F, -1.0F, std::numeric_limits<float>::infinity(),
                              std::numeric_limits<float>::quiet_NaN()}) {
        SetScale(wrong);
        EXPECT_EQ(mainview.scale, 1);
    }
}

TEST(SetScale, KeepsTheScaleInItsRange)
{
    StartScene();
    SetScale(3.5F);
    EXPECT_EQ(mainview.scale, 3.5F);
    SetScale(1e30F);
    EXPECT_EQ(mainview.scale, greatestscale);
    SetScale(1e-30F);
    EXPECT_EQ(mainview.scale, smallestscale);
}

static void ExpectHalfView(int w, int h, float halfwidth, float halfheight)
{
    width = w;
    height = h;
    float x, y;
    GetHalfView(&x, &y);
    EXPECT_EQ(x, halfwidth);
    EXPECT_EQ(y, halfheight);
}

TEST(GetHalfView, GivesTheShorterSideAHalf)
{
    ExpectHalfView(600, 600, 0.5F, 0.5F);
    ExpectHalfView(400, 600, 0.5F, 0.75F);
    ExpectHalfView(600, 400, 0.75F, 0.5F);
    ExpectHalfView(1000, 625, 0.8F, 0.5F);
}

TEST(GetHalfView, IsASquareBeforeTheAreaHasASize)
{
    ExpectHalfView(0, 0, 0.5F, 0.5F);
    ExpectHalfView(600, 0, 0.5F, 0.5F);
}

TEST(TransferOneShape, CullsWhatTouchesTheViewFromOutside)
{
    StartScene();
    EXPECT_EQ(ShowStateOf(0, 0, 0), SHOW_ROUNDED);
    EXPECT_EQ(ShowStateOf(-0.75F, 0, 0), SHOW_NOTHING); // -0.75 + 0.25 = -0.5
    EXPECT_EQ(ShowStateOf(0.75F, 0, 0), SHOW_NOTHING);
    EXPECT_EQ(ShowStateOf(0, -0.75F, 0), SHOW_NOTHING);
    EXPECT_EQ(ShowStateOf(0, 0.75F, 0), SHOW_NOTHING);
    EXPECT_EQ(ShowStateOf(0, 0, -1.25F), SHOW_NOTHING); // -1.25 + 0.25 = -1
    EXPECT_EQ(ShowStateOf(0, 0, 1.25F), SHOW_NOTHING);
}

TEST(TransferOneShape, ShowsWhatReachesIntoTheView)
{
    StartScene();
    EXPECT_EQ(ShowStateOf(-0.6875F, 0, 0), SHOW_ROUNDED);
    EXPECT_EQ(ShowStateOf(0.6875F, 0, 0), SHOW_ROUNDED);
    EXPECT_EQ(ShowStateOf(0, -0.6875F, 0), SHOW_ROUNDED);
    EXPECT_EQ(ShowStateOf(0, 0.6875F, 0), SHOW_ROUNDED);
    EXPECT_EQ(ShowStateOf(0, 0, -1.1875F), SHOW_ROUNDED);
    EXPECT_EQ(ShowStateOf(0, 0, 1.1875F), SHOW_ROUNDED);
}

TEST(TransferOneShape, CullsAtTheHalfSizesOfTheView)
{
    StartScene();
    width = 400; // half the height of the view is 0.75
    EXPECT_EQ(ShowStateOf(0, 0.9375F, 0), SHOW_ROUNDED);
    EXPECT_EQ(ShowStateOf(0, 1, 0), SHOW_NOTHING);
    EXPECT_EQ(ShowStateOf(0.75F, 0, 0), SHOW_NOTHING);
    width = 900; // half its width is 0.75
    EXPECT_EQ(ShowStateOf(0.9375F, 0, 0), SHOW_ROUNDED);
    EXPECT_EQ(ShowStateOf(1, 0, 0), SHOW_NOTHING);
    EXPECT_EQ(ShowStateOf(0, 0.75F, 0), SHOW_NOTHING);
}

TEST(TransferOneShape, CullsNothingForAnExport)
{
    StartScene();
    cisign = 1;
    EXPECT_EQ(ShowStateOf(5, 5, 5), SHOW_ROUNDED);
}

TEST(TransferOneShape, HidesWhatIsNotSelectedForShowing)
{
    StartScene();
    const int i = AddDiamond(0, 0, 0);
    for (const int byte : {0, 32, 64, 96, 224}) { // none of the low five bits
        selected[i] = static_cast<unsigned char>(byte);
        TransferOneShape(i);
        EXPECT_EQ(showtable[i], SHOW_NOTHING) << byte;
        cisign = 1; // not even for an export
        TransferOneShape(i);
        EXPECT_EQ(showtable[i], SHOW_NOTHING) << byte;
        cisign = 0;
    }
    for (const int byte : {1, 15, 16, 31, 80}) {
        selected[i] = static_cast<unsigned char>(byte);
        TransferOneShape(i);
        EXPECT_EQ(showtable[i], SHOW_ROUNDED) << byte;
    }
}

static int ShowStateAtScale(float scale)
{
    mainview.scale = scale;
    return ShowStateOf(0, 0, 0);
}

TEST(TransferOneShape, ShowsLessOfWhatIsSmallOnTheScreen)
{
    StartScene();                                          // the size is scale * scale * 0.0625 / 2
    EXPECT_EQ(ShowStateAtScale(1.0F / 16), SHOW_ROUNDED);  // 1.2e-4
    EXPECT_EQ(ShowStateAtScale(1.0F / 32), SHOW_PLAIN);    // 3.1e-5
    EXPECT_EQ(ShowStateAtScale(1.0F / 128), SHOW_PLAIN);   // 1.9e-6
    EXPECT_EQ(ShowStateAtScale(1.0F / 256), SHOW_NOTHING); // 4.8e-7
    cisign = 1;
    EXPECT_EQ(ShowStateAtScale(1.0F / 16), SHOW_ROUNDED);
    EXPECT_EQ(ShowStateAtScale(1.0F / 256), SHOW_PLAIN);
}

TEST(TransferOneShape, ShowsAShapeWithoutExtentOnlyInAnExport)
{
    StartScene();
    AddShape(Square().release());
    for (int k = 0; k < 4; k++) {
        std::fill_n(shapes[0]->points[k], 3, 0.0F);
    }
    ChangeShape(0);
    TransferOneShape(0);
    EXPECT_EQ(showtable[0], SHOW_NOTHING);
    cisign = 1;
    TransferOneShape(0);
    EXPECT_EQ(showtable[0], SHOW_PLAIN);
}

TEST(TransferOneShape, ProjectsCentreAndRadius)
{
    StartScene();
    mainview.scale = 2;
    mainview.center[0] = 0.125F;
    const int i = AddDiamond(0.25F, 0, 0.25F);
    TransferOneShape(i);
    EXPECT_EQ(shapest[i]->center[0], 0.25F); // (0.25 - 0.125) * 2
    EXPECT_EQ(shapest[i]->center[2], 0.5F);
    EXPECT_EQ(shapest[i]->radius, 0.5F);
    EXPECT_EQ(shapes[i]->radius, 0.25F); // the model is left alone
    mainview.perspective = fadedone;
    TransferOneShape(i);
    EXPECT_EQ(shapest[i]->center[0], 0.375F); // 1.5 / (1.5 - 0.5) times as much
    EXPECT_EQ(shapest[i]->radius, 0.75F);
}

TEST(TransferOneShape, StaysFiniteWhenTheCentreReachesTheEye)
{
    StartScene();
    mainview.perspective = fadedone;
    for (const float depth : {1.49F, 1.5F, 1.75F, 3.0F}) {
        const int i = AddDiamond(0, 0, depth);
        TransferOneShape(i);
        EXPECT_FLOAT_EQ(shapest[i]->radius, 37.5F) << depth; // 0.25 * 150, as just before
        EXPECT_NE(showtable[i], SHOW_NOTHING) << depth;      // parts of it may be anywhere
    }
}

static bool AreEqual(const float (*a)[3], const float (*b)[3], int number)
{
    return std::memcmp(a, b, std::size_t(number) * sizeof(float[3])) == 0;
}

// Copying the model and transforming the copy in place, step by step.
static void ExpectProjectionOf(const Shape* model, const Shape* projected)
{
    const OwnedShape copy(CopyShape(model));
    TransferPoints(&mainview, copy->points, copy->pointnumber);
    Rotate(&mainview, copy->normals, copy->normalnumber);
    SetTriangleNormalsOfShape(copy.get());
    EXPECT_TRUE(AreEqual(copy->points, projected->points, copy->pointnumber));
    EXPECT_TRUE(AreEqual(copy->normals, projected->normals, copy->normalnumber));
    EXPECT_TRUE(AreEqual(copy->trianglenormals, projected->trianglenormals, copy->trianglenumber));
}

TEST(TransferAllShape, GivesWhatCopyingAndTransformingGivesToTheBit)
{
    StartScene();
    AddShape(Cube().release());
    AddShape(TrianglePrism().release());
    const float from[3] = {0, 0, 1};
    const float to[3] = {0.36F, 0.48F, 0.8F};
    VectorRotate(reinterpret_cast<float(*)[3]>(mainview.rotation), from, to);
    mainview.center[1] = 0.1F;
    mainview.scale = 0.7F;
    for (const int level : {0, 7, 31}) {
        mainview.perspective = int8_t(level);
        TransferAllShape();
        for (int i = 0; i < 2; i++) {
            EXPECT_EQ(showtable[i], SHOW_ROUNDED);
            ExpectProjectionOf(shapes[i], shapest[i]);
            ExpectProjectionOf(round1[i], round1t[i]);
        }
    }
}

TEST(TransferAllShape, RefreshesOnlyTheCopiesThatAreDrawn)
{
    StartScene();
    AddDiamond(0, 0, 0);
    TransferAllShape();
    const float roundedbefore = round1t[0]->points[0][0];
    const float plainbefore = shapest[0]->points[0][0];
    mainview.scale = 1.0F / 32; // drawn plain
    TransferAllShape();
    EXPECT_EQ(shapest[0]->points[0][0], -0.25F / 32);
    EXPECT_EQ(round1t[0]->points[0][0], roundedbefore);
    mainview.scale = 1.0F / 256; // not drawn
    TransferAllShape();
    EXPECT_EQ(shapest[0]->points[0][0], -0.25F / 32);
    cisign = 1; // both, however small
    TransferAllShape();
    cisign = 0;
    EXPECT_EQ(shapest[0]->points[0][0], plainbefore / 256);
    EXPECT_EQ(round1t[0]->points[0][0], roundedbefore / 256);
}

TEST(TransferAllShape, EndsByFindingTheElementUnderThePointer)
{
    StartScene();
    AddDiamond(0, 0, 0);
    TransferAllShape();
    SetActives();
    mouse[0] = 0;
    mouse[1] = 0;
    TransferAllShape();
    EXPECT_EQ(activepointer, &activesides[0]);
    mainview.center[0] = 0.5F; // the diamond leaves to the left
    TransferAllShape();
    EXPECT_EQ(activepointer, nullptr);
}

TEST(SetPerspective, ProjectsThePointsAndTheScene)
{
    StartScene();
    AddDiamond(0, 0, 0);
    SetActives(); // before the first projection: nothing can be picked
    EXPECT_EQ(activesides[0].active, 0);
    float points[2][3] = {{0.25F, 0.5F, 0.75F}, {0.25F, 0.5F, 1.5F}};
    SetPerspective(points, 2, 15);
    EXPECT_EQ(points[0][0], 0.5F);
    EXPECT_EQ(points[0][1], 1);
    EXPECT_EQ(points[0][2], 0.75F);
    EXPECT_EQ(points[1][0], 0.25F); // out of range
    EXPECT_EQ(showtable[0], SHOW_ROUNDED);
    EXPECT_EQ(activesides[0].active, 1);
}

TEST(SetPerspective, DoesNothingAtAllAtLevelZero)
{
    StartScene();
    AddDiamond(0, 0, 0);
    float points[1][3] = {{0.25F, 0.5F, 0.75F}};
    SetPerspective(points, 1, 0);
    EXPECT_EQ(points[0][0], 0.25F);
    EXPECT_EQ(showtable[0], SHOW_NOTHING); // not even projected
}

} // namespace korvane
