// Merging the two sides that a stripe separates. Pure: the shape that is given and nothing else.
#pragma once

namespace korvane
{

struct Shape;

// Removes a stripe and with it the border between its two sides: the first takes the outline of
// both, the second goes, and so does every point that is then no corner. Of three sides the third
// alone stays, visible from front and back. Cuts all sides again and rebuilds the stripes; normals
// and edges are stale. `followed`, when given, is a point whose index is kept up to date: -1 once
// it is gone. Answers false, and changes nothing, unless exactly two different sides run along the
// stripe, once each, and what they enclose together has at least three corners.
bool DissolveStripe(Shape* shape, int stripe, int* followed = nullptr);

} // namespace korvane
