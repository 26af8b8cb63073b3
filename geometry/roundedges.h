// The edges of a rounded shape, which follow from those of the shape that was rounded: no search.
#pragma once

namespace korvane
{

struct Subdivision;

// Sets `edges` and `edgenumber` of the result to what SetEdgesOfShape would find; its triangles
// must be there. Answers false, with nothing done, when the shape is not regular: where an edge of
// a triangle is missing, a triangle has a corner twice, or the edges do not follow the order in
// which the sides' triangles are walked.
bool SetRoundEdges(Subdivision& work);

} // namespace korvane
