#include "geometry/stripes.h"

#include "scene/arrays.h"
#include "scene/model.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <set>
#include <unordered_set>
#include <vector>

namespace korvane
{

// What tells two runs of outline apart: first, second and last point.
using RunKey = std::array<int, 3>;

struct RunKeyHash {
    std::size_t operator()(const RunKey& key) const
    {
        std::uint64_t hash = 0;
        for (int point : key) {
            hash = (hash ^ std::uint32_t(point)) * 0x9E3779B97F4A7C15U;
            hash ^= hash >> 32;
        }
        return std::size_t(hash);
    }
};

struct StripeSearch {
    std::vector<int> occurrences; // per point: how often it stands in the outlines
    std::unordered_set<RunKey, RunKeyHash> runs;
    std::set<std::vector<int>> outlines; // of the sides without a junction
};

static void AddStripe(Shape* shape, const std::vector<int>& points)
{
    GrowArray(shape->stripes, shape->stripenumber, shape->stripenumber + 1);
    Stripe& stripe = shape->stripes[shape->stripenumber++];
    stripe.pointnumber = int(points.size());
    stripe.points = CopyArray(points.data(), stripe.pointnumber);
    stripe.shape = shape;
}

static void FreeStripes(Shape* shape)
{
    for (int i = 0; i < shape->stripenumber; i++) {
        FreeArray(shape->stripes[i].points);
    }
    FreeArray(shape->stripes);
    shape->stripenumber = 0;
}

// The side's points from one position to another, both included, past the end when `to` is not
// after `from`.
static std::vector<int> GetRun(const Side& side, int from, int to)
{
    std::vector<int> run;
    int i = from;
    do {
        run.push_back(side.points[i]);
        i = i + 1 == side.pointnumber ? 0 : i + 1;
    } while (i != to);
    run.push_back(side.points[to]);
    return run;
}

// The same list of points for every outline that is a rotation of this one.
static std::vector<int> RotateToLeast(const std::vector<int>& outline)
{
    const std::size_t n = outline.size();
    std::size_t least = 0;
    std::size_t other = 1;
    std::size_t same = 0; // so many points are alike from both starts
    while (least < n && other < n && same < n) {
        const int a = outline[(least + same) % n];
        const int b = outline[(other + same) % n];
        if (a == b) {
            same++;
            continue;
        }
        // no start up to the first difference can be the least
        (a > b ? least : other) += same + 1;
        other += least == other ? 1 : 0;
        same = 0;
    }
    std::vector<int> rotated(outline);
    std::rotate(rotated.begin(), rotated.begin() + std::ptrdiff_t(std::min(least, other)),
                rotated.end());
    return rotated;
}

static void AddClosedStripe(Shape* shape, const Side& side, StripeSearch& search)
{
    std::vector<int> outline(side.points, side.points + side.pointnumber);
    const std::vector<int> forward = RotateToLeast(outline);
    const std::vector<int> backward = RotateToLeast({outline.rbegin(), outline.rend()});
    if (search.outlines.insert(std::min(forward, backward)).second) {
        outline.push_back(outline.front());
        AddStripe(shape, outline);
    }
}

static void AddRun(Shape* shape, const std::vector<int>& run, StripeSearch& search)
{
    const RunKey key = {run.front(), run[1], run.back()};
    const RunKey reversed = {run.back(), run[run.size() - 2], run.front()};
    if (search.runs.count(reversed) == 0 && search.runs.insert(key).second) {
        AddStripe(shape, run);
    }
}

static void AddStripesOfSide(Shape* shape, const Side& side, StripeSearch& search)
{
    std::vector<int> junctions; // positions
    for (int i = 0; i < side.pointnumber; i++) {
        if (search.occurrences[std::size_t(side.points[i])] > 2) {
            junctions.push_back(i);
        }
    }
    if (junctions.empty()) {
        AddClosedStripe(shape, side, search);
        return;
    }
    for (std::size_t i = 0; i < junctions.size(); i++) {
        const int end = i + 1 < junctions.size() ? junctions[i + 1] : junctions.front();
        AddRun(shape, GetRun(side, junctions[i], end), search);
    }
}

void SetStripesOfShape(Shape* shape)
{
    FreeStripes(shape);
    StripeSearch search;
    search.occurrences.assign(std::size_t(shape->pointnumber), 0);
    for (int s = 0; s < shape->sidenumber; s++) {
        for (int i = 0; i < shape->sides[s].pointnumber; i++) {
            search.occurrences[std::size_t(shape->sides[s].points[i])]++;
        }
    }
    if (shape->sidenumber == 1) {
        AddClosedStripe(shape, shape->sides[0], search);
        return;
    }
    for (int s = 0; s < shape->sidenumber; s++) {
        AddStripesOfSide(shape, shape->sides[s], search);
    }
}

} // namespace korvane
