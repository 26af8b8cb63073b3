#include "geometry/stripes.h"

#include "tests/support/invariants.h"
#include "tests/support/shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace korvane::testing
{

using Chain = std::vector<int>;
using Chains = std::vector<Chain>;

static Chains GetStripes(const Shape& shape)
{
    Chains stripes;
    for (int i = 0; i < shape.stripenumber; i++) {
        const Stripe& stripe = shape.stripes[i];
        EXPECT_EQ(stripe.shape, &shape);
        stripes.emplace_back(stripe.points, stripe.points + stripe.pointnumber);
    }
    return stripes;
}

// The stripes of sides alone: the points' places do not matter.
static Chains GetStripes(int pointnumber, const Outlines& sides)
{
    const OwnedShape shape = MakeRawShape(Points(std::size_t(pointnumber)), sides);
    SetStripesOfShape(shape.get());
    return GetStripes(*shape);
}

TEST(SetStripesOfShape, ClosesTheBorderOfAOneSidedShape)
{
    EXPECT_EQ(GetStripes(4, {{2, 3, 0, 1}}), (Chains{{2, 3, 0, 1, 2}}));
}

TEST(SetStripesOfShape, ClosesTheBorderOfTheSideWhereTheShapeHasFurtherPoints)
{
    EXPECT_EQ(GetStripes(6, {{2, 3, 0, 1}}), (Chains{{2, 3, 0, 1, 2}}));
}

TEST(SetStripesOfShape, GivesABodyItsEdgesInTheOrderOfItsSides)
{
    EXPECT_EQ(GetStripes(4, {{0, 2, 1}, {0, 1, 3}, {0, 3, 2}, {1, 2, 3}}),
              (Chains{{0, 2}, {2, 1}, {1, 0}, {1, 3}, {3, 0}, {3, 2}}));
    EXPECT_EQ(Cube()->stripenumber, 12);
}

TEST(SetStripesOfShape, TellsRunsBetweenTheSameJunctionsApartByTheirSecondPoint)
{
    // a melon of three sides between the poles 0 and 1; 2, 3 and 4 lie on the seams
    EXPECT_EQ(GetStripes(5, {{0, 2, 1, 3}, {3, 1, 4, 0}, {0, 4, 1, 2}}),
              (Chains{{0, 2, 1}, {1, 3, 0}, {1, 4, 0}}));
}

TEST(SetStripesOfShape, WrapsPastTheEndOfAnOutline)
{
    // the first junction of side {2, 1, 3, 0} is at its second position
    EXPECT_EQ(GetStripes(5, {{2, 1, 3, 0}, {3, 1, 4, 0}, {0, 4, 1, 2}}),
              (Chains{{1, 3, 0}, {0, 2, 1}, {1, 4, 0}}));
}

TEST(SetStripesOfShape, TakesTwoRunsForOneWhoseFirstSecondAndLastPointsAgree)
{
    // 0 2 3 1 and 0 2 4 1 differ in a point that is not looked at; 2, 3 and 4 are no junctions, for
    // 2 stands in two outlines
    const Outlines sides = {{0, 2, 3, 1}, {0, 2, 4, 1}, {0, 1, 5}};
    const Chains stripes = GetStripes(6, sides);
    EXPECT_EQ(std::count(stripes.begin(), stripes.end(), Chain({0, 2, 3, 1})), 1);
    EXPECT_EQ(std::count(stripes.begin(), stripes.end(), Chain({0, 2, 4, 1})), 0);
}

TEST(SetStripesOfShape, GoesAllRoundASideWithOneJunction)
{
    EXPECT_EQ(GetStripes(7, {{1, 0, 2}, {0, 3, 4}, {5, 6, 0}}),
              (Chains{{0, 2, 1, 0}, {0, 3, 4, 0}, {0, 5, 6, 0}}));
}

TEST(SetStripesOfShape, ClosesTheOutlineOfASideWithoutJunctionOnce)
{
    const Chain outline = {0, 1, 2, 3, 0};
    EXPECT_EQ(GetStripes(4, {{0, 1, 2, 3}, {0, 1, 2, 3}}), (Chains{outline}));
    EXPECT_EQ(GetStripes(4, {{0, 1, 2, 3}, {3, 2, 1, 0}}), (Chains{outline}));
    EXPECT_EQ(GetStripes(4, {{0, 1, 2, 3}, {2, 3, 0, 1}}), (Chains{outline}));
    EXPECT_EQ(GetStripes(4, {{0, 1, 2, 3}, {1, 0, 3, 2}}), (Chains{outline}));
    // another outline over the same points
    EXPECT_EQ(GetStripes(4, {{0, 1, 2, 3}, {0, 2, 1, 3}}), (Chains{outline, {0, 2, 1, 3, 0}}));
}

TEST(SetStripesOfShape, TellsOutlinesApartThatGoThroughAPointTwice)
{
    // no rotation of 0 1 0 2 or of its reverse is 0 0 1 2
    EXPECT_EQ(GetStripes(6, {{0, 1, 0, 2}, {3, 4, 5}}), (Chains{{0, 1, 0, 2, 0}, {3, 4, 5, 3}}));
    EXPECT_EQ(GetStripes(6, {{0, 0, 1, 1}, {2, 2, 3, 3}}),
              (Chains{{0, 0, 1, 1, 0}, {2, 2, 3, 3, 2}}));
}

TEST(SetStripesOfShape, FreesAndReplacesTheStripesBefore)
{
    const OwnedShape cube = Cube();
    const Chains before = GetStripes(*cube);
    SetStripesOfShape(cube.get());
    EXPECT_EQ(GetStripes(*cube), before);
    EXPECT_EQ(FindBrokenRuleOfShape(*cube), "");
}

static Chain Rotate(Chain chain, std::size_t by)
{
    std::rotate(chain.begin(), chain.begin() + std::ptrdiff_t(by), chain.end());
    return chain;
}

static bool AreSameOutline(const Chain& a, const Chain& b)
{
    if (a.size() != b.size()) {
        return false;
    }
    const Chain back(b.rbegin(), b.rend());
    for (std::size_t i = 0; i < b.size(); i++) {
        if (a == Rotate(b, i) || a == Rotate(back, i)) {
            return true;
        }
    }
    return false;
}

// The stripes as they are defined: every run is compared with all stripes so far.
class Definition
{
public:
    Definition(int pointnumber, const Outlines& outlines) : counts(std::size_t(pointnumber), 0)
    {
        for (const Chain& outline : outlines) {
            for (int point : outline) {
                counts[std::size_t(point)]++;
            }
        }
        for (const Chain& outline : outlines) {
            AddSide(outline);
        }
    }

    Chains stripes;

private:
    void AddSide(const Chain& outline)
    {
        const auto junction = std::find_if(outline.begin(), outline.end(), [this](int point) {
            return counts[std::size_t(point)] > 2;
        });
        if (junction == outline.end()) {
            AddClosed(outline);
            return;
        }
        Chain turned = Rotate(outline, std::size_t(junction - outline.begin()));
        turned.push_back(turned.front());
        Chain run = {turned.front()};
        for (std::size_t i = 1; i < turned.size(); i++) {
            run.push_back(turned[i]);
            if (counts[std::size_t(turned[i])] > 2) {
                AddRun(run);
                run = {turned[i]};
            }
        }
    }

    void AddRun(const Chain& run)
    {
        const Chain back(run.rbegin(), run.rend());
        for (const Chain& stripe : stripes) {
            for (const Chain& way : {run, back}) {
                if (stripe[0] == way[0] && stripe[1] == way[1] && stripe.back() == way.back()) {
                    return;
                }
            }
        }
        stripes.push_back(run);
    }

    void AddClosed(const Chain& outline)
    {
        for (const Chain& other : closed) {
            if (AreSameOutline(outline, other)) {
                return;
            }
        }
        closed.push_back(outline);
        stripes.push_back(outline);
        stripes.back().push_back(outline.front());
    }

    std::vector<int> counts;
    Chains closed;
};

TEST(SetStripesOfShape, DoesWhatTheDefinitionSaysWithAnyTangleOfSides)
{
    std::mt19937 random(1);
    for (int round = 0; round < 2000; round++) {
        const int pointnumber = 3 + int(random() % 30);
        const int alphabet = 1 + int(random() % unsigned(pointnumber));
        Outlines sides(2 + random() % 20);
        for (Chain& side : sides) {
            if (round % 2 == 0 && &side != &sides[0] && random() % 3 == 0) {
                side = sides[random() % unsigned(&side - &sides[0])]; // as a side before
                std::reverse(side.begin(), side.end());
                side = Rotate(side, random() % side.size());
                continue;
            }
            side.resize(3 + random() % 6);
            for (int& point : side) {
                point = int(random() % unsigned(alphabet));
            }
        }
        EXPECT_EQ(GetStripes(pointnumber, sides), Definition(pointnumber, sides).stripes) << round;
    }
}

TEST(SetStripesOfShape, FindsTheSeamsOfAMelonOfThousandsOfSides)
{
    // every seam runs from pole 0 to pole 1 through a point of its own
    constexpr int number = 20000;
    Outlines sides;
    for (int i = 0; i < number; i++) {
        sides.push_back({0, 2 + i, 1, 2 + (i + 1) % number});
    }
    std::shuffle(sides.begin(), sides.end(), std::mt19937(2));
    EXPECT_EQ(GetStripes(number + 2, sides).size(), std::size_t(number));
}

} // namespace korvane::testing
