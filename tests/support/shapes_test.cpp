#include "tests/support/shapes.h"

#include "tests/support/chains.h"
#include "tests/support/invariants.h"

#include <gtest/gtest.h>

namespace korvane::testing
{

TEST(ShapeCatalogue, HasRingsThatFaceOutwards)
{
    EXPECT_NEAR(GetVolume(*Ring()), 12, 1e-5);
    EXPECT_NEAR(GetVolume(*BridgedCube()), 11, 1e-5);
    for (const OwnedShape& shape : {Ring(), BridgedCube()}) {
        EXPECT_EQ(FindBrokenRuleOfShape(*shape), "");
        EXPECT_EQ(FindBrokenRuleOfClosedBody(*shape), "");
        EXPECT_EQ(GetCharacteristic(*shape), 0);
    }
}

} // namespace korvane::testing
