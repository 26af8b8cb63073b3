// The invariants of the data model. Each finder answers with the first broken rule as a sentence,
// or with the empty string; every editing test asks after every step.
#pragma once

#include <string>

namespace korvane
{
struct Shape;
}

namespace korvane::testing
{

std::string FindBrokenRuleOfShape(const Shape& shape);

// Every directed edge of the sides' outlines is met by its opposite, and no point is left unused.
std::string FindBrokenRuleOfClosedBody(const Shape& shape);

// All shapes, their view copies, the tree with its rows, the active records, and what is
// under construction.
std::string FindBrokenRule();

} // namespace korvane::testing
