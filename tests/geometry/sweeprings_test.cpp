#include "geometry/sweeprings.h"

#include "tests/support/shapes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace korvane::testing
{

static const float half = float(std::sqrt(0.5)); // sine and cosine of 45 degrees

static void ExpectPlaces(const Places& places, const Places& expected)
{
    ASSERT_EQ(places.size(), expected.size());
    for (std::size_t i = 0; i < places.size(); i++) {
        for (std::size_t c = 0; c < 3; c++) {
            EXPECT_NEAR(places[i][c], expected[i][c], 1e-6) << "point " << i << ", "
                                                            << "xyz"[c];
        }
    }
}

TEST(DropStillSteps, KeepsTheFirstOfEqualNeighbours)
{
    const Places path = {{0, 0, 0}, {0, 0, 0}, {1, 0, 0}, {1, 0, 0}, {1, 0, 0}, {0, 0, 0}};
    EXPECT_EQ(DropStillSteps(path), (Places{{0, 0, 0}, {1, 0, 0}, {0, 0, 0}}));
}

TEST(GetDirectionsOfPath, TakesChordsInsideAndStepsAtTheEnds)
{
    const Places path = {{0, 0, 0}, {0, 0, 2}, {2, 0, 2}};
    ExpectPlaces(GetDirectionsOfPath(path), {{0, 0, 1}, {half, 0, half}, {1, 0, 0}});
}

TEST(GetDirectionsOfPath, LeavesNoDirectionWhereThePathTurnsBack)
{
    const Places path = {{0, 0, 0}, {0, 0, 2}, {0, 0, 0}};
    ExpectPlaces(GetDirectionsOfPath(path), {{0, 0, 1}, {0, 0, 0}, {0, 0, -1}});
}

TEST(GetDirectionsOfLoop, TakesAChordAcrossTheStart)
{
    const Places path = {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {0, 0, 0}};
    ExpectPlaces(GetDirectionsOfLoop(path),
                 {{half, -half, 0}, {half, half, 0}, {-half, half, 0}, {-half, -half, 0}});
}

TEST(GetProfileOfSide, CountsTheCornersFromTheirMean)
{
    const OwnedShape shape = MakeShape({{0, 0, 5}, {3, 0, 5}, {0, 3, 5}}, {{1, 2, 0}});
    ExpectPlaces(GetProfileOfSide(&shape->sides[0]), {{2, -1, 0}, {-1, 2, 0}, {-1, -1, 0}});
}

// A profile in the plane z = 0, whose path leaves upwards.
static Sweep MakeSweep(const Places& path)
{
    return {path, GetDirectionsOfPath(path), {{1, 0, 0}, {0, 2, 0}, {-3, 0, 0}}, {0, 0, 1}};
}

TEST(PlaceRing, MovesTheProfileWhereThePathGoesStraight)
{
    const Sweep sweep = MakeSweep({{5, 5, 5}, {5, 5, 6}});
    ExpectPlaces(PlaceRing(sweep, 1), {{6, 5, 6}, {5, 7, 6}, {2, 5, 6}});
}

TEST(PlaceRing, TurnsTheProfileAcrossTheChord)
{
    // z goes to (half, 0, half), about the y axis: so x goes to (half, 0, -half).
    const Sweep sweep = MakeSweep({{0, 0, 0}, {0, 0, 2}, {2, 0, 2}});
    ExpectPlaces(PlaceRing(sweep, 1),
                 {{half, 0, 2 - half}, {0, 2, 2}, {-3 * half, 0, 2 + 3 * half}});
}

TEST(PlaceRing, TakesAHalfTurnByWayOfTheLastEarlierDirection)
{
    // Up, over to x and down again: all of it about the y axis, so that y stays and x is turned.
    const Sweep sweep = MakeSweep({{0, 0, 0}, {0, 0, 2}, {4, 0, 2}, {4, 0, 0}});
    ExpectPlaces(PlaceRing(sweep, 3), {{3, 0, 0}, {4, 2, 0}, {7, 0, 0}});
}

TEST(PlaceRing, TakesTheLastOfSeveralEarlierDirections)
{
    // The path goes down again on the y side: about the x axis x stays and y is turned.
    const Sweep sweep =
        MakeSweep({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {4, 4, 2}, {4, 8, 2}, {4, 8, 0}});
    ExpectPlaces(PlaceRing(sweep, 5), {{5, 8, 0}, {4, 6, 0}, {1, 8, 0}});
}

TEST(PlaceRing, PassesOverEarlierDirectionsAlongTheReference)
{
    // Up, over and down two steps: before the last ring stand one opposite to the reference and,
    // earlier, the chords over the top.
    const Sweep sweep = MakeSweep({{0, 0, 0}, {0, 0, 2}, {4, 0, 2}, {4, 0, 1}, {4, 0, 0}});
    ExpectPlaces(PlaceRing(sweep, 4), {{3, 0, 0}, {4, 2, 0}, {7, 0, 0}});
}

TEST(PlaceRing, TurnsOppositeAboutXWithoutAnEarlierDirection)
{
    Sweep sweep = MakeSweep({{0, 0, 0}, {0, 0, 2}});
    sweep.directions[0] = {0, 0, -1};
    ExpectPlaces(PlaceRing(sweep, 0), {{1, 0, 0}, {0, -2, 0}, {-3, 0, 0}});
}

TEST(PlaceRing, LeavesTheProfileWhereThePathHasNoDirection)
{
    const Sweep sweep = MakeSweep({{0, 0, 0}, {3, 0, 2}, {0, 0, 0}});
    ExpectPlaces(PlaceRing(sweep, 1), {{4, 0, 2}, {3, 2, 2}, {0, 0, 2}});
}

// Its diagonal is 5, so that every distance below is exact.
static const Places rectangle = {{0, 0, 0}, {3, 0, 0}, {3, 4, 0}, {0, 4, 0}};
static const Place peak = {1.5F, 2, 6}; // 6.5 from every corner

TEST(FindShift, TurnsTheTargetToTheRing)
{
    const Places ring = {{3, 4, 3}, {0, 4, 3}, {0, 0, 3}, {3, 0, 3}};
    EXPECT_EQ(FindShift(ring, rectangle), 2);
}

TEST(FindShift, TakesTheLowestOfEqualShifts)
{
    EXPECT_EQ(FindShift(Places(4, peak), rectangle), 0); // 26 for each
    const Places ring = {peak, {3, 4, 0}, peak, {3, 4, 0}};
    EXPECT_EQ(FindShift(ring, rectangle), 1); // 20, 18, 20, 18
}

} // namespace korvane::testing
