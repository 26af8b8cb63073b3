// The outline of a side laid flat, while its ears are clipped. Its corners keep their positions;
// cutting one off links its neighbours and takes it out of the tree. The tree answers in a few
// steps which corner has the smallest angle and what lies in the triangle of a corner and its
// neighbours.
#pragma once

#include <cstddef>
#include <vector>

namespace korvane
{

struct OutlineCorner {
    float flat[2];
    float angle;   // inside the outline
    double length; // of the edge to the next corner
    int previous;  // its neighbours among the corners that are left
    int next;
    int blocker; // a corner known to lie in the triangle that this one makes with its neighbours
    int waiting; // the first of the corners that this one blocks, which are chained
    int before;  // its neighbours in the chain of its blocker
    int after;
};

// A rectangle of the flat side.
struct FlatBox {
    float low[2];
    float high[2];
};

// Some neighbouring positions: the box round the corners that are left of them, and the one with
// the smallest angle that may be an ear.
struct OutlineNode {
    FlatBox box;
    float angle; // of that corner, infinite without one
    int ear;     // its position, noone when none of them can be an ear
};

// The nodes are a binary tree: under node i are 2 i and 2 i + 1, under node 1 all corners, and node
// `leaves` + k is corner k alone.
struct Outline {
    int first; // the first corner that is left
    std::vector<OutlineCorner> corners;
    int leaves; // a power of two
    std::vector<OutlineNode> nodes;
    double margin; // how far beyond a line is certainly beyond it; see FindBlocker
};

inline OutlineCorner& GetCorner(Outline& outline, int index)
{
    return outline.corners[std::size_t(index)];
}

inline const OutlineCorner& GetCorner(const Outline& outline, int index)
{
    return outline.corners[std::size_t(index)];
}

// An outline of corners without places and angles, each linked to its neighbours.
Outline MakeOutline(int cornernumber);

// Makes the tree of all corners, which have their places and angles by now.
void PlantTree(Outline& outline);

// The position with the smallest angle that may be an ear, the first of equal ones; or noone.
inline int GetSmallest(const Outline& outline)
{
    return outline.nodes[1].ear;
}

// The corner may be an ear, with the angle that it has now; or it cannot be one.
void ShowCorner(Outline& outline, int index);
void HideCorner(Outline& outline, int index);

// Cuts a corner off. Its neighbours, whose angles have changed, may be ears.
void RemoveCorner(Outline& outline, int index);

// A position whose corner lies in the triangle of another and its neighbours, as InTheTriangle2d
// has it; or noone.
int FindBlocker(const Outline& outline, int index);

} // namespace korvane
