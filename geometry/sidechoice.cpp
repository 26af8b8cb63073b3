#include "geometry/sidechoice.h"

#include "geometry/shapegeometry.h"
#include "geometry/sideplane.h"
#include "geometry/surgery.h"
#include "geometry/vectors.h"
#include "scene/model.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace korvane
{

static bool AreNeighbours(const Side& side, int a, int b)
{
    int before = side.points[side.pointnumber - 1];
    for (int i = 0; i < side.pointnumber; i++) {
        const int corner = side.points[i];
        if ((before == a && corner == b) || (before == b && corner == a)) {
            return true;
        }
        before = corner;
    }
    return false;
}

// The middle of the first two points, or from three points on the mean of all.
static void StoreReferencePoint(const Chain& chain, float* reference)
{
    const int number = std::max(chain.number, 2);
    Vector sum = {0, 0, 0};
    for (int i = 0; i < number; i++) {
        AddTo(sum, chain.points[i]);
    }
    Store(sum / number, reference);
}

// Not a number when p is the middle of the triangle's first two corners, as happens to a chain
// straight along it, or when corners lie on each other: the distance from that middle is meant.
static double GetDistanceFromTriangle(const float* p, const Triangle* triangle)
{
    const double distance = GetDistancePointTriangle(p, triangle);
    if (!std::isnan(distance)) {
        return distance;
    }
    const float* a = triangle->shape->points[triangle->points[0]];
    const float* b = triangle->shape->points[triangle->points[1]];
    float middle[3];
    for (int i = 0; i < 3; i++) {
        middle[i] = float((double(a[i]) + b[i]) / 2);
    }
    return GetDistanceOfTwoPoints(p, middle);
}

static double GetDistanceFromSide(const float* p, const Side& side)
{
    double least = std::numeric_limits<double>::infinity();
    for (int k = 0; k < side.trianglenumber; k++) {
        const Triangle* triangle = side.shape->triangles + side.triangles[k];
        least = std::min(least, GetDistanceFromTriangle(p, triangle));
    }
    return least;
}

static std::vector<int> GetCandidates(const Shape* shape, const Chain& chain)
{
    std::vector<int> candidates;
    for (int s = 0; s < shape->sidenumber; s++) {
        const Side& side = shape->sides[s];
        if (HasCorner(side, chain.start) && HasCorner(side, chain.end)) {
            candidates.push_back(s);
        }
    }
    return candidates;
}

int FindSideOfChain(const Shape* shape, const Chain& chain)
{
    const std::vector<int> candidates = GetCandidates(shape, chain);
    if (candidates.size() < 2) {
        return candidates.empty() ? noone : candidates[0];
    }
    float reference[3];
    StoreReferencePoint(chain, reference);
    int nearest = candidates[0];
    double least = GetDistanceFromSide(reference, shape->sides[nearest]);
    for (const int candidate : candidates) {
        const double distance = GetDistanceFromSide(reference, shape->sides[candidate]);
        if (distance < least) { // strictly nearer: the first of equally near sides stays
            nearest = candidate;
            least = distance;
        }
    }
    return nearest;
}

// An edge of four sides would come of a second one between the same points.
static bool RunsAlongAnEdge(const Shape* shape, const Chain& chain)
{
    return chain.number == 2 &&
           std::any_of(shape->sides, shape->sides + shape->sidenumber, [&chain](const Side& side) {
               return AreNeighbours(side, chain.start, chain.end);
           });
}

bool CanTakeChain(const Shape* shape, const Chain& chain)
{
    return chain.number >= 2 && chain.start != chain.end && !RunsAlongAnEdge(shape, chain) &&
           !GetCandidates(shape, chain).empty();
}

// A point laid flat into the plane of a side.
using FlatPoint = std::array<float, 2>;

static FlatPoint LayFlat(const FlatPlane& plane, const float* point)
{
    FlatPoint flat;
    LayFlat(plane, point, flat.data());
    return flat;
}

// The angle counter-clockwise from one direction at a corner to another, 0..2 pi.
static double GetTurn(const FlatPoint& corner, const FlatPoint& from, const FlatPoint& to)
{
    const double ax = double(from[0]) - corner[0];
    const double ay = double(from[1]) - corner[1];
    const double bx = double(to[0]) - corner[0];
    const double by = double(to[1]) - corner[1];
    const double turn = std::atan2(ax * by - ay * bx, ax * bx + ay * by);
    return turn < 0 ? turn + 2 * std::numbers::pi : turn;
}

static bool RunsCounterClockwise(const std::vector<FlatPoint>& outline)
{
    double area = 0;
    FlatPoint before = outline.back();
    for (const FlatPoint& corner : outline) {
        area += double(before[0]) * corner[1] - double(before[1]) * corner[0];
        before = corner;
    }
    return area > 0;
}

// Whether a target lies in the direction of the inside, seen from the corner at a position.
static bool LeadsInside(const std::vector<FlatPoint>& outline, int position,
                        const FlatPoint& target)
{
    const int number = int(outline.size());
    const FlatPoint& corner = outline[std::size_t(position)];
    const FlatPoint* first = &outline[std::size_t(IndexLoop(position + 1, number))];
    const FlatPoint* last = &outline[std::size_t(IndexLoop(position - 1, number))];
    if (!RunsCounterClockwise(outline)) {
        std::swap(first, last);
    }
    return GetTurn(corner, *first, target) < GetTurn(corner, *first, *last);
}

static int FindPlaceOfEnd(Side* side, int point, const float* target)
{
    std::vector<int> positions;
    for (int i = 0; i < side->pointnumber; i++) {
        if (side->points[i] == point) {
            positions.push_back(i);
        }
    }
    if (positions.size() == 1) {
        return positions[0];
    }
    const FlatPlane plane = PreparePlane(MakePlaneOfSide(side));
    std::vector<FlatPoint> outline(std::size_t(side->pointnumber));
    for (int i = 0; i < side->pointnumber; i++) {
        outline[std::size_t(i)] = LayFlat(plane, GetPointOfSide(side, i));
    }
    const FlatPoint flat = LayFlat(plane, target);
    const auto inside = std::find_if(positions.begin(), positions.end(), [&](int position) {
        return LeadsInside(outline, position, flat);
    });
    return inside == positions.end() ? positions[0] : *inside;
}

ChainPlaces FindPlacesOfChain(Side* side, const Chain& chain)
{
    return {FindPlaceOfEnd(side, chain.start, chain.points[1]),
            FindPlaceOfEnd(side, chain.end, chain.points[chain.number - 2])};
}

} // namespace korvane
