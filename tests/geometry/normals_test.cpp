#include "geometry/normals.h"

#include "geometry/shapegeometry.h"
#include "scene/arrays.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <map>
#include <random>
#include <set>

namespace korvane::testing
{

using EdgeFields = std::array<int, 6>; // a, b, first and second triangle, first and second side
using Triple = std::array<float, 3>;

static std::vector<EdgeFields> GetEdges(const Shape& shape)
{
    std::vector<EdgeFields> edges;
    for (int i = 0; i < shape.edgenumber; i++) {
        const Edge& e = shape.edges[i];
        edges.push_back(
            {e.points[0], e.points[1], e.triangles[0], e.triangles[1], e.sides[0], e.sides[1]});
    }
    return edges;
}

// The edge table as it is defined: every edge made so far is looked at, from the first.
static std::vector<EdgeFields> SearchEdges(const Shape& shape)
{
    std::vector<EdgeFields> edges;
    for (int s = 0; s < shape.sidenumber; s++) {
        for (int k = 0; k < shape.sides[s].trianglenumber; k++) {
            const int t = shape.sides[s].triangles[k];
            for (int c = 0; c < 3; c++) {
                const int u = shape.triangles[t].points[c];
                const int v = shape.triangles[t].points[(c + 1) % 3];
                const auto single =
                    std::find_if(edges.begin(), edges.end(), [=](const EdgeFields& e) {
                        return e[0] == v && e[1] == u && e[2] == e[3];
                    });
                if (single == edges.end()) {
                    edges.push_back({u, v, t, t, s, s});
                } else {
                    (*single)[3] = t;
                    (*single)[5] = s;
                }
            }
        }
    }
    return edges;
}

static Triple GetTriple(const float* v)
{
    return {v[0], v[1], v[2]};
}

// The normal of one corner of one triangle, as the shape has it.
static Triple GetCornerNormal(const Shape& shape, int triangle, int corner)
{
    return GetTriple(shape.normals[shape.triangles[triangle].normals[corner]]);
}

static Triple Normalise(double x, double y, double z)
{
    const double length = std::sqrt(x * x + y * y + z * z);
    return {float(x / length), float(y / length), float(z / length)};
}

// A corner of a triangle: the triangle, its side, and which of the three it is.
struct Corner {
    int triangle, side, slot;
};

static std::vector<std::vector<Corner>> ListCorners(const Shape& shape)
{
    std::vector<std::vector<Corner>> corners(std::size_t(shape.pointnumber));
    for (int s = 0; s < shape.sidenumber; s++) {
        for (int k = 0; k < shape.sides[s].trianglenumber; k++) {
            const int t = shape.sides[s].triangles[k];
            for (int c = 0; c < 3; c++) {
                corners[std::size_t(shape.triangles[t].points[c])].push_back({t, s, c});
            }
        }
    }
    return corners;
}

static std::vector<int> ListFlags(const Shape& shape)
{
    std::vector<int> flags(std::size_t(shape.pointnumber), 0);
    if (shape.sidenumber <= 1) {
        return flags;
    }
    const std::set<int> vertexes(shape.vertexes, shape.vertexes + shape.vertexnumber);
    for (int vertex : vertexes) {
        flags[std::size_t(vertex)] |= 1;
    }
    for (int i = 0; i < shape.stripenumber; i++) {
        const Stripe& stripe = shape.stripes[i];
        const int count = stripe.pointnumber;
        for (int k = 0; k < count; k++) {
            const int p = stripe.points[k];
            if (vertexes.count(p) == 0) {
                continue;
            }
            const bool inner = k > 0 && k < count - 1;
            const bool crease = inner && vertexes.count(stripe.points[k - 1]) != 0 &&
                                vertexes.count(stripe.points[k + 1]) != 0;
            flags[std::size_t(p)] |= crease ? 2 : 4;
        }
    }
    return flags;
}

static Triple SumNormals(const Shape& shape, const std::vector<Corner>& corners)
{
    double sum[3] = {0, 0, 0};
    for (const Corner& corner : corners) {
        for (int i = 0; i < 3; i++) {
            sum[i] += shape.trianglenormals[corner.triangle][i];
        }
    }
    return Normalise(sum[0], sum[1], sum[2]);
}

// The shading normals as they are defined, and the index of every corner's normal.
struct Shading {
    std::vector<Triple> normals;
    std::map<std::pair<int, int>, int> indices; // by triangle and corner
};

static void ShadeCrease(Shading& shading, const Shape& shape, const std::vector<Corner>& corners)
{
    std::array<std::vector<Corner>, 2> groups;
    for (const Corner& corner : corners) {
        const std::size_t group = corner.side == corners[0].side ? 0 : 1;
        groups[group].push_back(corner);
        shading.indices[{corner.triangle, corner.slot}] = int(shading.normals.size()) + int(group);
    }
    shading.normals.push_back(SumNormals(shape, groups[0]));
    shading.normals.push_back(SumNormals(shape, groups[1]));
}

static Shading ShadeByDefinition(const Shape& shape)
{
    Shading shading;
    const std::vector<int> flags = ListFlags(shape);
    const std::vector<std::vector<Corner>> corners = ListCorners(shape);
    for (std::size_t p = 0; p < corners.size(); p++) {
        if ((flags[p] & 2) != 0) {
            ShadeCrease(shading, shape, corners[p]);
        } else if (flags[p] != 0) {
            for (const Corner& corner : corners[p]) {
                shading.indices[{corner.triangle, corner.slot}] = int(shading.normals.size());
                shading.normals.push_back(GetTriple(shape.trianglenormals[corner.triangle]));
            }
        } else {
            for (const Corner& corner : corners[p]) {
                shading.indices[{corner.triangle, corner.slot}] = int(shading.normals.size());
            }
            const Triple sum = SumNormals(shape, corners[p]);
            shading.normals.push_back(std::isnan(sum[0]) ? Triple{1, 1, 1} : sum);
        }
    }
    return shading;
}

// Bit by bit, so that a NaN equals itself and zeros differ by their sign.
static bool AreAlike(const Triple& a, const Triple& b)
{
    for (std::size_t i = 0; i < 3; i++) {
        const bool nans = std::isnan(a[i]) && std::isnan(b[i]);
        if (!nans && std::bit_cast<unsigned>(a[i]) != std::bit_cast<unsigned>(b[i])) {
            return false;
        }
    }
    return true;
}

static void ExpectAsDefined(const Shape& shape)
{
    EXPECT_EQ(GetEdges(shape), SearchEdges(shape));
    const Shading shading = ShadeByDefinition(shape);
    ASSERT_EQ(shape.normalnumber, int(shading.normals.size()));
    for (int i = 0; i < shape.normalnumber; i++) {
        EXPECT_TRUE(AreAlike(GetTriple(shape.normals[i]), shading.normals[std::size_t(i)])) << i;
    }
    for (const auto& [corner, index] : shading.indices) {
        EXPECT_EQ(shape.triangles[corner.first].normals[corner.second], index);
    }
}

TEST(SetNormalsOfShape, GivesATetrahedronOneEdgeForEveryTwoTriangles)
{
    // sides {0, 2, 1}, {0, 1, 3}, {0, 3, 2}, {1, 2, 3}: each is one triangle
    const OwnedShape body = Tetrahedron();
    const std::vector<EdgeFields> expected = {{0, 2, 0, 2, 0, 2}, {2, 1, 0, 3, 0, 3},
                                              {1, 0, 0, 1, 0, 1}, {1, 3, 1, 3, 1, 3},
                                              {3, 0, 1, 2, 1, 2}, {3, 2, 2, 3, 2, 3}};
    EXPECT_EQ(GetEdges(*body), expected);
    EXPECT_EQ(body->edgenumber, 3 * body->trianglenumber / 2);
}

TEST(SetNormalsOfShape, LeavesTheBorderEdgesOfAOneSidedShapeSingle)
{
    // cut as (3, 0, 1) and (1, 2, 3): the first triangle walks 1-3, the second walks it back
    const OwnedShape square = Square();
    const std::vector<EdgeFields> expected = {{3, 0, 0, 0, 0, 0},
                                              {0, 1, 0, 0, 0, 0},
                                              {1, 3, 0, 1, 0, 0},
                                              {1, 2, 1, 1, 0, 0},
                                              {2, 3, 1, 1, 0, 0}};
    EXPECT_EQ(GetEdges(*square), expected);
    EXPECT_EQ(square->edgenumber, (3 * 2 + 5) / 2); // its stripe has five points
}

TEST(SetNormalsOfShape, GivesTwoTrianglesThatWalkAnEdgeTheSameWayTwoEdges)
{
    const OwnedShape fins =
        MakeShape({{0, 0, 0}, {0, 0, 1}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}, {0, 1, 3}});
    const std::vector<EdgeFields> expected = {{0, 1, 0, 0, 0, 0}, {1, 2, 0, 0, 0, 0},
                                              {2, 0, 0, 0, 0, 0}, {0, 1, 1, 1, 1, 1},
                                              {1, 3, 1, 1, 1, 1}, {3, 0, 1, 1, 1, 1}};
    EXPECT_EQ(GetEdges(*fins), expected);
}

