#include "geometry/pointinsert.h"

#include "geometry/stripes.h"
#include "geometry/surgery.h"
#include "scene/model.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

namespace korvane
{

// A place in an outline between a corner and the next.
struct Gap {
    int side;
    std::size_t position; // of the corner before it
    bool forward;         // from the asked-for first point to the second
};

// The gaps between two points, in the order of the sides and their corners.
static std::vector<Gap> FindGaps(const Shape* shape, int from, int to)
{
    std::vector<Gap> gaps;
    for (int s = 0; s < shape->sidenumber; s++) {
        const std::vector<int> corners = GetCornersOfSide(shape->sides[s]);
        for (std::size_t i = 0; i < corners.size(); i++) {
            const int next = corners[(i + 1) % corners.size()];
            if ((corners[i] == from && next == to) || (corners[i] == to && next == from)) {
                gaps.push_back({s, i, corners[i] == from});
            }
        }
    }
    return gaps;
}

// The gap that faces the first across the edge: the next the other way round, which may be in the
// same side. Where none is, the next in another side: the two are turned against each other.
static std::optional<Gap> FindFacingGap(const std::vector<Gap>& gaps)
{
    const Gap& first = gaps.front();
    auto facing = std::find_if(gaps.begin(), gaps.end(),
                               [&](const Gap& gap) { return gap.forward != first.forward; });
    if (facing == gaps.end()) {
        facing = std::find_if(gaps.begin(), gaps.end(),
                              [&](const Gap& gap) { return gap.side != first.side; });
    }
    return facing != gaps.end() ? std::optional(*facing) : std::nullopt;
}

static void InsertCorner(Shape* shape, const Gap& gap, int point)
{
    Side* side = &shape->sides[gap.side];
    std::vector<int> corners = GetCornersOfSide(*side);
    corners.insert(corners.begin() + std::ptrdiff_t(gap.position) + 1, point);
    SetCornersOfSide(side, corners);
}

int InsertPoint(Shape* shape, int stripe, int position, const float place[3])
{
    std::vector<int> line = GetPointsOfStripe(shape->stripes[stripe]);
    const auto next = line.begin() + position;
    const std::vector<Gap> gaps = FindGaps(shape, *(next - 1), *next);
    if (gaps.empty()) {
        return -1;
    }
    const std::optional<Gap> facing = FindFacingGap(gaps);
    float points[1][3];
    std::copy_n(place, 3, points[0]);
    const int point = AppendPoints(shape, points, 1);
    line.insert(next, point);
    SetPointsOfStripe(&shape->stripes[stripe], line);
    if (facing) { // the later gap first: the earlier one stays where it is
        InsertCorner(shape, *facing, point);
    }
    InsertCorner(shape, gaps.front(), point);
    CutSideAgain(shape, gaps.front().side);
    if (facing && facing->side != gaps.front().side) {
        CutSideAgain(shape, facing->side);
    }
    if (shape->sidenumber == 1) { // its border is its outline, which may pass an edge twice
        SetStripesOfShape(shape);
    }
    return point;
}

} // namespace korvane
