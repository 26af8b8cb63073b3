// Whether the pointer is near a point, a stripe or a triangle on the screen, and how deep they lie
// there. All of it works in view coordinates on what it is given; no test changes the pointer
// unless it passes.
#pragma once

namespace korvane
{

struct Stripe;
struct Triangle;

// A point or a stripe is near when it is closer than this to the pointer, in view units.
constexpr double pickdistance = 0.016;

bool PointNear2d(const float* mouse, const float* point);

// True when the mouse is near the stripe; the mouse's depth is then the stripe's depth there. The
// first segment that is near decides.
bool StripeNear2d(float* mouse, const Stripe* stripe);

// The segment of the stripe whose line is nearest to the mouse, as the position of its second
// point; -1 when the mouse is in no circle that has a segment as its diameter.
int FindNearestSegment(const float* mouse, const Stripe* stripe);

// True when the mouse lies in the triangle's projection or on its border; its depth is then that of
// the triangle's plane. A triangle without area on the screen has the greatest depth of its
// corners.
bool InTheTriangle2dSetZ(float* mouse, const Triangle* triangle);

// The same for three points.
bool InTheCorners2dSetZ(float* mouse, const float* a, const float* b, const float* c);

} // namespace korvane
