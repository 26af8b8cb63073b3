// What is under construction: the points of a new shape, the centres to which a duplicate may lead,
// and the place where the next click puts a point.
#pragma once

namespace korvane
{

struct MainView;

// Draws them, projecting newpoints into rotated and centerpoints into rcenterpoints first. Reads
// the last records of activepoints. Expects and leaves the base state.
void ConstructionDraw(const MainView* view);

} // namespace korvane
