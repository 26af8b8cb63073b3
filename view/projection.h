// The way of points between the world and the screen, and turns of frames of vectors. Everything
// here is computed from the view that is given and from nothing else. Arithmetic is double; one
// point makes its whole way before it is stored as float, except that its depth becomes a float
// before the perspective looks at it: so the way back meets the same depth and finds the same
// factor.
#pragma once

#include <cstdint>

namespace korvane
{

struct MainView;

// Turns n points in place by the view's rotation, without moving or scaling them.
void Rotate(const MainView* view, float points[][3], int32_t n);

// The same from one array into another, which may also be the same array.
void RotateInto(const MainView* view, const float from[][3], float to[][3], int32_t n);

// Turns n points in place by the inverse of the view's rotation.
void ReRotate(const MainView* view, float points[][3], int32_t n);

// Turns the three vectors of `frame` by the rotation that carries the unit vector `from` onto the
// unit vector `to` (Rodrigues' formula). Nothing changes when the square of the distance between
// them is below 1e-6, or when one of them is zero.
void VectorRotate(float frame[][3], const float from[3], const float to[3]);

// The same turn without that cut-off: `from` arrives at `to` however near or opposite they are.
// Takes vectors of any length but zero. A vector of the frame that is `from` itself becomes `to`
// exactly.
void VectorRotateExact(float frame[][3], const float from[3], const float to[3]);

// World to screen, in place.
void TransferPoints(const MainView* view, float points[][3], int32_t n);

// The same from one array into another, which may also be the same array: to the last bit what
// copying and TransferPoints give.
void TransferPointsInto(const MainView* view, const float from[][3], float to[][3], int32_t n);

// Screen to world, in place: the inverse of TransferPoints.
void ReTransferPoints(const MainView* view, float points[][3], int32_t n);

// Moves n screen points in place as the perspective of a level shows them. A point too near to the
// eye, or as far behind the screen, stays where it is. Nothing changes at level 0.
void ApplyPerspective(float points[][3], int32_t n, int8_t level);

// The factor by which the perspective of a level enlarges what lies at a depth: for every depth
// positive and finite, 1 at level 0. From just before the eye on it grows no more.
double GetPerspectiveFactor(int8_t level, double depth);

} // namespace korvane
