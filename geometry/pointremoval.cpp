#include "geometry/pointremoval.h"

#include "geometry/sidemerge.h"
#include "geometry/stripes.h"
#include "geometry/surgery.h"
#include "scene/model.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace korvane
{

static constexpr int fewestpoints = 4; // a shape keeps them

static std::ptrdiff_t CountPoint(const int* points, int number, int point)
{
    return std::count(points, points + number, point);
}

static bool EndsAt(const Stripe& stripe, int point)
{
    return stripe.points[0] == point || stripe.points[stripe.pointnumber - 1] == point;
}

static bool Contains(const Stripe& stripe, int point)
{
    return CountPoint(stripe.points, stripe.pointnumber, point) > 0;
}

static bool IsClosed(const Stripe& stripe)
{
    return stripe.points[0] == stripe.points[stripe.pointnumber - 1];
}

// The first stripe that contains the point; -1 without one.
static int FindStripeOfPoint(const Shape* shape, int point)
{
    for (int i = 0; i < shape->stripenumber; i++) {
        if (Contains(shape->stripes[i], point)) {
            return i;
        }
    }
    return -1;
}

// Dissolves the first stripe that ends at the point and can be dissolved.
static bool DissolveStripeFrom(Shape* shape, int* point)
{
    for (int i = 0; i < shape->stripenumber; i++) {
        if (EndsAt(shape->stripes[i], *point) && DissolveStripe(shape, i, point)) {
            return true;
        }
    }
    return false;
}

// With the stripes that end at a point the point is a corner no longer; then the stripe that still
// passes it goes. Each step renumbers the points and makes the stripes anew.
static bool RemoveCornerPoint(Shape* shape, int point)
{
    bool changed = false;
    while (point >= 0 && DissolveStripeFrom(shape, &point)) {
        changed = true;
    }
    const int stripe = point < 0 ? -1 : FindStripeOfPoint(shape, point);
    return (stripe >= 0 && DissolveStripe(shape, stripe)) || changed;
}

// A side that passes a point, and its outline without it.
struct PassingSide {
    int side;
    std::vector<int> outline;
};

static std::vector<PassingSide> GetPassingSides(const Shape* shape, int point)
{
    std::vector<PassingSide> passing;
    for (int s = 0; s < shape->sidenumber; s++) {
        const Side& side = shape->sides[s];
        if (CountPoint(side.points, side.pointnumber, point) > 0) {
            std::vector<int> outline = GetCornersOfSide(side);
            std::erase(outline, point);
            passing.push_back({s, outline});
        }
    }
    return passing;
}

// Whether a stripe would be too short without the point: a closed one has four entries at least,
// the border of a triangle, an open one has its two ends.
static bool IsNeededByStripe(const Shape* shape, int point)
{
    return std::any_of(shape->stripes, shape->stripes + shape->stripenumber, [=](const Stripe& s) {
        const bool closed = IsClosed(s);
        const auto gone = CountPoint(s.points, s.pointnumber, point) -
                          (closed && EndsAt(s, point) ? 1 : 0); // it is closed again
        return gone > 0 && s.pointnumber - gone < (closed ? 4 : 2);
    });
}

// A border that starts with the point starts and ends with the next one instead.
static void MoveStartOfBorders(Shape* shape, int point)
{
    for (int i = 0; i < shape->stripenumber; i++) {
        const Stripe& stripe = shape->stripes[i];
        if (IsClosed(stripe) && EndsAt(stripe, point)) {
            int* end = stripe.points + stripe.pointnumber - 1;
            std::rotate(stripe.points, stripe.points + 1, end);
            *end = stripe.points[0];
        }
    }
}

// Takes a point out of everything that passes it. The stripes stay as they are without it, unless
// more goes with it: what enclosed something with the point alone.
static bool TakePointOut(Shape* shape, int point)
{
    std::vector<PassingSide> passing = GetPassingSides(shape, point);
    bool spiked = false;
    for (PassingSide& side : passing) {
        const std::size_t before = side.outline.size();
        RemoveSpikes(side.outline);
        spiked = spiked || side.outline.size() != before;
        if (side.outline.size() < 3) {
            return false;
        }
    }
    MoveStartOfBorders(shape, point);
    for (const PassingSide& side : passing) {
        SetCornersOfSide(&shape->sides[side.side], side.outline);
    }
    RemoveUnusedPoints(shape);
    for (const PassingSide& side : passing) {
        CutSideAgain(shape, side.side);
    }
    if (spiked) {
        SetStripesOfShape(shape);
    }
    return true;
}

bool RemovePointOfShape(Shape* shape, int point)
{
    const int first = FindStripeOfPoint(shape, point);
    if (shape->pointnumber <= fewestpoints || first < 0) {
        return false;
    }
    const Stripe& stripe = shape->stripes[first];
    if (EndsAt(stripe, point) && shape->sidenumber > 1) {
        return RemoveCornerPoint(shape, point);
    }
    if (stripe.pointnumber == 3 || IsNeededByStripe(shape, point)) {
        return DissolveStripe(shape, first);
    }
    return TakePointOut(shape, point) || DissolveStripe(shape, first);
}

} // namespace korvane
