#include "geometry/surgery.h"

#include "geometry/triangulation.h"
#include "scene/arrays.h"
#include "scene/model.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <set>

namespace korvane
{

int AppendPoints(Shape* shape, const float points[][3], int number)
{
    const int first = shape->pointnumber;
    GrowArray(shape->points, first, first + number);
    std::copy_n(&points[0][0], 3 * number, &shape->points[first][0]);
    shape->pointnumber += number;
    return first;
}

static int* CopyToArray(const std::vector<int>& values)
{
    return CopyArray(values.data(), int(values.size()));
}

bool HasCorner(const Side& side, int point)
{
    const int* end = side.points + side.pointnumber;
    return std::find(static_cast<const int*>(side.points), end, point) != end;
}

std::vector<int> GetCornersOfSide(const Side& side)
{
    return {side.points, side.points + side.pointnumber};
}

std::vector<int> GetPointsOfStripe(const Stripe& stripe)
{
    return {stripe.points, stripe.points + stripe.pointnumber};
}

std::vector<int> GetReversed(const std::vector<int>& points)
{
    return {points.rbegin(), points.rend()};
}

void SetCornersOfSide(Side* side, const std::vector<int>& corners)
{
    FreeArray(side->points);
    side->points = CopyToArray(corners);
    side->pointnumber = int(corners.size());
}

void ReverseCornersOfSide(Side* side)
{
    std::reverse(side->points, side->points + side->pointnumber);
}

void SetPointsOfStripe(Stripe* stripe, const std::vector<int>& points)
{
    FreeArray(stripe->points);
    stripe->points = CopyToArray(points);
    stripe->pointnumber = int(points.size());
}

void AppendStripe(Shape* shape, const std::vector<int>& points)
{
    GrowArray(shape->stripes, shape->stripenumber, shape->stripenumber + 1);
    Stripe& stripe = shape->stripes[shape->stripenumber++];
    SetPointsOfStripe(&stripe, points);
    stripe.shape = shape;
}

void RemoveStripeAt(Shape* shape, int stripe)
{
    FreeArray(shape->stripes[stripe].points);
    RemoveAt(shape->stripes, shape->stripenumber, stripe);
}

static void GrowTriangles(Shape* shape, int number)
{
    GrowArray(shape->triangles, shape->trianglenumber, number);
    for (int i = shape->trianglenumber; i < number; i++) {
        shape->triangles[i].shape = shape;
    }
    shape->trianglenumber = number;
}

void AppendSide(Shape* shape, const std::vector<int>& corners, const Side& like)
{
    Side side = like; // before the array moves: `like` may stand in it
    side.points = CopyToArray(corners);
    side.pointnumber = int(corners.size());
    side.trianglenumber = side.pointnumber - 2;
    side.triangles = NewArray<int>(side.trianglenumber);
    std::iota(side.triangles, side.triangles + side.trianglenumber, shape->trianglenumber);
    side.shape = shape;
    GrowArray(shape->sides, shape->sidenumber, shape->sidenumber + 1);
    shape->sides[shape->sidenumber++] = side;
    GrowTriangles(shape, shape->trianglenumber + side.trianglenumber);
}

// Raises the indices of the runs from `first` on by `difference`.
static void ShiftRuns(Shape* shape, int first, int difference)
{
    for (int s = 0; s < shape->sidenumber; s++) {
        Side& side = shape->sides[s];
        for (int k = 0; k < side.trianglenumber; k++) {
            if (side.triangles[k] >= first) {
                side.triangles[k] += difference;
            }
        }
    }
}

void ResizeRunOfSide(Shape* shape, int side, int number)
{
    Side& resized = shape->sides[side];
    const int oldnumber = resized.trianglenumber;
    const int difference = number - oldnumber;
    if (difference == 0) {
        return;
    }
    const int first = oldnumber > 0 ? resized.triangles[0] : shape->trianglenumber;
    const int end = first + oldnumber;
    const int oldtotal = shape->trianglenumber;
    if (difference > 0) {
        GrowTriangles(shape, oldtotal + difference);
    }
    std::memmove(shape->triangles + end + difference, shape->triangles + end,
                 std::size_t(oldtotal - end) * sizeof(Triangle));
    shape->trianglenumber = oldtotal + difference;
    ShiftRuns(shape, end, difference);
    FreeArray(resized.triangles);
    resized.triangles = NewArray<int>(number);
    std::iota(resized.triangles, resized.triangles + number, first);
    resized.trianglenumber = number;
}

void RemoveSide(Shape* shape, int side)
{
    ResizeRunOfSide(shape, side, 0);
    FreeArray(shape->sides[side].points);
    FreeArray(shape->sides[side].triangles);
    RemoveAt(shape->sides, shape->sidenumber, side);
}

void CutSideAgain(Shape* shape, int side)
{
    Side& cut = shape->sides[side];
    ResizeRunOfSide(shape, side, cut.pointnumber - 2);
    SetTrianglesOfSide(&cut, cut.triangles[0]);
}

void CutSidesAgain(Shape* shape)
{
    for (int s = 0; s < shape->sidenumber; s++) {
        CutSideAgain(shape, s);
    }
}

// The new index of every point, -1 for those that go.
static std::vector<int> GetNewIndices(const std::vector<bool>& marked)
{
    std::vector<int> indices(marked.size());
    int next = 0;
    for (std::size_t i = 0; i < marked.size(); i++) {
        indices[i] = marked[i] ? -1 : next++;
    }
    return indices;
}

// Renames the entries of a list and drops those that are gone; returns the new length.
static int RenameEntries(int* list, int number, const std::vector<int>& indices)
{
    int kept = 0;
    for (int i = 0; i < number; i++) {
        const int renamed = indices[std::size_t(list[i])];
        if (renamed >= 0) {
            list[kept++] = renamed;
        }
    }
    return kept;
}

static void RenameVertexes(Shape* shape, const std::vector<int>& indices)
{
    if (shape->vertexnumber == 0) {
        return;
    }
    shape->vertexnumber = RenameEntries(shape->vertexes, shape->vertexnumber, indices);
    if (shape->vertexnumber == 0) {
        FreeArray(shape->vertexes);
    }
}

static void RenameCorners(Shape* shape, const std::vector<int>& indices)
{
    for (int i = 0; i < shape->trianglenumber; i++) {
        for (int& corner : shape->triangles[i].points) {
            corner = std::max(indices[std::size_t(corner)], 0); // a corner that goes is cut again
        }
    }
    for (int i = 0; i < shape->stripenumber; i++) {
        Stripe& stripe = shape->stripes[i];
        stripe.pointnumber = RenameEntries(stripe.points, stripe.pointnumber, indices);
    }
    for (int i = 0; i < shape->sidenumber; i++) {
        Side& side = shape->sides[i];
        side.pointnumber = RenameEntries(side.points, side.pointnumber, indices);
    }
    RenameVertexes(shape, indices);
}

std::vector<int> RemovePoints(Shape* shape, const std::vector<bool>& marked)
{
    std::vector<int> indices = GetNewIndices(marked);
    int kept = 0;
    for (std::size_t i = 0; i < indices.size(); i++) {
        if (indices[i] >= 0) {
            std::copy_n(shape->points[i], 3, shape->points[kept++]);
        }
    }
    if (kept != shape->pointnumber) {
        shape->pointnumber = kept;
        RenameCorners(shape, indices);
    }
    return indices;
}

std::vector<int> RemoveUnusedPoints(Shape* shape)
{
    std::vector<bool> unused(std::size_t(shape->pointnumber), true);
    for (int s = 0; s < shape->sidenumber; s++) {
        for (const int corner : GetCornersOfSide(shape->sides[s])) {
            unused[std::size_t(corner)] = false;
        }
    }
    return RemovePoints(shape, unused);
}

void MovePoint(Shape* shape, int point, const float place[3])
{
    std::copy_n(place, 3, shape->points[point]);
    for (int s = 0; s < shape->sidenumber; s++) {
        Side& side = shape->sides[s];
        if (HasCorner(side, point)) {
            SetTrianglesOfSide(&side, side.triangles[0]);
        }
    }
}

void RemoveSpikes(std::vector<int>& outline)
{
    std::vector<int> kept;
    for (const int corner : outline) {
        if (kept.size() >= 2 && kept[kept.size() - 2] == corner) {
            kept.pop_back();
        } else if (kept.empty() || kept.back() != corner) {
            kept.push_back(corner);
        }
    }
    while (kept.size() >= 2) { // the same where the outline closes
        if (kept.back() == kept.front() || kept[kept.size() - 2] == kept.front()) {
            kept.pop_back();
        } else if (kept.back() == kept[1]) {
            kept.erase(kept.begin());
        } else {
            break;
        }
    }
    outline = kept;
}

void MarkPoints(Shape* shape, const std::vector<int>& points, bool marked)
{
    std::set<int> vertexes(shape->vertexes, shape->vertexes + shape->vertexnumber);
    for (const int point : points) {
        if (marked) {
            vertexes.insert(point);
        } else {
            vertexes.erase(point);
        }
    }
    const std::vector<int> sorted(vertexes.begin(), vertexes.end());
    FreeArray(shape->vertexes);
    shape->vertexnumber = int(sorted.size());
    if (!sorted.empty()) {
        shape->vertexes = CopyArray(sorted.data(), shape->vertexnumber);
    }
}

} // namespace korvane
