// Rectangles of the screen round small groups of a shape's elements, with which picking leaves out
// at once what the pointer cannot hit. A rectangle may be too large, never too small: whatever one
// of the tests of nearness.h accepts lies inside. What is grouped lies close together on the shape,
// however the shape numbers its elements; the groups stay while the camera moves, and only their
// rectangles are made anew.
#pragma once

#include <vector>

namespace korvane
{

struct Shape;

struct ScreenBox {
    float left, right, bottom, top;
};

struct ScreenBoxes {
    bool hasgroups = false; // false when the shape may have other elements now
    bool hasboxes = false;  // false when the shape has been projected since they were made
    // Group after group. Plain lists, because walking from record to record costs more than all
    // arithmetic.
    std::vector<int> elements; // the shape's points are numbered first, then stripes, then sides
    std::vector<int> starts;   // where the corners of elements[k] begin; at the end their number
    std::vector<int> corners;  // indices into the shape's points
    // One per group, and the first list with one more at the end.
    std::vector<int> touchedstarts; // where the touched points of a group begin
    std::vector<int> touched;       // the corners of its elements, each once
    std::vector<ScreenBox> boxes;
};

// Makes what is missing of the groups and boxes of a projected shape, in the memory of what they
// replace.
void UpdateScreenBoxes(ScreenBoxes& boxes, const Shape* shape);

// Puts into `found` the elements that may be hit at a place, in ascending order of their numbers.
void FindElementsAt(const ScreenBoxes& boxes, const Shape* shape, const float* place,
                    std::vector<int>& found);

} // namespace korvane
