// What the tests of edits share: bodies, each given in several ways, and the rules that hold for a
// shape after every edit.
#pragma once

#include "tests/support/shapes.h"

#include <string>
#include <vector>

namespace korvane::testing
{

std::vector<int> GetMarks(const Shape& shape);

// A prism whose wall is one side, which meets itself along the upright edge from 2 to 5.
OwnedShape PrismWithSlit();

// The same under a roof of three triangles: floor 0, 1, 2, eaves 3, 4, 5, and point 6 on top.
OwnedShape HouseWithSlit();

// A prism without its upright edge from 0 to 3: two of its walls are one side.
OwnedShape PrismWithoutEdge();

// Three sides between the poles 0 and 1, with 2, 3 and 4 on the seams.
OwnedShape Melon();

// A flat square 0, 1, 2, 3 with the hole 4, 5, 6, joined by the slit 0-4.
OwnedShape SquareWithHole();

// Closed bodies, each as it is, turned, mirrored, with its points in another order, and with its
// sides in another order that begin at other corners.
std::vector<OwnedShape> GetBodies();

// Makes normals and edges again, then looks for a broken rule: those of every shape, that no corner
// of a side is like its neighbour or stands between two corners that are one point, and that every
// point is used.
std::string FindBrokenRuleAfterEdit(Shape* shape);

// The same for a body: every directed edge is also met by its opposite.
std::string FindBrokenRuleOfEditedBody(Shape* shape);

} // namespace korvane::testing