TEST(SetNormalsOfShape, MatchesTheEarliestOfSeveralSingleEdges)
{
    // two fins walk 0-1, then two walk it back
    const OwnedShape book =
        MakeShape({{0, 0, 0}, {0, 0, 1}, {1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}},
                  {{0, 1, 2}, {0, 1, 3}, {1, 0, 4}, {1, 0, 5}});
    EXPECT_EQ(GetEdges(*book)[0], (EdgeFields{0, 1, 0, 2, 0, 2}));
    EXPECT_EQ(GetEdges(*book)[3], (EdgeFields{0, 1, 1, 3, 1, 3}));
    EXPECT_EQ(book->edgenumber, 10); // more than the six of a closed shape
}

TEST(SetNormalsOfShape, GivesADegenerateTriangleTheXDirection)
{
    const OwnedShape line = MakeFlatShape({{1, 1, 1}, {2, 2, 2}, {3, 3, 3}});
    EXPECT_EQ(GetTriple(line->trianglenormals[0]), (Triple{1, 0, 0}));
    SetTriangleNormalsOfShape(line.get());
    EXPECT_EQ(GetTriple(line->trianglenormals[0]), (Triple{0, 0, 0}));
}

TEST(SetNormalsOfShape, SharesOneNormalAtASmoothPoint)
{
    const OwnedShape cube = Cube();
    EXPECT_EQ(cube->normalnumber, 8);
    // Corner 6 lies on sides +z, +y and +x. The number of triangles that each side has there
    // depends on where it was cut, so all three components are positive and that is all.
    for (int i = 0; i < 3; i++) {
        EXPECT_GT(cube->normals[6][i], 0);
    }
    ExpectAsDefined(*cube);
}

