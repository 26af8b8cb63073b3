#include "view/screenboxes.h"

#include "scene/model.h"

#include <limits>

namespace korvane
{

static constexpr float infinity = std::numeric_limits<float>::infinity();
static constexpr ScreenBox emptybox = {infinity, -infinity, infinity, -infinity};

// How far outside its points an element can be hit: the picking distance and something for
// rounding.
static constexpr float boxmargin = float(pickdistance + 0.001);

static void AddToBox(ScreenBox& box, const ScreenBox& other)
{
    box.left = std::min(box.left, other.left);
    box.right = std::max(box.right, other.right);
    box.bottom = std::min(box.bottom, other.bottom);
    box.top = std::max(box.top, other.top);
}

static ScreenBox GetBox(const Shape* shape, const int* points, int number)
{
    ScreenBox box = emptybox;
    for (int i = 0; i < number; i++) {
        const float* p = shape->points[points[i]];
        AddToBox(box, {p[0], p[0], p[1], p[1]});
    }
    return box;
}

static ScreenBox WidenBox(const ScreenBox& box, float x, float y)
{
    return {box.left - x, box.right + x, box.bottom - y, box.top + y};
}

// A stripe is tested inside the circles over its segments. A circle stands out of its segment's own
// box by less than half of what the segment spans the other way.
static ScreenBox GetStripeBox(const Shape* shape, const Stripe& stripe)
{
    const ScreenBox box = GetBox(shape, stripe.points, stripe.pointnumber);
    return WidenBox(box, boxmargin + (box.top - box.bottom) / 2,
                    boxmargin + (box.right - box.left) / 2);
}

static void SetRuns(ScreenBoxList& list)
{
    list.runs.clear();
    for (std::size_t k = 0; k < list.boxes.size(); k++) {
        if (k % boxesperrun == 0) {
            list.runs.push_back(emptybox);
        }
        AddToBox(list.runs.back(), list.boxes[k]);
    }
}

void SetScreenBoxes(ScreenBoxes& boxes, const Shape* shape)
{
    boxes.points.boxes.resize(std::size_t(shape->pointnumber));
    for (int i = 0; i < shape->pointnumber; i++) {
        const float* p = shape->points[i];
        boxes.points.boxes[std::size_t(i)] =
            WidenBox({p[0], p[0], p[1], p[1]}, boxmargin, boxmargin);
    }
    boxes.stripes.boxes.resize(std::size_t(shape->stripenumber));
    for (int i = 0; i < shape->stripenumber; i++) {
        boxes.stripes.boxes[std::size_t(i)] = GetStripeBox(shape, shape->stripes[i]);
    }
    boxes.sides.boxes.resize(std::size_t(shape->sidenumber));
    for (int i = 0; i < shape->sidenumber; i++) {
        const Side& side = shape->sides[i];
        boxes.sides.boxes[std::size_t(i)] = GetBox(shape, side.points, side.pointnumber);
    }
    SetRuns(boxes.points);
    SetRuns(boxes.stripes);
    SetRuns(boxes.sides);
    boxes.current = true;
}

} // namespace korvane
