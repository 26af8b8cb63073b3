// What is drawn after the shapes: the background picture, the small orientation cube, the centre
// lines and the new-shape indicator. A drawing procedure expects and leaves the base state of
// basestate.h.
#pragma once

namespace korvane
{

struct MainView;

void BgDrawAfter(MainView* view);

} // namespace korvane
