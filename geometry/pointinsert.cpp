#include "geometry/pointinsert.h"

#include "geometry/surgery.h"
#include "scene/model.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
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
// same side. Where none is, the next that there is: two sides that are turned against each other.
static std::optional<Gap> FindFacingGap(const std::vector<Gap>& gaps)
{
    const auto facing = std::find_if(gaps.begin(), gaps.end(), [&](const Gap& gap) {
        return gap.forward != gaps.front().forward;
    });
    if (facing != gaps.end()) {
        return *facing;
    }
    return gaps.size() > 1 ? std::optional(gaps[1]) : std::nullopt;
}

static void InsertCorner(Shape* shape, const Gap& gap, int point)
{
    Side* side = &shape->sides[gap.side];
    std::vector<int> corners = GetCornersOfSide(*side);
    corners.insert(corners.begin() + std::ptrdiff_t(gap.position) + 1, point);
    SetCornersOfSide(side, corners);
}

// A border that passes the edge both ways gets the point both times.
static void InsertIntoStripe(Stripe* stripe, int position, int point)
{
    std::vector<int> points = GetPointsOfStripe(*stripe);
    const int from = points[std::size_t(position) - 1];
    const int to = points[std::size_t(position)];
    points.insert(points.begin() + position, point);
    const int opposite[] = {to, from};
    const auto back =
        std::search(points.begin(), points.end(), std::begin(opposite), std::end(opposite));
    if (back != points.end()) {
        points.insert(back + 1, point);
    }
    SetPointsOfStripe(stripe, points);
}

int InsertPoint(Shape* shape, int stripe, int position, const float place[3])
{
    Stripe* line = &shape->stripes[stripe];
    const std::vector<Gap> gaps =
        FindGaps(shape, line->points[position - 1], line->points[position]);
    if (gaps.empty()) {
        return -1;
    }
    const std::optional<Gap> facing = FindFacingGap(gaps);
    float points[1][3];
    std::copy_n(place, 3, points[0]);
    const int point = AppendPoints(shape, points, 1);
    InsertIntoStripe(line, position, point);
    if (facing) {
        InsertCorner(shape, *facing,
                     point); // the later place first: the earlier one stays where it is
    }
    InsertCorner(shape, gaps.front(), point);
    CutSideAgain(shape, gaps.front().side);
    if (facing && facing->side != gaps.front().side) {
        CutSideAgain(shape, facing->side);
    }
    return point;
}

} // namespace korvane
