// The monkey at the dialogs that change shapes while they are open: it moves their sliders and
// controls at random and accepts or cancels.
#pragma once

#include <random>
#include <string>

namespace korvane::testing
{

struct DialogUse {
    std::string told; // what was done
    bool accepted;    // false: cancelled, or there was nothing to open a dialog for
};

// Turns, scales or colours what was under the last right press, or the selection.
DialogUse UseSomeDialog(std::mt19937& random);

} // namespace korvane::testing
