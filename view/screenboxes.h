// Rectangles of the screen round the elements of a shape, with which picking leaves out at once
// what the pointer cannot hit. A rectangle may be too large, never too small: whatever one of the
// tests of nearness.h accepts lies inside. Runs of neighbouring elements have a rectangle in
// common, so that most elements are not looked at one by one.
#pragma once

#include "view/nearness.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace korvane
{

struct Shape;

struct ScreenBox {
    float left, right, bottom, top;
};

constexpr int boxesperrun = 64;

// One box per element, and one per run of boxesperrun elements.
struct ScreenBoxList {
    std::vector<ScreenBox> boxes;
    std::vector<ScreenBox> runs;
};

struct ScreenBoxes {
    bool current = false; // false when the shape has been projected since they were made
    ScreenBoxList points, stripes, sides;
};

// Makes the boxes of a projected shape, in the memory of those they replace.
void SetScreenBoxes(ScreenBoxes& boxes, const Shape* shape);

inline bool IsInBox(const ScreenBox& box, const float* place)
{
    return place[0] >= box.left && place[0] <= box.right && place[1] >= box.bottom &&
           place[1] <= box.top;
}

// Calls visit(k) for every element k whose box holds the place, in their order.
template <class Visit>
void VisitBoxesAt(const ScreenBoxList& list, const float* place, const Visit& visit)
{
    for (std::size_t run = 0; run < list.runs.size(); run++) {
        if (!IsInBox(list.runs[run], place)) {
            continue;
        }
        const std::size_t end = std::min((run + 1) * boxesperrun, list.boxes.size());
        for (std::size_t k = run * boxesperrun; k < end; k++) {
            if (IsInBox(list.boxes[k], place)) {
                visit(int(k));
            }
        }
    }
}

} // namespace korvane
