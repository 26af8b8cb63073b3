// The image as the plain method makes it, to compare with: one list of all triangles, which sets
// the light state anew for each of them and is drawn 20 x 4 times. A context must be current;
// cisign is set while it works.
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

std::vector<unsigned char> DrawPlainly(const std::vector<ImageTriangle>& triangles,
                                       LightStates states);

} // namespace korvane::testing
