#include "view/markers.h"

#include "view/basestate.h"
#include "view/glsetup.h"
#include "view/mainview.h"

#include <GL/glew.h>

#include <algorithm>
#include <cmath>

namespace korvane
{

static constexpr double markerpixels = 4.0;
static constexpr float tickwidth = 3.0F;

double GetMarkerSize()
{
    return markerpixels / std::min(width, height);
}

float GetGlow(unsigned char fade)
{
    return float(0.4 + 0.6 * GetCosRate(int8_t(fade)));
}

void DrawMarkers(Batch& squares)
{
    glBindTexture(GL_TEXTURE_2D, textidpont);
    glEnable(GL_TEXTURE_2D);
    DrawBatch(GL_QUADS, squares);
    glDisable(GL_TEXTURE_2D);
    AssertBaseState("DrawMarkers");
}

Ticks GetTicks(const float* center, double size)
{
    static constexpr int directions[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    static constexpr double distances[2] = {1, 0.5}; // of the outer and the inner end
    Ticks ticks;
    for (int i = 0; i < 4; i++) {
        for (int j = 0; j < 2; j++) {
            float* end = ticks.ends[i][j];
            end[0] = float(center[0] + directions[i][0] * size * distances[j]);
            end[1] = float(center[1] + directions[i][1] * size * distances[j]);
            end[2] = float(center[2] + markerlift);
        }
    }
    return ticks;
}

void DrawDuplaTicks(const float* center, double size, unsigned char fade)
{
    const float alpha = GetCosRate(int8_t(fade));
    const Ticks ticks = GetTicks(center, size);
    for (const auto& tick : ticks.ends) {
        DuplaLineDraw(tick[0][0], tick[0][1], tick[0][2], tick[1][0], tick[1][1], tick[1][2],
                      tickwidth, 1, 1, 1, alpha, alpha);
    }
}

OutlineOffset GetOutlineOffset(float x1, float y1, float x2, float y2, float linewidth)
{
    const double dx = double(y2) - y1; // across the line
    const double dy = double(x1) - x2;
    const double length = std::hypot(dx, dy) * std::min(width, height) * 8 / (5.0 * linewidth);
    if (!(length > 0)) {
        return {0, 0};
    }
    return {float(dx / length), float(dy / length)};
}

//   p1 + o ---------- p2 + o
//     |   p1 ----- p2   |       the outline is 5/4 of the line's width across
//   p1 - o ---------- p2 - o
void DuplaLineDraw(float x1, float y1, float z1, float x2, float y2, float z2, float linewidth,
                   float r, float g, float b, float alpha1, float alpha2)
{
    const float start[3] = {x1, y1, z1};
    const float end[3] = {x2, y2, z2};
    const OutlineOffset o = GetOutlineOffset(x1, y1, x2, y2, linewidth);
    const float corners[4][3] = {{x1 + o.x, y1 + o.y, z1},
                                 {x2 + o.x, y2 + o.y, z2},
                                 {x2 - o.x, y2 - o.y, z2},
                                 {x1 - o.x, y1 - o.y, z1}};
    Batch batch;
    AddLine(batch, start, end, 0, {r, g, b, alpha1});
    glLineWidth(linewidth);
    DrawBatch(GL_LINES, batch);
    for (const float* corner : corners) {
        AddCorner(batch, corner, 0, {1 - r, 1 - g, 1 - b, alpha2});
    }
    glLineWidth(linewidth / 4);
    DrawBatch(GL_LINE_LOOP, batch);
    glLineWidth(1);
    AssertBaseState("DuplaLineDraw");
}

} // namespace korvane
