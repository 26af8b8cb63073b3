// What is drawn before the shapes: the background cube, whose walls are seen from inside and can be
// picked, the background plane, and the gradient grid to which clicks snap. Each fades by its byte
// in the view. A drawing procedure expects and leaves the base state of basestate.h.
#pragma once

namespace korvane
{

struct MainView;

// Draws the background of one frame. Deliberate: while the cube is shown it also projects the scene
// again, because it takes the cube's walls through SetPerspective.
void BgDrawBefore(MainView* view);

} // namespace korvane
