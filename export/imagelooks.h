// The light states in which the triangles of an image are drawn. No toolkit, no OpenGL.
#pragma once

#include "export/imagetriangles.h"

#include <vector>

namespace korvane
{

struct TriangleLook {
    const float* colors; // borrowed; colornumber of them
    bool front;          // whether it is drawn as facing the viewer
};

// A back that is coloured like its front is drawn as a front with turned normals, so that more
// triangles share a light state (IsBackLikeFront).
TriangleLook GetLook(const ImageTriangle& triangle);

// Whether what it is drawn in hides all that lies behind.
bool IsOpaque(const TriangleLook& look);

// The different light states of the triangles.
struct Looks {
    std::vector<TriangleLook> states; // their colors are those of the triangles
    std::vector<int> oftriangle;      // indices into states
};
Looks GetLooks(const ImageTriangle* hszog, int number);

} // namespace korvane
