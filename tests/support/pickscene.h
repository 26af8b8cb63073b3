// Scenes of flat squares in a plain view, for what is tested with the pointer. Every square has
// four points, one stripe and one side.
#pragma once

#include "view/picking.h"

namespace korvane::testing
{

// An empty scene seen from the front: the screen's coordinates are the model's. No construction, no
// cube face, the start view in a square area.
void StartPickScene();

// A square in the plane of a depth; its stripe starts at the lower left corner and runs to the
// right. Returns its index.
int AddSquare(float left, float bottom, float size, float z);

// A square whose lower edge lies at depth -z and whose upper edge lies at z.
int AddSlope(float left, float bottom, float size, float z);

// What an edit ends with: records, projection, active flags.
void ProjectAndPick();

// Moves the pointer and answers what is found under it.
const ActiveElement* FindAt(float x, float y);

const ActiveElement* PointOf(int square, int corner);
const ActiveElement* StripeOf(int square);
const ActiveElement* SideOf(int square);

// A point of a construction, as the modules append it; they count it themselves.
void AppendActivePoint(float* point, unsigned char active);

// A face of the background cube over a square of the screen.
void SetFace(int face, float left, float bottom, float size);

} // namespace korvane::testing
