// The rows of the tree on the screen of a journey.
#pragma once

#include "tests/support/journey.h"

namespace korvane::testing
{

// A column of pixels inside the tree, which stands left of the view. It is right of the names.
constexpr int treecolumn = -120;

struct TreeRows {
    int top = 0;
    int height = 0;

    int GetMiddle(int row) const // 0 is the first
    {
        return top + height * row + height / 2;
    }
};

// Finds the rows by selecting the first.
TreeRows FindTreeRows(Journey& journey);

} // namespace korvane::testing
