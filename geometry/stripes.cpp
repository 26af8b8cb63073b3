#include "geometry/stripes.h"

#include "scene/arrays.h"
#include "scene/model.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

namespace korvane
{

// A run of outline from one junction to the next; the junction it starts from is known otherwise.
struct OutlineRun {
    int second; // the point after the start, noone in a free place
    int last;
};

// What is known of the points, and which runs are there already. Every junction has a stretch of
// `places`, hashed, with two for every run that can start from it, so that half of them stay free.
struct StripeSearch {
    std::vector<int> occurrences;    // per point: how often it stands in the outlines
    std::vector<std::size_t> starts; // per point the start of its stretch, and the end of the last
    std::vector<OutlineRun> places;
    std::set<std::vector<int>> outlines; // of the sides without a junction, see GetLeastOutline
};

static bool IsJunction(const StripeSearch& search, int point)
{
    return search.occurrences[std::size_t(point)] > 2;
}

static StripeSearch StartSearch(const Shape* shape)
{
    StripeSearch search;
    search.occurrences.assign(std::size_t(shape->pointnumber), 0);
    for (int s = 0; s < shape->sidenumber; s++) {
        const Side& side = shape->sides[s];
        for (int i = 0; i < side.pointnumber; i++) {
            search.occurrences[std::size_t(side.points[i])]++;
        }
    }
    search.starts.reserve(search.occurrences.size() + 1);
    search.starts.push_back(0);
    for (int number : search.occurrences) {
        search.starts.push_back(search.starts.back() + (number > 2 ? 2 * std::size_t(number) : 0));
    }
    search.places.assign(search.starts.back(), {noone, noone});
    return search;
}

// The place of a run among those that start from a junction: free when it is not there.
static OutlineRun& FindPlace(StripeSearch& search, int junction, const OutlineRun& run)
{
    const std::size_t start = search.starts[std::size_t(junction)];
    const std::size_t room = search.starts[std::size_t(junction) + 1] - start;
    constexpr std::uint32_t goldenratio = 2654435769; // spreads neighbouring indices
    const std::uint32_t hash =
        (std::uint32_t(run.second) * goldenratio ^ std::uint32_t(run.last)) * goldenratio;
    std::size_t i = std::size_t(std::uint64_t(hash) * room >> 32);
    for (;;) {
        OutlineRun& place = search.places[start + i];
        if (place.second == noone || (place.second == run.second && place.last == run.last)) {
            return place;
        }
        i = i + 1 == room ? 0 : i + 1;
    }
}

static void AddStripe(Shape* shape, const Side& side, int from, int pointnumber)
{
    GrowArray(shape->stripes, shape->stripenumber, shape->stripenumber + 1);
    Stripe& stripe = shape->stripes[shape->stripenumber++];
    stripe.pointnumber = pointnumber;
    stripe.points = NewUnfilledArray<int>(pointnumber);
    stripe.shape = shape;
    int position = from;
    for (int i = 0; i < pointnumber; i++) {
        stripe.points[i] = side.points[position];
        position = position + 1 == side.pointnumber ? 0 : position + 1;
    }
}

// The outline turned so that it starts with the least list of points: all rotations of an outline
// give the same.
static std::vector<int> GetLeastRotation(std::vector<int> outline)
{
    const std::size_t n = outline.size();
    std::size_t least = 0;
    std::size_t other = 1;
    std::size_t alike = 0; // so many points are the same from both starts
    while (least < n && other < n && alike < n) {
        const int a = outline[(least + alike) % n];
        const int b = outline[(other + alike) % n];
        if (a == b) {
            alike++;
            continue;
        }
        (a > b ? least : other) += alike + 1; // no start up to the difference can be the least
        other += least == other ? 1 : 0;
        alike = 0;
    }
    const auto start = outline.begin() + std::ptrdiff_t(std::min(least, other));
    std::rotate(outline.begin(), start, outline.end());
    return outline;
}

// The same list of points for all outlines that differ only in where they start and which way they
// run.
static std::vector<int> GetLeastOutline(const Side& side)
{
    const std::vector<int> outline(side.points, side.points + side.pointnumber);
    return std::min(GetLeastRotation(outline),
                    GetLeastRotation({outline.rbegin(), outline.rend()}));
}

static int FindJunction(const StripeSearch& search, const Side& side, int from)
{
    for (int i = from; i < side.pointnumber; i++) {
        if (IsJunction(search, side.points[i])) {
            return i;
        }
    }
    return noone;
}

// The run from one position of the outline to another, all round it when they are the same.
static void AddRun(Shape* shape, const Side& side, int from, int to, StripeSearch& search)
{
    const int first = side.points[from];
    const int second = side.points[from + 1 == side.pointnumber ? 0 : from + 1];
    const int beforelast = side.points[to == 0 ? side.pointnumber - 1 : to - 1];
    const int last = side.points[to];
    if (FindPlace(search, last, {beforelast, first}).second != noone) {
        return; // it is there the other way round
    }
    OutlineRun& place = FindPlace(search, first, {second, last});
    if (place.second == noone) {
        place = {second, last};
        AddStripe(shape, side, from, (to > from ? to : to + side.pointnumber) - from + 1);
    }
}

static void AddStripesOfSide(Shape* shape, const Side& side, StripeSearch& search)
{
    const int first = FindJunction(search, side, 0);
    if (first == noone) {
        if (search.outlines.insert(GetLeastOutline(side)).second) {
            AddStripe(shape, side, 0, side.pointnumber + 1);
        }
        return;
    }
    int from = first;
    do {
        const int next = FindJunction(search, side, from + 1);
        const int to = next == noone ? first : next;
        AddRun(shape, side, from, to, search);
        from = to;
    } while (from != first);
}

void SetStripesOfShape(Shape* shape)
{
    for (int i = 0; i < shape->stripenumber; i++) {
        FreeArray(shape->stripes[i].points);
    }
    FreeArray(shape->stripes);
    shape->stripenumber = 0;
    if (shape->sidenumber == 1) {
        AddStripe(shape, shape->sides[0], 0, shape->sides[0].pointnumber + 1);
        return;
    }
    StripeSearch search = StartSearch(shape);
    for (int s = 0; s < shape->sidenumber; s++) {
        AddStripesOfSide(shape, shape->sides[s], search);
    }
}

} // namespace korvane
