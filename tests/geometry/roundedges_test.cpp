#include "geometry/roundedges.h"

#include "geometry/normals.h"
#include "geometry/subdivision.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "tests/support/shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace korvane
{

using testing::MakeShape;

using EdgeNumbers = std::array<int, 6>;

// The mesh of a rounded shape without stripes, and with all its points at the origin.
struct Cut {
    explicit Cut(const OwnedShape& shape) : work(StartSubdivision(shape.get())), round(work.round)
    {
        std::fill_n(&work.round->points[0][0], 3 * work.round->pointnumber, 0.0F);
        FreeArray(work.round->stripes);
        work.round->stripenumber = 0;
        SetNineTriangles(work);
        SetRoundSides(work);
    }

    Subdivision work;
    OwnedShape round;
};

static std::vector<EdgeNumbers> EdgesOf(const OwnedShape& shape)
{
    std::vector<EdgeNumbers> edges;
    for (int i = 0; i < shape->edgenumber; i++) {
        const Edge& e = shape->edges[i];
        edges.push_back(
            {e.points[0], e.points[1], e.triangles[0], e.triangles[1], e.sides[0], e.sides[1]});
    }
    return edges;
}

static OwnedShape BackToBack()
{
    return MakeShape({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}, {2, 1, 0}});
}

static OwnedShape ThreeAtAnEdge()
{
    return MakeShape({{0, 0, 0}, {0, 0, 1}, {1, 0, 0}, {0, 1, 0}, {-1, 0, 0}},
                     {{0, 1, 2}, {1, 0, 3}, {0, 1, 4}});
}

static OwnedShape RunAlike()
{
    return MakeShape({{0, 0, 0}, {0, 0, 1}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}, {0, 1, 3}});
}

TEST(SetRoundEdges, WalksTheNinePartsOfATriangle)
{
    // The parts in their order, 0-4-9, 4-5-3, 5-1-6, 3-9-4, 6-3-5, 9-3-8, 3-6-7, 7-8-3, 8-7-2, each
    // along its three edges; where a later part runs an edge the other way it is the second
    // triangle.
    const OwnedShape shape = testing::FlatTriangle();
    Cut cut(shape);
    ASSERT_TRUE(SetRoundEdges(cut.work));
    const std::vector<EdgeNumbers> edges = {
        {0, 4, 0, 0, 0, 0}, {4, 9, 0, 3, 0, 0}, {9, 0, 0, 0, 0, 0}, {4, 5, 1, 1, 0, 0},
        {5, 3, 1, 4, 0, 0}, {3, 4, 1, 3, 0, 0}, {5, 1, 2, 2, 0, 0}, {1, 6, 2, 2, 0, 0},
        {6, 5, 2, 4, 0, 0}, {3, 9, 3, 5, 0, 0}, {6, 3, 4, 6, 0, 0}, {3, 8, 5, 7, 0, 0},
        {8, 9, 5, 5, 0, 0}, {6, 7, 6, 6, 0, 0}, {7, 3, 6, 7, 0, 0}, {7, 8, 7, 8, 0, 0},
        {7, 2, 8, 8, 0, 0}, {2, 8, 8, 8, 0, 0}};
    EXPECT_EQ(EdgesOf(cut.round), edges);
}

TEST(SetRoundEdges, FindsWhatTheSearchFinds)
{
    std::vector<OwnedShape> all;
    all.push_back(testing::Star());
    all.push_back(testing::Cube());
    all.push_back(testing::TrianglePrism());
    all.push_back(BackToBack());
    all.push_back(ThreeAtAnEdge());
    all.push_back(RunAlike());
    for (const OwnedShape& shape : all) {
        Cut cut(shape);
        ASSERT_TRUE(SetRoundEdges(cut.work));
        const std::vector<EdgeNumbers> edges = EdgesOf(cut.round);
        SetNormalsOfShape(cut.round.get());
        EXPECT_EQ(edges, EdgesOf(cut.round));
    }
}

static void ExpectRefusal(const OwnedShape& shape)
{
    Cut cut(shape);
    const Edge* edges = cut.round->edges;
    const int edgenumber = cut.round->edgenumber;
    EXPECT_FALSE(SetRoundEdges(cut.work));
    EXPECT_EQ(cut.round->edges, edges);
    EXPECT_EQ(cut.round->edgenumber, edgenumber);
}

TEST(SetRoundEdges, RefusesATriangleWithoutItsEdge)
{
    const OwnedShape shape = testing::Tetrahedron();
    shape->edgenumber--;
    ExpectRefusal(shape);
}

TEST(SetRoundEdges, RefusesAnEdgeOfNoTriangle)
{
    const OwnedShape shape = testing::Tetrahedron();
    GrowArray(shape->edges, shape->edgenumber, shape->edgenumber + 1);
    shape->edges[shape->edgenumber++] = {{3, 3}, {0, 0}, {0, 0}};
    ExpectRefusal(shape);
}

TEST(SetRoundEdges, RefusesATriangleThatHasACornerTwice)
{
    ExpectRefusal(MakeShape({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 0}, {0, 1, 2}}));
}

TEST(SetRoundEdges, RefusesEdgesOfAnotherWalk)
{
    const OwnedShape shape = testing::Tetrahedron();
    std::swap(shape->sides[0], shape->sides[3]);
    ExpectRefusal(shape);
}

TEST(SetRoundEdges, RefusesSidesThatShareATriangle)
{
    const OwnedShape shape = MakeShape(
        {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}}, {{0, 1, 2}, {3, 4, 5}});
    shape->sides[1].triangles[0] = 0;
    ExpectRefusal(shape);
}

TEST(SetRoundEdges, RefusesATriangleOfNoSide)
{
    const OwnedShape shape = testing::Tetrahedron();
    FreeArray(shape->sides[3].points);
    FreeArray(shape->sides[3].triangles);
    shape->sidenumber = 3;
    ExpectRefusal(shape);
}

} // namespace korvane
