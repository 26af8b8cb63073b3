// Markers of points: textured squares of four pixels, and the ticks at the corners of a hovered
// one. Expects and leaves the base state.
#pragma once

#include "view/drawbatch.h"

namespace korvane
{

constexpr double markerlift = 0.024; // markers and stripes lie so far in front of the sides

// The side of a marker in view units.
double GetMarkerSize();

// The brightness of a marker's faint colours at a level of its hover fade.
float GetGlow(unsigned char fade);

// Draws the squares of a batch with the marker texture and empties it.
void DrawMarkers(Batch& squares);

// The four ticks that point from outside at the corners of a marker.
struct Ticks {
    float ends[4][2][3];
};
Ticks GetTicks(const float* center, double size);

// Draws the ticks of a hovered marker as white lines with a black outline.
void DrawDuplaTicks(const float* center, double size, unsigned char fade);

// How far the outline of such a line lies beside it, to one side; the other side has the opposite.
// Zero for a line without length on the screen.
struct OutlineOffset {
    float x, y;
};
OutlineOffset GetOutlineOffset(float x1, float y1, float x2, float y2, float linewidth);

// Draws a line with an outline in the complementary colour, which keeps it visible on any
// background.
void DuplaLineDraw(float x1, float y1, float z1, float x2, float y2, float z2, float linewidth,
                   float r, float g, float b, float alpha1, float alpha2);

} // namespace korvane
