// The controls of the dialog in front on the screen of a journey, found by what they look like
// whatever the font.
#pragma once

#include "tests/support/journey.h"

#include <vector>

namespace korvane::testing
{

// Waits until the dialog shows so many horizontal sliders, then drags the knob of one of them, 0
// being the uppermost, to a part of its way: 0 is the left end and 1 the right one. At first no
// knob stands at the left end.
void DragSlider(Journey& journey, int number, int slider, double part);

struct ScreenPlace {
    int x, y;
};

// The middle of each check box without a tick, from top to bottom.
std::vector<ScreenPlace> FindEmptyCheckBoxes(const Journey& journey);

} // namespace korvane::testing