TEST(SetNormalsOfShape, ShadesTheLooseVertexesOfATetrahedronFlat)
{
    const OwnedShape body = Tetrahedron();
    SetVertexes(body.get(), {0, 1, 2, 3});
    SetNormalsOfShape(body.get());
    EXPECT_EQ(body->normalnumber, 12);
    for (int t = 0; t < 4; t++) {
        for (int c = 0; c < 3; c++) {
            EXPECT_EQ(GetCornerNormal(*body, t, c), GetTriple(body->trianglenormals[t]));
        }
    }
}

// A cube whose upper side is cut along the chain 4, 8, 9, 6 of inner points.
static OwnedShape CutCube()
{
    constexpr float h = 0.5F;
    return MakeShape({{-h, -h, -h},
                      {h, -h, -h},
                      {h, h, -h},
                      {-h, h, -h},
                      {-h, -h, h},
                      {h, -h, h},
                      {h, h, h},
                      {-h, h, h},
                      {0, -0.1F, 0.7F},
                      {0.1F, 0, 0.8F}},
                     {{0, 3, 2, 1},
                      {4, 5, 6, 9, 8},
                      {6, 7, 4, 8, 9},
                      {0, 1, 5, 4},
                      {3, 7, 6, 2},
                      {0, 4, 7, 3},
                      {1, 2, 6, 5}});
}

