// The walls of a cube into which one looks: the background cube and the small one. The walls come
// in pairs across z, y and x, the negative one first; each runs counter-clockwise as seen from
// inside, so that the walls' fronts look at the viewer.
#pragma once

namespace korvane
{

constexpr int wallnumber = 6;
constexpr int wallcorners = 4; // of each wall, in order round it

// The corners of a cube about the origin, wall after wall. A wall has this half edge and lies at
// this distance from the middle: where that is longer, there are gaps between the walls.
void SetWallCorners(float halfedge, float distance, float corners[wallnumber * wallcorners][3]);

// True when a wall whose first three corners these are faces the viewer: they run
// counter-clockwise.
bool IsWallFacing(const float* a, const float* b, const float* c);

} // namespace korvane
