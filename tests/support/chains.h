// Chains to be cut into the sides of test shapes, and what can be said of the bodies that result.
#pragma once

#include "geometry/sidechoice.h"
#include "tests/support/shapes.h"

#include <random>
#include <string>

namespace korvane::testing
{

// A chain with its points: the start, what lies between, the end.
class TestChain
{
public:
    TestChain(const Shape& shape, int start, const Points& inner, int end);
    Chain Get() const;

private:
    int start;
    int end;
    Points points;
};

// A chain over the middle of a flat shape, at a height above its plane, which is z = 0.
TestChain ArchOver(const Shape& shape, int start, int innernumber, float height, int end);

// Between two corners of a random side, by way of none to three points near the side's middle.
TestChain GetRandomChain(const Shape& shape, std::mt19937& random);

OwnedShape GetRandomBody(std::mt19937& random); // one of the closed bodies, placed at random

// A body turned about the axis (1, 1, 1) by a third of a circle so many times, mirrored at x = 0 or
// not, its points numbered from so many places further on.
struct Placing {
    int turns;
    bool mirrored;
    int shift;
    int pointnumber;
};

int Rename(int point, const Placing& placing);
Points PlacePoints(const Points& points, const Placing& placing);
OwnedShape PlaceShape(const Shape& shape, const Placing& placing);

double GetVolume(const Shape& shape);      // of what its triangles enclose
int GetCharacteristic(const Shape& shape); // corners - edges + sides

// What holds of a body after every chain, once the normals are rebuilt, which happens here: it is
// sound, closed and oriented, and its stripes cover its edges.
std::string FindBrokenRuleOfBody(Shape& shape);

// Every edge of an outline lies on exactly one stripe, and a stripe runs along edges only.
std::string FindBrokenRuleOfStripeCover(const Shape& shape);

} // namespace korvane::testing
