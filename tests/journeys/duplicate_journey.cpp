// Sides swept along clicked paths, judged by the saved scene.
#include "tests/support/invariants.h"
#include "tests/support/scenejourney.h"
#include "tests/support/scenetexts.h"

#include <gtest/gtest.h>

using namespace korvane;
using namespace korvane::testing;

class Duplicating : public SceneJourney
{
protected:
    // The second item of the menu of a side.
    void DuplicateSideAt(double x, double y)
    {
        Click(x, y, 3);
        ASSERT_TRUE(WaitFor([&] { return journey.HasMenu(); }));
        journey.Key("Down");
        journey.Key("Down");
        journey.Key("Return");
        ASSERT_TRUE(WaitFor([&] { return !journey.HasMenu(); }));
        LookWithoutPointer();
    }

    // A square of edge 0.2 round (-0.3, -0.3).
    void DrawSquare()
    {
        journey.Key("n");
        Click(-0.4, -0.4);
        Click(-0.2, -0.4);
        Click(-0.2, -0.2);
        Click(-0.4, -0.2);
        Click(-0.4, -0.4);
        LookWithoutPointer();
    }
};

TEST_F(Duplicating, MakesATubeOfAFlatShape)
{
    Start();
    DrawSquare();
    DuplicateSideAt(-0.3, -0.3);
    Click(-0.3, 0.2);
    Click(0.3, 0.3);
    Click(0.4, 0.4, 3);
    const auto shape = SaveShape();
    EXPECT_EQ(shape->pointnumber, 3 * 4);
    EXPECT_EQ(shape->sidenumber, 2 * 4 + 2);
    EXPECT_EQ(FindBrokenRuleOfClosedBody(*shape), "");
}

TEST_F(Duplicating, ClosesARingOnItsStart)
{
    Start();
    DrawSquare();
    DuplicateSideAt(-0.3, -0.3);
    Click(-0.3, 0.3);
    Click(0.3, 0.3);
    Click(0.3, -0.3);
    Click(0.4, -0.4);
    Click(0.4, -0.4, 2); // the last one was too much
    Click(-0.3, -0.3);
    const auto shape = SaveShape();
    EXPECT_EQ(shape->pointnumber, 4 * 4);
    EXPECT_EQ(shape->sidenumber, 4 * 4);
    EXPECT_EQ(FindBrokenRuleOfClosedBody(*shape), "");
}

// The side at z = 0.05 faces the viewer, its centre is (0.2, 0.15); the upper side, on which the
// path ends, has its centre at (0.2, 0.2, -0.05).
TEST_F(Duplicating, BridgesTwoSidesOfABody)
{
    Start(BoxScene());
    DuplicateSideAt(0.15, 0.13);
    Click(-0.2, 0.15);
    Click(-0.2, 0.4);
    Click(0.2, 0.4);
    Click(0.2, 0.2);
    const auto shape = SaveShape();
    EXPECT_EQ(shape->pointnumber, 8 + 3 * 4);
    EXPECT_EQ(shape->sidenumber, 6 - 2 + 4 * 4);
    EXPECT_EQ(FindBrokenRuleOfClosedBody(*shape), "");
}

TEST_F(Duplicating, IsGivenUpWithoutAPath)
{
    Start(BoxScene());
    DuplicateSideAt(0.15, 0.13);
    EXPECT_GT(first.CountDifferences(LookWithoutPointer()), 10); // the centres
    Click(-0.2, 0.15, 3);
    EXPECT_EQ(first.CountDifferences(LookWithoutPointer()), 0);
    EXPECT_FALSE(journey.HasMenu());
    EXPECT_EQ(SaveShape()->sidenumber, 6);
}
