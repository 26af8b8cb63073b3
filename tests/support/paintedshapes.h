// Shapes of known colours for the tests that read pixels.
#pragma once

#include "tests/support/shapes.h"

#include <array>

namespace korvane::testing
{

using Colors = std::array<float, 4>;

// The light and shadow colours of one face of a side: `place` is FRONT_LIGHT or BACK_LIGHT.
void Paint(Side& side, int place, const Colors& light, const Colors& shadow);

// One colour all over, front and back, whatever the light.
void PaintPlain(Side& side, const Colors& color);

// A square of side 0.5 around a point of the view, facing the viewer, in the default colours.
OwnedShape SquareAt(float x, float y, float z);

OwnedShape PlainSquareAt(float x, float y, float z, const Colors& color);

// A flat sheet of n by n squares facing the viewer, each a side, of which every second one is
// turned over in a checkerboard; as large as SquareAt's.
OwnedShape CheckeredSheet(int n);

} // namespace korvane::testing
