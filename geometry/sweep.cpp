#include "geometry/sweep.h"

#include "geometry/shapegeometry.h"
#include "geometry/sidecut.h"
#include "geometry/sideplane.h"
#include "geometry/surgery.h"
#include "scene/model.h"

#include <algorithm>
#include <numbers>

namespace korvane
{

using Ring = std::vector<int>; // indices of points, in order round the ring
using Edges = std::vector<std::array<int, 2>>;

// What a wall of a sweep looks like: as the swept side does, from the front.
static Side GetWallLook(const Side& side)
{
    Side look = side;
    look.visibility = VISIBLE_FRONT;
    return look;
}

// The edges of a ring, each from one position to the next; the last one closes it.
static Edges GetEdges(const Ring& ring)
{
    Edges edges;
    for (std::size_t k = 0; k < ring.size(); k++) {
        edges.push_back({ring[k], ring[(k + 1) % ring.size()]});
    }
    return edges;
}

static void AppendWalls(Shape* shape, const Edges& lower, const Edges& upper, const Side& look)
{
    for (std::size_t k = 0; k < lower.size(); k++) {
        AppendSide(shape, {lower[k][1], lower[k][0], upper[k][0], upper[k][1]}, look);
    }
}

// Appends the walls between each ring and the next.
static void AppendWallsAlong(Shape* shape, const std::vector<Ring>& rings, const Side& look)
{
    for (std::size_t i = 1; i < rings.size(); i++) {
        AppendWalls(shape, GetEdges(rings[i - 1]), GetEdges(rings[i]), look);
    }
}

static int AppendPlace(Shape* shape, const Place& place)
{
    const float point[1][3] = {{place[0], place[1], place[2]}};
    return AppendPoints(shape, point, 1);
}

// Appends the points of ring i.
static Ring AppendRing(Shape* shape, const Sweep& sweep, int i)
{
    Ring ring;
    for (const Place& point : PlaceRing(sweep, i)) {
        ring.push_back(AppendPlace(shape, point));
    }
    return ring;
}

// `first` and the rings from 1 to number - 1, whose points are appended.
static std::vector<Ring> AppendRings(Shape* shape, const Sweep& sweep, const Ring& first,
                                     int number)
{
    std::vector<Ring> rings = {first};
    for (int i = 1; i < number; i++) {
        rings.push_back(AppendRing(shape, sweep, i));
    }
    return rings;
}

static Place Negate(const Place& v)
{
    return {-v[0], -v[1], -v[2]};
}

static Place CopyNormalOfSide(Side* side)
{
    return ToPlace(GetNormalOfSide(side).get());
}

// Whether the path's first step goes to the side of the normal, or square to it.
static bool LeavesAlong(const Places& path, const Place& normal)
{
    const Place step = GetDirection(path[0], path[1]);
    return GetAlfaOfTwoVectors(normal.data(), step.data()) <= std::numbers::pi / 2;
}

// Turns a flat shape's side away from the path and puts its points across the path's start: they
// are ring 0 of the sweep, which is returned. The sweep's directions are known.
static Ring TurnFlatSide(Shape* shape, Sweep& sweep)
{
    Side& side = shape->sides[0];
    const Place normal = CopyNormalOfSide(&side);
    sweep.along = Negate(normal);
    if (!LeavesAlong(sweep.path, sweep.along)) {
        ReverseCornersOfSide(&side);
        sweep.along = normal;
    }
    sweep.profile = GetProfileOfSide(&side);
    const Places places = PlaceRing(sweep, 0);
    Ring ring = GetCornersOfSide(side);
    for (std::size_t k = 0; k < ring.size(); k++) {
        std::copy_n(places[k].data(), 3, shape->points[ring[k]]);
    }
    return ring;
}

static void SweepToTube(Shape* shape, const Places& path)
{
    Sweep sweep = {path, GetDirectionsOfPath(path), {}, {}};
    const Ring first = TurnFlatSide(shape, sweep);
    const std::vector<Ring> rings = AppendRings(shape, sweep, first, int(path.size()));
    shape->sides[0].visibility = VISIBLE_FRONT;
    const Side look = shape->sides[0];
    AppendWallsAlong(shape, rings, look);
    AppendSide(shape, GetReversed(rings.back()), look);
}

// The path's last point is its first again.
static void SweepToRing(Shape* shape, const Places& path)
{
    Sweep sweep = {path, GetDirectionsOfLoop(path), {}, {}};
    const Ring first = TurnFlatSide(shape, sweep);
    std::vector<Ring> rings = AppendRings(shape, sweep, first, int(path.size()) - 1);
    rings.push_back(first);
    AppendWallsAlong(shape, rings, GetWallLook(shape->sides[0]));
    RemoveSide(shape, 0); // its place is taken by the first wall
}

// The sweep of a body's side. Its outline is taken against the side's turning sense: so the walls
// run ring 0 as the side did, and meet its neighbours.
static Sweep MakeSweepOfBody(Side* side, const Places& path)
{
    const Place normal = CopyNormalOfSide(side);
    Places profile = GetProfileOfSide(side);
    std::reverse(profile.begin(), profile.end());
    return {path, GetDirectionsOfPath(path), profile,
            LeavesAlong(path, normal) ? normal : Negate(normal)};
}

static void DrawSideOut(Shape* shape, int index, const Places& path)
{
    const Sweep sweep = MakeSweepOfBody(&shape->sides[index], path);
    const Ring first = GetReversed(GetCornersOfSide(shape->sides[index]));
    const std::vector<Ring> rings = AppendRings(shape, sweep, first, int(path.size()));
    AppendWallsAlong(shape, rings, GetWallLook(shape->sides[index]));
    SetCornersOfSide(&shape->sides[index], GetReversed(rings.back())); // the side becomes the cap
}

// The target's corners in its own order, begun where they lie nearest to a ring. That ring runs
// against its side, so that the target, whose front looks towards it, needs no reversal.
static Ring GetTargetRing(const Side& target, const Places& ring)
{
    Places places;
    for (int k = 0; k < target.pointnumber; k++) {
        places.push_back(ToPlace(GetPointOfSide(&target, k)));
    }
    Ring corners = GetCornersOfSide(target);
    std::rotate(corners.begin(), corners.begin() + FindShift(ring, places), corners.end());
    return corners;
}

// Joins two sides by way of one ring. Where both have an edge, the wall below the ring and the one
// above it would lie back to back on the same four points: both are left out. A corner that both
// have, with walls before it and behind it, stands twice in the ring, once for either: the four
// walls would share one edge.
static void AppendShortBridge(Shape* shape, const Ring& lower, const Ring& middle,
                              const Ring& upper, const Side& look)
{
    const Edges low = GetEdges(lower);
    const Edges high = GetEdges(upper);
    const Edges between = GetEdges(middle);
    Edges keptlow, kepthigh, keptbetween;
    for (std::size_t k = 0; k < lower.size(); k++) {
        if (low[k] == high[k]) {
            continue;
        }
        keptlow.push_back(low[k]);
        kepthigh.push_back(high[k]);
        keptbetween.push_back(between[k]);
        const std::size_t before = k == 0 ? lower.size() - 1 : k - 1;
        if (lower[k] == upper[k] && low[before] != high[before]) {
            keptbetween.back()[0] = AppendPlace(shape, ToPlace(shape->points[middle[k]]));
        }
    }
    AppendWalls(shape, keptlow, keptbetween, look);
    AppendWalls(shape, keptbetween, kepthigh, look);
}

// Answers false, and changes nothing, when the two sides are the faces of one sheet and the bridge
// is one ring long: no wall would be left.
static bool BridgeSides(Shape* shape, int index, int target, const Places& path)
{
    const Sweep sweep = MakeSweepOfBody(&shape->sides[index], path);
    const int ringnumber = int(path.size()) - 1; // the ring at the path's end is the target's
    const Ring first = GetReversed(GetCornersOfSide(shape->sides[index]));
    const Ring last = GetTargetRing(shape->sides[target], PlaceRing(sweep, ringnumber - 1));
    if (ringnumber == 2 && first == last) {
        return false;
    }
    const Side look = GetWallLook(shape->sides[index]);
    std::vector<Ring> rings = AppendRings(shape, sweep, first, ringnumber);
    if (ringnumber == 2) {
        AppendShortBridge(shape, first, rings[1], last, look);
    } else {
        rings.push_back(last);
        AppendWallsAlong(shape, rings, look);
    }
    RemoveSide(shape, std::max(index, target));
    RemoveSide(shape, std::min(index, target));
    return true;
}

static bool IsTarget(const Shape& shape, int side, int target)
{
    return target >= 0 && target < shape.sidenumber && target != side &&
           shape.sides[target].pointnumber == shape.sides[side].pointnumber;
}

static bool SweepSideOfBody(Shape* shape, int side, const Places& path, int target, bool closed)
{
    if (!closed) {
        DrawSideOut(shape, side, path);
        return true;
    }
    return path.size() >= 3 && IsTarget(*shape, side, target) &&
           BridgeSides(shape, side, target, path);
}

static bool SweepFlatShape(Shape* shape, const Places& path, bool closed)
{
    if (!closed) {
        SweepToTube(shape, path);
        return true;
    }
    if (path.size() < 4) {
        return false;
    }
    SweepToRing(shape, path);
    return true;
}

bool SweepSide(Shape* shape, int side, const Places& path, int target, bool closed)
{
    if (side < 0 || side >= shape->sidenumber || path.empty()) {
        return false;
    }
    const bool isflat = !IsBody(shape);
    Places ended = path;
    if (isflat && closed) {
        ended.back() = ended.front(); // it is, but for the rounding of its way through the view
    }
    const Places steps = DropStillSteps(ended);
    if (steps.size() < 2 || !(isflat ? SweepFlatShape(shape, steps, closed)
                                     : SweepSideOfBody(shape, side, steps, target, closed))) {
        return false;
    }
    RemoveUnusedPoints(shape);
    CutSidesAgain(shape);
    return true;
}

} // namespace korvane
