#include "view/drawbatch.h"

#include <GL/glew.h>

namespace korvane
{

void AddCorner(Batch& batch, const float* position, double lift, const Rgba& color)
{
    const float z = float(position[2] + lift);
    batch.push_back({{position[0], position[1], z}, {color[0], color[1], color[2], color[3]}, {}});
}

void AddLine(Batch& batch, const float* start, const float* end, double lift, const Rgba& color)
{
    AddCorner(batch, start, lift, color);
    AddCorner(batch, end, lift, color);
}

void AddSquare(Batch& batch, const float* center, double lift, double size, const Rgba& color)
{
    static constexpr float textures[4][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    for (const float* texture : textures) {
        const float corner[3] = {float(center[0] + (texture[0] - 0.5) * size),
                                 float(center[1] + (texture[1] - 0.5) * size), center[2]};
        AddCorner(batch, corner, lift, color);
        batch.back().texture[0] = texture[0];
        batch.back().texture[1] = 1 - texture[1]; // a picture's top row comes first in a texture
    }
}

void DrawBatch(unsigned int mode, Batch& batch)
{
    if (batch.empty()) {
        return;
    }
    constexpr GLsizei stride = sizeof(BatchCorner);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glEnableClientState(GL_TEXTURE_COORD_ARRAY);
    glVertexPointer(3, GL_FLOAT, stride, batch.front().position);
    glColorPointer(4, GL_FLOAT, stride, batch.front().color);
    glTexCoordPointer(2, GL_FLOAT, stride, batch.front().texture);
    glDrawArrays(mode, 0, GLsizei(batch.size()));
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glDisableClientState(GL_COLOR_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
    batch.clear();
}

} // namespace korvane
