#include "geometry/pointremoval.h"
#include "geometry/sidecut.h"
#include "geometry/sidemerge.h"
#include "tests/support/chains.h"
#include "tests/support/edits.h"
#include "tests/support/invariants.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace korvane::testing
{

// A body to begin with, half of the time a flat shape that has been raised.
static OwnedShape GetRandomStart(std::mt19937& random)
{
    static constexpr std::array flats = {FlatTriangle, Square, ConcaveL, Star};
    const unsigned int choice = random() % 8;
    if (choice >= flats.size()) {
        return GetRandomBody(random);
    }
    OwnedShape flat = flats[choice]();
    TestChain chain = GetRandomChain(*flat, random);
    while (!CanTakeChain(flat.get(), chain.Get())) {
        chain = GetRandomChain(*flat, random);
    }
    RaiseOverChain(flat.get(), chain.Get());
    EXPECT_EQ(FindBrokenRuleOfBody(*flat), "");
    return flat;
}

TEST(CutAlongChain, KeepsEveryBodySoundUnderManyRandomChains)
{
    std::mt19937 random(7);
    int cuts = 0;
    for (int round = 0; round < 60; round++) {
        const OwnedShape body = GetRandomStart(random);
        const int characteristic = GetCharacteristic(*body);
        for (int step = 0; step < 12; step++) {
            const TestChain chain = GetRandomChain(*body, random);
            if (!CanTakeChain(body.get(), chain.Get())) {
                continue;
            }
            const int sides = body->sidenumber;
            const int triangles = body->trianglenumber;
            CutAlongChain(body.get(), chain.Get());
            ASSERT_EQ(FindBrokenRuleOfBody(*body), "") << "round " << round << " step " << step;
            EXPECT_EQ(body->sidenumber, sides + 1);
            EXPECT_EQ(body->trianglenumber, triangles + 2 * (chain.Get().number - 2));
            EXPECT_EQ(GetCharacteristic(*body), characteristic);
            cuts++;
        }
    }
    EXPECT_GT(cuts, 300); // few of the chains are refused
}

// Cuts or raises the shape along a random chain, if it can take one. Returns the first broken rule:
// what was closed stays closed, and what was flat becomes so.
static std::string TryChain(Shape& shape, std::mt19937& random)
{
    const TestChain chain = GetRandomChain(shape, random);
    if (!CanTakeChain(&shape, chain.Get())) {
        return "";
    }
    const bool isflat = IsFlatShape(&shape);
    const bool becomesclosed = isflat || FindBrokenRuleOfClosedBody(shape).empty();
    if (isflat) {
        RaiseOverChain(&shape, chain.Get());
    } else {
        CutAlongChain(&shape, chain.Get());
    }
    return becomesclosed ? FindBrokenRuleOfEditedBody(&shape) : FindBrokenRuleAfterEdit(&shape);
}

static std::string TryEdit(Shape& shape, std::mt19937& random)
{
    const int stripe = int(random() % unsigned(shape.stripenumber));
    const int point = int(random() % unsigned(shape.pointnumber));
    if (random() % 2 == 0) {
        DissolveStripe(&shape, stripe);
    } else {
        RemovePointOfShape(&shape, point);
    }
    return FindBrokenRuleAfterEdit(&shape);
}

// Removals leave slits, single sides and flat shapes behind, into all of which chains are cut.
TEST(Chains, LeaveEveryShapeSoundWhateverWasRemovedBefore)
{
    unsigned seed = 0;
    for (const OwnedShape& start : GetBodies()) {
        const OwnedShape body(CopyShape(start.get()));
        std::mt19937 random(seed++);
        for (int step = 0; step < 60; step++) {
            const std::string broken =
                random() % 2 == 0 ? TryChain(*body, random) : TryEdit(*body, random);
            ASSERT_EQ(broken, "") << "seed " << seed - 1 << " step " << step;
        }
    }
}

} // namespace korvane::testing
