#include "view/sidelook.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "tests/support/shapes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace korvane
{

using namespace korvane::testing;
using ::testing::FloatNear;
using ::testing::Pointwise;

static constexpr float tolerance = 1e-6F;

TEST(IsSideOpaque, AddsLightAndShadowAlphaOfTheFront)
{
    Side side = {};
    side.colors[FRONT_LIGHT + 3] = 0.5F;
    side.colors[FRONT_SHADOW + 3] = 0.4876F; // together 0.9876, below 0.987654321
    side.colors[BACK_LIGHT + 3] = 1;         // the back does not count
    EXPECT_FALSE(IsSideOpaque(&side));
    side.colors[FRONT_SHADOW + 3] = 0.4877F;
    EXPECT_TRUE(IsSideOpaque(&side));
}

TEST(IsTriangleShown, FollowsVisibilityAndFacing)
{
    const float towards[3] = {0, 0, 0.1F};
    const float away[3] = {0, 0, -0.1F};
    const float edgeon[3] = {1, 0, 0};
    EXPECT_TRUE(IsTriangleShown(VISIBLE_BOTH, towards));
    EXPECT_TRUE(IsTriangleShown(VISIBLE_BOTH, away));
    EXPECT_TRUE(IsTriangleShown(VISIBLE_BOTH, edgeon));
    EXPECT_TRUE(IsTriangleShown(VISIBLE_FRONT, towards));
    EXPECT_FALSE(IsTriangleShown(VISIBLE_FRONT, away));
    EXPECT_FALSE(IsTriangleShown(VISIBLE_FRONT, edgeon));
    EXPECT_FALSE(IsTriangleShown(VISIBLE_BACK, towards));
    EXPECT_TRUE(IsTriangleShown(VISIBLE_BACK, away));
    EXPECT_FALSE(IsTriangleShown(VISIBLE_BACK, edgeon));
    EXPECT_FALSE(IsTriangleShown(VISIBLE_NOT, towards));
    EXPECT_FALSE(IsTriangleShown(VISIBLE_NOT, away));
}

// A side whose four colours differ in every component.
static Side MakeColorfulSide()
{
    Side side = {};
    for (int i = 0; i < colornumber; i++) {
        side.colors[i] = float(i) / colornumber;
    }
    return side;
}

TEST(IsBackLikeFront, ComparesBothColorsAndTheAcuity)
{
    for (const int place :
         {int(FRONT_LIGHT), FRONT_LIGHT + 3, int(FRONT_SHADOW), int(FRONT_ACUITY)}) {
        Side side = {};
        EXPECT_TRUE(IsBackLikeFront(side.colors));
        side.colors[place] = 0.5F;
        EXPECT_FALSE(IsBackLikeFront(side.colors)) << place;
        side.colors[BACK_LIGHT + place] = 0.5F; // the back set is laid out like the front set
        EXPECT_TRUE(IsBackLikeFront(side.colors)) << place;
    }
}

TEST(GetColorOfTriangle, IsTheFrontLightColorFacingTheLight)
{
    const Side side = MakeColorfulSide();
    const auto a = float(1 / std::sqrt(3.0));
    const float normal[3] = {-a, a, a}; // the light's own direction: angle 0, t = 1
    EXPECT_THAT(GetColorOfTriangle(&side, normal),
                Pointwise(FloatNear(1e-3F), Rgba{0, 1 / 18.0F, 2 / 18.0F, 3 / 18.0F}));
}

TEST(GetColorOfTriangle, BlendsByTheAngleToTheLight)
{
    const Side side = MakeColorfulSide();
    const float normal[3] = {0, 0, 1}; // the cosine is 1 / sqrt 3
    const double t = 1 - std::acos(1 / std::sqrt(3.0)) / std::numbers::pi;
    // shadow components are those of the light + 4/18, so each is light + (1 - t) 4/18
    const auto more = float((1 - t) * 4 / 18);
    EXPECT_THAT(GetColorOfTriangle(&side, normal),
                Pointwise(FloatNear(tolerance),
                          Rgba{more, 1 / 18.0F + more, 2 / 18.0F + more, 3 / 18.0F + more}));
}

TEST(GetColorOfTriangle, TakesTheBackColorsWhereTheBackIsSeen)
{
    const Side side = MakeColorfulSide();
    const float normal[3] = {0, 0, -1};
    const double t =
        std::acos(-1 / std::sqrt(3.0)) / std::numbers::pi; // not 1 - t: it is turned over
    const auto more = float((1 - t) * 4 / 18);
    EXPECT_THAT(GetColorOfTriangle(&side, normal),
                Pointwise(FloatNear(tolerance), Rgba{9 / 18.0F + more, 10 / 18.0F + more,
                                                     11 / 18.0F + more, 12 / 18.0F + more}));
}

TEST(GetColorOfTriangle, CountsAnEdgeOnTriangleAsBack)
{
    const Side side = MakeColorfulSide();
    const float normal[3] = {0, 1, 0}; // z is 0; the angle is that of the cosine 1 / sqrt 3
    const double t = std::acos(1 / std::sqrt(3.0)) / std::numbers::pi;
    EXPECT_NEAR(GetColorOfTriangle(&side, normal)[0], (9 + (1 - t) * 4) / 18, 1e-6);
}

// Two triangles that share the edge from (0, -1) to (0, 1) at depth 0: the first reaches to (x1, 0,
// z1), the second to (x2, 0, z2). Facing is given, not computed, so that each case can be set
// alone.
class EdgeLook : public ::testing::Test
{
protected:
    void Make(float x1, float z1, float x2, float z2)
    {
        shape =
            MakeRawShape({{0, -1, 0}, {0, 1, 0}, {x1, 0, z1}, {x2, 0, z2}}, {{0, 1, 2}, {1, 0, 3}});
        shape->triangles[0] = {{0, 1, 2}, {}, shape.get()};
        shape->triangles[1] = {{1, 0, 3}, {}, shape.get()};
        shape->sides[1].triangles[0] = 1;
        shape->trianglenormals = NewArray<float[3]>(2);
        Face(1, 1);
    }

    void Face(float firstz, float secondz)
    {
        shape->trianglenormals[0][2] = firstz;
        shape->trianglenormals[1][2] = secondz;
    }

    int GetFront() const
    {
        return GetFrontOfEdge(shape.get(), &edge);
    }

    bool IsSmoothed() const
    {
        return IsEdgeSmoothed(shape.get(), &edge);
    }

    OwnedShape shape;
    Edge edge = {{0, 1}, {0, 1}, {0, 1}};
};

TEST_F(EdgeLook, IsSmoothedAtABorder)
{
    Make(-1, 0, 1, 0);
    edge.triangles[1] = 0;
    edge.sides[1] = 0;
    EXPECT_TRUE(IsSmoothed());
}

TEST_F(EdgeLook, IsSmoothedAtASilhouette)
{
    Make(-1, 0, 1, 0);
    Face(0.1F, -0.1F);
    EXPECT_TRUE(IsSmoothed());
    Face(-0.1F, 0.1F);
    EXPECT_TRUE(IsSmoothed());
    Face(0, -0.1F); // edge-on faces neither way
    EXPECT_FALSE(IsSmoothed());
}

TEST_F(EdgeLook, IsSmoothedWhereTheColorsDiffer)
{
    Make(-1, 0, 1, 0);
    EXPECT_FALSE(IsSmoothed());
    shape->sides[1].colors[BACK_ACUITY] = 0.5F;
    EXPECT_TRUE(IsSmoothed());
}

TEST_F(EdgeLook, HasTheShownSideInFront)
{
    Make(-1, 0, 1, 0);
    shape->sides[0].visibility = VISIBLE_NOT;
    EXPECT_EQ(GetFront(), 1);
    shape->sides[0].visibility = VISIBLE_BOTH;
    shape->sides[1].visibility = VISIBLE_NOT;
    EXPECT_EQ(GetFront(), 0);
}

TEST_F(EdgeLook, HasNoSideInFrontWhereNoneIsShown)
{
    Make(-1, 0, 1, 0);
    shape->sides[0].visibility = VISIBLE_NOT;
    shape->sides[1].visibility = VISIBLE_BACK; // and it faces the viewer
    EXPECT_EQ(GetFront(), -1);
}

TEST_F(EdgeLook, PassesOverASideWhoseVisibilityExcludesItsFacing)
{
    Make(-1, 0, 1, 0);
    Face(-0.5F, 0.5F);
    shape->sides[0].visibility = VISIBLE_FRONT;
    EXPECT_EQ(GetFront(), 1);
    Face(0.5F, -0.5F);
    shape->sides[0].visibility = VISIBLE_BACK;
    EXPECT_EQ(GetFront(), 1);
    shape->sides[0].visibility = VISIBLE_BOTH;
    shape->sides[1].visibility = VISIBLE_FRONT;
    EXPECT_EQ(GetFront(), 0);
}

TEST_F(EdgeLook, PrefersTheLargerFrontLightAlpha)
{
    Make(-1, 0, 1, 0);
    Face(0.5F, 0.6F); // the normals alone would choose the second
    shape->sides[0].colors[FRONT_LIGHT + 3] = 0.9F;
    shape->sides[1].colors[FRONT_LIGHT + 3] = 0.8F;
    EXPECT_EQ(GetFront(), 0);
    shape->sides[1].colors[FRONT_LIGHT + 3] = 1;
    EXPECT_EQ(GetFront(), 1);
}

TEST_F(EdgeLook, CountsAlphasWithinATinyToleranceAsEqual)
{
    Make(-1, 0, 1, 0);
    Face(0.6F, 0.5F);
    shape->sides[0].colors[FRONT_LIGHT + 3] = 0.9F;
    shape->sides[1].colors[FRONT_LIGHT + 3] = 0.900005F; // 5e-6 more: the normals decide
    EXPECT_EQ(GetFront(), 0);
    shape->sides[1].colors[FRONT_LIGHT + 3] = 0.90002F; // 2e-5 more
    EXPECT_EQ(GetFront(), 1);
}

TEST_F(EdgeLook, PrefersTheTriangleThatIsNearerBesideTheEdge)
{
    Make(1, 0.5F, 1, -0.5F); // both to the right of the edge, the first rising to the viewer
    Face(0.1F, 0.9F);        // the normals alone would choose the second
    EXPECT_EQ(GetFront(), 0);
    Make(-1, -0.5F, -1, 0.5F); // to the left, the second rising
    Face(0.9F, 0.1F);
    EXPECT_EQ(GetFront(), 1);
}

TEST_F(EdgeLook, ProbesAcrossAnEdgeThatRunsMainlyAlongX)
{
    shape =
        MakeRawShape({{-1, 0, 0}, {1, 0, 0}, {0, 1, -0.5F}, {0, 1, 0.5F}}, {{0, 1, 2}, {1, 0, 3}});
    shape->triangles[0] = {{0, 1, 2}, {}, shape.get()};
    shape->triangles[1] = {{1, 0, 3}, {}, shape.get()};
    shape->trianglenormals = NewArray<float[3]>(2);
    Face(0.9F, 0.1F);
    EXPECT_EQ(GetFront(), 1);
}

TEST_F(EdgeLook, AsksTheNormalsLast)
{
    Make(-1, 0, 1, 0); // one on either side: nowhere do both lie under a probe
    Face(0.5F, 0.6F);
    EXPECT_EQ(GetFront(), 1);
    Face(0.6F, 0.5F);
    EXPECT_EQ(GetFront(), 0);
    Face(0.5F, 0.5F); // equal: the first
    EXPECT_EQ(GetFront(), 0);
}

} // namespace korvane
