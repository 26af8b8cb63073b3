// Drawing through the two programs of lit surfaces: the bracket in which they are on, and the light
// state from which they take what a side looks like. A context must be current.
#pragma once

namespace korvane
{

// From the base state and back to it: programs and lights on, and off again.
void BeginLitPrograms();
void EndLitPrograms();

// Both colours of both faces of a side, from its `colors`; `fade` is the weight of their alphas.
void LoadColors(const float* colors, double fade);

// The acuities of a side's colours, and whether what follows is seen from the front.
void LoadControl(const float* colors, bool front);

} // namespace korvane