TEST(SetNormalsOfShape, SplitsTheNormalsAlongAChainOfVertexes)
{
    const OwnedShape cube = CutCube();
    SetVertexes(cube.get(), {4, 6, 8, 9});
    SetNormalsOfShape(cube.get());
    // 8 and 9 are creases with two normals, 4 and 6 are ends of stripes with one for every corner
    int corners = 0;
    for (int t = 0; t < cube->trianglenumber; t++) {
        for (int point : cube->triangles[t].points) {
            corners += point == 4 || point == 6 ? 1 : 0;
        }
    }
    EXPECT_EQ(cube->normalnumber, 6 + 2 + 2 + corners);
    ExpectAsDefined(*cube);
}

TEST(SetNormalsOfShape, MakesAVertexWithAnUnmarkedNeighbourACorner)
{
    const OwnedShape cube = CutCube();
    SetVertexes(cube.get(), {8, 9}); // 4 and 6, their neighbours in the chain, are none
    SetNormalsOfShape(cube.get());
    int corners = 0;
    for (int t = 0; t < cube->trianglenumber; t++) {
        for (int point : cube->triangles[t].points) {
            corners += point == 8 || point == 9 ? 1 : 0;
        }
    }
    EXPECT_EQ(cube->normalnumber, 8 + corners);
    ExpectAsDefined(*cube);
}

TEST(SetNormalsOfShape, NeverSplitsTheNormalsOfAOneSidedShape)
{
    const OwnedShape square = Square();
    SetVertexes(square.get(), {0, 1, 2, 3});
    SetNormalsOfShape(square.get());
    EXPECT_EQ(square->normalnumber, 4);
    EXPECT_EQ(GetCornerNormal(*square, 1, 0), (Triple{0, 0, 1}));
}

TEST(SetNormalsOfShape, GivesAPointWithoutATriangleOneNormalUnlessItIsAVertex)
{
    const Points points = {{1, 1, 1}, {-1, -1, 1}, {-1, 1, -1}, {1, -1, -1}, {5, 5, 5}};
    const OwnedShape body = MakeShape(points, {{0, 2, 1}, {0, 1, 3}, {0, 3, 2}, {1, 2, 3}});
    EXPECT_EQ(body->normalnumber, 5);
    EXPECT_EQ(GetTriple(body->normals[4]), (Triple{1, 1, 1}));
    SetVertexes(body.get(), {4});
    SetNormalsOfShape(body.get());
    EXPECT_EQ(body->normalnumber, 4);
}

TEST(SetNormalsOfShape, GivesOppositeTrianglesTheUnnormalisedFallback)
{
    // the two sides lie back to back, so the normals at every point add up to zero
    const OwnedShape leaf = MakeShape({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}, {2, 1, 0}});
    for (int i = 0; i < 3; i++) {
        EXPECT_EQ(GetTriple(leaf->normals[i]), (Triple{1, 1, 1}));
    }
}

TEST(SetNormalsOfShape, LeavesACreaseWhoseSecondGroupIsEmptyWithoutANumber)
{
    // point 8 is an inner point of the chain of side 0 alone once side 1 no longer uses it
    const OwnedShape cube = CutCube();
    SetVertexes(cube.get(), {4, 6, 8, 9});
    for (int t = 0; t < cube->trianglenumber; t++) {
        for (int& point : cube->triangles[t].points) {
            const bool ofsecond =
                t >= cube->sides[2].triangles[0] && t < cube->sides[3].triangles[0];
            point = ofsecond && point == 8 ? 7 : point;
        }
    }
    SetNormalsOfShape(cube.get());
    ExpectAsDefined(*cube);
    int nans = 0;
    for (int i = 0; i < cube->normalnumber; i++) {
        nans += CheckNan(cube->normals[i][0]);
    }
    EXPECT_EQ(nans, 1);
}

