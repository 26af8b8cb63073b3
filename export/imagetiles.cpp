#include "export/imagetiles.h"

#include "export/imageorder.h"
#include "geometry/shapegeometry.h"
#include "view/basestate.h"
#include "view/glsetup.h"
#include "view/litprograms.h"
#include "view/sidelook.h"

#include <GL/glew.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace korvane
{

static constexpr int pixelbytes = 4; // red, green, blue, alpha
static constexpr int tilebytes = tilesize * tilesize * pixelbytes;

// What each pass moves the picture by, in view units.
static constexpr double jitter[tilepasses][2] = {{-0.000203269, 0.000345439},
                                                 {0.000199071, -0.000345488},
                                                 {-0.000285768, -0.000146431},
                                                 {0.000289965, 0.000146479}};

// The buffer of the tiles; 0 while there is none.
static GLuint framebuffer = 0;
static GLuint colorbuffer = 0;
static GLuint depthbuffer = 0;

static std::uint16_t sums[tilebytes]; // of the passes of the tile that is being rendered

static GLuint MakeRenderBuffer(GLenum format, GLenum attachment)
{
    GLuint buffer = 0;
    glGenRenderbuffers(1, &buffer);
    glBindRenderbuffer(GL_RENDERBUFFER, buffer);
    glRenderbufferStorage(GL_RENDERBUFFER, format, tilesize, tilesize);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, attachment, GL_RENDERBUFFER, buffer);
    return buffer;
}

void MakeTileBuffer()
{
    if (!GLEW_ARB_framebuffer_object) {
        return;
    }
    glGenFramebuffers(1, &framebuffer);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    colorbuffer = MakeRenderBuffer(GL_RGBA8, GL_COLOR_ATTACHMENT0);
    depthbuffer = MakeRenderBuffer(GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT);
    const GLenum status = glCheckFramebufferStatus(GL_FRAMEBUFFER);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    if (status != GL_FRAMEBUFFER_COMPLETE) {
        FreeTileBuffer();
    }
}

void FreeTileBuffer()
{
    if (framebuffer == 0) {
        return;
    }
    glDeleteFramebuffers(1, &framebuffer);
    glDeleteRenderbuffers(1, &colorbuffer);
    glDeleteRenderbuffers(1, &depthbuffer);
    framebuffer = 0;
}

static void AddLitTriangle(const ImageTriangle& triangle, float direction)
{
    for (int i = 0; i < 3; i++) {
        const float* normal = triangle.normals[i];
        glNormal3f(direction * normal[0], direction * normal[1], direction * normal[2]);
        glVertex3fv(triangle.vertices[i]);
    }
}

// The light state is set once for every run of triangles that share it.
static void AddLitTriangles(const DrawnTriangles& drawn, const std::vector<int>& triangles)
{
    int loaded = -1;
    for (std::size_t i = 0; i < triangles.size(); i++) {
        PrefetchTriangle(drawn, triangles, i);
        const int index = triangles[i];
        const int number = drawn.looks.oftriangle[std::size_t(index)];
        const TriangleLook& look = drawn.looks.states[std::size_t(number)];
        if (number != loaded) {
            if (loaded != -1) {
                glEnd();
            }
            LoadColors(look.colors, 1);
            LoadControl(look.colors, look.front);
            glBegin(GL_TRIANGLES);
            loaded = number;
        }
        const ImageTriangle& triangle = drawn.hszog[index];
        AddLitTriangle(triangle, look.front && triangle.front == 0 ? -1.0F : 1.0F);
    }
    if (loaded != -1) {
        glEnd();
    }
}

static void AddFlatTriangle(const ImageTriangle& triangle)
{
    Side side = {};
    std::copy_n(triangle.colors, colornumber, side.colors);
    const auto& [a, b, c] = triangle.vertices;
    glColor4fv(GetColorOfTriangle(&side, GetNormal(a, b, c).get()).data());
    for (const float* corner : triangle.vertices) {
        glVertex3fv(corner);
    }
}

static void AddFlatTriangles(const DrawnTriangles& drawn, const std::vector<int>& triangles)
{
    glBegin(GL_TRIANGLES);
    for (const int index : triangles) {
        AddFlatTriangle(drawn.hszog[index]);
    }
    glEnd();
}

void CompileTriangles(unsigned int list, const DrawnTriangles& drawn, const TilePart& part)
{
    glNewList(list, GL_COMPILE);
    glDepthFunc(part.nearestfirst ? GL_LEQUAL : GL_LESS);
    if (UsesPrograms()) {
        AddLitTriangles(drawn, part.triangles);
    } else {
        AddFlatTriangles(drawn, part.triangles);
    }
    glDepthFunc(GL_LESS);
    glEndList();
}

void SceneHighDraw(unsigned int list)
{
    if (!UsesPrograms()) {
        glCallList(list);
        return;
    }
    BeginLitPrograms();
    glCallList(list);
    EndLitPrograms();
}

static void BeginTile(double halfdepth)
{
    if (framebuffer != 0) {
        glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    }
    glViewport(0, 0, tilesize, tilesize);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-tilespan / 2, tilespan / 2, -tilespan / 2, tilespan / 2, -halfdepth, halfdepth);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

static void EndTile()
{
    if (framebuffer != 0) {
        glBindFramebuffer(GL_FRAMEBUFFER, 0);
    }
    SetViewProjection();
}

// Moves the tile's middle to the view's.
static void DrawMoved(int tile, int pass, unsigned int list)
{
    const int column = tile % tilecolumns;
    const int row = tile / tilecolumns;
    glTranslated(((tilecolumns - 1) / 2.0 - column) * tilespan,
                 (row - (tilerows - 1) / 2.0) * tilespan, 0);
    glTranslated(jitter[pass][0], jitter[pass][1], 0);
    SceneHighDraw(list);
    glLoadIdentity();
}

// The frame-buffer configurations of today have no accumulation buffer: the passes are summed here.
static void AddToSums(int pass)
{
    static unsigned char pixels[tilebytes];
    glReadPixels(0, 0, tilesize, tilesize, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
    if (pass == 0) {
        std::fill(std::begin(sums), std::end(sums), std::uint16_t(0));
    }
    for (int i = 0; i < tilebytes; i++) {
        sums[i] = std::uint16_t(sums[i] + pixels[i]);
    }
}

bool KeepsTile()
{
    return framebuffer != 0;
}

void DrawTilePart(const TilePass& tilepass, unsigned int list, bool first, bool last)
{
    BeginTile(tilepass.halfdepth);
    if (first) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }
    DrawMoved(tilepass.tile, tilepass.pass, list);
    if (last) {
        AddToSums(tilepass.pass);
    }
    EndTile();
    AssertBaseState("DrawTilePart");
}

void StoreTile(int tile, unsigned char* image)
{
    constexpr int rowbytes = tilesize * pixelbytes;
    const int column = tile % tilecolumns;
    const int row = tile / tilecolumns;
    for (int y = 0; y < tilesize; y++) { // OpenGL counts rows from the bottom
        const int imagerow = tilesize * row + tilesize - 1 - y;
        const std::uint16_t* sum = sums + std::ptrdiff_t(y) * rowbytes;
        unsigned char* stored = image + std::ptrdiff_t(imagerow * tilecolumns + column) * rowbytes;
        std::transform(sum, sum + rowbytes, stored, [](std::uint16_t total) {
            return static_cast<unsigned char>((total + tilepasses / 2) / tilepasses);
        });
    }
}

} // namespace korvane
