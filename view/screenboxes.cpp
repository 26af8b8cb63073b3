#include "view/screenboxes.h"

#include "scene/model.h"
#include "view/nearness.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <utility>

namespace korvane
{

static constexpr float infinity = std::numeric_limits<float>::infinity();
static constexpr ScreenBox emptybox = {infinity, -infinity, infinity, -infinity};

// How far outside its points an element can be hit: the picking distance and something for
// rounding.
static constexpr float boxmargin = float(pickdistance + 0.001);
static constexpr std::size_t groupsize = 16;

static inline void AddToBox(ScreenBox& box, const ScreenBox& other)
{
    box.left = std::min(box.left, other.left);
    box.right = std::max(box.right, other.right);
    box.bottom = std::min(box.bottom, other.bottom);
    box.top = std::max(box.top, other.top);
}

static inline bool IsInBox(const ScreenBox& box, const float* place)
{
    return place[0] >= box.left && place[0] <= box.right && place[1] >= box.bottom &&
           place[1] <= box.top;
}

// Where elements[k] can be hit: beside its corners, or beside a segment or in a triangle between
// them.
static inline ScreenBox GetBoxOfElement(const ElementGroups& groups, const Shape* shape,
                                        std::size_t k)
{
    ScreenBox box = emptybox;
    for (int i = groups.starts[k]; i < groups.starts[k + 1]; i++) {
        const float* p = shape->points[groups.corners[std::size_t(i)]];
        AddToBox(box, {p[0], p[0], p[1], p[1]});
    }
    return {box.left - boxmargin, box.right + boxmargin, box.bottom - boxmargin,
            box.top + boxmargin};
}

// Spreads the low ten bits so that two zero bits follow each.
static uint32_t SpreadBits(uint32_t bits)
{
    bits = (bits | bits << 16) & 0x030000FF;
    bits = (bits | bits << 8) & 0x0300F00F;
    bits = (bits | bits << 4) & 0x030C30C3;
    return (bits | bits << 2) & 0x09249249;
}

// The place of a point along a curve that fills the ball round the shape cell by cell (Morton's
// order): what is near on the curve is near in space.
static uint32_t GetCurvePlace(const Shape* shape, int point)
{
    constexpr double cells = 1024; // along each axis
    uint32_t place = 0;
    for (int k = 0; k < 3; k++) {
        const double offset = double(shape->points[point][k]) - double(shape->center[k]);
        const double cell = (offset / double(shape->radius) + 1) / 2 * cells;
        place |= SpreadBits(cell > 0 ? uint32_t(std::min(cell, cells - 1)) : 0) << k;
    }
    return place;
}

// getcorners(k) is a span of the corners of element k.
template <class GetCorners>
static void SetGroups(ElementGroups& groups, const Shape* shape, int number,
                      const GetCorners& getcorners)
{
    std::vector<std::pair<uint32_t, int>> order;
    order.reserve(std::size_t(number));
    for (int k = 0; k < number; k++) {
        const std::span<const int> corners = getcorners(k);
        order.emplace_back(corners.empty() ? 0 : GetCurvePlace(shape, corners[0]), k);
    }
    std::sort(order.begin(), order.end());
    groups.elements.clear();
    groups.starts.assign(1, 0);
    groups.corners.clear();
    for (const auto& [place, k] : order) {
        const std::span<const int> corners = getcorners(k);
        groups.elements.push_back(k);
        groups.corners.insert(groups.corners.end(), corners.begin(), corners.end());
        groups.starts.push_back(int(groups.corners.size()));
    }
}

static void SetBoxes(ElementGroups& groups, const Shape* shape)
{
    groups.boxes.clear();
    for (std::size_t first = 0; first < groups.elements.size(); first += groupsize) {
        ScreenBox box = emptybox;
        const std::size_t end = std::min(first + groupsize, groups.elements.size());
        for (std::size_t k = first; k < end; k++) {
            AddToBox(box, GetBoxOfElement(groups, shape, k));
        }
        groups.boxes.push_back(box);
    }
}

void UpdateScreenBoxes(ScreenBoxes& boxes, const Shape* shape)
{
    if (!boxes.hasgroups) {
        SetGroups(boxes.points, shape, shape->pointnumber,
                  [](const int& k) { return std::span<const int>(&k, 1); });
        SetGroups(boxes.stripes, shape, shape->stripenumber, [&](int k) {
            const Stripe& stripe = shape->stripes[k];
            return std::span<const int>(stripe.points, std::size_t(stripe.pointnumber));
        });
        SetGroups(boxes.sides, shape, shape->sidenumber, [&](int k) {
            const Side& side = shape->sides[k];
            return std::span<const int>(side.points, std::size_t(side.pointnumber));
        });
    }
    if (!boxes.hasgroups || !boxes.hasboxes) {
        SetBoxes(boxes.points, shape);
        SetBoxes(boxes.stripes, shape);
        SetBoxes(boxes.sides, shape);
    }
    boxes.hasgroups = true;
    boxes.hasboxes = true;
}

void FindElementsAt(const ElementGroups& groups, const Shape* shape, const float* place,
                    std::vector<int>& found)
{
    found.clear();
    for (std::size_t group = 0; group < groups.boxes.size(); group++) {
        if (!IsInBox(groups.boxes[group], place)) {
            continue;
        }
        const std::size_t first = group * groupsize;
        const std::size_t end = std::min(first + groupsize, groups.elements.size());
        for (std::size_t k = first; k < end; k++) {
            if (IsInBox(GetBoxOfElement(groups, shape, k), place)) {
                found.push_back(groups.elements[k]);
            }
        }
    }
    std::sort(found.begin(), found.end());
}

} // namespace korvane
