#include "scene/model.h"

#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "view/picking.h"

#include <gtest/gtest.h>

namespace korvane
{

using namespace korvane::testing;

class Scene : public ::testing::Test
{
protected:
    void SetUp() override
    {
        StartEmptyScene();
    }
};

TEST_F(Scene, StartsEmpty)
{
    EXPECT_EQ(shapenumber, 0);
    EXPECT_EQ(FindBrokenRule(), "");
}

TEST_F(Scene, HoldsFourVersionsOfAnAddedShape)
{
    Shape* cube = Cube().release();
    AddShape(cube);
    ASSERT_EQ(shapenumber, 1);
    EXPECT_EQ(shapes[0], cube); // the scene took the record itself
    EXPECT_EQ(round1[0]->trianglenumber, 9 * 12);
    EXPECT_EQ(shapest[0]->trianglenumber, 12);
    EXPECT_EQ(round1t[0]->trianglenumber, 9 * 12);
    DeleteAllShapes();
}

TEST_F(Scene, MarksAnAddedShapeAsSelectedAndShown)
{
    AddToScene(Cube(), "cube");
    EXPECT_EQ(selected[0], 'P');           // 80: bits 4 and 6
    EXPECT_EQ(showtable[0], SHOW_NOTHING); // until it is projected
}

TEST_F(Scene, ComputesCenterAndRadiusOfAnAddedShape)
{
    OwnedShape square = Square();
    square->center[0] = 99; // stale
    square->radius = 99;
    AddToScene(std::move(square), "square");
    EXPECT_EQ(shapes[0]->center[0], 0.5F);
    EXPECT_EQ(shapes[0]->center[1], 0.5F);
    EXPECT_FLOAT_EQ(shapes[0]->radius, 0.70710678F); // half the diagonal
}

TEST_F(Scene, DerivesTheVersionsAgainAfterAChange)
{
    AddToScene(Square(), "square");
    selected[0] = 33;
    showtable[0] = SHOW_PLAIN;
    for (int i = 0; i < 4; i++) {
        shapes[0]->points[i][2] = 2;
    }
    ChangeShape(0);
    EXPECT_EQ(shapes[0]->center[2], 2.0F);
    EXPECT_EQ(shapest[0]->points[3][2], 2.0F);
    EXPECT_EQ(round1[0]->points[0][2], 2.0F);
    EXPECT_EQ(round1t[0]->points[0][2], 2.0F);
    EXPECT_EQ(selected[0], 33);
    EXPECT_EQ(showtable[0], SHOW_PLAIN);
}

TEST(CopyShape, IsDeepAndNamesItselfInItsBackPointers)
{
    const OwnedShape cube = Cube();
    SetVertexes(cube.get(), {1, 5});
    const OwnedShape copy(CopyShape(cube.get()));
    EXPECT_EQ(FindBrokenRuleOfShape(*copy), ""); // checks every back-pointer
    EXPECT_NE(copy->points, cube->points);
    EXPECT_NE(copy->normals, cube->normals);
    EXPECT_NE(copy->trianglenormals, cube->trianglenormals);
    EXPECT_NE(copy->edges, cube->edges);
    EXPECT_NE(copy->vertexes, cube->vertexes);
    EXPECT_NE(copy->stripes[0].points, cube->stripes[0].points);
    EXPECT_NE(copy->sides[0].points, cube->sides[0].points);
    EXPECT_NE(copy->sides[0].triangles, cube->sides[0].triangles);
    EXPECT_EQ(copy->vertexes[1], 5);
    EXPECT_EQ(copy->points[6][2], 0.5F);
    EXPECT_EQ(copy->sides[5].points[3], 5);
    EXPECT_EQ(copy->sides[5].colors[FRONT_SHADOW], 0.2F);
    EXPECT_EQ(copy->radius, cube->radius);
}

TEST(CopyShape, OfAShapeWithoutVertexesHasNone)
{
    const OwnedShape cube = Cube();
    const OwnedShape copy(CopyShape(cube.get()));
    EXPECT_EQ(copy->vertexnumber, 0);
    EXPECT_EQ(copy->vertexes, nullptr);
}

TEST_F(Scene, MovesFlagsDownWithTheShapesAfterADeletedOne)
{
    for (int i = 0; i < 3; i++) {
        AddShape(Tetrahedron().release());
        selected[i] = static_cast<unsigned char>(i);
        showtable[i] = i;
    }
    const Shape* last = shapes[2];
    DeleteShapeByIndex(1);
    ASSERT_EQ(shapenumber, 2);
    EXPECT_EQ(shapes[1], last);
    EXPECT_EQ(selected[1], 2);
    EXPECT_EQ(showtable[1], 2);
    EXPECT_EQ(selected[0], 0);
    DeleteAllShapes();
}

TEST_F(Scene, ClosesAllGapsAfterMarkedShapes)
{
    for (int i = 0; i < 5; i++) {
        AddShape(Cube().release());
        selected[i] = (unsigned char)i;
        showtable[i] = i;
    }
    Shape* const kept[] = {shapes[1], round1[1], shapest[4], round1t[4]};
    const char gone[] = {1, 0, 1, 1, 0};
    DeleteMarkedShapes(gone);
    ASSERT_EQ(shapenumber, 2);
    EXPECT_EQ(shapes[0], kept[0]);
    EXPECT_EQ(round1[0], kept[1]);
    EXPECT_EQ(shapest[1], kept[2]);
    EXPECT_EQ(round1t[1], kept[3]);
    EXPECT_EQ(selected[1], 4);
    EXPECT_EQ(showtable[1], 4);
    EXPECT_EQ(activesidenumber, 12); // two cubes
    DeleteAllShapes();
}

TEST_F(Scene, TakesShapesAgainAfterTheLastWasDeleted)
{
    AddShape(Cube().release());
    DeleteShapeByIndex(0);
    EXPECT_EQ(shapenumber, 0);
    AddShape(Square().release());
    ASSERT_EQ(shapenumber, 1);
    EXPECT_EQ(selected[0], 'P');
    DeleteAllShapes();
    EXPECT_EQ(shapenumber, 0);
}

TEST(Catalogue, HoldsSoundShapes)
{
    for (const OwnedShape& shape : {FlatTriangle(), Square(), ConcaveL(), Star(), Tetrahedron(),
                                    Cube(), TrianglePrism(), Pyramid()}) {
        EXPECT_EQ(FindBrokenRuleOfShape(*shape), "");
        if (shape->sidenumber > 1) {
            EXPECT_EQ(FindBrokenRuleOfClosedBody(*shape), "");
        }
    }
}

} // namespace korvane
