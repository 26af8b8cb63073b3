// What an image is made of: the triangles of the scene in view coordinates, each with all it needs
// to be drawn, and their order by depth, farthest first. No toolkit, no OpenGL.
#pragma once

#include "scene/model.h"

#include <cstdint>

namespace korvane
{

struct ImageTriangle {
    float vertices[3][3];      // the corners, in view coordinates
    float normals[3][3];       // the shading normals at the corners
    unsigned char front;       // 1 when the triangle faces the viewer
    float colors[colornumber]; // those of its side, placed as ColorPlace says
};

// How many triangles an image of the scene can have, before those are dropped that nobody sees.
// Reads showtable and round1.
std::int64_t EstimateTriangles();

// Writes the triangles of a shape in view coordinates that its sides show to the viewer behind the
// `number` ones that are there. Returns how many there are then.
int AddTrianglesOfShape(ImageTriangle* hszog, int number, const Shape* copy);

// Depth keys, and the order 0, 1, 2, ... that is sorted with them. The greater key is nearer.
void SetTriangleKeys(const ImageTriangle* hszog, int number, float* ztable, int* zindex);

// Sorts `count` keys in increasing order and moves the indices with them. Equal keys do not keep
// their order. Returns early, with both partly sorted, when cisign has been cleared.
void SetTriangleSequence(float* keys, int* indices, int count);

} // namespace korvane
