// The image as the plain method makes it, to compare with: one list of all triangles, which sets
// the light state anew for each of them and is drawn 20 x 4 times through the programs of lit
// surfaces. A context must be current; cisign is set while the triangles are collected.
#pragma once

#include "export/imagetriangles.h"

#include <vector>

namespace korvane::testing
{

// The triangles of an image of the scene, in their drawing order.
std::vector<ImageTriangle> CollectTriangles();

enum LightStates {
    LIGHT_PERTRIANGLE,
    LIGHT_ONCE // that of the first triangle serves all, which is faster and wrong
};

// The averages of the passes, unrounded, in the places that imagebuffer has them. Nothing of the
// program's own rendering of tiles is used: not its buffer, its projection, its moves or its sum.
std::vector<float> DrawPlainly(const std::vector<ImageTriangle>& triangles, LightStates states);

} // namespace korvane::testing
