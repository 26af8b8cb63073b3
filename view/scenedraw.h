// Painting the shapes of the scene from their projected copies, and the markers of a construction.
// A drawing procedure expects and leaves the base state of glsetup.h.
#pragma once

namespace korvane
{

struct MainView;
struct Shape;

// Draws the whole scene for one frame.
void SceneDraw(MainView* view);

} // namespace korvane
