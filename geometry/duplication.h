// Sweeping a side along a clicked path: the side, and the centres on which the path may end.
#pragma once

namespace korvane
{

extern char duplicatesign;        // 1 while the duplicate tool is on
extern int duplicateshape;        // the shape whose side had its menu last, or is swept
extern int duplicateside;         // that side, an index into the shape's sides
extern float (*centerpoints)[3];  // owned; centres of the sides to which a bridge may lead, world
extern float (*rcenterpoints)[3]; // owned; the same in view coordinates
extern int centernumber;          // length of both

// False when the scene has no such shape or the shape no such side.
bool IsDuplicateSideThere();

// How many rings the points clicked so far ask for: those that equal the one before add none.
int CountPathPlaces();

// Sweeps a side of a shape along the points clicked so far (`newpoints`): a flat shape becomes a
// tube or, `closed`, a ring; a body's side is drawn out or, `closed`, bridged to its side `target`.
// `closed` is 1 when the path ended on a picked point. Reads newpoints; writes the shape, which is
// left as it was when the path is too short. The caller has saved the shape for undo and ends the
// construction.
void CreateDuplicate(int shapeindex, int sideindex, int target, int closed);

} // namespace korvane
