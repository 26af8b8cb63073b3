// Export of the selected shapes, rounded and as the camera sees them, to a Wavefront OBJ file.
#pragma once

#include <cstdio>

namespace korvane
{

// The command: asks for a file name and writes the selected shapes, or all when none is selected. A
// file that cannot be written shows an error dialog; the file that was there before stays as it was
// then.
void SaveObj();

// Writes the mesh of the shapes with the given indices from their projected rounded copies: x
// right, y towards the viewer, z down, ten times as large as on the screen. Numbers carry points.
void WriteObj(FILE* file, const int* indices, int count);

} // namespace korvane
