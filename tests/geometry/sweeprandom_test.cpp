#include "geometry/sweep.h"

#include "geometry/pointremoval.h"
#include "geometry/sidemerge.h"
#include "geometry/stripes.h"
#include "tests/support/chains.h"
#include "tests/support/edits.h"
#include "tests/support/invariants.h"
#include "tests/support/shapes.h"
#include "tests/support/sweeps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

namespace korvane::testing
{

static int GetRandomIndex(int number, std::mt19937& random)
{
    return std::uniform_int_distribution<int>(0, number - 1)(random);
}

// A path of so many points. Half of the paths step along the axes, so that they stand still, turn
// back and run into half turns.
static Points GetRandomPath(const std::array<float, 3>& start, int number, std::mt19937& random)
{
    std::uniform_real_distribution<float> step(-2, 2);
    const bool isalongaxes = GetRandomIndex(2, random) == 0;
    Points path = {start};
    while (int(path.size()) < number) {
        std::array<float, 3> next = path.back();
        if (isalongaxes) {
            next[std::size_t(GetRandomIndex(3, random))] += float(GetRandomIndex(3, random) - 1);
        } else {
            for (float& coordinate : next) {
                coordinate += step(random);
            }
        }
        path.push_back(next);
    }
    return path;
}

static int CountSteps(const Points& path)
{
    int steps = 0;
    for (std::size_t i = 1; i < path.size(); i++) {
        steps += path[i] != path[i - 1] ? 1 : 0;
    }
    return steps;
}

// How often the outlines walk along an edge in one direction, at most.
static int CountWalksOfAnEdge(const Shape& shape)
{
    std::map<std::pair<int, int>, int> walks;
    int most = 0;
    for (const std::vector<int>& outline : OutlinesOf(shape)) {
        int before = outline.back();
        for (const int corner : outline) {
            most = std::max(most, ++walks[{before, corner}]);
            before = corner;
        }
    }
    return most;
}

struct Counts {
    int points, sides, triangles;
    bool operator==(const Counts&) const = default;
};

static Counts CountsOf(const Shape& shape)
{
    return {shape.pointnumber, shape.sidenumber, shape.trianglenumber};
}

static OwnedShape GetRandomFlatShape(std::mt19937& random)
{
    static constexpr std::array makers = {FlatTriangle, Square, ConcaveL, Star};
    const OwnedShape shape = makers[std::size_t(GetRandomIndex(int(makers.size()), random))]();
    const int number = shape->pointnumber;
    return PlaceShape(*shape, {GetRandomIndex(3, random), GetRandomIndex(2, random) == 1,
                               GetRandomIndex(number, random), number});
}

TEST(SweepSide, MakesTubesOfRandomFlatShapes)
{
    std::mt19937 random(1);
    for (int i = 0; i < 1000; i++) {
        SCOPED_TRACE(i);
        const OwnedShape shape = GetRandomFlatShape(random);
        const int m = shape->pointnumber;
        const Points path =
            GetRandomPath(CenterOf(*shape, 0), 2 + GetRandomIndex(5, random), random);
        const int steps = CountSteps(path);
        ASSERT_EQ(SweepOpen(shape, 0, path), steps > 0);
        if (steps > 0) {
            const Counts expected = {(steps + 1) * m, steps * m + 2, 2 * (m - 2) + 2 * steps * m};
            ASSERT_EQ(CountsOf(*shape), expected);
            ASSERT_EQ(CountWalksOfAnEdge(*shape), 1);
        }
        ASSERT_FALSE(HasFailure());
    }
}

TEST(SweepSide, MakesRingsOfRandomFlatShapes)
{
    std::mt19937 random(2);
    for (int i = 0; i < 1000; i++) {
        SCOPED_TRACE(i);
        const OwnedShape shape = GetRandomFlatShape(random);
        const int m = shape->pointnumber;
        Points path = GetRandomPath(CenterOf(*shape, 0), 3 + GetRandomIndex(5, random), random);
        path.push_back(path.front());
        const int steps = CountSteps(path);
        ASSERT_EQ(SweepClosed(shape, 0, path, 0), steps >= 3);
        if (steps >= 3) {
            const Counts expected = {steps * m, steps * m, 2 * steps * m};
            ASSERT_EQ(CountsOf(*shape), expected);
            ASSERT_EQ(CountWalksOfAnEdge(*shape), 1);
        }
        ASSERT_FALSE(HasFailure());
    }
}

static bool DrawRandomSideOut(const OwnedShape& body, std::mt19937& random)
{
    const int side = GetRandomIndex(body->sidenumber, random);
    const int m = body->sides[side].pointnumber;
    const Counts before = CountsOf(*body);
    const Points path = GetRandomPath(CenterOf(*body, side), 2 + GetRandomIndex(4, random), random);
    const int steps = CountSteps(path);
    EXPECT_EQ(SweepOpen(body, side, path), steps > 0);
    const Counts expected = {before.points + steps * m, before.sides + steps * m,
                             before.triangles + 2 * steps * m};
    return CountsOf(*body) == expected;
}

// The sides to which a side can be bridged.
static std::vector<int> GetTargets(const Shape& body, int side)
{
    std::vector<int> targets;
    for (int t = 0; t < body.sidenumber; t++) {
        if (t != side && body.sides[t].pointnumber == body.sides[side].pointnumber) {
            targets.push_back(t);
        }
    }
    return targets;
}

// Walls come in pairs where the bridge is one ring long and may then lack some of them.
static bool AreCountsOfBridge(const Counts& before, const Counts& after, int m, int steps)
{
    const int walls = after.sides - (before.sides - 2);
    const int missing = steps * m - walls;
    const bool maylack = steps == 2 && missing % 2 == 0 && missing < 2 * m;
    const int points = before.points + (steps - 1) * m;
    return (missing == 0 || (maylack && missing > 0)) &&
           after.triangles == before.triangles - 2 * (m - 2) + 2 * walls &&
           (steps == 2 || after.points == points);
}

static bool BridgeRandomSides(const OwnedShape& body, std::mt19937& random)
{
    const int side = GetRandomIndex(body->sidenumber, random);
    const std::vector<int> targets = GetTargets(*body, side);
    if (targets.empty()) {
        return true;
    }
    const int target = targets[std::size_t(GetRandomIndex(int(targets.size()), random))];
    const int m = body->sides[side].pointnumber;
    const Counts before = CountsOf(*body);
    Points path = GetRandomPath(CenterOf(*body, side), 2 + GetRandomIndex(4, random), random);
    path.push_back(CenterOf(*body, target));
    const int steps = CountSteps(path);
    if (!SweepClosed(body, side, path, target)) {
        return CountsOf(*body) == before;
    }
    return steps >= 2 && AreCountsOfBridge(before, CountsOf(*body), m, steps);
}

TEST(SweepSide, LeavesRandomBodiesClosedSweepAfterSweep)
{
    std::mt19937 random(3);
    for (int i = 0; i < 700; i++) {
        SCOPED_TRACE(i);
        const OwnedShape body = GetRandomBody(random);
        const int walks = CountWalksOfAnEdge(*body); // two along the slits of some
        for (int k = 0; k < 4; k++) {
            ASSERT_TRUE(GetRandomIndex(2, random) == 0 ? DrawRandomSideOut(body, random)
                                                       : BridgeRandomSides(body, random));
            ASSERT_LE(CountWalksOfAnEdge(*body), walks);
            ASSERT_FALSE(HasFailure());
        }
    }
}

static void RemoveSomething(Shape* shape, std::mt19937& random)
{
    if (GetRandomIndex(2, random) == 0) {
        DissolveStripe(shape, GetRandomIndex(shape->stripenumber, random));
    } else {
        RemovePointOfShape(shape, GetRandomIndex(shape->pointnumber, random));
    }
}

// Answers with the first broken rule: what was closed stays closed, and a single side becomes so.
static std::string SweepSomething(Shape* shape, std::mt19937& random, int& sweeps)
{
    const bool becomesclosed = shape->sidenumber == 1 || FindBrokenRuleOfClosedBody(*shape).empty();
    const int side = GetRandomIndex(shape->sidenumber, random);
    const int target = GetRandomIndex(shape->sidenumber, random);
    const bool closes = GetRandomIndex(2, random) == 0;
    Points path = GetRandomPath(CenterOf(*shape, side), 4, random);
    path.back() = closes ? CenterOf(*shape, target) : path.back();
    if (!SweepSide(shape, side, path, target, closes)) {
        return "";
    }
    sweeps++;
    SetStripesOfShape(shape);
    return becomesclosed ? FindBrokenRuleOfEditedBody(shape) : FindBrokenRuleAfterEdit(shape);
}

// Removals leave slits, single sides that wrap a body, and flat shapes.
TEST(SweepSide, LeavesEveryShapeSoundWhateverWasRemovedBefore)
{
    std::mt19937 random(4);
    int sweeps = 0;
    for (const OwnedShape& body : GetBodies()) {
        for (int round = 0; round < 5; round++) {
            SCOPED_TRACE(round);
            for (int i = 0; i < 3; i++) {
                RemoveSomething(body.get(), random);
                ASSERT_EQ(FindBrokenRuleAfterEdit(body.get()), "");
            }
            ASSERT_EQ(SweepSomething(body.get(), random, sweeps), "");
        }
    }
    EXPECT_GT(sweeps, 100);
}

} // namespace korvane::testing
