#include "geometry/duplication.h"

#include "geometry/construction.h"
#include "geometry/surgery.h"
#include "scene/treeview.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "view/frameloop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace korvane::testing
{

class CreateDuplicateInAScene : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyScene();
        AddToScene(TrianglePrism(), "before");
    }

    void TearDown() override
    {
        DelNewPoints();
        StartEmptyScene();
    }

    // Clicks a path into place, whatever the camera.
    static void SetPath(const Points& path)
    {
        DelNewPoints();
        duplicatesign = 1;
        for (const std::array<float, 3>& place : path) {
            AddNewPoint(place.data());
            std::copy_n(place.data(), 3, newpoints[newpointnumber - 1]);
        }
    }

    // Adds the shape after the prism, with another behind it, and sweeps one of its sides.
    static const Shape& Duplicate(OwnedShape shape, int side, const Points& path, int target,
                                  int closed)
    {
        const int index = AddToScene(std::move(shape), "swept");
        AddToScene(Cube(), "behind");
        SetPath(path);
        rdstate = 0;
        CreateDuplicate(index, side, target, closed);
        EXPECT_EQ(FindBrokenRule(), "");
        EXPECT_EQ(FindBrokenRuleOfClosedBody(*shapes[index]), "");
        return *shapes[index];
    }
};

TEST_F(CreateDuplicateInAScene, MakesATubeOfAFlatShapeAndABodyOfItsNode)
{
    const Shape& tube = Duplicate(FlatTriangle(), 0, {{0, 0, 0}, {0, 0, 1}, {0, 0, 2}}, 0, 0);
    EXPECT_EQ(tube.pointnumber, 9);
    EXPECT_EQ(tube.sidenumber, 8);
    EXPECT_EQ(tube.trianglenumber, 14);
    EXPECT_EQ(treeiters[2].type, NODE_SHAPE);
    EXPECT_EQ(rdstate, redrawwanted);
}

TEST_F(CreateDuplicateInAScene, DerivesCentreAndStripesAgain)
{
    const Shape& tube = Duplicate(MakeFlatShape({{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}}),
                                  0, {{0, 0, 0}, {0, 0, 4}}, 0, 0);
    EXPECT_EQ(tube.center[2], 2);
    EXPECT_EQ(tube.radius, std::sqrt(6.0F)); // 1, 1 and 2 away
    EXPECT_EQ(tube.stripenumber, 12);        // the edges of a box
    EXPECT_EQ(tube.edgenumber, 12 + 6);      // and the diagonals of its sides
}

TEST_F(CreateDuplicateInAScene, MakesARingOfAFlatShape)
{
    const Shape& ring = Duplicate(
        Square(), 0, {{0.5F, 0.5F, 0}, {0.5F, 0.5F, 9}, {9, 0.5F, 9}, {0.5F, 0.5F, 0}}, 0, 1);
    EXPECT_EQ(ring.pointnumber, 12);
    EXPECT_EQ(ring.sidenumber, 12);
    EXPECT_EQ(ring.trianglenumber, 24);
    EXPECT_EQ(treeiters[2].type, NODE_SHAPE);
}

TEST_F(CreateDuplicateInAScene, DrawsASideOfABodyOut)
{
    const Shape& body = Duplicate(Cube(), 1, {{0, 0, 0.5F}, {0, 0, 1}}, 0, 0);
    EXPECT_EQ(body.pointnumber, 12);
    EXPECT_EQ(body.sidenumber, 10);
    // The mean of four points each at -0.5, 0.5 and 1 is 1/3 high, and the bottom farthest from it.
    EXPECT_NEAR(body.center[2], 1.0 / 3, 1e-6);
    EXPECT_NEAR(body.radius, std::sqrt(0.5 + 25.0 / 36), 1e-6);
}

TEST_F(CreateDuplicateInAScene, BridgesABodyToItsFirstSide)
{
    const Shape& body = Duplicate(
        Cube(), 1, {{0, 0, 0.5F}, {0, 0, 2}, {3, 0, 2}, {3, 0, -2}, {0, 0, -2}, {0, 0, -0.5F}}, 0,
        1);
    EXPECT_EQ(body.pointnumber, 24);
    EXPECT_EQ(body.sidenumber, 24);
}

TEST_F(CreateDuplicateInAScene, LeavesTheShapeWhenThePathIsTooShort)
{
    const Shape& body = Duplicate(Cube(), 1, {{0, 0, 0.5F}}, 0, 0);
    EXPECT_EQ(body.sidenumber, 6);
    EXPECT_EQ(rdstate, 0);
}

TEST_F(CreateDuplicateInAScene, DoesNothingToAShapeThatIsGone)
{
    SetPath({{0, 0, 0}, {0, 0, 1}});
    CreateDuplicate(-1, 0, 0, 0);
    CreateDuplicate(shapenumber, 0, 0, 0);
    CreateDuplicate(0, shapes[0]->sidenumber, 0, 0);
    EXPECT_EQ(FindBrokenRule(), "");
    EXPECT_EQ(shapes[0]->sidenumber, 5);
}

} // namespace korvane::testing
