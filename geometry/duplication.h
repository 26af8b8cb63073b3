// Sweeping a side along a clicked path: the side, and the centres on which the path may end.
#pragma once

namespace korvane
{

extern char duplicatesign;        // 1 while the duplicate tool is on
extern int duplicateshape;        // the shape whose side is swept
extern int duplicateside;         // that side, an index into the shape's sides
extern float (*centerpoints)[3];  // owned; centres of the sides to which a bridge may lead, world
extern float (*rcenterpoints)[3]; // owned; the same in view coordinates
extern int centernumber;          // length of both

} // namespace korvane
