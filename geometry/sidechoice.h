// Into which side of a shape a chain of points goes, and between which of its corners.
#pragma once

namespace korvane
{

struct Shape;
struct Side;

// A chain of points from one corner of a side to another. What lies between its ends becomes points
// of the shape; the places of its ends tell only where it runs.
struct Chain {
    int start; // the points of the shape between which the chain runs
    int end;
    const float (*points)[3]; // borrowed; model coordinates, from the start to the end
    int number;               // length of points
};

// The side into which the chain goes: of those with both ends among their corners the one with the
// triangle nearest to the chain, the first of equally near ones; -1 without one.
int FindSideOfChain(const Shape* shape, const Chain& chain);

// False when nothing sound would come of the chain: it is a loop, no side has both its ends, or it
// runs straight along an edge that is there already.
bool CanTakeChain(const Shape* shape, const Chain& chain);

// The positions of a chain's ends in the outline of a side that has both.
struct ChainPlaces {
    int start;
    int end;
};

// Where an outline passes a point more than once, the chain leaves from the corner whose inside it
// enters.
ChainPlaces FindPlacesOfChain(Side* side, const Chain& chain);

} // namespace korvane
