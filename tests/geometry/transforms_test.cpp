#include "geometry/transforms.h"

#include "geometry/shapegeometry.h"
#include "scene/treeview.h"
#include "tests/support/invariants.h"
#include "tests/support/shapebytes.h"
#include "tests/support/transformchecks.h"
#include "view/mainview.h"
#include "view/picking.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <set>
#include <string>

namespace korvane::testing
{

// Two squares that share the edge from 1 to 2.
static OwnedShape MakeTwoSquares()
{
    return MakeShape(
        {{0, 0, 0}, {0.2F, 0, 0}, {0.2F, 0.2F, 0}, {0, 0.2F, 0}, {0.4F, 0, 0}, {0.4F, 0.2F, 0}},
        {{0, 1, 2, 3}, {1, 4, 5, 2}});
}

TEST_F(Transforms, TurnAShapeAboutItsCentreByTheAxesOfTheScreen)
{
    for (int axis = 0; axis < 3; axis++) {
        SCOPED_TRACE(axis);
        StartView();
        const int box = AddToView(MakeBox());
        const Points before = Remember(box);
        const Shape* round = round1[box];
        ShapeRotate(box, 90, axis);
        ExpectMapped(before, *shapes[box], boxcenter, turns[axis]);
        EXPECT_EQ(round1[box], round); // turned along, not rebuilt
        ExpectDerived(box, rigid);
        ExpectProjected(box);
    }
}

// The corner at (0.1, -0.1) from the centre: 0.1 cos 30 + 0.1 sin 30 and 0.1 sin 30 - 0.1 cos 30.
TEST_F(Transforms, TurnAShapeByThirtyDegrees)
{
    const int box = AddToView(MakeBox());
    const Points before = Remember(box);
    ShapeRotate(box, 30, 2);
    const double c = std::sqrt(3) / 2;
    ExpectMapped(before, *shapes[box], boxcenter, [c](const Vector& d) {
        return Vector{d[0] * c - d[1] * 0.5, d[0] * 0.5 + d[1] * c, d[2]};
    });
}

TEST_F(Transforms, TurnAShapeThereAndBack)
{
    const int box = AddToView(MakeBox());
    const Points before = Remember(box);
    ShapeRotate(box, 90, 0);
    ShapeRotate(box, -90, 0);
    ExpectMapped(before, *shapes[box], origin, [](const Vector& d) { return d; });
}

TEST_F(Transforms, TurnTheSelectionAboutTheMiddleOfTheView)
{
    for (int axis = 0; axis < 3; axis++) {
        StartView();
        mainview.center[0] = 0.1F;
        const Vector middle = {double(0.1F), 0, 0};
        const int box = AddToView(MakeBox());
        const int squares = AddToView(MakeTwoSquares());
        const Points first = Remember(box);
        const Points second = Remember(squares);
        SelectedRotate(90, axis); // without a selected row it is all shapes
        ExpectMapped(first, *shapes[box], middle, turns[axis]);
        ExpectMapped(second, *shapes[squares], middle, turns[axis]);
        ExpectDerived(box, rigid);
        ExpectProjected(box);
    }
}

TEST_F(Transforms, ScaleAShapeFromItsCentre)
{
    for (int axis = 0; axis < 4; axis++) {
        SCOPED_TRACE(axis);
        StartView();
        const int box = AddToView(MakeBox());
        const Points before = Remember(box);
        ShapeScale(box, 2, axis);
        ExpectMapped(before, *shapes[box], boxcenter, doublings[axis]);
        ExpectDerived(box, rebuilt);
        ExpectProjected(box);
        EXPECT_EQ(activesides[0].active, 0);
        EXPECT_EQ(activestripes[0].active, 0);
        EXPECT_EQ(activepoints[0].active, 0);
    }
}

TEST_F(Transforms, ScaleTheSelectionFromTheMiddleOfTheView)
{
    for (int axis = 0; axis < 4; axis++) {
        StartView();
        const int box = AddToView(MakeBox());
        const int squares = AddToView(MakeTwoSquares());
        const Points first = Remember(box);
        const Points second = Remember(squares);
        SelectedScale(2, axis);
        ExpectMapped(first, *shapes[box], origin, doublings[axis]);
        ExpectMapped(second, *shapes[squares], origin, doublings[axis]);
        ExpectDerived(box, rebuilt);
        ExpectDerived(squares, rebuilt);
        ExpectProjected(box);
        EXPECT_EQ(activesides[0].active, 0);
    }
}

// The second square turns about (0.3, 0.1, 0): its left edge comes forward by 0.1, its right one
// goes back as far.
TEST_F(Transforms, TurnASideWithThePointsThatItShares)
{
    const int squares = AddToView(MakeTwoSquares());
    const Points before = Remember(squares);
    SideRotate(squares, 1, 90, 1);
    const Shape& shape = *shapes[squares];
    ExpectPoint(shape.points[1], {0.3, 0, 0.1});
    ExpectPoint(shape.points[2], {0.3, 0.2, 0.1});
    ExpectPoint(shape.points[4], {0.3, 0, -0.1});
    ExpectPoint(shape.points[5], {0.3, 0.2, -0.1});
    for (const int kept : {0, 3}) {
        EXPECT_TRUE(std::equal(before[std::size_t(kept)].begin(), before[std::size_t(kept)].end(),
                               shape.points[kept]));
    }
    ExpectDerived(squares, rebuilt);
    ExpectProjected(squares);
    EXPECT_EQ(activesides[0].active, 0);
}

TEST_F(Transforms, TurnASideAboutTheOtherAxes)
{
    const int squares = AddToView(MakeTwoSquares());
    SideRotate(squares, 1, 90, 0); // y goes to z
    ExpectPoint(shapes[squares]->points[4], {0.4, 0.1, -0.1});
    ExpectPoint(shapes[squares]->points[5], {0.4, 0.1, 0.1});
    StartView();
    AddToView(MakeTwoSquares());
    SideRotate(0, 1, 90, 2); // x goes to y
    ExpectPoint(shapes[0]->points[4], {0.4, 0.2, 0});
    ExpectPoint(shapes[0]->points[5], {0.2, 0.2, 0});
}

TEST_F(Transforms, ScaleASideFromItsCentre)
{
    const Vector expected[4] = {{0.5, 0.3, 0}, {0.5, 0.2, 0}, {0.4, 0.3, 0}, {0.4, 0.2, 0}};
    for (int axis = 0; axis < 4; axis++) {
        SCOPED_TRACE(axis);
        StartView();
        const int squares = AddToView(MakeTwoSquares());
        SideScale(squares, 1, 2, axis);
        ExpectPoint(shapes[squares]->points[5],
                    expected[axis]); // 0.1 right of and above the centre
        ExpectPoint(shapes[squares]->points[3], {0, 0.2, 0});
        ExpectDerived(squares, rebuilt);
        EXPECT_EQ(activesides[0].active, 0);
    }
}

// A flat side does not show what happens along its normal.
TEST_F(Transforms, ScaleASlantedSideAlongTheDepth)
{
    const int shape =
        AddToView(MakeFlatShape({{0, 0, 0}, {0.2F, 0, 0.2F}, {0.2F, 0.2F, 0.2F}, {0, 0.2F, 0}}));
    SideScale(shape, 0, 2, 3); // its centre is at depth 0.1
    ExpectPoint(shapes[shape]->points[0], {0, 0, -0.1});
    ExpectPoint(shapes[shape]->points[2], {0.2, 0.2, 0.3});
}

// What is too small to be drawn is no longer projected; its centre is found all the same.
TEST_F(Transforms, ScaleASideBackThatHasBecomeTooSmallToBeSeen)
{
    SetRotation(quarterturn);
    mainview.center[0] = 0.1F;
    const int square = AddToView(
        MakeFlatShape({{0.1F, 0.1F, 0}, {0.11F, 0.1F, 0}, {0.11F, 0.11F, 0}, {0.1F, 0.11F, 0}}));
    const Points before = Remember(square);
    SideScale(square, 0, 1.0 / 16, 0);
    EXPECT_EQ(showtable[square], SHOW_NOTHING);
    SideScale(square, 0, 16, 0);
    ExpectMapped(before, *shapes[square], origin, [](const Vector& d) { return d; });
}

TEST_F(Transforms, MoveAShapeInTheViewPlane)
{
    const int box = AddToView(MakeBox());
    const Points before = Remember(box);
    const Shape* round = round1[box];
    ShapeMove(box, 0.5F, 0.25F, 0.375F, 0.5F); // by -0.125 and 0.25
    ExpectMapped(before, *shapes[box], origin, [](const Vector& d) {
        return Vector{d[0] - 0.125, d[1] + 0.25, d[2]};
    });
    EXPECT_EQ(round1[box], round);
    ExpectDerived(box, rigid);
    ExpectPoint(round1[box]->center, {0.075, 0.4, 0.05});
    ExpectProjected(box);
    EXPECT_EQ(activesides[0].active, 1);
}

// At depth z the eye, 1.5 before the middle, enlarges by 1.5 / (1.5 - z): the far points move more.
TEST_F(Transforms, MoveEveryPointAsFarOnTheScreenUnderPerspective)
{
    mainview.perspective = fadedone;
    const int box = AddToView(MakeBox());
    const Points before = Remember(box);
    ShapeMove(box, 0, 0, 0.1F, 0);
    ExpectMapped(before, *shapes[box], origin, [](const Vector& d) {
        return Vector{d[0] + 0.1 * (1.5 - d[2]) / 1.5, d[1], d[2]};
    });
    ExpectProjected(box);
}

// The centre is the mean of the points and the radius reaches to the farthest, in the rounded
// version as in the model.
static void ExpectBounds(int shape)
{
    const OwnedShape fresh(CopyShape(shapes[shape]));
    SetCenterPointOfShape(fresh.get());
    SetRadiusOfShape(fresh.get());
    for (const Shape* version : {shapes[shape], round1[shape]}) {
        ExpectNear(&version->center, &fresh->center, 1, 0);
        EXPECT_EQ(version->radius, fresh->radius);
    }
}

// Far points move more than near ones: the box becomes slanted, and longer than it was.
TEST_F(Transforms, KnowTheBoundsOfWhatWasMovedUnderPerspective)
{
    mainview.perspective = fadedone;
    const int box = AddToView(MakeBox());
    const float before = shapes[box]->radius;
    ShapeMove(box, 0, 0, -1, 0.5F);
    EXPECT_GT(shapes[box]->radius, before);
    ExpectBounds(box);
    SelectedMove(0, 0, 0.75F, -0.25F);
    ExpectBounds(box);
}

// The eye is 1.5 before the middle. A point behind it moves as without perspective, so the mean
// does not move as a point in its place would.
TEST_F(Transforms, KnowTheCentreOfWhatWasMovedAroundTheEye)
{
    mainview.perspective = fadedone;
    const int triangle = AddToView(MakeFlatShape({{0.1F, 0, 2}, {0.1F, 0.1F, 0}, {0.2F, 0.1F, 0}}));
    ShapeMove(triangle, 0, 0, 0.25F, 0);
    ExpectPoint(shapes[triangle]->points[0], {0.35, 0, 2});
    ExpectBounds(triangle);
}

TEST_F(Transforms, KnowTheBoundsOfASelectionTurnedUnderPerspective)
{
    mainview.perspective = fadedone;
    const int box = AddToView(MakeBox());
    SelectedRotate(60, 1);
    ExpectBounds(box);
}

// A shape keeps its pivot, or a slider that is moved back would not bring it back.
TEST_F(Transforms, TurnAShapeThereAndBackUnderPerspective)
{
    mainview.perspective = fadedone;
    const int box = AddToView(MakeBox());
    const Points before = Remember(box);
    const Vector pivot = {double(shapes[box]->center[0]), double(shapes[box]->center[1]),
                          double(shapes[box]->center[2])};
    ShapeRotate(box, 60, 1);
    double farthest = 0;
    for (const auto& point : Remember(box)) {
        farthest =
            std::max(farthest, std::hypot(double(point[0]) - pivot[0], double(point[1]) - pivot[1],
                                          double(point[2]) - pivot[2]));
    }
    ExpectPoint(shapes[box]->center, pivot);
    EXPECT_NEAR(double(shapes[box]->radius), farthest, 1e-6);
    EXPECT_EQ(round1[box]->radius, shapes[box]->radius);
    ShapeRotate(box, -60, 1);
    ExpectMapped(before, *shapes[box], origin, [](const Vector& d) { return d; });
}

TEST_F(Transforms, MoveTheSelectionInTheViewPlane)
{
    const int box = AddToView(MakeBox());
    const int squares = AddToView(MakeTwoSquares());
    const Points first = Remember(box);
    const Points second = Remember(squares);
    SelectedMove(0, 0, 0.125F, -0.0625F);
    const Map move = [](const Vector& d) { return Vector{d[0] + 0.125, d[1] - 0.0625, d[2]}; };
    ExpectMapped(first, *shapes[box], origin, move);
    ExpectMapped(second, *shapes[squares], origin, move);
    ExpectDerived(box, rigid);
    ExpectDerived(squares, rigid);
    EXPECT_EQ(activesides[0].active, 1);
}

TEST_F(Transforms, MoveASideInTheViewPlaneAndDeriveTheRest)
{
    const int box = AddToView(MakeBox());
    const Points before = Remember(box);
    SideMove(box, 5, 0, 0, 0.1F, 0.05F); // the side towards +x
    ExpectMapped(before, *shapes[box], boxcenter, [](const Vector& d) {
        return d[0] > 0 ? Vector{d[0] + 0.1, d[1] + 0.05, d[2]} : d;
    });
    ExpectDerived(box, rebuilt);
    ExpectProjected(box);
    EXPECT_EQ(activesides[0].active, 1);
}

TEST_F(Transforms, MoveAPointOnceThatASideListsTwice)
{
    const int plate = AddToView(PlateWithHole());
    const Points before = Remember(plate);
    const Side& side = shapes[plate]->sides[0];
    const std::set<int> corners(side.points, side.points + side.pointnumber);
    ASSERT_LT(int(corners.size()), side.pointnumber);
    SideMove(plate, 0, 0, 0, 0.25F, 0);
    for (const int corner : corners) {
        EXPECT_NEAR(double(shapes[plate]->points[corner][0]),
                    double(before[std::size_t(corner)][0]) + 0.25, 1e-6);
    }
}

static std::string GetBytesOfVersions(int shape)
{
    return GetBytes(*shapes[shape]) + GetBytes(*round1[shape]) + GetBytes(*shapest[shape]) +
           GetBytes(*round1t[shape]);
}

// One shape in a selected folder, one selected by itself, one not at all.
TEST_F(Transforms, LeaveWhatIsNotSelectedToTheBit)
{
    const int folder = AddTreeIter(0, NODE_FOLDER, CopyText("folder"));
    AddToScene(MakeBox(), "inside", folder);
    AddToScene(MakeBox(), "beside");
    AddToScene(MakeBox(), "chosen");
    TransferAllShape();
    SelectNodes({folder, treeiternumber - 1});
    const std::string before = GetBytesOfVersions(1);
    const std::function<void()> works[] = {[] { SelectedRotate(45, 1); },
                                           [] { SelectedScale(2, 1); },
                                           [] { SelectedMove(0, 0, 0.125F, 0); }};
    for (const auto& work : works) {
        const Points inside = Remember(0);
        const Points chosen = Remember(2);
        work();
        EXPECT_NE(Remember(0), inside);
        EXPECT_NE(Remember(2), chosen);
        EXPECT_EQ(Remember(0), Remember(2));
        EXPECT_TRUE(GetBytesOfVersions(1) == before);
        EXPECT_EQ(FindBrokenRule(), "");
    }
}

TEST_F(Transforms, DoNothingToWhatIsNotThere)
{
    const int box = AddToView(MakeBox());
    const Points before = Remember(box);
    for (const int shape : {-1, 1}) {
        SideRotate(shape, 0, 90, 0);
        SideScale(shape, 0, 2, 0);
        SideMove(shape, 0, 0, 0, 1, 1);
        ShapeRotate(shape, 90, 0);
        ShapeScale(shape, 2, 0);
        ShapeMove(shape, 0, 0, 1, 1);
    }
    for (const int side : {-1, 6}) {
        SideRotate(box, side, 90, 0);
        SideScale(box, side, 2, 0);
        SideMove(box, side, 0, 0, 1, 1);
    }
    EXPECT_EQ(Remember(box), before);
    EXPECT_EQ(activesides[0].active, 1);
}

TEST_F(Transforms, DoNothingInAnEmptyScene)
{
    SelectedRotate(90, 0);
    SelectedScale(2, 0);
    SelectedMove(0, 0, 1, 1);
    EXPECT_EQ(shapenumber, 0);
}

} // namespace korvane::testing
