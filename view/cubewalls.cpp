#include "view/cubewalls.h"

#include "geometry/triangulation.h"

namespace korvane
{

static constexpr float unitcorners[wallnumber * wallcorners][3] = {
    {-1, 1, -1},  {-1, -1, -1}, {1, -1, -1},  {1, 1, -1},  // z-
    {1, 1, 1},    {1, -1, 1},   {-1, -1, 1},  {-1, 1, 1},  // z+
    {-1, -1, -1}, {-1, -1, 1},  {1, -1, 1},   {1, -1, -1}, // y-
    {-1, 1, 1},   {-1, 1, -1},  {1, 1, -1},   {1, 1, 1},   // y+
    {-1, 1, 1},   {-1, -1, 1},  {-1, -1, -1}, {-1, 1, -1}, // x-
    {1, 1, -1},   {1, -1, -1},  {1, -1, 1},   {1, 1, 1},   // x+
};

void SetWallCorners(float halfedge, float distance, float corners[wallnumber * wallcorners][3])
{
    for (int i = 0; i < wallnumber * wallcorners; i++) {
        const int across = 2 - i / (2 * wallcorners); // the axis of the pair of walls
        for (int k = 0; k < 3; k++) {
            corners[i][k] = unitcorners[i][k] * (k == across ? distance : halfedge);
        }
    }
}

bool IsWallFacing(const float* a, const float* b, const float* c)
{
    return GetOrientation2d(a, b, c) > 0;
}

} // namespace korvane
