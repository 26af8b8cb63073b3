// The way of points between the world and the screen. Everything here is computed from the view
// that is given and from nothing else. Arithmetic is double. On its way to the screen a point is
// stored as float twice: when it has been moved, scaled and turned, and when the perspective has
// been applied to it. So the way back meets the depth from which the perspective was computed.
#pragma once

#include <cstdint>

namespace korvane
{

struct MainView;

// Turns n points in place by the view's rotation, without moving or scaling them.
void Rotate(const MainView* view, float points[][3], int32_t n);

// Turns n points in place by the inverse of the view's rotation.
void ReRotate(const MainView* view, float points[][3], int32_t n);

// World to screen, in place.
void TransferPoints(const MainView* view, float points[][3], int32_t n);

// Screen to world, in place: the inverse of TransferPoints.
void ReTransferPoints(const MainView* view, float points[][3], int32_t n);

// Rotate and TransferPoints from one array into another: to the last bit what copying and then
// working in place give.
void RotateInto(const MainView* view, const float from[][3], float to[][3], int32_t n);
void TransferPointsInto(const MainView* view, const float from[][3], float to[][3], int32_t n);

// Moves n screen points in place as the perspective of a level shows them. A point too near to the
// eye, or as far behind the screen, stays where it is. Nothing changes at level 0.
void ApplyPerspective(float points[][3], int32_t n, int8_t level);

// The factor by which the perspective of a level enlarges what lies at a depth: positive and finite
// for every depth, 1 at level 0. It grows no more from where points are left unprojected before the
// eye.
double GetPerspectiveFactor(int8_t level, double depth);

} // namespace korvane
