#include "geometry/sidemerge.h"

#include "geometry/stripes.h"
#include "geometry/surgery.h"
#include "scene/model.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace korvane
{

// Points in the order of a walk: a stripe, or an outline, which closes from its last to its first.
using Walk = std::vector<int>;

// Whether an outline runs along the whole chain from this position on.
static bool RunsAlong(const Walk& outline, std::size_t position, const Walk& chain)
{
    for (std::size_t i = 0; i < chain.size(); i++) {
        if (outline[(position + i) % outline.size()] != chain[i]) {
            return false;
        }
    }
    return chain.size() <= outline.size() + 1; // a closed chain may go all round, and no further
}

// The positions from which an outline runs along the chain. Looked for by position: an outline may
// pass a point more than once.
static std::vector<std::size_t> FindRuns(const Walk& outline, const Walk& chain)
{
    std::vector<std::size_t> positions;
    for (std::size_t i = 0; i < outline.size(); i++) {
        if (RunsAlong(outline, i, chain)) {
            positions.push_back(i);
        }
    }
    return positions;
}

// The sides that run along the chain in either direction, in their order, one entry for every run.
static std::vector<int> FindSidesAlong(const Shape* shape, const Walk& chain)
{
    std::vector<int> sides;
    const Walk back = GetReversed(chain);
    for (int s = 0; s < shape->sidenumber; s++) {
        const Walk outline = GetCornersOfSide(shape->sides[s]);
        const std::size_t runs = FindRuns(outline, chain).size() + FindRuns(outline, back).size();
        sides.insert(sides.end(), runs, s);
    }
    return sides;
}

// The first position of an outline that is no inner point of the run of `length` points that starts
// at `start`.
static std::size_t FindFirstOffRun(std::size_t outlinesize, std::size_t start, std::size_t length)
{
    std::size_t position = 0;
    for (;; position++) {
        const std::size_t along = (position + outlinesize - start) % outlinesize;
        if (along == 0 || along + 1 >= length) {
            return position;
        }
    }
}

// The outline round two sides that meet along a chain. It runs as the first does, from the first's
// first corner that is no inner point of the chain. A second side that runs along the chain the
// same way as the first is walked backward.
//
//      a ...  s0 <- . <- sn  ... a        of a: from sn on round to s0
//      b ...  s0 -> . -> sn  ... b        of b: what lies between s0 and sn
static Walk JoinOutlines(const Walk& a, Walk b, Walk chain)
{
    if (FindRuns(a, chain).empty()) {
        chain = GetReversed(chain);
    }
    const Walk back = GetReversed(chain);
    if (FindRuns(b, back).empty()) {
        b = GetReversed(b);
    }
    const std::size_t start = FindRuns(a, chain).front();
    const std::size_t end = start + chain.size() - 1;
    Walk joined;
    for (std::size_t i = end; i <= start + a.size(); i++) {
        joined.push_back(a[i % a.size()]);
    }
    const std::size_t startofb = FindRuns(b, back).front();
    for (std::size_t i = startofb + back.size(); i < startofb + b.size(); i++) {
        joined.push_back(b[i % b.size()]);
    }
    const std::size_t first = FindFirstOffRun(a.size(), start, chain.size());
    const std::size_t place = (first + 2 * a.size() - end) % a.size();
    std::rotate(joined.begin(), joined.begin() + std::ptrdiff_t(place), joined.end());
    RemoveSpikes(joined);
    return joined;
}

bool DissolveStripe(Shape* shape, int stripe, int* followed)
{
    const Walk chain = GetPointsOfStripe(shape->stripes[stripe]);
    const std::vector<int> sides = FindSidesAlong(shape, chain);
    if (sides.size() != 2 || sides[0] == sides[1]) {
        return false;
    }
    Side& a = shape->sides[sides[0]];
    if (shape->sidenumber == 3) {
        RemoveSide(shape, sides[1]);
        RemoveSide(shape, sides[0]);
        shape->sides[0].visibility = VISIBLE_BOTH;
    } else {
        const Walk joined =
            JoinOutlines(GetCornersOfSide(a), GetCornersOfSide(shape->sides[sides[1]]), chain);
        if (joined.size() < 3) {
            return false;
        }
        SetCornersOfSide(&a, joined);
        RemoveSide(shape, sides[1]);
    }
    const std::vector<int> indices = RemoveUnusedPoints(shape);
    if (followed != nullptr) {
        *followed = indices[std::size_t(*followed)];
    }
    CutSidesAgain(shape);
    SetStripesOfShape(shape);
    return true;
}

} // namespace korvane
