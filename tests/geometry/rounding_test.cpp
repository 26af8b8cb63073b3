#include "geometry/rounding.h"

#include "geometry/normals.h"
#include "scene/arrays.h"
#include "scene/model.h"
#include "tests/support/shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <set>
#include <vector>

namespace korvane
{

using testing::CubeOfHalfEdge;
using testing::MakeFlatShape;
using testing::MakeRawShape;
using testing::MakeShape;
using testing::SetVertexes;

using Point = std::array<float, 3>;
using Indices = std::vector<int>;

static OwnedShape Round(const OwnedShape& shape)
{
    return OwnedShape(RoundShape(shape.get()));
}

static Point PointOf(const OwnedShape& shape, int index)
{
    const float* point = shape->points[index];
    return {point[0], point[1], point[2]};
}

static std::vector<Point> PointsOf(const OwnedShape& shape)
{
    std::vector<Point> points;
    for (int i = 0; i < shape->pointnumber; i++) {
        points.push_back(PointOf(shape, i));
    }
    return points;
}

static std::vector<Indices> TrianglesOf(const OwnedShape& shape)
{
    std::vector<Indices> triangles;
    for (int i = 0; i < shape->trianglenumber; i++) {
        const int* corners = shape->triangles[i].points;
        triangles.emplace_back(corners, corners + 3);
    }
    return triangles;
}

static Indices StripeOf(const OwnedShape& shape, int index)
{
    const Stripe& stripe = shape->stripes[index];
    return {stripe.points, stripe.points + stripe.pointnumber};
}

static Indices VertexesOf(const OwnedShape& shape)
{
    return {shape->vertexes, shape->vertexes + shape->vertexnumber};
}

static void SetStripes(const OwnedShape& shape, const std::vector<Indices>& stripes)
{
    for (int i = 0; i < shape->stripenumber; i++) {
        FreeArray(shape->stripes[i].points);
    }
    FreeArray(shape->stripes);
    shape->stripenumber = int(stripes.size());
    shape->stripes = NewArray<Stripe>(shape->stripenumber);
    for (int i = 0; i < shape->stripenumber; i++) {
        const int number = int(stripes[std::size_t(i)].size());
        shape->stripes[i] = {number, CopyArray(stripes[std::size_t(i)].data(), number),
                             shape.get()};
    }
}

// Its edges: 0 runs from point 0 to 1, 1 from 1 to 2, 2 from 2 to 0.
static OwnedShape BigTriangle()
{
    return MakeFlatShape({{0, 0, 0}, {24, 0, 0}, {0, 24, 0}});
}

// A square hinged along its diagonal. Its edges: 0 is 0-1, 1 is 1-2, 2 is 2-0, 3 is 2-3, 4 is 3-0.
static OwnedShape HingedSquare()
{
    return MakeShape({{0, 0, 0}, {36, 0, 0}, {36, 36, 0}, {0, 36, 0}}, {{0, 1, 2}, {0, 2, 3}});
}

static OwnedShape BigTetrahedron()
{
    return MakeShape({{81, 81, 81}, {-81, -81, 81}, {-81, 81, -81}, {81, -81, -81}},
                     {{0, 2, 1}, {0, 1, 3}, {0, 3, 2}, {1, 2, 3}});
}

static OwnedShape Octahedron()
{
    return MakeShape(
        {{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}},
        {{0, 2, 4}, {2, 1, 4}, {1, 3, 4}, {3, 0, 4}, {2, 0, 5}, {1, 2, 5}, {3, 1, 5}, {0, 3, 5}});
}

static std::vector<OwnedShape> AllShapes()
{
    std::vector<OwnedShape> all;
    all.push_back(testing::FlatTriangle());
    all.push_back(testing::Square());
    all.push_back(testing::ConcaveL());
    all.push_back(testing::Star());
    all.push_back(testing::Tetrahedron());
    all.push_back(testing::Cube());
    all.push_back(testing::TrianglePrism());
    all.push_back(testing::Pyramid());
    return all;
}

TEST(RoundShape, MakesNinePartsOfATriangleInTheirOrder)
{
    // Point 3 is the face point; 4 and 5 lie on edge 0-1, 6 and 7 on 1-2, 8 and 9 on 2-0.
    const OwnedShape round = Round(BigTriangle());
    const std::vector<Indices> nine = {{0, 4, 9}, {4, 5, 3}, {5, 1, 6}, {3, 9, 4}, {6, 3, 5},
                                       {9, 3, 8}, {3, 6, 7}, {7, 8, 3}, {8, 7, 2}};
    EXPECT_EQ(TrianglesOf(round), nine);
}

TEST(RoundShape, CurvesTheBorderOfAOneSidedTriangle)
{
    // The border is a crease without a mark: (6P + N1 + N2) / 8 for every corner, and on the edges
    // (A + A' + B) / 3, such as (0 + 3 + 24, 0 + 3 + 0) / 3 = (9, 1) near point 0 on the way to 1.
    const OwnedShape round = Round(BigTriangle());
    const std::vector<Point> points = {
        {3, 3, 0}, {18, 3, 0}, {3, 18, 0}, {8, 8, 0}, // (6 * 8 + 9 + 14 + 14 + 9 + 1 + 1) / 12
        {9, 1, 0}, {14, 1, 0}, {14, 9, 0}, {9, 14, 0}, {1, 14, 0}, {1, 9, 0}};
    EXPECT_EQ(PointsOf(round), points);
    EXPECT_EQ(round->vertexnumber, 0);
    EXPECT_EQ(round->vertexes, nullptr);
}

TEST(RoundShape, CutsTheSegmentsOfAStripeInThree)
{
    const OwnedShape round = Round(BigTriangle());
    ASSERT_EQ(round->stripenumber, 1);
    EXPECT_EQ(StripeOf(round, 0), Indices({0, 4, 5, 1, 6, 7, 2, 8, 9, 0}));
}

TEST(RoundShape, TurnsTheEdgePointsWhereAStripeRunsAgainstAnEdge)
{
    const OwnedShape shape = BigTriangle();
    SetStripes(shape, {{0, 2, 1, 0}});
    EXPECT_EQ(StripeOf(Round(shape), 0), Indices({0, 9, 8, 2, 7, 6, 1, 5, 4, 0}));
}

TEST(RoundShape, ListsTheEdgePointsOfAMarkedBorder)
{
    const OwnedShape shape = BigTriangle();
    SetVertexes(shape.get(), {0, 1, 2});
    const OwnedShape round = Round(shape);
    EXPECT_EQ(VertexesOf(round), Indices({0, 1, 2, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(PointsOf(round), PointsOf(Round(BigTriangle()))); // a crease all round, as unmarked
}

TEST(RoundShape, KeepsMarkedEndsOfABorderAndListsOnlyTheLineBetweenThem)
{
    // Of the three border segments only 0-1 has two marked ends; point 2 is curved as border alone.
    const OwnedShape shape = BigTriangle();
    SetVertexes(shape.get(), {0, 1});
    const OwnedShape round = Round(shape);
    EXPECT_EQ(PointOf(round, 0), Point({0, 0, 0}));
    EXPECT_EQ(PointOf(round, 1), Point({24, 0, 0}));
    EXPECT_EQ(PointOf(round, 2), Point({3, 18, 0}));
    EXPECT_EQ(PointOf(round, 4), Point({8, 0, 0})); // the thirds of a straight line
    EXPECT_EQ(PointOf(round, 5), Point({16, 0, 0}));
    EXPECT_EQ(VertexesOf(round), Indices({0, 1, 4, 5}));
}

TEST(RoundShape, RepeatsTheLastVertexForAnEdgeOnTwoStripes)
{
    // Segment 0-1 counts twice, 2 + 2 * 2 vertexes, but its edge has only two points.
    const OwnedShape shape = BigTriangle();
    SetStripes(shape, {{0, 1, 2, 0}, {1, 0}});
    SetVertexes(shape.get(), {0, 1});
    EXPECT_EQ(VertexesOf(Round(shape)), Indices({0, 1, 4, 5, 5, 5}));
}

TEST(RoundShape, SmoothsAnOpenShapeByItsFacePoints)
{
    // Face points (24, 12) and (12, 24). First move, (nP + faces) / 2n: (9, 9), (30, 6), (27, 27),
    // (6, 30). Edge points: (P' + both faces) / 3, on the border twice the one face.
    const OwnedShape round = Round(HingedSquare());
    const std::vector<Point> points = {
        {12, 12, 0}, // (3 * 9 + 19 + 15 + 11) / 6
        {28, 8, 0},  // (2 * 30 + 26 + 26) / 4, (2 * 6 + 10 + 10) / 4
        {24, 24, 0}, // (3 * 27 + 25 + 21 + 17) / 6
        {8, 28, 0},
        {23, 13, 0}, // (6 * 24 + 19 + 26 + 26 + 25 + 21 + 15) / 12, (6 * 12 + 84) / 12
        {13, 23, 0},
        {19, 11, 0}, // (9 + 24 + 24) / 3, (9 + 12 + 12) / 3
        {26, 10, 0},
        {26, 10, 0},
        {25, 17, 0},
        {21, 21, 0}, // (27 + 24 + 12) / 3: the diagonal,
                     // between both faces
        {15, 15, 0},
        {17, 25, 0},
        {10, 26, 0},
        {10, 26, 0},
        {11, 19, 0}};
    EXPECT_EQ(PointsOf(round), points);
}

TEST(RoundShape, ShrinksATetrahedronByTheSurfaceRules)
{
    // With corners a, b, c, d and a + b + c + d = 0 a face point is minus a third of the corner
    // opposite; first move (3a + a/3) / 6 = 5a/9; edge points (5a/9 + (a + b)/3) / 3 = (8a +
    // 3b)/27; second move (3 * 5a/9 + (24a - 3a)/27) / 6 = 11a/27; face points (6/3 + 22/27) / 12 =
    // 19/81 of the sum of their corners.
    const OwnedShape shape = BigTetrahedron();
    const OwnedShape round = Round(shape);
    for (int p = 0; p < 4; p++) {
        for (int i = 0; i < 3; i++) {
            EXPECT_EQ(round->points[p][i], shape->points[p][i] * 11 / 27);
        }
    }
    const int opposite[] = {3, 2, 1, 0};
    for (int t = 0; t < 4; t++) {
        for (int i = 0; i < 3; i++) {
            EXPECT_EQ(round->points[4 + t][i], -shape->points[opposite[t]][i] * 19 / 81);
        }
    }
    for (int e = 0; e < 6; e++) {
        const int* ends = shape->edges[e].points;
        for (int i = 0; i < 3; i++) {
            const float a = shape->points[ends[0]][i];
            const float b = shape->points[ends[1]][i];
            EXPECT_EQ(round->points[8 + 2 * e][i], (8 * a + 3 * b) / 27);
            EXPECT_EQ(round->points[8 + 2 * e + 1][i], (3 * a + 8 * b) / 27);
        }
    }
}

TEST(RoundShape, WeighsACubeCornerByItsTriangles)
{
    // Corner 0 is in three triangles: -h (3 + 5/3) / 6 = -7h/9, then (3 * -7/9 - 17/9) / 6 =
    // -19/27. Corner 1 is in five, as the diagonals fall: (3/5, -11/15, -11/15) h, then (7/15,
    // -29/45, -29/45).
    const OwnedShape round = Round(CubeOfHalfEdge(135));
    EXPECT_EQ(PointOf(round, 0), Point({-95, -95, -95}));
    EXPECT_EQ(PointOf(round, 6), Point({95, 95, 95}));
    EXPECT_EQ(PointOf(round, 1), Point({63, -87, -87}));
}

TEST(RoundShape, KeepsACubeWhoseCornersAreAllMarked)
{
    // Three creases meet in every corner, and the diagonals have marked ends as well: all edges are
    // cut in straight thirds and every face point stays the mean of its triangle.
    const OwnedShape shape = CubeOfHalfEdge(3);
    SetVertexes(shape.get(), {0, 1, 2, 3, 4, 5, 6, 7});
    const OwnedShape round = Round(shape);
    for (int p = 0; p < 8; p++) {
        EXPECT_EQ(PointOf(round, p), PointOf(shape, p));
    }
    for (int e = 0; e < shape->edgenumber; e++) {
        const Point a = PointOf(shape, shape->edges[e].points[0]);
        const Point b = PointOf(shape, shape->edges[e].points[1]);
        for (std::size_t i = 0; i < 3; i++) {
            EXPECT_EQ(round->points[8 + 12 + 2 * e][i], (2 * a[i] + b[i]) / 3);
            EXPECT_EQ(round->points[8 + 12 + 2 * e + 1][i], (a[i] + 2 * b[i]) / 3);
        }
    }
    for (int t = 0; t < round->trianglenumber; t++) {
        for (int i = 0; i < 3; i++) {
            EXPECT_EQ(round->trianglenormals[t][i], shape->trianglenormals[t / 9][i]);
        }
    }
    EXPECT_EQ(round->vertexnumber, 8 + 2 * 12); // the six diagonals are on no stripe
}

TEST(RoundShape, KeepsADiagonalBetweenTwoMarksStraight)
{
    // Corners 1 and 3 have no marked neighbour along a stripe and stay; the edge between them is a
    // crease all the same, but as no stripe runs along it, it is not listed.
    const OwnedShape shape = CubeOfHalfEdge(3);
    SetVertexes(shape.get(), {1, 3});
    const OwnedShape round = Round(shape);
    EXPECT_EQ(PointOf(round, 1), Point({3, -3, -3}));
    EXPECT_EQ(PointOf(round, 3), Point({-3, 3, -3}));
    const Edge* end = shape->edges + shape->edgenumber;
    const Edge* diagonal =
        std::find_if(static_cast<const Edge*>(shape->edges), end, [](const Edge& edge) {
            return edge.points[0] + edge.points[1] == 4 && edge.points[0] * edge.points[1] == 3;
        });
    ASSERT_NE(diagonal, end);
    const int near = 8 + 12 + 2 * int(diagonal - shape->edges) + (diagonal->points[0] == 1 ? 0 : 1);
    EXPECT_EQ(PointOf(round, near), Point({1, -1, -3})); // a third of the way from 1 to 3
    EXPECT_EQ(VertexesOf(round), Indices({1, 3}));
}

TEST(RoundShape, CurvesACreaseAlongItsOwnLine)
{
    // Crease 0-1-2 on a cube: the ends are corners, point 1 has two crease neighbours.
    const OwnedShape shape = CubeOfHalfEdge(4);
    SetVertexes(shape.get(), {0, 1, 2});
    const OwnedShape round = Round(shape);
    EXPECT_EQ(PointOf(round, 0), PointOf(shape, 0));
    EXPECT_EQ(PointOf(round, 1), Point({3, -3, -4})); // (6 (4, -4) + (-4, -4) + (4, 4)) / 8
    EXPECT_EQ(PointOf(round, 2), PointOf(shape, 2));
    EXPECT_EQ(round->vertexnumber, 3 + 2 * 2);
}

TEST(RoundShape, MovesAVertexWithoutStripesTowardsPointZero)
{
    const OwnedShape shape = CubeOfHalfEdge(4);
    SetStripes(shape, {});
    SetVertexes(shape.get(), {6});
    const OwnedShape round = Round(shape);
    EXPECT_EQ(PointOf(round, 6), Point({2, 2, 2})); // (6 * 4 + 2 * -4) / 8
    EXPECT_EQ(VertexesOf(round), Indices({6}));
}

TEST(RoundShape, KeepsAPointThatIsCornerAndCreaseAtOnce)
{
    // Point 0 is a crease of the first stripe; on the second it has the unmarked point 3 beside it.
    const OwnedShape shape = BigTetrahedron();
    SetStripes(shape, {{1, 0, 2}, {3, 0, 1}});
    SetVertexes(shape.get(), {0, 1, 2});
    EXPECT_EQ(PointOf(Round(shape), 0), Point({81, 81, 81}));
}

TEST(RoundShape, KeepsAPointThatNoTriangleUses)
{
    const OwnedShape shape = MakeShape({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {5, 6, 7}}, {{0, 1, 2}});
    EXPECT_EQ(PointOf(Round(shape), 3), Point({5, 6, 7}));
}

TEST(RoundShape, TakesTheEdgePointsOfTheTriangleBeforeWhereAnEdgeIsMissing)
{
    // Triangles 3-0-1 and 1-2-3; edges 3-0, 0-1, 1-3, 1-2, 2-3 with points 6.. in pairs. Without
    // 2-3 the second triangle takes 8 and 9, which the first has between its second and third
    // corner.
    const OwnedShape shape = testing::Square();
    ASSERT_EQ(shape->edgenumber, 5);
    shape->edgenumber = 4;
    const OwnedShape round = Round(shape);
    const std::vector<Indices> triangles = TrianglesOf(round);
    const std::vector<Indices> second(triangles.begin() + 9, triangles.end());
    const std::vector<Indices> nine = {{1, 12, 10}, {12, 13, 5}, {13, 2, 8},
                                       {5, 10, 12}, {8, 5, 13},  {10, 5, 11},
                                       {5, 8, 9},   {9, 11, 5},  {11, 9, 3}};
    EXPECT_EQ(second, nine);
    EXPECT_EQ(StripeOf(round, 0), Indices({0, 8, 9, 1, 12, 13, 2, 2, 3, 3, 6, 7, 0}));
}

TEST(RoundShape, TakesTheFirstOfSeveralEdgesBetweenTheSamePoints)
{
    const OwnedShape shape = BigTriangle();
    GrowArray(shape->edges, 3, 4);
    shape->edges[3] = {{0, 1}, {0, 0}, {0, 0}}; // its points are 10 and 11
    shape->edgenumber = 4;
    const OwnedShape round = Round(shape);
    EXPECT_EQ(TrianglesOf(round).front(), Indices({0, 4, 9}));
    EXPECT_EQ(StripeOf(round, 0), Indices({0, 4, 5, 1, 6, 7, 2, 8, 9, 0}));
}

TEST(RoundShape, StaysInsideItsArraysWithoutAnyEdge)
{
    const OwnedShape shape = testing::Cube();
    shape->edgenumber = 0;
    SetVertexes(shape.get(), {0, 1, 2, 3});
    const OwnedShape round = Round(shape);
    EXPECT_EQ(round->pointnumber, 8 + 12);
    for (const Indices& corners : TrianglesOf(round)) {
        EXPECT_LT(*std::max_element(corners.begin(), corners.end()), round->pointnumber);
    }
    EXPECT_EQ(VertexesOf(round), Indices({0, 1, 2, 3}));
}

TEST(RoundShape, CountsPointsTrianglesAndEdges)
{
    for (const OwnedShape& shape : AllShapes()) {
        const OwnedShape round = Round(shape);
        EXPECT_EQ(round->pointnumber,
                  shape->pointnumber + shape->trianglenumber + 2 * shape->edgenumber);
        EXPECT_EQ(round->trianglenumber, 9 * shape->trianglenumber);
        EXPECT_EQ(round->edgenumber, 3 * shape->edgenumber + 9 * shape->trianglenumber);
        EXPECT_EQ(round->sidenumber, shape->sidenumber);
        ASSERT_EQ(round->stripenumber, shape->stripenumber);
        for (int i = 0; i < shape->stripenumber; i++) {
            EXPECT_EQ(round->stripes[i].pointnumber, 3 * shape->stripes[i].pointnumber - 2);
        }
    }
}

TEST(RoundShape, CopiesCenterAndRadius)
{
    const OwnedShape shape = testing::Cube();
    std::copy_n(Point({7, 8, 9}).data(), 3, shape->center); // not its centre: to be copied as it is
    shape->radius = 11;
    const OwnedShape round = Round(shape);
    EXPECT_EQ(Point({round->center[0], round->center[1], round->center[2]}), Point({7, 8, 9}));
    EXPECT_EQ(round->radius, 11);
}

TEST(RoundShape, LooksAtItselfFromEverywhere)
{
    for (const OwnedShape& shape : AllShapes()) {
        const OwnedShape round = Round(shape);
        for (int i = 0; i < round->stripenumber; i++) {
            EXPECT_EQ(round->stripes[i].shape, round.get());
        }
        for (int i = 0; i < round->trianglenumber; i++) {
            EXPECT_EQ(round->triangles[i].shape, round.get());
        }
        for (int i = 0; i < round->sidenumber; i++) {
            EXPECT_EQ(round->sides[i].shape, round.get());
        }
    }
}

TEST(RoundShape, CopiesTheLooksOfASideButNotItsOutline)
{
    const OwnedShape shape = HingedSquare();
    shape->sides[0].visibility = VISIBLE_BACK;
    for (int i = 0; i < colornumber; i++) {
        shape->sides[0].colors[i] = float(i) / 32;
    }
    const OwnedShape round = Round(shape);
    const Side& side = round->sides[0];
    EXPECT_EQ(side.visibility, VISIBLE_BACK);
    EXPECT_TRUE(std::equal(side.colors, side.colors + colornumber, shape->sides[0].colors));
    EXPECT_EQ(round->sides[1].visibility, VISIBLE_BOTH);
    EXPECT_EQ(side.pointnumber, 1);
    EXPECT_EQ(side.points[0], 0);
    EXPECT_NE(side.points, shape->sides[0].points);
}

TEST(RoundShape, GivesEverySideTheNinePartsOfItsTriangles)
{
    const OwnedShape shape = HingedSquare();
    std::swap(shape->triangles[0],
              shape->triangles[1]); // the runs stand in another order than the sides
    shape->sides[0].triangles[0] = 1;
    shape->sides[1].triangles[0] = 0;
    SetNormalsOfShape(shape.get());
    const OwnedShape round = Round(shape);
    const Side* sides = round->sides;
    EXPECT_EQ(Indices(sides[0].triangles, sides[0].triangles + sides[0].trianglenumber),
              Indices({9, 10, 11, 12, 13, 14, 15, 16, 17}));
    EXPECT_EQ(Indices(sides[1].triangles, sides[1].triangles + sides[1].trianglenumber),
              Indices({0, 1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(RoundShape, FacesTheWayOfItsInput)
{
    for (const OwnedShape& shape : AllShapes()) {
        const OwnedShape round = Round(shape);
        for (int t = 0; t < round->trianglenumber; t++) {
            const float* normal = round->trianglenormals[t];
            const float* before = shape->trianglenormals[t / 9];
            EXPECT_GT(normal[0] * before[0] + normal[1] * before[1] + normal[2] * before[2], 0);
        }
    }
}

static std::set<Point> GetImage(const OwnedShape& shape, std::size_t from, float sign)
{
    std::set<Point> image;
    for (const Point& point : PointsOf(shape)) {
        Point turned;
        for (std::size_t i = 0; i < 3; i++) {
            turned[i] = sign * point[(i + from) % 3] + 0.0F; // no negative zero
        }
        image.insert(turned);
    }
    return image;
}

TEST(RoundShape, KeepsTheSymmetryOfAnOctahedron)
{
    const OwnedShape round = Round(Octahedron());
    const std::set<Point> points = GetImage(round, 0, 1);
    EXPECT_EQ(points.size(), 6U + 8U + 2U * 12U);
    EXPECT_EQ(GetImage(round, 0, -1), points); // through the centre
    EXPECT_EQ(GetImage(round, 1, 1), points);  // a third of a turn
}

// The whole of a shape but its back-pointers, as bytes in a fixed order.
static std::vector<unsigned char> GetContents(const Shape& shape)
{
    std::vector<unsigned char> bytes;
    const auto add = [&bytes](const void* data, std::size_t size) {
        const auto* first = static_cast<const unsigned char*>(data);
        bytes.insert(bytes.end(), first, first + size);
    };
    const auto addarray = [&add](const auto* array, int number) {
        add(&number, sizeof number);
        add(array, std::size_t(number) * sizeof *array);
    };
    addarray(shape.vertexes, shape.vertexnumber);
    addarray(shape.points, shape.pointnumber);
    addarray(shape.normals, shape.normalnumber);
    addarray(shape.trianglenormals, shape.trianglenumber);
    addarray(shape.edges, shape.edgenumber);
    addarray(shape.center, 3);
    addarray(&shape.radius, 1);
    for (int i = 0; i < shape.stripenumber; i++) {
        addarray(shape.stripes[i].points, shape.stripes[i].pointnumber);
    }
    for (int i = 0; i < shape.trianglenumber; i++) {
        addarray(shape.triangles[i].points, 3);
        addarray(shape.triangles[i].normals, 3);
    }
    for (int i = 0; i < shape.sidenumber; i++) {
        const Side& side = shape.sides[i];
        addarray(side.points, side.pointnumber);
        addarray(side.triangles, side.trianglenumber);
        addarray(&side.visibility, 1);
        addarray(side.colors, colornumber);
    }
    return bytes;
}

TEST(RoundShape, LeavesItsInputAsItWas)
{
    for (const OwnedShape& shape : AllShapes()) {
        SetVertexes(shape.get(), {0, 1, 2});
        const auto before = GetContents(*shape);
        Round(shape);
        EXPECT_EQ(GetContents(*shape), before);
    }
}

TEST(RoundShape, GivesTheSameAgain)
{
    for (const OwnedShape& shape : AllShapes()) {
        EXPECT_EQ(GetContents(*Round(shape)), GetContents(*Round(shape)));
    }
}

// Triangles between points taken at random: edges of many triangles, triangles that are there twice
// or lie back to back, and some with the same point at two corners.
static OwnedShape MakeTangle(unsigned seed, int pointnumber, int trianglenumber)
{
    std::minstd_rand random(seed);
    const auto pick = [&random](int number) { return int(random() % unsigned(number)); };
    testing::Points points;
    for (int i = 0; i < pointnumber; i++) {
        points.push_back({float(pick(9)), float(pick(9)), float(pick(9))});
    }
    testing::Outlines sides;
    for (int i = 0; i < trianglenumber; i++) {
        sides.push_back({pick(pointnumber), pick(pointnumber), pick(pointnumber)});
    }
    OwnedShape shape = MakeShape(points, sides);
    SetVertexes(shape.get(), {0, 1, 2});
    SetNormalsOfShape(shape.get());
    return shape;
}

TEST(RoundShape, EndsWithTheNormalsOfItsResultWhateverIsTangled)
{
    for (unsigned seed = 1; seed <= 300; seed++) {
        const int points = 3 + int(seed % 7); // few, so that they meet in every way
        const OwnedShape round = Round(MakeTangle(seed, points, 2 + int(seed % 11)));
        const auto contents = GetContents(*round);
        SetNormalsOfShape(round.get());
        EXPECT_EQ(GetContents(*round), contents) << "seed " << seed;
    }
}

TEST(RoundShape, EndsWithTheNormalsOfItsResult)
{
    for (const OwnedShape& shape : AllShapes()) {
        for (const Indices& vertexes : {Indices{}, Indices{0, 1}, Indices{0, 1, 2}}) {
            SetVertexes(shape.get(), vertexes);
            const OwnedShape round = Round(shape);
            const auto contents = GetContents(*round);
            SetNormalsOfShape(round.get());
            EXPECT_EQ(GetContents(*round), contents);
        }
    }
}

} // namespace korvane
