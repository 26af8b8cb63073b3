// The frame: drawing on every expose, and the timer that moves every fade and the camera one step
// per tick and asks for a new frame only when something changed.
#pragma once

#include <cstdint>

typedef struct _GtkWidget GtkWidget;
typedef struct _GdkEventExpose GdkEventExpose;

namespace korvane
{

constexpr int redrawwanted = 1; // bits of rdstate
constexpr int redrawing = 2;
extern int32_t rdstate; // bit 0 a redraw is wanted, bit 1 a frame is being drawn
extern int32_t runtime; // timer ticks since the start

constexpr unsigned int tickmilliseconds = 32;

// Expose handler of the drawing area. Returns true.
int ReDraw(GtkWidget* widget, GdkEventExpose* event);

// One tick: moves the fades in mainview, the active elements and `selected`, plays the camera.
// `area` is the drawing area. Returns true: the timer never stops.
int TimeLoop(void* area);

// Advances the camera transition by one frame, if one plays: writes mainview from camtable and
// projects the scene again.
void PlayCamera();

} // namespace korvane
