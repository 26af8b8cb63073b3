// Which points of a shape rounding holds back: the points marked as vertexes, the creases that run
// through them along the stripes, and the corners where creases end or meet.
#pragma once

#include <array>
#include <vector>

namespace korvane
{

struct Shape;

// The flags of a point. A point without any belongs to the smooth surface.
enum CreaseFlag : unsigned char {
    FLAG_VERTEX = 1, // marked by the user
    FLAG_CREASE = 2, // smoothed along the line of its two neighbours
    FLAG_CORNER = 4  // stays where it is, whatever else it has
};

// One entry of each table per point of the shape.
struct Creases {
    std::vector<unsigned char> flags;           // bits of CreaseFlag
    std::vector<std::array<int, 2>> neighbours; // of a crease point; otherwise point 0 twice
};

// Classifies every point. The shape's vertexes and stripes must be current; the border of a
// one-sided shape is a crease even where nobody marked it.
Creases GetCreases(const Shape* shape);

// Takes FLAG_CREASE from the border of a one-sided shape again, so that of the border only what
// the user marked keeps a flag. Other shapes keep all.
void ClearBorderCrease(Creases& creases, const Shape* shape);

} // namespace korvane
