#include "view/mainview.h"

#include <gtest/gtest.h>

namespace korvane
{

TEST(GetCosRate, RunsFromZeroToOneAndCountsTheLowFourBitsAlone)
{
    EXPECT_EQ(GetCosRate(0), 0.0F);
    EXPECT_EQ(GetCosRate(15), 1.0F);
    EXPECT_EQ(GetCosRate(16), 0.0F);
    EXPECT_EQ(GetCosRate(31), 1.0F);
}

} // namespace korvane
