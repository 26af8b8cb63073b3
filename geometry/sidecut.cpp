#include "geometry/sidecut.h"

#include "geometry/shapegeometry.h"
#include "geometry/sideplane.h"
#include "geometry/surgery.h"
#include "geometry/vectors.h"
#include "scene/model.h"

#include <algorithm>
#include <numbers>
#include <numeric>
#include <set>
#include <utility>
#include <vector>

namespace korvane
{

// How many different edges an outline passes.
static int CountEdges(const Side& side)
{
    std::set<std::pair<int, int>> edges;
    const std::vector<int> outline = GetCornersOfSide(side);
    int before = outline.back();
    for (const int corner : outline) {
        edges.insert(std::minmax({before, corner}));
        before = corner;
    }
    return int(edges.size());
}

bool IsFlatShape(const Shape* shape)
{
    return shape->sidenumber == 1 && CountEdges(shape->sides[0]) == shape->sides[0].pointnumber;
}

bool IsBody(const Shape* shape)
{
    return shape->sidenumber > 1 || 2 * CountEdges(shape->sides[0]) == shape->sides[0].pointnumber;
}

// Appends the points between the ends to the shape; returns their indices from start to end.
static std::vector<int> AppendInnerChain(Shape* shape, const Chain& chain)
{
    std::vector<int> inner(std::size_t(chain.number - 2));
    std::iota(inner.begin(), inner.end(), AppendPoints(shape, chain.points + 1, chain.number - 2));
    return inner;
}

static std::vector<int> GetStripeOfChain(const Chain& chain, const std::vector<int>& inner)
{
    std::vector<int> stripe = {chain.start};
    stripe.insert(stripe.end(), inner.begin(), inner.end());
    stripe.push_back(chain.end);
    return stripe;
}

// A place on a stripe; stripe is noone for a point that lies on none.
struct StripePlace {
    int stripe;
    int position;
};

// The first place of a point on the first stripe that has it, from stripe `first` on.
static StripePlace FindOnStripes(const Shape* shape, int point, int first)
{
    for (int i = first; i < shape->stripenumber; i++) {
        const Stripe& stripe = shape->stripes[i];
        int* end = stripe.points + stripe.pointnumber;
        int* found = std::find(stripe.points, end, point);
        if (found != end) {
            return {i, int(found - stripe.points)};
        }
    }
    return {noone, noone};
}

// Ends a stripe at an inner point; the rest of it becomes a stripe of its own, appended.
static void CutStripe(Shape* shape, const StripePlace& place)
{
    if (place.stripe == noone) {
        return;
    }
    const Stripe& stripe = shape->stripes[place.stripe];
    if (place.position == 0 || place.position == stripe.pointnumber - 1) {
        return;
    }
    const std::vector<int> points = GetPointsOfStripe(stripe);
    const auto cut = points.begin() + place.position;
    SetPointsOfStripe(shape->stripes + place.stripe, {points.begin(), cut + 1});
    AppendStripe(shape, {cut, points.end()});
}

// Where the chain begins and ends stripes end; the chain is the last stripe.
static void AddChainToStripes(Shape* shape, const Chain& chain, const std::vector<int>& inner)
{
    const int oldnumber = shape->stripenumber;
    const StripePlace start = FindOnStripes(shape, chain.start, 0);
    StripePlace end = FindOnStripes(shape, chain.end, 0);
    CutStripe(shape, start);
    if (end.stripe == start.stripe) {
        const StripePlace moved = FindOnStripes(shape, chain.end, oldnumber); // in the new piece
        end = moved.stripe == noone ? end : moved;
    }
    CutStripe(shape, end);
    AppendStripe(shape, GetStripeOfChain(chain, inner));
}

// The two outlines into which a chain cuts one, with the chain's inner points.
struct OutlineHalves {
    std::vector<int> lower; // from the lower of the two positions to the higher, and back
    std::vector<int> upper; // from the higher round the end to the lower, and back
};

// Both halves keep the sense of the outline, so they run the chain in opposite directions.
static OutlineHalves CutOutline(Side* side, const Chain& chain, std::vector<int> inner)
{
    auto [lo, hi] = FindPlacesOfChain(side, chain);
    if (lo > hi) {
        std::swap(lo, hi);
        std::reverse(inner.begin(), inner.end());
    }
    const std::vector<int> outline = GetCornersOfSide(*side); // inner runs from lo to hi now
    OutlineHalves halves;
    halves.lower.assign(outline.begin() + lo, outline.begin() + hi + 1);
    halves.lower.insert(halves.lower.end(), inner.rbegin(), inner.rend());
    halves.upper.assign(outline.begin() + hi, outline.end());
    halves.upper.insert(halves.upper.end(), outline.begin(), outline.begin() + lo + 1);
    halves.upper.insert(halves.upper.end(), inner.begin(), inner.end());
    return halves;
}

void CutAlongChain(Shape* shape, const Chain& chain)
{
    const int cut = FindSideOfChain(shape, chain);
    const std::vector<int> inner = AppendInnerChain(shape, chain);
    AddChainToStripes(shape, chain, inner);
    const OutlineHalves halves = CutOutline(shape->sides + cut, chain, inner);
    ResizeRunOfSide(shape, cut, 0); // its triangles go to the end
    SetCornersOfSide(shape->sides + cut, halves.lower);
    CutSideAgain(shape, cut);
    AppendSide(shape, halves.upper, shape->sides[cut]);
    CutSideAgain(shape, shape->sidenumber - 1);
}

// Whether side 0 of a body, seen from the body's centre, shows its back.
static bool FacesOutwards(Shape* shape)
{
    Side* side = shape->sides;
    float outwards[3];
    Store(ToVector(GetCenterOfSide(side).get()) - ToVector(shape->center), outwards);
    return GetAlfaOfTwoVectors(outwards, GetNormalOfSide(side).get()) <= std::numbers::pi / 2;
}

// The new sides follow the outline in the sense of side 0: one of the two senses has to turn.
static void TurnSidesOutwards(Shape* shape)
{
    if (FacesOutwards(shape)) {
        ReverseCornersOfSide(&shape->sides[1]);
        ReverseCornersOfSide(&shape->sides[2]);
        return;
    }
    ReverseCornersOfSide(&shape->sides[0]);
    CutSideAgain(shape, 0);
}

// The arc between the chain's ends, of a half of the outline.
static std::vector<int> GetArc(const std::vector<int>& half, const std::vector<int>& inner)
{
    return {half.begin(), half.end() - std::ptrdiff_t(inner.size())};
}

static void SetStripesOfRaisedShape(Shape* shape, const OutlineHalves& halves, const Chain& chain,
                                    const std::vector<int>& inner)
{
    while (shape->stripenumber > 0) {
        RemoveStripeAt(shape, shape->stripenumber - 1);
    }
    AppendStripe(shape, GetArc(halves.lower, inner));
    AppendStripe(shape, GetArc(halves.upper, inner));
    AppendStripe(shape, GetStripeOfChain(chain, inner));
}

void RaiseOverChain(Shape* shape, const Chain& chain)
{
    const std::vector<int> inner = AppendInnerChain(shape, chain);
    const OutlineHalves halves = CutOutline(shape->sides, chain, inner);
    SetStripesOfRaisedShape(shape, halves, chain, inner);
    shape->sides[0].visibility = VISIBLE_FRONT; // the body is closed
    AppendSide(shape, halves.lower, shape->sides[0]);
    AppendSide(shape, halves.upper, shape->sides[0]);
    SetCenterPointOfShape(shape);
    TurnSidesOutwards(shape);
    CutSideAgain(shape, 1);
    CutSideAgain(shape, 2);
}

} // namespace korvane