TEST(SetNormalsOfShape, KeepsAnEdgeSingleThatOneTriangleWalksThereAndBack)
{
    // triangle 0 walks 0-0, then 0-1, then 1-0, which meets its own 0-1; so triangle 1 meets it
    // again
    const OwnedShape folded = MakeShape({{1, 1, 1}, {2, 1, 1}, {1, 2, 1}}, {{0, 0, 1}, {1, 0, 2}});
    const std::vector<EdgeFields> expected = {
        {0, 0, 0, 0, 0, 0}, {0, 1, 0, 1, 0, 1}, {0, 2, 1, 1, 1, 1}, {2, 1, 1, 1, 1, 1}};
    EXPECT_EQ(GetEdges(*folded), expected);
}

// Sides of three to six corners drawn from few points: duplicates, contradictions, edges with many
// triangles. Some points are vertexes.
static OwnedShape MakeTangle(std::mt19937& random, int pointnumber, int sidenumber)
{
    const auto draw = [&random](int n) { return int(random() % unsigned(n)); };
    Points points;
    for (int i = 0; i < pointnumber; i++) {
        points.push_back({float(draw(5)), float(draw(5)), float(draw(5))});
    }
    Outlines sides;
    for (int i = 0; i < sidenumber; i++) {
        std::vector<int> outline(std::size_t(3 + draw(4)));
        for (int& point : outline) {
            point = draw(pointnumber);
        }
        sides.push_back(outline);
    }
    OwnedShape shape = MakeShape(points, sides);
    std::vector<int> vertexes;
    for (int i = 0; i < pointnumber; i++) {
        if (draw(3) != 0) {
            vertexes.push_back(i);
        }
    }
    SetVertexes(shape.get(), vertexes);
    return shape;
}

TEST(SetNormalsOfShape, DoesWhatTheDefinitionSaysWithAnyTangleOfSides)
{
    std::mt19937 random(1);
    for (int round = 0; round < 300; round++) {
        SCOPED_TRACE(round);
        const OwnedShape tangle =
            MakeTangle(random, 3 + int(random() % 10), 1 + int(random() % 30));
        SetNormalsOfShape(tangle.get());
        ExpectAsDefined(*tangle);
    }
}

TEST(SetNormalsOfShape, CanBeRunAgainOnItsOwnResult)
{
    const OwnedShape cube = CutCube();
    SetVertexes(cube.get(), {4, 6, 8, 9});
    SetNormalsOfShape(cube.get());
    SetVertexes(cube.get(), {});
    SetNormalsOfShape(cube.get()); // fewer normals than before
    EXPECT_EQ(cube->normalnumber, 10);
    ExpectAsDefined(*cube);
    EXPECT_EQ(FindBrokenRuleOfShape(*cube), "");
}

TEST(SetNormalsOfShape, FindsTheSpokesOfAFanAmongThousandsOfAlikeTriangles)
{
    // The same triangle again and again, and as many round one point, shuffled: every list of edges
    // that is searched from its start would be long here.
    constexpr int number = 10000;
    Points points = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    Outlines sides(number, {0, 1, 2});
    for (int i = 0; i < number; i++) {
        const double angle = 2 * 3.14159265358979 * i / number;
        points.push_back({float(std::cos(angle)), float(std::sin(angle)), 1});
        sides.push_back({0, 3 + i, 3 + (i + 1) % number});
    }
    std::shuffle(sides.begin(), sides.end(), std::mt19937(2));
    const OwnedShape shape = MakeShape(points, sides);
    // of the fan every spoke is shared; of the copies nothing is
    EXPECT_EQ(shape->edgenumber, 3 * number + 2 * number);
}

} // namespace korvane::testing
