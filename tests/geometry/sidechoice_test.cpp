#include "geometry/sidechoice.h"

#include "tests/support/chains.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace korvane::testing
{

TEST(CanTakeChain, RefusesWhatWouldBreakTheShape)
{
    const OwnedShape cube = Cube();
    EXPECT_TRUE(CanTakeChain(cube.get(), TestChain(*cube, 4, {}, 6).Get()));
    EXPECT_TRUE(CanTakeChain(cube.get(), TestChain(*cube, 4, {{0, 0, 0.5F}}, 5).Get()));
    EXPECT_FALSE(CanTakeChain(cube.get(), TestChain(*cube, 4, {}, 5).Get())); // along an edge
    EXPECT_FALSE(CanTakeChain(cube.get(), TestChain(*cube, 5, {}, 4).Get()));
    EXPECT_FALSE(CanTakeChain(cube.get(), TestChain(*cube, 4, {{0, 0, 0.5F}}, 4).Get())); // a loop
    EXPECT_FALSE(CanTakeChain(cube.get(), TestChain(*cube, 0, {{0, 0, 0}}, 6).Get()));    // no side
}

// A flat triangle has no other corners: every chain without inner points runs along an edge.
TEST(CanTakeChain, RefusesToRaiseATriangleStraight)
{
    const OwnedShape triangle = FlatTriangle();
    EXPECT_FALSE(CanTakeChain(triangle.get(), TestChain(*triangle, 0, {}, 1).Get()));
    EXPECT_FALSE(CanTakeChain(triangle.get(), TestChain(*triangle, 0, {}, 2).Get()));
}

TEST(FindSideOfChain, TakesTheFirstOfEquallyNearSides)
{
    const OwnedShape cube = Cube();
    // The inner point lies on the bisector of sides 1 and 2.
    EXPECT_EQ(FindSideOfChain(cube.get(), TestChain(*cube, 4, {{0, -0.4F, 0.4F}}, 5).Get()), 1);
    EXPECT_EQ(FindSideOfChain(cube.get(), TestChain(*cube, 0, {{0, 0, 0}}, 6).Get()), -1);
}

// Side 0 is bent along 1-3, away from the line from 0 to 2. Both triangles of side 1 have that line
// as their first edge, whose middle is where the chain is.
TEST(FindSideOfChain, SeesTheTrianglesAlongWhichAStraightChainLies)
{
    const OwnedShape book =
        MakeShape({{0, 0, 0}, {1, -1, 1}, {2, 0, 0}, {1, 1, 1}, {1, -1, 0}, {1, 1, 0}},
                  {{0, 1, 2, 3}, {0, 4, 2, 5}});
    const int corners[4][3] = {{0, 1, 3}, {1, 2, 3}, {0, 2, 5}, {2, 0, 4}};
    for (int i = 0; i < 4; i++) {
        std::copy_n(corners[i], 3, book->triangles[i].points);
    }
    EXPECT_EQ(FindSideOfChain(book.get(), TestChain(*book, 0, {}, 2).Get()), 1);
}

// The front of the plate passes 0 and 4, between which it is slit, twice. Its inside lies between
// 7 and 0 at position 5, between 0 and 5 at position 9.
TEST(FindPlacesOfChain, TellsTheBanksOfASlitApart)
{
    const OwnedShape plate = PlateWithHole();
    Side* front = plate->sides;
    EXPECT_EQ(FindPlacesOfChain(front, TestChain(*plate, 1, {}, 4).Get()).end, 9);
    EXPECT_EQ(FindPlacesOfChain(front, TestChain(*plate, 4, {}, 1).Get()).start, 9);
    EXPECT_EQ(FindPlacesOfChain(front, TestChain(*plate, 3, {}, 4).Get()).end, 5);
    EXPECT_EQ(FindPlacesOfChain(front, TestChain(*plate, 0, {}, 5).Get()).start, 0);
    EXPECT_EQ(FindPlacesOfChain(front, TestChain(*plate, 0, {}, 7).Get()).start, 4);
    Side* back = plate->sides + 1; // 4 5 6 7 4 0 3 2 1 0
    EXPECT_EQ(FindPlacesOfChain(back, TestChain(*plate, 1, {}, 4).Get()).end, 0);
    EXPECT_EQ(FindPlacesOfChain(back, TestChain(*plate, 3, {}, 4).Get()).end, 4);
}

} // namespace korvane::testing
