#include "geometry/creases.h"

#include "scene/arrays.h"
#include "scene/model.h"
#include "tests/support/shapes.h"

#include <gtest/gtest.h>

#include <vector>

namespace korvane
{

using testing::MakeRawShape;
using testing::SetVertexes;

using Indices = std::vector<int>;
using Pair = std::array<int, 2>;

constexpr int plain = 0;
constexpr int vertex = FLAG_VERTEX;
constexpr int border = FLAG_CREASE;
constexpr int crease = FLAG_VERTEX | FLAG_CREASE;
constexpr int corner = FLAG_VERTEX | FLAG_CORNER;

static Indices FlagsOf(const Creases& creases)
{
    return {creases.flags.begin(), creases.flags.end()};
}

// Only what creases are told by: points, sides by number, stripes and vertexes.
static OwnedShape MakeLines(int pointnumber, int sidenumber, const std::vector<Indices>& stripes,
                            const Indices& vertexes)
{
    OwnedShape shape = MakeRawShape(testing::Points(std::size_t(pointnumber)), {});
    FreeArray(shape->sides);
    shape->sidenumber = sidenumber;
    shape->sides = NewArray<Side>(sidenumber);
    shape->stripenumber = int(stripes.size());
    shape->stripes = NewArray<Stripe>(shape->stripenumber);
    for (int i = 0; i < shape->stripenumber; i++) {
        const Indices& points = stripes[std::size_t(i)];
        const int number = int(points.size());
        shape->stripes[i] = {number, CopyArray(points.data(), number), shape.get()};
    }
    SetVertexes(shape.get(), vertexes);
    return shape;
}

// Three chains from pole 0 to pole 1, like the seams of a melon: 2 3 4, 5 6 7 and 8 9 10.
static OwnedShape MakeMelon(const Indices& vertexes)
{
    return MakeLines(11, 3, {{0, 2, 3, 4, 1}, {0, 5, 6, 7, 1}, {0, 8, 9, 10, 1}}, vertexes);
}

// One side with the closed border 0 1 2 3.
static OwnedShape MakeSheet(const Indices& vertexes)
{
    return MakeLines(4, 1, {{0, 1, 2, 3, 0}}, vertexes);
}

TEST(GetCreases, LeavesPointsWithoutVertexesPlain)
{
    EXPECT_EQ(FlagsOf(GetCreases(MakeMelon({}).get())), Indices(11, plain));
}

TEST(GetCreases, MakesAVertexBetweenTwoVertexesACreaseAndTheOuterOnesCorners)
{
    const Creases creases = GetCreases(MakeMelon({2, 3, 4}).get());
    EXPECT_EQ(FlagsOf(creases), Indices({plain, plain, corner, crease, corner, plain, plain, plain,
                                         plain, plain, plain}));
    EXPECT_EQ(creases.neighbours[3], (Pair{2, 4}));
    EXPECT_EQ(creases.neighbours[2], (Pair{0, 0})); // none
}

TEST(GetCreases, EndsACreaseInACornerWhereOneStripeIsMarked)
{
    const Creases creases = GetCreases(MakeMelon({0, 2, 3, 4, 1}).get());
    EXPECT_EQ(FlagsOf(creases), Indices({corner, corner, crease, crease, crease, plain, plain,
                                         plain, plain, plain, plain}));
    EXPECT_EQ(creases.neighbours[2], (Pair{0, 3}));
    EXPECT_EQ(creases.neighbours[4], (Pair{3, 1}));
}

TEST(GetCreases, LeadsACreaseThroughAnEndWhereTwoStripesAreMarked)
{
    // Pole 0 finds 2 at the first and 8 at the third stripe, pole 1 only 4.
    const Creases creases = GetCreases(MakeMelon({0, 1, 2, 3, 4, 8}).get());
    EXPECT_EQ(FlagsOf(creases), Indices({crease, corner, crease, crease, crease, plain, plain,
                                         plain, corner, plain, plain}));
    EXPECT_EQ(creases.neighbours[0], (Pair{2, 8}));
}

TEST(GetCreases, MakesAnEndWithThreeMarkedStripesACorner)
{
    EXPECT_EQ(GetCreases(MakeMelon({0, 2, 5, 8}).get()).flags[0], corner);
}

TEST(GetCreases, MakesAnEndWithoutMarkedNeighboursACorner)
{
    EXPECT_EQ(GetCreases(MakeMelon({1}).get()).flags[1], corner);
}

TEST(GetCreases, FindsNeighboursOfAnEndInTheOrderOfStripes)
{
    // Point 0 ends the first stripe, whose last but one is 3, and starts the second with 4.
    const Creases creases = GetCreases(MakeLines(6, 2, {{5, 3, 0}, {0, 4, 5}}, {0, 3, 4}).get());
    EXPECT_EQ(creases.flags[0], crease);
    EXPECT_EQ(creases.neighbours[0], (Pair{3, 4}));
}

TEST(GetCreases, CountsAStripeOfTwoPointsAtBothItsEnds)
{
    const Creases creases = GetCreases(MakeLines(3, 2, {{0, 1}, {1, 2}}, {0, 1, 2}).get());
    EXPECT_EQ(FlagsOf(creases), Indices({corner, crease, corner}));
    EXPECT_EQ(creases.neighbours[1], (Pair{0, 2}));
}

TEST(GetCreases, GoesRoundAClosedStripe)
{
    const Creases creases = GetCreases(MakeLines(3, 2, {{0, 1, 2, 0}}, {0, 1, 2}).get());
    EXPECT_EQ(FlagsOf(creases), Indices({crease, crease, crease}));
    EXPECT_EQ(creases.neighbours[0], (Pair{1, 2}));
    EXPECT_EQ(creases.neighbours[1], (Pair{0, 2}));
    EXPECT_EQ(creases.neighbours[2], (Pair{1, 0}));
}

TEST(GetCreases, JudgesAnEndOnceUnlessTheShapeIsOneSided)
{
    // Inside the first stripe 0 is a crease; as an end of the second it would find one neighbour.
    const std::vector<Indices> stripes = {{1, 0, 2}, {0, 3}};
    const Indices vertexes = {0, 1, 2};
    EXPECT_EQ(GetCreases(MakeLines(4, 2, stripes, vertexes).get()).flags[0], crease);
    EXPECT_EQ(GetCreases(MakeLines(4, 1, stripes, vertexes).get()).flags[0], crease | corner);
}

TEST(GetCreases, LetsALastPointThatIsClassifiedBeAlsoInAOneSidedShape)
{
    const std::vector<Indices> stripes = {{1, 0, 2}, {3, 0}};
    EXPECT_EQ(GetCreases(MakeLines(4, 1, stripes, {0, 1, 2}).get()).flags[0], crease);
}

TEST(GetCreases, AddsACornerToACreaseOfAnotherStripe)
{
    const std::vector<Indices> stripes = {{1, 0, 2}, {3, 0, 1}};
    EXPECT_EQ(GetCreases(MakeLines(4, 2, stripes, {0, 1, 2}).get()).flags[0], crease | corner);
}

TEST(GetCreases, LeavesAVertexOnNoStripeToItself)
{
    const Creases creases = GetCreases(MakeLines(4, 2, {{0, 1}}, {3}).get());
    EXPECT_EQ(FlagsOf(creases), Indices({plain, plain, plain, vertex}));
    EXPECT_EQ(creases.neighbours[3], (Pair{0, 0}));
}

TEST(GetCreases, MakesTheBorderOfAOneSidedShapeACrease)
{
    const Creases creases = GetCreases(MakeSheet({}).get());
    EXPECT_EQ(FlagsOf(creases), Indices({border, border, border, border}));
    EXPECT_EQ(creases.neighbours[0], (Pair{3, 1}));
    EXPECT_EQ(creases.neighbours[1], (Pair{0, 2}));
    EXPECT_EQ(creases.neighbours[3], (Pair{2, 0}));
}

TEST(GetCreases, MakesALoneVertexOnABorderACorner)
{
    EXPECT_EQ(FlagsOf(GetCreases(MakeSheet({0}).get())),
              Indices({corner | border, border, border, border}));
    EXPECT_EQ(FlagsOf(GetCreases(MakeSheet({2}).get())),
              Indices({border, border, corner | border, border}));
}

TEST(GetCreases, LeavesAOneSidedShapeWithoutStripesPlain)
{
    EXPECT_EQ(FlagsOf(GetCreases(MakeLines(3, 1, {}, {}).get())), Indices({plain, plain, plain}));
}

TEST(ClearBorderCrease, LeavesOfABorderWhatTheUserMarked)
{
    const OwnedShape sheet = MakeSheet({0, 1, 2});
    Creases creases = GetCreases(sheet.get());
    EXPECT_EQ(FlagsOf(creases), Indices({corner | border, crease, corner | border, border}));
    ClearBorderCrease(creases, sheet.get());
    EXPECT_EQ(FlagsOf(creases), Indices({corner, vertex, corner, plain}));
}

TEST(ClearBorderCrease, LeavesTheCreasesOfOtherShapes)
{
    const OwnedShape melon = MakeMelon({2, 3, 4});
    Creases creases = GetCreases(melon.get());
    const Indices before = FlagsOf(creases);
    ClearBorderCrease(creases, melon.get());
    EXPECT_EQ(FlagsOf(creases), before);
}

} // namespace korvane
