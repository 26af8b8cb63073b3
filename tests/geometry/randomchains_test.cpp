#include "geometry/sidecut.h"
#include "tests/support/chains.h"

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

} // namespace korvane::testing
