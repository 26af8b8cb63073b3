// Shapes and sides made from the clicked points, once a polygon is closed. All of it reads
// `newpoints`, of which the last is the closing click.
#pragma once

namespace korvane
{

// Adds a flat shape to the scene: the points from the one that was picked to the last before the
// closing click. Fewer than three make nothing. Answers whether there is a new shape, to which
// EndNewShape gives its node.
bool CreateOneSideShape();

// Lets the tool button up and ends whatever is under construction.
void EndNewShapeTool();

// Names the newest shape, gives it a node at the place that the selection asks for, ends the
// new-shape tool and adds the shape to the selection.
void EndNewShape();

// Adds the clicked points as a chain between two points of a shape: the chain cuts a side of a body
// in two, and raises a flat shape into a body of three sides. Does nothing when nothing sound would
// come of it, as straight along an edge.
void CreateNewSide(int shapeindex, int startpoint, int endpoint);

} // namespace korvane
