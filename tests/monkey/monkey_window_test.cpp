#include "tests/monkey/monkey.h"

#include "tests/support/widgets.h"

#include <gtest/gtest.h>

namespace korvane::testing
{

// Every fourth seed roams freely.
class EditingMonkey : public ::testing::TestWithParam<unsigned>
{
};

TEST_P(EditingMonkey, BreaksNothing)
{
    ShowMainWindow();
    const Wandering wandering = Wander(GetParam(), 300);
    std::string told;
    for (const std::string& step : wandering.steps) {
        told += "\n  " + step;
    }
    EXPECT_EQ(wandering.broken, "") << "after" << told;
}

INSTANTIATE_TEST_SUITE_P(OfSeeds, EditingMonkey, ::testing::Range(1U, 9U));

} // namespace korvane::testing
