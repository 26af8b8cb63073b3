// Clicking the path along which a side is swept. It starts at the side's centre; for a flat shape
// it can be closed on its start, for a body on the centre of another side with as many corners, or
// it is left open.
#pragma once

namespace korvane
{

// A click while the duplicate tool is on; `action` is a ClickAction. Reads activepointer and
// gmouse. Saves the shape for undo at the first point.
void PutDPoints(int shapeindex, int sideindex, int action);

// Menu handler: starts to sweep side duplicateside of shape duplicateshape, if there is such a
// side.
void Duplicate();

} // namespace korvane
