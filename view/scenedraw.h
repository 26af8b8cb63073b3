// Painting the shapes of the scene from their projected copies, farthest first, and the markers of
// a construction. Expects and leaves the base state of basestate.h.
#pragma once

namespace korvane
{

struct MainView;

// Draws the whole scene for one frame. Reads the projected copies, showtable, selected, the active
// elements and the state of a construction.
void SceneDraw(const MainView* view);

} // namespace korvane
