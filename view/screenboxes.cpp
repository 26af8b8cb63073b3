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
static constexpr std::size_t groupsize = 32;

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

// Where something between points can be hit: beside them, beside their segments, in their
// triangles.
static inline ScreenBox GetBoxOfPoints(const Shape* shape, std::span<const int> points)
{
    ScreenBox box = emptybox;
    for (const int point : points) {
        const float* p = shape->points[point];
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

static std::span<const int> GetCorners(const Shape* shape, const int& element)
{
    if (element < shape->pointnumber) {
        return {&element, 1};
    }
    const int stripe = element - shape->pointnumber;
    if (stripe < shape->stripenumber) {
        return {shape->stripes[stripe].points, std::size_t(shape->stripes[stripe].pointnumber)};
    }
    const Side& side = shape->sides[stripe - shape->stripenumber];
    return {side.points, std::size_t(side.pointnumber)};
}

static void SetElements(ScreenBoxes& boxes, const Shape* shape)
{
    const int number = shape->pointnumber + shape->stripenumber + shape->sidenumber;
    std::vector<std::pair<uint32_t, int>> order;
    order.reserve(std::size_t(number));
    for (int k = 0; k < number; k++) {
        const std::span<const int> corners = GetCorners(shape, k);
        order.emplace_back(corners.empty() ? 0 : GetCurvePlace(shape, corners[0]), k);
    }
    std::sort(order.begin(), order.end());
    boxes.elements.clear();
    boxes.starts.assign(1, 0);
    boxes.corners.clear();
    for (const auto& [place, k] : order) {
        const std::span<const int> corners = GetCorners(shape, k);
        boxes.elements.push_back(k);
        boxes.corners.insert(boxes.corners.end(), corners.begin(), corners.end());
        boxes.starts.push_back(int(boxes.corners.size()));
    }
}

static void SetTouchedPoints(ScreenBoxes& boxes)
{
    boxes.touchedstarts.assign(1, 0);
    boxes.touched.clear();
    std::vector<int> group;
    for (std::size_t first = 0; first < boxes.elements.size(); first += groupsize) {
        const std::size_t end = std::min(first + groupsize, boxes.elements.size());
        group.assign(boxes.corners.begin() + boxes.starts[first],
                     boxes.corners.begin() + boxes.starts[end]);
        std::sort(group.begin(), group.end());
        group.erase(std::unique(group.begin(), group.end()), group.end());
        boxes.touched.insert(boxes.touched.end(), group.begin(), group.end());
        boxes.touchedstarts.push_back(int(boxes.touched.size()));
    }
}

// The entries of a list from one start to the next.
static inline std::span<const int> GetRun(const std::vector<int>& list,
                                          const std::vector<int>& starts, std::size_t k)
{
    return {list.data() + starts[k], list.data() + starts[k + 1]};
}

void UpdateScreenBoxes(ScreenBoxes& boxes, const Shape* shape)
{
    if (boxes.hasgroups && boxes.hasboxes) {
        return;
    }
    if (!boxes.hasgroups) {
        SetElements(boxes, shape);
        SetTouchedPoints(boxes);
    }
    boxes.boxes.clear();
    for (std::size_t group = 0; group + 1 < boxes.touchedstarts.size(); group++) {
        boxes.boxes.push_back(
            GetBoxOfPoints(shape, GetRun(boxes.touched, boxes.touchedstarts, group)));
    }
    boxes.hasgroups = true;
    boxes.hasboxes = true;
}

void FindElementsAt(const ScreenBoxes& boxes, const Shape* shape, const float* place,
                    std::vector<int>& found)
{
    found.clear();
    for (std::size_t group = 0; group < boxes.boxes.size(); group++) {
        if (!IsInBox(boxes.boxes[group], place)) {
            continue;
        }
        const std::size_t first = group * groupsize;
        const std::size_t end = std::min(first + groupsize, boxes.elements.size());
        for (std::size_t k = first; k < end; k++) {
            if (IsInBox(GetBoxOfPoints(shape, GetRun(boxes.corners, boxes.starts, k)), place)) {
                found.push_back(boxes.elements[k]);
            }
        }
    }
    std::sort(found.begin(), found.end());
}

} // namespace korvane
